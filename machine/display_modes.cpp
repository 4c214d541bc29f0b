// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/display_modes.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <libdrm/drm.h>
#include <libdrm/drm_fourcc.h>
#include <optional>
#include <string_view>
#include <sys/ioctl.h>
#include <unistd.h>

namespace veltrin {
namespace {

// More connectors than any card has; a driver that tells of more is not believed.
constexpr std::uint32_t kMostConnectors = 256;

// The kinds of connectors by their numbers, in the names of the kernel
// (drm_connector_enum_list in drivers/gpu/drm/drm_connector.c).
constexpr std::array<std::string_view, 21> kKinds{
    "Unknown", "VGA",       "DVI-I", "DVI-D", "DVI-A",     "Composite", "SVIDEO",
    "LVDS",    "Component", "DIN",   "DP",    "HDMI-A",    "HDMI-B",    "TV",
    "eDP",     "Virtual",   "DSI",   "DPI",   "Writeback", "SPI",       "USB"};

// Bits of a pixel by the code of its form (drm_fourcc.h), for pictures of which the older
// question is refused, as they lie in several planes. Alpha counts, as it does there.
struct PixelForm {
  std::uint32_t code;
  std::uint32_t bits;
};
constexpr std::array kPixelForms{
    PixelForm{DRM_FORMAT_C8, 8},
    PixelForm{DRM_FORMAT_RGB565, 16},
    PixelForm{DRM_FORMAT_XRGB1555, 16},
    PixelForm{DRM_FORMAT_RGB888, 24},
    PixelForm{DRM_FORMAT_XRGB8888, 32},
    PixelForm{DRM_FORMAT_ARGB8888, 32},
    PixelForm{DRM_FORMAT_XBGR8888, 32},
    PixelForm{DRM_FORMAT_ABGR8888, 32},
    PixelForm{DRM_FORMAT_XRGB2101010, 32},
    PixelForm{DRM_FORMAT_ARGB2101010, 32},
    PixelForm{DRM_FORMAT_XBGR2101010, 32},
    PixelForm{DRM_FORMAT_ABGR2101010, 32},
    PixelForm{DRM_FORMAT_XBGR16161616F, 64},
    PixelForm{DRM_FORMAT_ABGR16161616F, 64},
};

// The connectors of the card, by their numbers.
std::vector<std::uint32_t> connectorsOf(const DriverCall& call) {
  drm_mode_card_res counts{};
  if (!call(DRM_IOCTL_MODE_GETRESOURCES, &counts) || counts.count_connectors > kMostConnectors) {
    return {};
  }
  std::vector<std::uint32_t> connectors(counts.count_connectors);
  drm_mode_card_res resources{};
  resources.count_connectors = counts.count_connectors;
  resources.connector_id_ptr = reinterpret_cast<std::uintptr_t>(connectors.data());
  if (!call(DRM_IOCTL_MODE_GETRESOURCES, &resources)) {
    return {};
  }
  // One may have come or gone between the two questions.
  connectors.resize(std::min(resources.count_connectors, counts.count_connectors));
  return connectors;
}

std::string nameOf(const drm_mode_get_connector& connector) {
  const std::size_t kind = connector.connector_type;
  return std::string(kKinds[kind < kKinds.size() ? kind : 0]) + "-" +
         std::to_string(connector.connector_type_id);
}

// The bits of a pixel of a picture; 0 when they are not told.
std::uint32_t depthOf(const DriverCall& call, std::uint32_t picture) {
  drm_mode_fb_cmd simple{};
  simple.fb_id = picture;
  if (call(DRM_IOCTL_MODE_GETFB, &simple)) {
    return simple.bpp;
  }
  drm_mode_fb_cmd2 planes{};
  planes.fb_id = picture;
  if (!call(DRM_IOCTL_MODE_GETFB2, &planes)) {
    return 0;
  }
  const auto* form =
      std::find_if(kPixelForms.begin(), kPixelForms.end(),
                   [&](const PixelForm& each) { return each.code == planes.pixel_format; });
  return form == kPixelForms.end() ? 0 : form->bits;
}

// What a connector shows; nothing when no picture goes through it.
std::optional<DisplayMode> modeOf(const DriverCall& call, std::uint32_t number) {
  drm_mode_modeinfo room{};
  drm_mode_get_connector connector{};
  connector.connector_id = number;
  // Without room for any mode the driver would look for a monitor first.
  connector.count_modes = 1;
  connector.modes_ptr = reinterpret_cast<std::uintptr_t>(&room);
  if (!call(DRM_IOCTL_MODE_GETCONNECTOR, &connector) || connector.encoder_id == 0) {
    return std::nullopt;
  }
  drm_mode_get_encoder encoder{};
  encoder.encoder_id = connector.encoder_id;
  if (!call(DRM_IOCTL_MODE_GETENCODER, &encoder) || encoder.crtc_id == 0) {
    return std::nullopt;
  }
  drm_mode_crtc source{};
  source.crtc_id = encoder.crtc_id;
  if (!call(DRM_IOCTL_MODE_GETCRTC, &source) || source.mode_valid == 0) {
    return std::nullopt;
  }
  return DisplayMode{nameOf(connector), source.mode.hdisplay, source.mode.vdisplay,
                     source.mode.vrefresh, source.fb_id == 0 ? 0 : depthOf(call, source.fb_id)};
}

// The open device file of a card.
class CardFile {
 public:
  explicit CardFile(const std::string& path)
      : file_(open(path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)) {
    // Who opens a card that nobody draws on becomes its master, and would lock out a
    // session that starts just now.
    call(DRM_IOCTL_DROP_MASTER, nullptr);
  }

  ~CardFile() {
    if (file_ >= 0) {
      close(file_);
    }
  }

  CardFile(const CardFile&) = delete;
  CardFile& operator=(const CardFile&) = delete;

  bool call(unsigned long request, void* about) const {
    int result = -1;
    do {
      result = ioctl(file_, request, about);
    } while (result < 0 && errno == EINTR);
    return result == 0;
  }

 private:
  int file_;
};

}  // namespace

std::vector<DisplayMode> readDisplayModes(const DriverCall& call) {
  std::vector<DisplayMode> modes;
  for (const std::uint32_t connector : connectorsOf(call)) {
    if (const auto mode = modeOf(call, connector)) {
      modes.push_back(*mode);
    }
  }
  return modes;
}

std::vector<DisplayMode> displayModesOf(const std::string& device) {
  const CardFile card(device);
  return readDisplayModes(
      [&](unsigned long request, void* about) { return card.call(request, about); });
}

}  // namespace veltrin
