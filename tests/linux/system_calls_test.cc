// Counts the system calls of a pass, on the computers in tests/linux/trees, and checks that
// descriptors are given back.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <string_view>

#include "platform/linux/Files.hpp"
#include "tests/linux/Tree.hpp"
#include "tests/linux/WatchedCalls.hpp"
#include "tests/support/Sampler.hpp"

namespace halvermonte::test {
namespace {

const std::filesystem::path kSource = HALVERMONTE_SOURCE;

class SystemCallsOfAPass : public ::testing::TestWithParam<std::string> {
 protected:
  std::filesystem::path file() const {
    return kSource / "tests/linux/trees" / (GetParam() + ".tree");
  }

  /// The number of reads that the file states.
  size_t reads() const {
    std::ifstream stream(file());
    const std::string text(std::istreambuf_iterator<char>(stream), {});
    const std::string_view before = "# reads ";
    const size_t place = text.find(before);
    EXPECT_NE(place, text.npos) << file();
    return place == text.npos ? 0 : std::stoul(text.substr(place + before.size()));
  }
};

TEST_P(SystemCallsOfAPass, AreOneReadForEachFileAndTwoToNoticeChipChanges) {
  const Tree tree;
  std::ostringstream layOut;
  layOut << kSource / "scripts/lay-out-tree" << ' ' << file() << ' ' << tree.at("");
  ASSERT_EQ(std::system(layOut.str().c_str()), 0);
  WatchedCalls calls;
  LinuxMachine machine(tree.roots(), {}, calls);
  Sampler sampler(machine);
  sampler.pass();
  calls.restart();
  calls.seconds += 1;
  sampler.pass();
  EXPECT_EQ(calls.reads, reads());
  EXPECT_EQ(calls.lists, 1u) << "each is a seek and a read";
  EXPECT_EQ(calls.opened.size() + calls.folders + calls.closes, 0u);
}

INSTANTIATE_TEST_SUITE_P(Trees, SystemCallsOfAPass,
                         ::testing::Values("notebook", "mac", "workstation"),
                         [](const auto& tree) { return tree.param; });

TEST(Descriptor, OfAClosedStandardInputIsReadAndClosedLikeAnyOther) {
  Tree tree;
  tree.write("file", "text");
  const int former = fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  close(STDIN_FILENO);
  const auto text = linuxos::textOf(linuxos::SystemCalls::real(), tree.at("file"));
  const bool isClosed = fcntl(STDIN_FILENO, F_GETFD) < 0;
  if (former >= 0) dup2(former, STDIN_FILENO);
  close(former);
  EXPECT_EQ(text, "text");
  EXPECT_TRUE(isClosed);
}

}  // namespace
}  // namespace halvermonte::test
