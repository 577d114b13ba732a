#include "platform/mac/HostFacts.hpp"

#include <mach/mach.h>
#include <sys/sysctl.h>
#include <sys/time.h>

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <optional>

#include "platform/mac/KernelVariables.hpp"

namespace halvermonte::macos {
namespace {

/// The port that counts the host's memory.
class HostPort {
 public:
  HostPort() : port_(mach_host_self()) {}
  ~HostPort() { mach_port_deallocate(mach_task_self(), port_); }
  HostPort(const HostPort&) = delete;
  HostPort& operator=(const HostPort&) = delete;

  mach_port_t get() const { return port_; }

 private:
  mach_port_t port_;
};

std::optional<uint64_t> uptime() {
  timeval start{};
  size_t size = sizeof start;
  if (sysctlbyname("kern.boottime", &start, &size, nullptr, 0) != 0) return std::nullopt;
  const std::time_t now = std::time(nullptr);
  return now > start.tv_sec ? static_cast<uint64_t>(now - start.tv_sec) : 0;
}

uint64_t without(uint64_t whole, uint64_t part) { return whole > part ? whole - part : 0; }

std::optional<MemoryFacts> memory() {
  const HostPort host;
  vm_statistics64_data_t pages{};
  mach_msg_type_number_t count = HOST_VM_INFO64_COUNT;
  const kern_return_t code = host_statistics64(host.get(), HOST_VM_INFO64,
                                               reinterpret_cast<host_info64_t>(&pages), &count);
  const std::optional<int64_t> total = integerVariable("hw.memsize");
  if (code != KERN_SUCCESS || !total) return std::nullopt;
  const auto bytes = [](uint64_t number) { return number * uint64_t{vm_kernel_page_size}; };
  MemoryFacts memory;
  memory.total = static_cast<uint64_t>(*total);
  memory.free = bytes(pages.free_count);
  memory.inactive = bytes(pages.inactive_count);
  memory.wired = bytes(pages.wire_count);
  memory.used = without(memory.total, memory.free + memory.inactive);
  memory.other = without(memory.total, memory.free + memory.inactive + memory.wired);
  return memory;
}

}  // namespace

HostFacts readHostFacts() {
  HostFacts facts;
  facts.modelIdentifier = textVariable("hw.model");
  if (const auto cores = integerVariable("hw.logicalcpu")) {
    facts.logicalCores = static_cast<int32_t>(*cores);
  }
  facts.uptime = uptime();
  facts.memory = memory();
  return facts;
}

}  // namespace halvermonte::macos
