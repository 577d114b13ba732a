// What the platform raises on a programming error, and what a pass of the engine raises.
#pragma once

#include <exception>
#include <string>
#include <utility>

#include "halvermonte/Export.h"
#include "halvermonte/StandardLibrary.hpp"

namespace halvermonte {

/// A programming error that the platform noticed. It carries its reason.
class HALVERMONTE_EXPORT PlatformException : public std::exception {
 public:
  explicit PlatformException(std::string reason) : reason_(std::move(reason)) {}
  ~PlatformException() override;

  const std::string& reason() const& noexcept { return reason_; }
  const std::string& reason() const&& = delete;
  const char* what() const noexcept override { return reason_.c_str(); }

 private:
  std::string reason_;
};

/// An index beyond the end of a list.
class HALVERMONTE_EXPORT RangeException : public PlatformException {
 public:
  using PlatformException::PlatformException;
  ~RangeException() override;
};

}  // namespace halvermonte
