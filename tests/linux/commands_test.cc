#include "platform/linux/Commands.hpp"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/LinuxMachine.hpp"

namespace halvermonte::test {
namespace {

using ::testing::Eq;
using ::testing::MatchesRegex;
using ::testing::Optional;

/// Whether this process has ended children that nobody has waited for.
bool hasChildren() {
  siginfo_t info{};
  return waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) == 0;
}

/// Waits for children that other tests of this process have left.
void collectStrays() {
  while (waitpid(-1, nullptr, 0) > 0) {
  }
}

/// Sets a signal's handling for as long as the object lives.
class Handling {
 public:
  Handling(int signal, void (*handler)(int)) : signal_(signal) {
    struct sigaction action {};
    action.sa_handler = handler;
    sigaction(signal, &action, &former_);
  }
  Handling(const Handling&) = delete;
  Handling& operator=(const Handling&) = delete;
  ~Handling() { sigaction(signal_, &former_, nullptr); }

 private:
  int signal_;
  struct sigaction former_ {};
};

volatile sig_atomic_t signalsSeen = 0;
void countSignal(int) { signalsSeen = signalsSeen + 1; }

TEST(Commands, OutputIsWhatTheShellPrints) {
  LinuxMachine machine;
  EXPECT_THAT(machine.outputOfCommand("printf '%s\\0|' \"$((6 * 7))\""),
              Optional(Eq(std::string("42\0|", 4))));
  EXPECT_THAT(machine.outputOfCommand("exit 3"), Optional(Eq("")));
  EXPECT_THAT(machine.outputOfCommand("true; echo a; exit 1"), Optional(Eq("a\n")));
}

TEST(Commands, TenMegabytesAreReadCompletely) {
  const auto output = LinuxMachine().outputOfCommand("head -c 10000000 /dev/zero | tr '\\0' x");
  ASSERT_TRUE(output);
  EXPECT_EQ(*output, std::string(10'000'000, 'x'));
}

TEST(Commands, OutputIsReadUntilItsLastWriterEnds) {
  // The second writer waits until the shell has ended.
  const auto output = LinuxMachine().outputOfCommand(
      "(while [ \"$(cut -d ' ' -f 3 /proc/$$/stat)\" != Z ]; do :; done; echo late) & echo early");
  EXPECT_THAT(output, Optional(Eq("early\nlate\n")));
}

TEST(Commands, NoChildIsLeftBehind) {
  collectStrays();
  {
    LinuxMachine machine;
    for (int i = 0; i < 5; ++i) machine.outputOfCommand("echo");
  }
  EXPECT_FALSE(hasChildren());
}

TEST(Commands, LaterCallCollectsAShellThatOutlivedItsOutput) {
  LinuxMachine machine;
  std::array<int, 2> ends;
  ASSERT_EQ(pipe(ends.data()), 0);
  const auto shell = machine.outputOfCommand("echo $$; exec >&-; exec cat > /dev/null");
  ASSERT_TRUE(shell);
  const pid_t pid = std::stoi(*shell);
  siginfo_t info{};
  ASSERT_EQ(kill(pid, SIGKILL), 0) << "the call did not wait for the shell";
  ASSERT_EQ(waitid(P_PID, static_cast<id_t>(pid), &info, WEXITED | WNOWAIT), 0);
  machine.outputOfCommand("true");
  EXPECT_NE(waitid(P_PID, static_cast<id_t>(pid), &info, WEXITED | WNOWAIT | WNOHANG), 0);
  close(ends[0]);
  close(ends[1]);
}

TEST(Commands, HostsOwnChildrenAreLeftAlone) {
  const pid_t own = fork();
  if (own == 0) _exit(7);
  siginfo_t info{};
  ASSERT_EQ(waitid(P_PID, static_cast<id_t>(own), &info, WEXITED | WNOWAIT), 0);
  {
    LinuxMachine machine;
    machine.outputOfCommand("true");
    machine.outputOfCommand("true");
  }
  int status = 0;
  ASSERT_EQ(waitpid(own, &status, WNOHANG), own);
  EXPECT_EQ(WEXITSTATUS(status), 7);
}

TEST(Commands, CommandsRunIfTheHostIgnoresItsChildren) {
  collectStrays();
  const Handling ignored(SIGCHLD, SIG_IGN);
  {
    LinuxMachine machine;
    EXPECT_THAT(machine.outputOfCommand("echo one"), Optional(Eq("one\n")));
    EXPECT_THAT(machine.outputOfCommand("echo two"), Optional(Eq("two\n")));
  }
  EXPECT_FALSE(hasChildren());
}

TEST(Commands, SignalHandlersAreKeptAndInterruptionsDoNoHarm) {
  const Handling counting(SIGUSR1, countSignal);
  const Handling children(SIGCHLD, countSignal);
  signalsSeen = 0;
  const auto output =
      LinuxMachine().outputOfCommand("for i in 1 2 3 4 5; do kill -USR1 $PPID; echo $i; done");
  EXPECT_THAT(output, Optional(Eq("1\n2\n3\n4\n5\n")));
  EXPECT_GT(signalsSeen, 0);
  struct sigaction now {};
  sigaction(SIGUSR1, nullptr, &now);
  EXPECT_EQ(now.sa_handler, &countSignal);
  sigaction(SIGCHLD, nullptr, &now);
  EXPECT_EQ(now.sa_handler, &countSignal);
}

TEST(Commands, ShellInheritsNoDescriptor) {
  const int inheritable = open("/dev/null", O_RDONLY);
  ASSERT_GE(inheritable, 3);
  // The fourth belongs to ls, which reads the folder.
  EXPECT_THAT(LinuxMachine().outputOfCommand("ls /proc/self/fd"), Optional(Eq("0\n1\n2\n3\n")));
  close(inheritable);
}

TEST(Commands, ShellStartsWithoutBlockedOrIgnoredSignals) {
  const Handling ignored(SIGPIPE, SIG_IGN);
  sigset_t blocked;
  sigset_t former;
  sigemptyset(&blocked);
  sigaddset(&blocked, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &blocked, &former);
  const auto signals = LinuxMachine().outputOfCommand("grep -E '^Sig(Blk|Ign):' /proc/self/status");
  pthread_sigmask(SIG_SETMASK, &former, nullptr);
  // The C library reserves signals from 32 on.
  EXPECT_THAT(signals, Optional(MatchesRegex("SigBlk:\t0+\nSigIgn:\t[0-9a-f]+0000000\n")));
}

TEST(Commands, ShellSharesTheHostsStandardError) {
  ::testing::internal::CaptureStderr();
  EXPECT_THAT(LinuxMachine().outputOfCommand("echo out; echo trouble >&2"), Optional(Eq("out\n")));
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "trouble\n");
}

TEST(Commands, CommandsRunIfTheHostHasNoStandardOutput) {
  const int output = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 10);
  close(STDOUT_FILENO);
  const auto text = LinuxMachine().outputOfCommand("echo still");
  dup2(output, STDOUT_FILENO);
  close(output);
  EXPECT_THAT(text, Optional(Eq("still\n")));
}

TEST(Commands, OutputIsAbsentIfNoDescriptorIsLeft) {
  LinuxMachine machine;
  std::vector<int> held;
  for (;;) {
    const int next = open("/dev/null", O_RDONLY | O_CLOEXEC);
    if (next < 0) break;
    held.push_back(next);
  }
  const auto output = machine.outputOfCommand("echo");
  for (const int descriptor : held) close(descriptor);
  EXPECT_EQ(output, std::nullopt);
  EXPECT_THAT(machine.outputOfCommand("echo again"), Optional(Eq("again\n")));
}

}  // namespace
}  // namespace halvermonte::test
