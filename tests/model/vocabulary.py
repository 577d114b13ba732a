"""The texts that random machines are made of."""

from catalogue import RELABELS

PROCESSORS = [
  "", "Apple M1", "Apple M1 Pro", "Apple M1 Max", "Apple M2", "Apple M2 Ultra", "Apple M20",
  "Apple M3", "Apple M3 Pro", "Apple M3 Max", "Apple M4", "Apple M4 Pro", "Apple M4 Max",
  "Apple M4 Ultra", "Apple M4 Promo", "Apple M4 base", "Apple M5", "apple m1", " Apple M1",
  "6-Core Intel Core i7", "Dual-Core Intel Core i5", "Apple M2 <&>\"'", "Apple", "Äpple M1",
]
KNOWN_PRODUCTS = [product for product, _ in RELABELS] + [
  "pACC MTR Temp Sensor2", "eACC MTR Temp Sensor0", "GPU MTR Temp Sensor1",
]
HID_PRODUCTS = KNOWN_PRODUCTS + [name for _, name in RELABELS] + [
  "pACC MTR", "pACC MTR Temp Sensor3", "pACC MTRx", " pACC MTR Temp",
  "PACC MTR Temp Sensor4", "eACC MTR", "eACC MTR Temp Sensor3", "eACC MT",
  "GPU MTR", "GPU MTR Temp Sensor4", "gpu MTR", "TC0P", "TG0P", "Tp01",
  "TB0T", "Tg1b ", "tg1b", "Tg1b\n", "NAND CH0 temp\nTg1b", "Avg: pACC MTR", "Min:", "Max: all",
  "Unknown", "", "PMU tdie1", "PMU tdev2", "Temperatur °C 温度 🌡", "CPU", "n/a", "\n",
  "ISP MTR Temp Sensor50",
]
FAN_NAMES = [
  "Left", "Right", "Left side", "Main", "ExhaustFan12", "", " Left", "n/a", "CPU\tfan", "A\nB",
  "\n",
]

# None of them is built in. Some are read for fans or the short list too.
ADDED_KEYS = [f"X{letter}{number:02}" for letter in "ab" for number in range(20)] + [
  "~ ! ", "\"\\/x", "TI0P", "TI1P", "FNum", "F0Ac", "FS! ", "#KEY", "tc0p", "hex:",
]
ADDED_NAMES = [
  "Drive", "drive", "DRIVE", "Drive 2", "Drive 10", "Drive 02", "drive 2", "Drive 2 (Slot 4)",
  "Drive 99999999999999999999", "Ethernet", "CPU Core 1", "CPU Core 12", "CPU 2 Core 1", "GPU Die",
  "GPU", "CPU Performance Cores", "SSD NAND I/O", "Power Management Unit", "Battery", "Unknown",
  "n/a", " ", " Drive", "Tab\there", "\r", "0", "00", "7", "Étude", "état",
  "Temperatur °C 温度 🌡",
]
