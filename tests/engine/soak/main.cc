// halvermonte_soak: hundreds of thousands of passes, after which the process must not have grown.
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <fstream>

#include "platform/portable/LiveCounters.hpp"
#include "tests/engine/soak/Soak.hpp"

namespace {

constexpr uint64_t kPasses = 200'000;
constexpr uint64_t kWarmUp = 20'000;  // after it, every name that can occur has occurred
constexpr uint64_t kStep = 20'000;
constexpr long kMayGrowBy = 1024 * 1024;

/// Bytes of the process in memory.
long residentBytes() {
  std::ifstream pages("/proc/self/statm");
  long all = 0;
  long resident = 0;
  pages >> all >> resident;
  return resident * sysconf(_SC_PAGESIZE);
}

/// False if the process grew. Writes a line for each step.
bool staysAsItIs(halvermonte::test::Soak& soak, FILE* report) {
  using namespace halvermonte::portable;
  long afterWarmUp = 0;
  long grownBy = 0;
  while (soak.passes() < kPasses) {
    soak.pass();
    if (soak.passes() % kStep != 0) continue;
    const long resident = residentBytes();
    if (soak.passes() == kWarmUp) afterWarmUp = resident;
    grownBy = std::max(grownBy, resident - afterWarmUp);
    std::fprintf(report, "%8llu passes  %zu objects  %zu handles  %ld KiB\n",
                 static_cast<unsigned long long>(soak.passes()), liveObjects(), liveHandles(),
                 resident / 1024);
    std::fflush(report);
  }
  std::fprintf(report, "grown by %ld KiB since the warm-up, of which %ld are allowed\n",
               grownBy / 1024, kMayGrowBy / 1024);
  return grownBy <= kMayGrowBy;
}

}  // namespace

int main() {
  // The lines that the engine prints over all these passes would bury the report.
  FILE* const report = fdopen(dup(STDOUT_FILENO), "w");
  if (report == nullptr || std::freopen("/dev/null", "w", stdout) == nullptr ||
      std::freopen("/dev/null", "w", stderr) == nullptr) {
    return 2;
  }
  try {
    halvermonte::test::Soak soak;
    return staysAsItIs(soak, report) ? 0 : 1;
  } catch (const std::exception& exception) {
    std::fprintf(report, "%s\n", exception.what());
    return 1;
  }
}
