// The record's properties that a host fills, of this computer: its model, processor, uptime and
// memory.
#pragma once

#include <string>

#include "engine/HalvermonteSensorsEngine.hpp"
#include "platform/linux/KeptFile.hpp"
#include "platform/linux/LinuxMachine.hpp"
#include "record/StatisticsData.hpp"

namespace halvermonte {

/// Fills what stays as it is while the computer runs: modelName and modelIdentifier (firmware),
/// processorName and summary_cpuCores (the engine's answers), summary_cpuLogicalCores. A property
/// whose source is missing keeps its value.
void fillComputer(StatisticsData& record, const LinuxRoots& roots,
                  const HalvermonteSensorsEngine& engine);

/// What changes while the computer runs, read through files that are kept open.
class HostUsage {
 public:
  explicit HostUsage(const std::string& proc);

  /// Fills uptime in seconds, the summary_memory numbers in bytes, and their texts. A property
  /// whose source is missing keeps its value.
  void fill(StatisticsData& record);

 private:
  linuxos::KeptFile uptime_;
  linuxos::KeptFile memory_;
};

}  // namespace halvermonte
