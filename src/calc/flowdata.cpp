// Turns the attributes of a product into the one record that all calculations read, with every pressure of
// the tables a total pressure in Pa.
#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>

#include "base/gwtext.h"
#include "calc/classes.h"
#include "calc/kinds.h"
#include "calc/numeric.h"
#include "tavd/attributes.h"
#include "tavd/tavb.h"
#include "tavd/tavca.h"

namespace tavd {
namespace {

constexpr std::size_t kIdRoom = 100;  // characters; the service writes an object id of 32 at most
constexpr float kPaPerKpa = 1000.0F;
constexpr std::int16_t kLargestSizeWithoutArea = 10;  // mm; such sizes stand for "no connection"

#pragma pack(push, 1)
struct FlowHeader {  // attribute 1650
  std::int16_t kind, b, h;
  float qvmin, qvmax, dpmin, dpmax;
};
struct OlderHeader {  // attribute 1649, pressures in kPa
  std::int16_t kind, b;
  float qvmin, qvmax, dpmin, dpmax;
};
#pragma pack(pop)
static_assert(sizeof(FlowHeader) == 22, "attribute 1650 is read into the wrong fields");
static_assert(sizeof(OlderHeader) == 20, "attribute 1649 is read into the wrong fields");

// The record of the database that is read.
struct Source {
  std::int16_t db;
  tavb_rec rec;

  // Reads an attribute into `value`, which stays as it is if the record does not have it. Returns whether it
  // has; `count`, if not null, receives the number of items as the service reports it.
  template <typename T>
  bool read(std::int16_t attribute, T* value, std::int16_t* count) const {
    static_assert(sizeof(T) <= std::numeric_limits<std::int16_t>::max());
    return tavbcopyatt(db, rec, attribute, count, value, static_cast<std::int16_t>(sizeof(T))) != nullptr;
  }

  // Reads the rows of a table; more rows than it holds are cut.
  template <typename Row, int N>
  bool read_rows(std::int16_t attribute, Row (&table)[N], std::int16_t* rows) const {
    std::int16_t count = 0;
    const bool found = read(attribute, &table, &count);
    *rows = static_cast<std::int16_t>(row_count(count, N));
    return found;
  }
};

// What stored pressures need to become total pressures in Pa.
struct PressureForm {
  int sign = 0;      // of the dynamic pressure in "total = static + sign*dynamic"; 0: they are total ones
  bool kpa = false;  // they are in kPa
};

float with_dynamic_pressure(const FlowData& fd, PressureForm form, float qv, float dp) {
  if (form.sign == 0) return dp;
  return dp + static_cast<float>(form.sign) * tavca_pdyn(qv, fd.ductarea, fd.isvelocity);
}

float total_pressure(const FlowData& fd, PressureForm form, float qv, float dp) {
  dp = with_dynamic_pressure(fd, form, qv, dp);
  return form.kpa ? dp * kPaPerKpa : dp;
}

template <typename Row>
void make_total(const FlowData& fd, PressureForm form, Row* rows, int n) {
  for (int i = 0; i < n; ++i) rows[i].dp = total_pressure(fd, form, rows[i].qv, rows[i].dp);
}

std::int16_t marked_total(std::int16_t kind) {
  return static_cast<std::int16_t>(
      std::min<int>(kind + TAVD_KIND_TOTAL_PRESSURE, std::numeric_limits<std::int16_t>::max()));
}

bool load_older_header(const Source& source, FlowData* fd, PressureForm* form) {
  OlderHeader hdd = {};
  std::int16_t count = 0;
  const bool found = source.read(TAVD_ATT_OLD_HEADER, &hdd, &count);
  if (!found) return false;
  fd->nhdd = count;
  fd->kind = hdd.kind;
  fd->kind100 = marked_total(hdd.kind);
  fd->b = hdd.b;
  fd->h = 0;
  fd->qvmin = hdd.qvmin;
  fd->qvmax = hdd.qvmax;
  fd->dpmin = hdd.dpmin * kPaPerKpa;
  fd->dpmax = hdd.dpmax * kPaPerKpa;
  form->kpa = true;
  return true;
}

bool load_header(const Source& source, FlowData* fd, PressureForm* form) {
  FlowHeader header = {};
  std::int16_t count = 0;
  source.read(TAVD_ATT_FLOW_HEADER, &header, &count);
  // An item that is cut short counts as none.
  if (count == 0) return load_older_header(source, fd, form);
  fd->nhdd = count;
  fd->kind100 = header.kind;
  fd->b = header.b;
  fd->h = header.h;
  fd->qvmin = header.qvmin;
  fd->qvmax = header.qvmax;
  fd->dpmin = header.dpmin;
  fd->dpmax = header.dpmax;
  if (header.kind < TAVD_KIND_TOTAL_PRESSURE) {
    fd->kind = header.kind;
    fd->kind100 = marked_total(header.kind);
    form->sign = static_to_total_sign(*fd);
  } else {
    fd->kind = static_cast<std::int16_t>(header.kind - TAVD_KIND_TOTAL_PRESSURE);
  }
  return true;
}

void load_fan_limits(const Source& source, FlowData* fd) {
  float limits[4] = {fd->qvmin, fd->qvmax, fd->dpmin, fd->dpmax};
  std::int16_t nitems = 0;
  if (!source.read(TAVD_ATT_QVDP_LIMITS, &limits, &nitems)) return;
  fd->qvmin = limits[0];
  fd->qvmax = limits[1];
  fd->dpmin = limits[2];
  fd->dpmax = limits[3];
  fd->nhdd = nitems;
}

void load_reference_point(const Source& source, FlowData* fd, PressureForm form) {
  float point[2] = {};
  std::int16_t count = 0;
  source.read(TAVD_ATT_QVDP_REF, &point, &count);
  fd->nref = count;
  fd->qvref = point[0];
  fd->dpref = point[1];
  if (count == 0) form.sign = 0;
  fd->dpref = total_pressure(*fd, form, fd->qvref, fd->dpref);
}

void load_curve(const Source& source, FlowData* fd, PressureForm form) {
  std::int16_t rows = 0;
  switch (fd->kind) {
    case TAVD_KIND_RESISTANCE:
    case TAVD_KIND_RESISTANCE_VELOCITY:
      load_reference_point(source, fd, form);
      break;
    case TAVD_KIND_RESISTANCE_POINTS:
      source.read_rows(TAVD_ATT_QVDP_POINTS, fd->qvdppoints, &rows);
      fd->nqvdp = rows;
      make_total(*fd, form, fd->qvdppoints, rows);
      break;
    case TAVD_KIND_DAMPER:
    case TAVD_KIND_DAMPER_VELOCITY:
      source.read_rows(TAVD_ATT_DAMPER_POINTS, fd->damper, &rows);
      fd->ndamper = rows;
      make_total(*fd, form, fd->damper, rows);
      break;
    case TAVD_KIND_FAN:
      source.read_rows(TAVD_ATT_FAN_CURVE, fd->fancurve, &rows);
      fd->nfan = rows;
      form.kpa = false;  // fan curves are stored in Pa under either header
      make_total(*fd, form, fd->fancurve, rows);
      break;
    default:
      break;
  }
}

void load_sound(const Source& source, FlowData* fd, PressureForm form) {
  std::int16_t rows = 0;
  source.read_rows(TAVD_ATT_LW_POINTS, fd->lwpoints, &rows);
  fd->nlw = rows;
  make_total(*fd, form, fd->lwpoints, rows);

  const bool by_position = source.read_rows(TAVD_ATT_DLW_POINTS, fd->dlwpoints, &rows);
  fd->ndlwpoints = rows;
  if (by_position) return;
  std::int16_t count = 0;
  source.read(TAVD_ATT_DLW, &fd->dlw, &count);
  fd->ndlw = count;
}

void load_host_values(const Source& source, FlowData* fd) {
  std::int16_t intpair[2] = {};
  source.read(TAVD_ATT_INT_PAIR, &intpair, nullptr);
  std::memcpy(fd->intpair, intpair, sizeof intpair);
  float floatpair[2] = {};
  source.read(TAVD_ATT_FLOAT_PAIR, &floatpair, nullptr);
  std::memcpy(fd->floatpair, floatpair, sizeof floatpair);
}

void load_size_coefficient(const Source& source, FlowData* fd) {
  float lwsizecoef = 0.0F;
  source.read(TAVD_ATT_LW_SIZE_COEF, &lwsizecoef, nullptr);
  fd->lwsizecoef = lwsizecoef;
}

void load_throw(const Source& source, FlowData* fd) {
  std::int16_t rows = 0;
  source.read_rows(TAVD_ATT_QV_L2, fd->qvL2, &rows);
  fd->nqvL2 = rows;
  source.read_rows(TAVD_ATT_PAR_L2, fd->parL2, &rows);
  fd->nparL2 = rows;
}

bool load_parameter_table(const Source& source, std::int16_t attribute, ParTable* par) {
  std::int16_t rows = 0;
  const bool found = source.read_rows(attribute, par->table, &rows);
  par->count = rows;
  return found;
}

// The number of usable parameters. An empty first name leaves none, even if the second one is good.
std::int16_t load_parameter_names(const Source& source, FlowData* fd, std::int16_t npar) {
  char sz[TAVD_PAR_NAMES_BYTES + 1] = {};  // a text of full length comes without a terminator
  if (tavbcopyatt(source.db, source.rec, TAVD_ATT_PAR_NAMES, nullptr, sz, TAVD_PAR_NAMES_BYTES) == nullptr) {
    return 0;
  }
  char* first = fd->par[0].name;
  char* second = fd->par[1].name;
  if (npar >= 2) {
    gwstrfield(first, sz, ',', 0, sizeof fd->par[0].name);
    gwstrfield(second, sz, ',', 1, sizeof fd->par[1].name);
  } else {
    gwstrcpyfield(first, sz, sizeof fd->par[0].name);
  }
  if (second[0] == '\0') {
    npar = 1;
  } else {
    gwrtrim(second);
  }
  if (first[0] == '\0') return 0;
  gwrtrim(first);
  return npar;
}

void load_parameters(const Source& source, FlowData* fd) {
  if (!load_parameter_table(source, TAVD_ATT_PAR1_TABLE, &fd->par[0])) return;
  const bool two = load_parameter_table(source, TAVD_ATT_PAR2_TABLE, &fd->par[1]);
  fd->npar = load_parameter_names(source, fd, two ? 2 : 1);
}

}  // namespace
}  // namespace tavd

using namespace tavd;  // the border below stands outside

int tavca_load_flowdata(std::int16_t db, tavb_rec rec, FlowData* fd) {
  if (fd == nullptr) return TAVCA_LOAD_NO_HEADER;
  std::memset(fd, 0, sizeof *fd);
  if (rec == nullptr) return TAVCA_LOAD_NO_HEADER;
  char objID[kIdRoom] = {};
  tavbgetID(db, rec, fd->szclass, objID);
  tavbobjIDtosz(db, objID, fd->szobjID);

  const Source source = {db, rec};
  PressureForm form;
  if (!load_header(source, fd, &form)) return TAVCA_LOAD_NO_HEADER;
  if (fd->kind == TAVD_KIND_FAN) load_fan_limits(source, fd);
  fd->isvelocity = is_by_velocity(fd->kind) ? 1 : 0;
  if (fd->isvelocity == 0 && fd->b > kLargestSizeWithoutArea) fd->ductarea = tavca_ductarea_m2(fd->b, fd->h);
  load_curve(source, fd, form);
  load_sound(source, fd, form);
  load_host_values(source, fd);
  load_size_coefficient(source, fd);
  load_throw(source, fd);
  load_parameters(source, fd);
  return TAVCA_OK;
}
