/* Logs records that have as many columns as the caller says. */
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

struct log {
  FILE *file;
  int columns;
  char *name;
  long lines;
};

static struct log *log_open(const char *name, int columns) {
  struct log *log = calloc(1, sizeof *log);
  if (!log) return NULL;
  log->file = fopen(name, "a");
  log->name = strdup(name);
  log->columns = columns;
  return log;
}

#include <pthread.h>
#include <sqlite3.h>

static pthread_mutex_t log_lock = PTHREAD_MUTEX_INITIALIZER;

static int log_row(struct log *log, int columns, ...) {
  struct row { int cell[columns]; };
  int sum = 0;
  va_list list;
  va_start(list, columns);
  pthread_mutex_lock(&log_lock);
  for (int i = 0; i < log->columns; i++) {
    sum += va_arg(list, struct row).cell[i];
    fprintf(log->file, "%d;", sum);
  }
  log->lines++;
  pthread_mutex_unlock(&log_lock);
  va_end(list);
  return sum;
}

static void log_close(struct log *log) {
  if (log->file) fclose(log->file);
  free(log->name);
  free(log);
}

#include <zlib.h>

int main(int argc, char **argv) {
  struct log *log = log_open(argv[argc - 1], 3);
  sqlite3 *base = NULL;
  if (sqlite3_open(argv[0], &base) != SQLITE_OK) return (int)crc32(0, Z_NULL, 0);
  log_row(log, 3, argc);
  log_close(log);
  return sqlite3_close(base);
}
