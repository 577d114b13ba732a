/* What an engine and its snapshots have, over a machine file with known values. */
#include <string.h>

#include "tests/capi/Check.h"

static void checkReading(const halvermonte_snapshot* snapshot, halvermonte_list list, size_t index,
                         const char* name, int32_t number, const char* unit) {
  const char* actualName = "";
  int32_t actualNumber = -1;
  const char* actualUnit = "";
  CHECK_OK(
      halvermonte_snapshot_reading(snapshot, list, index, &actualName, &actualNumber, &actualUnit));
  CHECK_TEXT(actualName, name);
  CHECK(actualNumber == number);
  CHECK_TEXT(actualUnit, unit);
}

static size_t readingCount(const halvermonte_snapshot* snapshot, halvermonte_list list) {
  size_t count = 99;
  CHECK_OK(halvermonte_snapshot_reading_count(snapshot, list, &count));
  return count;
}

static void temperaturesHaveNamesNumbersAndUnits(void) {
  halvermonte_snapshot* const snapshot = snapshotAfter(1);
  CHECK(readingCount(snapshot, HALVERMONTE_TEMPERATURES) == 3);
  checkReading(snapshot, HALVERMONTE_TEMPERATURES, 0, "Airport Proximity", 41, "°C");
  checkReading(snapshot, HALVERMONTE_TEMPERATURES, 1, "Netzwerk Süd", 55, "°C");
  checkReading(snapshot, HALVERMONTE_TEMPERATURES, 2, "Samsung SSD 990 PRO", 38, "°C");
  halvermonte_snapshot_free(snapshot);
}

static void theShortListIsAListOfItsOwn(void) {
  halvermonte_snapshot* const snapshot = snapshotAfter(1);
  CHECK(readingCount(snapshot, HALVERMONTE_SHORT_TEMPERATURES) == 1);
  checkReading(snapshot, HALVERMONTE_SHORT_TEMPERATURES, 0, "Wi-Fi", 41, "°C");
  halvermonte_snapshot_free(snapshot);
}

static void aFanThatStandsStillHasNoRevolutions(void) {
  halvermonte_snapshot* const snapshot = snapshotAfter(1);
  CHECK(readingCount(snapshot, HALVERMONTE_FANS) == 2);
  checkReading(snapshot, HALVERMONTE_FANS, 0, "Left", 1200, "rpm");
  checkReading(snapshot, HALVERMONTE_FANS, 1, "Right", 0, "rpm");
  halvermonte_snapshot_free(snapshot);
}

static void checkTraffic(const halvermonte_snapshot* snapshot, halvermonte_direction direction,
                         double rate, uint64_t total) {
  double actualRate = -1;
  uint64_t actualTotal = 0;
  CHECK_OK(halvermonte_snapshot_disk_rate(snapshot, direction, &actualRate));
  CHECK_OK(halvermonte_snapshot_disk_total(snapshot, direction, &actualTotal));
  CHECK(actualRate == rate);
  CHECK(actualTotal == total);
}

static void theFirstPassHasTotalsAndNoRates(void) {
  halvermonte_snapshot* const snapshot = snapshotAfter(1);
  checkTraffic(snapshot, HALVERMONTE_READ, 0, 5000000001);
  checkTraffic(snapshot, HALVERMONTE_WRITE, 0, 1000000002);
  halvermonte_snapshot_free(snapshot);
}

static void ratesAreThoseSinceThePassBefore(void) {
  halvermonte_snapshot* const snapshot = snapshotAfter(2);
  checkTraffic(snapshot, HALVERMONTE_READ, 2500000, 5002500001);
  checkTraffic(snapshot, HALVERMONTE_WRITE, 40000, 1000040002);
  halvermonte_snapshot_free(snapshot);
}

static void checkHistory(const halvermonte_snapshot* snapshot, halvermonte_direction direction,
                         double newest) {
  const double* rates = NULL;
  size_t count = 0;
  CHECK_OK(halvermonte_snapshot_disk_history(snapshot, direction, &rates, &count));
  CHECK(count == 75);
  if (count != 75) return;
  CHECK(rates[0] == -1 && rates[72] == -1);
  CHECK(rates[73] == 0);
  CHECK(rates[74] == newest);
}

static void historiesEndWithTheNewestRate(void) {
  halvermonte_snapshot* const snapshot = snapshotAfter(2);
  checkHistory(snapshot, HALVERMONTE_READ, 2500000);
  checkHistory(snapshot, HALVERMONTE_WRITE, 40000);
  halvermonte_snapshot_free(snapshot);
}

static void beforeTheFirstPassThereIsNothing(void) {
  halvermonte_snapshot* const snapshot = snapshotAfter(0);
  const double* rates = NULL;
  size_t count = 99;
  CHECK(readingCount(snapshot, HALVERMONTE_TEMPERATURES) == 0);
  checkTraffic(snapshot, HALVERMONTE_READ, 0, 0);
  CHECK_OK(halvermonte_snapshot_disk_history(snapshot, HALVERMONTE_READ, &rates, &count));
  CHECK(count == 0);
  halvermonte_snapshot_free(snapshot);
}

static void aSnapshotStaysAsItWasMade(void) {
  halvermonte_engine* const engine = engineAfter(1);
  halvermonte_snapshot* const first = snapshotOf(engine);
  CHECK_OK(halvermonte_engine_next_tick(engine));
  CHECK_OK(halvermonte_engine_pass(engine));
  halvermonte_snapshot* const second = snapshotOf(engine);
  halvermonte_engine_free(engine);
  checkReading(first, HALVERMONTE_FANS, 0, "Left", 1200, "rpm");
  checkReading(second, HALVERMONTE_FANS, 0, "Left", 1250, "rpm");
  checkTraffic(first, HALVERMONTE_READ, 0, 5000000001);
  halvermonte_snapshot_free(first);
  checkReading(second, HALVERMONTE_TEMPERATURES, 2, "Samsung SSD 990 PRO", 39, "°C");
  halvermonte_snapshot_free(second);
}

static void theComputerHasAProcessorAndCores(void) {
  halvermonte_engine* const engine = engineAfter(0);
  const char* name = "";
  const char* again = "";
  int32_t cores = 0;
  CHECK_OK(halvermonte_engine_processor_name(engine, &name));
  CHECK_TEXT(name, "Apple M9");
  CHECK_OK(halvermonte_engine_processor_name(engine, &again));
  CHECK(again == name);
  CHECK_OK(halvermonte_engine_physical_cores(engine, &cores));
  CHECK(cores == 6);
  halvermonte_engine_free(engine);
}

static void aProcessHasItsUseOfOneCore(void) {
  halvermonte_engine* const engine = engineAfter(0);
  float percent = -1;
  CHECK_OK(halvermonte_engine_process_cpu(engine, 4711, &percent));
  CHECK(percent == 12.5f);
  CHECK_OK(halvermonte_engine_process_cpu(engine, 4712, &percent));
  CHECK(percent == 0);
  halvermonte_engine_free(engine);
}

static void bundledMachinesAreListedAndMadeByName(void) {
  size_t count = 0;
  for (const char* name; (name = halvermonte_bundled_name(count)) != NULL; ++count) {
    halvermonte_engine* engine = NULL;
    CHECK_OK(halvermonte_engine_create_bundled(name, &engine));
    CHECK_OK(halvermonte_engine_pass(engine));
    halvermonte_snapshot* const snapshot = snapshotOf(engine);
    CHECK(readingCount(snapshot, HALVERMONTE_TEMPERATURES) > 0);
    halvermonte_snapshot_free(snapshot);
    halvermonte_engine_free(engine);
  }
  CHECK(count >= 6);
}

static void aBundledMachineIsFoundInAnyCase(void) {
  halvermonte_engine* engine = NULL;
  const char* name = "";
  CHECK_OK(halvermonte_engine_create_bundled("m3 MAX", &engine));
  CHECK_OK(halvermonte_engine_processor_name(engine, &name));
  CHECK_TEXT(name, "Apple M3 Max");
  halvermonte_engine_free(engine);
}

/* What it reads is this computer's own, so only what holds everywhere is checked. */
static void thisComputerIsSampled(void) {
  halvermonte_engine* engine = NULL;
  int32_t cores = 0;
  CHECK_OK(halvermonte_engine_create(&engine));
  CHECK_OK(halvermonte_engine_pass(engine));
  CHECK_OK(halvermonte_engine_physical_cores(engine, &cores));
  CHECK(cores >= 1);
  halvermonte_engine_free(engine);
}

static void theVersionIsThatOfTheProject(void) {
  CHECK_TEXT(halvermonte_version(), EXPECTED_VERSION);
}

int main(void) {
  static const Test tests[] = {
      TEST(temperaturesHaveNamesNumbersAndUnits),
      TEST(theShortListIsAListOfItsOwn),
      TEST(aFanThatStandsStillHasNoRevolutions),
      TEST(theFirstPassHasTotalsAndNoRates),
      TEST(ratesAreThoseSinceThePassBefore),
      TEST(historiesEndWithTheNewestRate),
      TEST(beforeTheFirstPassThereIsNothing),
      TEST(aSnapshotStaysAsItWasMade),
      TEST(theComputerHasAProcessorAndCores),
      TEST(aProcessHasItsUseOfOneCore),
      TEST(bundledMachinesAreListedAndMadeByName),
      TEST(aBundledMachineIsFoundInAnyCase),
      TEST(thisComputerIsSampled),
      TEST(theVersionIsThatOfTheProject),
  };
  return runTests(tests, sizeof tests / sizeof *tests);
}
