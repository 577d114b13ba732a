// Names that people understand for the temperatures of chips.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "platform/linux/ProcessorTopology.hpp"
#include "platform/linux/SystemCalls.hpp"
#include "platform/linux/hwmon/Chips.hpp"

namespace halvermonte::linuxos {

/// A temperature and its name.
struct NamedTemperature {
  const Chip* chip = nullptr;
  const Channel* channel = nullptr;
  std::string key;           ///< four characters
  std::string subject = {};  ///< the part that the device's sensors share, such as its model
  std::string sensor = {};   ///< the sensor in it; "" if the subject says all
  std::string place = {};    ///< the device's place; "" if no other device has its subject
  bool isFixed = false;      ///< the key is shown by its built-in name, not by this one

  /// At most 40 characters. Loses the end of the subject if it is too long.
  std::string name() const;
};

/// Makes names from the table, and nothing else: the same sensor of the same device gets the same
/// name whatever other chips there are, except that devices which would have one name get their
/// places in it.
class TemperatureNames {
 public:
  /// REQUIRES: the chips outlive it.
  TemperatureNames(SystemCalls& calls, const std::string& sys, const std::vector<Chip>& chips);

  /// Sets subject and sensor from the table. Returns false if the sensor is never shown.
  bool describe(NamedTemperature& temperature) const;

  /// Whether the sensor may have the built-in key of its name. If a processor's package has several
  /// dies with a chip each, only the first one's sensors may.
  bool mayBeBuiltIn(const NamedTemperature& temperature) const;

  /// Makes the names different from one another.
  void separate(std::vector<NamedTemperature>& temperatures) const;

 private:
  class Words;

  SystemCalls& calls_;
  std::string sys_;
  const std::vector<Chip>& chips_;
  ProcessorTopology topology_;
};

}  // namespace halvermonte::linuxos
