#!/usr/bin/env python3
"""What the model itself must say about examples worked out by hand."""

import math
import plistlib
import unittest

import machines
import model
from catalogue import TEMPERATURE_KEYS, human_readable_names
from record import DEFAULTS
from simulated import SmcRecord
from values import byte_count_text, float32, int32, nextstep_text, standard_order


def records(*ticks, processor="x86_64"):
  """The records of one pass a tick."""
  lines = model.run({"name": "test", "ticks": list(ticks)}, len(ticks), processor)
  return [line["record"] for line in lines]


def celsius(value, data_type="flt "):
  return {"type": data_type, "value": value}


def smc(**keys):
  return {"smc": {"keys": keys}}


def hid(*services):
  return {"hid": {"temperature": [{"product": name, "value": value} for name, value in services]}}


def drives(read, write=0):
  return [{"Bytes (Read)": read, "Bytes (Write)": write}]


class Numbers(unittest.TestCase):
  def test_float32_rounds_once(self):
    self.assertEqual(float32(100000000000), 99999997952)
    self.assertEqual(float32(50000000000), 49999998976)
    self.assertEqual(float32(2**24 + 1), 2**24)
    self.assertEqual(float32((2**24 + 1 << 36) + 1), 2**24 + 2 << 36)  # twice rounded: 2^24 << 36
    self.assertEqual(float32(2**64 - 1), 2.0**64)

  def test_conversion_truncates_and_saturates(self):
    for value, whole in ((-0.9, 0), (1.9, 1), (-1.9, -1), (1e10, 2**31 - 1), (-math.inf, -(2**31))):
      self.assertEqual(int32(value), whole)
    self.assertEqual(int32(math.nan), 0)

  def test_byte_counts(self):
    for count, text in (
      (0, "Zero KB"), (1, "1 byte"), (999, "999 bytes"), (1500, "2 KB"), (2500, "2 KB"),
      (999499, "999 KB"), (999500, "1 MB"), (999999, "1 MB"), (1050000, "1 MB"),
      (1150000, "1.2 MB"), (1250000, "1.2 MB"), (50000000, "50 MB"), (999950000, "1 GB"),
      (1005000000, "1 GB"),
      (1015000000, "1.02 GB"), (2**63 - 1, "9.22 EB"), (-(2**63), "-9.22 EB"), (-1, "-1 byte"),
    ):
      self.assertEqual(byte_count_text(count), text)

  def test_fan_names_decode_as_nextstep(self):
    self.assertEqual(nextstep_text(b"\x80\xa4\xae\xe7\xfd\0rest"), "\u00a0\u2044\ufb01ñÿ")

  def test_display_order(self):
    in_order = [
      "Battery", "Battery 1", "Battery TS_MAX", "BLC Proximity", "CPU 1 Package", "CPU Core 2",
      "CPU Core 10", "Mem Bank A1", "Memory Bank 1",
    ]
    self.assertEqual(sorted(reversed(in_order), key=standard_order), in_order)
    alike = ["007", "7", "Drive", "drive", "drive 02", "Drive 2", "Étude", "état"]
    self.assertEqual(sorted(reversed(alike), key=standard_order), alike)


class Record(unittest.TestCase):
  def test_a_fresh_record(self):
    defaults = dict(DEFAULTS)
    self.assertEqual(len(defaults), 103)
    self.assertEqual(defaults["network_connectedToInternet"], -1)
    self.assertEqual(defaults["summary_memoryTotal"], 1)
    self.assertEqual(defaults["diskIO_readText"], "-")
    self.assertIsNone(defaults["cpu_userActivities"])


class Smc(unittest.TestCase):
  def client(self, keys, wide=False, **members):
    machine = model.Machine({"name": "x", "ticks": [{"smc": {"keys": keys, **members}}]})
    return model.SmcClient(model.SmcConnection(machine), wide)

  def reading(self, **answer):
    return self.client({"TC0P": answer}).temperature(b"TC0P")

  def test_temperatures(self):
    for data, degrees in (
      ("2A00", 42.0), ("2A40", 42.25), ("2A80", 41.5), ("FF00", -1.0), ("2A03", 42.0),
    ):
      self.assertEqual(self.reading(type="sp78", bytes=data), degrees)
    self.assertEqual(self.reading(type="ui8 ", value=42), -1.0)
    self.assertEqual(self.reading(type="flt ", value=42.5, size=0), -1.0)
    self.assertEqual(self.reading(type="flt ", value=42.5, size=2**32 - 1), 42.5)
    self.assertEqual(self.reading(type="flt ", value=42.5, readCode=0x4000), -1.0)
    self.assertEqual(self.reading(type="flt ", value=42.5, readResult=0x84), 0.0)
    self.assertEqual(self.reading(type="flt ", value=42.5, infoResult=0x84), -1.0)
    self.assertEqual(self.client({}).temperature(b"TC0P"), -1.0)

  def test_value_record_of_a_failed_second_step(self):
    client = self.client({"TC0P": {"type": "flt ", "value": 4, "readCode": 5}})
    code, value = client.read_key(b"TC0P")
    self.assertEqual((code, value.data_size, value.data_type), (5, 4, b"flt "))
    self.assertEqual(value.bytes, bytes(32))

  def test_fan_speed(self):
    speed = self.client({"F0Ac": {"type": "fpe2", "bytes": "0A28"}}).fan_speed(0)
    self.assertEqual(speed, 650.0)
    self.assertEqual(self.client({}).fan_speed(0), 0.0)

  def test_fan_count_is_the_last_byte(self):
    for data, size, count in (
      ("02", 1, 2), ("0102", 2, 2), ("0201", 1, 2), ("0300000002", 5, 5), ("02", 2, 0),
      ("02", 2**31 - 1, 0), ("000002", 2**31 - 1, 2), ("02" * 32, 33, 16),
      ("02" * 32, 2**31, 0), ("02" * 32, 2**32 - 1, 0),
    ):
      with self.subTest(data=data, size=size):
        answer = {"type": "ui8 ", "bytes": data, "size": size}
        self.assertEqual(self.client({"FNum": answer}).fan_count(), count)
    self.assertEqual(self.client({}).fan_count(), 0)

  def fan_name(self, wide=False, smc=None, **answer):
    return self.client({"F0ID": {"type": "{fds", **answer}}, wide, **(smc or {})).fan_name(0)

  def test_fan_names(self):
    self.assertEqual(self.fan_name(name="Left side"), b"Left")
    self.assertEqual(self.fan_name(name="ExhaustFan12"), b"ExhaustFan12")
    self.assertEqual(self.fan_name(name="Left", readResult=1), bytes(12))
    self.assertEqual(self.fan_name(name="Left", readCode=0x4000), bytes(12))
    for refused in (
      {"readCode": 1}, {"infoCode": 1}, {"infoCode": 0x4000}, {"infoResult": 1}, {"size": 17},
    ):
      self.assertIsNone(self.fan_name(name="Left", **refused))
    self.assertIsNone(self.fan_name(wide=True, smc={"wideCalls": "refuse"}, name="Left"))
    self.assertEqual(self.fan_name(wide=False, smc={"wideCalls": "refuse"}, name="Left"), b"Left")

  def test_a_closed_connection_answers_nothing(self):
    client = self.client({"TC0P": celsius(40)})
    client.connection.close()
    self.assertEqual(client.connection.call(b"TC0P", 9, SmcRecord()), 0x10000003)


class Catalogue(unittest.TestCase):
  def test_keys(self):
    self.assertEqual((len(TEMPERATURE_KEYS), len(set(TEMPERATURE_KEYS))), (181, 178))
    for key, first, second in (("Tm0P", 56, 108), ("Tp0j", 94, 138), ("Tg0f", 100, 119)):
      self.assertEqual([TEMPERATURE_KEYS[first - 1], TEMPERATURE_KEYS[second - 1]], [key, key])

  def test_names_by_processor(self):
    for processor, cores, expected in (
      ("Apple M4", 10, {"Te09": "CPU Efficiency Core 2", "Tp0V": "CPU Core 5", "Tp0b": None}),
      ("Intel", 12, {"Te09": "CPU Efficiency Core 2", "Tp0b": "CPU Core 7", "Tp0e": "CPU Core 8"}),
      ("Apple M4 Pro", 14, {"Tp2M": "CPU Core 7", "Tp2R": "CPU Core 8", "Tp2W": "CPU Core 10"}),
      ("Apple M4 Pro", 12, {"Tp2R": "CPU Core 8", "Tp2U": None}),
      ("Apple M4 Pro", 10, {"Tp2M": None}),
      ("Apple M3 Max", 16, {"Tf4B": "CPU Core 10", "Tf4D": "CPU Core 10", "Tf4E": "CPU Core 10"}),
      ("Apple M3", 13, {"Tf4A": "CPU Core 9", "Tf4B": None}),
      ("Apple M2", 10, {"Tp0f": None, "Tp0j": None}),
      ("Apple M2", 12, {"Tp0j": "CPU Core 8"}),
      ("Apple M1", 8, {"Tp0P": "Power Supply 1", "Tg0n": "GPU 2", "Tg0W": None, "Tg0f": "GPU 1"}),
      ("", 1, {"Te09": "CPU Efficiency Core 2", "Tg0W": "GPU Cluster 1", "Tg0f": "GPU Cluster 4"}),
    ):
      with self.subTest(processor=processor, cores=cores):
        names = human_readable_names(processor, cores)
        self.assertEqual({key: names.get(key) for key in expected}, expected)

  def test_what_the_report_must_look_like(self):
    def name(report, **commands):
      answer = {"output": plistlib.dumps(report).decode()} if report is not None else commands
      description = {"name": "x", "commands": {model.REPORT_COMMAND: answer}, "ticks": [{}]}
      return model.processor_name(model.Machine(description))

    self.assertEqual(name([{"_items": [{"chip_type": "B"}]}]), "B")
    self.assertEqual(name([{"_items": [{"chip_type": "B", "cpu_type": "A"}]}]), "A")
    for report in ([{"_items": [{"cpu_type": "A"}] * 2}], [{"_items": []}], [{}], [], {}, "A",
                   [{"_items": [{"cpu_type": 1, "chip_type": "B"}]}]):
      self.assertEqual(name(report), "")
    self.assertEqual(name(None, launches=False), "")
    self.assertEqual(name(None, output="no property list"), "")


class Temperatures(unittest.TestCase):
  def test_one_product_has_no_place_in_the_mini_list(self):
    record, = records(hid(("Tg1b", 40)))
    self.assertEqual(record["sensors_temperature"], "Power Management Unit\n")
    self.assertEqual(record["sensors_temperatureMini"], "")

  def test_groups(self):
    record, = records(hid(("pACC MTR 1", 40), ("pACC MTR 2", 41), ("GPU MTR", 0), ("eACC MTR", -1)))
    self.assertEqual(record["sensors_temperature"], "CPU Performance Cores\n")
    self.assertEqual(record["sensors_temperatureMiniData"], "41\n")

  def test_range_of_hid_sensors(self):
    for value, shown in ((0, "0\n"), (110.9, "110\n"), (111, ""), (-0.9, "0\n"), (-1, "")):
      record, = records(hid(("Tg1b", value)))
      self.assertEqual(record["sensors_temperatureData"], shown)

  def test_range_of_catalogue_sensors(self):
    for value, shown in ((119.9, "119\n"), (120, ""), (0.9, ""), (1, "1\n")):
      record, = records(smc(TN1P=celsius(value)))
      self.assertEqual(record["sensors_temperatureData"], shown)

  def test_the_highest_of_one_name(self):
    record, = records(smc(TCXC=celsius(50), TCXc=celsius(57)))
    self.assertEqual(record["sensors"], {"PECI CPU": "57"})

  def test_drops(self):
    for now, shown in ((40, "69"), (44, "69"), (45, "45"), (90, "90")):
      record = records(smc(TN1P=celsius(70)), smc(TN1P=celsius(now)))[1]
      self.assertEqual(record["sensors"], {"Northbridge Proximity 2": shown})

  def test_a_key_that_stands_twice_drops_twice(self):
    passes = records(smc(Tm0P=celsius(70)), smc(Tm0P=celsius(0)), {}, {})
    shown = [record["sensors"]["Memory Bank 6"] for record in passes]
    self.assertEqual(shown, ["70", "69", "67", "65"])

  def test_a_controller_that_went_away(self):
    ticks = [smc(TN1P=celsius(26)), {"smc": {"service": "missing"}}, {}, {}]
    shown = [record["sensors_temperatureData"] for record in records(*ticks)]
    self.assertEqual(shown, ["26\n", "25\n", "24\n", ""])

  def test_battery_and_enclosure(self):
    record, = records(smc(TB0T=celsius(35)))
    self.assertEqual(record["sensors_temperatureMini"], "Battery\nEnclosure\n")

  def test_a_name_stands_once(self):
    record, = records(hid(("Tg1b", 40), ("Tg1b", 50), ("PMU", 1)))
    self.assertEqual(record["sensors_temperatureMiniData"], "40\n")

  def test_mini_budget(self):
    eight = [name for name, _ in model.RELABELS]
    record, = records(hid(*((name, 40) for name in eight), ("eACC MTR", 40)))
    self.assertEqual(record["sensors_temperatureMini"].count("\n"), 7)
    self.assertEqual(record["sensors_temperature"].count("\n"), 9)


  def test_added_names_are_shown_among_the_others(self):
    keys = {"Xa00": celsius(41), "Xa01": celsius(120), "Xa02": celsius(44), "TG0D": celsius(43)}
    names = [["Xa00", "Drive 10"], ["Xa01", "Drive 2"], ["Xa02", "GPU Die"], ["Xa03", "Drive 1"]]
    machine = {"name": "x", "names": names, "ticks": [smc(**keys), smc(Xa00=celsius(1))]}
    for line, drive in zip(model.run(machine, 2, "x86_64"), ("41", "40")):
      self.assertEqual(line["record"]["sensors_temperature"], "Drive 10\nGPU Die\n")
      self.assertEqual(line["record"]["sensors_temperatureData"], f"{drive}\n44\n")


class Reports(unittest.TestCase):
  def test_two_fans(self):
    keys = {"FNum": celsius(2, "ui8 "), "F0Ac": celsius(1200.7), "F1Ac": celsius(0)}
    for index, name in enumerate(("Left", "Right")):
      keys[f"F{index}ID"] = {"type": "{fds", "name": name}
    record, = records(smc(**keys))
    self.assertEqual(record["sensors_fans"], "Left\nRight\n")
    self.assertEqual(record["fans"], {"Left": "1200", "Right": "0"})

  def test_fans_without_names_or_speeds(self):
    record, = records(smc(FNum=celsius(1, "ui8 ")))
    self.assertEqual(record["fans"], {"Fan 1": "0"})
    nameless = smc(FNum=celsius(1, "ui8 "), F0ID={"type": "{fds", "name": ""})
    self.assertEqual(records(nameless)[0]["fans"], {"": "0"})
    kept = records(nameless, smc(F0Ac=celsius(-1)))[1]
    self.assertEqual((kept["sensors_fans"], kept["fans"]), ("n/a", {"": "0"}))

  def test_the_eleventh_fan(self):
    ten = records(smc(FNum=celsius(10, "ui8 ")))
    self.assertEqual(len(ten[0]["fans"]), 10)
    lines = model.run({"name": "x", "ticks": [{}, smc(FNum=celsius(11, "ui8 "))]}, 3, "arm64")
    self.assertEqual(lines[1:], [{"tick": 1, "ends": True}])

  def test_steadying(self):
    def cpu(*ticks):
      passes = records(*ticks, processor="arm64")
      return [record["sensors"]["CPU Efficiency Cores"] for record in passes]

    self.assertEqual(cpu(hid(("eACC MTR", 60)), hid(("eACC MTR", 50))), ["60", "60"])
    self.assertEqual(cpu(hid(("eACC MTR", 60)), hid(("eACC MTR", 55))), ["60", "55"])
    for value, shown in ((40, "48"), (43, "43")):
      both = hid(("eACC MTR", value), ("GPU MTR", 48))
      self.assertEqual(cpu(both, both), [str(value), shown])
    hot = hid(("eACC MTR", 40), ("GPU MTR", 200))
    self.assertEqual(cpu(hot, hot), ["40", "40"])


class Disks(unittest.TestCase):
  def test_whole_seconds(self):
    for step, rate in ((0.9, 0), (1.9, 5000000), (2.5, 2500000), (-1, 0)):
      record = records(
        {"time": 10, "drives": drives(1)}, {"time": 10 + step, "drives": drives(5000001)})[1]
      self.assertEqual(record["diskIO_speedRead"], rate)

  def test_first_pass(self):
    record, = records({"drives": drives(1000000, 5)})
    self.assertEqual(record["diskIO_activities"], [[-1] * 74 + [0]] * 2)
    self.assertEqual((record["diskIO_read"], record["diskIO_readText"]), (1000000, "1 MB"))
    self.assertEqual(record["diskIO_writeText"], "5 bytes")

  def test_writes_wait_for_reads(self):
    record = records({"drives": drives(0, 1)}, {"drives": drives(0, 90000)})[1]
    self.assertEqual(record["diskIO_speedWrite"], 0)

  def test_scale(self):
    for rate, scale in ((50000, 50000), (50001, 100000), (100001, 500000), (10**12, 99999997952)):
      record = records({"drives": drives(1)}, {"drives": drives(1 + rate)})[1]
      self.assertEqual(record["diskIO_activitiesMax"], scale)

  def test_speed_texts(self):
    for rate, text in ((1000, "0 KB/s"), (1001, "1 KB/s"), (-1, "9.22 EB/s")):
      record = records({"drives": drives(10)}, {"drives": drives(10 + rate)})[1]
      self.assertEqual(record["diskIO_speedReadText"], text)

  def test_a_raising_read_keeps_the_totals(self):
    ticks = [{"drives": drives(10)}, {"drives": drives(20), "drivesRaise": "gone"}, {}]
    self.assertEqual([record["diskIO_read"] for record in records(*ticks)], [10, 10, 20])


class Generator(unittest.TestCase):
  def test_a_seed_is_a_machine(self):
    self.assertEqual(machines.machine(7), machines.machine(7))
    self.assertNotEqual(machines.machine(7), machines.machine(8))


if __name__ == "__main__":
  unittest.main()
