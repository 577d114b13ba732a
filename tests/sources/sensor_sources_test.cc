#include "halvermonte/SensorSources.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/simulated/MachineTexts.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;
using ::testing::Optional;

std::vector<SensorSource> sourcesOf(Machine& machine) {
  const ScopedMachine scope(machine);
  const HalvermonteSensorsEngine engine;
  return sensorSources(engine, machine);
}

/// The sources of a machine in the tick.
std::vector<SensorSource> sourcesOf(const std::string& tick, const std::string& members = "") {
  return sourcesOf(*machineOf(tick, members));
}

SensorSource withKey(const std::vector<SensorSource>& sources, const std::string& key) {
  const auto found = std::ranges::find(sources, key, &SensorSource::key);
  return found == sources.end() ? SensorSource{.name = "no source has the key"} : *found;
}

SensorSource withLabel(const std::vector<SensorSource>& sources, const std::string& label) {
  const auto found = std::ranges::find(sources, label, &SensorSource::label);
  return found == sources.end() ? SensorSource{.name = "no source has the label"} : *found;
}

TEST(SensorSources, TemperatureOfTheFullListHasItsNameAndReading) {
  const auto source =
      withKey(sourcesOf(tickOfKeys(R"("TC0P": {"type": "sp78", "value": 40.25})")), "TC0P");
  EXPECT_EQ(source.name, "CPU 1 Proximity");
  EXPECT_EQ(source.shownIn, ShownIn::fullList);
  EXPECT_EQ(source.source, "SMC sp78");
  EXPECT_EQ(source.driver, "");
  EXPECT_EQ(source.quantity, "temperature");
  EXPECT_THAT(source.number, Optional(40.25));
  EXPECT_EQ(source.unit, "°C");
  EXPECT_EQ(source.raw, "2840");
  EXPECT_EQ(source.reason, "");
}

TEST(SensorSources, TemperatureOfTheShortListAloneSaysSo) {
  const auto source =
      withKey(sourcesOf(tickOfKeys(R"("TI0P": {"type": "sp78", "value": 40})")), "TI0P");
  EXPECT_EQ(source.name, "Thunderbolt 0");
  EXPECT_EQ(source.shownIn, ShownIn::shortList);
  EXPECT_THAT(source.number, Optional(40));
}

TEST(SensorSources, FanHasItsNameAndSpeed) {
  const auto sources = sourcesOf(tickOfKeys(
      R"("F0Ac": {"type": "fpe2", "value": 900}, "F0ID": {"type": "{fds", "name": "Left"},
         "F9Ac": {"type": "fpe2", "value": 0}, "FNum": {"type": "ui8 ", "value": 1})"));
  const SensorSource left = withKey(sources, "F0Ac"), last = withKey(sources, "F9Ac");
  EXPECT_EQ(left.name, "Left");
  EXPECT_EQ(left.shownIn, ShownIn::fans);
  EXPECT_EQ(left.quantity, "fan");
  EXPECT_THAT(left.number, Optional(900));
  EXPECT_EQ(left.unit, "rpm");
  EXPECT_EQ(last.name, "Fan 10");
  EXPECT_THAT(last.number, Optional(0));
  EXPECT_EQ(withKey(sources, "F0ID").reason, "the name of a fan");
  EXPECT_EQ(withKey(sources, "FNum").reason, "the number of fans");
  EXPECT_EQ(withKey(sources, "FNum").source, "SMC ui8");
}

TEST(SensorSources, KeyThatIsNotShownSaysWhy) {
  const auto sources = sourcesOf(tickOfKeys(
      R"("F:Ac": {"type": "fpe2", "value": 1}, "F/Ac": {"type": "fpe2", "value": 1},
         "G0Ac": {"type": "fpe2", "value": 1}, "F0Mx": {"type": "fpe2", "value": 1},
         "Tp0n": {"type": "sp78", "value": 40}, "TP0P": {"type": "sp78", "value": 40})"));
  for (const char* key : {"F:Ac", "F/Ac", "G0Ac", "F0Mx", "Tp0n"}) {
    const SensorSource source = withKey(sources, key);
    EXPECT_EQ(source.name, "");
    EXPECT_EQ(source.shownIn, ShownIn::nothing);
    EXPECT_EQ(source.quantity, "");
    EXPECT_EQ(source.number, std::nullopt);
    EXPECT_EQ(source.unit, "");
    EXPECT_EQ(source.reason, "no name on this processor") << key;
  }
  EXPECT_EQ(withKey(sources, "TP0P").name, "");
  EXPECT_EQ(withKey(sources, "TP0P").reason, "PCH Proximity is not sampled");
}

TEST(SensorSources, KeyThatTheMachineAddsHasItsName) {
  const auto sources = sourcesOf(tickOfKeys(R"("Xa00": {"type": "sp78", "value": 40})"),
                                 R"("names": [["Xa00", "Samsung SSD"]], )");
  EXPECT_EQ(withKey(sources, "Xa00").name, "Samsung SSD");
}

TEST(SensorSources, KeyWithoutAReadingSaysSo) {
  const auto sources = sourcesOf(tickOfKeys(R"("TC0P": {"type": "sp78", "value": 40, "readCode": 5},
                    "TC0D": {"type": "ch8*", "bytes": "0102"},
                    "Zzz0": {"type": "ui8 ", "bytes": ""}, "Zzz1": {"type": "ui8 ", "value": 1})"));
  EXPECT_EQ(withKey(sources, "TC0P").reason, "no reading");
  EXPECT_EQ(withKey(sources, "TC0P").number, std::nullopt);
  EXPECT_EQ(withKey(sources, "TC0D").reason, "no reading");
  EXPECT_EQ(withKey(sources, "TC0D").raw, "0102");
  EXPECT_EQ(withKey(sources, "Zzz0").reason, "no name on this processor; no reading");
  EXPECT_EQ(withKey(sources, "Zzz1").reason, "no name on this processor");
}

TEST(SensorSources, RawFormOfAKeyIsAtMostThe32BytesOfAReply) {
  const auto sources =
      sourcesOf(tickOfKeys(R"("Zzzz": {"type": "ch8*", "bytes": "0a0B", "size": 40})"));
  EXPECT_EQ(withKey(sources, "Zzzz").raw, "0a0b" + std::string(60, '0'));
}

TEST(SensorSources, HasNoKeysWhenTheControllerCannotBeOpened) {
  EXPECT_TRUE(sourcesOf(R"({"smc": {"service": "refused",
                                    "keys": {"TC0P": {"type": "sp78", "value": 40}}}})")
                  .empty());
}

TEST(SensorSources, HIDSensorHasTheNameThatItsReadingIsShownUnder) {
  const auto sources = sourcesOf(R"({"hid": {"temperature": [
      {"product": "Tg1b", "value": 41.5}, {"product": "pACC MTR 1", "value": 1},
      {"product": "PMU GPU MTR", "value": 4}]}})");
  const SensorSource named = withLabel(sources, "Tg1b");
  EXPECT_EQ(named.name, "Power Management Unit");
  EXPECT_EQ(named.shownIn, ShownIn::fullList);
  EXPECT_EQ(named.source, "HID temperature");
  EXPECT_THAT(named.number, Optional(41.5));
  EXPECT_EQ(named.unit, "°C");
  EXPECT_EQ(named.reason, "");
  EXPECT_EQ(withLabel(sources, "pACC MTR 1").name, "CPU Performance Cores");
  EXPECT_EQ(withLabel(sources, "PMU GPU MTR").shownIn, ShownIn::nothing);
  EXPECT_EQ(withLabel(sources, "PMU GPU MTR").reason, "not shown by itself");
}

TEST(SensorSources, HIDSensorsOfEachKindAreThereAlsoWithoutProductOrEvent) {
  const auto sources = sourcesOf(R"({"hid": {
      "temperature": [{"value": 7}], "current": [{"product": "Tg1b", "value": 0.25}],
      "voltage": [{"product": "PMU vbat"}]}})");
  EXPECT_THAT(withLabel(sources, "").number, Optional(7));
  EXPECT_EQ(withLabel(sources, "Tg1b").source, "HID current");
  EXPECT_EQ(withLabel(sources, "Tg1b").unit, "A");
  EXPECT_EQ(withLabel(sources, "Tg1b").name, "") << "a temperature's name";
  EXPECT_EQ(withLabel(sources, "PMU vbat").unit, "V");
  EXPECT_EQ(withLabel(sources, "PMU vbat").reason, "not shown by itself; no event");
  EXPECT_EQ(sourcesOf(R"({"hid": {"temperature": null, "current": null, "voltage": [{}]}})").size(),
            1u);
}

/// Lists one sensor of a driver, and answers for one key.
class Listing : public TestMachine {
 public:
  explicit Listing(SensorListing listing) : listing_(std::move(listing)) {
    keys["TC0P"] = sp78(40);
  }
  SensorInventory inventory() override { return {listing_}; }

 private:
  SensorListing listing_;
};

SensorListing listing(std::string key, std::string reason, std::string state) {
  return {.driver = "lid",
          .device = "i2c-0",
          .file = "temp1_input",
          .label = "Handle",
          .quantity = "temperature",
          .key = std::move(key),
          .reason = std::move(reason),
          .state = std::move(state),
          .raw = ""};
}

TEST(SensorSources, SensorOfADriverHasWhatTheMachineSays) {
  SensorListing listed = listing("TC0P", "", "read");
  listed.raw = "41250";
  listed.number = 41.25;
  Listing machine(listed);
  const SensorSource source = sourcesOf(machine).at(0);
  EXPECT_EQ(source.name, "CPU 1 Proximity");
  EXPECT_EQ(source.driver, "lid");
  EXPECT_EQ(source.source, "lid i2c-0/temp1_input");
  EXPECT_EQ(source.label, "Handle");
  EXPECT_EQ(source.raw, "41250");
  EXPECT_THAT(source.number, Optional(41.25));
  EXPECT_EQ(source.reason, "");
}

TEST(SensorSources, SensorWhoseMachineGivesNoNumberIsReadByItsKey) {
  Listing machine(listing("TC0P", "", "read"));
  EXPECT_THAT(sourcesOf(machine).at(0).number, Optional(40));
}

TEST(SensorSources, SensorWithoutKeyOrReadingSaysWhy) {
  Listing both(listing("", "only temperatures and fans are shown", "no reading: switched off"));
  EXPECT_EQ(sourcesOf(both).at(0).reason,
            "only temperatures and fans are shown; no reading: switched off");
  Listing unexplained(listing("TC0D", "", ""));
  EXPECT_EQ(sourcesOf(unexplained).at(0).reason, "no reading");
  Listing read(listing("", "no name for its kind", "read"));
  EXPECT_EQ(sourcesOf(read).at(0).reason, "no name for its kind; no reading");
}

TEST(SensorSources, AsksTheMachineThatItIsGiven) {
  Listing machine(listing("TC0P", "", "read"));
  const HalvermonteSensorsEngine engine = [&] {
    const ScopedMachine scope(machine);
    return HalvermonteSensorsEngine();
  }();
  EXPECT_THAT(sensorSources(engine, machine).at(0).number, Optional(40));
}

}  // namespace
}  // namespace halvermonte::test
