#include "platform/linux/nvidia/NvidiaDevices.hpp"

#include <mutex>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/linux/DevicePath.hpp"
#include "platform/linux/Files.hpp"
#include "platform/linux/hwmon/SourceReader.hpp"

namespace halvermonte::linuxos {
namespace {

/// The folder of a device that the driver runs. Absent if the entry is not a graphics device.
std::optional<std::string> folderOf(SystemCalls& calls, const std::string& entry) {
  constexpr std::string_view kGraphicsClass = "0x03";
  if (!trimmedTextOf(calls, entry + "/class").starts_with(kGraphicsClass)) return std::nullopt;
  return realPath(entry);
}

std::string lastComponent(const std::string& path) { return path.substr(path.rfind('/') + 1); }

std::vector<Channel> channelsOf(bool hasFan) {
  std::vector<Channel> channels{{.quantity = Quantity::temperature,
                                 .number = 1,
                                 .name = "temp1",
                                 .file = "temp1_input",
                                 .label = ""}};
  if (hasFan) {
    channels.push_back({.quantity = Quantity::fan,
                        .number = 1,
                        .name = "fan1",
                        .file = "fan1_input",
                        .label = ""});
  }
  return channels;
}

}  // namespace

/// Reads all of a device's sensors at once, so that they do not take turns in keeping it awake.
class NvidiaDevices::Device {
 public:
  Device(SystemCalls& calls, std::shared_ptr<ManagementLibrary> library, std::string address,
         bool mayFallAsleep)
      : calls_(calls),
        library_(std::move(library)),
        address_(std::move(address)),
        mayFallAsleep_(mayFallAsleep) {}

  Answer read(Quantity quantity) {
    const std::lock_guard lock(mutex_);
    // Readings of the same pass belong together.
    const double bound = mayFallAsleep_ ? kRetrySeconds : kSlowSeconds;
    if (calls_.steadySeconds() - readTime_ >= bound) unused_.clear();
    if (!unused_.contains(quantity)) {
      unused_ = library_->read(address_);
      readTime_ = calls_.steadySeconds();
    }
    Answer answer = std::move(unused_[quantity]);
    unused_.erase(quantity);
    return answer;
  }

 private:
  SystemCalls& calls_;
  const std::shared_ptr<ManagementLibrary> library_;
  const std::string address_;
  const bool mayFallAsleep_;
  std::mutex mutex_;  ///< guards what follows
  ManagementLibrary::Readings unused_;
  double readTime_ = 0;
};

class NvidiaDevices::DeviceSource : public Source {
 public:
  DeviceSource(std::shared_ptr<Device> device, Quantity quantity)
      : device_(std::move(device)), quantity_(quantity) {}

  Answer read() override { return device_->read(quantity_); }

 private:
  const std::shared_ptr<Device> device_;
  const Quantity quantity_;
};

NvidiaDevices::NvidiaDevices(SystemCalls& calls, std::string sys, std::string library)
    : calls_(calls),
      sys_(std::move(sys)),
      library_(std::make_shared<ManagementLibrary>(std::move(library))) {}

NvidiaDevices::~NvidiaDevices() = default;

std::vector<Chip> NvidiaDevices::findChips() {
  const std::string driver = sys_ + "/bus/pci/drivers/nvidia";
  devices_.clear();
  std::vector<Chip> chips;
  bool mayAnyFallAsleep = false;
  for (const std::string& name : namesOrNone(calls_, driver)) {
    const std::optional<std::string> folder = folderOf(calls_, driver + "/" + name);
    if (!folder) continue;
    const bool mayFallAsleep = trimmedTextOf(calls_, *folder + "/power/control") == "auto";
    devices_[*folder] =
        std::make_shared<Device>(calls_, library_, lastComponent(*folder), mayFallAsleep);
    mayAnyFallAsleep = mayAnyFallAsleep || mayFallAsleep;
    chips.push_back({.driver = "nvidia",
                     .device = devicePath(sys_, *folder).value_or(""),
                     .parent = *folder,
                     .folder = *folder,
                     .channels = channelsOf(library_->hasFanSpeeds())});
    identify(calls_, sys_, chips.back());
  }
  library_->keepInitialised(!mayAnyFallAsleep);
  return chips;
}

std::unique_ptr<Source> NvidiaDevices::makeSource(const Chip& chip, const Channel& channel) const {
  const auto device = devices_.find(chip.folder);
  if (device == devices_.end()) return nullptr;
  return std::make_unique<DeviceSource>(device->second, channel.quantity);
}

}  // namespace halvermonte::linuxos
