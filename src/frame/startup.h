// SPDX-License-Identifier: GPL-3.0-or-later
// The main menu: a button for each tool, the rated speed, the machine's addresses.
#pragma once

#include <string>

#include "forms/combo_box.h"
#include "forms/command_button.h"
#include "forms/image.h"
#include "forms/label.h"
#include "frame/program.h"
#include "frame/window_drag.h"

namespace veltrin {

// Tools that the program does not have are shown disabled.
class startup : public Form {
 public:
  explicit startup(Program& program);

  CommandButton Command1{"Trace Route"};
  CommandButton Command2{"InDepth Test"};
  CommandButton Command3{"Exit"};
  CommandButton Command4{"Ping Test"};
  CommandButton Command5{"Help"};
  CommandButton Command6{"About"};
  CommandButton Command7{"Set MTU"};
  CommandButton Command8{"Monitor Outage"};
  CommandButton Command9{"Hop Stability Test"};
  CommandButton Command10{"Monitor Bandwidth"};
  CommandButton Command11{"The Planet Test"};  // of old, never shown
  CommandButton Command12{"InDepth Net Monitor"};
  CommandButton Command13{"Stability Test"};  // of old, never shown
  ComboBox Combo1;                            // rated speed in KB
  Label Label1;                               // product
  Label Label2;                               // version
  Label Label3;                               // caption of the rated speed
  Label Label4;                               // addresses
  Image Image1;                               // grip that moves the window
  Image Image2;                               // mark of the maker
  Image Image3;                               // download test

 private:
  void Form_Load() override;
  void Form_Unload() override;

  void endIfRunning();
  void showChanges();
  void loadRatedSpeed();
  void showAddresses();
  void judgeSystem();
  void wireTools();
  void openInPlaceOfMenu(WindowName window);

  void Combo1_LostFocus();
  void Image1_MouseDown(MouseButton button);
  void Image1_MouseMove(MouseButton button);
  void Image1_MouseUp(MouseButton button);
  void Image2_Click();

  void endDrag();
  void drawBand(const ScreenRectangle& place);

  Program& program_;
  WindowDrag drag_;
  ScreenRectangle band_;  // where the rubber band stands in a drag
};

}  // namespace veltrin
