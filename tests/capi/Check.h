/* Checks for tests in C, and engines over the test's machine file. */
#ifndef HALVERMONTE_TESTS_CAPI_CHECK_H
#define HALVERMONTE_TESTS_CAPI_CHECK_H

#include <halvermonte/halvermonte.h>
#include <stddef.h>

/* Counts a failure and prints where it was, unless the expression holds. */
#define CHECK(holds) check((holds) != 0, #holds, __FILE__, __LINE__)
#define CHECK_TEXT(actual, expected) checkText((actual), (expected), __FILE__, __LINE__)
void check(int holds, const char* expression, const char* file, int line);
void checkText(const char* actual, const char* expected, const char* file, int line);

/* The call succeeds, or fails with the status and the text. */
#define CHECK_OK(call) CHECK_TEXT((call) == HALVERMONTE_OK ? "" : halvermonte_last_error(), "")
#define CHECK_FAILS(call, status, reason)         \
  do {                                            \
    CHECK((call) == (status));                    \
    CHECK_TEXT(halvermonte_last_error(), reason); \
  } while (0)

/* A behaviour, and the function that checks it. */
typedef struct Test {
  const char* name;
  void (*run)(void);
} Test;
#define TEST(function) \
  { #function, function }

/* Runs the tests and returns the program's exit status. */
int runTests(const Test* tests, size_t count);

/* An engine of desk.machine after so many passes, each in the next tick. */
halvermonte_engine* engineAfter(int passes);
halvermonte_snapshot* snapshotOf(const halvermonte_engine* engine);
/* A snapshot after so many passes; its engine is gone. */
halvermonte_snapshot* snapshotAfter(int passes);

#endif
