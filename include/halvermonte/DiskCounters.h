/* The byte counters of the computer's block-storage drives.
 *
 * Plain functions for C and C++. Not locked: one iterator is walked from one thread at a time.
 *
 * For Macs, because the iterator comes from IOKit. A host on Linux finds the same sums in
 * halvermonte.h. */
#ifndef HALVERMONTE_ENGINE_DISK_COUNTERS_H
#define HALVERMONTE_ENGINE_DISK_COUNTERS_H

#include <stdint.h>

#include "halvermonte/Export.h"

HALVERMONTE_C_BEGIN

/* One direction's bytes. The engine uses `bytes` and `bytes_prev`; the others stay 0. */
typedef struct io_stats {
  uint64_t bytes_delta;
  uint64_t bytes_prev; /* the total at the previous pass */
  uint64_t bytes;      /* the total at this pass */
  uint64_t bsd_bytes_prev;
  uint64_t bsd_bytes;
} io_stats;

/* Walks the iterator (an io_iterator_t) over services of class "IOBlockStorageDriver", and stores
 * the sums of the bytes that each drive has read and written since it started into the two `bytes`
 * fields. The sums wrap at 2^64. No other field is changed. A drive that cannot be read adds
 * nothing, and neither does an iterator of 0. The iterator is left at its start. */
HALVERMONTE_EXPORT void getDISKcounters(uint32_t drivelist, io_stats* i_dsk, io_stats* o_dsk);

HALVERMONTE_C_END

#endif
