# Writes OUTPUT, a source file that holds the text of each of MACHINES.
set(rows "")
foreach(machine IN LISTS MACHINES)
  file(READ "${machine}" json)
  string(JSON name GET "${json}" name)
  get_filename_component(fileName "${machine}" NAME)
  string(APPEND rows "    {\"${name}\", \"${fileName}\", R\"json(${json})json\"},\n")
endforeach()
file(CONFIGURE OUTPUT "${OUTPUT}" @ONLY CONTENT [[
// Written by EmbedMachines.cmake from the files in machines/.
#include "halvermonte/BundledMachines.hpp"

namespace halvermonte {

const std::vector<BundledMachine>& bundledMachines() {
  static const std::vector<BundledMachine> machines = {
@rows@  };
  return machines;
}

}  // namespace halvermonte
]])
