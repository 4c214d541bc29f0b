// SPDX-License-Identifier: GPL-3.0-or-later
// Prints the text of the report, page by page, each page as a job of its own.
#pragma once

#include <string>

#include "forms/combo_box.h"
#include "forms/command_button.h"
#include "forms/image.h"
#include "forms/label.h"
#include "forms/option_button.h"
#include "forms/text_box.h"
#include "frame/program.h"
#include "sysinfo/report_values.h"

namespace veltrin {

class frmPrint : public Form {
 public:
  explicit frmPrint(Program& program);

  ComboBox cboPrinter;
  ComboBox Combo1;  // copies
  ComboBox Combo2;  // size of the letters, in points
  OptionButton Option1{"Portrait"};
  OptionButton Option2{"Landscape"};
  CommandButton cmdPrint{"&Print"};
  CommandButton cmdExit{"Cancel"};
  Label lblPrinter;
  Label Label1;
  Label Label2;
  Label Label3;
  Image Picture1;
  Image Picture2;
  TextBox rtfLap1;  // the text to print
  TextBox rtfLap2;  // the page that is being built

 private:
  void Form_Load() override;
  void showPrinters();
  void readSettings();
  void cmdPrint_Click();
  void writeSettings();
  void printPages();
  void startPage();
  void endPage(Printer& printer);
  PrinterProperties properties() const;
  std::string orientation() const;
  int linesOfPage() const;

  Program& program_;
  ReportValues& report_;
};

}  // namespace veltrin
