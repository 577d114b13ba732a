#include "tests/linux/TreeFile.hpp"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

namespace halvermonte::test {
namespace {

const std::filesystem::path kSource = HALVERMONTE_SOURCE;

std::filesystem::path fileOf(const std::string& name) {
  return kSource / "tests/linux/trees" / (name + ".tree");
}

}  // namespace

std::vector<std::string> treeFiles() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(kSource / "tests/linux/trees")) {
    if (entry.path().extension() == ".tree") names.push_back(entry.path().stem());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string textOfTreeFile(const std::string& name) {
  std::ifstream stream(fileOf(name));
  return {std::istreambuf_iterator<char>(stream), {}};
}

void layOutTreeFile(const std::string& name, const Tree& tree) {
  std::ostringstream command;
  command << kSource / "scripts/lay-out-tree" << ' ' << fileOf(name) << ' ' << tree.at("");
  EXPECT_EQ(std::system(command.str().c_str()), 0);
}

}  // namespace halvermonte::test
