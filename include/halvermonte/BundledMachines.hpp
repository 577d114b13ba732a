// The machine files that are built into the library. SimulatedMachine::fromText() makes a Machine
// of one. Any thread may call these functions. Not on macOS.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "halvermonte/Export.h"
#include "halvermonte/StandardLibrary.hpp"

namespace halvermonte {

/// The texts are constant.
struct BundledMachine {
  std::string_view name;      ///< from its file, such as "Intel Notebook"
  std::string_view fileName;  ///< such as "IntelNotebook.json"
  std::string_view json;      ///< the file's text

  /// One line for a list: the processor, and the numbers of cores, keys, sensors, fans and drives
  /// in the first tick. Parses the file at each call.
  HALVERMONTE_EXPORT std::string description() const;
};

/// All of them, in the order in which a program lists them.
HALVERMONTE_EXPORT const std::vector<BundledMachine>& bundledMachines();

/// The machine of that name, or of that file name without its extension. The case does not matter.
/// Null if there is none.
HALVERMONTE_EXPORT const BundledMachine* findBundledMachine(std::string_view name);

}  // namespace halvermonte
