// The host's own record as the core sees it: every read and write is a message to the host's
// object, so the accessors of a host's subclass are used.
#pragma once

#import <HalvermonteSensorsEngine/StatisticsData.h>

#include "halvermonte/StatisticsData.hpp"
#include "platform/apple/Bridging.hpp"

namespace halvermonte {

class HostRecord final : public SensorsRecord {
 public:
  explicit HostRecord(::StatisticsData* record) : record_([record retain]) {}
  ~HostRecord() override { [record_ release]; }
  HostRecord(const HostRecord&) = delete;
  HostRecord& operator=(const HostRecord&) = delete;

#define PROPERTY(name, Name, Type, initial, copy, turn)
#define ENGINE_PROPERTY(name, Name, Type, initial, copy, turn)              \
  Type name() const override { return valueOf([record_ name]).as##Type(); } \
  void set##Name(Type value) override { [record_ set##Name:objectOf(value)]; }
#include "halvermonte/properties.def"

 private:
  ::StatisticsData* record_;
};

}  // namespace halvermonte
