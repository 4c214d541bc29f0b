// SPDX-License-Identifier: GPL-3.0-or-later
// A registry that is kept in one text file.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "platform/portable/profile_text.h"
#include "platform/registry.h"

namespace veltrin {

// The file has the form of a profile file. A key is a section named by hive and path
// ("HKEY_CURRENT_USER\Software\Veltrin"), a value a line of it: "MTU=sz:1500" for a
// text, "Count=dword:0000000f" for a number of 4 bytes, and "Name=hex(3):00ff", with
// the type's number, for everything else. Bytes that a line cannot hold are written
// as '%' and two hexadecimal digits; the nameless value has the name "@". People may
// edit it. The file is read anew for every call and replaced as a whole by `set`.
class FileRegistry : public Registry {
 public:
  // `file` is the system's own path. A missing file is a registry with empty hives.
  explicit FileRegistry(std::string file);

  // Makes a key and those above it, for the installation and tests. Returns 0 also
  // when it exists already, which writes nothing, else the system's error number.
  std::int32_t createKey(std::uint32_t hive, const std::string& path);

  // 2 when there is no such key, 6 for an unknown hive, 161 for a path that starts
  // with a backslash. An empty path opens the hive itself.
  std::int32_t open(std::uint32_t hive, const std::string& path, std::uint32_t access,
                    Key& key) override;

  // 2 when there is no such value, 5 when the key was not opened for it, 6 when it is
  // not open, 13 when the line cannot be understood, 234 when `data` is too small
  // (`size` is then what is needed and nothing is copied), 1018 when the key is gone.
  std::int32_t query(Key key, const std::string& name, std::uint32_t& type, std::uint32_t& size,
                     char* data) override;

  // Errors as for `query`; 112 when the disk is full, 1016 when the file cannot be
  // written. The old value is then still there.
  std::int32_t set(Key key, const std::string& name, std::uint32_t type,
                   const std::string& data) override;

  void close(Key key) override;

 private:
  struct OpenKey {
    std::string section;
    std::uint32_t access = 0;
    bool isHive = false;  // a hive exists without a section of its own
  };

  // Finds an open key with one of the rights on values and loads the file.
  std::int32_t use(Key key, std::uint32_t right, OpenKey& opened, ProfileText& file) const;
  std::int32_t load(ProfileText& file) const;
  std::int32_t store(const ProfileText& file) const;

  std::string file_;
  std::map<Key, OpenKey> open_;
  Key next_ = 1;
};

}  // namespace veltrin
