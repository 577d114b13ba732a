"""A second engine, slow and literal, to compare the first with.

run() gives what the monitor must print for a machine file, one dictionary a tick. It shares no
code and no table with the library.
"""

import copy
import plistlib
import struct

from catalogue import (
  FIXED_MINI, GROUPS, RELABELS, TEMPERATURE_KEYS, human_readable_names,
)
from record import fresh_record
from simulated import READ_BYTES, READ_INFO, Machine, SmcConnection, SmcRecord
from values import (
  INT64_MAX, UINT64_MASK, byte_count_text, float32, int32, nextstep_text, round_half_away,
  standard_order, truncated,
)

REPORT_COMMAND = "system_profiler SPHardwareDataType -xml"
SCALES = [
  50000, 100000, 500000, 1000000, 5000000, 10000000, 20000000, 50000000, 100000000, 200000000,
  500000000, 1000000000, 2000000000, 5000000000, 10000000000, 20000000000, 50000000000,
  100000000000,
]


class ProcessEnds(Exception):
  """A fan beyond the tenth does not fit its key."""


def run(machine, ticks, processor):
  """{"tick", "record"} for each pass; {"tick", "ends": True} last where the process aborts."""
  state = Machine(machine)
  record = fresh_record(state.host_name(), state.time)
  engine = Engine(state, processor)
  lines = []
  for tick in range(ticks):
    if tick > 0:
      state.advance()
    try:
      engine.get_sensors_info(record)
    except ProcessEnds:
      return lines + [{"tick": tick, "ends": True}]
    lines.append({"tick": tick, "record": copy.deepcopy(record)})
  return lines


def processor_name(machine):
  kind, report = machine.hardware_report(REPORT_COMMAND)
  if kind == "failed":
    return ""
  if kind == "bytes":
    report = property_list(report)
  if not isinstance(report, list) or len(report) == 0 or not isinstance(report[0], dict):
    return ""
  items = report[0].get("_items")
  if not isinstance(items, list) or len(items) != 1 or not isinstance(items[0], dict):
    return ""
  name = items[0].get("cpu_type")
  if name is None:
    name = items[0].get("chip_type")
  return name if isinstance(name, str) else ""


def property_list(raw):
  try:
    return plistlib.loads(raw if raw.startswith(b"bplist") else raw.lstrip())
  except Exception:  # plistlib lets its parsers' own exceptions through
    return None


def physical_cores(machine):
  return machine.kernel_variable("hw.physicalcpu", 0) or 1


class SmcClient:
  """The typed queries over one connection."""

  def __init__(self, connection, wide_fan_names):
    self.connection = connection
    self.wide_fan_names = wide_fan_names

  def read_key(self, key):
    """The kernel's code of the step that failed, or 0; and the value as far as it was filled."""
    value, output = SmcRecord(), SmcRecord()
    code = self.connection.call(key, READ_INFO, output)
    if code != 0:
      return code, value
    value.data_size, value.data_type = output.data_size, output.data_type
    code = self.connection.call(key, READ_BYTES, output)
    if code != 0:
      return code, value
    value.bytes = output.bytes
    return 0, value

  def temperature(self, key):
    code, value = self.read_key(key)
    if code != 0 or value.data_size == 0:
      return -1.0
    if value.data_type == b"sp78":
      high, low = struct.unpack("bb", value.bytes[:2])
      return float((high * 256 + low) >> 2) * 0.015625
    if value.data_type == b"flt ":
      return struct.unpack("=f", value.bytes[:4])[0]
    return -1.0

  def fan_speed(self, index):
    code, value = self.read_key(fan_key("F%dAc", index))
    if code != 0 or value.data_size == 0:
      return 0.0
    if value.data_type == b"fpe2":
      return float32(struct.unpack(">H", value.bytes[:2])[0] * 0.25)
    if value.data_type == b"flt ":
      return struct.unpack("=f", value.bytes[:4])[0]
    return 0.0

  def fan_count(self):
    """Each byte is shifted modulo 32, then masked: every fourth from the last one counts whole."""
    _, value = self.read_key(b"FNum")
    size = value.data_size
    if size == 0 or size >= 2**31:
      return 0
    total = 0
    for index, byte in enumerate(value.bytes[:size]):
      shift = 8 * (size - 1 - index) % 32
      total += (byte << shift) & 0xFF
    return total

  def fan_name(self, index):
    """The raw name, or None."""
    key = fan_key("F%dID", index)
    output, record = SmcRecord(), SmcRecord()
    code = self.connection.call(key, READ_INFO, output, self.wide_fan_names)
    if code & 0x3FFF or output.result != 0:
      return None
    data_size, data_type = output.data_size, output.data_type
    code = self.connection.call(key, READ_BYTES, output, self.wide_fan_names)
    if code & 0x3FFF == 0 and output.result == 0:
      record.bytes = output.bytes
    if code & 0x3FFF or data_size != 16 or data_type != b"{fds":
      return None
    return record.bytes[4:16].split(b" ")[0]


def fan_key(template, index):
  key = template % index
  if len(key) > 4:
    raise ProcessEnds(key)
  return key.encode()


class TextPair:
  """A list of names and one of values, kept as two texts of lines."""

  def __init__(self):
    self.names = ""
    self.values = ""

  def append(self, name, value):
    self.names += f"{name}\n"
    self.values += f"{value}\n"


class Engine:
  def __init__(self, machine, processor):
    self.machine = machine
    self.is_arm64 = processor == "arm64"
    added = machine.added_names()
    self.keys = TEMPERATURE_KEYS + list(added)
    self.names = human_readable_names(processor_name(machine), physical_cores(machine)) | added
    self.sensors_history = {}
    self.prev_tempos = None
    self.last_data_fetch = None
    self.bytes_read = self.bytes_read_prev = 0
    self.bytes_written = self.bytes_written_prev = 0
    self.read_history = [-1] * 75
    self.write_history = [-1] * 75

  def get_sensors_info(self, record):
    self.sample_disks()
    connection = SmcConnection(self.machine)
    smc = SmcClient(connection, wide_fan_names=self.is_arm64)
    full, mini = self.collect_temperatures(smc)
    fans = self.collect_fans(smc)
    connection.close()
    self.report(record, full, mini, fans)
    if self.is_arm64:
      self.steady(record)
    self.publish_disks(record)

  # Temperatures

  def collect_temperatures(self, smc):
    full, mini = TextPair(), TextPair()
    fixed = [(name, smc.temperature(key.encode())) for key, name in FIXED_MINI]
    self.collect_hid(full, mini)
    self.collect_catalogue(smc, full)
    for name, reading in fixed:
      if 1 <= int32(reading) <= 109:
        mini.append(name, int32(reading))
    return full, mini

  def collect_hid(self, full, mini):
    services = self.machine.hid_services("temperature")
    if not services:
      return
    names = ["Unknown" if product is None else product for product, _ in services]
    values = [int32(0.0 if value is None else value) for _, value in services]
    budget = 7 if len(names) > 7 else len(names) - 1
    for prefix, label in GROUPS:
      average = group_average(prefix, names, values)
      if average is not None:
        full.append(label, average)
        mini.append(label, average)
        budget -= 1
    for name, value in zip(names, values):
      name, relabelled = relabel(name)
      if name.startswith(("Avg:", "Min:", "Max:")):
        relabelled = False
      value = self.clamp_drop(name, value)
      if not relabelled or not 0 <= value <= 110 or name in full.names:
        continue
      full.append(name, value)
      if budget > 0 and name not in mini.names:
        mini.append(name, value)
        budget -= 1

  def collect_catalogue(self, smc, full):
    highest = {}
    for key in self.keys:
      reading = smc.temperature(key.encode())
      name = self.names.get(key)
      if name is None:
        continue
      value = self.clamp_drop(key, int32(reading))
      if 1 <= value <= 119 and value > highest.get(name, 0):
        highest[name] = value
    for name in sorted(highest, key=standard_order):
      full.append(name, highest[name])

  def clamp_drop(self, key, value):
    """A fall of more than 25 degrees shows as one degree; what is returned is remembered."""
    earlier = self.sensors_history.get(key)
    if earlier is not None and value - earlier <= -26:
      value = earlier - 1
    self.sensors_history[key] = value
    return value

  # Fans, texts and dictionaries

  def collect_fans(self, smc):
    fans = TextPair()
    shown = 0
    for index in range(smc.fan_count()):
      name = f"Fan {index + 1}"
      raw = smc.fan_name(index)
      if raw is not None:
        name = nextstep_text(raw)
      speed = int32(smc.fan_speed(index))
      if speed >= 0:
        fans.append(name, speed)
        shown += 1
    if shown == 0:
      fans.names = "n/a"
    return fans

  def report(self, record, full, mini, fans):
    record["sensors_temperature"] = full.names
    record["sensors_temperatureData"] = full.values
    record["sensors_fans"] = fans.names
    record["sensors_fansData"] = fans.values
    record["sensors_temperatureMini"] = mini.names
    record["sensors_temperatureMiniData"] = mini.values
    sensors = dictionary_of_lines(full)
    if sensors is not None:
      sensors.pop("", None)
      record["sensors"] = sensors
    by_fan = dictionary_of_lines(fans)
    if by_fan is not None:
      record["fans"] = by_fan

  def steady(self, record):
    sensors = record["sensors"]
    if self.prev_tempos is not None:
      record["sensors"] = steadied(sensors, self.prev_tempos)
    self.prev_tempos = dict(record["sensors"])
    rewritten = TextPair()
    for name in record["sensors_temperature"].split("\n"):
      if name in record["sensors"]:
        rewritten.append(name, record["sensors"][name])
    record["sensors_temperature"] = rewritten.names
    record["sensors_temperatureData"] = rewritten.values

  # Disks

  def sample_disks(self):
    self.bytes_read_prev, self.bytes_written_prev = self.bytes_read, self.bytes_written
    if self.machine.driver_count is not None and self.machine.drives_raise is None:
      self.bytes_read = self.sum_counters("Bytes (Read)")
      self.bytes_written = self.sum_counters("Bytes (Write)")
    seconds = 0
    if self.last_data_fetch is not None:
      seconds = truncated(self.machine.time - self.last_data_fetch, 0, UINT64_MASK)
    read_rate = write_rate = 0
    if seconds != 0:
      read_rate = ((self.bytes_read - self.bytes_read_prev) & UINT64_MASK) // seconds
      write_rate = ((self.bytes_written - self.bytes_written_prev) & UINT64_MASK) // seconds
    if self.bytes_read_prev == 0:  # for the write rate too
      read_rate = write_rate = 0
    self.read_history = self.read_history[1:] + [read_rate]
    self.write_history = self.write_history[1:] + [write_rate]
    self.last_data_fetch = self.machine.time

  def sum_counters(self, key):
    statistics = [driver for driver in self.machine.drivers() if isinstance(driver, dict)]
    return sum(driver.get(key, 0) for driver in statistics) & UINT64_MASK

  def publish_disks(self, record):
    peak = max(float32(rate) for rate in self.write_history + self.read_history)
    scale = chart_scale(peak)
    record["diskIO_activitiesMax"] = float32(scale)
    record["diskIO_activitiesMaxText"] = byte_count_text(scale)
    for direction, history, total in (
      ("read", self.read_history, self.bytes_read),
      ("write", self.write_history, self.bytes_written),
    ):
      speed = float32(history[-1])
      record[f"diskIO_speed{direction.title()}"] = speed
      record[f"diskIO_speed{direction.title()}Text"] = speed_text(speed)
      record[f"diskIO_{direction}"] = total
      record[f"diskIO_{direction}Text"] = byte_count_text(
        total if total <= INT64_MAX else total - 2**64
      )
    record["diskIO_activities"] = [list(self.write_history), list(self.read_history)]


def group_average(prefix, names, values):
  total = count = 0.0
  for name, value in zip(names, values):
    if name.startswith(prefix):
      total = float32(total + float32(value))
      count += 1.0
  if count > 0 and total > 0:
    return int32(float(round_half_away(float32(total / count))))
  return None


def relabel(name):
  relabelled = False
  for product, display_name in RELABELS:
    if name == product:
      name = display_name
      relabelled = True
  return name, relabelled


def dictionary_of_lines(pair):
  """Name to value, the later one where a name stands twice; None where the lines do not pair."""
  names, values = pair.names.split("\n"), pair.values.split("\n")
  if len(names) != len(values) or len(names) < 2:
    return None
  return dict(zip(names[:-1], values[:-1]))


def steadied(sensors, previous):
  result = dict(sensors)
  cpu = [name for name in sensors if "CPU" in name]
  for name in cpu:
    if name in previous and int(sensors[name]) + 5 < int(previous[name]):
      result[name] = str(int(previous[name]))
  coolest_gpu = min([200] + [int(sensors[name]) for name in sensors if "GPU" in name])
  if coolest_gpu <= 199:
    for name in cpu:
      if int(sensors[name]) + 5 < coolest_gpu:
        result[name] = str(coolest_gpu)
  return result


def chart_scale(peak):
  """The first rung that the peak does not exceed, or the last one."""
  scale = SCALES[0]
  for rung in SCALES[1:]:
    if peak > float32(scale):
      scale = rung
  return scale


def speed_text(speed):
  if speed <= 1000.0:
    return "0 KB/s"
  return f"{byte_count_text(truncated(speed, -INT64_MAX - 1, INT64_MAX))}/s"
