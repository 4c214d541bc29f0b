// SPDX-License-Identifier: GPL-3.0-or-later
// The words of the report for the codes of devices.
#pragma once

#include <string>

#include "platform/wmi.h"

namespace veltrin {

// The report's working text. Each lookup takes the value of the property that it is named
// after, looks for the code that equals it, and changes the text. A value that is no known
// code, null among them, leaves the text as it was, unless the lookup says otherwise.
//
// The lookups that put the value first make the text the value's own, with the word of a known
// code behind it; null makes it empty. They throw StatementFailed for an array, and leave the
// text then. Those of arrays begin with an empty text, and throw StatementFailed for what is
// no array, with the text empty. The others do not fail.
class StatusText {
 public:
  std::string text;

  // Of Win32_CacheMemory: the value first.
  void Location(const WmiValue& value);
  void Level(const WmiValue& value);

  // Of Win32_SystemSlot. Of an array of voltages the words of all, one behind the other; of
  // connectors the word of the last that has one.
  void MaxDataWidth(const WmiValue& value);
  void VccMixedVoltageSupport(const WmiValue& value);
  void ConnectorType(const WmiValue& value);

  // Of controllers. Availability puts the value first. PowerManagementCapabilities is an array
  // in all that is known, and no array equals a code: the text then stays.
  void Availability(const WmiValue& value);
  void ConfigManagerErrorCode(const WmiValue& value);
  void PowerManagementCapabilities(const WmiValue& value);
  void ProtocolSupported(const WmiValue& value);

  // Of Win32_PointingDevice.
  void DeviceInterface(const WmiValue& value);

  // Of Win32_ComputerSystem.
  void AdminPasswordStatus(const WmiValue& value);
  void KeyboardPasswordStatus(const WmiValue& value);
  void PowerOnPasswordStatus(const WmiValue& value);
  void FrontPanelResetStatus(const WmiValue& value);
  void ChassisBootupState(const WmiValue& value);
  void ThermalState(const WmiValue& value);
  void PowerSupplyState(const WmiValue& value);
  void ResetCapability(const WmiValue& value);
  void PowerState(const WmiValue& value);
  void WakeUpType(const WmiValue& value);
};

}  // namespace veltrin
