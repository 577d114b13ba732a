"""Random machine files: mostly plausible computers, with every boundary frequent.

machine(seed) always gives the same machine for a seed.
"""

import json
import plistlib
import random
import struct

from catalogue import FIXED_MINI, TEMPERATURE_KEYS
from model import REPORT_COMMAND, SCALES
from values import float32
from vocabulary import (
  ADDED_KEYS, ADDED_NAMES, FAN_NAMES, HID_PRODUCTS, KNOWN_PRODUCTS, PROCESSORS,
)

INT32_ENDS = [-(2**31) - 1, -(2**31), 2**31 - 1, 2**31]
INT64_MIN, INT64_MAX = -(2**63), 2**63 - 1
KERNEL_CODES = [
  1, 0x3FFF, 0x4000, 0x8000, 0xE0000000, 0xE00002BC, 0xE00002C2, 0xFFFFC000, 0xFFFFFFFF,
]
RESULTS = [1, 0x84, 0x85, 0xFF]
SIZES = [0, 1, 2, 3, 4, 5, 12, 15, 16, 17, 31, 32, 33, 2**31 - 1, 2**31, 2**32 - 1]
EDGE_TEMPERATURES = [
  -128, -27, -26, -25, -2, -1.5, -1, -0.9, -0.1, 0, 0.1, 0.9, 1, 1.5, 1.99, 2, 24, 25, 26, 27, 49.5,
  108.9, 109, 109.9, 110, 110.9, 111, 118, 118.9, 119, 119.9, 120, 120.1, 127.99,
  198, 199, 200,
]
WILD_FLOATS = [
  float("nan"), float("inf"), float("-inf"), 1e-45, -1e-45, 3.4028234e38, -3.4028234e38, -0.0,
  2147483520.0, 2147483648.0, -2147483648.0, -2147483904.0, 1.0, 119.99999, 0.99999994,
]
HID_WILD = INT32_ENDS + [1e300, -1e300, 1e19, 16777217, 2147483646.5, -2147483648.5, 5e-324, -0.0]
ODD_TYPES = ["flt?", "FLT ", " flt", "sp87", "si16", "{fds", "ch8*", "flag"]
CODES_AND_RESULTS = [
  ("infoCode", KERNEL_CODES), ("readCode", KERNEL_CODES),
  ("infoResult", RESULTS), ("readResult", RESULTS),
]
HALVES = [0, 1, 4, 9, 10, 99, 999, 9994, 9999, 99994, 99999]


class Story:
  """One machine in the making."""

  def __init__(self, seed):
    self.rng = random.Random(seed)
    self.last = {}
    self.names = []

  def chance(self, probability):
    return self.rng.random() < probability

  def pick(self, *choices):
    return self.rng.choice(choices)

  # Numbers

  def temperature(self, sensor):
    """Around its last value, around the edges, or anything plausible."""
    last = self.last.get(sensor)
    roll = self.rng.random()
    if last is not None and roll < 0.3:
      value = last - self.pick(24, 25, 26, 27) - self.pick(0, 0, 0.5, 0.99)
    elif last is not None and roll < 0.5:
      value = last
    elif roll < 0.7:
      value = self.rng.choice(EDGE_TEMPERATURES)
    else:
      value = round(self.rng.uniform(20, 100), self.pick(0, 1, 3))
    self.last[sensor] = value
    return value

  def wave(self, mean, amplitude):
    wave = {"mean": mean, "amplitude": amplitude, "period": self.pick(2.5, 3, 7, 60, 0.37)}
    if self.chance(0.5):
      wave["phase"] = self.pick(0, 0.25, -0.1, 3.7)
    return wave

  # SMC

  def temperature_answer(self, key):
    roll = self.rng.random()
    value = self.temperature(key)
    if roll < 0.45:
      answer = {"type": "flt ", "value": value}
    elif roll < 0.65:
      answer = {"type": "sp78", "value": max(-128, min(127.99, value))}
    elif roll < 0.75:
      low = self.pick(0, 1, 3, 4, 0x40, 0x7F, 0x80, 0x81, 0xC0, 0xFF)
      answer = {"type": "sp78", "bytes": f"{max(-128, min(127, int(value))) & 0xFF:02x}{low:02X}"}
    elif roll < 0.82:
      answer = {"type": "flt ", "bytes": struct.pack("=f", self.rng.choice(WILD_FLOATS)).hex()}
    elif roll < 0.9:
      answer = {"type": self.pick("flt ", "sp78"), "wave": self.wave(60, self.pick(5, 30, 60))}
    else:
      answer = self.odd_type_answer(value)
    return self.decorated(answer)

  def odd_type_answer(self, value):
    if self.chance(0.5):
      code = self.pick("ui8 ", "ui16", "ui32", "fpe2")
      return {"type": code, "value": max(0, min(255, value))}
    data = self.rng.randbytes(self.pick(0, 1, 2, 4, 32))
    return {"type": self.rng.choice(ODD_TYPES), "bytes": data.hex()}

  def decorated(self, answer, often=0.06):
    if self.chance(often):
      answer["size"] = self.rng.choice(SIZES)
    for member, choices in CODES_AND_RESULTS:
      if self.chance(often / 2):
        answer[member] = self.rng.choice(choices)
    return answer

  def fan_count_answer(self, fans):
    roll = self.rng.random()
    if roll < 0.6:
      return self.decorated({"type": "ui8 ", "value": fans}, 0.03)
    if roll < 0.7:
      high = self.rng.randrange(256)
      return {"type": self.pick("ui8 ", "si16", "flag"), "bytes": f"{high:02x}{fans:02x}"}
    if roll < 0.8:  # bytes 0, 4 and 8 of nine all count
      parts = [0, self.rng.randint(0, fans), fans]
      counting = [bytes([high - low]) for low, high in zip([0] + parts, parts)]
      data = self.rng.randbytes(3).join(counting)
      return {"type": "ui8 ", "bytes": data.hex()}
    data = self.pick("{:02x}000000", "0000{:02x}00", "000000{:02x}").format(fans)
    return self.decorated({"type": "ui32", "bytes": data}, 0.9)

  def fan_name_answer(self):
    roll = self.rng.random()
    if roll < 0.5:
      answer = {"type": "{fds", "name": self.rng.choice(FAN_NAMES)}
    elif roll < 0.75:
      choices = [0, 9, 10, 13, 32, 65, 0x7F, 0x80, 0xA0, 0xAE, 0xE7, 0xF5, 0xFD, 0xFE, 0xFF]
      name = bytes(self.rng.choice(choices) for _ in range(12))
      answer = {"type": "{fds", "bytes": (self.rng.randbytes(4) + name).hex()}
    elif roll < 0.9:
      name = bytes(self.rng.randrange(0x21, 0x100) for _ in range(12))
      answer = {"type": "{fds", "bytes": (bytes(4) + name).hex()}
    else:
      answer = {"type": self.pick("{fdt", "ch8*"), "bytes": (bytes(4) + b"Wrong type  ").hex()}
    return self.decorated(answer, 0.12)

  def fan_speed_answer(self):
    speed = self.pick(0, 0.2, 0.25, 1200.7, 1200, 650, 16383.75, self.rng.uniform(500, 6000))
    roll = self.rng.random()
    if roll < 0.4:
      answer = {"type": "fpe2", "value": speed}
    elif roll < 0.7:
      odd = self.pick(-0.5, -0.99, -1, -1200, 2147483648.0, 1e30, -1e30)
      answer = {"type": "flt ", "value": self.pick(speed, odd)}
    elif roll < 0.85:
      answer = {"type": "flt ", "bytes": struct.pack("=f", self.rng.choice(WILD_FLOATS)).hex()}
    else:
      answer = {"type": self.pick("ui16", "fpe2"), "value": int(speed)}
    return self.decorated(answer)

  def answer(self, key):
    if key == "FNum":
      return self.fan_count_answer(self.fans)
    if key.startswith("F"):
      return self.fan_name_answer() if key.endswith("ID") else self.fan_speed_answer()
    return self.temperature_answer(key)

  def choose_names(self):
    """Pairs of key and name; some names are equal."""
    keys = self.rng.sample(ADDED_KEYS, self.pick(1, 3, 12, len(ADDED_KEYS)))
    return [[key, self.rng.choice(ADDED_NAMES)] for key in keys]

  def choose_keys(self):
    fixed = [key for key, _ in FIXED_MINI]
    keys = self.rng.sample(TEMPERATURE_KEYS, self.pick(0, 3, 10, 30, 90))
    keys += self.rng.sample(fixed, self.pick(0, 4, 12))
    keys += self.rng.sample(["Tm0P", "Tp0j", "Tg0f", "Tp0P"], 3)
    keys += self.rng.sample(["Tg0n", "Tp1h", "Te05", "Te09", "Tf04", "Tp1j", "Tp2R", "Tf4D"], 4)
    self.fans = 11 if self.chance(0.01) else self.rng.choice([0, 1, 2, 2, 2, 3, 5, 10])
    keys += ["FNum"] if self.chance(0.9) else []
    for index in range(min(self.fans, 10)):
      keys += [f"F{index}Ac"] if self.chance(0.9) else []
      keys += [f"F{index}ID"] if self.chance(0.85) else []
    keys += [key for key, _ in self.names if self.chance(0.8)]
    return sorted(set(keys + ["#KEY", "TP0P", "FS! "][: self.pick(0, 0, 3)]))

  def smc(self, keys, is_first):
    smc = {}
    if self.chance(0.1):
      smc["service"] = self.pick("present", "present", "missing", "refused", "unmatched")
    elif not is_first and self.chance(0.15):
      smc["service"] = "present"
    if self.chance(0.1):
      smc["code"] = self.rng.choice(KERNEL_CODES)
    if self.chance(0.1):
      smc["absentCode"] = self.rng.choice([0] + KERNEL_CODES)
    if self.chance(0.1):
      smc["wideCalls"] = self.pick("answer", "refuse")
    changing = keys if is_first else [key for key in keys if self.chance(0.5)]
    if changing or self.chance(0.5):
      gone = 0.01 if is_first else 0.05
      smc["keys"] = {
        self.spelt(key): None if self.chance(gone) else self.answer(key) for key in changing
      }
    return smc

  def spelt(self, key):
    return f"hex:{key.encode().hex().upper()}" if self.chance(0.03) else key

  # HID

  def hid_services(self):
    count = self.rng.choice([0, 1, 2, 3, 5, 7, 8, 9, 14, 25])
    if self.chance(0.5):
      products = self.rng.sample(KNOWN_PRODUCTS, min(count, len(KNOWN_PRODUCTS)))
    else:
      products = [self.rng.choice(HID_PRODUCTS) for _ in range(count)]
      products = [product if self.chance(0.95) else None for product in products]
    return [self.hid_service(product) for product in products]

  def hid_service(self, product):
    service = {} if product is None else {"product": product}
    roll = self.rng.random()
    if roll < 0.8:
      service["value"] = self.temperature("HID " + str(product))
    elif roll < 0.87:
      service["value"] = self.rng.choice(HID_WILD)
    elif roll < 0.95:
      service["wave"] = self.wave(self.pick(50, -3, 1e10), self.pick(10, 60, 1e9))
    return service

  def hid(self, before):
    """The next tick's lists: mostly the same services with other values."""
    services = before.get("temperature")
    roll = self.rng.random()
    if roll < 0.06:
      services = None
    elif roll < 0.2 or services is None:
      services = self.hid_services()
    else:
      services = [
        self.hid_service(service.get("product")) if self.chance(0.6) else service
        for service in services if self.chance(0.98)
      ]
    lists = {"temperature": services}
    if self.chance(0.1):
      lists["current"] = self.pick(None, [], [{"product": "PMU", "value": 1.5}])
    return lists

  # Drives and the clock

  def boundary_total(self):
    """A count next to where its text changes."""
    unit = 1000 ** self.rng.randint(1, 6)
    digits = self.pick(0, 1, 2)
    half = unit // 10**digits // 2 * (2 * self.rng.choice(HALVES) + 1)
    total = self.pick(half, unit, unit * 1000, 1, 2, 999, 1000) + self.pick(-1, 0, 0, 1)
    return min(total, INT64_MAX)

  def rate(self):
    scale = self.rng.choice(SCALES + [1000] * 3)
    near = self.pick(scale, int(float32(scale)), 16777217) + self.pick(-1, 0, 1, 4096, 5000, -4097)
    any_size = self.rng.randrange(10 ** self.rng.randint(1, 12))
    return max(0, self.pick(near, near, near, 0, 1, any_size, any_size, self.boundary_total()))

  def first_driver(self):
    roll = self.rng.random()
    if roll < 0.1:
      return self.pick(None, "unreadable", {})
    driver = {}
    for key in ("Bytes (Read)", "Bytes (Write)"):
      if self.chance(0.9):
        wild = self.pick(0, -1, INT64_MIN, INT64_MAX, -self.rng.randrange(10**9))
        driver[key] = wild if self.chance(0.1) else self.boundary_total()
    return driver

  def drives(self, before, seconds):
    """The next tick's drivers: one of them moves by a rate, the others stay."""
    roll = self.rng.random()
    if roll < 0.03:
      return None
    if roll < 0.1 or before is None:
      return [self.first_driver() for _ in range(self.pick(0, 1, 2, 3))]
    drivers = [dict(driver) if isinstance(driver, dict) else driver for driver in before]
    moving = [driver for driver in drivers if isinstance(driver, dict) and driver]
    if moving:
      driver = self.rng.choice(moving)
      for key in driver:
        growth = self.rate() * max(1, int(min(seconds, 10**6))) + self.pick(-1, 0, 0, 1)
        grown = driver[key] + (growth if self.chance(0.95) else -growth)
        driver[key] = max(INT64_MIN, min(INT64_MAX, grown))
    if self.chance(0.05):
      drivers.append(self.first_driver())
    if drivers and self.chance(0.05):
      drivers.pop()
    return drivers

  def seconds(self):
    usual = [1, 1, 1, 2, 5, 0.9, 1.9, 2.5, 0.1, 0.999999]
    rare = [0, -1, -3600.5, 86400, 1e9, 1e16, 3e19, -1e16]
    return self.rng.choice(rare if self.chance(0.15) else usual)

  # The whole

  def hardware_report(self, machine):
    name = self.rng.choice(PROCESSORS)
    item = {self.pick("cpu_type", "chip_type"): name, "machine_name": "Mac"}
    if self.chance(0.2):
      item = {"cpu_type": name, "chip_type": self.rng.choice(PROCESSORS)}
    if self.chance(0.1):
      item = {"machine_name": "Mac"}
    if self.chance(0.6):
      machine["processor"] = item
    if self.chance(0.4):
      machine["commands"] = {REPORT_COMMAND: self.report_answer(item)}
    if self.chance(0.1):
      machine.setdefault("commands", {})["ps -p 1 -o %cpu"] = {"output": "%CPU\n 1.5\n"}

  def report_answer(self, item):
    well_formed = [{"_dataType": "SPHardwareDataType", "_items": [item], "_parentDataType": "x"}]
    report = self.pick(
      well_formed, well_formed, [{"_items": [item] * 2}], [{"_items": [item] * 3}],
      [{"_items": []}], [{}], [],
      {"_items": [item]}, "text", [{"_items": ["text"]}], [{"_items": {"a": item}}], ["_items"],
      [{"_items": [{"cpu_type": 7, "chip_type": "Apple M1"}]}],
    )
    xml = plistlib.dumps(report)
    roll = self.rng.random()
    if roll < 0.5:
      return {"output": xml.decode()}
    if roll < 0.7:
      return {"outputHex": plistlib.dumps(report, fmt=plistlib.FMT_BINARY).hex()}
    if roll < 0.8:
      return {"launches": False}
    half = xml.decode()[: len(xml) // 2]
    return {"output": self.pick("", "not a property list", half, "{}", "\n")}

  def machine(self, seed):
    machine = {"name": f"random {seed}"}
    if self.chance(0.3):
      names = [None, "", "Büro-Mac 温度 🌡", "two\n\"lines\" \\ \t", "notebook"]
      machine["hostName"] = self.rng.choice(names)
    if self.chance(0.7):
      cores = self.pick(*range(21), -1, -(2**31), 2**31 - 1)
      machine["sysctl"] = {self.pick("hw.ncpu", *["hw.physicalcpu"] * 9): cores}
    self.hardware_report(machine)
    if self.chance(0.4):
      self.names = machine["names"] = self.choose_names()
    machine["ticks"] = self.ticks()
    return machine

  def ticks(self):
    keys = self.choose_keys() if self.chance(0.85) else []
    has_hid, has_drives = self.chance(0.6), self.chance(0.7)
    now = self.pick(0, 0.25, 1700000000, 1700000000.9, -86400.5, 4102444800.123)
    first = {"time": now}
    if keys:
      first["smc"] = self.smc(keys, is_first=True)
    if has_hid:
      first["hid"] = {"temperature": self.hid_services()}
    if has_drives:
      first["drives"] = [self.first_driver() for _ in range(self.pick(1, 1, 2, 3))]
    if self.chance(0.07):
      first["drives"] = self.pick(None, [])
    ticks = [first]
    hid, drives = first.get("hid", {}), first.get("drives")
    for _ in range(80 if self.chance(0.01) else self.rng.randint(0, 8)):
      tick = {}
      step = self.seconds()
      now += step
      if step != 1:
        tick["time"] = now
      if keys and self.chance(0.85):
        tick["smc"] = self.smc(keys, is_first=False)
      if has_hid and self.chance(0.85):
        hid = tick["hid"] = self.hid(hid)
      if has_drives and self.chance(0.9):
        drives = tick["drives"] = self.drives(drives, step)
      if self.chance(0.04):
        tick["drivesRaise"] = self.pick("device is gone", "", "%@ %s\n")
      ticks.append(tick)
    return ticks


def machine(seed):
  return Story(seed).machine(seed)


def write(description, path):
  with open(path, "w", encoding="utf-8") as file:
    json.dump(description, file, indent=1, ensure_ascii=False)
    file.write("\n")
