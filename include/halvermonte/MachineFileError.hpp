// The error in a machine file.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "halvermonte/Export.h"
#include "halvermonte/StandardLibrary.hpp"

namespace halvermonte {

/// what() is one line: the file's name, the place and the expectation, as in
/// "intel.json: /ticks/3/smc/keys/TC0P/type: expected a text of 4 characters". The place is a JSON
/// pointer, with "/" for the root. It is line and column if the text is not JSON.
class HALVERMONTE_EXPORT MachineFileError : public std::runtime_error {
 public:
  MachineFileError(std::string_view fileName, std::string_view place, std::string_view expectation);
  explicit MachineFileError(const std::string& line);
  ~MachineFileError() override;
};

}  // namespace halvermonte
