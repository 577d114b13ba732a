// A host with functions of its own under names that the library uses: each side calls its own.
#include <dlfcn.h>

#include <cstdint>
#include <halvermonte/HalvermonteSensorsEngine.hpp>
#include <halvermonte/StatisticsData.hpp>
#include <iostream>
#include <memory>
#include <string>

namespace {
int callsOfHost = 0;
}

// In the host's own meaning, with parameters and results of other types than the library's.
extern "C" {
int matching(const char* pattern, const char* text) {
  ++callsOfHost;
  return std::string(text).find(pattern) != std::string::npos ? 1 : 0;
}
const char* getProductNames() {
  ++callsOfHost;
  return "tea, coffee";
}
int SMCOpen(double) {
  ++callsOfHost;
  return 7;
}
}

namespace {

int failures = 0;

void check(bool holds, const char* what) {
  if (holds) return;
  std::cerr << "does not hold: " << what << '\n';
  ++failures;
}

void checkTheLibraryCallsItsOwn() {
  halvermonte::HalvermonteSensorsEngine engine;
  const auto record = std::make_shared<halvermonte::StatisticsData>();
  engine.getSensorsInfo(record);
  const halvermonte::Array names = halvermonte::HalvermonteSensorsEngine::thermalArray();
  const halvermonte::Array readings = halvermonte::HalvermonteSensorsEngine::returnThermalValues();
  check(names.size() == readings.size(), "sensors have a name and a reading each");
  check(callsOfHost == 0, "the library calls none of the host's functions");
}

void checkTheHostCallsItsOwn() {
  check(matching("off", getProductNames()) == 1, "the host's matching finds a text");
  check(SMCOpen(0.5) == 7, "the host's SMCOpen returns its result");
  check(callsOfHost == 3, "the host's calls reach the host");
}

/// Without this, the linker might have hidden the host's functions from the library anyway.
void checkTheNamesMeet() {
  for (const char* name : {"matching", "getProductNames", "SMCOpen"}) {
    void* const first = dlsym(RTLD_DEFAULT, name);
    void* const second = dlsym(RTLD_NEXT, name);
    check(first && second && first != second, name);
  }
}

}  // namespace

int main() {
  checkTheLibraryCallsItsOwn();
  checkTheHostCallsItsOwn();
  checkTheNamesMeet();
  return failures;
}
