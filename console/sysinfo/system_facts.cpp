#include "console/sysinfo/system_facts.h"

#include "console/sysinfo/domain.h"
#include "console/sysinfo/fact_text.h"
#include "console/sysinfo/moments.h"
#include "console/sysinfo/mounts.h"
#include "console/sysinfo/processors.h"
#include "console/sysinfo/product_id.h"
#include "console/sysinfo/regional_settings.h"
#include "console/sysinfo/updates.h"

namespace veltrin {

SystemFacts gatherFacts(const FileTree& files, const Machine& machine) {
  const Kernel kernel = machine.kernel();
  SystemFacts facts;
  facts.host = printable(kernel.host);
  facts.system = operatingSystemFacts(files, machine);
  facts.productId = productId(files);
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
