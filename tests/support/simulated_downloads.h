// SPDX-License-Identifier: GPL-3.0-or-later
// Downloads whose server a test plays, and a table of interfaces that it fills.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/downloads.h"
#include "platform/interface_table.h"
#include "support/journal.h"

namespace veltrin {

class SimulatedDownloads : public Downloads, public Journalled {
 public:
  // A read that was asked for. What the server does is told at once, from wherever the test
  // calls it; nothing is told of a read that was given up.
  class Asked {
   public:
    Asked(std::string url, int type, std::string name, int readOptions, Routines routines)
        : target(std::move(url)),
          asyncType(type),
          propertyName(std::move(name)),
          options(readOptions),
          routines_(std::move(routines)) {}

    const std::string target;
    const int asyncType;
    const std::string propertyName;
    const int options;
    bool givenUp = false;

    // So many bytes have come so far, of a size that the server announced, or of none (0).
    void comeProgress(std::int64_t bytes, std::int64_t size);

    // The body has come as a whole.
    void comeBody(const std::string& body) { comeBody(std::vector<std::string>{body}); }
    void comeBody(std::vector<std::string> pieces);

    // The read has failed behind so many bytes.
    void comeFailure(std::int64_t bytes = 0);

   private:
    Routines routines_;
  };

  std::vector<std::shared_ptr<Asked>> asked;
  bool refuse = false;  // every URL is none

  std::unique_ptr<Read> AsyncRead(const std::string& target, int asyncType,
                                  const std::string& propertyName, int options,
                                  Routines routines) override;
};

class SimulatedInterfaces : public InterfaceTable {
 public:
  std::vector<MIB_IFROW> rows;
  std::vector<std::uint32_t> answers;  // of the calls to come; behind the last, the table
  std::vector<bool> orders;            // that were asked for

  std::uint32_t GetIfTable(std::uint8_t* table, std::uint32_t& size, bool order) override;
};

}  // namespace veltrin
