// Counts the system calls of a pass, on the computers in tests/linux/trees, and checks that
// descriptors are given back.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include <string>
#include <string_view>

#include "platform/linux/Files.hpp"
#include "tests/linux/TreeFile.hpp"
#include "tests/linux/WatchedCalls.hpp"
#include "tests/support/Sampler.hpp"

namespace halvermonte::test {
namespace {

class SystemCallsOfAPass : public ::testing::TestWithParam<std::string> {
 protected:
  /// The number of reads that the file states.
  size_t reads() const {
    const std::string text = textOfTreeFile(GetParam());
    const std::string_view before = "# reads ";
    const size_t place = text.find(before);
    EXPECT_NE(place, text.npos) << GetParam();
    return place == text.npos ? 0 : std::stoul(text.substr(place + before.size()));
  }
};

TEST_P(SystemCallsOfAPass, AreOneReadForEachFileAndTwoToNoticeChipChanges) {
  const Tree tree;
  layOutTreeFile(GetParam(), tree);
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

INSTANTIATE_TEST_SUITE_P(Trees, SystemCallsOfAPass, ::testing::ValuesIn(treeFiles()),
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
