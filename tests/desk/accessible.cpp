// SPDX-License-Identifier: GPL-3.0-or-later
#include "desk/accessible.h"

#include <atspi/atspi.h>
#include <functional>

namespace veltrin::desk {
namespace {

struct Release {
  void operator()(void* object) const { g_object_unref(object); }
};
using Node = std::unique_ptr<AtspiAccessible, Release>;

std::string taken(char* text) {
  std::string copy = text == nullptr ? "" : text;
  g_free(text);
  return copy;
}

std::string nameOf(AtspiAccessible* node) {
  return taken(atspi_accessible_get_name(node, nullptr));
}

std::string textOf(AtspiAccessible* node) {
  AtspiText* text = atspi_accessible_get_text_iface(node);
  if (text == nullptr) return {};
  std::string held =
      taken(atspi_text_get_text(text, 0, atspi_text_get_character_count(text, nullptr), nullptr));
  g_object_unref(text);
  return held;
}

void readPlace(AtspiAccessible* node, Element& element) {
  AtspiComponent* component = atspi_accessible_get_component_iface(node);
  if (component == nullptr) return;
  AtspiRect* place = atspi_component_get_extents(component, ATSPI_COORD_TYPE_SCREEN, nullptr);
  if (place != nullptr) {
    element.left = place->x;
    element.top = place->y;
    element.width = place->width;
    element.height = place->height;
    g_free(place);
  }
  g_object_unref(component);
}

void readStates(AtspiAccessible* node, Element& element) {
  AtspiStateSet* states = atspi_accessible_get_state_set(node);
  if (states == nullptr) return;
  element.showing = atspi_state_set_contains(states, ATSPI_STATE_SHOWING) != FALSE;
  element.enabled = atspi_state_set_contains(states, ATSPI_STATE_ENABLED) != FALSE;
  g_object_unref(states);
}

// The program's answers may be remembered from before a change.
void forget(AtspiAccessible* node) { atspi_accessible_clear_cache(node); }

Node childOf(AtspiAccessible* node, int index) {
  return Node(atspi_accessible_get_child_at_index(node, index, nullptr));
}

bool hasState(AtspiAccessible* node, AtspiStateType state) {
  AtspiStateSet* states = atspi_accessible_get_state_set(node);
  if (states == nullptr) return false;
  const bool has = atspi_state_set_contains(states, state) != FALSE;
  g_object_unref(states);
  return has;
}

Element read(AtspiAccessible* node, const std::string& window) {
  Element element;
  element.role = taken(atspi_accessible_get_role_name(node, nullptr));
  element.name = nameOf(node);
  element.text = textOf(node);
  element.window = window;
  readPlace(node, element);
  readStates(node, element);
  return element;
}

void collect(AtspiAccessible* node, const std::string& window, std::vector<Element>& elements) {
  forget(node);
  elements.push_back(read(node, window));
  const int children = atspi_accessible_get_child_count(node, nullptr);
  for (int index = 0; index < children; ++index) {
    if (const Node child = childOf(node, index)) collect(child.get(), window, elements);
  }
}

std::optional<Element> focusIn(AtspiAccessible* node, const std::string& window) {
  forget(node);
  if (hasState(node, ATSPI_STATE_FOCUSED)) return read(node, window);
  const int children = atspi_accessible_get_child_count(node, nullptr);
  for (int index = 0; index < children; ++index) {
    const Node child = childOf(node, index);
    if (!child) continue;
    if (auto found = focusIn(child.get(), window)) return found;
  }
  return std::nullopt;
}

// Does something with each window of a program, until that says that it is done.
void goThroughWindows(const std::string& program,
                      const std::function<bool(AtspiAccessible*)>& isDone) {
  constexpr int kPatience = 10000;  // ms, where 800 are usual, for a program on a busy machine
  if (atspi_init() == 0) atspi_set_timeout(kPatience, kPatience);
  const Node desktop(atspi_get_desktop(0));
  forget(desktop.get());
  const int programs = atspi_accessible_get_child_count(desktop.get(), nullptr);
  for (int index = 0; index < programs; ++index) {
    const Node found = childOf(desktop.get(), index);
    if (!found || nameOf(found.get()) != program) continue;
    forget(found.get());
    const int windows = atspi_accessible_get_child_count(found.get(), nullptr);
    for (int child = 0; child < windows; ++child) {
      const Node window = childOf(found.get(), child);
      if (window && isDone(window.get())) return;
    }
  }
}

}  // namespace

std::vector<Element> elementsOf(const std::string& program) {
  std::vector<Element> elements;
  goThroughWindows(program, [&](AtspiAccessible* window) {
    collect(window, nameOf(window), elements);
    return false;
  });
  return elements;
}

std::optional<Element> focusOf(const std::string& program) {
  std::optional<Element> focus;
  goThroughWindows(program, [&](AtspiAccessible* window) {
    forget(window);
    if (hasState(window, ATSPI_STATE_ACTIVE)) focus = focusIn(window, nameOf(window));
    return focus.has_value();
  });
  return focus;
}

}  // namespace veltrin::desk
