// Hosts read values in the idiom of the headers: directly, or through a handle with a name.
#include <gtest/gtest.h>

#include <atomic>
#include <concepts>
#include <latch>
#include <sstream>
#include <thread>
#include <utility>

#include "halvermonte/Exceptions.hpp"
#include "tests/support/Sampler.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

// True if the call compiles: for a value with a name, and for one that a getter returns.
template <class Handle>
concept GivesView = requires { std::declval<Handle>().view(); };
template <class Handle>
concept GivesElements = requires { std::declval<Handle>().elements(); };
template <class Handle>
concept GivesEntries = requires { std::declval<Handle>().entries(); };
template <class Handle>
concept GivesBegin = requires { std::declval<Handle>().begin(); };
template <class Handle>
concept GivesEnd = requires { std::declval<Handle>().end(); };
template <class Handle>
concept GivesReason = requires { std::declval<Handle>().reason(); };

static_assert(GivesView<const Text&> && !GivesView<Text> && !GivesView<const Text>);
static_assert(GivesElements<const Array&> && !GivesElements<Array> && !GivesElements<const Array>);
static_assert(GivesBegin<const Array&> && !GivesBegin<Array> && !GivesBegin<const Array>);
static_assert(GivesEnd<const Array&> && !GivesEnd<Array> && !GivesEnd<const Array>);
static_assert(GivesEntries<const Dictionary&> && !GivesEntries<Dictionary> &&
              !GivesEntries<const Dictionary>);
static_assert(GivesBegin<const Dictionary&> && !GivesBegin<Dictionary> &&
              !GivesBegin<const Dictionary>);
static_assert(GivesEnd<const Dictionary&> && !GivesEnd<Dictionary> && !GivesEnd<const Dictionary>);
static_assert(GivesReason<const PlatformException&> && !GivesReason<PlatformException>);

// A text becomes a string, and no view of one that is about to end.
static_assert(std::convertible_to<Text, std::string>);
static_assert(!std::convertible_to<Text, std::string_view>);
static_assert(!std::constructible_from<std::string_view, Text>);

// What is returned from an object holds itself.
static_assert(std::same_as<decltype(std::declval<Array>()[0]), Value>);
static_assert(std::same_as<decltype(std::declval<Dictionary>().find("")), Value>);
static_assert(std::same_as<decltype(std::declval<Image>().picture()), std::shared_ptr<const void>>);

void show(std::ostream& out, const Value& value) {
  out << value.asText() << value.asNumber().float64Value();
  for (const Value& element : value.asArray()) show(out, element);
  for (const auto& [key, element] : value.asDictionary()) {
    out << key << element.asText();
  }
}

/// Every property, each by its own getter.
std::string shown(const StatisticsData& record) {
  std::ostringstream out;
  const auto showAny = [&out](const auto& value) {
    if constexpr (std::integral<std::remove_cvref_t<decltype(value)>>) {
      out << int{value};
    } else {
      show(out, value);
    }
  };
#define PROPERTY(name, Name, Type, initial, copy, turn) showAny(record.name());
#include "halvermonte/properties.def"

  // As the headers write it, with nothing between the getter and the use.
  out << record.diskIO_readText() << record.sensors_temperature().str();
  for (const auto& [name, degrees] : record.sensors()) out << name << degrees.asText();
  for (const Value& history : record.diskIO_activities()) {
    for (const Value& rate : history.asArray()) out << rate.asNumber().float32Value();
  }
  const Text names = record.sensors_temperature();
  out << names.view();
  return std::move(out).str();
}

/// For the address and the thread sanitizer: what a reader holds is replaced while it reads.
TEST(LifetimesTest, EveryPropertyIsReadWhilePassesReplaceIt) {
  TestMachine machine;
  machine.drives = {DriveStatistics{.bytesRead = 1'000'000, .bytesWritten = 1'000'000}};
  Sampler sampler(machine);
  constexpr int kRounds = 200;
  std::atomic<bool> done = false;
  std::latch start(2);
  bool complete = true;
  {
    std::jthread reader([&] {
      start.arrive_and_wait();
      for (int round = 0; round < kRounds; ++round) {
        complete = complete && shown(*sampler.record()).find("test") != std::string::npos;
      }
      done = true;
    });
    start.arrive_and_wait();
    for (int pass = 0; !done; ++pass) {
      machine.keys.insert_or_assign("TC0P", sp78(40 + pass % 20));
      machine.keys.insert_or_assign("FNum", ui8(static_cast<uint8_t>(1 + pass % 2)));
      machine.asked.clear();
      ++machine.now;
      sampler.pass();
    }
  }
  EXPECT_TRUE(complete);
}

}  // namespace
}  // namespace halvermonte::test
