// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/board.h"

#include "machine/fact_text.h"
#include "machine/smbios.h"

namespace veltrin {
namespace {

// drivers/firmware/dmi-id.c of the kernel.
constexpr const char* kTexts = "/sys/class/dmi/id/board_";

BoardFacts boardIn(const SmbiosTable& table) {
  const auto board = table.first(SmbiosType::Board);
  return board ? BoardFacts{board->text(0x04), board->text(0x05), board->text(0x06),
                            board->text(0x07)}
               : BoardFacts();
}

}  // namespace

BoardFacts boardFacts(const FileTree& files) {
  const auto text = [&](const char* name) {
    return printable(files.text(kTexts + std::string(name)));
  };
  const BoardFacts facts{text("vendor"), text("name"), text("version"), text("serial")};
  return facts == BoardFacts() ? boardIn(SmbiosTable(files)) : facts;
}

}  // namespace veltrin
