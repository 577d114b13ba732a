// Makes descriptors short.
#pragma once

#include <sys/resource.h>

namespace halvermonte::test {

/// Limits the number of the process's descriptors for as long as the object lives.
class FewDescriptors {
 public:
  explicit FewDescriptors(rlim_t count) {
    getrlimit(RLIMIT_NOFILE, &former_);
    const rlimit few{count, former_.rlim_max};
    setrlimit(RLIMIT_NOFILE, &few);
  }
  FewDescriptors(const FewDescriptors&) = delete;
  FewDescriptors& operator=(const FewDescriptors&) = delete;
  ~FewDescriptors() { setrlimit(RLIMIT_NOFILE, &former_); }

 private:
  rlimit former_{};
};

}  // namespace halvermonte::test
