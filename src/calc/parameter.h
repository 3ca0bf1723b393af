// What the chosen parameter values add to the base data, for the calculations and for both diagrams.
#pragma once

#include <cstdint>

#include "calc/terms.h"
#include "tavd/flowdata.h"

namespace tavd {

// Whether a parameter value stands for a number.
bool is_numeric(const char* value);

// The place of `value` between the rows of a table; false, with zero outputs, if it has none.
bool param_locate(const char* value, const ParEntry* table, int n, std::int16_t* idx1, std::int16_t* idx2,
                  float* frac);

// Adds the pressure term of the chosen values at flow `qv`, Pa.
void param_add_dp(const FlowData* fd, float qv, float* dp);
// Takes that term out of a demanded pressure; leaves at least 1e-5 Pa.
void param_remove_dp(const FlowData* fd, float qv, float* dp);
// The product of the throw factors of the chosen values, and a multiplication by it.
float param_factor(const FlowData* fd);
void param_apply_factor(const FlowData* fd, float* x);
// The sound term of the bands, dB, 0 without parameters.
float param_lw_term(const FlowData* fd);
// Adds the sound terms to eight bands, dB.
void param_add_lw(const FlowData* fd, float* lw);
void param_add_dlw(const FlowData* fd, float* dlw);

// Removes a leading and a trailing double quote in place; whether it removed one.
bool strip_quotes(char* s);

// Fits L2 = kL2*qv^nL2 through the first two points (one point: exponent 1); false, with zero outputs,
// if one of them has no flow.
bool fit_power(const QvL2Point* points, int n, float* nL2, float* kL2);
// The measured points of the record's throw line for a parameter value; their number, below 1 if there are
// none. A table by parameter value goes first, also when the value has no place in it.
int throw_points(const FlowData& fd, const char* value, QvL2Point (&points)[TAVD_QVL2_ROWS]);
// The throw points (qv, L2 pairs) for a parameter value: their number 1 or 2, or negative.
int param_l2_points(const ParL2Point* table, int n, float out[4], const char* value);

}  // namespace tavd
