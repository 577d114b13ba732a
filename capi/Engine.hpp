// The engine behind the C interface.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "halvermonte/HalvermonteSensorsEngine.hpp"
#include "halvermonte/Machine.hpp"
#include "halvermonte/StatisticsData.hpp"
#include "halvermonte/Values.hpp"

/// An engine, the computer that it samples, and the record that its passes fill. REQUIRES: the
/// machine answers the calling thread while this is made.
struct halvermonte_engine {
  explicit halvermonte_engine(std::unique_ptr<halvermonte::Machine> ownMachine);
  ~halvermonte_engine();
  halvermonte_engine(const halvermonte_engine&) = delete;
  halvermonte_engine& operator=(const halvermonte_engine&) = delete;

  const std::unique_ptr<halvermonte::Machine> machine;
  halvermonte::HalvermonteSensorsEngine engine;
  const std::shared_ptr<halvermonte::StatisticsData> record =
      std::make_shared<halvermonte::StatisticsData>();
  std::optional<halvermonte::Text> processorName;  ///< once it was asked for
  std::string messages;                            ///< of the last pass
};
