// The calculations inside: what they read of the process is an argument. The exported functions call them
// with what the process has set (calc/settings.h), libtavdn with what its callers hand over.
#pragma once

#include "tavd/flowdata.h"
#include "tavd/types.h"

namespace tavd {

// Whom a calculation tells of a bad row in the data; null: nobody.
using Warning = void (*)(const char* text);

// As the exported functions of these names.
float floating_dp(const FlowData* fd, float qv, Warning warning);
int minmaxdptot(const FlowData* fd, float qv, Warning warning, float* mindp, float* maxdp);
float dptotmin(const FlowData* fd, float qv, Warning warning);

// tavca_lw; `lw` is never null.
int sound_power(const FlowData* fd, float qv, float dp, const DuctSize* duct, Warning warning, float* lw);

// tavca_LpA with a room damping, dB; `lw` is never null.
float room_level(const float* lw, float roomdamp);

// A throw line with all that has been chosen: L2 = factor*(coefficient*qv^exponent), m.
struct ThrowLine {
  float exponent;
  float coefficient;
  float factor;  // of the chosen parameter values
};

// The throw line for a parameter value; false if the record gives none.
bool throw_line(const FlowData& fd, const char* value, ThrowLine* line);
float throw_length(const ThrowLine& line, float qv);

}  // namespace tavd
