// A second opinion on every calculation: the formulas written down a second time, from their description and
// without a look at src/calc, step by step and one step per line, slow where that is plainer. Nothing is
// shared with the library but the records of its headers. compare_test.cpp holds both against each other, bit
// for bit, and the benchmarks take it as the yardstick of speed.
//
// Arguments, units and results are those of tavd/tavca.h and tavd/ewads.h.
#pragma once

#include "tavd/flowdata.h"
#include "tavd/types.h"

namespace transcription {

// Air and interpolation.
float pdyn(float qv, float area, int isvelocity);
float ductarea_m2(int16_t b, int16_t h);
int qminqmax(const FlowData* fd, float* qmin, float* qmax);
float linlog_interp(float x1, float x2, float x, float y1, float y2);
float loglin_interp(float x1, float x2, float x, float y1, float y2);
float lin_interp(float x1, float x2, float x, float y1, float y2);

// Parameters.
int param_valuetoreal(const char* value, float* real);
int param_valuecmp(const char* a, const char* b);
int param_setvalue(FlowData* fd, const char* name, const char* value);
void param_add_dp(const FlowData* fd, float qv, float* dp);
void param_remove_dp(const FlowData* fd, float qv, float* dp);
void param_add_lw(const FlowData* fd, float* lw);
void param_add_dlw(const FlowData* fd, float* dlw);
void param_apply_factor(const FlowData* fd, float* x);

// Pressure.
float floating_dp(const FlowData* fd, float qv);
int fan_dp(const FlowData* fd, float qv, float* dptot, float* dpst, float* pd);
int fan_op_check(const FlowData* fd, float qv, float dp);
int minmaxdptot(const FlowData* fd, float qv, float* mindp, float* maxdp);
float dptotmin(const FlowData* fd, float qv);
float dptotmax(const FlowData* fd, float qv);

// Damper position.
float dptot_damperpos(const FlowData* fd, float qv, float pos);
int damper_pos(const FlowData* fd, float qv, float dp, float* pos);
int damper_pos_fixed(const FlowData* fd, float qv, float dp, float* pos);

// Sound.
int lw(const FlowData* fd, float qv, float dp, float* lw, const DuctSize* duct);
int dlw(const FlowData* fd, float qv, float dp, float* dlw);
float LpA(const float* lw, float roomdamp);
float endref_A(int band, float area);
void check_end_reflection(FlowData* fd);

// Throw.
float L2_isothermal(const FlowData* fd, float qv, const char* value);

// Duct sizes.
bool is_circular(const DuctSize* ds);
bool is_rectangular(const DuctSize* ds);
int equal_size(const DuctSize* ds1, const DuctSize* ds2);
int greater_b_or_h(const DuctSize* ds1, const DuctSize* ds2);
float dekv(const DuctSize* ds);
float dhydr(const DuctSize* ds);
int16_t diagonal(const DuctSize* ds);
float m2(const DuctSize* ds);
float vms(const DuctSize* ds, double qv);
void swap(DuctSize* ds);
void print(const DuctSize* ds, char* buffer);
int scan(char* text, DuctSize* ds);

}  // namespace transcription
