// A header of the host's own, under a name that the library's sources might use as well.
#pragma once

inline constexpr int kPasses = 2;
