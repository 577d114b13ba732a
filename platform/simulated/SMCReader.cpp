#include "platform/simulated/SMCReader.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <locale>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <variant>

#include "halvermonte/FourCharacterCode.hpp"
#include "halvermonte/Machine.hpp"
#include "halvermonte/MachineAnswers.hpp"
#include "platform/ASCII.hpp"
#include "platform/FanDescriptor.hpp"
#include "platform/portable/HexText.hpp"
#include "platform/simulated/SMCAnswer.hpp"
#include "platform/simulated/Wave.hpp"
#include "platform/simulated/WaveReader.hpp"

namespace halvermonte {
namespace {

constexpr std::string_view kHexKeyPrefix = "hex:";

uint32_t readKey(const JsonPlace::Member& member) {
  const std::string_view key = member.name;
  if (key.size() == 4 && isASCII(key)) return fourCharacterCode(key);
  constexpr std::string_view expectation =
      "a key of 4 ASCII characters, or hex: and the 8 hex digits of its 4 bytes";
  if (!key.starts_with(kHexKeyPrefix)) member.place.refuse(expectation);
  const std::optional<std::string> bytes = bytesOfHex(key.substr(kHexKeyPrefix.size()));
  if (!bytes || bytes->size() != 4) member.place.refuse(expectation);
  return fourCharacterCode(*bytes);
}

uint32_t readType(const JsonPlace& place) {
  const std::string& type = place.text("a text of 4 characters");
  if (!isASCII(type)) place.refuse("a text of 4 ASCII characters");
  if (type.size() != 4) place.refuse("a text of 4 characters");
  return fourCharacterCode(type);
}

const SMCEncoding& encodingOf(uint32_t type, const JsonPlace& typePlace) {
  const SMCEncoding* encoding = SMCEncoding::ofType(type);
  if (encoding == nullptr) {
    typePlace.refuse(R"("flt ", "sp78", "fpe2", "ui8 ", "ui16" or "ui32", the types of a number)");
  }
  return *encoding;
}

std::string rangeOf(const SMCEncoding& encoding) {
  std::ostringstream range;
  range.imbue(std::locale::classic());
  range.precision(12);
  range << "from " << encoding.least / encoding.scale << " to "
        << encoding.greatest / encoding.scale;
  return range.str();
}

/// A key's data, and the number of its bytes: the key's size unless the file gives one.
struct Data {
  std::variant<SMCData, SMCWave> content;
  size_t size;
};

Data readBytes(const JsonPlace& place) {
  constexpr std::string_view expectation = "hex digits of 0 to 32 bytes";
  const std::string bytes = place.hexBytes(expectation);
  SMCData data{};
  if (bytes.size() > data.size()) place.refuse(expectation);
  std::copy(bytes.begin(), bytes.end(), data.begin());
  return {data, bytes.size()};
}

Data readValue(const JsonPlace& place, const SMCEncoding& encoding) {
  const double value = place.number();
  if (!encoding.holds(value)) place.refuse("a number " + rangeOf(encoding));
  return {encoding.encode(value), encoding.size};
}

Data readWaveData(const JsonPlace& place, const SMCEncoding& encoding) {
  const Wave wave = readWave(place);
  if (!encoding.holds(wave.lowest()) || !encoding.holds(wave.highest())) {
    place.refuse("mean - amplitude and mean + amplitude " + rangeOf(encoding));
  }
  return {SMCWave{wave, &encoding}, encoding.size};
}

Data readName(const JsonPlace& place, uint32_t type, const JsonPlace& typePlace) {
  constexpr std::string_view expectation = "a text of at most 12 ASCII characters";
  const std::string& name = place.text(expectation);
  if (name.size() > kFanNameSize || !isASCII(name)) place.refuse(expectation);
  if (type != kFanDescriptorType) typePlace.refuse(R"("{fds", the type of a name)");
  return {fanDescriptor(name), kFanDescriptorSize};
}

Data readData(const JsonPlace& place, uint32_t type) {
  const auto [kind, data] = place.exactlyOneOf({"bytes", "value", "wave", "name"});
  const JsonPlace typePlace = place.required("type");
  if (kind == "bytes") return readBytes(data);
  if (kind == "name") return readName(data, type, typePlace);
  const SMCEncoding& encoding = encodingOf(type, typePlace);
  return kind == "value" ? readValue(data, encoding) : readWaveData(data, encoding);
}

template <class Integer>
Integer integerOr(const JsonPlace& place, std::string_view name, Integer otherwise) {
  const std::optional<JsonPlace> member = place.find(name);
  return member ? member->integer<Integer>() : otherwise;
}

SMCAnswer readAnswer(const JsonPlace& place) {
  place.expectOnly({"type", "bytes", "value", "wave", "name", "size", "infoCode", "readCode",
                    "infoResult", "readResult"});
  SMCAnswer answer;
  answer.dataType = readType(place.required("type"));
  const Data data = readData(place, answer.dataType);
  answer.data = data.content;
  answer.dataSize = integerOr(place, "size", static_cast<uint32_t>(data.size));
  answer.infoCode = integerOr(place, "infoCode", kCodeSuccess);
  answer.readCode = integerOr(place, "readCode", kCodeSuccess);
  answer.infoResult = integerOr(place, "infoResult", uint8_t{0});
  answer.readResult = integerOr(place, "readResult", uint8_t{0});
  return answer;
}

void readKeys(const JsonPlace& place, SMCChange& change) {
  change.givesKeys = true;
  for (const JsonPlace::Member& member : place.members()) {
    std::optional<SMCAnswer> answer;
    const uint32_t key = readKey(member);
    if (!member.place.isNull()) answer = readAnswer(member.place);
    if (!change.keys.emplace(key, answer).second) {
      member.place.refuse("this key only once, in either spelling");
    }
  }
}

}  // namespace

SMCChange readSMC(const JsonPlace& place) {
  place.expectOnly({"service", "code", "absentCode", "wideCalls", "keys"});
  SMCChange change;
  if (const auto service = place.find("service")) {
    constexpr ControllerState states[] = {ControllerState::present, ControllerState::missing,
                                          ControllerState::refused, ControllerState::unmatched};
    change.service = states[service->oneOfTexts({"present", "missing", "refused", "unmatched"})];
  }
  if (const auto code = place.find("code")) change.code = code->integer<uint32_t>();
  if (const auto code = place.find("absentCode")) change.absentCode = code->integer<uint32_t>();
  if (const auto wideCalls = place.find("wideCalls")) {
    change.answersWideCalls = wideCalls->oneOfTexts({"answer", "refuse"}) == 0;
  }
  if (const auto keys = place.find("keys")) readKeys(*keys, change);
  return change;
}

std::string pointerToKey(const JsonPlace& tick, uint32_t key) {
  const JsonPlace smc = tick.required("smc");
  const JsonPlace keys = smc.required("keys");
  for (const JsonPlace::Member& member : keys.members()) {
    if (readKey(member) == key) return member.place.pointer();
  }
  return keys.pointer();
}

}  // namespace halvermonte
