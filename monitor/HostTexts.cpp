#include "monitor/HostTexts.hpp"

#include <charconv>
#include <cstdint>
#include <utility>

#include "halvermonte/CountTexts.hpp"

namespace halvermonte {
namespace {

std::string joined(const std::string& first, const char* between, const std::string& second) {
  return first.empty() || second.empty() ? first + second : first + between + second;
}

std::string processorText(const PassView& view) {
  const int32_t physical = view.cores, logical = view.logicalCores;
  std::string cores;
  if (physical > 1 || logical > 1) cores = counted(physical, "core");
  if (logical > physical) cores = joined(cores, ", ", counted(logical, "thread"));
  return joined(view.processor, ", ", cores);
}

std::string uptimeText(const PassView& view) {
  return view.uptime.empty() ? "" : "up " + view.uptime;
}

std::string memoryText(const PassView& view) {
  if (view.memoryTotal.empty()) return "";
  return "memory " + view.memoryUsed + " of " + view.memoryTotal;
}

std::string processText(const PassView& view) {
  if (!view.process) return "";
  const auto [identifier, percent, hasEnded] = *view.process;
  const std::string name = "process " + std::to_string(identifier);
  if (hasEnded) return name + " has ended";
  return name + ": " + (percent ? oneDecimal(*percent) + " % of one core" : "not known yet");
}

}  // namespace

std::vector<std::string> hostTexts(const PassView& view) {
  std::vector<std::string> texts;
  for (std::string text : {view.hostName, processorText(view), uptimeText(view), memoryText(view),
                           processText(view)}) {
    if (!text.empty()) texts.push_back(std::move(text));
  }
  return texts;
}

std::string oneDecimal(double number) {
  char text[512];  // enough for the largest double
  return {text, std::to_chars(text, text + sizeof text, number, std::chars_format::fixed, 1).ptr};
}

}  // namespace halvermonte
