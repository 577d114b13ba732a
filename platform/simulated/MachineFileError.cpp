#include "halvermonte/MachineFileError.hpp"

namespace halvermonte {

MachineFileError::MachineFileError(std::string_view fileName, std::string_view place,
                                   std::string_view expectation)
    : MachineFileError(std::string(fileName) + ": " + std::string(place) + ": expected " +
                       std::string(expectation)) {}

MachineFileError::MachineFileError(const std::string& line) : std::runtime_error(line) {}

MachineFileError::~MachineFileError() = default;

}  // namespace halvermonte
