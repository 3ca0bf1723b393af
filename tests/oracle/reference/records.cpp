#include "oracle/reference/records.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>

namespace reference {

std::uint64_t Random::bits() {
  state_ += 0x9E3779B97F4A7C15U;
  std::uint64_t z = state_;
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
  return z ^ (z >> 31);
}

int Random::below(int n) {
  return static_cast<int>(bits() % static_cast<std::uint64_t>(n));
}

int Random::between(int lowest, int highest) {
  return lowest + below(highest - lowest + 1);
}

float Random::uniform(float lowest, float highest) {
  const double u = static_cast<double>(bits() >> 11) * 0x1.0p-53;
  return static_cast<float>(lowest + u * (static_cast<double>(highest) - lowest));
}

float Random::logarithmic(float lowest, float highest) {
  return std::exp2(uniform(std::log2(lowest), std::log2(highest)));
}

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNonsense[] = {0.0F,  -0.0F, -1.0F, -250.0F,   kNan,  kInfinity, -kInfinity, 1e-40F,
                               1e-9F, 1e-7F, 1e-6F, 3.402e38F, 1e30F, 1e-30F,    0.001F,     99999.0F};

float nonsense(Random& random) {
  return kNonsense[random.below(static_cast<int>(std::size(kNonsense)))];
}

// A row count for a table of `capacity` rows.
int rows(Random& random, int capacity, Shape shape) {
  if (shape == Shape::full || random.one_in(8)) {
    return capacity;
  }
  return random.one_in(4) ? random.below(4) : random.between(0, capacity);
}

template <typename Row>
void shuffle(Random& random, Row* table, int n) {
  for (int i = n - 1; i > 0; --i) {
    std::swap(table[i], table[random.below(i + 1)]);
  }
}

void limits(Random& random, FlowData& fd) {
  fd.qvmin = fd.isvelocity != 0 ? random.logarithmic(0.5F, 2.0F) : random.logarithmic(5.0F, 100.0F);
  fd.qvmax = fd.qvmin * random.uniform(2.0F, 20.0F);
  fd.dpmin = random.logarithmic(5.0F, 50.0F);
  fd.dpmax = fd.dpmin * random.uniform(1.5F, 20.0F);
  if (random.one_in(20)) {
    const float dpmin = fd.dpmin;
    fd.dpmin = fd.dpmax;
    fd.dpmax = dpmin;
  }
}

void curves(Random& random, FlowData& fd, Shape shape) {
  fd.nref = static_cast<std::int16_t>(random.one_in(10) ? 0 : 1);
  fd.qvref = random.logarithmic(fd.qvmin, fd.qvmax);
  fd.dpref = random.logarithmic(fd.dpmin, fd.dpmax);

  fd.ndamper = static_cast<std::int16_t>(rows(random, TAVD_DAMPER_ROWS, shape));
  float pos = random.uniform(-2.0F, 5.0F);
  const float step =
      (random.one_in(2) ? 1.0F : -1.0F) * (random.one_in(2) ? 1.0F : random.uniform(0.1F, 15.0F));
  float k = random.logarithmic(0.01F, 10.0F);
  for (int i = 0; i < fd.ndamper; ++i) {
    const float qv = random.one_in(2) ? fd.qvref : random.logarithmic(fd.qvmin, fd.qvmax);
    fd.damper[i] = {pos, qv, k * qv * qv};
    pos += step;
    k *= random.one_in(15) ? 1.0F : random.uniform(0.4F, 0.97F);
  }

  fd.nqvdp = static_cast<std::int16_t>(rows(random, TAVD_QVDP_ROWS, shape));
  float qv = fd.qvmin;
  float dp = fd.dpmin;
  for (int i = 0; i < fd.nqvdp; ++i) {
    fd.qvdppoints[i] = {qv, dp};
    qv *= random.one_in(20) ? 1.0F : random.uniform(1.01F, 1.6F);
    dp *= random.uniform(0.98F, 2.2F);
  }

  fd.nfan = static_cast<std::int16_t>(rows(random, TAVD_FAN_ROWS, shape));
  qv = fd.qvmin;
  dp = fd.dpmax * 2.0F;
  for (int i = 0; i < fd.nfan; ++i) {
    fd.fancurve[i] = {qv, dp, random.uniform(0.0F, 1.0F)};
    qv += random.one_in(20) ? 0.0F : random.uniform(0.01F, 0.4F) * fd.qvmin;
    dp *= random.uniform(0.8F, 1.01F);
  }
  if (shape == Shape::shuffled) {
    shuffle(random, fd.damper, fd.ndamper);
    shuffle(random, fd.qvdppoints, fd.nqvdp);
    shuffle(random, fd.fancurve, fd.nfan);
  }
}

// Curves of one resistance, groups of one flow, or points of one curve: what the kind of the record wants.
void sound(Random& random, FlowData& fd, Shape shape) {
  const int n = rows(random, TAVD_LW_ROWS, shape);
  fd.nlw = static_cast<std::int16_t>(n);
  const bool by_flow = fd.kind == 30 || fd.kind == 40;
  const bool by_resistance = fd.kind == 13 || fd.kind == 20 || fd.kind == 22;
  // A table that is filled has at most 19 groups: a row after the 20th is refused.
  const int per_group = by_flow || by_resistance ? random.between(shape == Shape::full ? 4 : 1, 8) : n;
  float k = fd.ndamper > 0 && fd.damper[0].qv > 0 ? fd.damper[0].dp / (fd.damper[0].qv * fd.damper[0].qv)
                                                  : random.logarithmic(0.001F, 10.0F);
  float qv = fd.qvmin;
  float dp = fd.dpmin;
  for (int i = 0; i < n; ++i) {
    LwPoint& row = fd.lwpoints[i];
    if (by_flow) {
      row.qv = random.one_in(10) ? qv + random.uniform(-0.1F, 0.1F) : qv;
      row.dp = dp;
      dp *= random.one_in(30) ? 1.0F : random.uniform(1.1F, 2.5F);
    } else if (by_resistance) {
      row.qv = qv;
      row.dp = k * random.uniform(0.96F, 1.04F) * qv * qv;
      qv *= random.one_in(30) ? 1.0F : random.uniform(1.1F, 1.8F);
    } else {
      row.qv = qv;
      row.dp = random.one_in(2) && fd.qvref > 0 ? fd.dpref * (qv / fd.qvref) * (qv / fd.qvref)
                                                : random.logarithmic(fd.dpmin, fd.dpmax);
      qv *= random.one_in(30) ? 1.0F : random.uniform(1.0F, 1.2F);
    }
    for (std::uint8_t& level : row.lw) {
      level = static_cast<std::uint8_t>(random.one_in(40) ? random.below(256) : random.between(0, 95));
    }
    if ((i + 1) % per_group == 0) {
      dp = fd.dpmin * random.uniform(0.8F, 1.2F);
      qv = by_flow ? qv * random.uniform(1.05F, 1.9F) : fd.qvmin;
      k *= random.uniform(0.3F, 0.95F);
    }
  }
  if (shape == Shape::shuffled) {
    shuffle(random, fd.lwpoints, n);
  }

  fd.lwsizecoef = random.one_in(2) ? 0.0F : random.uniform(-4.0F, 4.0F);
  fd.ndlw = static_cast<std::int16_t>(random.one_in(4) ? 1 : 0);
  fd.ndlwpoints = static_cast<std::int16_t>(rows(random, TAVD_DLW_ROWS, shape));
  float pos = random.uniform(0.0F, 3.0F);
  for (int i = 0; i < fd.ndlwpoints; ++i) {
    fd.dlwpoints[i].pos = pos;
    pos += random.one_in(10) ? -1.0F : random.uniform(0.0F, 2.0F);
    for (std::uint8_t& band : fd.dlwpoints[i].dlw) {
      band = static_cast<std::uint8_t>(random.below(60));
    }
  }
  for (std::uint8_t& band : fd.dlw) {
    band = static_cast<std::uint8_t>(random.below(60));
  }
}

constexpr const char* kNumbers[] = {"0",   "0.5",   ".75",  "1",   "2",      "5.",    " 8",
                                    "10",  "10.01", "12.5", "20",  "45",     "45.0",  "99.5",
                                    "100", "125",   "200",  "300", "999.99", "9999.9"};
constexpr const char* kLabels[] = {"A",  "b",   "\"C\"",  "open", "closed", "1e3",
                                   "-5", "K 1", "\"half", "+2",   "a"};
constexpr const char* kOther[] = {"",      "   ", "50",     "15",   "0.001", "12345678", "none", "\"A\"", "B",
                                  "1.2.3", "7",   "10.005", "100 ", "OPEN",  "\"",       "c",    "150"};

// `value` as the database stores it: blank-padded, not terminated when it fills the field.
void store(char (&field)[TAVD_PARAMETER_CHARS], const char* value) {
  std::memset(field, ' ', sizeof field);
  std::memcpy(field, value, std::min(std::strlen(value), sizeof field));
}

void parameters(Random& random, FlowData& fd, Shape shape) {
  fd.npar = static_cast<std::int16_t>(random.below(3));
  constexpr const char* kNames[] = {"VALVE", "LEN"};
  for (int p = 0; p < fd.npar; ++p) {
    ParTable& par = fd.par[p];
    std::strncpy(par.name, random.one_in(20) ? "LONGNAME" : kNames[p], sizeof par.name - 1);
    const bool numeric = !random.one_in(3);
    const int most = static_cast<int>(numeric ? std::size(kNumbers) : std::size(kLabels));
    par.count = static_cast<std::int16_t>(shape == Shape::full ? most : random.between(0, most));
    const int first = random.between(0, most - par.count);
    for (int i = 0; i < par.count; ++i) {
      ParEntry& row = par.table[i];
      store(row.value, numeric ? kNumbers[first + i] : kLabels[first + i]);
      row.dk = random.one_in(3) ? 0.0F : random.uniform(-0.0005F, 0.01F);
      row.dlw = static_cast<std::int16_t>(random.between(-12, 12));
      row.ddlw = static_cast<std::int16_t>(random.between(-12, 12));
      row.factor = random.one_in(4) ? 0.0F : random.uniform(0.2F, 2.0F);
    }
    if (shape == Shape::shuffled) {
      shuffle(random, par.table, par.count);
    }
  }
}

void throws(Random& random, FlowData& fd, Shape shape) {
  fd.nqvL2 = static_cast<std::int16_t>(rows(random, TAVD_QVL2_ROWS, shape));
  float qv = fd.qvmin;
  for (int i = 0; i < fd.nqvL2; ++i) {
    fd.qvL2[i] = {qv, random.uniform(0.5F, 20.0F)};
    qv *= random.uniform(1.0F, 1.8F);
  }
  fd.nparL2 = static_cast<std::int16_t>(random.one_in(3) ? 0 : rows(random, TAVD_PARL2_ROWS, shape));
  const bool numeric = !random.one_in(3);
  const int most = static_cast<int>(numeric ? std::size(kNumbers) : std::size(kLabels));
  int value = random.below(4);
  for (int i = 0; i < fd.nparL2; ++i) {
    ParL2Point& row = fd.parL2[i];
    store(row.value, numeric ? kNumbers[value] : kLabels[value]);
    row.qv = random.logarithmic(fd.qvmin, fd.qvmax);
    row.L2 = random.uniform(0.5F, 20.0F);
    if (i % 2 == 1 || random.one_in(8)) {
      value = std::min(value + 1, most - 1);
    }
  }
  if (shape == Shape::shuffled) {
    shuffle(random, fd.parL2, fd.nparL2);
    shuffle(random, fd.qvL2, fd.nqvL2);
  }
}

// Overwrites floats of `table` here and there.
void spoil(Random& random, void* table, std::size_t row_size, int rows_used,
           std::initializer_list<std::size_t> at) {
  if (rows_used <= 0 || random.one_in(2)) {
    return;
  }
  for (int hits = random.between(1, 2); hits > 0; --hits) {
    const std::size_t offset = at.begin()[random.below(static_cast<int>(at.size()))];
    const std::size_t row = static_cast<std::size_t>(random.below(rows_used));
    const float value = nonsense(random);
    std::memcpy(static_cast<char*>(table) + row * row_size + offset, &value, sizeof value);
  }
}

std::int16_t false_count(Random& random, std::int16_t count) {
  constexpr std::int16_t kCounts[] = {-1, -32768, 32767, 1000, 61, 21, 0, 1, 2};
  return random.one_in(8) ? kCounts[random.below(static_cast<int>(std::size(kCounts)))] : count;
}

void make_hostile(Random& random, FlowData& fd) {
  spoil(random, fd.damper, sizeof(DamperPoint), fd.ndamper, {0, 4, 8});
  spoil(random, fd.qvdppoints, sizeof(QvDpPoint), fd.nqvdp, {0, 4});
  spoil(random, fd.fancurve, sizeof(FanPoint), fd.nfan, {0, 4});
  spoil(random, fd.lwpoints, sizeof(LwPoint), fd.nlw, {0, 4});
  spoil(random, fd.dlwpoints, sizeof(DlwPoint), std::min<int>(fd.ndlwpoints, 2), {0});
  spoil(random, fd.qvL2, sizeof(QvL2Point), std::min<int>(fd.nqvL2, 2), {0, 4});
  spoil(random, fd.parL2, sizeof(ParL2Point), fd.nparL2, {6, 10});
  // qvmin to dpref, and ductarea and lwsizecoef.
  auto* const record = reinterpret_cast<char*>(&fd);
  spoil(random, record + offsetof(FlowData, qvmin), sizeof(float), 6, {0});
  spoil(random, record + offsetof(FlowData, ductarea), sizeof(float), 2, {0});
  for (ParTable& par : fd.par) {
    spoil(random, par.table, sizeof(ParEntry), par.count, {6, 14});
    par.count = false_count(random, par.count);
  }
  fd.ndamper = false_count(random, fd.ndamper);
  fd.nqvdp = false_count(random, fd.nqvdp);
  fd.nfan = false_count(random, fd.nfan);
  fd.nlw = false_count(random, fd.nlw);
  fd.ndlwpoints = false_count(random, fd.ndlwpoints);
  fd.nqvL2 = false_count(random, fd.nqvL2);
  fd.nparL2 = false_count(random, fd.nparL2);
  fd.nref = false_count(random, fd.nref);
  fd.ndlw = false_count(random, fd.ndlw);
  fd.nhdd = static_cast<std::int16_t>(random.one_in(10) ? 0 : fd.nhdd);
  fd.npar = false_count(random, fd.npar);
}

// A float that stands in the record's tables or limits.
float table_flow(Random& random, const FlowData& fd) {
  const int damper = std::clamp<int>(fd.ndamper, 1, TAVD_DAMPER_ROWS);
  const int qvdp = std::clamp<int>(fd.nqvdp, 1, TAVD_QVDP_ROWS);
  const int fan = std::clamp<int>(fd.nfan, 1, TAVD_FAN_ROWS);
  const int lw = std::clamp<int>(fd.nlw, 1, TAVD_LW_ROWS);
  switch (random.below(7)) {
    case 0:
      return fd.qvmin;
    case 1:
      return fd.qvmax;
    case 2:
      return fd.damper[random.below(damper)].qv;
    case 3:
      return fd.qvdppoints[random.below(qvdp)].qv;
    case 4:
      return fd.fancurve[random.below(fan)].qv;
    case 5:
      return fd.qvref;
    default:
      return fd.lwpoints[random.below(lw)].qv;
  }
}

float table_pressure(Random& random, const FlowData& fd, float qv) {
  const int damper = std::clamp<int>(fd.ndamper, 1, TAVD_DAMPER_ROWS);
  const int fan = std::clamp<int>(fd.nfan, 1, TAVD_FAN_ROWS);
  const int lw = std::clamp<int>(fd.nlw, 1, TAVD_LW_ROWS);
  const DamperPoint setting = fd.damper[random.below(damper)];
  switch (random.below(6)) {
    case 0:
      return fd.dpmin;
    case 1:
      return fd.dpmax;
    case 2:
      return (setting.dp * qv * qv) / (setting.qv * setting.qv);
    case 3:
      return setting.dp;
    case 4:
      return fd.fancurve[random.below(fan)].dp;
    default:
      return fd.lwpoints[random.below(lw)].dp;
  }
}

// Itself, or the next float on either side.
float beside(Random& random, float value) {
  switch (random.below(3)) {
    case 0:
      return std::nextafter(value, -kInfinity);
    case 1:
      return std::nextafter(value, kInfinity);
    default:
      return value;
  }
}

}  // namespace

Product random_product(Random& random, std::int16_t kind, Shape shape) {
  Product product{};
  FlowData& fd = product.fd;
  constexpr const char* kClasses[] = {"TVX", "ASD", "AEX", "AED", "AOD", "CCB", "asd", "XYZ", "TVX"};
  std::strncpy(fd.szclass, kClasses[random.below(static_cast<int>(std::size(kClasses)))],
               sizeof fd.szclass - 1);
  fd.kind = kind;
  fd.isvelocity = static_cast<char>(kind == 11 || kind == 22 ? 1 : 0);
  fd.kind100 = static_cast<std::int16_t>(random.one_in(4) ? kind : kind + 100);
  fd.b = static_cast<std::int16_t>(random.between(80, 1200));
  fd.h = static_cast<std::int16_t>(random.one_in(2) ? 0 : random.between(80, 1200));
  constexpr float kAreas[] = {0.0F, 2.0F, 0.6F, 0.2F, 0.05F, 1e-6F, 1e-7F, 1e-3F};
  fd.ductarea = random.one_in(5) ? beside(random, kAreas[random.below(static_cast<int>(std::size(kAreas)))])
                                 : random.logarithmic(0.003F, 2.5F);
  fd.nhdd = 1;
  limits(random, fd);
  curves(random, fd, shape);
  sound(random, fd, shape);
  parameters(random, fd, shape);
  throws(random, fd, shape);
  if (shape == Shape::hostile) {
    make_hostile(random, fd);
  }
  for (int i = 0; i < 4; ++i) {
    product.values.push_back(kNumbers[random.below(static_cast<int>(std::size(kNumbers)))]);
    product.values.push_back(kLabels[random.below(static_cast<int>(std::size(kLabels)))]);
    product.values.push_back(kOther[random.below(static_cast<int>(std::size(kOther)))]);
  }
  return product;
}

Point random_point(Random& random, const FlowData& fd, bool hostile) {
  Point point{};
  if (random.one_in(3)) {
    point.qv = beside(random, table_flow(random, fd));
  } else {
    point.qv = random.logarithmic(0.3F, 3.0F) * (random.one_in(2) ? fd.qvmin : fd.qvmax);
  }
  if (random.one_in(3)) {
    point.dp = beside(random, table_pressure(random, fd, point.qv));
  } else {
    point.dp = random.logarithmic(0.3F, 3.0F) * (random.one_in(2) ? fd.dpmin : fd.dpmax);
  }
  const int damper = std::clamp<int>(fd.ndamper, 1, TAVD_DAMPER_ROWS);
  const float pos_a = fd.damper[0].pos;
  const float pos_b = fd.damper[damper - 1].pos;
  point.pos = random.one_in(3) ? beside(random, fd.damper[random.below(damper)].pos)
                               : random.uniform(std::min(pos_a, pos_b) - 1.0F, std::max(pos_a, pos_b) + 1.0F);
  if (random.one_in(hostile ? 10 : 200)) {
    float* const numbers[] = {&point.qv, &point.dp, &point.pos};
    *numbers[random.below(3)] = nonsense(random);
  }
  point.duct.shape = static_cast<std::int16_t>(random.one_in(10) ? random.between(-1, 3) : random.below(2));
  point.duct.b =
      static_cast<std::int16_t>(random.one_in(10) ? random.between(-32768, 32767) : random.between(0, 1500));
  point.duct.h =
      static_cast<std::int16_t>(random.one_in(10) ? random.between(-32768, 32767) : random.between(0, 1500));
  return point;
}

}  // namespace reference
