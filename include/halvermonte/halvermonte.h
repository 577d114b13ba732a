/* The whole engine for C, and so for every language that can call C.
 *
 *   halvermonte_engine* engine = NULL;
 *   halvermonte_snapshot* snapshot = NULL;
 *   if (halvermonte_engine_create(&engine) != HALVERMONTE_OK ||
 *       halvermonte_engine_pass(engine) != HALVERMONTE_OK ||
 *       halvermonte_engine_snapshot(engine, &snapshot) != HALVERMONTE_OK) {
 *     puts(halvermonte_last_error());
 *   }
 *
 * Conventions:
 *
 * 1. Errors. A function that can fail returns a halvermonte_status. It stores its results through
 *    its last parameters, and only if it returns HALVERMONTE_OK. halvermonte_last_error() has the
 *    reason of a failure as a text.
 * 2. NULL. A pointer that is NULL is HALVERMONTE_NULL_ARGUMENT, unless the function says that it
 *    may be. A free function does nothing with it.
 * 3. Ownership. The caller frees engines and snapshots, each with its own function. All else
 *    belongs to the engine or the snapshot that it came from, and is valid until that one is freed,
 *    unless the function says less.
 * 4. Text is UTF-8 and ends with a NUL. A text with a NUL inside seems to end there;
 *    halvermonte_value_text() gives the size too.
 * 5. Threads. One engine is for one thread at a time; several engines may be used at once. A
 *    snapshot never changes, so any number of threads may read it, also while its engine makes the
 *    next pass and after it was freed. Freeing is the last use.
 * 6. The host's process. No call throws, none ends the process, and none writes to standard output
 *    or standard error; a command that halvermonte_engine_process_cpu() starts may.
 *    halvermonte_engine_messages() has the lines that the engine would have printed.
 * 7. Binary interface. Types are opaque or of a fixed size, and no structure is passed. Later
 *    versions with the same SONAME add functions and constants; they remove none, and change no
 *    number and no meaning. So a host expects a status or a kind that this header does not list.
 *
 * The header is for Linux; docs/macos.md has the framework. */
#ifndef HALVERMONTE_HALVERMONTE_H
#define HALVERMONTE_HALVERMONTE_H

#include <stddef.h>
#include <stdint.h>

#include "halvermonte/Export.h"

HALVERMONTE_C_BEGIN

/* Samples one computer into a record of its own. */
typedef struct halvermonte_engine halvermonte_engine;
/* The record as it was when the snapshot was made. */
typedef struct halvermonte_snapshot halvermonte_snapshot;
/* A value of the record. It belongs to its snapshot. */
typedef struct halvermonte_value halvermonte_value;

typedef int32_t halvermonte_status;
enum {
  HALVERMONTE_OK = 0,
  HALVERMONTE_NULL_ARGUMENT = 1,
  /* Some of what the call had allocated by then may stay allocated. */
  HALVERMONTE_OUT_OF_MEMORY = 2,
  /* The machine file cannot be read, or is not a machine file. */
  HALVERMONTE_BAD_MACHINE_FILE = 3,
  /* No bundled machine, property or entry has the name. */
  HALVERMONTE_UNKNOWN_NAME = 4,
  /* There is nothing at the index, or the number is not one that the parameter may have. */
  HALVERMONTE_OUT_OF_RANGE = 5,
  /* The value is of another kind. */
  HALVERMONTE_WRONG_KIND = 6,
  /* The platform ended the pass. The record keeps what it holds by then, and the next pass may
   * succeed. */
  HALVERMONTE_PASS_ENDED = 7,
  /* The computer cannot say. */
  HALVERMONTE_NOT_AVAILABLE = 8,
  /* Anything else. */
  HALVERMONTE_FAILED = 9
};

/* Returns why the last call failed that failed on the calling thread, in one line; "" if none has.
 * Valid until the next call on this thread. */
HALVERMONTE_EXPORT const char* halvermonte_last_error(void);

/* Returns the library's version, such as "0.1.0". It is constant. */
HALVERMONTE_EXPORT const char* halvermonte_version(void);

/* ---- Engines ---- */

/* Makes an engine of this computer. */
HALVERMONTE_EXPORT halvermonte_status halvermonte_engine_create(halvermonte_engine** engine);

/* Makes an engine of the simulated computer that a machine file describes; docs/machine-files.md is
 * the format. */
HALVERMONTE_EXPORT halvermonte_status
halvermonte_engine_create_from_file(const char* path, halvermonte_engine** engine);

/* Makes an engine of a simulated computer that comes with the library, such as "M3 Max". The case
 * of the name does not matter. */
HALVERMONTE_EXPORT halvermonte_status
halvermonte_engine_create_bundled(const char* name, halvermonte_engine** engine);

/* Returns the name of a simulated computer that comes with the library, or NULL if the index is not
 * below their number. It is constant. */
HALVERMONTE_EXPORT const char* halvermonte_bundled_name(size_t index);

HALVERMONTE_EXPORT void halvermonte_engine_free(halvermonte_engine* engine);

/* Samples the computer into the engine's record. Rates are those since the pass before, over whole
 * seconds: a host makes a pass each second or less often. */
HALVERMONTE_EXPORT halvermonte_status halvermonte_engine_pass(halvermonte_engine* engine);

/* Moves a simulated computer to its next tick. It starts in the first one; call this before each
 * pass but the first. After the last tick its state stays, while its clock goes on by one second a
 * call. HALVERMONTE_NOT_AVAILABLE on this computer, which changes by itself. */
HALVERMONTE_EXPORT halvermonte_status halvermonte_engine_next_tick(halvermonte_engine* engine);

/* The lines about sensors or drives that could not be read in the last pass, such as "Error: no SMC
 * found", each ended by a line feed; "" if there was nothing to say. Valid until the next pass. */
HALVERMONTE_EXPORT halvermonte_status halvermonte_engine_messages(const halvermonte_engine* engine,
                                                                  const char** lines);

/* The processor's name; "" if it is not known. */
HALVERMONTE_EXPORT halvermonte_status halvermonte_engine_processor_name(halvermonte_engine* engine,
                                                                        const char** name);

/* The number of physical cores, at least 1. */
HALVERMONTE_EXPORT halvermonte_status halvermonte_engine_physical_cores(halvermonte_engine* engine,
                                                                        int32_t* cores);

/* A process's CPU use in percent of one core, as `ps` has it: on Linux the average since the
 * process began. 0 if no process has the identifier, which is above 0. HALVERMONTE_NOT_AVAILABLE if
 * what ps prints cannot be read. */
HALVERMONTE_EXPORT halvermonte_status halvermonte_engine_process_cpu(halvermonte_engine* engine,
                                                                     int32_t identifier,
                                                                     float* percent);

/* ---- Snapshots ---- */

/* Makes a snapshot of the engine's record. Before the first pass it holds the record's defaults. */
HALVERMONTE_EXPORT halvermonte_status halvermonte_engine_snapshot(const halvermonte_engine* engine,
                                                                  halvermonte_snapshot** snapshot);

HALVERMONTE_EXPORT void halvermonte_snapshot_free(halvermonte_snapshot* snapshot);

/* The lists of readings. */
typedef int32_t halvermonte_list;
enum {
  /* The full list of temperatures, in whole degrees Celsius. */
  HALVERMONTE_TEMPERATURES = 0,
  /* The short list, for a small display. Some of it is in the full list too. */
  HALVERMONTE_SHORT_TEMPERATURES = 1,
  /* The fans, in whole revolutions per minute; 0 for one that stands still. */
  HALVERMONTE_FANS = 2
};

/* How many readings the list has. */
HALVERMONTE_EXPORT halvermonte_status halvermonte_snapshot_reading_count(
    const halvermonte_snapshot* snapshot, halvermonte_list list, size_t* count);

/* A reading of the list, in the order for display: its name, its number, and the symbol of its
 * unit, "°C" or "rpm". A name may be empty, and may occur more than once. */
HALVERMONTE_EXPORT halvermonte_status
halvermonte_snapshot_reading(const halvermonte_snapshot* snapshot, halvermonte_list list,
                             size_t index, const char** name, int32_t* number, const char** unit);

/* The directions of disk traffic. */
typedef int32_t halvermonte_direction;
enum { HALVERMONTE_READ = 0, HALVERMONTE_WRITE = 1 };

/* The rate in bytes per second since the pass before, all drives together; 0 after the first. */
HALVERMONTE_EXPORT halvermonte_status halvermonte_snapshot_disk_rate(
    const halvermonte_snapshot* snapshot, halvermonte_direction direction, double* rate);

/* The bytes since the drives started, all drives together. */
HALVERMONTE_EXPORT halvermonte_status halvermonte_snapshot_disk_total(
    const halvermonte_snapshot* snapshot, halvermonte_direction direction, uint64_t* bytes);

/* The last rates in bytes per second, oldest first; -1 for a pass that was not made yet. There are
 * 75, and none before the first pass. */
HALVERMONTE_EXPORT halvermonte_status halvermonte_snapshot_disk_history(
    const halvermonte_snapshot* snapshot, halvermonte_direction direction, const double** rates,
    size_t* count);

/* ---- Properties of the record ---- */

/* Returns the name of a property, or NULL if the index is not below their number. It is constant.
 * properties.def, beside this header, has the units, and says which a pass fills: the others keep
 * their defaults. */
HALVERMONTE_EXPORT const char* halvermonte_property_name(size_t index);

/* The property's value. Flags are numbers, 0 or 1. */
HALVERMONTE_EXPORT halvermonte_status halvermonte_snapshot_property(
    const halvermonte_snapshot* snapshot, const char* name, const halvermonte_value** value);

typedef int32_t halvermonte_kind;
enum {
  HALVERMONTE_ABSENT = 0,
  HALVERMONTE_TEXT = 1,
  HALVERMONTE_NUMBER = 2,
  HALVERMONTE_ARRAY = 3,
  HALVERMONTE_DICTIONARY = 4,
  HALVERMONTE_DATE = 5,
  HALVERMONTE_IMAGE = 6 /* opaque */
};

HALVERMONTE_EXPORT halvermonte_status halvermonte_value_kind(const halvermonte_value* value,
                                                             halvermonte_kind* kind);

/* The characters, and their number in bytes without the NUL at the end; `size` may be NULL. */
HALVERMONTE_EXPORT halvermonte_status halvermonte_value_text(const halvermonte_value* value,
                                                             const char** text, size_t* size);

/* What a number was made from, and so which function returns it whole. */
typedef int32_t halvermonte_number_form;
enum {
  HALVERMONTE_INT32 = 0,
  HALVERMONTE_INT64 = 1,
  HALVERMONTE_UINT64 = 2,
  HALVERMONTE_FLOAT = 3,
  HALVERMONTE_DOUBLE = 4
};

HALVERMONTE_EXPORT halvermonte_status halvermonte_value_number_form(const halvermonte_value* value,
                                                                    halvermonte_number_form* form);

/* The number, converted. A float outside the range of an integer gives the nearest one, and NaN
 * gives 0. Between integers the low bits are kept. */
HALVERMONTE_EXPORT halvermonte_status halvermonte_value_int64(const halvermonte_value* value,
                                                              int64_t* number);
HALVERMONTE_EXPORT halvermonte_status halvermonte_value_uint64(const halvermonte_value* value,
                                                               uint64_t* number);
HALVERMONTE_EXPORT halvermonte_status halvermonte_value_double(const halvermonte_value* value,
                                                               double* number);

/* A date in seconds since 1970-01-01T00:00:00Z. */
HALVERMONTE_EXPORT halvermonte_status halvermonte_value_date(const halvermonte_value* value,
                                                             double* seconds);

/* How many elements an array has, or how many entries a dictionary. */
HALVERMONTE_EXPORT halvermonte_status halvermonte_value_count(const halvermonte_value* value,
                                                              size_t* count);

/* An element of an array. */
HALVERMONTE_EXPORT halvermonte_status halvermonte_value_element(const halvermonte_value* array,
                                                                size_t index,
                                                                const halvermonte_value** element);

/* An entry of a dictionary: its key, which is a text, and its value. Entries are in bytewise order
 * of their keys. */
HALVERMONTE_EXPORT halvermonte_status halvermonte_value_entry(const halvermonte_value* dictionary,
                                                              size_t index,
                                                              const halvermonte_value** key,
                                                              const halvermonte_value** entry);

/* The value that a dictionary has under the key. */
HALVERMONTE_EXPORT halvermonte_status halvermonte_value_find(const halvermonte_value* dictionary,
                                                             const char* key,
                                                             const halvermonte_value** entry);

HALVERMONTE_C_END

#endif
