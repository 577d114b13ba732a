// A host in C++: shows the temperatures and the disk traffic of this computer, or of the simulated
// one that a machine file describes.
#include <chrono>
#include <exception>
#include <halvermonte/HalvermonteSensorsEngine.hpp>
#include <halvermonte/Readings.hpp>
#include <halvermonte/SimulatedMachine.hpp>
#include <halvermonte/StatisticsData.hpp>
#include <halvermonte/ThisComputer.hpp>
#include <iostream>
#include <memory>
#include <thread>

void show(halvermonte::Machine& machine) {
  const halvermonte::ScopedMachine scope(machine);
  halvermonte::HalvermonteSensorsEngine engine;
  const auto record = std::make_shared<halvermonte::StatisticsData>();
  engine.getSensorsInfo(record);
  // A rate needs two passes. Only a simulated computer has ticks to go through instead of waiting.
  if (!machine.nextTick()) std::this_thread::sleep_for(std::chrono::seconds(1));
  engine.getSensorsInfo(record);
  for (const auto& [name, number, unit] : halvermonte::temperatures(*record)) {
    std::cout << name << ": " << number << ' ' << symbolOf(unit) << '\n';
  }
  std::cout << "read " << record->diskIO_speedRead().int64Value() << " bytes/s, write "
            << record->diskIO_speedWrite().int64Value() << " bytes/s\n";
}

int main(int count, char** arguments) {
  try {
    const std::unique_ptr<halvermonte::Machine> machine =
        count > 1 ? halvermonte::SimulatedMachine::fromFile(arguments[1])
                  : halvermonte::makeThisComputer();
    show(*machine);
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
