/* Each way in which a call can fail: it has a status and a text, and stores nothing. */
#include <string.h>

#include "tests/capi/Check.h"

/* What a call that fails must leave alone. */
static char untouched;
#define UNTOUCHED ((void*)&untouched)

static halvermonte_engine* engine = NULL;
static halvermonte_snapshot* snapshot = NULL;

static const halvermonte_value* property(const char* name) {
  const halvermonte_value* value = NULL;
  CHECK_OK(halvermonte_snapshot_property(snapshot, name, &value));
  return value;
}

#define CHECK_NULL_REFUSED(call, parameter) \
  CHECK_FAILS(call, HALVERMONTE_NULL_ARGUMENT, parameter ": expected a pointer, not NULL")

static void enginesRefuseNull(void) {
  halvermonte_engine* made = UNTOUCHED;
  const char* text = UNTOUCHED;
  int32_t cores = -7;
  float percent = -7;
  CHECK_NULL_REFUSED(halvermonte_engine_create(NULL), "engine");
  CHECK_NULL_REFUSED(halvermonte_engine_create_from_file(NULL, &made), "path");
  CHECK_NULL_REFUSED(halvermonte_engine_create_from_file(FILES "/desk.machine", NULL), "engine");
  CHECK_NULL_REFUSED(halvermonte_engine_create_bundled(NULL, &made), "name");
  CHECK_NULL_REFUSED(halvermonte_engine_create_bundled("M1", NULL), "engine");
  CHECK_NULL_REFUSED(halvermonte_engine_pass(NULL), "engine");
  CHECK_NULL_REFUSED(halvermonte_engine_next_tick(NULL), "engine");
  CHECK_NULL_REFUSED(halvermonte_engine_messages(NULL, &text), "engine");
  CHECK_NULL_REFUSED(halvermonte_engine_messages(engine, NULL), "lines");
  CHECK_NULL_REFUSED(halvermonte_engine_processor_name(NULL, &text), "engine");
  CHECK_NULL_REFUSED(halvermonte_engine_processor_name(engine, NULL), "name");
  CHECK_NULL_REFUSED(halvermonte_engine_physical_cores(NULL, &cores), "engine");
  CHECK_NULL_REFUSED(halvermonte_engine_physical_cores(engine, NULL), "cores");
  CHECK_NULL_REFUSED(halvermonte_engine_process_cpu(NULL, 4711, &percent), "engine");
  CHECK_NULL_REFUSED(halvermonte_engine_process_cpu(engine, 4711, NULL), "percent");
  CHECK(made == UNTOUCHED);
  CHECK(text == UNTOUCHED);
  CHECK(cores == -7);
  CHECK(percent == -7);
}

static void snapshotsRefuseNull(void) {
  halvermonte_snapshot* made = UNTOUCHED;
  size_t count = 77;
  const char* text = UNTOUCHED;
  int32_t number = -7;
  double rate = -7;
  uint64_t total = 77;
  const double* rates = UNTOUCHED;
  const halvermonte_value* value = UNTOUCHED;
  CHECK_NULL_REFUSED(halvermonte_engine_snapshot(NULL, &made), "engine");
  CHECK_NULL_REFUSED(halvermonte_engine_snapshot(engine, NULL), "snapshot");
  CHECK_NULL_REFUSED(halvermonte_snapshot_reading_count(NULL, HALVERMONTE_FANS, &count),
                     "snapshot");
  CHECK_NULL_REFUSED(halvermonte_snapshot_reading_count(snapshot, HALVERMONTE_FANS, NULL), "count");
  CHECK_NULL_REFUSED(halvermonte_snapshot_reading(NULL, HALVERMONTE_FANS, 0, &text, &number, &text),
                     "snapshot");
  CHECK_NULL_REFUSED(
      halvermonte_snapshot_reading(snapshot, HALVERMONTE_FANS, 0, NULL, &number, &text), "name");
  CHECK_NULL_REFUSED(
      halvermonte_snapshot_reading(snapshot, HALVERMONTE_FANS, 0, &text, NULL, &text), "number");
  CHECK_NULL_REFUSED(
      halvermonte_snapshot_reading(snapshot, HALVERMONTE_FANS, 0, &text, &number, NULL), "unit");
  CHECK_NULL_REFUSED(halvermonte_snapshot_disk_rate(NULL, HALVERMONTE_READ, &rate), "snapshot");
  CHECK_NULL_REFUSED(halvermonte_snapshot_disk_rate(snapshot, HALVERMONTE_READ, NULL), "rate");
  CHECK_NULL_REFUSED(halvermonte_snapshot_disk_total(NULL, HALVERMONTE_READ, &total), "snapshot");
  CHECK_NULL_REFUSED(halvermonte_snapshot_disk_total(snapshot, HALVERMONTE_READ, NULL), "bytes");
  CHECK_NULL_REFUSED(halvermonte_snapshot_disk_history(NULL, HALVERMONTE_READ, &rates, &count),
                     "snapshot");
  CHECK_NULL_REFUSED(halvermonte_snapshot_disk_history(snapshot, HALVERMONTE_READ, NULL, &count),
                     "rates");
  CHECK_NULL_REFUSED(halvermonte_snapshot_disk_history(snapshot, HALVERMONTE_READ, &rates, NULL),
                     "count");
  CHECK_NULL_REFUSED(halvermonte_snapshot_property(NULL, "fans", &value), "snapshot");
  CHECK_NULL_REFUSED(halvermonte_snapshot_property(snapshot, NULL, &value), "name");
  CHECK_NULL_REFUSED(halvermonte_snapshot_property(snapshot, "fans", NULL), "value");
  CHECK(made == UNTOUCHED);
  CHECK(count == 77 && total == 77);
  CHECK(text == UNTOUCHED);
  CHECK(number == -7 && rate == -7);
  CHECK(rates == UNTOUCHED);
  CHECK(value == UNTOUCHED);
}

static void valuesRefuseNull(void) {
  halvermonte_kind kind = -7;
  halvermonte_number_form form = -7;
  const char* text = UNTOUCHED;
  size_t size = 77;
  int64_t integer = -7;
  uint64_t natural = 77;
  double number = -7;
  const halvermonte_value* value = UNTOUCHED;
  const halvermonte_value* const fans = property("fans");
  CHECK_NULL_REFUSED(halvermonte_value_kind(NULL, &kind), "value");
  CHECK_NULL_REFUSED(halvermonte_value_kind(fans, NULL), "kind");
  CHECK_NULL_REFUSED(halvermonte_value_text(NULL, &text, &size), "value");
  CHECK_NULL_REFUSED(halvermonte_value_text(property("code"), NULL, &size), "text");
  CHECK_NULL_REFUSED(halvermonte_value_number_form(NULL, &form), "value");
  CHECK_NULL_REFUSED(halvermonte_value_number_form(fans, NULL), "form");
  CHECK_NULL_REFUSED(halvermonte_value_int64(NULL, &integer), "value");
  CHECK_NULL_REFUSED(halvermonte_value_int64(fans, NULL), "number");
  CHECK_NULL_REFUSED(halvermonte_value_uint64(NULL, &natural), "value");
  CHECK_NULL_REFUSED(halvermonte_value_uint64(fans, NULL), "number");
  CHECK_NULL_REFUSED(halvermonte_value_double(NULL, &number), "value");
  CHECK_NULL_REFUSED(halvermonte_value_double(fans, NULL), "number");
  CHECK_NULL_REFUSED(halvermonte_value_date(NULL, &number), "value");
  CHECK_NULL_REFUSED(halvermonte_value_date(fans, NULL), "seconds");
  CHECK_NULL_REFUSED(halvermonte_value_count(NULL, &size), "value");
  CHECK_NULL_REFUSED(halvermonte_value_count(fans, NULL), "count");
  CHECK_NULL_REFUSED(halvermonte_value_element(NULL, 0, &value), "value");
  CHECK_NULL_REFUSED(halvermonte_value_element(fans, 0, NULL), "element");
  CHECK_NULL_REFUSED(halvermonte_value_entry(NULL, 0, &value, &value), "value");
  CHECK_NULL_REFUSED(halvermonte_value_entry(fans, 0, NULL, &value), "key");
  CHECK_NULL_REFUSED(halvermonte_value_entry(fans, 0, &value, NULL), "entry");
  CHECK_NULL_REFUSED(halvermonte_value_find(NULL, "Left", &value), "value");
  CHECK_NULL_REFUSED(halvermonte_value_find(fans, NULL, &value), "key");
  CHECK_NULL_REFUSED(halvermonte_value_find(fans, "Left", NULL), "entry");
  CHECK(kind == -7 && form == -7);
  CHECK(text == UNTOUCHED && size == 77);
  CHECK(integer == -7 && natural == 77 && number == -7);
  CHECK(value == UNTOUCHED);
}

static void nothingIsFreedOfNull(void) {
  halvermonte_engine_free(NULL);
  halvermonte_snapshot_free(NULL);
}

static void aMachineFileThatIsNotThereIsRefusedByName(void) {
  halvermonte_engine* made = UNTOUCHED;
  CHECK(halvermonte_engine_create_from_file("absent.json", &made) == HALVERMONTE_BAD_MACHINE_FILE);
  CHECK(strstr(halvermonte_last_error(), "absent.json: ") == halvermonte_last_error());
  CHECK(made == UNTOUCHED);
}

static void aFileThatIsNotAMachineFileIsRefusedWithThePlace(void) {
  halvermonte_engine* made = UNTOUCHED;
  CHECK(halvermonte_engine_create_from_file(FILES "/Check.c", &made) ==
        HALVERMONTE_BAD_MACHINE_FILE);
  CHECK(strstr(halvermonte_last_error(), "/Check.c: line 1, column 1: ") != NULL);
  CHECK(made == UNTOUCHED);
}

/* A pass over its second tick would end the process. */
static void aMachineFileOfMoreThanTenFansIsRefused(void) {
  halvermonte_engine* made = UNTOUCHED;
  CHECK(halvermonte_engine_create_from_file(FILES "/eleven_fans.json", &made) ==
        HALVERMONTE_BAD_MACHINE_FILE);
  CHECK(strstr(halvermonte_last_error(), "/ticks/1/smc/keys/FNum") != NULL);
  CHECK(made == UNTOUCHED);
}

static void unknownNamesAreRefused(void) {
  halvermonte_engine* made = UNTOUCHED;
  const halvermonte_value* value = UNTOUCHED;
  CHECK_FAILS(halvermonte_engine_create_bundled("Abacus", &made), HALVERMONTE_UNKNOWN_NAME,
              "no bundled machine is called \"Abacus\"");
  CHECK_FAILS(halvermonte_snapshot_property(snapshot, "Fans", &value), HALVERMONTE_UNKNOWN_NAME,
              "no property is called \"Fans\"");
  CHECK_FAILS(halvermonte_value_find(property("fans"), "left", &value), HALVERMONTE_UNKNOWN_NAME,
              "the dictionary has no key \"left\"");
  CHECK(made == UNTOUCHED);
  CHECK(value == UNTOUCHED);
}

static void numbersOutOfRangeAreRefused(void) {
  const char* text = UNTOUCHED;
  int32_t number = -7;
  size_t count = 77;
  double rate = -7;
  float percent = -7;
  const halvermonte_value* value = UNTOUCHED;
  CHECK_FAILS(halvermonte_snapshot_reading_count(snapshot, 3, &count), HALVERMONTE_OUT_OF_RANGE,
              "list: expected a number below 3");
  CHECK_FAILS(halvermonte_snapshot_reading_count(snapshot, -1, &count), HALVERMONTE_OUT_OF_RANGE,
              "list: expected a number below 3");
  CHECK_FAILS(halvermonte_snapshot_reading(snapshot, HALVERMONTE_FANS, 2, &text, &number, &text),
              HALVERMONTE_OUT_OF_RANGE, "index: expected a number below 2");
  CHECK_FAILS(halvermonte_snapshot_disk_rate(snapshot, 2, &rate), HALVERMONTE_OUT_OF_RANGE,
              "direction: expected a number below 2");
  CHECK_FAILS(halvermonte_value_element(property("diskIO_activities"), 2, &value),
              HALVERMONTE_OUT_OF_RANGE, "index: expected a number below 2");
  CHECK_FAILS(halvermonte_value_entry(property("fans"), 2, &value, &value),
              HALVERMONTE_OUT_OF_RANGE, "index: expected a number below 2");
  CHECK_FAILS(halvermonte_engine_process_cpu(engine, 0, &percent), HALVERMONTE_OUT_OF_RANGE,
              "identifier: expected a number above 0, not 0");
  CHECK(halvermonte_property_name(103) == NULL);
  CHECK(halvermonte_bundled_name(1000) == NULL);
  CHECK(text == UNTOUCHED && number == -7 && count == 77 && rate == -7 && percent == -7);
  CHECK(value == UNTOUCHED);
}

static void valuesOfAnotherKindAreRefused(void) {
  const char* text = UNTOUCHED;
  size_t count = 77;
  double number = -7;
  int64_t integer = -7;
  uint64_t natural = 77;
  halvermonte_number_form form = -7;
  const halvermonte_value* value = UNTOUCHED;
  CHECK_FAILS(halvermonte_value_text(property("uptime"), &text, &count), HALVERMONTE_WRONG_KIND,
              "value: expected a text, not a number");
  CHECK_FAILS(halvermonte_value_double(property("code"), &number), HALVERMONTE_WRONG_KIND,
              "value: expected a number, not a text");
  CHECK_FAILS(halvermonte_value_int64(property("fans"), &integer), HALVERMONTE_WRONG_KIND,
              "value: expected a number, not a dictionary");
  CHECK_FAILS(halvermonte_value_uint64(property("diskDrives"), &natural), HALVERMONTE_WRONG_KIND,
              "value: expected a number, not an array");
  CHECK_FAILS(halvermonte_value_number_form(property("appsUpdateTime"), &form),
              HALVERMONTE_WRONG_KIND, "value: expected a number, not a date");
  CHECK_FAILS(halvermonte_value_date(property("cpu_userActivities"), &number),
              HALVERMONTE_WRONG_KIND, "value: expected a date, not nothing");
  CHECK_FAILS(halvermonte_value_count(property("code"), &count), HALVERMONTE_WRONG_KIND,
              "value: expected an array or a dictionary, not a text");
  CHECK_FAILS(halvermonte_value_element(property("fans"), 0, &value), HALVERMONTE_WRONG_KIND,
              "value: expected an array, not a dictionary");
  CHECK_FAILS(halvermonte_value_entry(property("diskIO_activities"), 0, &value, &value),
              HALVERMONTE_WRONG_KIND, "value: expected a dictionary, not an array");
  CHECK_FAILS(halvermonte_value_find(property("diskIO_activities"), "", &value),
              HALVERMONTE_WRONG_KIND, "value: expected a dictionary, not an array");
  CHECK(text == UNTOUCHED && count == 77 && number == -7 && integer == -7 && natural == 77);
  CHECK(form == -7 && value == UNTOUCHED);
}

static void whatPsPrintsWithoutANumberIsNotAvailable(void) {
  float percent = -7;
  CHECK_FAILS(halvermonte_engine_process_cpu(engine, 4713, &percent), HALVERMONTE_NOT_AVAILABLE,
              "ps: expected a line with a number");
  CHECK(percent == -7);
}

static void thisComputerHasNoTicks(void) {
  halvermonte_engine* here = NULL;
  CHECK_OK(halvermonte_engine_create(&here));
  CHECK_FAILS(halvermonte_engine_next_tick(here), HALVERMONTE_NOT_AVAILABLE,
              "this computer changes by itself: it has no ticks");
  halvermonte_engine_free(here);
}

static void aCallThatSucceedsKeepsTheLastError(void) {
  CHECK(halvermonte_engine_pass(NULL) == HALVERMONTE_NULL_ARGUMENT);
  CHECK_OK(halvermonte_engine_pass(engine));
  CHECK_TEXT(halvermonte_last_error(), "engine: expected a pointer, not NULL");
}

int main(void) {
  static const Test tests[] = {
      TEST(enginesRefuseNull),
      TEST(snapshotsRefuseNull),
      TEST(valuesRefuseNull),
      TEST(nothingIsFreedOfNull),
      TEST(aMachineFileThatIsNotThereIsRefusedByName),
      TEST(aFileThatIsNotAMachineFileIsRefusedWithThePlace),
      TEST(aMachineFileOfMoreThanTenFansIsRefused),
      TEST(unknownNamesAreRefused),
      TEST(numbersOutOfRangeAreRefused),
      TEST(valuesOfAnotherKindAreRefused),
      TEST(whatPsPrintsWithoutANumberIsNotAvailable),
      TEST(thisComputerHasNoTicks),
      TEST(aCallThatSucceedsKeepsTheLastError),
  };
  CHECK_TEXT(halvermonte_last_error(), "");
  engine = engineAfter(1);
  snapshot = snapshotOf(engine);
  const int status = runTests(tests, sizeof tests / sizeof *tests);
  halvermonte_snapshot_free(snapshot);
  halvermonte_engine_free(engine);
  return status;
}
