// The Machine that is the computer on which the program runs. An engine reads it without being
// told, so a host needs it only to set options or to wrap it. On a Mac, the monitor alone has it.
#pragma once

#include <memory>
#include <string>

#include "halvermonte/Export.h"
#include "halvermonte/Machine.hpp"

namespace halvermonte {

/// The folders of the kernel's files. With other folders than these the machine is a tree: the
/// files of some computer, as they were.
struct ComputerFolders {
  std::string sys = "/sys";
  std::string proc = "/proc";
  std::string etc = "/etc";
};

struct ComputerOptions {
  /// Asks SATA and SCSI drives for their temperatures, which may keep a drive from spinning down.
  bool driveTemperatures = false;
  /// NVIDIA's management library, as dlopen() takes it; "" reads no devices of NVIDIA's. It knows
  /// the devices of this computer, so a tree uses it only if it is another than this one.
  std::string managementLibrary = "libnvidia-ml.so.1";
};

/// Makes the machine of this computer, or of a tree. A Mac has no tree: with other folders than
/// these, the function throws std::invalid_argument there. It only reads: nothing is written, and
/// nothing that sleeps is woken. What cannot be read is absent, and no question fails because of
/// it. Any thread may ask, while others do.
///
/// The machine reads slow sensors on threads of its own. They get no signals, and the destructor
/// does not wait for them.
HALVERMONTE_EXPORT std::unique_ptr<Machine> makeThisComputer(ComputerFolders folders = {},
                                                             const ComputerOptions& options = {});

}  // namespace halvermonte
