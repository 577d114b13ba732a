// Makes the machine that the monitor shows.
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

/// Makes the machine that the options name. Throws a Failure if there is none
/// (ExitStatus::wrongUse, also for a file that is not a machine file) or if its file cannot be read
/// (ExitStatus::failure).
Choice chooseMachine(const Options& options);

/// This computer, with `thisComputer` in its place.
Choice chooseMachine(const Options& options, std::unique_ptr<Machine> thisComputer);

/// What there is to read: sensors that the first pass shows, or at least drives.
enum class Offer { nothing, drivesAlone, sensors };
/// Makes the first pass.
Offer offerOf(Sampling& sampling);

/// Lists the bundled machines, a line each.
std::string machineList();

}  // namespace halvermonte
