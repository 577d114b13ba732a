// Which computer the monitor looks at.
#pragma once

#include <memory>
#include <string>

#include "monitor/Options.hpp"
#include "monitor/Sampling.hpp"
#include "platform/portable/Machine.hpp"

namespace halvermonte {

struct Choice {
  std::unique_ptr<Sampling> sampling;
  std::string hint;  ///< what a real computer does not show, and why; "" if there is nothing to say
};

/// The machine that the options name. If they name none, this computer if it offers anything to
/// read, else the bundled M1. Throws a Failure: status 1 if no machine has that name, 2 if the file
/// is not a machine file.
Choice chooseMachine(const Options& options);

/// The same, with `thisComputer` standing for this computer.
Choice chooseMachine(const Options& options, std::unique_ptr<Machine> thisComputer);

/// What there is to read: what the first pass shows, and drives.
enum class Offer { nothing, drivesAlone, sensors };
/// Makes the first pass.
Offer offerOf(Sampling& sampling);

/// The bundled machines, a line each.
std::string machineList();

}  // namespace halvermonte
