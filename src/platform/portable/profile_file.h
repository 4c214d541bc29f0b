// Profile files on disk, read and written by the program itself.
#pragma once

#include <functional>
#include <string>

#include "platform/profile_store.h"

namespace veltrin {

// Keeps profile files as UTF-8, or as whatever bytes are in them. A file is read
// anew for every call, so that what other programs wrote is seen, and replaced as a
// whole by every write that changes it. A file that is missing reads as an empty
// one. As in the system's calls, a text ends at its first NUL, an empty list of keys
// reads as the fallback and an empty list of sections as nothing, and the fallback
// loses the blanks at its end. Sizes count characters, so that a value that is cut
// ends in a whole one.
class ProfileFile : public ProfileStore {
 public:
  // Turns a path of the program's into one of the system's.
  using NativePath = std::function<std::string(const std::string&)>;

  explicit ProfileFile(NativePath nativePath);

  std::string read(const std::optional<std::string>& section, const std::optional<std::string>& key,
                   const std::string& fallback, std::size_t size, const std::string& path) override;

  // Also false for a section or key name with a line break in it, which no file
  // could give back. Deleting what is not there is a success and makes no file.
  bool write(const std::string& section, const std::optional<std::string>& key,
             const std::optional<std::string>& value, const std::string& path) override;

 private:
  NativePath nativePath_;
};

}  // namespace veltrin
