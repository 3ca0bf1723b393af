// The damper table of a record and what its solvers look at, for one point and for many.
#pragma once

#include "calc/kinds.h"
#include "calc/numeric.h"
#include "tavd/flowdata.h"
#include "tavd/tavca.h"

namespace tavd::damper {

constexpr double kSmallestRequest = 1e-6;  // l/s and Pa, solvers; their rows too
constexpr double kMargin = 1.01;           // how far beyond the table the stepless solver still solves
constexpr double kSamePressure = 1e-5;     // Pa; rows closer than this are not interpolated
constexpr int kSmallestSteppedTable = 3;   // rows; a smaller table is stepless

inline int rows_of(const FlowData& fd) {
  return row_count(fd.ndamper, TAVD_DAMPER_ROWS);
}

inline float resistance_of(const DamperPoint& row) {
  return resistance(row.qv, row.dp);
}

inline float pressure_of(const DamperPoint& row, float qv) {
  return square_law(row.qv, row.dp, qv);
}

inline bool too_small(float x) {
  return wide(x) < kSmallestRequest;
}

// What both solvers ask before they look at the demanded resistance, first of the point, then of the record.
inline int check_point(float qv, float dp) {
  if (too_small(qv) || too_small(dp)) return TAVCA_POS_BAD_POINT;
  return TAVCA_OK;
}

inline int check_table(const FlowData* fd) {
  if (fd == nullptr || fd->nhdd == 0) return TAVCA_POS_NO_TABLE;
  if (!is_damper(fd->kind)) return TAVCA_POS_NO_DAMPER;
  if (rows_of(*fd) < 1) return TAVCA_POS_NO_TABLE;
  if (too_small(fd->damper[0].qv)) return TAVCA_POS_BAD_ROW;
  return TAVCA_OK;
}

}  // namespace tavd::damper
