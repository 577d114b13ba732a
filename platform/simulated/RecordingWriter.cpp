#include "platform/simulated/RecordingWriter.hpp"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <nlohmann/json.hpp>
#include <set>
#include <string_view>
#include <variant>

#include "halvermonte/FourCharacterCode.hpp"
#include "halvermonte/Machine.hpp"
#include "halvermonte/Values.hpp"
#include "platform/ASCII.hpp"
#include "platform/SensorNames.hpp"
#include "platform/portable/HexText.hpp"
#include "platform/simulated/HIDKindNames.hpp"
#include "platform/simulated/SensorNamesReader.hpp"

namespace halvermonte {
namespace {

using Json = nlohmann::ordered_json;

std::string keyText(uint32_t key) {
  const std::string characters = charactersOf(key);
  return isASCII(characters) ? characters : "hex:" + hexOfBytes(characters);
}

/// The bytes up to the last that is not 0, but not fewer than the key's size.
std::string dataBytes(const SMCKeyBytes& data, uint32_t size) {
  std::string bytes(data.bytes.begin(), data.bytes.end());
  const size_t last = bytes.find_last_not_of('\0');
  const size_t used = last == std::string::npos ? 0 : last + 1;
  bytes.resize(std::max<size_t>(used, std::min<size_t>(size, data.bytes.size())));
  return bytes;
}

void putUnlessZero(Json& object, const char* member, uint32_t value) {
  if (value != 0) object[member] = value;
}

bool isAbsent(uint32_t code, uint8_t result) {
  return code == kCodeSuccess && result == kSMCKeyNotFound;
}

/// The answer for one key. Null if the controller has no such key.
Json keyAnswer(const RecordedTick::Key& key) {
  const SMCKeyInfo info = key.info.value_or(SMCKeyInfo{});
  const SMCKeyBytes data = key.data.value_or(SMCKeyBytes{});
  const bool dataAbsent = !key.data || isAbsent(data.code, data.result);
  if (isAbsent(info.code, info.result) && dataAbsent) return nullptr;
  const std::string bytes = dataBytes(data, info.dataSize);
  Json answer;
  answer["type"] = info.dataType != 0 ? charactersOf(info.dataType) : "none";
  answer["bytes"] = hexOfBytes(bytes);
  if (info.dataSize != bytes.size()) answer["size"] = info.dataSize;
  putUnlessZero(answer, "infoCode", info.code);
  putUnlessZero(answer, "infoResult", info.result);
  putUnlessZero(answer, "readCode", data.code);
  putUnlessZero(answer, "readResult", data.result);
  return answer;
}

Json keyAnswers(const RecordedTick& tick) {
  Json answers = Json::object();
  for (const auto& [key, answer] : tick.keys) answers[keyText(key)] = keyAnswer(answer);
  return answers;
}

void putService(Json& smc, const RecordedTick& tick) {
  if (!tick.service) return;
  const uint32_t openCode = tick.openCode.value_or(kCodeSuccess);
  if (tick.service->code != kCodeSuccess) {
    smc["service"] = "unmatched";
    smc["code"] = tick.service->code;
  } else if (!tick.service->present) {
    smc["service"] = "missing";
  } else if (openCode != kCodeSuccess) {
    smc["service"] = "refused";
    smc["code"] = openCode;
  } else {
    smc["service"] = "present";
  }
}

Json controller(const RecordedTick& tick) {
  Json smc = Json::object();
  putService(smc, tick);
  smc["wideCalls"] = tick.answersWideCalls ? "answer" : "refuse";
  smc["keys"] = keyAnswers(tick);
  return smc;
}

Json serviceList(const std::shared_ptr<const HIDServices>& services) {
  if (services == nullptr) return nullptr;
  Json list = Json::array();
  for (const HIDService& service : *services) {
    Json entry = Json::object();
    if (service.product) entry["product"] = *service.product;
    if (service.value) entry["value"] = *service.value;
    list.push_back(entry);
  }
  return list;
}

Json hidServices(const RecordedTick& tick) {
  Json lists = Json::object();
  for (size_t kind = 0; kind < kHIDSensorKinds; ++kind) {
    lists[kHIDKindNames[kind]] = serviceList(tick.hid[kind].value_or(nullptr));
  }
  return lists;
}

Json emptyLists() {
  Json lists = Json::object();
  for (const std::string_view kind : kHIDKindNames) lists[kind] = Json::array();
  return lists;
}

Json driveEntry(const Drive& drive) {
  if (std::holds_alternative<UnreadableDrive>(drive)) return "unreadable";
  const auto* const statistics = std::get_if<DriveStatistics>(&drive);
  if (statistics == nullptr) return nullptr;
  Json entry = Json::object();
  if (statistics->bytesRead) entry["Bytes (Read)"] = *statistics->bytesRead;
  if (statistics->bytesWritten) entry["Bytes (Write)"] = *statistics->bytesWritten;
  return entry;
}

Json driveList(const RecordedTick& tick) {
  Json list = Json::array();
  for (const Drive& drive : tick.drives) list.push_back(driveEntry(drive));
  return list;
}

/// Returns the members of the state that differ from the former state, and copies them there.
Json takeChanges(const Json& state, Json& former) {
  Json changes = Json::object();
  for (const auto& [member, value] : state.items()) {
    const auto before = former.find(member);
    if (before != former.end() && *before == value) continue;
    if (before == former.end() && value.is_null()) continue;
    changes[member] = value;
    former[member] = value;
  }
  return changes;
}

/// Writes each tick as changes from the tick before.
class TickWriter {
 public:
  explicit TickWriter(bool drivesMatched) : drivesMatched_(drivesMatched) {}

  Json write(const RecordedTick& tick) {
    Json entry;
    entry["time"] = tick.time.value_or(0);
    put(entry, "smc", takeControllerChanges(controller(tick)));
    put(entry, "hid", takeChanges(hidServices(tick), hid_));
    const Json drives = drivesMatched_ ? driveList(tick) : Json();
    if (drives != drives_) {
      entry["drives"] = drives;
      drives_ = drives;
    }
    if (tick.drivesRaise) entry["drivesRaise"] = *tick.drivesRaise;
    return entry;
  }

 private:
  static void put(Json& entry, const char* member, const Json& value) {
    if (!value.empty()) entry[member] = value;
  }

  Json takeControllerChanges(Json smc) {
    const Json keys = takeChanges(smc["keys"], keys_);
    smc.erase("keys");
    Json changes = takeChanges(smc, smc_);
    put(changes, "keys", keys);
    return changes;
  }

  bool drivesMatched_;
  Json smc_ = Json::object();
  Json keys_ = Json::object();
  // A machine has these empty lists before its first tick.
  Json drives_ = Json::array();
  Json hid_ = emptyLists();
};

Json commandAnswer(const std::optional<std::string>& output) {
  if (!output) return {{"launches", false}};
  if (Text::fromUTF8(*output)) return {{"output", *output}};
  return {{"outputHex", hexOfBytes(*output)}};
}

/// The names that a machine file can have. Another one would make the whole file unreadable.
Json sensorNames(const std::vector<SensorName>& names) {
  Json pairs = Json::array();
  std::set<std::string> written;
  for (const SensorName& name : names) {
    if (!unmetByKey(name.key, written).empty() || !unmetByName(name.name).empty()) continue;
    pairs.push_back(Json::array({name.key, name.name}));
    written.insert(name.key);
  }
  return pairs;
}

}  // namespace

std::string writtenAsMachineFile(const Recording& recording) {
  Json file;
  file["name"] = recording.name;
  if (recording.tellsHostName) {
    file["hostName"] = recording.hostName ? Json(*recording.hostName) : Json();
  }
  if (!recording.kernelVariables.empty()) file["sysctl"] = recording.kernelVariables;
  for (const auto& [command, output] : recording.commands) {
    file["commands"][command] = commandAnswer(output);
  }
  if (const Json names = sensorNames(recording.sensorNames); !names.empty()) file["names"] = names;
  TickWriter writer(recording.drivesMatched);
  file["ticks"] = Json::array();
  for (const RecordedTick& tick : recording.ticks) file["ticks"].push_back(writer.write(tick));
  return file.dump(1, ' ', false, Json::error_handler_t::replace) + '\n';
}

}  // namespace halvermonte
