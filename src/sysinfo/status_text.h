// The words of the report for the codes of devices.
#pragma once

#include <string>

#include "platform/wmi.h"

namespace veltrin {

// The report's working text. Each lookup takes the value of the property that it is named
// after, looks for a number that equals it, and changes the text; a value that is in no table
// leaves the text as it was, unless the lookup says otherwise. None of them fails but those
// of arrays, which throw StatementFailed for what is none and leave the text then.
class StatusText {
 public:
  std::string text;

  // Of Win32_CacheMemory: the value, and the word of its place or level behind it.
  void Location(const WmiValue& value);
  void Level(const WmiValue& value);

  // Of Win32_SystemSlot. Of an array of voltages the words of all, one behind the other; of
  // connectors the word of the last that has one.
  void MaxDataWidth(const WmiValue& value);
  void VccMixedVoltageSupport(const WmiValue& value);
  void ConnectorType(const WmiValue& value);

  // Of controllers. The value, and the word behind it.
  void Availability(const WmiValue& value);
  void ConfigManagerErrorCode(const WmiValue& value);
  void PowerManagementCapabilities(const WmiValue& value);  // an array equals no number
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
