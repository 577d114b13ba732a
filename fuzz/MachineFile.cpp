// Machine files: refused with a line, or good for a few ticks.
#include <string_view>

#include "fuzz/Passes.hpp"
#include "halvermonte/SimulatedMachine.hpp"

using namespace halvermonte;

namespace {

std::unique_ptr<SimulatedMachine> read(std::string_view text) {
  try {
    return SimulatedMachine::fromText(text, "fuzz.json");
  } catch (const MachineFileError& error) {
    const std::string_view line = error.what();
    require(line.starts_with("fuzz.json: "), "a refusal names the file");
    require(line.find('\n') == std::string_view::npos, "a refusal is one line");
    return nullptr;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const auto machine = read({reinterpret_cast<const char*>(data), size});
  if (!machine) return 0;
  const ScopedMachine scope(*machine);
  makePasses([&] { machine->nextTick(); });
  return 0;
}
