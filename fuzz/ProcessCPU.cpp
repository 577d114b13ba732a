// What ps prints: any bytes give a number.
#include <cmath>

#include "fuzz/CommandOutput.hpp"
#include "fuzz/Passes.hpp"

using namespace halvermonte;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  CommandOutput machine(data, size);
  const ScopedMachine scope(machine);
  static const HalvermonteSensorsEngine engine;
  require(!std::isnan(engine.askSystemPS(1)), "the CPU use is a number");
  return 0;
}
