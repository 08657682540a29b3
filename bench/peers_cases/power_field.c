/* How the pressure in a grid of cells ages. */
#include <errno.h>
#include <math.h>
#include <stdio.h>
#include <stdlib.h>

struct cell {
  unsigned kind : 3, weight : 8, count : 21;
  double pressure;
};

struct grid {
  int width, height;
  struct cell *cells;
};

static struct cell *cell_at(const struct grid *grid, int x, int y) {
  return &grid->cells[y * grid->width + x];
}

static double mean_pressure(const struct grid *grid) {
  double sum = 0;
  for (int i = 0; i < grid->width * grid->height; i++) sum += grid->cells[i].pressure;
  return sum / (grid->width * grid->height);
}

#include <openssl/bn.h>
#include <zlib.h>

int grid_overflows(const struct grid *grid, int x, int y) {
  struct cell *cell = cell_at(grid, x, y);
  errno = 0;
  pow(cell->count, 42);
  return errno == ERANGE;
}

void grid_age(struct grid *grid) {
  for (int y = 0; y < grid->height; y++)
    for (int x = 0; x < grid->width; x++) {
      struct cell *cell = cell_at(grid, x, y);
      cell->pressure = exp(-cell->pressure) * cell->weight + mean_pressure(grid);
      if (!grid_overflows(grid, x, y)) cell->count++;
    }
}

unsigned long grid_sum(const struct grid *grid) {
  unsigned long sum = crc32(0, NULL, 0);
  BIGNUM *total = BN_new();
  for (int i = 0; i < grid->width * grid->height; i++) BN_add_word(total, grid->cells[i].count);
  sum += BN_num_bits(total);
  BN_free(total);
  return sum;
}
