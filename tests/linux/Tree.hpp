// A temporary folder laid out as a computer's /sys, /proc and /etc. The destructor removes it.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "platform/linux/LinuxMachine.hpp"

namespace halvermonte::test {

class Tree {
 public:
  Tree() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tree-XXXXXX").string();
    EXPECT_NE(mkdtemp(pattern.data()), nullptr);
    root_ = pattern;
  }
  Tree(const Tree&) = delete;
  Tree& operator=(const Tree&) = delete;
  ~Tree() { std::filesystem::remove_all(root_); }

  /// Writes a file such as "sys/block/sda/size", and makes the folders above it.
  Tree& write(std::string_view path, std::string_view text) {
    std::filesystem::create_directories(at(path).parent_path());
    std::ofstream(at(path), std::ios::binary) << text;
    return *this;
  }

  /// Makes a link to another place in the tree, which need not exist.
  Tree& link(std::string_view path, std::string_view target) {
    std::filesystem::create_directories(at(path).parent_path());
    std::filesystem::create_symlink(at(target), at(path));
    return *this;
  }

  /// Makes a folder.
  Tree& folder(std::string_view path) {
    std::filesystem::create_directories(at(path));
    return *this;
  }

  Tree& move(std::string_view path, std::string_view target) {
    std::filesystem::rename(at(path), at(target));
    return *this;
  }

  Tree& remove(std::string_view path) {
    std::filesystem::remove_all(at(path));
    return *this;
  }

  std::filesystem::path at(std::string_view path) const { return root_ / path; }
  ComputerFolders roots() const { return {at("sys"), at("proc"), at("etc")}; }

 private:
  std::filesystem::path root_;
};

}  // namespace halvermonte::test
