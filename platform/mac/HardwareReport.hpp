// What may be told of a Mac's hardware report.
#pragma once

#include <string>
#include <string_view>

namespace halvermonte::macos {

/// The report, an XML property list, without the texts that tell one Mac from another: of its
/// texts, only those are left that are the same on every Mac of a model.
std::string withoutIdentifiers(std::string_view report);

}  // namespace halvermonte::macos
