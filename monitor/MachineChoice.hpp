// Which computer the monitor looks at.
#pragma once

#include <memory>
#include <string>

#include "monitor/Options.hpp"
#include "platform/portable/Machine.hpp"

namespace halvermonte {

struct ChosenMachine {
  std::unique_ptr<Machine> machine;
  bool isSimulated = false;  ///< from a machine file
  std::string title;         ///< its name, and why this one if nobody asked for it
  std::string hint;  ///< what a real computer keeps to itself, and why; "" where it does not
};

/// The machine that the options name or, where they name none, this computer if it offers anything
/// to read, else the bundled M1. Throws a Failure: status 1 where nothing is called so, 2 where the
/// file is no machine file.
ChosenMachine chooseMachine(const Options& options);

/// The same, with `thisComputer` standing for this computer.
ChosenMachine chooseMachine(const Options& options, std::unique_ptr<Machine> thisComputer);

/// What there is to read: what a pass of an engine shows, and drives.
enum class Offer { nothing, drivesAlone, sensors };
Offer offerOf(Machine& machine);

/// The bundled machines, a line each.
std::string machineList();

}  // namespace halvermonte
