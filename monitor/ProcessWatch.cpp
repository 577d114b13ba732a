#include "monitor/ProcessWatch.hpp"

#include <string>
#include <variant>

#include "monitor/Failure.hpp"

namespace halvermonte {
namespace {

ProcessTimes timesOf(Machine& machine, int32_t identifier) {
  const Process process = machine.process(identifier);
  if (const auto* const times = std::get_if<ProcessTimes>(&process)) return *times;
  const auto* const unreadable = std::get_if<UnreadableProcess>(&process);
  throw Failure("--pid " + std::to_string(identifier) + ": " +
                (unreadable != nullptr ? unreadable->reason : "there is no such process"));
}

}  // namespace

ProcessWatch::ProcessWatch(Machine& machine, int32_t identifier, Clock::time_point now)
    : machine_(machine),
      former_(timesOf(machine, identifier)),
      begin_(now),
      use_{.identifier = identifier} {}

ProcessUse ProcessWatch::use(Clock::time_point now) {
  if (use_.hasEnded) return use_;
  const Process process = machine_.process(use_.identifier);
  const auto* const times = std::get_if<ProcessTimes>(&process);
  if (times != nullptr && times->start == former_.start) {
    measure(*times, now);
  } else {
    use_.percentOfOneCore.reset();
    use_.hasEnded = !std::holds_alternative<UnreadableProcess>(process);
  }
  return use_;
}

void ProcessWatch::measure(const ProcessTimes& times, Clock::time_point now) {
  if (now - begin_ < kShortest) return;
  const std::chrono::duration<double> time = now - begin_;
  const double used = times.cpuSeconds - former_.cpuSeconds;
  use_.percentOfOneCore = static_cast<float>(100 * used / time.count());
  former_ = times;
  begin_ = now;
}

}  // namespace halvermonte
