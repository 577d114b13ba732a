// The few Foundation services that the core uses, one function each. apple/Foundation.mm calls the
// system's Foundation, and portable/Foundation.cpp does the same elsewhere. Any thread may call
// them.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "halvermonte/Exceptions.hpp"
#include "halvermonte/Values.hpp"
#include "platform/AnsweredBy.hpp"

namespace halvermonte {

namespace foundation {
inline namespace HALVERMONTE_PLATFORM {

/// The computer's name as its owner sees it; absent if the platform reports none.
Text localizedHostName();

/// The current date by the machine's clock.
Date currentDate();

enum class ByteCountStyle { file = 0, decimal = 2 };

/// A byte count for display, such as "Zero KB", "999 KB" or "1.5 MB".
std::string byteCountText(int64_t bytes, ByteCountStyle style);

/// The host application's translation of the key, or the key itself.
std::string bundleText(const char* key);

/// The format with its "%@" replaced by the argument.
std::string formatted(const std::string& format, const std::string& argument);

/// True if the first text stands before the second in the order shown to people, which ignores case
/// and compares runs of digits by their value ("Core 2" before "Core 10").
bool standsBefore(std::string_view first, std::string_view second);

/// Runs the command under /bin/sh and returns the bytes that it prints, once it has closed its
/// output; absent if it could not be started. Standard error is not redirected. Waits without
/// limit.
std::optional<std::string> outputOfCommand(const std::string& command);

/// The root of a property list in XML or binary form, with its texts, numbers, lists and maps;
/// absent if the bytes are not a property list.
Value propertyList(std::string_view bytes);

/// Prints one line on standard output.
void print(const std::string& line);

/// Writes one line to the system's log.
void log(std::string_view line);

/// Calls, and returns the reason of the platform exception that the call raised; absent if it
/// raised none. Every other exception reaches the caller.
std::optional<std::string> reasonRaisedBy(const std::function<void()>& call);

}  // namespace HALVERMONTE_PLATFORM
}  // namespace foundation
}  // namespace halvermonte
