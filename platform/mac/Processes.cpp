#include "platform/mac/Processes.hpp"

#include <libproc.h>
#include <mach/mach_time.h>
#include <sys/proc_info.h>

#include <cerrno>
#include <cstring>

namespace halvermonte::macos {
namespace {

/// The kernel counts a process's time in ticks of its clock.
double secondsOf(uint64_t ticks) {
  mach_timebase_info_data_t base{};
  mach_timebase_info(&base);
  return static_cast<double>(ticks) * base.numer / base.denom * 1e-9;
}

}  // namespace

Process readProcess(int32_t identifier) {
  proc_taskallinfo all{};
  const int size = proc_pidinfo(identifier, PROC_PIDTASKALLINFO, 0, &all, sizeof all);
  if (size <= 0 && errno == ESRCH) return NoProcess{};
  if (size <= 0) return UnreadableProcess{std::strerror(errno)};
  const uint64_t start = all.pbsd.pbi_start_tvsec * 1'000'000 + all.pbsd.pbi_start_tvusec;
  return ProcessTimes{
      .cpuSeconds = secondsOf(all.ptinfo.pti_total_user + all.ptinfo.pti_total_system),
      .start = start};
}

}  // namespace halvermonte::macos
