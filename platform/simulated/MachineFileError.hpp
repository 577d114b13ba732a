// What is wrong with a machine file.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace halvermonte {

/// what() is one line: the file as it was given, the place and what was expected there, as in
/// "intel.json: /ticks/3/smc/keys/TC0P/type: expected a text of 4 characters". The place is a JSON
/// pointer, the root's written as "/"; line and column where the text is no JSON.
class MachineFileError : public std::runtime_error {
 public:
  MachineFileError(std::string_view fileName, std::string_view place, std::string_view expectation)
      : std::runtime_error(std::string(fileName) + ": " + std::string(place) + ": expected " +
                           std::string(expectation)) {}
  explicit MachineFileError(const std::string& line) : std::runtime_error(line) {}
};

}  // namespace halvermonte
