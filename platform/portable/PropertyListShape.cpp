#include "platform/portable/PropertyListShape.hpp"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace halvermonte::portable {
namespace {

constexpr int kDeepest = 256;
constexpr int kMostSteps = 100'000;

/// Markup that may hold a '>' of its own.
struct Markup {
  std::string_view start;
  std::string_view end;
};
constexpr Markup kMarkups[] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}, {"<", ">"}};

/// The markup that the text begins with; empty if it does not end.
std::string_view markupOf(std::string_view text) {
  const Markup* markup = kMarkups;
  while (!text.starts_with(markup->start)) ++markup;
  const size_t end = text.find(markup->end, markup->start.size());
  return end != std::string_view::npos ? text.substr(0, end + markup->end.size())
                                       : std::string_view();
}

}  // namespace

bool isSoundXML(std::string_view text) {
  int depth = 0;
  for (size_t start = text.find('<'); start != std::string_view::npos; start = text.find('<')) {
    text.remove_prefix(start);
    const std::string_view markup = markupOf(text);
    if (markup.empty()) return false;
    text.remove_prefix(markup.size());
    if (markup[1] == '!' || markup[1] == '?') continue;
    if (markup[1] == '/') {
      --depth;
    } else if (!markup.ends_with("/>")) {
      ++depth;
    }
    if (depth > kDeepest) return false;
    if (depth <= 0) return depth == 0;
  }
  return false;
}

namespace {

/// Offsets and references are big-endian numbers. Their sizes stand in the trailer.
class BinaryList {
 public:
  explicit BinaryList(std::string_view bytes) : bytes_(bytes) {}

  bool isSound() {
    constexpr size_t kTrailer = 32;
    if (bytes_.size() < kTrailer) return false;
    const size_t trailer = bytes_.size() - kTrailer;
    offsetSize_ = *number(trailer + 6, 1);
    referenceSize_ = *number(trailer + 7, 1);
    table_ = *number(trailer + 24, 8);
    return isSound(*number(trailer + 16, 8), 0);
  }

 private:
  /// Absent if it lies beyond the end.
  std::optional<uint64_t> number(uint64_t place, uint64_t size) const {
    if (size == 0 || size > 8 || place > bytes_.size() || size > bytes_.size() - place) return {};
    uint64_t value = 0;
    for (uint64_t i = 0; i < size; ++i) {
      value = value << 8 | static_cast<unsigned char>(bytes_[place + i]);
    }
    return value;
  }

  /// What an object consists of: this number of elements of its kind, from this place on.
  struct Content {
    uint64_t kind;
    uint64_t place;
    uint64_t count;
  };

  std::optional<Content> contentOf(uint64_t object) const {
    if (object > bytes_.size() || table_ > bytes_.size()) return {};
    const std::optional<uint64_t> place = number(table_ + object * offsetSize_, offsetSize_);
    const std::optional<uint64_t> marker = place ? number(*place, 1) : place;
    if (!marker) return {};
    const Content content{*marker >> 4, *place + 1, *marker & 0xF};
    if (content.count != 0xF || !isCounted(content.kind)) return content;
    // The count itself follows, as an integer.
    const std::optional<uint64_t> integer = number(content.place, 1);
    if (!integer || *integer >> 4 != kInteger) return {};
    const uint64_t size = uint64_t{1} << (*integer & 0xF);
    const std::optional<uint64_t> count = number(content.place + 1, size);
    if (!count || *count > bytes_.size()) return {};
    return Content{content.kind, content.place + 1 + size, *count};
  }

  bool isSound(uint64_t object, int depth) {
    if (depth > kDeepest || ++steps_ > kMostSteps) return false;
    const std::optional<Content> content = contentOf(object);
    if (!content) return false;
    if (!isContainer(content->kind)) return true;
    const uint64_t keys = content->kind == kDictionary ? content->count : 0;
    for (uint64_t i = 0; i < keys + content->count; ++i) {
      const auto reference = number(content->place + i * referenceSize_, referenceSize_);
      if (!reference || (i < keys && !isKey(*reference)) || !isSound(*reference, depth + 1)) {
        return false;
      }
    }
    return true;
  }

  /// libplist ends the process for a key of UTF-16 in which a NUL stands.
  bool isKey(uint64_t object) const {
    const std::optional<Content> content = contentOf(object);
    if (!content || content->kind != kUTF16) return content.has_value();
    for (uint64_t i = 0; i < content->count; ++i) {
      if (number(content->place + 2 * i, 2).value_or(0) == 0) return false;
    }
    return true;
  }

  static bool isContainer(uint64_t kind) {
    return kind == kArray || kind == kSet || kind == kDictionary;
  }
  static bool isCounted(uint64_t kind) { return isContainer(kind) || kind == kUTF16; }

  static constexpr uint64_t kInteger = 0x1;
  static constexpr uint64_t kUTF16 = 0x6;
  static constexpr uint64_t kArray = 0xA;
  static constexpr uint64_t kSet = 0xC;
  static constexpr uint64_t kDictionary = 0xD;

  std::string_view bytes_;
  uint64_t offsetSize_ = 0;
  uint64_t referenceSize_ = 0;
  uint64_t table_ = 0;
  int steps_ = 0;
};

}  // namespace

bool isSoundBinary(std::string_view bytes) { return BinaryList(bytes).isSound(); }

}  // namespace halvermonte::portable
