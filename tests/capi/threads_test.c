/* Engines and snapshots on several threads. The thread sanitizer sees more here than the checks do.
 */
#include <pthread.h>

#include "tests/capi/Check.h"

enum { kThreads = 4, kPasses = 5 };

/* Runs the function on several threads at once, each with a number of its own, and returns how many
 * of them returned something else than the number. */
static int runAtOnce(void* (*run)(void*), int* numbers) {
  pthread_t threads[kThreads];
  int wrong = 0;
  for (int i = 0; i < kThreads; ++i) {
    CHECK(pthread_create(&threads[i], NULL, run, &numbers[i]) == 0);
  }
  for (int i = 0; i < kThreads; ++i) {
    void* returned = NULL;
    CHECK(pthread_join(threads[i], &returned) == 0);
    wrong += returned != &numbers[i];
  }
  return wrong;
}

/* Sums the temperatures, so that every reading is read. */
static long sumOf(const halvermonte_snapshot* snapshot) {
  size_t count = 0;
  long sum = 0;
  if (halvermonte_snapshot_reading_count(snapshot, HALVERMONTE_TEMPERATURES, &count) != 0)
    return -1;
  for (size_t i = 0; i < count; ++i) {
    const char* name = NULL;
    int32_t number = 0;
    const char* unit = NULL;
    if (halvermonte_snapshot_reading(snapshot, HALVERMONTE_TEMPERATURES, i, &name, &number,
                                     &unit) != 0) {
      return -1;
    }
    sum += number;
  }
  return sum;
}

/* The sum after some passes over the bundled machine of the number. */
static long sumOverBundled(int number) {
  halvermonte_engine* engine = NULL;
  halvermonte_snapshot* snapshot = NULL;
  long sum = -1;
  if (halvermonte_engine_create_bundled(halvermonte_bundled_name((size_t)number), &engine) != 0) {
    return -1;
  }
  int status = HALVERMONTE_OK;
  for (int pass = 0; pass < kPasses && status == HALVERMONTE_OK; ++pass) {
    status = halvermonte_engine_pass(engine);
    if (status == HALVERMONTE_OK) status = halvermonte_engine_next_tick(engine);
  }
  if (status == HALVERMONTE_OK) status = halvermonte_engine_snapshot(engine, &snapshot);
  if (status == HALVERMONTE_OK) sum = sumOf(snapshot);
  halvermonte_snapshot_free(snapshot);
  halvermonte_engine_free(engine);
  return sum;
}

static long expectedSums[kThreads];

static void* sampleOwnMachine(void* number) {
  const int machine = *(const int*)number;
  return sumOverBundled(machine) == expectedSums[machine] ? number : NULL;
}

static void enginesOnSeveralThreadsHaveMachinesOfTheirOwn(void) {
  int numbers[kThreads];
  for (int i = 0; i < kThreads; ++i) {
    numbers[i] = i;
    expectedSums[i] = sumOverBundled(i);
    CHECK(expectedSums[i] > 0);
    CHECK(i == 0 || expectedSums[i] != expectedSums[0]);
  }
  CHECK(runAtOnce(sampleOwnMachine, numbers) == 0);
}

static halvermonte_snapshot* shared = NULL;

static void* readShared(void* number) {
  for (int i = 0; i < 100; ++i) {
    const halvermonte_value* value = NULL;
    const char* text = NULL;
    if (sumOf(shared) != 41 + 55 + 38) return NULL;
    if (halvermonte_snapshot_property(shared, "sensors_fansData", &value) != 0) return NULL;
    if (halvermonte_value_text(value, &text, NULL) != 0 || text[0] != '1') return NULL;
  }
  return number;
}

static void* keepPassing(void* engine) {
  for (int i = 0; i < 100; ++i) {
    if (halvermonte_engine_next_tick(engine) != 0 || halvermonte_engine_pass(engine) != 0) {
      return NULL;
    }
  }
  return engine;
}

static void aSnapshotIsReadWhileItsEngineMakesPasses(void) {
  halvermonte_engine* const engine = engineAfter(1);
  shared = snapshotOf(engine);
  pthread_t passing;
  void* returned = NULL;
  int numbers[kThreads] = {0, 1, 2, 3};
  CHECK(pthread_create(&passing, NULL, keepPassing, engine) == 0);
  CHECK(runAtOnce(readShared, numbers) == 0);
  CHECK(pthread_join(passing, &returned) == 0);
  CHECK(returned == engine);
  halvermonte_engine_free(engine);
  halvermonte_snapshot_free(shared);
}

static void* failInOwnWay(void* number) {
  static const char* const parameters[kThreads] = {"engine", "snapshot", "kind", "value"};
  const int way = *(const int*)number;
  halvermonte_kind kind = 0;
  if (way == 0) (void)halvermonte_engine_pass(NULL);
  if (way == 1) (void)halvermonte_snapshot_disk_rate(NULL, 0, &(double){0});
  if (way == 2) (void)halvermonte_value_kind(NULL, NULL);
  if (way == 3) (void)halvermonte_value_kind(NULL, &kind);
  const char* const expected = parameters[way];
  const char* const error = halvermonte_last_error();
  for (size_t i = 0; expected[i] != '\0'; ++i) {
    if (error[i] != expected[i]) return NULL;
  }
  return number;
}

static void eachThreadHasALastErrorOfItsOwn(void) {
  int numbers[kThreads] = {0, 1, 2, 3};
  CHECK(halvermonte_engine_messages(NULL, &(const char*){NULL}) == HALVERMONTE_NULL_ARGUMENT);
  CHECK(runAtOnce(failInOwnWay, numbers) == 0);
  CHECK_TEXT(halvermonte_last_error(), "engine: expected a pointer, not NULL");
}

int main(void) {
  static const Test tests[] = {
      TEST(enginesOnSeveralThreadsHaveMachinesOfTheirOwn),
      TEST(aSnapshotIsReadWhileItsEngineMakesPasses),
      TEST(eachThreadHasALastErrorOfItsOwn),
  };
  return runTests(tests, sizeof tests / sizeof *tests);
}
