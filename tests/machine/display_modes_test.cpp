// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/display_modes.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <libdrm/drm.h>
#include <libdrm/drm_fourcc.h>
#include <map>
#include <set>

namespace veltrin {

static bool operator==(const DisplayMode& left, const DisplayMode& right) {
  return left.connector == right.connector && left.width == right.width &&
         left.height == right.height && left.refresh == right.refresh && left.depth == right.depth;
}

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// The driver of a card that a test makes up.
class Driver {
 public:
  struct Connector {
    std::uint32_t number = 0;
    std::uint32_t kind = DRM_MODE_CONNECTOR_HDMIA;
    std::uint32_t kindNumber = 1;
    std::uint32_t encoder = 0;
  };
  struct Source {
    bool on = true;
    std::uint16_t width = 0;
    std::uint16_t height = 0;
    std::uint32_t refresh = 0;
    std::uint32_t picture = 0;
  };

  bool answer(unsigned long request, void* about) {
    if (refused.count(request) != 0) {
      return false;
    }
    switch (request) {
      case DRM_IOCTL_MODE_GETRESOURCES:
        return resources(*static_cast<drm_mode_card_res*>(about));
      case DRM_IOCTL_MODE_GETCONNECTOR:
        return connector(*static_cast<drm_mode_get_connector*>(about));
      case DRM_IOCTL_MODE_GETENCODER:
        return encoder(*static_cast<drm_mode_get_encoder*>(about));
      case DRM_IOCTL_MODE_GETCRTC:
        return source(*static_cast<drm_mode_crtc*>(about));
      case DRM_IOCTL_MODE_GETFB:
        return picture(*static_cast<drm_mode_fb_cmd*>(about));
      case DRM_IOCTL_MODE_GETFB2:
        return planes(*static_cast<drm_mode_fb_cmd2*>(about));
      default:
        ADD_FAILURE() << "an unknown request " << request;
        return false;
    }
  }

  std::vector<DisplayMode> modes() {
    return readDisplayModes(
        [this](unsigned long request, void* about) { return answer(request, about); });
  }

  std::vector<Connector> connectors;
  std::map<std::uint32_t, std::uint32_t> encoders;  // the source of each; 0 for none
  std::map<std::uint32_t, Source> sources;
  std::map<std::uint32_t, std::uint32_t> depths;  // of the pictures in one plane
  std::map<std::uint32_t, std::uint32_t> forms;   // of all that the newer question knows
  std::set<unsigned long> refused;
  std::int64_t growth = 0;  // connectors that come, or go, between the two questions for them

 private:
  bool resources(drm_mode_card_res& about) {
    // The kernel fills no more than there is room for, and tells how many there are.
    auto* room = reinterpret_cast<std::uint32_t*>(about.connector_id_ptr);
    const auto there = static_cast<std::uint32_t>(static_cast<std::int64_t>(connectors.size()) +
                                                  (room != nullptr ? growth : 0));
    const std::uint32_t filled =
        std::min({about.count_connectors, there, static_cast<std::uint32_t>(connectors.size())});
    for (std::uint32_t i = 0; room != nullptr && i < filled; ++i) {
      room[i] = connectors[i].number;
    }
    about.count_connectors = there;
    return true;
  }

  bool connector(drm_mode_get_connector& about) {
    EXPECT_EQ(about.count_modes, 1U) << "asks the driver to look for monitors";
    EXPECT_NE(about.modes_ptr, 0U);
    EXPECT_NE(about.connector_id, 0U) << "asks for a connector that is gone";
    const auto found =
        std::find_if(connectors.begin(), connectors.end(),
                     [&](const Connector& each) { return each.number == about.connector_id; });
    if (found == connectors.end()) {
      return false;
    }
    about.connector_type = found->kind;
    about.connector_type_id = found->kindNumber;
    about.encoder_id = found->encoder;
    return true;
  }

  bool encoder(drm_mode_get_encoder& about) {
    const auto found = encoders.find(about.encoder_id);
    about.crtc_id = found == encoders.end() ? 0 : found->second;
    return found != encoders.end();
  }

  bool source(drm_mode_crtc& about) {
    const auto found = sources.find(about.crtc_id);
    if (found == sources.end()) {
      return false;
    }
    about.mode_valid = found->second.on ? 1 : 0;
    about.mode.hdisplay = found->second.width;
    about.mode.vdisplay = found->second.height;
    about.mode.vrefresh = found->second.refresh;
    about.fb_id = found->second.picture;
    return true;
  }

  bool picture(drm_mode_fb_cmd& about) {
    const auto found = depths.find(about.fb_id);
    about.depth = 24;  // without what no colour lies in
    about.bpp = found == depths.end() ? 0 : found->second;
    return found != depths.end();
  }

  bool planes(drm_mode_fb_cmd2& about) {
    const auto found = forms.find(about.fb_id);
    about.pixel_format = found == forms.end() ? 0 : found->second;
    return found != forms.end();
  }
};

class DisplayModesTest : public ::testing::Test {
 protected:
  // A card with one connector that shows a picture.
  DisplayModesTest() {
    driver_.connectors = {{51, DRM_MODE_CONNECTOR_HDMIA, 1, 41}};
    driver_.encoders = {{41, 31}};
    driver_.sources = {{31, {true, 1920, 1080, 60, 71}}};
    driver_.depths = {{71, 32}};
  }

  Driver driver_;
};

TEST_F(DisplayModesTest, TellWhatAConnectorShows) {
  EXPECT_THAT(driver_.modes(), ElementsAre(DisplayMode{"HDMI-A-1", 1920, 1080, 60, 32}));
}

TEST_F(DisplayModesTest, TellSeveralConnectorsInTheirOrder) {
  driver_.connectors = {{52, DRM_MODE_CONNECTOR_DisplayPort, 3, 42},
                        {51, DRM_MODE_CONNECTOR_eDP, 1, 41},
                        {53, DRM_MODE_CONNECTOR_VGA, 1, 0}};
  driver_.encoders = {{41, 31}, {42, 32}};
  driver_.sources = {{31, {true, 1366, 768, 59, 71}}, {32, {true, 3840, 2160, 30, 72}}};
  driver_.depths = {{71, 32}, {72, 16}};
  EXPECT_THAT(driver_.modes(), ElementsAre(DisplayMode{"DP-3", 3840, 2160, 30, 16},
                                           DisplayMode{"eDP-1", 1366, 768, 59, 32}));
}

TEST_F(DisplayModesTest, TellTwoConnectorsThatShowTheSame) {
  driver_.connectors = {{51, DRM_MODE_CONNECTOR_HDMIA, 1, 41},
                        {52, DRM_MODE_CONNECTOR_HDMIA, 2, 42}};
  driver_.encoders = {{41, 31}, {42, 31}};
  EXPECT_THAT(driver_.modes(), ElementsAre(DisplayMode{"HDMI-A-1", 1920, 1080, 60, 32},
                                           DisplayMode{"HDMI-A-2", 1920, 1080, 60, 32}));
}

TEST_F(DisplayModesTest, AreNoneWhereAnyOfTheQuestionsIsRefused) {
  for (const unsigned long request : {DRM_IOCTL_MODE_GETRESOURCES, DRM_IOCTL_MODE_GETCONNECTOR,
                                      DRM_IOCTL_MODE_GETENCODER, DRM_IOCTL_MODE_GETCRTC}) {
    driver_.refused = {request};
    EXPECT_THAT(driver_.modes(), IsEmpty()) << request;
  }
}

TEST_F(DisplayModesTest, AreNoneWithoutAnEncoderOrASource) {
  driver_.connectors[0].encoder = 0;
  driver_.encoders[0] = 31;
  EXPECT_THAT(driver_.modes(), IsEmpty());
  driver_.connectors[0].encoder = 41;
  driver_.encoders[41] = 0;
  driver_.sources[0] = driver_.sources[31];
  EXPECT_THAT(driver_.modes(), IsEmpty());
}

TEST_F(DisplayModesTest, AreNoneOfASourceThatIsOff) {
  driver_.sources[31].on = false;
  EXPECT_THAT(driver_.modes(), IsEmpty());
}

TEST_F(DisplayModesTest, TellADepthByTheFormOfAPictureInSeveralPlanes) {
  driver_.depths.clear();
  for (const auto& [form, bits] :
       std::map<std::uint32_t, std::uint32_t>{{DRM_FORMAT_XRGB8888, 32},
                                              {DRM_FORMAT_XRGB2101010, 32},
                                              {DRM_FORMAT_RGB565, 16},
                                              {DRM_FORMAT_ABGR16161616F, 64},
                                              {DRM_FORMAT_C8, 8},
                                              {DRM_FORMAT_RGB888, 24}}) {
    driver_.forms[71] = form;
    EXPECT_THAT(driver_.modes(), ElementsAre(DisplayMode{"HDMI-A-1", 1920, 1080, 60, bits}))
        << form;
  }
}

TEST_F(DisplayModesTest, TellNoDepthWhereNobodyDoes) {
  driver_.depths.clear();
  const auto without = DisplayMode{"HDMI-A-1", 1920, 1080, 60, 0};
  EXPECT_THAT(driver_.modes(), ElementsAre(without));
  driver_.forms[71] = DRM_FORMAT_NV12;
  EXPECT_THAT(driver_.modes(), ElementsAre(without));
  driver_.sources[31].picture = 0;
  driver_.depths[0] = 32;
  EXPECT_THAT(driver_.modes(), ElementsAre(without));
}

TEST_F(DisplayModesTest, NameTheKindsOfConnectorsAsTheKernelDoes) {
  const std::vector<std::string> names{
      "Unknown-2",   "VGA-2",  "DVI-I-2",     "DVI-D-2",   "DVI-A-2", "Composite-2",
      "SVIDEO-2",    "LVDS-2", "Component-2", "DIN-2",     "DP-2",    "HDMI-A-2",
      "HDMI-B-2",    "TV-2",   "eDP-2",       "Virtual-2", "DSI-2",   "DPI-2",
      "Writeback-2", "SPI-2",  "USB-2",       "Unknown-2"};
  driver_.connectors[0].kindNumber = 2;
  for (std::size_t kind = 0; kind < names.size(); ++kind) {
    driver_.connectors[0].kind = static_cast<std::uint32_t>(kind);
    EXPECT_EQ(driver_.modes()[0].connector, names[kind]);
  }
}

TEST_F(DisplayModesTest, TakeNoConnectorThatCameOrWentMeanwhile) {
  for (const int growth : {1, -1}) {
    driver_.connectors = {{51, DRM_MODE_CONNECTOR_HDMIA, 1, 41},
                          {52, DRM_MODE_CONNECTOR_VGA, 1, 41}};
    driver_.growth = growth;
    EXPECT_EQ(driver_.modes().size(), growth > 0 ? 2U : 1U);
  }
}

TEST_F(DisplayModesTest, DoNotBelieveADriverOfThousandsOfConnectors) {
  driver_.connectors.resize(5000, driver_.connectors[0]);
  EXPECT_THAT(driver_.modes(), IsEmpty());
}

TEST_F(DisplayModesTest, AreNoneOfAMissingCardAndOfADeviceThatIsNone) {
  EXPECT_THAT(displayModesOf("/dev/dri/no-such-card"), IsEmpty());
  EXPECT_THAT(displayModesOf("/dev/null"), IsEmpty());
}

}  // namespace
}  // namespace veltrin
