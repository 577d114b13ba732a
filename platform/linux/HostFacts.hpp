// A Linux computer's facts: its model, logical cores, uptime and memory.
#pragma once

#include <optional>
#include <string>

#include "halvermonte/MachineAnswers.hpp"
#include "platform/linux/KeptFile.hpp"
#include "platform/linux/SystemCalls.hpp"

namespace halvermonte::linuxos {

/// Reads the model and the cores once, and the rest each time, through files that it keeps open.
class HostFactsReader {
 public:
  HostFactsReader(SystemCalls& calls, std::string sys, const std::string& proc);

  HostFacts read();

 private:
  HostFacts lastingFacts() const;

  SystemCalls& calls_;
  const std::string sys_;
  KeptFile uptime_;
  KeptFile memory_;
  std::optional<HostFacts> lasting_;
};

}  // namespace halvermonte::linuxos
