#include "tests/monitor/exporter/PasswordFile.hpp"

#include <crypt.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <stdexcept>

#include "monitor/StandardStreams.hpp"

namespace halvermonte::test {

std::string hashOf(const std::string& password, unsigned cost) {
  constexpr char kRandom[] = "sixteen bytes are";
  char setting[CRYPT_GENSALT_OUTPUT_SIZE];
  const auto data = std::make_unique<crypt_data>();
  if (crypt_gensalt_rn("$2y$", cost, kRandom, 16, setting, sizeof setting) == nullptr) {
    throw std::runtime_error("no salt");
  }
  return crypt_r(password.c_str(), setting, data.get());
}

PasswordFile::PasswordFile(const std::string& text) : path_(::testing::TempDir() + "usersXXXXXX") {
  const int descriptor = mkstemp(path_.data());
  if (descriptor < 0 || !writeWhole(descriptor, text)) throw std::runtime_error(path_);
  close(descriptor);
}

PasswordFile::~PasswordFile() { unlink(path_.c_str()); }

}  // namespace halvermonte::test
