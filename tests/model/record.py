"""The record's 103 properties in declaration order, with the values of a fresh one."""

import copy

DEFAULTS = [
  ("hostName", None), ("modelName", ""), ("modelIdentifier", ""), ("processorName", ""),
  ("uptime", 0), ("uptimeText", ""), ("summary_memoryFree", 0), ("summary_memoryUsed", 0),
  ("summary_memoryInactive", 0), ("summary_memoryWired", 0), ("summary_memoryOther", 1),
  ("summary_memoryTotal", 1), ("summary_memoryFreeText", ""), ("summary_memoryUsedText", ""),
  ("summary_memoryInactiveText", ""), ("summary_memoryWiredText", ""),
  ("summary_memoryOtherText", ""), ("summary_memoryTotalText", ""), ("summary_cpuLoad", 0),
  ("summary_cpuUserLoad", None), ("summary_cpuSystemLoad", None), ("summary_cpuCores", 1),
  ("summary_cpuLogicalCores", 1), ("battery_isCharging", False), ("battery_onPower", False),
  ("battery_hasBattery", False), ("battery_charge", 0), ("battery_cyclesCurrent", 0),
  ("battery_cyclesDesigned", 0), ("battery_capacityCurrent", 0), ("battery_capacityMaximum", 0),
  ("battery_health", ""), ("battery_timeRemaining", 0), ("battery_timeRemainingText", ""),
  ("battery_amperage", 0), ("battery_voltage", 0), ("diskDrives", []), ("videoAdapters", []),
  ("network_ipLocal", ""), ("network_ipGateway", ""), ("network_ipExternal", ""),
  ("network_ipExternalCountry", ""), ("network_ipExternalCountryFlag", None),
  ("network_speedUpload", 0), ("network_speedDownload", 0), ("network_speedUploadText", "-"),
  ("network_speedDownloadText", "-"), ("network_uploaded", 0), ("network_downloaded", 0),
  ("network_uploadedText", "-"), ("network_downloadedText", "-"), ("network_macLocal", ""),
  ("network_macGateway", ""), ("network_selectedInterface", ""), ("network_interfaces", []),
  ("cpu_applications", []), ("ram_applications", []), ("cpu_cores", []), ("cpu_power", 0),
  ("gpu_power", 0), ("ane_power", 0), ("power_activities", []), ("diskIO_speedWrite", 0),
  ("diskIO_speedRead", 0), ("diskIO_speedWriteText", "-"), ("diskIO_speedReadText", "-"),
  ("diskIO_write", 0), ("diskIO_read", 0), ("diskIO_writeText", "-"), ("diskIO_readText", "-"),
  ("network_connectedToInternet", -1), ("network_connectedToGateway", False),
  ("sensors_installed", False), ("core_installed", False), ("sensors_upToDate", False),
  ("bluetooth_devicesConnected", False), ("bluetooth_devices", {}),
  ("bluetooth_devicesTypes", {}), ("network_activities", []), ("cpu_activities", []),
  ("cpu_userActivities", None), ("cpu_systemActivities", None), ("cpu_coresActivities", []),
  ("ram_activities", []), ("diskIO_activities", []), ("network_activitiesMax", 0),
  ("network_activitiesMaxText", ""), ("diskIO_activitiesMax", 0),
  ("diskIO_activitiesMaxText", ""), ("sensors", {}), ("fans", {}), ("sensors_version", 0),
  ("sensors_fans", ""), ("sensors_temperature", ""), ("sensors_fansData", ""),
  ("sensors_temperatureData", ""), ("sensors_temperatureMini", ""),
  ("sensors_temperatureMiniData", ""), ("code", ""), ("thermalPressure", ""),
  ("sensors_settingsIsFarenheit", False), ("appsUpdateTime", None), ("battery_limit", 0),
]


def fresh_record(host_name, now):
  record = {name: copy.copy(value) for name, value in DEFAULTS}
  record["hostName"] = host_name
  record["appsUpdateTime"] = now
  return record
