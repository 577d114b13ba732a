// Property lists, read by libplist.
#include <plist/plist.h>

#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

#include "halvermonte/Values.hpp"
#include "platform/Foundation.hpp"
#include "platform/portable/PropertyListShape.hpp"

namespace halvermonte {
namespace {

struct FreeNode {
  void operator()(plist_t node) const { plist_free(node); }
};
using OwnedNode = std::unique_ptr<void, FreeNode>;

struct FreeMemory {
  void operator()(char* memory) const { std::free(memory); }
};
using OwnedText = std::unique_ptr<char, FreeMemory>;

/// Absent if the node, or one inside it, is a text that is not UTF-8.
Value valueOf(plist_t node);

Text textOf(plist_t node) {
  uint64_t length = 0;
  const char* const characters = plist_get_string_ptr(node, &length);
  return Text::fromUTF8(std::string_view(characters, length));
}

Number numberOf(plist_t node) {
  switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
      uint8_t flag = 0;
      plist_get_bool_val(node, &flag);
      return Number::ofInt32(flag);
    }
    case PLIST_UINT: {
      uint64_t integer = 0;
      plist_get_uint_val(node, &integer);
      return Number::ofUInt64(integer);
    }
    default: {
      double real = 0;
      plist_get_real_val(node, &real);
      return Number::ofFloat64(real);
    }
  }
}

Array arrayOf(plist_t node) {
  std::vector<Value> elements;
  const uint32_t size = plist_array_get_size(node);
  for (uint32_t i = 0; i < size; ++i) {
    elements.push_back(valueOf(plist_array_get_item(node, i)));
    if (!elements.back()) return {};
  }
  return Array(std::move(elements));
}

Dictionary dictionaryOf(plist_t node) {
  std::vector<Dictionary::Entry> entries;
  plist_dict_iter position = nullptr;
  plist_dict_new_iter(node, &position);
  const OwnedText iteratorMemory(static_cast<char*>(position));
  for (;;) {
    char* key = nullptr;
    plist_t value = nullptr;
    plist_dict_next_item(node, position, &key, &value);
    const OwnedText keyMemory(key);
    if (value == nullptr) break;
    entries.push_back({Text::fromUTF8(key), valueOf(value)});
    if (!entries.back().key || !entries.back().value) return {};
  }
  return Dictionary(std::move(entries));
}

Value valueOf(plist_t node) {
  switch (plist_get_node_type(node)) {
    case PLIST_STRING:
      return textOf(node);
    case PLIST_BOOLEAN:
    case PLIST_UINT:
    case PLIST_REAL:
      return numberOf(node);
    case PLIST_ARRAY:
      return arrayOf(node);
    case PLIST_DICT:
      return dictionaryOf(node);
    default:
      return Image(std::shared_ptr<const void>());  // present, but of a kind that the engine does
                                                    // not look into
  }
}

}  // namespace

Value foundation::propertyList(std::string_view bytes) {
  if (bytes.size() > std::numeric_limits<uint32_t>::max()) return {};
  plist_t root = nullptr;
  if (plist_is_binary(bytes.data(), static_cast<uint32_t>(bytes.size())) != 0) {
    if (!portable::isSoundBinary(bytes)) return {};
    plist_from_bin(bytes.data(), static_cast<uint32_t>(bytes.size()), &root);
  } else {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
    if (!Text::fromUTF8(bytes) || !portable::isSoundXML(bytes)) return {};
    plist_from_xml(bytes.data(), static_cast<uint32_t>(bytes.size()), &root);
  }
  const OwnedNode owner(root);
  return root != nullptr ? valueOf(root) : Value();
}

}  // namespace halvermonte
