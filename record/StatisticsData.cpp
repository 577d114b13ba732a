#include "halvermonte/StatisticsData.hpp"

#include <string>
#include <vector>

#include "halvermonte/Exceptions.hpp"
#include "platform/Foundation.hpp"

namespace halvermonte {
namespace {

Text emptyText() { return Text(""); }
Text dash() { return Text("-"); }
Text localizedHostName() { return foundation::localizedHostName(); }
Number zero() { return Number::ofInt32(0); }
Number one() { return Number::ofInt32(1); }
Array emptyArray() { return Array(std::vector<Value>()); }
Dictionary emptyDictionary() { return Dictionary(std::vector<Dictionary::Entry>()); }
Date now() { return foundation::currentDate(); }
constexpr Flag no() { return 0; }
constexpr Int minusOne() { return -1; }

/// As the platform's own initialisers do: a text cannot be made from an absent one, but a container
/// made from an absent one is empty.
Text newText(const Text& source, const char* property) {
  if (!source) {
    throw PlatformException(std::string("populateStatisticsDataFrom: the source's ") + property +
                            " is absent");
  }
  return Text(source.view());
}
Array newArray(const Array& source, const char* /*property*/) { return Array(source.elements()); }
Dictionary newDictionary(const Dictionary& source, const char* /*property*/) {
  return Dictionary(source.entries());
}
template <class Source>
Source same(Source source, const char* /*property*/) {
  return source;
}

/// For a property that keeps what it has.
struct Nothing {};
Nothing unset() { return {}; }
template <class Source>
Nothing notCopied(const Source& /*source*/, const char* /*property*/) {
  return {};
}

template <class Stored>
void put(Atomic<Stored>& property, Stored value) {
  property.store(std::move(value));
}
template <class Stored>
void put(Atomic<Stored>& /*property*/, Nothing /*value*/) {}

}  // namespace

SensorsRecord::~SensorsRecord() = default;
StatisticsData::~StatisticsData() = default;

StatisticsData::StatisticsData() {
#define PROPERTY(name, Name, Type, initial, copy, turn) put(name##_, initial());
#include "halvermonte/properties.def"
}

void StatisticsData::populateStatisticsDataFrom(const StatisticsData& source) {
  for (int current = 1; current <= 5; ++current) {
#define PROPERTY(name, Name, Type, initial, copy, turn) \
  if (current == (turn)) put(name##_, copy(source.name(), #name));
#include "halvermonte/properties.def"
  }
}

}  // namespace halvermonte
