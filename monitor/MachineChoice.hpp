// Chooses the machine that the monitor shows.
#pragma once

#include <memory>
#include <string>

#include "halvermonte/Machine.hpp"
#include "monitor/Options.hpp"
#include "monitor/Sampling.hpp"

namespace halvermonte {

struct Choice {
  std::unique_ptr<Sampling> sampling;
  std::string hint;  ///< what a real computer does not show, and why; "" if there is nothing to say
};

/// Chooses the machine that the options name. If they name none, chooses this computer, or the
/// bundled M1 if this computer offers nothing to read. Throws a Failure if no machine has that name
/// (ExitStatus::failure) or if the file is not a machine file (ExitStatus::wrongUse).
Choice chooseMachine(const Options& options);

/// The same, with `thisComputer` standing for this computer.
Choice chooseMachine(const Options& options, std::unique_ptr<Machine> thisComputer);

/// What there is to read: sensors that the first pass shows, or at least drives.
enum class Offer { nothing, drivesAlone, sensors };
/// Makes the first pass.
Offer offerOf(Sampling& sampling);

/// Lists the bundled machines, a line each.
std::string machineList();

}  // namespace halvermonte
