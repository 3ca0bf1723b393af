// Sizes and offsets that the outside relies on, held at compile time: hosts in other languages declare these
// records on their own, and the loader lets the service write attributes straight into them.
#include <cstddef>

#include "tavd/flowdata.h"

namespace {

static_assert(sizeof(float) == 4, "attributes hold 32-bit floats");

static_assert(sizeof(DamperPoint) == 12, "rows of attribute 1652 no longer fall on DamperPoint");
static_assert(sizeof(QvDpPoint) == 8, "rows of attribute 1657 no longer fall on QvDpPoint");
static_assert(sizeof(FanPoint) == 12, "rows of attribute 1666 no longer fall on FanPoint");
static_assert(sizeof(LwPoint) == 16, "rows of attribute 1653 no longer fall on LwPoint");
static_assert(sizeof(DlwPoint) == 12, "rows of attribute 1655 no longer fall on DlwPoint");
static_assert(sizeof(QvL2Point) == 8, "rows of attribute 1659 no longer fall on QvL2Point");
static_assert(sizeof(ParL2Point) == 14, "rows of attribute 1660 no longer fall on ParL2Point");
static_assert(sizeof(ParEntry) == 18, "rows of attributes 1661 and 1662 no longer fall on ParEntry");

static_assert(offsetof(DamperPoint, pos) == 0 && offsetof(DamperPoint, qv) == 4 &&
                  offsetof(DamperPoint, dp) == 8,
              "attribute 1652 is read into the wrong fields");
static_assert(offsetof(QvDpPoint, qv) == 0 && offsetof(QvDpPoint, dp) == 4,
              "attribute 1657 is read into the wrong fields");
static_assert(offsetof(FanPoint, qv) == 0 && offsetof(FanPoint, dp) == 4 && offsetof(FanPoint, aux) == 8,
              "attribute 1666 is read into the wrong fields");
static_assert(offsetof(LwPoint, qv) == 0 && offsetof(LwPoint, dp) == 4 && offsetof(LwPoint, lw) == 8,
              "attribute 1653 is read into the wrong fields");
static_assert(offsetof(DlwPoint, pos) == 0 && offsetof(DlwPoint, dlw) == 4,
              "attribute 1655 is read into the wrong fields");
static_assert(offsetof(QvL2Point, qv) == 0 && offsetof(QvL2Point, L2) == 4,
              "attribute 1659 is read into the wrong fields");
static_assert(offsetof(ParL2Point, value) == 0 && offsetof(ParL2Point, qv) == 6 &&
                  offsetof(ParL2Point, L2) == 10,
              "attribute 1660 is read into the wrong fields");
static_assert(offsetof(ParEntry, value) == 0 && offsetof(ParEntry, dk) == 6 &&
                  offsetof(ParEntry, dlw) == 10 && offsetof(ParEntry, ddlw) == 12 &&
                  offsetof(ParEntry, factor) == 14,
              "attributes 1661 and 1662 are read into the wrong fields");

static_assert(sizeof(ParTable) == 390, "hosts read the chosen parameter values at the wrong place");
static_assert(offsetof(ParTable, name) == 0 && offsetof(ParTable, value) == 10 &&
                  offsetof(ParTable, idx1) == 20 && offsetof(ParTable, idx2) == 22 &&
                  offsetof(ParTable, frac) == 24 && offsetof(ParTable, count) == 28 &&
                  offsetof(ParTable, table) == 30,
              "hosts read the chosen parameter values at the wrong place");

static_assert(offsetof(FlowData, szclass) == 0 && offsetof(FlowData, szobjID) == 8 &&
                  offsetof(FlowData, isvelocity) == 40 && offsetof(FlowData, kind) == 41 &&
                  offsetof(FlowData, ductarea) == 43 && offsetof(FlowData, lwsizecoef) == 47,
              "hosts read ids and kind at the wrong place");
static_assert(offsetof(FlowData, kind100) == 51 && offsetof(FlowData, b) == 53 &&
                  offsetof(FlowData, h) == 55 && offsetof(FlowData, qvmin) == 57 &&
                  offsetof(FlowData, qvmax) == 61 && offsetof(FlowData, dpmin) == 65 &&
                  offsetof(FlowData, dpmax) == 69,
              "attribute 1650 no longer falls on the header block");
static_assert(offsetof(FlowData, qvref) - offsetof(FlowData, kind100) == 22,
              "the header block is not the 22 bytes of attribute 1650");
static_assert(offsetof(FlowData, qvref) == 73 && offsetof(FlowData, dpref) == 77 &&
                  offsetof(FlowData, damper) == 81 && offsetof(FlowData, qvdppoints) == 321 &&
                  offsetof(FlowData, fancurve) == 481 && offsetof(FlowData, lwpoints) == 721 &&
                  offsetof(FlowData, dlw) == 1681 && offsetof(FlowData, dlwpoints) == 1689 &&
                  offsetof(FlowData, qvL2) == 4089 && offsetof(FlowData, parL2) == 4169,
              "hosts read the tables at the wrong place");
static_assert(offsetof(FlowData, nhdd) == 4589 && offsetof(FlowData, nref) == 4591 &&
                  offsetof(FlowData, ndamper) == 4593 && offsetof(FlowData, nqvdp) == 4595 &&
                  offsetof(FlowData, nfan) == 4597 && offsetof(FlowData, nlw) == 4599 &&
                  offsetof(FlowData, ndlw) == 4601 && offsetof(FlowData, ndlwpoints) == 4603 &&
                  offsetof(FlowData, nqvL2) == 4605 && offsetof(FlowData, nparL2) == 4607,
              "hosts read the row counts at the wrong place");
static_assert(offsetof(FlowData, par) == 4609 && offsetof(FlowData, npar) == 5389 &&
                  offsetof(FlowData, intpair) == 5391 && offsetof(FlowData, floatpair) == 5395,
              "hosts read the parameters at the wrong place");
static_assert(sizeof(FlowData) == 5403, "hosts hand in a record of another size: a load would write past it");

}  // namespace
