/* A host in C: shows the temperatures and the disk traffic of this computer, or of the simulated
 * one that a machine file describes. */
#define _POSIX_C_SOURCE 200809L
#include <halvermonte/halvermonte.h>
#include <stdio.h>
#include <unistd.h>

static int failed(void) {
  fprintf(stderr, "%s\n", halvermonte_last_error());
  return 1;
}

int main(int count, char** arguments) {
  halvermonte_engine* engine = NULL;
  halvermonte_snapshot* snapshot = NULL;
  if ((count > 1 ? halvermonte_engine_create_from_file(arguments[1], &engine)
                 : halvermonte_engine_create(&engine)) != HALVERMONTE_OK) {
    return failed();
  }
  if (halvermonte_engine_pass(engine) != HALVERMONTE_OK) return failed();
  /* A rate needs two passes. Only a simulated computer has ticks to go through instead of waiting.
   */
  if (halvermonte_engine_next_tick(engine) != HALVERMONTE_OK) sleep(1);
  if (halvermonte_engine_pass(engine) != HALVERMONTE_OK) return failed();
  if (halvermonte_engine_snapshot(engine, &snapshot) != HALVERMONTE_OK) return failed();

  const char *name, *unit;
  int32_t number;
  for (size_t i = 0; halvermonte_snapshot_reading(snapshot, HALVERMONTE_TEMPERATURES, i, &name,
                                                  &number, &unit) == HALVERMONTE_OK;
       ++i) {
    printf("%s: %d %s\n", name, (int)number, unit);
  }
  double read = 0, write = 0;
  halvermonte_snapshot_disk_rate(snapshot, HALVERMONTE_READ, &read);
  halvermonte_snapshot_disk_rate(snapshot, HALVERMONTE_WRITE, &write);
  printf("read %.0f bytes/s, write %.0f bytes/s\n", read, write);
  halvermonte_snapshot_free(snapshot);
  halvermonte_engine_free(engine);
}
