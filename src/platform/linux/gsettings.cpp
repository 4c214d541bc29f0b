// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/gsettings.h"

#include <dlfcn.h>

namespace veltrin {
namespace {

// The functions of libgio-2.0 and what it stands on, whose flags are ints, and whose objects
// nobody looks into. It ends the program for a schema or key that is not there, so these are
// looked for first.
class Gio {
 public:
  Gio() : library_(dlopen("libgio-2.0.so.0", RTLD_NOW | RTLD_LOCAL)) {
    // It is never closed: it has threads by then.
    isThere_ =
        library_ != nullptr && find(defaultSource_, "g_settings_schema_source_get_default") &&
        find(lookUp_, "g_settings_schema_source_lookup") &&
        find(hasKey_, "g_settings_schema_has_key") && find(pathOf_, "g_settings_schema_get_path") &&
        find(dropSchema_, "g_settings_schema_unref") && find(open_, "g_settings_new_full") &&
        find(valueOf_, "g_settings_get_value") && find(dropObject_, "g_object_unref") &&
        find(isOfType_, "g_variant_is_of_type") && find(textOf_, "g_variant_get_string") &&
        find(print_, "g_variant_print") && find(dropValue_, "g_variant_unref") &&
        find(free_, "g_free");
  }

  std::optional<std::string> setting(const std::string& name, const std::string& key) const {
    void* source = isThere_ ? defaultSource_() : nullptr;
    void* schema = source != nullptr ? lookUp_(source, name.c_str(), 1) : nullptr;
    if (schema == nullptr) {
      return std::nullopt;
    }
    std::optional<std::string> text;
    if (hasKey_(schema, key.c_str()) != 0 && pathOf_(schema) != nullptr) {
      text = valueIn(schema, key);
    }
    dropSchema_(schema);
    return text;
  }

 private:
  template <class Function>
  bool find(Function*& function, const char* name) const {
    function = reinterpret_cast<Function*>(dlsym(library_, name));
    return function != nullptr;
  }

  std::string valueIn(void* schema, const std::string& key) const {
    void* settings = open_(schema, nullptr, nullptr);
    void* value = valueOf_(settings, key.c_str());
    std::string text;
    if (isOfType_(value, "s") != 0) {
      text = textOf_(value, nullptr);
    } else {
      char* printed = print_(value, 0);
      text = printed;
      free_(printed);
    }
    dropValue_(value);
    dropObject_(settings);
    return text;
  }

  void* library_;
  bool isThere_ = false;
  void* (*defaultSource_)() = nullptr;
  void* (*lookUp_)(void*, const char*, int) = nullptr;
  int (*hasKey_)(void*, const char*) = nullptr;
  const char* (*pathOf_)(void*) = nullptr;
  void (*dropSchema_)(void*) = nullptr;
  void* (*open_)(void*, void*, const char*) = nullptr;
  void* (*valueOf_)(void*, const char*) = nullptr;
  void (*dropObject_)(void*) = nullptr;
  int (*isOfType_)(void*, const char*) = nullptr;
  const char* (*textOf_)(void*, unsigned long*) = nullptr;
  char* (*print_)(void*, int) = nullptr;
  void (*dropValue_)(void*) = nullptr;
  void (*free_)(void*) = nullptr;
};

}  // namespace

std::optional<std::string> gsetting(const std::string& schema, const std::string& key) {
  static const Gio gio;
  return gio.setting(schema, key);
}

}  // namespace veltrin
