#include "commands/sweep_rows.h"

#include <charconv>
#include <cmath>
#include <string_view>
#include <vector>

namespace tavdhost {
namespace {

constexpr const char* kBandNames[TAVD_BANDS] = {"63", "125", "250", "500", "1000", "2000", "4000", "8000"};
constexpr std::size_t kNumberChars = 32;  // more than the shortest digits of any float or int take

template <typename Number>
void append_number(std::string& out, Number value) {
  char text[kNumberChars];
  const auto result = std::to_chars(text, text + sizeof text, value);
  out.append(text, result.ptr);
}

// ---- CSV -------------------------------------------------------------------

// One line; every cell but the first has a comma before it.
class Line {
 public:
  explicit Line(std::string& out) : out_(out) {}
  void number(float value) {
    separate();
    if (std::isfinite(value)) append_number(out_, value);
  }
  void code(int value) {
    separate();
    append_number(out_, value);
  }
  void empty() { separate(); }
  void name(std::string_view text) {
    separate();
    out_ += text;
  }
  void end() { out_ += '\n'; }

 private:
  void separate() {
    if (!first_) out_ += ',';
    first_ = false;
  }
  std::string& out_;
  bool first_ = true;
};

void write_bands(Line& line, const Bands* bands) {
  for (std::size_t band = 0; band < TAVD_BANDS; ++band) {
    if (bands == nullptr) {
      line.empty();
    } else {
      line.number((*bands)[band]);
    }
  }
}

void write_damper(Line& line, const DamperAnswer& answer) {
  if (answer.has_position()) {
    line.number(answer.position);
    line.code(answer.code);
    line.number(answer.dp);
  } else {
    line.empty();
    line.code(answer.code);
    line.empty();
  }
}

void write_flow(Line& line, const OperatingPoint& point) {
  line.number(point.qv);
}

void write_dp(Line& line, const OperatingPoint& point) {
  line.number(*point.dp);
}

void write_range(Line& line, const OperatingPoint& point) {
  line.number(point.dp_min);
  line.number(point.dp_max);
}

void write_positions(Line& line, const OperatingPoint& point) {
  write_damper(line, *point.stepless);
  write_damper(line, *point.stepped);
}

void write_fan(Line& line, const OperatingPoint& point) {
  line.number(point.fan->total);
  line.number(point.fan->fan_static);
  line.number(point.fan->dynamic);
  line.code(point.fan->code);
}

void write_fan_check(Line& line, const OperatingPoint& point) {
  line.code(*point.fan->check_code);
}

void write_sound(Line& line, const OperatingPoint& point) {
  const SoundAnswer& sound = *point.sound;
  write_bands(line, sound.code == 0 ? &sound.lw : nullptr);
  line.code(sound.code);
  if (sound.code == 0) {
    line.number(sound.room_level);
  } else {
    line.empty();
  }
}

void write_attenuation(Line& line, const OperatingPoint& point) {
  write_bands(line, &*point.attenuation);
}

void write_throw(Line& line, const OperatingPoint& point) {
  if (point.throw_length) {
    line.number(*point.throw_length);
  } else {
    line.empty();
  }
}

class CsvRows : public SweepRows {
 public:
  CsvRows(const Product& product, const Answers& answers, bool with_dp);
  void begin(std::string& out) override {
    Line line(out);
    for (const std::string& name : names_) line.name(name);
    line.end();
  }
  void add(std::string& out, const OperatingPoint& point) override {
    Line line(out);
    for (const Write write : writers_) write(line, point);
    line.end();
  }
  void end(std::string& /*out*/) override {}

 private:
  using Write = void (*)(Line&, const OperatingPoint&);

  void group(bool wanted, const std::vector<std::string>& names, Write write) {
    if (!wanted) return;
    names_.insert(names_.end(), names.begin(), names.end());
    writers_.push_back(write);
  }

  std::vector<std::string> names_;
  std::vector<Write> writers_;
};

std::vector<std::string> band_columns(const std::string& what) {
  std::vector<std::string> names;
  for (const char* hz : kBandNames) names.push_back(what + "_" + hz + "Hz_dB");
  return names;
}

CsvRows::CsvRows(const Product& product, const Answers& answers, bool with_dp) {
  group(true, {flow_key(product.flow)}, write_flow);
  group(with_dp, {"dp_Pa"}, write_dp);
  group(answers.range, {"dp_min_Pa", "dp_max_Pa"}, write_range);
  group(answers.position,
        {"position_stepless", "position_stepless_code", "position_stepless_dp_Pa", "position_stepped",
         "position_stepped_code", "position_stepped_dp_Pa"},
        write_positions);
  group(answers.fan, {"fan_dp_total_Pa", "fan_dp_static_Pa", "fan_dp_dynamic_Pa", "fan_code"}, write_fan);
  group(answers.fan_check, {"fan_check_code"}, write_fan_check);
  std::vector<std::string> sound = band_columns("lw");
  sound.insert(sound.end(), {"lw_code", "room_level_dBA"});
  group(answers.sound, sound, write_sound);
  group(answers.attenuation, band_columns("attenuation"), write_attenuation);
  group(answers.throw_length, {"throw_length_m"}, write_throw);
}

// ---- JSON ------------------------------------------------------------------

// One object. Members stand in the order of the calls; keys need no escapes.
class Object {
 public:
  explicit Object(std::string& out) : out_(out) { out_ += '{'; }
  ~Object() { out_ += '}'; }
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;

  void number(std::string_view key, float value) {
    member(key);
    append(value);
  }
  void code(int value) {
    member("code");
    append_number(out_, value);
  }
  void flag(std::string_view key, bool value) {
    member(key);
    out_ += value ? "true" : "false";
  }
  void bands(std::string_view key, const Bands& bands) {
    member(key);
    for (std::size_t band = 0; band < TAVD_BANDS; ++band) {
      out_ += band == 0 ? '[' : ',';
      append(bands[band]);
    }
    out_ += ']';
  }
  // To be filled while it lives, and ended before this object goes on.
  Object object(std::string_view key) {
    member(key);
    return Object(out_);
  }

 private:
  void member(std::string_view key) {
    if (!first_) out_ += ',';
    first_ = false;
    out_ += '"';
    out_ += key;
    out_ += "\":";
  }
  void append(float value) {
    if (std::isfinite(value)) {
      append_number(out_, value);
    } else {
      out_ += "null";
    }
  }
  std::string& out_;
  bool first_ = true;
};

void add_range(Object& json, const OperatingPoint& point) {
  Object range = json.object("pressure_range");
  range.code(point.range_code);
  if (point.range_code != 0) return;
  range.number("dp_min_Pa", point.dp_min);
  range.number("dp_max_Pa", point.dp_max);
}

void add_damper(Object& json, std::string_view key, const std::optional<DamperAnswer>& answer) {
  if (!answer) return;
  Object damper = json.object(key);
  damper.code(answer->code);
  if (!answer->has_position()) return;
  damper.number("position", answer->position);
  damper.number("dp_Pa", answer->dp);
}

void add_fan(Object& json, const std::optional<FanAnswer>& answer) {
  if (!answer) return;
  Object fan = json.object("fan");
  fan.code(answer->code);
  fan.number("dp_total_Pa", answer->total);
  fan.number("dp_static_Pa", answer->fan_static);
  fan.number("dp_dynamic_Pa", answer->dynamic);
  if (answer->check_code) fan.object("check").code(*answer->check_code);
}

void add_sound(Object& json, const std::optional<SoundAnswer>& answer) {
  if (!answer) return;
  Object sound = json.object("sound");
  sound.code(answer->code);
  if (answer->code != 0) return;
  sound.bands("lw_dB", answer->lw);
  sound.number("room_level_dBA", answer->room_level);
}

class JsonRows : public SweepRows {
 public:
  explicit JsonRows(const Product& product) : flow_key_(flow_key(product.flow)) {}
  void begin(std::string& out) override { out += '['; }
  void add(std::string& out, const OperatingPoint& point) override;
  void end(std::string& out) override { out += "\n]\n"; }

 private:
  void add_operating_point(Object& json, const OperatingPoint& point) const;

  std::string flow_key_;
  bool first_ = true;
};

void JsonRows::add_operating_point(Object& json, const OperatingPoint& point) const {
  Object at = json.object("operating_point");
  at.number(flow_key_, point.qv);
  if (point.dp) at.number("dp_Pa", *point.dp);
  at.flag("flow_in_range", point.flow_in_range);
  if (point.dp_in_range) at.flag("dp_in_range", *point.dp_in_range);
}

void JsonRows::add(std::string& out, const OperatingPoint& point) {
  out += first_ ? "\n" : ",\n";
  first_ = false;
  Object json(out);
  add_operating_point(json, point);
  add_range(json, point);
  add_damper(json, "position_stepless", point.stepless);
  add_damper(json, "position_stepped", point.stepped);
  add_fan(json, point.fan);
  add_sound(json, point.sound);
  if (point.attenuation) json.bands("attenuation_dB", *point.attenuation);
  if (point.throw_length) json.number("throw_length_m", *point.throw_length);
}

}  // namespace

std::unique_ptr<SweepRows> csv_rows(const Product& product, const Answers& answers, bool with_dp) {
  return std::make_unique<CsvRows>(product, answers, with_dp);
}

std::unique_ptr<SweepRows> json_rows(const Product& product) {
  return std::make_unique<JsonRows>(product);
}

}  // namespace tavdhost
