// What the hardware report prints: any bytes give a name or "".
#include "fuzz/CommandOutput.hpp"
#include "fuzz/Passes.hpp"

using namespace halvermonte;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  CommandOutput machine(data, size);
  const ScopedMachine scope(machine);
  static const HalvermonteSensorsEngine engine;
  require(static_cast<bool>(engine.askSytemInfoForProcessorName()), "the name is never absent");
  return 0;
}
