// StatisticsData: the record that the host application owns, fills and reads, and that a pass of
// the engine fills with temperatures, fans and disk throughput.
//
// Its properties and their units stand in properties.def. Each has a getter of the property's name
// (hostName()) and a setter (setHostName(value)). Any thread may call any of them: a property is
// read and written as a whole, and a reader gets its own reference. Nothing makes several
// properties consistent together.
#pragma once

#include <cstdint>
#include <utility>

#include "halvermonte/Atomic.hpp"
#include "halvermonte/Export.h"
#include "halvermonte/Values.hpp"

namespace halvermonte {

using Flag = int8_t;  ///< NO is 0, YES is 1
using Int = int32_t;

/// The properties that a pass of the engine writes and reads back. The engine knows no others.
class HALVERMONTE_EXPORT SensorsRecord {
 public:
  virtual ~SensorsRecord();

#define PROPERTY(name, Name, Type, initial, copy, turn)
#define ENGINE_PROPERTY(name, Name, Type, initial, copy, turn) \
  virtual Type name() const = 0;                               \
  virtual void set##Name(Type value) = 0;
#include "halvermonte/properties.def"
};

class HALVERMONTE_EXPORT StatisticsData final : public SensorsRecord {
 public:
  /// Stores the defaults of properties.def: the host's name and the current date among them.
  StatisticsData();
  ~StatisticsData() override;
  StatisticsData(const StatisticsData&) = delete;
  StatisticsData& operator=(const StatisticsData&) = delete;

  /// Makes this record a snapshot of another. Texts and containers are fresh ones with the source's
  /// contents; elements, numbers and two battery texts are shared; six properties keep their own
  /// values (properties.def says which). Not atomic as a whole. Raises a PlatformException at the
  /// first text to be copied that is absent in the source, when those before it are copied.
  void populateStatisticsDataFrom(const StatisticsData& source);

#define PROPERTY(name, Name, Type, initial, copy, turn) \
  Type name() const { return name##_.load(); }          \
  void set##Name(Type value) { name##_.store(std::move(value)); }
#define ENGINE_PROPERTY(name, Name, Type, initial, copy, turn) \
  Type name() const override { return name##_.load(); }        \
  void set##Name(Type value) override { name##_.store(std::move(value)); }
#include "halvermonte/properties.def"

 private:
#define PROPERTY(name, Name, Type, initial, copy, turn) Atomic<Type> name##_;
#include "halvermonte/properties.def"
};

}  // namespace halvermonte
