#include "tests/capi/Check.h"

#include <stdio.h>
#include <string.h>

static int failures = 0;

void check(int holds, const char* expression, const char* file, int line) {
  if (holds) return;
  fprintf(stderr, "%s:%d: does not hold: %s\n", file, line, expression);
  ++failures;
}

void checkText(const char* actual, const char* expected, const char* file, int line) {
  if (strcmp(actual, expected) == 0) return;
  fprintf(stderr, "%s:%d: expected \"%s\", not \"%s\"\n", file, line, expected, actual);
  ++failures;
}

int runTests(const Test* tests, size_t count) {
  for (size_t i = 0; i < count; ++i) {
    const int before = failures;
    tests[i].run();
    printf("%s %s\n", failures == before ? "ok    " : "FAILED", tests[i].name);
  }
  return failures == 0 ? 0 : 1;
}

halvermonte_engine* engineAfter(int passes) {
  halvermonte_engine* engine = NULL;
  CHECK_OK(halvermonte_engine_create_from_file(FILES "/desk.machine", &engine));
  for (int pass = 0; pass < passes; ++pass) {
    if (pass > 0) CHECK_OK(halvermonte_engine_next_tick(engine));
    CHECK_OK(halvermonte_engine_pass(engine));
  }
  return engine;
}

halvermonte_snapshot* snapshotOf(const halvermonte_engine* engine) {
  halvermonte_snapshot* snapshot = NULL;
  CHECK_OK(halvermonte_engine_snapshot(engine, &snapshot));
  return snapshot;
}

halvermonte_snapshot* snapshotAfter(int passes) {
  halvermonte_engine* const engine = engineAfter(passes);
  halvermonte_snapshot* const snapshot = snapshotOf(engine);
  halvermonte_engine_free(engine);
  return snapshot;
}
