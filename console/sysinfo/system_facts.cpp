// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/sysinfo/system_facts.h"

#include "machine/domain.h"
#include "machine/fact_text.h"
#include "machine/moments.h"
#include "machine/mounts.h"
#include "machine/processors.h"
#include "machine/product_id.h"
#include "machine/regional_settings.h"
#include "machine/updates.h"

namespace veltrin {

SystemFacts gatherFacts(const FileTree& files, const Machine& machine) {
  const Kernel kernel = machine.kernel();
  SystemFacts facts;
  facts.host = printable(kernel.host);
  facts.system = operatingSystemFacts(files, machine);
  facts.productId = productId(machine);
  facts.firmware = firmwareFacts(files);
  facts.processors = processorFacts(files, kernel);
  facts.bootDevice = bootDevice(files);
  facts.systemLocale = systemLocale(files, machine);
  facts.inputLocale = inputLocale(files, machine);
  facts.timeZone = timeZoneText(files, machine);
  facts.memory = memoryFacts(files);
  facts.swapPlaces = swapPlaces(files);
  facts.domain = domainOf(files, kernel.host);
  facts.updates = updatesOf(files);
  facts.cards = cardFacts(files, machine);
  return facts;
}

}  // namespace veltrin
