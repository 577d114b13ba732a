#include <gtest/gtest.h>
#include <pthread.h>

#include <csignal>
#include <future>
#include <thread>
#include <variant>
#include <vector>

#include "platform/linux/SystemCalls.hpp"
#include "tests/linux/Computer.hpp"
#include "tests/linux/HeldClock.hpp"

namespace halvermonte::test {
namespace {

TEST(LinuxMachineThreads, MayAskAtTheSameTime) {
  Tree tree;
  addChip(tree, 0, "coretemp", "platform/coretemp.0", {{"temp1", "51000", "Package id 0"}});
  addDrive(tree, "sda", "pci0000:00/block", 1);
  tree.write("proc/sys/kernel/hostname", "cellar\n");
  LinuxMachine machine(tree.roots(), {}, HeldClock::calls());
  const auto ask = [&] {
    for (int i = 0; i < 20; ++i) {
      EXPECT_EQ(temperature(machine, "TC0D"), 51);
      EXPECT_EQ(machine.driveCount(), 1u);
      machine.beginDriveWalk();
      EXPECT_TRUE(std::holds_alternative<DriveStatistics>(machine.drive(0)));
      EXPECT_EQ(machine.localizedHostName(), "cellar");
      EXPECT_EQ(machine.outputOfCommand("echo"), "\n");
    }
  };
  std::vector<std::thread> threads;
  for (int i = 0; i < 3; ++i) threads.emplace_back(ask);
  for (std::thread& thread : threads) thread.join();
}

TEST(LinuxMachineThreads, GetNoSignals) {
  std::promise<bool> areBlocked;
  EXPECT_TRUE(linuxos::SystemCalls::real().startThread([&] {
    sigset_t blocked;
    pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
    areBlocked.set_value(sigismember(&blocked, SIGTERM) == 1 &&
                         sigismember(&blocked, SIGUSR1) == 1);
  }));
  EXPECT_TRUE(areBlocked.get_future().get());
  sigset_t blocked;
  pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
  EXPECT_EQ(sigismember(&blocked, SIGTERM), 0) << "the host's own are as before";
}

}  // namespace
}  // namespace halvermonte::test
