// SPDX-License-Identifier: GPL-3.0-or-later
#include "desk/window_manager.h"

#include <cstdlib>
#include <memory>
#include <poll.h>
#include <stdexcept>
#include <string_view>
#include <xcb/xcb.h>

namespace veltrin::desk {
namespace {

using Clock = std::chrono::steady_clock;

struct Release {
  void operator()(void* memory) const { std::free(memory); }
  void operator()(xcb_connection_t* server) const { xcb_disconnect(server); }
};
using Connection = std::unique_ptr<xcb_connection_t, Release>;

xcb_atom_t atomOf(xcb_connection_t* server, std::string_view name) {
  const auto cookie =
      xcb_intern_atom(server, 0, static_cast<std::uint16_t>(name.size()), name.data());
  const std::unique_ptr<xcb_intern_atom_reply_t, Release> reply(
      xcb_intern_atom_reply(server, cookie, nullptr));
  if (!reply) throw std::runtime_error("the X server does not answer");
  return reply->atom;
}

// A window that is never shown and hears of its own properties.
xcb_window_t makeListener(xcb_connection_t* server, xcb_window_t root) {
  const xcb_window_t window = xcb_generate_id(server);
  const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_create_window(server, 0, window, root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                    XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
  return window;
}

// Asks how wide a frame the window would have (Extended Window Manager Hints 1.5,
// _NET_REQUEST_FRAME_EXTENTS), which is answered by a property of the window.
void askForFrame(xcb_connection_t* server, xcb_window_t root, xcb_window_t window) {
  xcb_client_message_event_t question{};
  question.response_type = XCB_CLIENT_MESSAGE;
  question.format = 32;
  question.window = window;
  question.type = atomOf(server, "_NET_REQUEST_FRAME_EXTENTS");
  xcb_send_event(server, 0, root,
                 XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                 reinterpret_cast<const char*>(&question));
  xcb_flush(server);
}

bool hasChanged(xcb_connection_t* server, xcb_atom_t property) {
  while (const std::unique_ptr<xcb_generic_event_t, Release> event{xcb_poll_for_event(server)}) {
    if ((event->response_type & 0x7F) != XCB_PROPERTY_NOTIFY) continue;
    if (reinterpret_cast<const xcb_property_notify_event_t*>(event.get())->atom == property) {
      return true;
    }
  }
  return false;
}

}  // namespace

void awaitWindowManager(std::chrono::milliseconds patience) {
  const auto end = Clock::now() + patience;
  const Connection server(xcb_connect(nullptr, nullptr));
  if (xcb_connection_has_error(server.get()) != 0) throw std::runtime_error("no X server");
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(server.get())).data->root;
  const xcb_atom_t answer = atomOf(server.get(), "_NET_FRAME_EXTENTS");
  askForFrame(server.get(), root, makeListener(server.get(), root));
  while (!hasChanged(server.get(), answer)) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
    pollfd line{xcb_get_file_descriptor(server.get()), POLLIN, 0};
    if (left <= 0 || xcb_connection_has_error(server.get()) != 0) {
      throw std::runtime_error("the window manager does not answer");
    }
    poll(&line, 1, static_cast<int>(left));
  }
}

}  // namespace veltrin::desk
