// The record's properties as its hosts know them: a list beside record/properties.def, written
// apart from it, so that neither can change alone.
#pragma once

#include <cstdint>
#include <functional>
#include <ostream>
#include <vector>

#include "halvermonte/StatisticsData.hpp"

namespace halvermonte::test {

enum class Kind { text, number, array, dictionary, date, image, flag, integer };

enum class Default {
  unset,
  emptyText,
  dash,
  hostName,
  zero,
  one,
  minusOne,
  no,
  emptyArray,
  emptyDictionary,
  now,
};

enum class CopyRule { freshText, freshArray, freshDictionary, same, notCopied };

/// The getter and the setter of a property, without its type. One of the two pairs is set: that of
/// the values, or that of flags and integers.
struct Accessors {
  Kind kind;
  std::function<Value(const StatisticsData&)> get;
  std::function<void(StatisticsData&, const Value&)> set;
  std::function<int64_t(const StatisticsData&)> getInteger;
  std::function<void(StatisticsData&, int64_t)> setInteger;
};

struct Property {
  const char* name;
  Accessors accessors;
  Kind kind;
  Default initial;
  CopyRule copy;

  bool isInteger() const { return kind == Kind::flag || kind == Kind::integer; }
};

/// In the order of declaration.
const std::vector<Property>& propertyTable();

/// The name, for the message of a failing test.
inline void PrintTo(const Property& property, std::ostream* stream) { *stream << property.name; }

}  // namespace halvermonte::test
