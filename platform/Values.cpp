#include "halvermonte/Values.hpp"

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <type_traits>

#include "halvermonte/UTF8.hpp"
#include "platform/Conversions.hpp"

namespace halvermonte {

struct Text::Whole {
  explicit Whole(std::string_view characters) : storage(characters) {
    content.kind = Kind::text;
    content.characters = storage;
  }
  std::string storage;
  Content content;
};

struct Text::Pieces {
  std::string storage;  ///< the whole text, with a NUL in place of each separator
  std::vector<Content> contents;
};

Text::Text(std::string_view characters) {
  auto whole = std::make_shared<const Whole>(characters);
  object_ = Reference(whole, &whole->content);
}

Text Text::fromUTF8(std::string_view bytes) {
  for (std::string_view rest = bytes; !rest.empty();) {
    if (!takeCodePoint(rest)) return {};
  }
  return Text(bytes);
}

std::ostream& operator<<(std::ostream& stream, const Text& text) { return stream << text.view(); }

std::vector<Text> Text::split(char separator) const {
  auto pieces = std::make_shared<Pieces>();
  pieces->storage = str();
  std::string& whole = pieces->storage;
  const auto separators = std::count(whole.begin(), whole.end(), separator);
  pieces->contents.reserve(static_cast<size_t>(separators) + 1);
  for (size_t start = 0;;) {
    const size_t end = whole.find(separator, start);
    Content piece;
    piece.kind = Kind::text;
    piece.characters = std::string_view(whole).substr(start, end - start);
    pieces->contents.push_back(piece);
    if (end == std::string::npos) break;
    whole[end] = '\0';
    start = end + 1;
  }
  std::vector<Text> texts;
  texts.reserve(pieces->contents.size());
  for (const Content& piece : pieces->contents) texts.push_back(Text(Reference(pieces, &piece)));
  return texts;
}

struct Number::Content : Value::Object {
  Form form;
  union {
    int32_t int32;
    int64_t int64;
    uint64_t uint64;
    float float32;
    double float64;
  };
};

template <class Source>
Number Number::of(Form form, Source value) {
  auto content = std::make_shared<Content>();
  content->kind = Kind::number;
  content->form = form;
  if constexpr (std::is_same_v<Source, int32_t>) content->int32 = value;
  if constexpr (std::is_same_v<Source, int64_t>) content->int64 = value;
  if constexpr (std::is_same_v<Source, uint64_t>) content->uint64 = value;
  if constexpr (std::is_same_v<Source, float>) content->float32 = value;
  if constexpr (std::is_same_v<Source, double>) content->float64 = value;
  return Number(std::move(content));
}

Number Number::ofInt32(int32_t value) { return of(Form::int32, value); }
Number Number::ofInt64(int64_t value) { return of(Form::int64, value); }
Number Number::ofUInt64(uint64_t value) { return of(Form::uint64, value); }
Number Number::ofFloat32(float value) { return of(Form::float32, value); }
Number Number::ofFloat64(double value) { return of(Form::float64, value); }

Number::Form Number::form() const noexcept { return content<Content>().form; }

namespace {

/// Integers keep their low bits, as the platform's boxed numbers do.
template <class Target, class Source>
Target converted(Source value) noexcept {
  if constexpr (std::is_floating_point_v<Source> && std::is_integral_v<Target>) {
    return truncated<Target>(value);
  } else {
    return static_cast<Target>(value);
  }
}

template <class Target, class Content>
Target numberAs(const Content& content) noexcept {
  switch (content.form) {
    case Number::Form::int32:
      return converted<Target>(content.int32);
    case Number::Form::int64:
      return converted<Target>(content.int64);
    case Number::Form::uint64:
      return converted<Target>(content.uint64);
    case Number::Form::float32:
      return converted<Target>(content.float32);
    case Number::Form::float64:
      return converted<Target>(content.float64);
  }
  return 0;
}

}  // namespace

int32_t Number::int32Value() const noexcept {
  return object_ ? numberAs<int32_t>(content<Content>()) : 0;
}
int64_t Number::int64Value() const noexcept {
  return object_ ? numberAs<int64_t>(content<Content>()) : 0;
}
uint64_t Number::uint64Value() const noexcept {
  return object_ ? numberAs<uint64_t>(content<Content>()) : 0;
}
float Number::float32Value() const noexcept {
  return object_ ? numberAs<float>(content<Content>()) : 0;
}
double Number::float64Value() const noexcept {
  return object_ ? numberAs<double>(content<Content>()) : 0;
}

struct Array::Content : Value::Object {
  std::vector<Value> elements;
};

Array::Array(std::vector<Value> elements) {
  auto content = std::make_shared<Content>();
  content->kind = Kind::array;
  content->elements = std::move(elements);
  object_ = std::move(content);
}

const std::vector<Value>& Array::content() const noexcept {
  static const std::vector<Value> kNone;
  return object_ ? Value::content<Content>().elements : kNone;
}

struct Dictionary::Content : Value::Object {
  std::vector<Entry> entries;
};

namespace {

bool keyBefore(const Dictionary::Entry& first, const Dictionary::Entry& second) {
  return first.key.view() < second.key.view();
}

void keepLaterOfEqualKeys(std::vector<Dictionary::Entry>& entries) {
  std::stable_sort(entries.begin(), entries.end(), keyBefore);
  size_t kept = 0;
  for (size_t i = 0; i < entries.size(); ++i) {
    const bool replacesKept = kept > 0 && !keyBefore(entries[kept - 1], entries[i]);
    if (!replacesKept) ++kept;
    if (kept - 1 != i) entries[kept - 1] = std::move(entries[i]);
  }
  entries.resize(kept);
}

}  // namespace

Dictionary::Dictionary(std::vector<Entry> entries) {
  auto content = std::make_shared<Content>();
  content->kind = Kind::dictionary;
  keepLaterOfEqualKeys(entries);
  content->entries = std::move(entries);
  object_ = std::move(content);
}

const std::vector<Dictionary::Entry>& Dictionary::content() const noexcept {
  static const std::vector<Entry> kNone;
  return object_ ? Value::content<Content>().entries : kNone;
}

Value Dictionary::find(std::string_view key) const noexcept {
  const std::vector<Entry>& all = content();
  const auto found =
      std::lower_bound(all.begin(), all.end(), key,
                       [](const Entry& entry, std::string_view k) { return entry.key.view() < k; });
  return found != all.end() && found->key.view() == key ? found->value : Value();
}

struct Date::Content : Value::Object {
  double secondsSince1970;
};

Date::Date(double secondsSince1970) {
  auto content = std::make_shared<Content>();
  content->kind = Kind::date;
  content->secondsSince1970 = secondsSince1970;
  object_ = std::move(content);
}

double Date::secondsSince1970() const noexcept { return content<Content>().secondsSince1970; }

struct Image::Content : Value::Object {
  std::shared_ptr<const void> picture;
};

Image::Image(std::shared_ptr<const void> picture) {
  auto content = std::make_shared<Content>();
  content->kind = Kind::image;
  content->picture = std::move(picture);
  object_ = std::move(content);
}

std::shared_ptr<const void> Image::picture() const noexcept {
  return object_ ? content<Content>().picture : nullptr;
}

}  // namespace halvermonte
