// The computers of tests/linux/trees.
#pragma once

#include <string>
#include <vector>

#include "tests/linux/Tree.hpp"

namespace halvermonte::test {

/// Their names, such as "notebook".
std::vector<std::string> treeFiles();

std::string textOfTreeFile(const std::string& name);

void layOutTreeFile(const std::string& name, const Tree& tree);

}  // namespace halvermonte::test
