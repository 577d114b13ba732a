#include "monitor/record/RecordingFile.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "monitor/Failure.hpp"
#include "tests/linux/Tree.hpp"

namespace halvermonte::test {
namespace {

namespace fs = std::filesystem;

class AFileToRecord : public ::testing::Test {
 protected:
  void write(std::string_view path, std::string_view text) const {
    RecordingFile(tree.at(path)).write(text);
  }
  /// The refusal's line, without the folder.
  std::string refusalOf(const std::string& path) const {
    try {
      RecordingFile(path).write("new");
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.status(), ExitStatus::failure);
      return failure.what();
    }
    return "";
  }
  std::string contents(std::string_view path) const {
    std::ifstream file(tree.at(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  size_t filesIn(std::string_view path) const {
    const fs::directory_iterator files(tree.at(path));
    return static_cast<size_t>(std::distance(begin(files), end(files)));
  }

  Tree tree;
};

TEST_F(AFileToRecord, IsMadeWithTheUsualPermissions) {
  const mode_t former = umask(027);
  tree.folder("a");
  write("a/new.json", "text");
  umask(former);
  EXPECT_EQ(contents("a/new.json"), "text");
  EXPECT_EQ(fs::status(tree.at("a/new.json")).permissions(), fs::perms(0640));
  EXPECT_EQ(filesIn("a"), 1U);
}

TEST_F(AFileToRecord, StaysWhatItIsUntilThereIsARecording) {
  tree.write("a/old.json", "old");
  { const RecordingFile file(tree.at("a/old.json")); }
  EXPECT_EQ(contents("a/old.json"), "old");
  const RecordingFile file(tree.at("a/old.json"));
  std::ifstream reader(tree.at("a/old.json"));
  file.write("new, and longer");
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), "old") << "not written over";
  EXPECT_EQ(contents("a/old.json"), "new, and longer");
  EXPECT_EQ(filesIn("a"), 1U);
}

TEST_F(AFileToRecord, KeepsItsPermissions) {
  tree.write("old.json", "old");
  fs::permissions(tree.at("old.json"), fs::perms(0604));
  write("old.json", "new");
  EXPECT_EQ(fs::status(tree.at("old.json")).permissions(), fs::perms(0604));
}

TEST_F(AFileToRecord, IsTheOneThatALinkLeadsTo) {
  tree.write("far/old.json", "old").link("near", "far").link("near/link", "far/old.json");
  fs::create_symlink("link", tree.at("far/second"));
  write("far/second", "new");
  EXPECT_TRUE(fs::is_symlink(tree.at("far/second")));
  EXPECT_TRUE(fs::is_symlink(tree.at("far/link")));
  EXPECT_EQ(contents("far/old.json"), "new");
}

TEST_F(AFileToRecord, IsMadeAtTheEndOfALinkThatLeadsNowhere) {
  tree.folder("far").link("link", "far/new.json");
  write("link", "text");
  EXPECT_TRUE(fs::is_symlink(tree.at("link")));
  EXPECT_EQ(contents("far/new.json"), "text");
}

TEST_F(AFileToRecord, IsRefusedAtOnceIfItCannotBeReplaced) {
  tree.folder("folder").link("circle", "circle");
  for (const auto& [path, reason] :
       {std::pair(tree.at("folder"), "Is a directory"),
        std::pair(tree.at("circle"), "Too many levels of symbolic links"),
        std::pair(tree.at("nowhere/file"), "No such file or directory"),
        std::pair(fs::path("/proc/recording.json"), "No such file or directory")}) {
    EXPECT_EQ(refusalOf(path), path.string() + ": " + reason);
    EXPECT_THROW(const RecordingFile file(path), Failure);
  }
}

TEST_F(AFileToRecord, OnAFullDiskIsRefused) {
  EXPECT_EQ(refusalOf("/dev/full"), "/dev/full: No space left on device");
  EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST_F(AFileToRecord, MayBeAPipe) {
  ASSERT_EQ(mkfifo(tree.at("pipe").c_str(), 0600), 0);
  const int reader = open(tree.at("pipe").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  const RecordingFile file(tree.at("pipe"));
  char text[16] = {};
  EXPECT_EQ(read(reader, text, sizeof text), -1) << "open, and empty";
  file.write("text");
  EXPECT_EQ(read(reader, text, sizeof text), 4);
  EXPECT_STREQ(text, "text");
  EXPECT_TRUE(fs::is_fifo(tree.at("pipe")));
  close(reader);
}

}  // namespace
}  // namespace halvermonte::test
