// SPDX-License-Identifier: GPL-3.0-or-later
// Files, settings and registry of the simulated platform, kept in memory, with
// faults to order.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/clock.h"
#include "platform/files.h"
#include "platform/portable/profile_file.h"
#include "platform/registry.h"
#include "support/journal.h"
#include "support/simulated_loop.h"

namespace veltrin {

class SimulatedFiles : public Files, public Journalled {
 public:
  std::map<std::string, std::string> contents;  // by full path
  std::vector<std::string> folders;             // made by CreateFolder
  std::vector<std::string> others;              // what else exists, by full path
  bool refuseOpening = false;                   // the folder is not writable
  bool refuseWriting = false;                   // the disk is full
  bool refuseText = false;                      // an open file takes no text
  int closings = 0;                             // of files, by their Close

  // Stores the whole content of a file. Throws StatementFailed on a full disk.
  void replace(const std::string& path, const std::string& content);

  std::string programFolder() const override { return "C:\\Program Files\\Veltrin"; }
  std::string native(const std::string& path) const override { return path; }
  bool exists(const std::string& path) const override;
  void CreateFolder(const std::string& path) override;
  std::unique_ptr<TextStream> OpenTextFile(const std::string& folder, const std::string& name,
                                           FileMode mode, bool create) override;
  std::unique_ptr<TextStream> openOutput(const std::string& path) override;
  std::string readText(const std::string& path) const override;
  std::unique_ptr<ByteStream> openBinary(const std::string& path) override;
  void Kill(const std::string& path) override;
};

// Profile files in memory, read and written by the engine of the real ones.
class SimulatedProfiles : public ProfileEngine, public Journalled {
 public:
  std::map<std::string, std::string> contents;  // by full path
  bool refuseWriting = false;
  int writes = 0;
  int reads = 0;

  std::string read(const std::optional<std::string>& section, const std::optional<std::string>& key,
                   const std::string& fallback, std::size_t size, const std::string& path) override;
  bool write(const std::string& section, const std::optional<std::string>& key,
             const std::optional<std::string>& value, const std::string& path) override;

 protected:
  std::optional<std::string> load(const std::string& path) override;
  bool store(const std::string& path, const std::string& content) override;
};

class SimulatedRegistry : public Registry, public Journalled {
 public:
  struct Value {
    std::uint32_t type = 0;
    std::string data;
  };
  using Values = std::map<std::string, Value>;
  std::map<std::pair<std::uint32_t, std::string>, Values> keys;  // by hive and path
  int openKeys = 0;
  std::vector<std::uint32_t> accesses;  // asked for when keys were opened

  std::int32_t open(std::uint32_t hive, const std::string& path, std::uint32_t access,
                    Key& key) override;
  std::int32_t query(Key key, const std::string& name, std::uint32_t& type, std::uint32_t& size,
                     char* data) override;
  std::int32_t set(Key key, const std::string& name, std::uint32_t type,
                   const std::string& data) override;
  void close(Key key) override;
};

// A calendar that goes with the virtual clock, from 9:05:00 on 7 March 2026.
class SimulatedClock : public Clock {
 public:
  explicit SimulatedClock(const SimulatedLoop& loop) : loop_(loop) {}
  DateTime now() const override;
  std::string shortTime() const override;

  std::int64_t setForward = 0;  // ms by which somebody has set it; back below 0

 private:
  const SimulatedLoop& loop_;
};

}  // namespace veltrin
