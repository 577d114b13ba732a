// Every question of a pass fails once, in every way in which it can: the pass ends as documented,
// leaves nothing open, and the next one is whole.
//
// No reading here is higher than 24, so that one that fails (-1 or 0) is not a fall that the drop
// clamp would damp; and no CPU is so far below another reading that it would be steadied.
#include <gtest/gtest.h>

#include <algorithm>
#include <new>

#include "platform/Foundation.hpp"
#include "platform/Processor.hpp"
#include "platform/portable/LiveCounters.hpp"
#include "tests/engine/CatalogueExpectations.hpp"
#include "tests/engine/FaultyMachine.hpp"
#include "tests/support/RecordTexts.hpp"
#include "tests/support/Sampler.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

constexpr size_t kFixedReads = 17;
constexpr size_t kCatalogueReads = 181;

/// What a pass shows of its sensors and fans.
struct Shown {
  Entries full;
  Entries mini;
  std::optional<Entries> fans;  ///< absent: none

  bool operator==(const Shown&) const = default;
};

void PrintTo(const Shown& shown, std::ostream* stream) {
  *stream << "full " << testing::PrintToString(shown.full) << "\nmini "
          << testing::PrintToString(shown.mini) << "\nfans " << testing::PrintToString(shown.fans);
}

/// A reading for every key, sensors of each sort, two fans and two drives.
struct FullMachine : TestMachine {
  explicit FullMachine(const std::map<std::string, std::string>& names) {
    int degrees = 0;
    for (const std::string& key : expectedTemperatureKeys()) {
      const auto name = names.find(key);
      const bool gpu = name != names.end() && name->second.find("GPU") != std::string::npos;
      keys[key] = sp78(gpu ? 20 : 20 + degrees++ % 5);
    }
    keys["TI0P"] = flt(21.5);
    keys["TI1P"] = flt(22.5);
    setTemperatureSensors({sensor("pACC MTR Temp Sensor1", 23), sensor("pACC MTR Temp Sensor2", 24),
                           sensor("eACC MTR Temp Sensor0", 22), sensor("GPU MTR Temp Sensor4", 21),
                           sensor("Tg1b", 21), sensor("NAND CH0 temp", 22),
                           sensor("gas gauge battery", 23), sensor("PMU tdie1", 24),
                           sensor("ANE MTR Temp Sensor1", 24)});
    keys["FNum"] = ui8(2);
    keys["F0ID"] = fanDescriptor("Left");
    keys["F0Ac"] = fpe2(1200);
    keys["F1ID"] = fanDescriptor("Right");
    keys["F1Ac"] = fpe2(1300);
    nextTick();
  }

  /// A second later, each drive has moved 500 bytes more either way.
  bool nextTick() override {
    now += 1;
    total += 500;
    drives = {DriveStatistics{total, total}, DriveStatistics{total, total}};
    asked.clear();
    return true;
  }

  int64_t total = 0;
};

class Faults : public testing::Test {
 protected:
  Faults() {
    // From here on nothing changes from pass to pass but the drives' totals.
    for (int pass = 0; pass < 80; ++pass) nextPass();
    whole_ = exceptTotals();
    shown_ = shown();
    faulty_.listen();
    nextPass();
    calls_ = faulty_.calls();
  }

  void nextPass() {
    machine_.nextTick();
    sampler_.pass();
  }

  Shown shown() {
    const bool none = sampler_.record()->sensors_fans() == "n/a";
    return {sampler_.full(), sampler_.mini(), none ? std::nullopt : std::optional(sampler_.fans())};
  }

  /// The record but for what grows with each pass.
  std::map<std::string, std::string> exceptTotals() {
    auto properties = described(*sampler_.record());
    for (const char* total :
         {"diskIO_read", "diskIO_write", "diskIO_readText", "diskIO_writeText"}) {
      properties.erase(total);
    }
    return properties;
  }

  /// Lets each question fail that the choice takes, and compares with what the rule expects. Its
  /// arguments are the question's place among the pass's and the way of its failure; no answer
  /// means that the pass is to end with an exception.
  template <class Choice, class Rule>
  void expectOfEach(const Choice& choice, const Rule& rule) {
    int failed = 0;
    for (size_t place = 0; place < calls_.size(); ++place) {
      if (!choice(calls_[place])) continue;
      for (const Way way : waysOf(calls_[place].question)) {
        SCOPED_TRACE(described(calls_[place], way) + ", question " + std::to_string(place));
        if (way == Way::outOfMemory) {
          expectException<std::bad_alloc>(place, way);
        } else if (const std::optional<Shown> expected = rule(place, way)) {
          expectShown(place, way, *expected);
        } else {
          expectException<RangeException>(place, way);
        }
        expectAWholePass();
        ++failed;
        if (HasFailure()) return;  // one fault is enough to look into
      }
    }
    EXPECT_GT(failed, 0);
  }

  void expectShown(size_t place, Way way, const Shown& expected) {
    const std::string fansBefore = described(sampler_.record()->fans());
    const size_t objects = portable::liveObjects();
    const size_t handles = portable::liveHandles();
    faulty_.failAt(place, way);
    nextPass();
    EXPECT_EQ(portable::liveObjects(), objects);
    EXPECT_EQ(portable::liveHandles(), handles);
    EXPECT_EQ(shown(), expected);
    EXPECT_EQ(entriesOf(sampler_.record()->sensors()), sorted(expected.full));
    if (expected.fans) {
      EXPECT_EQ(entriesOf(sampler_.record()->fans()), sorted(*expected.fans));
    } else {
      EXPECT_EQ(described(sampler_.record()->fans()), fansBefore);
    }
  }

  template <class Exception>
  void expectException(size_t place, Way way) {
    const auto before = described(*sampler_.record());
    const size_t objects = portable::liveObjects();
    const size_t handles = portable::liveHandles();
    faulty_.failAt(place, way);
    EXPECT_THROW(nextPass(), Exception);
    EXPECT_EQ(portable::liveObjects(), objects);
    EXPECT_EQ(portable::liveHandles(), handles);
    EXPECT_EQ(described(*sampler_.record()), before) << "nothing is stored";
  }

  void expectAWholePass() {
    const size_t objects = portable::liveObjects();
    const size_t handles = portable::liveHandles();
    faulty_.listen();
    nextPass();
    EXPECT_EQ(portable::liveObjects(), objects);
    EXPECT_EQ(portable::liveHandles(), handles);
    EXPECT_EQ(exceptTotals(), whole_);
    const auto total = static_cast<uint64_t>(2 * machine_.total);
    EXPECT_EQ(sampler_.record()->diskIO_read().uint64Value(), total);
    EXPECT_EQ(sampler_.record()->diskIO_write().uint64Value(), total);
  }

  /// Of two entries of one name the later is kept.
  static Entries sorted(const Entries& entries) {
    std::map<std::string, std::string> byName;
    for (const auto& [name, value] : entries) byName[name] = value;
    return Entries(byName.begin(), byName.end());
  }

  /// How many keys the pass has read before the question.
  size_t readsBefore(size_t place) const {
    const auto end = calls_.begin() + static_cast<std::ptrdiff_t>(place);
    const bool second = calls_[place].question == Question::keyBytes;
    const auto infos = std::count_if(
        calls_.begin(), end, [](const Call& call) { return call.question == Question::keyInfo; });
    return static_cast<size_t>(infos) - (second ? 1 : 0);
  }

  const std::map<std::string, std::string> names_ = expectedNames(Chip::other, 1);
  FullMachine machine_{names_};
  FaultyMachine faulty_{machine_};
  Sampler sampler_{faulty_};
  std::map<std::string, std::string> whole_;
  Shown shown_;
  std::vector<Call> calls_;
};

auto isKeyCall(bool (*ofSubject)(const std::string&)) {
  return [=](const Call& call) {
    const bool key = call.question == Question::keyInfo || call.question == Question::keyBytes;
    return key && ofSubject(call.subject);
  };
}

/// The first entries are the HID sensors': three groups and four sensors.
constexpr std::ptrdiff_t kHIDEntries = 7;
Entries hidAlone(const Entries& list) { return Entries(list.begin(), list.begin() + kHIDEntries); }
Entries withoutHID(const Entries& list) { return Entries(list.begin() + kHIDEntries, list.end()); }

Entries with(Entries list, size_t index, const char* name, const char* value) {
  list[index] = {name, value};
  return list;
}

TEST_F(Faults, OfAReadingCostThatReadingAlone) {
  const std::vector<std::string> keys = expectedTemperatureKeys();
  const auto withoutVisit = [&](size_t failing) {
    Entries full = hidAlone(shown_.full);
    std::map<std::string, int> highest;
    for (size_t visit = 0; visit < keys.size(); ++visit) {
      const auto name = names_.find(keys[visit]);
      if (visit == failing || name == names_.end()) continue;
      int& best = highest[name->second];
      best = std::max(best, int{machine_.keys[keys[visit]].data.bytes[0]});
    }
    for (const auto& [name, value] : withoutHID(shown_.full)) {
      if (highest[name] > 0) full.emplace_back(name, std::to_string(highest[name]));
    }
    return full;
  };
  ASSERT_EQ(withoutVisit(keys.size()), shown_.full);

  expectOfEach(isKeyCall([](const std::string& key) { return key[0] == 'T'; }), [&](size_t place,
                                                                                    Way /*way*/) {
    Shown expected = shown_;
    const size_t read = readsBefore(place);
    if (read < kFixedReads) {
      expected.mini.erase(expected.mini.begin() + kHIDEntries + static_cast<std::ptrdiff_t>(read));
    } else {
      EXPECT_LT(read, kFixedReads + kCatalogueReads);
      expected.full = withoutVisit(read - kFixedReads);
    }
    return std::optional(expected);
  });
}

TEST_F(Faults, OfTheFanCountCostTheFans) {
  expectOfEach(isKeyCall([](const std::string& key) { return key == "FNum"; }),
               [&](size_t /*place*/, Way /*way*/) {
                 return std::optional(Shown{shown_.full, shown_.mini, std::nullopt});
               });
}

TEST_F(Faults, OfAFanSpeedShowTheFanAsStopped) {
  expectOfEach(
      isKeyCall([](const std::string& key) { return key[0] == 'F' && key[2] == 'A'; }),
      [&](size_t place, Way /*way*/) {
        const bool left = calls_[place].subject == "F0Ac";
        return std::optional(Shown{shown_.full, shown_.mini,
                                   with(*shown_.fans, left ? 0 : 1, left ? "Left" : "Right", "0")});
      });
}

TEST_F(Faults, OfAFanNameShowTheFanByItsNumber) {
  const auto isNameCall = [](const Call& call) {
    const bool key = call.question == Question::keyInfo || call.question == Question::keyBytes;
    return key && call.subject[0] == 'F' && call.subject[2] == 'I';
  };
  expectOfEach(isNameCall, [&](size_t place, Way way) {
    const bool left = calls_[place].subject == "F0ID";
    // Not written by the second step, the name stays empty if neither the code's low bits nor
    // the first step say that there is none.
    const bool empty = calls_[place].question == Question::keyBytes &&
                       (way == Way::codeOfHighBits || way == Way::result);
    const char* const number = left ? "Fan 1" : "Fan 2";
    return std::optional(
        Shown{shown_.full, shown_.mini,
              with(*shown_.fans, left ? 0 : 1, empty ? "" : number, left ? "1200" : "1300")});
  });
}

TEST_F(Faults, OfAWideCallShowTheFanByItsNumber) {
  if (kProcessor != Processor::arm64) GTEST_SKIP() << "arm64 builds alone make wide calls";
  int asked = 0;
  expectOfEach(
      [](const Call& call) { return call.question == Question::wideCalls; },
      [&](size_t /*place*/, Way /*way*/) {
        const bool left = asked++ < 2;  // two steps for each fan
        return std::optional(Shown{
            shown_.full, shown_.mini,
            with(*shown_.fans, left ? 0 : 1, left ? "Fan 1" : "Fan 2", left ? "1200" : "1300")});
      });
}

TEST_F(Faults, OfTheSensorsCostThemOrEndThePass) {
  size_t first = 0;
  while (calls_[first].question != Question::sensors) ++first;
  const Shown without = {withoutHID(shown_.full), withoutHID(shown_.mini), shown_.fans};
  const auto joined = [](Entries hid, const Entries& others) {
    hid.insert(hid.end(), others.begin(), others.end());
    return hid;
  };
  const Entries cold = {{"Power Management Unit", "0"},
                        {"SSD NAND I/O", "0"},
                        {"Gas Gauge Battery", "0"},
                        {"Neural Engine", "0"}};
  const Entries shorter(shown_.full.begin(), shown_.full.begin() + kHIDEntries - 1);

  expectOfEach(
      [](const Call& call) { return call.question == Question::sensors; },
      [&](size_t place, Way way) -> std::optional<Shown> {
        if (place == first) {  // the readings
          if (way == Way::withoutProducts) return shown_;
          if (way != Way::withoutEvents) return std::nullopt;
          return Shown{joined(cold, without.full), joined(cold, without.mini), shown_.fans};
        }
        if (way == Way::withoutEvents) return shown_;
        if (way != Way::oneLess) return without;
        return Shown{joined(shorter, without.full), joined(shorter, without.mini), shown_.fans};
      });
}

TEST_F(Faults, OfTheControllerCostItsReadingsAndPrintOneLine) {
  const auto isControllerCall = [](const Call& call) {
    return call.question == Question::smcService || call.question == Question::openSMC;
  };
  testing::internal::CaptureStdout();
  expectOfEach(isControllerCall, [&](size_t /*place*/, Way /*way*/) {
    return std::optional(Shown{hidAlone(shown_.full), hidAlone(shown_.mini), std::nullopt});
  });
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "Error: IOServiceGetMatchingServices() = e00002bc\n"
            "Error: no SMC found\n"
            "Error: IOServiceOpen() = e00002bc\n");
}

TEST_F(Faults, OfTheClosingEndThePassAsTheyAre) {
  expectOfEach([](const Call& call) { return call.question == Question::closeSMC; },
               [](size_t, Way) { return std::optional<Shown>(); });
}

TEST_F(Faults, AreTriedForEveryQuestionOfAPass) {
  const auto count = [&](Question question) {
    return std::ranges::count_if(calls_,
                                 [=](const Call& call) { return call.question == question; });
  };
  EXPECT_EQ(count(Question::keyInfo), 17 + 181 + 5);
  EXPECT_EQ(count(Question::keyBytes), 17 + 181 + 5);
  EXPECT_EQ(count(Question::sensors), 2);
  EXPECT_EQ(count(Question::smcService), 1);
  EXPECT_EQ(count(Question::openSMC), 1);
  EXPECT_EQ(count(Question::closeSMC), 1);
  EXPECT_EQ(count(Question::wideCalls), kProcessor == Processor::arm64 ? 4 : 0);
  // disk_faults_test.cc tries these.
  EXPECT_EQ(count(Question::driveWalk), 1);
  EXPECT_EQ(count(Question::drive), 2);
  EXPECT_EQ(count(Question::clock), 2);
}

}  // namespace
}  // namespace halvermonte::test
