// The hardware report, in the form in which a Mac prints it.
#pragma once

#include <string>

#include "platform/linux/ProcessorName.hpp"

namespace halvermonte::linuxos {

/// The report about the processor: an XML property list.
std::string hardwareReport(const ProcessorName& processor);

}  // namespace halvermonte::linuxos
