// Why machine files are refused, and the messages.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <span>
#include <string>

#include "tests/simulated/MachineTexts.hpp"

namespace halvermonte {
namespace {

struct Refused {
  std::string text;
  std::string line;  ///< after "sample.json: "
};

std::string key(const std::string& answer) {
  return machineText(tickOfKeys(R"("TC0P": )" + answer));
}
std::string smc(const std::string& members) { return machineText(R"({"smc": {)" + members + "}}"); }
std::string hid(const std::string& services) {
  return machineText(R"({"hid": {"temperature": )" + services + "}}");
}
std::string hidWave(const std::string& members) { return hid(R"([{"wave": {)" + members + "}}]"); }
std::string drives(const std::string& list) { return machineText(R"({"drives": )" + list + "}"); }
std::string top(const std::string& members) { return machineText("{}", members + ", "); }
std::string names(const std::string& pairs) { return top(R"("names": [)" + pairs + "]"); }

const std::string kKey = "/ticks/0/smc/keys/TC0P";
const std::string kNotAKey =
    ": expected a key of 4 ASCII characters, or hex: and the 8 hex digits of its 4 bytes";
const std::string kNumberTypes =
    R"(/type: expected "flt ", "sp78", "fpe2", "ui8 ", "ui16" or "ui32", the types of a number)";
const std::string kCodeRange = ": expected an integer from 0 to 4294967295";
const std::string kResultRange = ": expected an integer from 0 to 255";
const std::string kSigned64 = ": expected a signed 64-bit integer";
const std::string kSP78 = "from -128 to 127.99609375";
const std::string kPair = ": expected an array of a key and its name";
const std::string kPrintable = ": expected a key of 4 printable ASCII characters";
const std::string kOneLine = ": expected a text of one line that is not empty";
const std::string kBuiltIn = ": expected a key that is not in the built-in catalogue";
const std::string kHexBytes = "/bytes: expected hex digits of 0 to 32 bytes";

// Errors in the file as a whole, or in its top members.
const Refused kTopLevel[] = {
    {R"([])", "/: expected an object"},
    {R"("a machine")", "/: expected an object"},
    {R"({"ticks": [{}]})", "/name: expected a value, as the member is required"},
    {R"({"name": "a"})", "/ticks: expected a value, as the member is required"},
    {R"({"name": 5, "ticks": [{}]})", "/name: expected a text"},
    {R"({"name": null, "ticks": [{}]})", "/name: expected a text"},
    {R"({"name": "a", "ticks": []})", "/ticks: expected an array of at least one tick"},
    {R"({"name": "a", "ticks": {}})", "/ticks: expected an array of at least one tick"},
    {R"({"name": "a", "ticks": [[]]})", "/ticks/0: expected an object"},
    {top(R"("nmae": "b")"),
     "/nmae: expected one of name, hostName, sysctl, commands, processor, names, ticks"},
    {top(R"("a/b~c\n": 1)"),
     "/a~1b~0c\\u000a: expected one of name, hostName, sysctl, commands, processor, names, ticks"},
    {top(R"("hostName": 7)"), "/hostName: expected a text or null"},
    {top(R"("sysctl": [])"), "/sysctl: expected an object"},
    {top(R"("sysctl": {"hw.physicalcpu": 8.0})"), "/sysctl/hw.physicalcpu" + kSigned64},
    {top(R"("sysctl": {"hw.physicalcpu": "8"})"), "/sysctl/hw.physicalcpu" + kSigned64},
    {top(R"("sysctl": {"a": 9223372036854775808})"), "/sysctl/a" + kSigned64},
    {top(R"("sysctl": {"a": -9223372036854775809})"), "/sysctl/a" + kSigned64},
    {top(R"("sysctl": {"a": 18446744073709551616})"), "/sysctl/a" + kSigned64},
    {top(R"("commands": {"ps": "text"})"), "/commands/ps: expected an object"},
    {top(R"("commands": {"ps": {}})"), "/commands/ps: expected one of output, outputHex, launches"},
    {top(R"("commands": {"ps": {"output": "", "launches": false}})"),
     "/commands/ps: expected only one of output, outputHex, launches"},
    {top(R"("commands": {"ps": {"output": 1}})"), "/commands/ps/output: expected a text"},
    {top(R"("commands": {"ps": {"outputHex": "0"}})"),
     "/commands/ps/outputHex: expected hex digits, two for a byte"},
    {top(R"("commands": {"ps": {"outputHex": "0g"}})"),
     "/commands/ps/outputHex: expected hex digits, two for a byte"},
    {top(R"("commands": {"ps": {"launches": true}})"), "/commands/ps/launches: expected false"},
    {top(R"("commands": {"ps": {"launches": 0}})"), "/commands/ps/launches: expected false"},
    {top(R"("commands": {"ps": {"exit": 1}})"),
     "/commands/ps/exit: expected one of output, outputHex, launches"},
    {top(R"("processor": "Apple M1")"), "/processor: expected an object"},
    {top(R"("processor": {"cpu_type": null})"),
     "/processor/cpu_type: expected a value that is not null"},
    {top(R"("processor": {"cpu_type": ["a", {"b": null}]})"),
     "/processor/cpu_type/1/b: expected a value that is not null"},
    {top(R"("processor": {"cpu_type": "\u0001"})"),
     "/processor/cpu_type: expected a text of characters that XML allows"},
    {top(R"("processor": {"cpu_type": "a\u001fb"})"),
     "/processor/cpu_type: expected a text of characters that XML allows"},
    {top(R"("processor": {"cpu_type": "a\ufffeb"})"),
     "/processor/cpu_type: expected a text of characters that XML allows"},
    {top(R"("processor": {"cpu_type": "a\uffffb"})"),
     "/processor/cpu_type: expected a text of characters that XML allows"},
};

const Refused kNames[] = {
    {top(R"("names": {})"), "/names: expected an array of keys, each with its name"},
    {top(R"("names": null)"), "/names: expected an array of keys, each with its name"},
    {names(R"("Xa00")"), "/names/0" + kPair},
    {names(R"({"Xa00": "Drive"})"), "/names/0" + kPair},
    {names(R"([])"), "/names/0" + kPair},
    {names(R"(["Xa00"])"), "/names/0" + kPair},
    {names(R"(["Xa00", "Drive"], ["Xa01", "Drive", 1])"), "/names/1" + kPair},
    {names(R"([5, "Drive"])"), "/names/0/0" + kPrintable},
    {names(R"(["Xa0", "Drive"])"), "/names/0/0" + kPrintable},
    {names(R"(["Xa000", "Drive"])"), "/names/0/0" + kPrintable},
    {names(R"(["X\u00e90", "Drive"])"), "/names/0/0" + kPrintable},
    {names(R"(["Xa\u001f0", "Drive"])"), "/names/0/0" + kPrintable},
    {names(R"(["Xa\u007f0", "Drive"])"), "/names/0/0" + kPrintable},
    {names(R"(["TC0P", "Drive"])"), "/names/0/0" + kBuiltIn},
    {names(R"(["Xa00", "Drive"], ["Xa01", "Drive"], ["VBAT", "Drive"])"), "/names/2/0" + kBuiltIn},
    {names(R"(["TP0P", "Drive"])"), "/names/0/0" + kBuiltIn},
    {names(R"(["Xa00", "a"], ["Xa01", "b"], ["Xa00", "c"])"),
     "/names/2/0: expected a key that no earlier name has"},
    {names(R"(["Xa00", null])"), "/names/0/1" + kOneLine},
    {names(R"(["Xa00", ""])"), "/names/0/1" + kOneLine},
    {names(R"(["Xa00", "two\nlines"])"), "/names/0/1" + kOneLine},
};

const Refused kTicks[] = {
    {machineText(R"({"smcs": {}})"),
     "/ticks/0/smcs: expected one of time, smc, hid, drives, drivesRaise"},
    {machineText(R"({}, {"time": "1"})"), "/ticks/1/time: expected a number"},
    {machineText(R"({"time": null})"), "/ticks/0/time: expected a number"},
    {machineText(R"({"drivesRaise": null})"), "/ticks/0/drivesRaise: expected a text"},
    {machineText(R"({"smc": null})"), "/ticks/0/smc: expected an object"},
    {machineText(R"({"hid": []})"), "/ticks/0/hid: expected an object"},
    {machineText(R"({"hid": {"power": []}})"),
     "/ticks/0/hid/power: expected one of temperature, current, voltage"},
    {hid("{}"), "/ticks/0/hid/temperature: expected an array of services or null"},
    {hid("[null]"), "/ticks/0/hid/temperature/0: expected an object"},
    {hid(R"([{}, {"name": "a"}])"),
     "/ticks/0/hid/temperature/1/name: expected one of product, value, wave"},
    {hid(R"([{"product": null}])"), "/ticks/0/hid/temperature/0/product: expected a text"},
    {hid(R"([{"value": null}])"), "/ticks/0/hid/temperature/0/value: expected a number"},
    {hid(R"([{"value": 1, "wave": {}}])"),
     "/ticks/0/hid/temperature/0: expected only one of value, wave"},
    {hidWave(R"("mean": 1, "amplitude": 1)"),
     "/ticks/0/hid/temperature/0/wave/period: expected a value, as the member is required"},
    {hidWave(R"("mean": 1, "amplitude": 1, "period": 0)"),
     "/ticks/0/hid/temperature/0/wave/period: expected a number other than 0"},
    {hidWave(R"("mean": 1, "amplitude": 1, "period": 1, "offset": 0)"),
     "/ticks/0/hid/temperature/0/wave/offset: expected one of mean, amplitude, period, phase"},
    {hidWave(R"("mean": 1e308, "amplitude": -1e308, "period": 1)"),
     "/ticks/0/hid/temperature/0/wave: expected mean - amplitude and mean + amplitude within the "
     "range of a 64-bit float"},
    {drives(R"("none")"), "/ticks/0/drives: expected an array of drives or null"},
    {drives(R"(["lost"])"), R"(/ticks/0/drives/0: expected an object, null or "unreadable")"},
    {drives("[null, 5]"), R"(/ticks/0/drives/1: expected an object, null or "unreadable")"},
    {drives(R"-([{"Bytes (read)": 5}])-"),
     "/ticks/0/drives/0/Bytes (read): expected one of Bytes (Read), Bytes (Write)"},
    {drives(R"-([{"Bytes (Read)": 1.5}])-"), "/ticks/0/drives/0/Bytes (Read)" + kSigned64},
    {drives(R"-([{"Bytes (Write)": 9223372036854775808}])-"),
     "/ticks/0/drives/0/Bytes (Write)" + kSigned64},
};

const Refused kController[] = {
    {smc(R"("key": {})"),
     "/ticks/0/smc/key: expected one of service, code, absentCode, wideCalls, keys"},
    {smc(R"("service": "there")"),
     "/ticks/0/smc/service: expected one of present, missing, refused, unmatched"},
    {smc(R"("service": null)"),
     "/ticks/0/smc/service: expected one of present, missing, refused, unmatched"},
    {smc(R"("code": -1)"), "/ticks/0/smc/code" + kCodeRange},
    {smc(R"("code": 4294967296)"), "/ticks/0/smc/code" + kCodeRange},
    {smc(R"("code": "0xE00002BC")"), "/ticks/0/smc/code" + kCodeRange},
    {smc(R"("absentCode": 1.0)"), "/ticks/0/smc/absentCode" + kCodeRange},
    {smc(R"("wideCalls": true)"), "/ticks/0/smc/wideCalls: expected one of answer, refuse"},
    {smc(R"("keys": [])"), "/ticks/0/smc/keys: expected an object"},
    {smc(R"("keys": {"TC0": null})"), "/ticks/0/smc/keys/TC0" + kNotAKey},
    {smc(R"("keys": {"TC0PX": null})"), "/ticks/0/smc/keys/TC0PX" + kNotAKey},
    {smc(R"("keys": {"T\u00e9P": null})"), "/ticks/0/smc/keys/T\xC3\xA9P" + kNotAKey},
    {smc(R"("keys": {"hex:5443305": null})"), "/ticks/0/smc/keys/hex:5443305" + kNotAKey},
    {smc(R"("keys": {"hex:5443305g": null})"), "/ticks/0/smc/keys/hex:5443305g" + kNotAKey},
    {smc(R"("keys": {"hex:544330500A": null})"), "/ticks/0/smc/keys/hex:544330500A" + kNotAKey},
    {smc(R"("keys": {"TC0P": null, "hex:54433050": null})"),
     "/ticks/0/smc/keys/hex:54433050: expected this key only once, in either spelling"},
};

const Refused kAnswers[] = {
    {key("5"), kKey + ": expected an object"},
    {key(R"({"type": "flt ", "value": 1, "code": 0})"),
     kKey + "/code: expected one of type, bytes, value, wave, name, size, infoCode, readCode, "
            "infoResult, readResult"},
    {key(R"({"bytes": "00"})"), kKey + "/type: expected a value, as the member is required"},
    {key(R"({"type": 5, "bytes": "00"})"), kKey + "/type: expected a text of 4 characters"},
    {key(R"({"type": "flt", "value": 1})"), kKey + "/type: expected a text of 4 characters"},
    {key(R"({"type": "flt\u00e9", "bytes": ""})"),
     kKey + "/type: expected a text of 4 ASCII characters"},
    {key(R"({"type": "flt "})"), kKey + ": expected one of bytes, value, wave, name"},
    {key(R"({"type": "flt ", "value": 1, "bytes": "00"})"),
     kKey + ": expected only one of bytes, value, wave, name"},
    {key(R"({"type": "flt ", "bytes": 0})"), kKey + kHexBytes},
    {key(R"({"type": "flt ", "bytes": "123"})"), kKey + kHexBytes},
    {key(R"({"type": "flt ", "bytes": "0x12"})"), kKey + kHexBytes},
    {key(R"({"type": "flt ", "bytes": ")" + std::string(66, '0') + R"("})"), kKey + kHexBytes},
    {key(R"({"type": "ch8*", "value": 1})"), kKey + kNumberTypes},
    {key(R"({"type": "{fds", "wave": {"mean": 1, "amplitude": 1, "period": 1}})"),
     kKey + kNumberTypes},
    {key(R"({"type": "sp78", "value": "42"})"), kKey + "/value: expected a number"},
    {key(R"({"type": "sp78", "value": 128})"), kKey + "/value: expected a number " + kSP78},
    {key(R"({"type": "sp78", "value": 127.999})"), kKey + "/value: expected a number " + kSP78},
    {key(R"({"type": "sp78", "value": -128.002})"), kKey + "/value: expected a number " + kSP78},
    {key(R"({"type": "fpe2", "value": -0.125})"),
     kKey + "/value: expected a number from 0 to 16383.75"},
    {key(R"({"type": "fpe2", "value": 16383.875})"),
     kKey + "/value: expected a number from 0 to 16383.75"},
    {key(R"({"type": "ui8 ", "value": 256})"), kKey + "/value: expected a number from 0 to 255"},
    {key(R"({"type": "ui8 ", "value": -1})"), kKey + "/value: expected a number from 0 to 255"},
    {key(R"({"type": "ui16", "value": 65536})"),
     kKey + "/value: expected a number from 0 to 65535"},
    {key(R"({"type": "ui32", "value": 4294967296})"),
     kKey + "/value: expected a number from 0 to 4294967295"},
    {key(R"({"type": "ui32", "value": 1e300})"),
     kKey + "/value: expected a number from 0 to 4294967295"},
    {key(R"({"type": "flt ", "value": 3.5e38})"),
     kKey + "/value: expected a number from -3.40282346639e+38 to 3.40282346639e+38"},
    {key(R"({"type": "sp78", "wave": {"mean": 100, "amplitude": 28, "period": 9}})"),
     kKey + "/wave: expected mean - amplitude and mean + amplitude " + kSP78},
    {key(R"({"type": "fpe2", "wave": {"mean": 100, "amplitude": -101, "period": 9}})"),
     kKey + "/wave: expected mean - amplitude and mean + amplitude from 0 to 16383.75"},
    {key(R"({"type": "{fds", "name": "Thirteen char"})"),
     kKey + "/name: expected a text of at most 12 ASCII characters"},
    {key(R"({"type": "{fds", "name": "L\u00fcfter"})"),
     kKey + "/name: expected a text of at most 12 ASCII characters"},
    {key(R"({"type": "ch8*", "name": "Left"})"),
     kKey + R"(/type: expected "{fds", the type of a name)"},
    {key(R"({"type": "flt ", "value": 1, "size": -1})"), kKey + "/size" + kCodeRange},
    {key(R"({"type": "flt ", "value": 1, "size": 4294967296})"), kKey + "/size" + kCodeRange},
    {key(R"({"type": "flt ", "value": 1, "infoCode": 4294967296})"),
     kKey + "/infoCode" + kCodeRange},
    {key(R"({"type": "flt ", "value": 1, "readCode": -5})"), kKey + "/readCode" + kCodeRange},
    {key(R"({"type": "flt ", "value": 1, "infoResult": 256})"),
     kKey + "/infoResult" + kResultRange},
    {key(R"({"type": "flt ", "value": 1, "readResult": true})"),
     kKey + "/readResult" + kResultRange},
};

void expectRefusals(std::span<const Refused> files) {
  for (const auto& [text, line] : files) EXPECT_EQ(refusalOf(text), "sample.json: " + line) << text;
}

TEST(RefusedMachineFile, NamesThePlaceInTheTopLevel) { expectRefusals(kTopLevel); }
TEST(RefusedMachineFile, NamesThePlaceInTheNames) { expectRefusals(kNames); }
TEST(RefusedMachineFile, NamesThePlaceInATick) { expectRefusals(kTicks); }
TEST(RefusedMachineFile, NamesThePlaceInTheController) { expectRefusals(kController); }
TEST(RefusedMachineFile, NamesThePlaceInAnAnswer) { expectRefusals(kAnswers); }

std::string refusalOfFile(const std::string& path) {
  try {
    SimulatedMachine::fromFile(path);
  } catch (const MachineFileError& error) {
    return error.what();
  }
  return {};
}

TEST(MachineFile, ThatDoesNotExistIsNamedByItsPath) {
  EXPECT_EQ(refusalOfFile("/no/such.json"),
            "/no/such.json: expected a file that can be read (No such file or directory)");
}

TEST(MachineFile, ThatIsADirectoryIsNamedByItsPath) {
  EXPECT_EQ(refusalOfFile(testing::TempDir()),
            testing::TempDir() + ": expected a file that can be read (Is a directory)");
}

TEST(MachineFile, IsReadFromItsPathAndNamedByIt) {
  const std::string path = testing::TempDir() + "machine_file_test.json";
  std::ofstream(path) << machineText("{}");
  EXPECT_EQ(SimulatedMachine::fromFile(path)->name(), "Sample");
  std::ofstream(path) << "{}";
  EXPECT_EQ(refusalOfFile(path), path + ": /name: expected a value, as the member is required");
  std::remove(path.c_str());
}

}  // namespace
}  // namespace halvermonte
