// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/simulated_store.h"

#include <algorithm>
#include <chrono>

#include "platform/portable/file_names.h"
#include "platform/portable/registry_value.h"
#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

constexpr int kBadFileMode = 54;

// Replaces its file when it is closed, as the real one does.
class SimulatedStream : public TextStream {
 public:
  SimulatedStream(SimulatedFiles& files, std::string path, std::string content)
      : files_(files), path_(std::move(path)), content_(std::move(content)) {}
  ~SimulatedStream() override {
    skip([this] { finish(); });
  }
  SimulatedStream(const SimulatedStream&) = delete;
  SimulatedStream& operator=(const SimulatedStream&) = delete;

  void Write(const std::string& text) override {
    if (closed_ || files_.refuseText) throw StatementFailed("Bad file mode", kBadFileMode);
    content_ += text;
  }

  void Close() override {
    ++files_.closings;
    finish();
  }

 private:
  void finish() {
    if (closed_) return;
    closed_ = true;
    files_.replace(path_, content_);
  }

  SimulatedFiles& files_;
  std::string path_;
  std::string content_;
  bool closed_ = false;
};

// Writes over the bytes of its file as they come, as the real one does.
class SimulatedBytes : public ByteStream {
 public:
  SimulatedBytes(SimulatedFiles& files, std::string path) : files_(files), path_(std::move(path)) {}

  void Put(std::string_view bytes) override {
    std::string content = files_.contents[path_];
    content.replace(std::min(place_, content.size()), bytes.size(), bytes);
    files_.replace(path_, content);
    place_ += bytes.size();
  }

  void Close() override { ++files_.closings; }

 private:
  SimulatedFiles& files_;
  std::string path_;
  std::size_t place_ = 0;
};

std::string keyPath(const std::string& path) { return LCase(path); }

}  // namespace

bool SimulatedFiles::exists(const std::string& path) const {
  return contents.count(path) != 0 || std::find(others.begin(), others.end(), path) != others.end();
}

void SimulatedFiles::CreateFolder(const std::string& path) {
  if (refuseOpening) throw StatementFailed("Permission denied", kPermissionDenied);
  folders.push_back(path);
}

std::unique_ptr<TextStream> SimulatedFiles::OpenTextFile(const std::string& folder,
                                                         const std::string& name, FileMode mode,
                                                         bool create) {
  requireFileName(folder, name);
  if (mode == FileMode::Reading) throw StatementFailed("Bad file mode", kBadFileMode);
  if (refuseOpening) throw StatementFailed("Permission denied", kPermissionDenied);
  const std::string path = folder + name;
  const bool exists = contents.count(path) != 0;
  if (!exists && !create) throw StatementFailed("File not found", kFileNotFound);
  if (!exists) replace(path, {});
  return std::make_unique<SimulatedStream>(*this, path,
                                           mode == FileMode::Appending ? contents[path] : "");
}

std::unique_ptr<TextStream> SimulatedFiles::openOutput(const std::string& path) {
  if (refuseOpening) throw StatementFailed("Permission denied", kPermissionDenied);
  if (contents.count(path) == 0) replace(path, {});
  return std::make_unique<SimulatedStream>(*this, path, std::string());
}

std::string SimulatedFiles::readText(const std::string& path) const {
  const auto found = contents.find(path);
  if (found == contents.end()) throw StatementFailed("File not found", kFileNotFound);
  return found->second;
}

std::unique_ptr<ByteStream> SimulatedFiles::openBinary(const std::string& path) {
  note("open " + path);
  if (refuseOpening) throw StatementFailed("Permission denied", kPermissionDenied);
  if (contents.count(path) == 0) contents[path] = {};
  return std::make_unique<SimulatedBytes>(*this, path);
}

void SimulatedFiles::Kill(const std::string& path) {
  note("delete " + path);
  if (refuseOpening) throw StatementFailed("Permission denied", kPermissionDenied);
  if (contents.erase(path) == 0) throw StatementFailed("File not found", kFileNotFound);
}

void SimulatedFiles::replace(const std::string& path, const std::string& content) {
  if (refuseWriting) throw StatementFailed("Disk full", kDiskFull);
  contents[path] = content;
}

std::string SimulatedProfiles::read(const std::optional<std::string>& section,
                                    const std::optional<std::string>& key,
                                    const std::string& fallback, std::size_t size,
                                    const std::string& path) {
  ++reads;
  note("read " + section.value_or("*") + "/" + key.value_or("*"));
  return ProfileEngine::read(section, key, fallback, size, path);
}

bool SimulatedProfiles::write(const std::string& section, const std::optional<std::string>& key,
                              const std::optional<std::string>& value, const std::string& path) {
  ++writes;
  note("write " + section + "/" + key.value_or("*") + "=" + value.value_or("*"));
  return ProfileEngine::write(section, key, value, path);
}

std::optional<std::string> SimulatedProfiles::load(const std::string& path) {
  return contents[path];
}

bool SimulatedProfiles::store(const std::string& path, const std::string& content) {
  if (!refuseWriting) contents[path] = content;
  return !refuseWriting;
}

std::int32_t SimulatedRegistry::open(std::uint32_t hive, const std::string& path,
                                     std::uint32_t access, Key& key) {
  accesses.push_back(access);
  const auto found = keys.find({hive, keyPath(path)});
  if (found == keys.end()) return kRegistryNotFound;
  ++openKeys;
  key = reinterpret_cast<Key>(&found->second);
  return kRegistrySuccess;
}

std::int32_t SimulatedRegistry::query(Key key, const std::string& name, std::uint32_t& type,
                                      std::uint32_t& size, char* data) {
  note("registry " + name);
  const auto& values = *reinterpret_cast<Values*>(key);
  const auto found = values.find(name);
  if (found == values.end()) return kRegistryNotFound;
  type = found->second.type;
  return handOver(found->second.data, size, data);
}

std::int32_t SimulatedRegistry::set(Key key, const std::string& name, std::uint32_t type,
                                    const std::string& data) {
  (*reinterpret_cast<Values*>(key))[name] = {type, data};
  return kRegistrySuccess;
}

void SimulatedRegistry::close(Key) { --openKeys; }

DateTime SimulatedClock::now() const {
  using namespace std::chrono;
  constexpr auto kStart = sys_days{year{2026} / March / 7} + hours{9} + minutes{5};
  const auto moment = kStart + milliseconds{loop_.milliseconds() + setForward};
  const auto day = floor<days>(moment);
  const year_month_day date(day);
  const hh_mm_ss time(moment - day);
  return {static_cast<int>(date.year()),
          static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day())),
          static_cast<int>(time.hours().count()),
          static_cast<int>(time.minutes().count()),
          static_cast<int>(time.seconds().count()),
          static_cast<int>(time.subseconds().count())};
}

std::string SimulatedClock::shortTime() const { return Format(now(), "hh:nn"); }

}  // namespace veltrin
