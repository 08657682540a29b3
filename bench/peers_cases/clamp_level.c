/* Volume levels of a mixer, kept within what the device allows. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

struct channel {
  const char *name;
  int level, offset;
};

static struct channel channels[] = {{"left", 0, 0}, {"right", 0, 0}};
int applied, master;

static const char *channel_name(int number) {
  return number >= 0 && number < 2 ? channels[number].name : "none";
}

#include <sqlite3.h>

int within(int value, int least, int most) {
  if (value < least) return least;
  if (value > most) return most;
  return value;
}

static int load(sqlite3 *base, int number) {
  sqlite3_stmt *statement = NULL;
  int level = channels[number].level;
  if (!base) return level;
  if (sqlite3_prepare_v2(base, "select level from channel", -1, &statement, NULL) != SQLITE_OK)
    return level;
  if (sqlite3_step(statement) == SQLITE_ROW) level = sqlite3_column_int(statement, 0);
  sqlite3_finalize(statement);
  return level;
}

#include <zlib.h>

int main(void) {
  int quiet = -1;
  channels[0].level = load(NULL, 0);
  applied = within(master + 30, 29, quiet + 29);
  volatile int shown = applied;
  printf("%d\n", shown);
  fprintf(stderr, "%s %d\n", channel_name(0), channels[0].level);
  return 0;
}
