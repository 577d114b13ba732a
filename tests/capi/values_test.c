/* The record's properties and their values. */
#include <math.h>
#include <string.h>

#include "tests/capi/Check.h"

static halvermonte_snapshot* snapshot = NULL;

static const halvermonte_value* property(const char* name) {
  const halvermonte_value* value = NULL;
  CHECK_OK(halvermonte_snapshot_property(snapshot, name, &value));
  return value;
}

static halvermonte_kind kindOf(const halvermonte_value* value) {
  halvermonte_kind kind = -1;
  CHECK_OK(halvermonte_value_kind(value, &kind));
  return kind;
}

static void checkNumber(const halvermonte_value* value, halvermonte_number_form form,
                        double number) {
  halvermonte_number_form actualForm = -1;
  double actual = NAN;
  CHECK_OK(halvermonte_value_number_form(value, &actualForm));
  CHECK_OK(halvermonte_value_double(value, &actual));
  CHECK(actualForm == form);
  CHECK(actual == number);
}

static void checkTextValue(const halvermonte_value* value, const char* expected) {
  const char* text = NULL;
  size_t size = 99;
  CHECK_OK(halvermonte_value_text(value, &text, &size));
  CHECK_TEXT(text, expected);
  CHECK(size == strlen(expected));
}

static void everyPropertyHasANameAndAValue(void) {
  size_t count = 0;
  const char* name = NULL;
  while ((name = halvermonte_property_name(count)) != NULL) {
    CHECK(kindOf(property(name)) >= HALVERMONTE_ABSENT);
    ++count;
  }
  CHECK(count == 103);
  CHECK_TEXT(halvermonte_property_name(0), "hostName");
  CHECK_TEXT(halvermonte_property_name(102), "battery_limit");
}

static void textsHaveASizeAndEndWithANul(void) {
  checkTextValue(property("hostName"), "Ada's desk – ÄÖ");
  checkTextValue(property("diskIO_readText"), "5 GB");
  checkTextValue(property("modelName"), "");
  const char* text = NULL;
  CHECK_OK(halvermonte_value_text(property("sensors_fans"), &text, NULL));
  CHECK_TEXT(text, "Left\nRight\n");
}

static void numbersHaveTheFormThatTheyWereStoredIn(void) {
  checkNumber(property("diskIO_speedRead"), HALVERMONTE_FLOAT, 2500000);
  checkNumber(property("summary_cpuCores"), HALVERMONTE_INT32, 1);
  uint64_t total = 0;
  CHECK_OK(halvermonte_value_uint64(property("diskIO_read"), &total));
  CHECK(total == 5002500001u);
  int64_t limit = 7;
  CHECK_OK(halvermonte_value_int64(property("battery_limit"), &limit));
  CHECK(limit == 0);
}

static void flagsAreNumbers(void) {
  checkNumber(property("battery_hasBattery"), HALVERMONTE_INT32, 0);
  checkNumber(property("network_connectedToInternet"), HALVERMONTE_INT32, -1);
}

static void whatNobodySetIsAbsent(void) {
  CHECK(kindOf(property("cpu_userActivities")) == HALVERMONTE_ABSENT);
  CHECK(kindOf(property("network_ipExternalCountryFlag")) == HALVERMONTE_ABSENT);
}

static void theDateIsWhenTheRecordWasMade(void) {
  double seconds = 0;
  CHECK(kindOf(property("appsUpdateTime")) == HALVERMONTE_DATE);
  CHECK_OK(halvermonte_value_date(property("appsUpdateTime"), &seconds));
  CHECK(seconds == 1000000);
}

static void arraysHaveElementsThatMayBeArrays(void) {
  const halvermonte_value* const histories = property("diskIO_activities");
  const halvermonte_value* reads = NULL;
  const halvermonte_value* newest = NULL;
  size_t count = 0;
  CHECK_OK(halvermonte_value_count(histories, &count));
  CHECK(count == 2);
  CHECK_OK(halvermonte_value_element(histories, 1, &reads));
  CHECK_OK(halvermonte_value_count(reads, &count));
  CHECK(count == 75);
  CHECK_OK(halvermonte_value_element(reads, 74, &newest));
  checkNumber(newest, HALVERMONTE_UINT64, 2500000);
}

static void dictionariesHaveEntriesInTheOrderOfTheirKeys(void) {
  static const char* const names[] = {"Airport Proximity", "Netzwerk Süd", "Samsung SSD 990 PRO"};
  static const char* const degrees[] = {"41", "55", "39"};
  const halvermonte_value* const sensors = property("sensors");
  size_t count = 0;
  CHECK_OK(halvermonte_value_count(sensors, &count));
  CHECK(count == 3);
  for (size_t i = 0; i < 3; ++i) {
    const halvermonte_value* key = NULL;
    const halvermonte_value* value = NULL;
    CHECK_OK(halvermonte_value_entry(sensors, i, &key, &value));
    checkTextValue(key, names[i]);
    checkTextValue(value, degrees[i]);
  }
}

static void aDictionaryFindsAValueByItsKey(void) {
  const halvermonte_value* speed = NULL;
  CHECK_OK(halvermonte_value_find(property("fans"), "Left", &speed));
  checkTextValue(speed, "1250");
}

int main(void) {
  static const Test tests[] = {
      TEST(everyPropertyHasANameAndAValue),
      TEST(textsHaveASizeAndEndWithANul),
      TEST(numbersHaveTheFormThatTheyWereStoredIn),
      TEST(flagsAreNumbers),
      TEST(whatNobodySetIsAbsent),
      TEST(theDateIsWhenTheRecordWasMade),
      TEST(arraysHaveElementsThatMayBeArrays),
      TEST(dictionariesHaveEntriesInTheOrderOfTheirKeys),
      TEST(aDictionaryFindsAValueByItsKey),
  };
  snapshot = snapshotAfter(2);
  const int status = runTests(tests, sizeof tests / sizeof *tests);
  halvermonte_snapshot_free(snapshot);
  return status;
}
