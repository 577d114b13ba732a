"""The vocabulary of SMC temperature keys and the display names that a processor gives them."""

TEMPERATURE_KEYS = """
TCXC TCXc TC0P TC0H TC0D TC0E TC0F TC1C TC2C TC3C TC4C TC5C TC6C TC7C TC8C TCAH TCAD TC1P TC1H
TC1D TC1E TC1F TCBH TCBD TCSC TCSc TCSA TCGC TCGc TG0P TG0D TG1D TG0H TG1H Ts0S TM0P TM1P TM8P
TM9P TM0S TM1S TM8S TM9S TN0D TN0P TN1P TN0C TN0H TP0D TPCD TA0P TA1P Th0H Th1H Th2H Tm0P Ts0P
Tb0P TL0P TW0P TH0P TH1P TH2P TH3P TO0P Tp0C TB0T TB1T TB2T TB3T Tp1P Tp1C Tp2P Tp3P Tp4P Tp5P
TS0C TA0S TA1S TA2S TA3S Tp01 Tp05 Tp09 Tp0D Tp0H Tp0L Tp0P Tp0T Tp0X Tp0b Tp0f Tp0n Tp0j Tp0r
Tg05 Tg0D Tg0L Tg0T Tg0f Tg0n Tm01 Tm05 Tm09 Tm0D Tm0H Tm0L Tm0P Tm0T Tm0X Tm0b TaLF TaRF TaTP
TH0a Tg0W Tg0X Tg0e Tg0f Tg0i Tg0j Tg1g Tg1h Tg1k Tg1l Th01 Th02 Th04 Th05 Th06 Th08 Th09 Th0A
Th0C Th0D Th0E Th0G Tp0j Tp17 Tp1B Tp1F Tp1J Tp1N Tp1j Tp1n Tp1w Tp1z Tp22 Tp25 Tp28 Tp2E Tp2J
Tp2M Tp2R Tp2U Tp2W Tp1h Tp1t Tp1p Tp1l Te09 Te0H Tp0V Tp0Y Tp0e Te05 Te0L Te0P Te0S Tf04 Tf09
Tf0A Tf0B Tf0D Tf0E Tf44 Tf49 Tf4A Tf4B Tf4D Tf4E
""".split()

COMMON_NAMES = [
  ("TCXC TCXc", "PECI CPU"), ("TC0P", "CPU 1 Proximity"), ("TC0H", "CPU 1 Heatsink"),
  ("TC0D", "CPU 1 Package"), ("TC0E", "CPU 1 Sensor 1"), ("TC0F", "CPU 1 Sensor 2"),
  ("TC1C", "CPU Core 1"), ("TC2C", "CPU Core 2"), ("TC3C", "CPU Core 3"), ("TC4C", "CPU Core 4"),
  ("TC5C", "CPU Core 5"), ("TC6C", "CPU Core 6"), ("TC7C", "CPU Core 7"), ("TC8C", "CPU Core 8"),
  ("TCAH", "CPU 1 Heatsink Alt."), ("TCAD", "CPU 1 Package Alt."), ("TC1P", "CPU 2 Proximity"),
  ("TC1H", "CPU 2 Heatsink"), ("TC1D", "CPU 2 Package"), ("TC1E TC1F", "CPU 2 Sensor 2"),
  ("TCBH", "CPU 2 Heatsink Alt."), ("TCBD", "CPU 2 Package Alt."), ("TCSC TCSc TCSA", "PECI SA"),
  ("TCGC TCGc", "PECI GPU"), ("TG0P", "GPU Proximity"), ("TG0D TG1D", "GPU Die"),
  ("TG0H TG1H", "GPU Heatsink"), ("Ts0S", "Memory Proximity"), ("TM0P", "Mem Bank A1"),
  ("TM1P", "Mem Bank A2"), ("TM8P", "Mem Bank B1"), ("TM9P", "Mem Bank B2"),
  ("TM0S", "Mem Module A1"), ("TM1S", "Mem Module A2"), ("TM8S", "Mem Module B1"),
  ("TM9S", "Mem Module B2"), ("TN0D", "Northbridge Die"), ("TN0P", "Northbridge Proximity 1"),
  ("TN1P", "Northbridge Proximity 2"), ("TN0C", "MCH Die"), ("TN0H", "MCH Heatsink"),
  ("TP0D TPCD", "PCH Die"), ("TP0P", "PCH Proximity"), ("TA0P", "Airflow 1"),
  ("TA1P", "Airflow 2"), ("Th0H", "Heatpipe 1"), ("Th1H", "Heatpipe 2"), ("Th2H", "Heatpipe 3"),
  ("Tm0P", "Mainboard Proximity"), ("Tp0P", "Powerboard Proximity"), ("Ts0P", "Palm Rest"),
  ("Tb0P", "BLC Proximity"), ("TL0P", "LCD Proximity"), ("TW0P", "Airport Proximity"),
  ("TH0P", "HDD Bay 1"), ("TH1P", "HDD Bay 2"), ("TH2P", "HDD Bay 3"), ("TH3P", "HDD Bay 4"),
  ("TO0P", "Optical Drive"), ("TB0T", "Battery TS_MAX"), ("TB1T", "Battery 1"),
  ("TB2T", "Battery 2"), ("TB3T", "Battery"), ("TS0C", "Expansion Slots"),
  ("TA0S", "PCI Slot 1 Pos 1"), ("TA1S", "PCI Slot 1 Pos 2"), ("TA2S", "PCI Slot 2 Pos 1"),
  ("TA3S", "PCI Slot 2 Pos 2"),
]

APPLE_SILICON_NAMES = [
  ("Tg05", "GPU Cluster 1"), ("Tg0D", "GPU Cluster 2"), ("Tg0L", "GPU Cluster 3"),
  ("Tg0T", "GPU Cluster 4"), ("Tm01", "Memory Bank 1"), ("Tm05", "Memory Bank 2"),
  ("Tm09", "Memory Bank 3"), ("Tm0D", "Memory Bank 4"), ("Tm0L", "Memory Bank 5"),
  ("Tm0P", "Memory Bank 6"), ("Tm0T", "Memory Bank 7"), ("Tm0X", "Memory Bank 8"),
  ("TaLF", "Airflow Left"), ("TaRF", "Airflow Right"), ("TaTP", "Airflow Top"),
  ("TH0a", "Disk Drive"),
]

# A set's fixed names, then one name per further core from the eleventh on.
NAME_SETS = {
  "M2": ("Tp1h E1 Tp1t E2 Tp1p E3 Tp1l E4 Tp01 C1 Tp05 C2 Tp09 C3 Tp0D C4 Tp0X C5 Tp0b C6",
         "Tp0f C7 Tp0j C8"),
  "M3": ("Te05 E1 Te0L E2 Te0P E3 Te0S E4 Tf04 C1 Tf09 C2 Tf0A C3 Tf0B C4 Tf0D C5 Tf0E C6",
         "Tf44 C7 Tf49 C8 Tf4A C9 Tf4B C10 Tf4D C10 Tf4E C10"),
  "M4-large": ("Tp1j E1 Tp1n E2 Tp1t E3 Tp1w E4 Tp1z C1 Tp22 C2 Tp25 C3 Tp28 C4 Tp2E C5 Tp2J C6",
               "Tp2M C7 Tp2R C8 Tp2U C9 Tp2W C10"),
  "M1": ("Tp01 E1 Tp05 E2 Tp09 C1 Tp0D C2 Tp0H C3 Tp0L C4 Tp0P C5 Tp0T C6 Tp0X C7 Tp0b C8"
         " Tg0f G1 Tg0n G2", ""),
  "default": ("Te05 E1 Te09 E2 Te0H E3 Te0S E4 Tp01 C1 Tp05 C2 Tp09 C3 Tp0D C4 Tp0V C5 Tp0Y C6",
              "Tp0b C7 Tp0e C8"),
}

CORE_LABELS = {"E": "CPU Efficiency Core ", "C": "CPU Core ", "G": "GPU "}

GPU_CLUSTER_KEYS = "Tg0W Tg0X Tg0e Tg0f Tg0i Tg0j Tg1g Tg1h Tg1k Tg1l".split()

POWER_SUPPLY_NAMES = [
  ("Tp0P", "Power Supply 1"), ("Tp0C", "Power Supply 1 Alt."), ("Tp1P", "Power Supply 2"),
  ("Tp1C", "Power Supply 2 Alt."), ("Tp2P", "Power Supply 3"), ("Tp3P", "Power Supply 4"),
  ("Tp4P", "Power Supply 5"), ("Tp5P", "Power Supply 6"),
]

# In the order in which they are read and shown; TB0T is read for two entries.
FIXED_MINI = [
  ("TA0P", "Airflow (Fans)"), ("TA1P", "Airflow (DC-in)"), ("TC0P", "CPU Proximity"),
  ("TC0D", "CPU Diode"), ("TG0P", "GPU Proximity"), ("TG0D", "GPU Diode"),
  ("TN0D", "North Bridge"), ("TM0P", "Memory"), ("TB0T", "Battery"), ("TH0P", "HDD"),
  ("TB0T", "Enclosure"), ("TB1T", "Enclosure 1"), ("TB2T", "Enclosure 2"),
  ("TB3T", "Enclosure 3"), ("TW0P", "Wi-Fi"), ("TI0P", "Thunderbolt 0"),
  ("TI1P", "Thunderbolt 1"),
]

# HID product name to display name, applied one after the other.
RELABELS = [
  ("Tg1b", "Power Management Unit"),
  ("NAND CH0 temp", "SSD NAND I/O"),
  ("gas gauge battery", "Gas Gauge Battery"),
  ("SOC MTR Temp Sensor0", "M1 SOC Sensor 1"),
  ("SOC MTR Temp Sensor1", "M1 SOC Sensor 2"),
  ("SOC MTR Temp Sensor2", "M1 SOC Sensor 3"),
  ("ANE MTR Temp Sensor1", "Neural Engine"),
  ("ISP MTR Temp Sensor5", "Image Signal Processor"),
]

GROUPS = [
  ("pACC MTR", "CPU Performance Cores"),
  ("eACC MTR", "CPU Efficiency Cores"),
  ("GPU MTR", "GPU Cluster"),
]


def name_set(processor):
  """Which of the five sets a processor of this name takes; the first rule that holds wins."""
  if processor.startswith("Apple M2"):
    return "M2"
  if processor.startswith("Apple M3"):
    return "M3"
  if processor.startswith(("Apple M4 Pro", "Apple M4 Max", "Apple M4 Ultra")):
    return "M4-large"
  if processor.startswith("Apple M4"):
    return "default"
  if processor.startswith("Apple M1"):
    return "M1"
  return "default"


def core_names(text):
  words = text.split()
  return [(key, CORE_LABELS[label[0]] + label[1:]) for key, label in zip(words[::2], words[1::2])]


def human_readable_names(processor, cores):
  """SMC key to display name; a later assignment replaces an earlier one."""
  names = {}
  for keys, name in COMMON_NAMES + APPLE_SILICON_NAMES:
    for key in keys.split():
      names[key] = name
  fixed, per_core = NAME_SETS[name_set(processor)]
  names.update(core_names(fixed))
  threshold = 11
  for key, name in core_names(per_core):
    if cores < threshold:
      break
    names[key] = name
    threshold += 1
  if not processor.startswith("Apple M1"):
    for number, key in enumerate(GPU_CLUSTER_KEYS, start=1):
      names[key] = "GPU Cluster %d" % number
  names.update(POWER_SUPPLY_NAMES)
  return names
