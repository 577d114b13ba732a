#include "halvermonte/HalvermonteSensorsEngine.hpp"

#include <CoreFoundation/CoreFoundation.h>

#include <IOKit/IOKitLib.h>

#include <vector>

#include "engine/CFConversions.hpp"
#include "engine/Catalogue.hpp"
#include "engine/CatalogueTemperatures.hpp"
#include "engine/DiskPublishing.hpp"
#include "engine/DiskSampling.hpp"
#include "engine/EngineState.hpp"
#include "engine/Fans.hpp"
#include "engine/FixedTemperatures.hpp"
#include "engine/HIDTemperatures.hpp"
#include "engine/Questions.hpp"
#include "engine/SensorPublishing.hpp"
#include "engine/Steadying.hpp"
#include "engine/TemperatureLists.hpp"
#include "halvermonte/HIDSensors.h"
#include "halvermonte/MachineAnswers.hpp"
#include "halvermonte/SMC.h"
#include "platform/CFOwned.hpp"
#include "platform/MainPort.hpp"
#include "platform/Processor.hpp"
#include "platform/SensorNames.hpp"

namespace halvermonte {
namespace {

const Questions kOwnQuestions;

/// The pass's connection: opened into the engine's `conn`, which is 0 again once it is closed. A
/// connection that did not open is read and closed all the same, as 0, which is never open: known
/// sensors then fade by a degree a pass.
class SMCConnection {
 public:
  explicit SMCConnection(uint32_t& conn) : conn_(conn) { SMCOpen(&conn_); }
  ~SMCConnection() {
    if (!closed_) close();
  }
  SMCConnection(const SMCConnection&) = delete;
  SMCConnection& operator=(const SMCConnection&) = delete;

  void close() {
    closed_ = true;
    SMCClose(conn_);
    conn_ = 0;
  }

 private:
  uint32_t& conn_;
  bool closed_ = false;
};

Array sensorNames(uint32_t page, uint32_t usage) {
  const CFOwned sensors(matching(page, usage));
  const CFOwned names(getProductNames(sensors.get()));
  return textsOf(names.get());
}

Array sensorReadings(CFMutableArrayRef (*read)(CFDictionaryRef), uint32_t page, uint32_t usage) {
  const CFOwned sensors(matching(page, usage));
  const CFOwned readings(read(sensors.get()));
  return numbersOf(readings.get());
}

}  // namespace

HalvermonteSensorsEngine::HalvermonteSensorsEngine() : HalvermonteSensorsEngine(kOwnQuestions) {}

HalvermonteSensorsEngine::HalvermonteSensorsEngine(const Questions& questions)
    : questions_(questions), state_(std::make_unique<EngineState>()) {
  EngineState& engine = *state_;
  engine.workflowFile = Text("");
  engine.masterPort = mainPort(bootstrap_port);
  const Text processorName = questions.processorName();
  const int32_t cores = questions.physicalCores();
  IOServiceGetMatchingServices(engine.masterPort, IOServiceMatching("IOBlockStorageDriver"),
                               &engine.drivelist);
  const std::vector<SensorName> added = addedNames();
  engine.smcTempKeys = temperatureKeys(added);
  engine.smcVoltageKeys = voltageKeys();
  engine.smcCurrentKeys = currentKeys();
  engine.smcPowerKeys = powerKeys();
  engine.smcKeyHumanReadableNames = humanReadableNames(processorName.view(), cores, added);
  temperatureWalk_ =
      std::make_unique<TemperatureWalk>(engine.smcTempKeys, engine.smcKeyHumanReadableNames);
  seedDiskHistories(engine);
}

HalvermonteSensorsEngine::~HalvermonteSensorsEngine() = default;

void HalvermonteSensorsEngine::pass(SensorsRecord& record) {
  EngineState& engine = *state_;
  const DiskTotals totals = sampleDisks(engine);

  SMCConnection connection(engine.conn);
  TemperatureLists temperatures;
  const FixedReadings fixed = readFixedTemperatures(engine.conn);
  addHIDTemperatures(questions_.thermalValues(), engine.sensorsHistory, temperatures);
  addCatalogueTemperatures(*temperatureWalk_, engine.conn, engine.sensorsHistory,
                           temperatures.full);
  addFixedTemperatures(fixed, temperatures.mini);
  const TextPair fans = readFans(engine.conn);
  connection.close();

  storeTexts(record, temperatures, fans);
  const bool stored = storeDictionaries(record);
  if (kProcessor == Processor::arm64 && stored) steadyProcessors(record, engine.prevTempos);

  publishDisks(engine, totals, record);
}

Array HalvermonteSensorsEngine::currentArray() {
  return sensorNames(kPowerSensorsPage, kCurrentUsage);
}

Array HalvermonteSensorsEngine::voltageArray() {
  return sensorNames(kPowerSensorsPage, kVoltageUsage);
}

Array HalvermonteSensorsEngine::thermalArray() {
  return sensorNames(kSensorsPage, kTemperatureUsage);
}

Array HalvermonteSensorsEngine::returnCurrentValues() {
  return sensorReadings(getPowerValues, kPowerSensorsPage, kCurrentUsage);
}

Array HalvermonteSensorsEngine::returnVoltageValues() {
  return sensorReadings(getPowerValues, kPowerSensorsPage, kVoltageUsage);
}

Array HalvermonteSensorsEngine::returnThermalValues() {
  return sensorReadings(getThermalValues, kSensorsPage, kTemperatureUsage);
}

}  // namespace halvermonte
