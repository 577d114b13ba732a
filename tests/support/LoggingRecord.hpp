// A record that remembers which of its setters were called, in order.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "halvermonte/StatisticsData.hpp"

namespace halvermonte::test {

class LoggingRecord : public SensorsRecord {
 public:
  std::vector<std::string> stored;

#define PROPERTY(name, Name, Type, initial, copy, turn)
#define ENGINE_PROPERTY(name, Name, Type, initial, copy, turn) \
  Type name() const override { return properties_.name(); }    \
  void set##Name(Type value) override {                        \
    stored.push_back(#name);                                   \
    properties_.set##Name(std::move(value));                   \
  }
#include "halvermonte/properties.def"

 private:
  StatisticsData properties_;
};

}  // namespace halvermonte::test
