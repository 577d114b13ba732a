// Meant for the thread sanitizer as much as for its own expectations.
#include <gtest/gtest.h>

#include <latch>
#include <thread>

#include "tests/record/PropertyTable.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

constexpr int kRounds = 300;

/// Two values that a property changes between, each as long as the handle to it alone.
Value alternative(Kind kind, int which) {
  const std::string label = which == 0 ? "one, longer than a short text" : "the other, longer too";
  switch (kind) {
    case Kind::text:
      return Text(label);
    case Kind::number:
      return Number::ofInt32(which);
    case Kind::array:
      return Array({Text(label)});
    case Kind::dictionary:
      return Dictionary({{Text("key"), Text(label)}});
    case Kind::date:
      return Date(which);
    case Kind::image:
      return Image(std::make_shared<int>(which));
    case Kind::flag:
    case Kind::integer:
      break;
  }
  return {};
}

void write(StatisticsData& record, int rounds) {
  for (int round = 0; round < rounds; ++round) {
    for (const Property& property : propertyTable()) {
      if (property.isInteger()) {
        property.accessors.setInteger(record, round % 2);
      } else {
        property.accessors.set(record, alternative(property.kind, round % 2));
      }
    }
  }
}

/// How often a property held something that nobody stored.
int read(const StatisticsData& record, int rounds) {
  int wrong = 0;
  for (int round = 0; round < rounds; ++round) {
    for (const Property& property : propertyTable()) {
      if (property.isInteger()) {
        const int64_t value = property.accessors.getInteger(record);
        wrong += value < -1 || value > 1;
        continue;
      }
      const Value value = property.accessors.get(record);
      if (value.kind() == Value::Kind::array) {
        for (const Value& element : value.asArray()) {
          wrong += element.asText().str().size() < 5;
        }
      }
      if (value.kind() == Value::Kind::number) wrong += value.asNumber().uint64Value() > 1;
    }
  }
  return wrong;
}

TEST(RecordThreadsTest, WritersAndReadersOfAllPropertiesNeverMeetHalfAValue) {
  TestMachine machine;
  const ScopedMachine scope(machine);
  StatisticsData record;
  StatisticsData snapshot;
  int wrong = 0;
  std::latch start(4);
  {
    std::jthread writer([&] {
      start.arrive_and_wait();
      write(record, kRounds);
    });
    std::jthread secondWriter([&] {
      start.arrive_and_wait();
      write(record, kRounds);
    });
    std::jthread reader([&] {
      start.arrive_and_wait();
      wrong = read(record, kRounds);
    });
    start.arrive_and_wait();
    for (int round = 0; round < kRounds; ++round) snapshot.populateStatisticsDataFrom(record);
  }
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(read(snapshot, 1), 0);
}

/// What ends with a property's former value may be the host's own code, and may use the record.
TEST(RecordThreadsTest, AFormerValueMayUseTheRecordAsItEnds) {
  TestMachine machine;
  const ScopedMachine scope(machine);
  StatisticsData record;
  bool ended = false;
  auto* const picture = new int(0);
  record.setNetwork_ipExternalCountryFlag(
      Image(std::shared_ptr<const void>(picture, [&](const void*) {
        delete picture;
        ended = !record.network_ipExternalCountryFlag();
      })));
  record.setNetwork_ipExternalCountryFlag(Image());
  EXPECT_TRUE(ended);
}

}  // namespace
}  // namespace halvermonte::test
