// A host's side of the shared library: accessors compiled into the host, and the library's own, use
// one record at the same time.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <latch>
#include <thread>

#include "halvermonte/StatisticsData.hpp"

namespace {

using halvermonte::StatisticsData;
using halvermonte::Text;

/// Two sets of locks would guard a property against neither side, and races are rare enough to
/// miss.
TEST(SharedLibraryTest, TheHostTakesTheLibrarysLocks) {
  using LockFor = std::mutex& (*)(const void*);
  // The first one behind the host's own symbols.
  const auto librarys =
      reinterpret_cast<LockFor>(dlsym(RTLD_NEXT, "_ZN11halvermonte6detail7lockForEPKv"));
  ASSERT_NE(librarys, nullptr) << dlerror();
  const StatisticsData record;
  EXPECT_EQ(&librarys(&record), &halvermonte::detail::lockFor(&record));
}

/// For the thread sanitizer.
TEST(SharedLibraryTest, TheHostReadsWhatTheLibraryIsWriting) {
  constexpr int kRounds = 2'000;
  StatisticsData source;
  source.setHostName(Text("a name, longer than a short text"));
  StatisticsData record;
  record.setHostName(source.hostName());
  int wrong = 0;
  std::latch start(2);
  {
    std::jthread reader([&] {
      start.arrive_and_wait();
      for (int round = 0; round < kRounds; ++round) {
        wrong += record.hostName() != "a name, longer than a short text";
        wrong += record.sensors_temperature() != "";
      }
    });
    start.arrive_and_wait();
    for (int round = 0; round < kRounds; ++round) record.populateStatisticsDataFrom(source);
  }
  EXPECT_EQ(wrong, 0);
}

}  // namespace
