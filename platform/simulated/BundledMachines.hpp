// The machine files that come with the library, held within it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace halvermonte {

struct BundledMachine {
  std::string_view name;      ///< as its file has it, such as "Intel Notebook"
  std::string_view fileName;  ///< such as "IntelNotebook.json"
  std::string_view json;      ///< the file's text

  /// One line for a list: the processor and how many cores, keys, sensors, fans and drives the
  /// first tick has. Reads the file.
  std::string description() const;
};

/// All of them, in the order in which they are shown.
const std::vector<BundledMachine>& bundledMachines();

/// The machine of that name, or of that file name without its extension, in whatever case; null
/// where there is none.
const BundledMachine* findBundledMachine(std::string_view name);

}  // namespace halvermonte
