#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/HostName.hpp"
#include "tests/linux/Tree.hpp"

namespace halvermonte::test {
namespace {

using ::testing::Eq;
using ::testing::HasSubstr;
using ::testing::Optional;

std::string valueOf(std::string_view line) {
  return linuxos::assignedValue(line, "PRETTY_HOSTNAME").value_or("(none)");
}

TEST(HostName, OwnersNameIsUnquotedAsByAShell) {
  EXPECT_EQ(valueOf("PRETTY_HOSTNAME=Cellar\n"), "Cellar");
  EXPECT_EQ(valueOf("PRETTY_HOSTNAME=Cellar  \r\n"), "Cellar");
  EXPECT_EQ(valueOf("PRETTY_HOSTNAME=Ann\\'s\\ box"), "Ann's box");
  EXPECT_EQ(valueOf("PRETTY_HOSTNAME=\"Ann's \\\"big\\\" box\"\n"), "Ann's \"big\" box");
  EXPECT_EQ(valueOf("PRETTY_HOSTNAME=\"C:\\net \\\\ \\$5\""), "C:\\net \\ $5");
  EXPECT_EQ(valueOf("PRETTY_HOSTNAME='a \\\"b\" c'\n"), "a \\\"b\" c");
  EXPECT_EQ(valueOf("PRETTY_HOSTNAME=\" spaced \"\n"), " spaced ");
}

TEST(HostName, LastAssignmentOfTheVariableIsUsed) {
  EXPECT_EQ(valueOf("PRETTY_HOSTNAME=one\nICON=x\nPRETTY_HOSTNAME=two\n"), "two");
  EXPECT_EQ(valueOf("#PRETTY_HOSTNAME=one\nXPRETTY_HOSTNAME=two\n"), "(none)");
  EXPECT_EQ(valueOf("PRETTY_HOSTNAME"), "(none)");
  EXPECT_EQ(valueOf("PRETTY_HOSTNAME=\n"), "");
  EXPECT_EQ(valueOf("PRETTY_HOSTNAME=\nICON=computer\n"), "");
  EXPECT_EQ(valueOf("PRETTY_HOSTNAME=\"open"), "open");
}

TEST(HostName, OwnersNameIsPreferredToTheKernels) {
  Tree tree;
  tree.write("proc/sys/kernel/hostname", "cellar-3\n");
  LinuxMachine machine(tree.roots());
  EXPECT_THAT(machine.localizedHostName(), Optional(Eq("cellar-3")));
  tree.write("etc/machine-info", "PRETTY_HOSTNAME=\"\"\n");
  EXPECT_THAT(machine.localizedHostName(), Optional(Eq("cellar-3")));
  tree.write("etc/machine-info", "CHASSIS=server\nPRETTY_HOSTNAME=\"The cellar\"\n");
  EXPECT_THAT(machine.localizedHostName(), Optional(Eq("The cellar")));
}

TEST(HostName, IsAbsentInATreeWithoutOne) {
  const Tree tree;
  EXPECT_EQ(LinuxMachine(tree.roots()).localizedHostName(), std::nullopt);
  ComputerFolders withoutEtc = tree.roots();
  withoutEtc.etc = ComputerFolders().etc;
  EXPECT_EQ(LinuxMachine(withoutEtc).localizedHostName(), std::nullopt);
}

TEST(HostName, ThisComputerHasOne) { EXPECT_NE(LinuxMachine().localizedHostName(), std::nullopt); }

TEST(MachineName, TreeIsNotThisComputer) {
  const Tree tree;
  LinuxMachine machine(tree.roots());
  EXPECT_FALSE(machine.isThisComputer());
  EXPECT_EQ(machine.name(), "tree at " + tree.at("sys").string());
  EXPECT_FALSE(LinuxMachine({.proc = tree.at("proc")}).isThisComputer());
  EXPECT_TRUE(LinuxMachine().isThisComputer());
  EXPECT_TRUE(makeThisComputer()->isThisComputer());
}

TEST(MachineName, ModelIsTheFirstTextThatIsNotAPlaceholder) {
  Tree tree;
  const auto model = [&] {
    return linuxos::modelName(linuxos::SystemCalls::real(), tree.at("sys"));
  };
  EXPECT_EQ(model(), "");
  tree.write("sys/class/dmi/id/board_name", "X570 Taichi\n");
  tree.write("sys/class/dmi/id/product_name", "To Be Filled By O.E.M.\n");
  EXPECT_EQ(model(), "X570 Taichi");
  tree.write("sys/class/dmi/id/product_name", "XPS 13  9310 \n");
  EXPECT_EQ(model(), "XPS 13 9310");
  using namespace std::string_view_literals;
  tree.write("sys/firmware/devicetree/base/model", "Apple MacBook Air (M1, 2020)\0"sv);
  EXPECT_EQ(model(), "Apple MacBook Air (M1, 2020)");
}

TEST(MachineName, PlaceholderIsNoModel) {
  Tree tree;
  tree.write("sys/class/dmi/id/board_name", "X570 Taichi\n");
  for (const char* placeholder :
       {"", "Default string", "Not Applicable", "Not Specified", "O.E.M", "OEM", "None",
        "Product Name", "System Product Name", "To Be Filled By O.E.M.", "To be filled by O.E.M.",
        "Undefined", "Unknown"}) {
    tree.write("sys/class/dmi/id/product_name", std::string(placeholder) + "\n");
    EXPECT_EQ(linuxos::modelName(linuxos::SystemCalls::real(), tree.at("sys")), "X570 Taichi")
        << placeholder;
  }
}

}  // namespace
}  // namespace halvermonte::test
