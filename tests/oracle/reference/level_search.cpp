#include "oracle/reference/level_search.h"

#include <cmath>

#include "oracle/reference/transcription.h"

namespace transcription {

namespace {

// No course that ends takes this many steps: a float is halved, or divided by ten, to nothing before.
const int kEndless = 1000;

float level(const LevelSearchRow& row, float roomdamp) {
  return LpA(row.lw, roomdamp);
}

float level_at(const LevelSearchRow& row1, const LevelSearchRow& row2, float x, float roomdamp) {
  float lw[8];
  for (int b = 0; b < 8; b++) lw[b] = loglin_interp(row1.val, row2.val, x, row1.lw[b], row2.lw[b]);
  return LpA(lw, roomdamp);
}

}  // namespace

float lp_find(int n, const LevelSearchRow* rows, float L, int g, float roomdamp) {
  // 1.
  int i1 = -1;
  for (int i = 0; i < n; i++) {
    if (rows[i].group == g) {
      i1 = i;
      break;
    }
  }
  if (i1 < 0) return 0.0F;
  int i2 = i1;
  while (i2 + 1 < n && rows[i2 + 1].group == g) i2 = i2 + 1;
  if (i1 == i2) return 0.0F;

  // 2.
  while (i1 < i2 - 1 && level(rows[i1 + 1], roomdamp) < L) i1 = i1 + 1;
  i2 = i1 + 1;
  float a = rows[i1].val;
  float b = rows[i2].val;

  if (L <= level(rows[i1], roomdamp)) {
    // 4.
    b = rows[i1].val;
    for (int step = 0;; step++) {
      if (step == kEndless) return 0.0F;
      a = static_cast<float>(static_cast<double>(a) * 0.1);
      if (level_at(rows[i1], rows[i2], a, roomdamp) < L) break;
      b = a;
      if (static_cast<double>(a) < 0.01) return 0.0F;
    }
  } else if (level(rows[i2], roomdamp) < L) {
    // 5.
    a = rows[i2].val;
    for (int step = 0;; step++) {
      if (step == kEndless) return 0.0F;
      b = b * 2.0F;
      if (level_at(rows[i1], rows[i2], b, roomdamp) > L) break;
      a = b;
      if (static_cast<double>(b) > 20000.0) return 0.0F;
    }
  }

  // 6.
  for (int round = 0; round < 1002; round++) {
    const float m = (a + b) / 2.0F;
    const float p = level_at(rows[i1], rows[i2], m, roomdamp);
    if (static_cast<double>(std::fabs(L - p)) < 0.1) return m;
    if (p <= L) {
      a = m;
    } else {
      b = m;
    }
  }
  return 0.0F;
}

}  // namespace transcription
