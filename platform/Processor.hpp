// The processor whose rules this build follows. Two rules differ: the size of the record in which a
// fan's name is asked for, and the steadying of CPU temperatures.
#pragma once

namespace halvermonte {

enum class Processor { x86_64, arm64 };

#if HALVERMONTE_PROCESSOR_ARM64
inline constexpr Processor kProcessor = Processor::arm64;
#else
inline constexpr Processor kProcessor = Processor::x86_64;
#endif

}  // namespace halvermonte
