#include "monitor/exporter/Users.hpp"

#include <gmock/gmock.h>

#include <ctime>
#include <string>
#include <vector>

#include "monitor/Failure.hpp"
#include "tests/monitor/exporter/PasswordFile.hpp"

namespace halvermonte::test {
namespace {

using ::testing::HasSubstr;

std::string complaintAbout(const std::string& text) {
  const PasswordFile file(text);
  try {
    const Users users(file.path());
  } catch (const Failure& failure) {
    const std::string line = failure.what();
    return line.substr(0, line.find(file.path())) + "FILE" +
           line.substr(line.find(file.path()) + file.path().size());
  }
  return "(none)";
}

TEST(Users, HaveTheirOwnPasswordsAlone) {
  const PasswordFile file("ann:" + hashOf("one") + "\r\n\n# a comment\nben:" + hashOf("two"));
  const Users users(file.path());
  EXPECT_TRUE(users.have({"ann", "one"}));
  EXPECT_TRUE(users.have({"ben", "two"}));
  EXPECT_FALSE(users.have({"ann", "two"}));
  EXPECT_FALSE(users.have({"ann", ""}));
  EXPECT_FALSE(users.have({"ann", "one "}));
  EXPECT_FALSE(users.have({"cleo", "one"}));
  EXPECT_FALSE(users.have({"", "one"}));
}

TEST(Users, PasswordDoesNotEndAtANul) {
  const PasswordFile file("ann:" + hashOf("one"));
  EXPECT_FALSE(Users(file.path()).have({"ann", std::string("one\0two", 7)}));
}

double processorSeconds(const Users& users, const Credentials& credentials) {
  const std::clock_t start = std::clock();
  EXPECT_FALSE(users.have(credentials));
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

TEST(Users, UnknownNameTakesAsLongAsAWrongPassword) {
  const PasswordFile file("ann:" + hashOf("one", 9) + "\nben:" + hashOf("two", 4));
  const Users users(file.path());
  const double wrong = processorSeconds(users, {"ann", "two"});
  EXPECT_GT(processorSeconds(users, {"cleo", "two"}), wrong / 2);
  EXPECT_GT(processorSeconds(users, {"", ""}), wrong / 2);
}

TEST(Users, HashesOfEachKindOfBcryptAreTaken) {
  for (const char* kind : {"$2y$", "$2b$", "$2a$"}) {
    const PasswordFile file("ann:" + hashOf("one").replace(0, 4, kind));
    EXPECT_TRUE(Users(file.path()).have({"ann", "one"})) << kind;
  }
}

TEST(Users, OtherLinesAreRefusedWithTheirPlace) {
  const std::string good = hashOf("one"), rest = good.substr(6);
  const std::vector<std::string> lines = {"ben",
                                          "ben:",
                                          ":" + good,
                                          "ben:secret",
                                          "ben:{SHA}NWoZK3kTsExUV00Ywo1G5jlUKKs=",
                                          "ben:$apr1$abcdefgh$0123456789012345678901",
                                          "ben:" + good + "x",
                                          "ben:$2y$03" + rest,
                                          "ben:$2y$32" + rest,
                                          "ben:$2y$4x" + rest,
                                          "ben:$2z$04" + rest,
                                          "ben:$2y$04." + rest.substr(1),
                                          "ben:" + good.substr(0, 59) + "!"};
  for (const std::string& line : lines) {
    EXPECT_EQ(complaintAbout("ann:" + good + "\n" + line + "\n"),
              "--users FILE:2: expected NAME:HASH with a hash of bcrypt, as htpasswd -B writes it")
        << line;
  }
}

TEST(Users, NameThatComesTwiceIsRefused) {
  const std::string line = "ann:" + hashOf("one") + "\n";
  EXPECT_EQ(complaintAbout(line + line), "--users FILE:2: ann is there already");
}

TEST(Users, FileWithoutUsersIsRefused) {
  EXPECT_EQ(complaintAbout(""), "--users FILE: has no user");
  EXPECT_EQ(complaintAbout("# nobody\n"), "--users FILE: has no user");
}

TEST(Users, FileThatCannotBeReadIsAFailure) {
  for (const char* path : {"/none/users", "/"}) {
    try {
      const Users users(path);
      ADD_FAILURE() << path;
    } catch (const Failure& failure) {
      EXPECT_THAT(failure.what(), HasSubstr("--users " + std::string(path) + ": "));
      EXPECT_EQ(failure.status(), ExitStatus::failure);
    }
  }
}

}  // namespace
}  // namespace halvermonte::test
