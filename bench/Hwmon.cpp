// A pass over the kernel's sensors, in a tree of files: the controller of a Mac that has every
// temperature of the catalogue. What reading those files costs at least is measured as well.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "bench/Allocations.hpp"
#include "bench/Machines.hpp"
#include "halvermonte/HalvermonteSensorsEngine.hpp"
#include "platform/linux/LinuxMachine.hpp"

namespace halvermonte {
namespace {

namespace fs = std::filesystem;

/// The tree; gone at the object's end.
class ManySensors {
 public:
  ManySensors() {
    std::string pattern = (fs::temp_directory_path() / "bench-XXXXXX").string();
    root_ = mkdtemp(pattern.data());
    const fs::path device = root_ / "sys/devices/platform/applesmc.768";
    const fs::path chip = device / "hwmon/hwmon0";
    fs::create_directories(chip);
    fs::create_directories(root_ / "sys/class/hwmon");
    fs::create_directory_symlink(device, chip / "device");
    fs::create_directory_symlink(chip, root_ / "sys/class/hwmon/hwmon0");
    std::ofstream(device / "name") << "applesmc\n";
    for (const std::string& key : distinctTemperatureKeys()) {
      const std::string channel = "temp" + std::to_string(inputs_.size() + 1);
      std::ofstream(device / (channel + "_label")) << key << "\n";
      inputs_.push_back(device / (channel + "_input"));
      std::ofstream(inputs_.back()) << "47500\n";
    }
  }
  ManySensors(const ManySensors&) = delete;
  ManySensors& operator=(const ManySensors&) = delete;
  ~ManySensors() { fs::remove_all(root_); }

  ComputerFolders roots() const { return {root_ / "sys", root_ / "proc", root_ / "etc"}; }
  const std::vector<fs::path>& inputs() const { return inputs_; }

 private:
  fs::path root_;
  std::vector<fs::path> inputs_;
};

void hwmonPass(benchmark::State& state, bool answersAlone) {
  const ManySensors tree;
  LinuxMachine machine(tree.roots());
  const ScopedMachine scope(machine);
  HalvermonteSensorsEngine engine;
  const auto record = std::make_shared<StatisticsData>();
  measurePass(state, machine, answersAlone, [&] { engine.getSensorsInfo(record); });
}

/// The lower bound: one pread for each of the files, all of them open.
void barePreads(benchmark::State& state) {
  const ManySensors tree;
  std::vector<int> descriptors;
  for (const fs::path& input : tree.inputs()) {
    descriptors.push_back(open(input.c_str(), O_RDONLY | O_CLOEXEC));
  }
  measure(state, [&] {
    std::array<char, 64> buffer;
    for (const int descriptor : descriptors) {
      benchmark::DoNotOptimize(pread(descriptor, buffer.data(), buffer.size(), 0));
    }
  });
  for (const int descriptor : descriptors) close(descriptor);
}

BENCHMARK(barePreads);
BENCHMARK_CAPTURE(hwmonPass, answersAlone, true);
BENCHMARK_CAPTURE(hwmonPass, whole, false);

}  // namespace
}  // namespace halvermonte
