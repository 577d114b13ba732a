"""The computer that a machine file describes, tick by tick."""

import math
import struct

from values import float32, round_half_away

NO_SUCH_CALL = 0xE00002C2
NOT_OPEN = 0x10000003
KEY_ABSENT = 0x84

READ_INFO = 9
READ_BYTES = 5


class Machine:
  """Its clock, services and counters show the current tick; advance() goes to the next."""

  def __init__(self, description):
    self.description = description
    self.time = -1.0
    self.service = None
    self.service_code = 0xE00002BC
    self.absent_code = 0
    self.wide_calls = "answer"
    self.keys_given = False
    self.keys = {}
    self.hid = {"temperature": [], "current": [], "voltage": []}
    self.drives = []
    self.drives_raise = None
    self.next_tick = 0
    self.advance()
    self.driver_count = None if self.drives is None else len(self.drives)

  def advance(self):
    ticks = self.description["ticks"]
    if self.next_tick < len(ticks):
      self.apply(ticks[self.next_tick])
    else:
      self.apply({})
    self.next_tick += 1

  def apply(self, tick):
    self.time = float(tick.get("time", self.time + 1))
    self.apply_smc(tick.get("smc", {}))
    self.hid.update(tick.get("hid", {}))
    self.drives = tick.get("drives", self.drives)
    self.drives_raise = tick.get("drivesRaise")

  def apply_smc(self, smc):
    self.service = smc.get("service", self.service)
    self.service_code = smc.get("code", self.service_code)
    self.absent_code = smc.get("absentCode", self.absent_code)
    self.wide_calls = smc.get("wideCalls", self.wide_calls)
    if "keys" in smc:
      self.keys_given = True
      for name, answer in smc["keys"].items():
        self.keys[key_bytes(name)] = answer

  def smc_opens(self):
    if self.service is not None:
      return self.service == "present"
    return self.keys_given

  def host_name(self):
    return self.description.get("hostName", self.description["name"])

  def added_names(self):
    """Key to display name, in the order in which the keys are read."""
    return dict(self.description.get("names", []))

  def kernel_variable(self, name, before):
    return self.description.get("sysctl", {}).get(name, before)

  def hardware_report(self, command):
    """What a command prints, as ("bytes", raw) or, for the shorthand, ("parsed", report)."""
    answer = self.description.get("commands", {}).get(command)
    if answer is None and "processor" in self.description:
      return "parsed", [{"_items": [self.description["processor"]]}]
    if answer is None:
      return "bytes", b""
    if not answer.get("launches", True):
      return "failed", None
    if "outputHex" in answer:
      return "bytes", bytes.fromhex(answer["outputHex"])
    return "bytes", answer["output"].encode()

  def hid_services(self, kind):
    """Product (None: no such property) and value (None: no event) of each, or no list at all."""
    services = self.hid[kind]
    if services is None:
      return None
    return [(service.get("product"), self.hid_value(service)) for service in services]

  def hid_value(self, service):
    if "wave" in service:
      return wave(service["wave"], self.time)
    return float(service["value"]) if "value" in service else None

  def drivers(self):
    """The statistics of each driver of the first tick: a dictionary, None, or "unreadable"."""
    now = self.drives or []
    return [now[i] if i < len(now) else "unreadable" for i in range(self.driver_count)]


class SmcRecord:
  """The part of a parameter record that a reply fills."""

  def __init__(self):
    self.data_size = 0
    self.data_type = bytes(4)
    self.result = 0
    self.bytes = bytes(32)


class SmcConnection:
  """One connection; a closed one never answers."""

  def __init__(self, machine):
    self.machine = machine
    self.is_open = machine.smc_opens()

  def close(self):
    self.is_open = False

  def call(self, key, command, output, wide=False):
    """One structure call: the kernel's code. Only the code 0 writes the output record."""
    if not self.is_open:
      return NOT_OPEN
    if wide and self.machine.wide_calls == "refuse":
      return NO_SUCH_CALL
    answer = self.machine.keys.get(key)
    if answer is None:
      code, result = self.machine.absent_code, KEY_ABSENT
    else:
      step = "info" if command == READ_INFO else "read"
      code, result = answer.get(step + "Code", 0), answer.get(step + "Result", 0)
    if code == 0:
      vars(output).update(vars(self.reply(answer, command, result)))
    return code

  def reply(self, answer, command, result):
    record = SmcRecord()
    record.result = result
    if result != 0:
      return record
    data = key_data(answer, self.machine.time)
    if command == READ_INFO:
      record.data_size = answer.get("size", len(data))
      record.data_type = answer["type"].encode()
    else:
      record.bytes = data.ljust(32, b"\0")
    return record


def key_bytes(name):
  return name.encode() if len(name) == 4 else bytes.fromhex(name[4:])


def wave(description, time):
  turns = time / description["period"] + description.get("phase", 0)
  return description["mean"] + description["amplitude"] * math.sin(2 * math.pi * turns)


def key_data(answer, time):
  if "bytes" in answer:
    return bytes.fromhex(answer["bytes"])
  if "name" in answer:
    return bytes(4) + answer["name"].encode().ljust(12)
  value = wave(answer["wave"], time) if "wave" in answer else answer["value"]
  return encoded(answer["type"], value)


def encoded(data_type, value):
  if data_type == "flt ":
    return struct.pack("=f", float32(value))
  scale, layout = {
    "sp78": (256, ">h"), "fpe2": (4, ">H"), "ui8 ": (1, ">B"), "ui16": (1, ">H"), "ui32": (1, ">I"),
  }[data_type]
  return struct.pack(layout, round_half_away(value * scale))
