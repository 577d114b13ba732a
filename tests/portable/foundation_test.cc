#include "platform/Foundation.hpp"

#include <gmock/gmock.h>
#include <langinfo.h>
#include <libintl.h>
#include <unistd.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <new>
#include <thread>

#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

using ::testing::MatchesRegex;

TEST(FoundationTest, TheMachineTellsHostNameDateAndCommandOutput) {
  TestMachine machine;
  const ScopedMachine scope(machine);
  machine.hostName = "Gerda's notebook";
  machine.now = 12.5;
  machine.commands["echo"] = std::string("a\0b\xFF", 4);
  machine.commands["none"] = std::nullopt;
  EXPECT_EQ(foundation::localizedHostName(), "Gerda's notebook");
  EXPECT_EQ(foundation::currentDate().secondsSince1970(), 12.5);
  EXPECT_EQ(foundation::outputOfCommand("echo"), std::string("a\0b\xFF", 4));
  EXPECT_EQ(foundation::outputOfCommand("unknown"), "");
  EXPECT_EQ(foundation::outputOfCommand("none"), std::nullopt);
  machine.hostName.reset();
  EXPECT_FALSE(foundation::localizedHostName());
}

TEST(FoundationTest, AFormatTakesItsArgumentOnce) {
  EXPECT_EQ(foundation::formatted("%@/s", "1 KB"), "1 KB/s");
  EXPECT_EQ(foundation::formatted("je Sekunde: %@", "1 KB"), "je Sekunde: 1 KB");
  EXPECT_EQ(foundation::formatted("%@", "%@ again"), "%@ again");
  EXPECT_EQ(foundation::formatted("no place", "1 KB"), "no place");
  EXPECT_EQ(foundation::formatted("", "1 KB"), "");
}

TEST(FoundationTest, ABundleTextWithoutATranslationIsItsKey) {
  EXPECT_EQ(foundation::bundleText("0 KB/s"), "0 KB/s");
  EXPECT_EQ(foundation::bundleText("%@/s"), "%@/s");
  EXPECT_EQ(bind_textdomain_codeset(textdomain(nullptr), nullptr), nullptr)
      << "a host without translations may still choose its charset";
}

/// A catalogue of translations in the host's text domain, for as long as the object is there.
class Translations {
 public:
  explicit Translations(const std::string& entries) {
    char pattern[] = "/tmp/halvermonte-XXXXXX";
    directory_ = mkdtemp(pattern);
    const auto messages = directory_ / "de" / "LC_MESSAGES";
    std::filesystem::create_directories(messages);
    std::ofstream(directory_ / "de.po")
        << "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=UTF-8\\n\"\n"
        << entries;
    const std::string command =
        "msgfmt -o " + (messages / "host.mo").string() + ' ' + (directory_ / "de.po").string();
    made_ = std::system(command.c_str()) == 0;
    setenv("LANGUAGE", "de", 1);
    translated_ = std::setlocale(LC_MESSAGES, "C.UTF-8") != nullptr;
    bindtextdomain("host", directory_.c_str());
    textdomain("host");
  }
  ~Translations() {
    textdomain("messages");
    std::setlocale(LC_MESSAGES, "C");
    unsetenv("LANGUAGE");
    std::filesystem::remove_all(directory_);
  }
  bool made() const { return made_ && translated_; }

 private:
  std::filesystem::path directory_;
  bool made_ = false;
  bool translated_ = false;
};

TEST(FoundationTest, ABundleTextIsTheHostsTranslation) {
  if (std::system("command -v msgfmt >/dev/null") != 0) GTEST_SKIP() << "msgfmt is not installed";
  const Translations translations("msgid \"%@/s\"\nmsgstr \"%@ je Sekunde\"\n");
  ASSERT_TRUE(translations.made());
  EXPECT_EQ(foundation::bundleText("%@/s"), "%@ je Sekunde");
  EXPECT_EQ(foundation::bundleText("0 KB/s"), "0 KB/s");
}

TEST(FoundationTest, ABundleTextIsUTF8WhateverCharsetTheHostHas) {
  if (std::system("command -v msgfmt >/dev/null") != 0) GTEST_SKIP() << "msgfmt is not installed";
  const Translations translations("msgid \"%@/s\"\nmsgstr \"%@ / \u00E0 \u20AC\"\n");
  ASSERT_TRUE(translations.made());
  ASSERT_STRNE(nl_langinfo(CODESET), "UTF-8") << "the C locale's charset is ASCII";
  const std::string inASCII = gettext("%@/s");
  EXPECT_EQ(foundation::bundleText("%@/s"), "%@ / \u00E0 \u20AC");
  EXPECT_EQ(gettext("%@/s"), inASCII) << "the host's own calls get what they got before";

  bind_textdomain_codeset("host", "ISO-8859-1");
  EXPECT_EQ(foundation::bundleText("%@/s"), "%@ / \u00E0 \u20AC");
  EXPECT_STREQ(bind_textdomain_codeset("host", nullptr), "ISO-8859-1");
  bind_textdomain_codeset("host", "UTF-8");
  EXPECT_EQ(foundation::bundleText("%@/s"), "%@ / \u00E0 \u20AC");
}

TEST(FoundationTest, ALogLineGoesToStandardErrorWithDateProgramAndProcess) {
  testing::internal::CaptureStderr();
  testing::internal::CaptureStdout();
  foundation::log("a loose cable, 100%s");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_THAT(testing::internal::GetCapturedStderr(),
              MatchesRegex("[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{3} "
                           "[^ ]+\\[" +
                           std::to_string(getpid()) + "\\] a loose cable, 100%s\n"));
}

TEST(FoundationTest, AGuardAnswersThePlatformExceptionsReason) {
  EXPECT_EQ(foundation::reasonRaisedBy([] {}), std::nullopt);
  EXPECT_EQ(foundation::reasonRaisedBy([] { throw PlatformException("a reason"); }), "a reason");
  EXPECT_EQ(foundation::reasonRaisedBy([] { throw RangeException("too far"); }), "too far");
  EXPECT_EQ(foundation::reasonRaisedBy([] { throw PlatformException(""); }), "");
}

TEST(FoundationTest, EveryOtherExceptionPassesTheGuard) {
  EXPECT_THROW(foundation::reasonRaisedBy([] { throw std::bad_alloc(); }), std::bad_alloc);
  EXPECT_THROW(foundation::reasonRaisedBy([] { throw std::runtime_error("no"); }),
               std::runtime_error);
  EXPECT_THROW(foundation::reasonRaisedBy([] { throw 1; }), int);
}

TEST(FoundationTest, APlatformExceptionCarriesItsReason) {
  const RangeException exception("index 2 beyond 1");
  EXPECT_EQ(exception.reason(), "index 2 beyond 1");
  EXPECT_STREQ(static_cast<const std::exception&>(exception).what(), "index 2 beyond 1");
}

}  // namespace
}  // namespace halvermonte::test
