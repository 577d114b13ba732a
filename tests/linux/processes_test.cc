// What processes have used.
#include <gmock/gmock.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <ctime>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <variant>

#include "halvermonte/MachineAnswers.hpp"
#include "platform/linux/LinuxMachine.hpp"
#include "tests/linux/Tree.hpp"
#include "tests/linux/WatchedCalls.hpp"

namespace halvermonte::test {
namespace {

using ::testing::HasSubstr;

constexpr int32_t kIdentifier = 42;
constexpr const char* kFile = "proc/42/stat";

/// The kernel's line with 250 ticks of the process's own and 150 in the kernel, started at 9876.
std::string lineOf(const std::string& name, const std::string& state = "S",
                   const std::string& threads = "1") {
  return "42 (" + name + ") " + state + " 1 42 42 0 -1 4194304 96 7 8 9 250 150 11 12 20 0 " +
         threads + " 0 9876 3133440 408 18446744073709551615 94366457757696 0 0\n";
}

Process processOf(const Tree& tree) { return LinuxMachine(tree.roots()).process(kIdentifier); }

Process processOf(const std::string& line) {
  Tree tree;
  tree.write(kFile, line);
  return processOf(tree);
}

bool isNone(const Process& process) { return std::holds_alternative<NoProcess>(process); }

std::string reasonOf(const Process& process) {
  const auto* const unreadable = std::get_if<UnreadableProcess>(&process);
  return unreadable == nullptr ? "(none)" : unreadable->reason;
}

/// CPU seconds that the process has used.
double usedBy(pid_t identifier) {
  return std::get<ProcessTimes>(LinuxMachine().process(identifier)).cpuSeconds;
}

/// Uses that much CPU on the calling thread.
void use(double seconds) {
  const auto used = [] {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
  };
  for (const double end = used() + seconds; used() < end;) continue;
}

TEST(Processes, UseIsTheirOwnAndTheKernelsOnTheirBehalf) {
  const Process process = processOf(lineOf("sh"));
  ASSERT_TRUE(std::holds_alternative<ProcessTimes>(process)) << reasonOf(process);
  const double ticksPerSecond = static_cast<double>(sysconf(_SC_CLK_TCK));
  EXPECT_EQ(std::get<ProcessTimes>(process).cpuSeconds, 400 / ticksPerSecond);
  EXPECT_EQ(std::get<ProcessTimes>(process).start, 9876U);
}

TEST(Processes, NameMayContainBlanksAndParentheses) {
  for (const char* name : {"tmux: server", "(sd-pam)", "a) Z 9 9 9 (b", ")) R 1", ""}) {
    const Process process = processOf(lineOf(name));
    ASSERT_TRUE(std::holds_alternative<ProcessTimes>(process)) << name;
    EXPECT_EQ(std::get<ProcessTimes>(process).start, 9876U) << name;
  }
}

TEST(Processes, OneThatDoesNotExistIsNone) {
  EXPECT_TRUE(isNone(processOf(Tree())));
  EXPECT_TRUE(isNone(Machine().process(kIdentifier)));
}

TEST(Processes, OneThatEndsWhileItIsReadIsNone) {
  Tree tree;
  tree.write(kFile, lineOf("sh"));
  WatchedCalls calls;
  calls.readFails = failingOn("/42/stat", ESRCH);
  EXPECT_TRUE(isNone(LinuxMachine(tree.roots(), {}, calls).process(kIdentifier)));
}

TEST(Processes, OneThatHasEndedIsNoneBeforeItsParentNotices) {
  const pid_t child = fork();
  if (child == 0) _exit(0);
  siginfo_t info{};
  ASSERT_EQ(waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOWAIT), 0);
  EXPECT_TRUE(isNone(LinuxMachine().process(child)));
  EXPECT_EQ(waitpid(child, nullptr, 0), child);
  EXPECT_TRUE(isNone(processOf(lineOf("sh", "X"))));
}

TEST(Processes, OneWhoseFirstThreadHasEndedGoesOnWithTheOthers) {
  EXPECT_FALSE(isNone(processOf(lineOf("sh", "Z", "2"))));
}

TEST(Processes, OneThatMayNotBeReadHasTheReason) {
  Tree tree;
  tree.write(kFile, lineOf("sh"));
  WatchedCalls calls;
  calls.openFails = failingOn("/42/stat", EACCES);
  EXPECT_EQ(reasonOf(LinuxMachine(tree.roots(), {}, calls).process(kIdentifier)),
            "Permission denied");
}

TEST(Processes, GarbledLineIsNeitherAProcessNorNone) {
  for (const char* line : {"", "\n", "42 (sh", "42 (sh) S 1 42 42 0",
                           "42 (sh) S 1 2 3 4 5 6 7 8 9 10 x 12 13 14 15"
                           " 16 1 18 19 20"}) {
    EXPECT_THAT(reasonOf(processOf(line)), HasSubstr("proc/42/stat is garbled")) << line;
  }
}

/// Whether the file of this process counts: an emulator of another processor shows zeros in it.
bool countsOwnTicks() {
  std::string line;
  std::getline(std::ifstream("/proc/self/stat"), line);
  std::istringstream fields(line.substr(line.rfind(')') + 1));
  std::string field;
  for (int number = 3; number <= 14; ++number) fields >> field;
  return field != "0";
}

TEST(Processes, ThreadsCountEvenIfTheyHaveEnded) {
  constexpr double kUse = 0.1, kTwoTicks = 0.02;
  const double before = usedBy(getpid());
  std::thread(use, kUse).join();
  if (!countsOwnTicks()) GTEST_SKIP() << "the kernel's counters of this process are not to be had";
  EXPECT_GE(usedBy(getpid()), before + kUse - kTwoTicks);
}

TEST(Processes, ReadingOneLeavesNoDescriptor) {
  Tree tree;
  tree.write(kFile, lineOf("sh"));
  WatchedCalls calls;
  LinuxMachine machine(tree.roots(), {}, calls);
  machine.process(kIdentifier);
  EXPECT_EQ(calls.opens("/42/stat"), 1U);
  EXPECT_EQ(calls.closes, 1U);
}

}  // namespace
}  // namespace halvermonte::test
