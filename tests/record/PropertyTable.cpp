#include "tests/record/PropertyTable.hpp"

#include <type_traits>

namespace halvermonte::test {
namespace {

using enum Kind;
using enum Default;
using enum CopyRule;

template <class Type>
Type as(const Value& value) {
  if constexpr (std::is_same_v<Type, Text>) return value.asText();
  if constexpr (std::is_same_v<Type, Number>) return value.asNumber();
  if constexpr (std::is_same_v<Type, Array>) return value.asArray();
  if constexpr (std::is_same_v<Type, Dictionary>) return value.asDictionary();
  if constexpr (std::is_same_v<Type, Date>) return value.asDate();
  if constexpr (std::is_same_v<Type, Image>) return value.asImage();
}

template <class Type>
constexpr Kind kindOf() {
  if constexpr (std::is_same_v<Type, Text>) return text;
  if constexpr (std::is_same_v<Type, Number>) return number;
  if constexpr (std::is_same_v<Type, Array>) return array;
  if constexpr (std::is_same_v<Type, Dictionary>) return dictionary;
  if constexpr (std::is_same_v<Type, Date>) return date;
  if constexpr (std::is_same_v<Type, Image>) return image;
  if constexpr (std::is_same_v<Type, int8_t>) return flag;
  if constexpr (std::is_same_v<Type, int32_t>) return integer;
}

template <class Type>
Accessors accessors(Type (StatisticsData::*getter)() const, void (StatisticsData::*setter)(Type)) {
  Accessors result;
  result.kind = kindOf<Type>();
  if constexpr (std::is_integral_v<Type>) {
    result.getInteger = [=](const StatisticsData& record) { return (record.*getter)(); };
    result.setInteger = [=](StatisticsData& record, int64_t value) {
      (record.*setter)(static_cast<Type>(value));
    };
  } else {
    result.get = [=](const StatisticsData& record) { return (record.*getter)(); };
    result.set = [=](StatisticsData& record, const Value& value) {
      (record.*setter)(as<Type>(value));
    };
  }
  return result;
}

// clang-format off
#define P(name, Name) #name, accessors(&StatisticsData::name, &StatisticsData::set##Name)

const std::vector<Property> kTable = {
    // Identity and uptime
    {P(hostName, HostName), text, hostName, freshText},
    {P(modelName, ModelName), text, emptyText, freshText},
    {P(modelIdentifier, ModelIdentifier), text, emptyText, freshText},
    {P(processorName, ProcessorName), text, emptyText, freshText},
    {P(uptime, Uptime), number, zero, same},
    {P(uptimeText, UptimeText), text, emptyText, freshText},

    // Summary
    {P(summary_memoryFree, Summary_memoryFree), number, zero, same},
    {P(summary_memoryUsed, Summary_memoryUsed), number, zero, same},
    {P(summary_memoryInactive, Summary_memoryInactive), number, zero, same},
    {P(summary_memoryWired, Summary_memoryWired), number, zero, same},
    {P(summary_memoryOther, Summary_memoryOther), number, one, same},
    {P(summary_memoryTotal, Summary_memoryTotal), number, one, same},
    {P(summary_memoryFreeText, Summary_memoryFreeText), text, emptyText, freshText},
    {P(summary_memoryUsedText, Summary_memoryUsedText), text, emptyText, freshText},
    {P(summary_memoryInactiveText, Summary_memoryInactiveText), text, emptyText, freshText},
    {P(summary_memoryWiredText, Summary_memoryWiredText), text, emptyText, freshText},
    {P(summary_memoryOtherText, Summary_memoryOtherText), text, emptyText, freshText},
    {P(summary_memoryTotalText, Summary_memoryTotalText), text, emptyText, freshText},
    {P(summary_cpuLoad, Summary_cpuLoad), number, zero, same},
    {P(summary_cpuUserLoad, Summary_cpuUserLoad), number, unset, notCopied},
    {P(summary_cpuSystemLoad, Summary_cpuSystemLoad), number, unset, notCopied},
    {P(summary_cpuCores, Summary_cpuCores), number, one, same},
    {P(summary_cpuLogicalCores, Summary_cpuLogicalCores), number, one, same},

    // Battery
    {P(battery_isCharging, Battery_isCharging), flag, no, same},
    {P(battery_onPower, Battery_onPower), flag, no, same},
    {P(battery_hasBattery, Battery_hasBattery), flag, no, same},
    {P(battery_charge, Battery_charge), number, zero, same},
    {P(battery_cyclesCurrent, Battery_cyclesCurrent), number, zero, same},
    {P(battery_cyclesDesigned, Battery_cyclesDesigned), number, zero, same},
    {P(battery_capacityCurrent, Battery_capacityCurrent), number, zero, same},
    {P(battery_capacityMaximum, Battery_capacityMaximum), number, zero, same},
    {P(battery_health, Battery_health), text, emptyText, same},
    {P(battery_timeRemaining, Battery_timeRemaining), number, zero, same},
    {P(battery_timeRemainingText, Battery_timeRemainingText), text, emptyText, same},
    {P(battery_amperage, Battery_amperage), number, zero, same},
    {P(battery_voltage, Battery_voltage), number, zero, same},

    // Hardware lists
    {P(diskDrives, DiskDrives), array, emptyArray, freshArray},
    {P(videoAdapters, VideoAdapters), array, emptyArray, freshArray},

    // Network
    {P(network_ipLocal, Network_ipLocal), text, emptyText, freshText},
    {P(network_ipGateway, Network_ipGateway), text, emptyText, freshText},
    {P(network_ipExternal, Network_ipExternal), text, emptyText, freshText},
    {P(network_ipExternalCountry, Network_ipExternalCountry), text, emptyText, freshText},
    {P(network_ipExternalCountryFlag, Network_ipExternalCountryFlag), image, unset, notCopied},
    {P(network_speedUpload, Network_speedUpload), number, zero, same},
    {P(network_speedDownload, Network_speedDownload), number, zero, same},
    {P(network_speedUploadText, Network_speedUploadText), text, dash, freshText},
    {P(network_speedDownloadText, Network_speedDownloadText), text, dash, freshText},
    {P(network_uploaded, Network_uploaded), number, zero, same},
    {P(network_downloaded, Network_downloaded), number, zero, same},
    {P(network_uploadedText, Network_uploadedText), text, dash, freshText},
    {P(network_downloadedText, Network_downloadedText), text, dash, freshText},
    {P(network_macLocal, Network_macLocal), text, emptyText, freshText},
    {P(network_macGateway, Network_macGateway), text, emptyText, freshText},
    {P(network_selectedInterface, Network_selectedInterface), text, emptyText, freshText},
    {P(network_interfaces, Network_interfaces), array, emptyArray, freshArray},

    // Processes, processor and power
    {P(cpu_applications, Cpu_applications), array, emptyArray, freshArray},
    {P(ram_applications, Ram_applications), array, emptyArray, freshArray},
    {P(cpu_cores, Cpu_cores), array, emptyArray, freshArray},
    {P(cpu_power, Cpu_power), number, zero, same},
    {P(gpu_power, Gpu_power), number, zero, same},
    {P(ane_power, Ane_power), number, zero, same},
    {P(power_activities, Power_activities), array, emptyArray, freshArray},

    // Disk throughput
    {P(diskIO_speedWrite, DiskIO_speedWrite), number, zero, same},
    {P(diskIO_speedRead, DiskIO_speedRead), number, zero, same},
    {P(diskIO_speedWriteText, DiskIO_speedWriteText), text, dash, freshText},
    {P(diskIO_speedReadText, DiskIO_speedReadText), text, dash, freshText},
    {P(diskIO_write, DiskIO_write), number, zero, same},
    {P(diskIO_read, DiskIO_read), number, zero, same},
    {P(diskIO_writeText, DiskIO_writeText), text, dash, freshText},
    {P(diskIO_readText, DiskIO_readText), text, dash, freshText},

    // State and Bluetooth
    {P(network_connectedToInternet, Network_connectedToInternet), integer, minusOne, same},
    {P(network_connectedToGateway, Network_connectedToGateway), flag, no, same},
    {P(sensors_installed, Sensors_installed), flag, no, same},
    {P(core_installed, Core_installed), flag, no, notCopied},
    {P(sensors_upToDate, Sensors_upToDate), flag, no, same},
    {P(bluetooth_devicesConnected, Bluetooth_devicesConnected), flag, no, same},
    {P(bluetooth_devices, Bluetooth_devices), dictionary, emptyDictionary, freshDictionary},
    {P(bluetooth_devicesTypes, Bluetooth_devicesTypes), dictionary, emptyDictionary, freshDictionary},

    // Activity histories and their maxima
    {P(network_activities, Network_activities), array, emptyArray, freshArray},
    {P(cpu_activities, Cpu_activities), array, emptyArray, freshArray},
    {P(cpu_userActivities, Cpu_userActivities), array, unset, notCopied},
    {P(cpu_systemActivities, Cpu_systemActivities), array, unset, notCopied},
    {P(cpu_coresActivities, Cpu_coresActivities), array, emptyArray, freshArray},
    {P(ram_activities, Ram_activities), array, emptyArray, freshArray},
    {P(diskIO_activities, DiskIO_activities), array, emptyArray, freshArray},
    {P(network_activitiesMax, Network_activitiesMax), number, zero, same},
    {P(network_activitiesMaxText, Network_activitiesMaxText), text, emptyText, freshText},
    {P(diskIO_activitiesMax, DiskIO_activitiesMax), number, zero, same},
    {P(diskIO_activitiesMaxText, DiskIO_activitiesMaxText), text, emptyText, freshText},

    // Sensors
    {P(sensors, Sensors), dictionary, emptyDictionary, freshDictionary},
    {P(fans, Fans), dictionary, emptyDictionary, freshDictionary},
    {P(sensors_version, Sensors_version), number, zero, same},
    {P(sensors_fans, Sensors_fans), text, emptyText, freshText},
    {P(sensors_temperature, Sensors_temperature), text, emptyText, freshText},
    {P(sensors_fansData, Sensors_fansData), text, emptyText, freshText},
    {P(sensors_temperatureData, Sensors_temperatureData), text, emptyText, freshText},
    {P(sensors_temperatureMini, Sensors_temperatureMini), text, emptyText, freshText},
    {P(sensors_temperatureMiniData, Sensors_temperatureMiniData), text, emptyText, freshText},

    // Miscellaneous
    {P(code, Code), text, emptyText, freshText},
    {P(thermalPressure, ThermalPressure), text, emptyText, freshText},
    {P(sensors_settingsIsFarenheit, Sensors_settingsIsFarenheit), flag, no, same},
    {P(appsUpdateTime, AppsUpdateTime), date, now, same},
    {P(battery_limit, Battery_limit), number, zero, same},
};

#undef P
// clang-format on

}  // namespace

const std::vector<Property>& propertyTable() { return kTable; }

}  // namespace halvermonte::test
