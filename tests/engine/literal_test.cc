// The engine beside a second, literal one, over machines that change at random.
#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "tests/engine/CatalogueExpectations.hpp"
#include "tests/engine/LiteralTemperatures.hpp"
#include "tests/support/Sampler.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

/// Changes a machine's temperatures. Degrees are drawn around the edges of the ranges and of the
/// clamp as often as anywhere else.
class Weather {
 public:
  explicit Weather(unsigned seed) : random_(seed) {}

  int below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(random_); }

  double degrees() {
    static constexpr double kEdges[] = {-1, -0.5, 0,   0.9,   1,   24,    25,  26,   44,   45,
                                        70, 109,  110, 110.9, 111, 119.9, 120, 1e30, -1e30};
    switch (below(4)) {
      case 0:
        return kEdges[below(std::size(kEdges))];
      case 1:
        return below(170) - 20;
      default:
        return 30 + below(60) + below(4) / 4.0;
    }
  }

  void changeKeys(TestMachine& machine, const std::vector<std::string>& keys) {
    for (int change = 0; change < 40; ++change) {
      const std::string& key = keys[static_cast<size_t>(below(static_cast<int>(keys.size())))];
      if (below(5) == 0) {
        machine.keys.erase(key);
      } else {
        machine.keys[key] = flt(static_cast<float>(degrees()));
      }
    }
  }

  HIDServices sensors() {
    static constexpr const char* kProducts[] = {"pACC MTR Temp Sensor1",
                                                "pACC MTR Temp Sensor2",
                                                "eACC MTR Temp Sensor0",
                                                "GPU MTR Temp Sensor4",
                                                "GPU MTR Temp Sensor1",
                                                "SOC MTR Temp Sensor0",
                                                "SOC MTR Temp Sensor1",
                                                "SOC MTR Temp Sensor2",
                                                "ANE MTR Temp Sensor1",
                                                "ISP MTR Temp Sensor5",
                                                "Tg1b",
                                                "NAND CH0 temp",
                                                "gas gauge battery",
                                                "Neural Engine",
                                                "PMU tdie1",
                                                "Avg:SOC",
                                                "TC0P",
                                                "TL0P",
                                                "Battery",
                                                ""};
    HIDServices list;
    for (int i = below(14); i > 0; --i) {
      list.push_back(sensor(kProducts[below(std::size(kProducts))], degrees()));
      if (below(20) == 0) list.back().product.reset();
      if (below(20) == 0) list.back().value.reset();
    }
    return list;
  }

 private:
  std::mt19937 random_;
};

struct Computer {
  const char* processor;
  Chip chip;
  int32_t cores;
};
constexpr Computer kComputers[] = {{"", Chip::other, 4},
                                   {"Apple M1 Max", Chip::m1, 10},
                                   {"Apple M2 Max", Chip::m2, 12},
                                   {"Apple M3 Max", Chip::m3, 16},
                                   {"Apple M4 Pro", Chip::m4Large, 14},
                                   {"Apple M4", Chip::other, 12}};

void comparePasses(const Computer& computer, unsigned seed, int passes) {
  TestMachine machine;
  machine.setProcessor(computer.processor);
  machine.kernelVariables["hw.physicalcpu"] = computer.cores;
  Sampler sampler(machine);
  std::vector<std::string> keys = expectedTemperatureKeys();
  LiteralTemperatures temperatures(keys, expectedNames(computer.chip, computer.cores));
  LiteralSensors literal;
  keys.insert(keys.end(), {"TI0P", "TI1P"});
  const auto degreesOf = [&](const std::string& key) {
    const auto found = machine.keys.find(key);
    if (found == machine.keys.end()) return -1.0;
    float degrees = 0;
    std::memcpy(&degrees, found->second.data.bytes.data(), sizeof degrees);
    return static_cast<double>(degrees);
  };

  Weather weather(seed);
  for (int pass = 0; pass < passes; ++pass) {
    weather.changeKeys(machine, keys);
    const HIDServices sensors = weather.sensors();
    machine.setTemperatureSensors(sensors);
    machine.asked.clear();
    sampler.pass();
    const LiteralTemperatures::Lists lists = temperatures.pass(degreesOf, sensors);
    const Entries published = literal.published(lists.full);
    const Entries dictionary(literal.sensors().begin(), literal.sensors().end());
    ASSERT_EQ(sampler.full(), published) << computer.processor << ", pass " << pass;
    ASSERT_EQ(sampler.mini(), lists.mini) << computer.processor << ", pass " << pass;
    ASSERT_EQ(entriesOf(sampler.record()->sensors()), dictionary)
        << computer.processor << ", pass " << pass;
  }
}

TEST(LiteralEngine, ShowsTheSameTemperatures) {
  for (unsigned seed = 0; seed < 24; ++seed) {
    comparePasses(kComputers[seed % std::size(kComputers)], seed, 40);
  }
}

}  // namespace
}  // namespace halvermonte::test
