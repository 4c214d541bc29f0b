// SPDX-License-Identifier: GPL-3.0-or-later
// Graphics cards and monitors.
#include <algorithm>
#include <cstdint>
#include <string_view>

#include "machine/device_names.h"
#include "machine/fact_text.h"
#include "machine/graphics.h"
#include "platform/linux/wmi_classes.h"

namespace veltrin {
namespace {

// 0 is told nowhere.
WmiValue unlessZero(std::uint32_t number) { return number == 0 ? WmiValue() : WmiValue(number); }

// What the monitors at a card can show: the least and the most of all of them.
RefreshRange refreshOf(const GraphicsCard& card) {
  RefreshRange all;
  for (const MonitorFacts& monitor : card.monitors) {
    if (!monitor.edid || !monitor.edid->refresh) {
      continue;
    }
    const RefreshRange& own = *monitor.edid->refresh;
    all.least = all.least == 0 ? own.least : std::min(all.least, own.least);
    all.most = std::max(all.most, own.most);
  }
  return all;
}

std::string hexadecimal(std::uint16_t number) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text = "0x";
  for (const unsigned shift : {12U, 8U, 4U, 0U}) {
    text += kDigits[number >> shift & 0xFU];
  }
  return text;
}

// The database of names keeps the makers of monitors with those of other plug and play
// devices, by "acpi:DEL*:".
std::string makerOf(const EdidFacts& edid, DeviceNames& names) {
  if (edid.maker.empty()) {
    return {};
  }
  const std::string name = names.makerOf("acpi:" + edid.maker + "0000:");
  return name.empty() ? edid.maker : name;
}

// The model's name, which many makers begin with their own.
std::string captionOf(const std::string& maker, const std::string& model) {
  const std::string start = lowerCase(maker.substr(0, maker.find(' ')));
  return lowerCase(model).starts_with(start) ? model : maker + " " + model;
}

WmiObject monitorObject(const MonitorFacts& monitor, DeviceNames& names) {
  WmiObject object;
  if (!monitor.edid) {
    // It is known where something is connected, and nothing of what it is.
    object.properties["Description"] = WmiValue();
    object.properties["Caption"] = orNull(monitor.connector);
    return object;
  }
  // A maker that gives a model no name gives it a number.
  const EdidFacts& edid = *monitor.edid;
  const std::string maker = makerOf(edid, names);
  const std::string model = edid.name.empty() ? hexadecimal(edid.product) : edid.name;
  const std::string caption = captionOf(maker, model);
  object.properties["Description"] = edid.name.empty() ? caption : edid.name;
  object.properties["Caption"] = caption;
  return object;
}

}  // namespace

// Names are those of the hardware database by /sys/bus/pci/devices/*/modalias, what is shown is
// told by /dev/dri/card*, or by /sys/class/graphics/fb0, and the rates by the EDID in
// /sys/class/drm/card*-*/edid (machine/graphics.h).
WmiAnswer win32VideoController(const WmiSources& sources) {
  WmiAnswer answer;
  for (const GraphicsCard& card : graphicsCards(sources.files, *sources.machine)) {
    const RefreshRange refresh = refreshOf(card);
    WmiObject object;
    object.properties["Caption"] = orNull(card.name);
    object.properties["VideoProcessor"] = orNull(card.chip);
    object.properties["CurrentBitsPerPixel"] = unlessZero(card.shown.depth);
    object.properties["CurrentHorizontalResolution"] = unlessZero(card.shown.width);
    object.properties["CurrentVerticalResolution"] = unlessZero(card.shown.height);
    object.properties["CurrentRefreshRate"] = unlessZero(card.shown.refresh);
    object.properties["MinRefreshRate"] = unlessZero(refresh.least);
    object.properties["MaxRefreshRate"] = unlessZero(refresh.most);
    answer.push_back(std::move(object));
  }
  return answer;
}

// /sys/class/drm/card*-*/status and edid.
WmiAnswer win32DesktopMonitor(const WmiSources& sources) {
  DeviceNames names(sources.files);
  WmiAnswer answer;
  for (const MonitorFacts& monitor : connectedMonitors(sources.files)) {
    answer.push_back(monitorObject(monitor, names));
  }
  return answer;
}

}  // namespace veltrin
