// Calculated points as JSON, written as they come.
#include <cmath>
#include <string_view>

#include "answers/sweep_rows.h"
#include "base/json_text.h"
#include "base/numbers.h"
#include "base/text.h"

namespace tavdhost {
namespace {

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
    append_whole(out_, value);
  }
  void text(std::string_view key, std::string_view value) {
    member(key);
    out_ += json_quoted(value);
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
      append_shortest(out_, value);
    } else {
      out_ += "null";
    }
  }
  std::string& out_;
  bool first_ = true;
};

class JsonRows : public SweepRows {
 public:
  JsonRows(bool names_product, const AnswerForm& form);
  void begin(std::string& out) override { out += '['; }
  void add(std::string& out, const Chosen& chosen, const OperatingPoint& point) override;
  void end(std::string& out) override { out += "\n]\n"; }

 private:
  // Keys of pressures, made once: rows are many.
  struct Keys {
    std::string dp, min, max, total, fan_static, dynamic;
  };

  void put_pressure(Object& json, std::string_view key, float value) const {
    json.number(key, shown(value, *form_.units.pressure));
  }
  void add_operating_point(Object& json, const FlowData& flow, const OperatingPoint& point) const;
  void add_range(Object& json, const OperatingPoint& point) const;
  void add_damper(Object& json, std::string_view key, const std::optional<DamperAnswer>& answer) const;
  void add_fan(Object& json, const std::optional<FanAnswer>& answer) const;
  static void add_sound(Object& json, const OperatingPoint& point);

  bool names_product_;
  AnswerForm form_;
  Keys keys_;
  std::string qv_, v_;
  bool first_ = true;
};

JsonRows::JsonRows(bool names_product, const AnswerForm& form)
    : names_product_(names_product),
      form_(form),
      keys_{pressure_key("", form.units),        pressure_key("_min", form.units),
            pressure_key("_max", form.units),    pressure_key("_total", form.units),
            pressure_key("_static", form.units), pressure_key("_dynamic", form.units)},
      qv_(std::string("qv_") + form.units.flow->key),
      v_(std::string("v_") + form.units.velocity->key) {}

void JsonRows::add_operating_point(Object& json, const FlowData& flow, const OperatingPoint& point) const {
  Object at = json.object("operating_point");
  at.number(flow.isvelocity != 0 ? v_ : qv_, shown(point.qv, form_.units.flow_of(flow)));
  if (point.dp) put_pressure(at, keys_.dp, *point.dp);
  at.flag("flow_in_range", point.flow_in_range);
  if (point.dp_in_range) at.flag("dp_in_range", *point.dp_in_range);
  if (point.reachable) at.flag("reachable", *point.reachable);
}

void JsonRows::add_range(Object& json, const OperatingPoint& point) const {
  Object range = json.object("pressure_range");
  range.code(point.range_code);
  if (point.range_code != 0) return;
  put_pressure(range, keys_.min, point.dp_min);
  put_pressure(range, keys_.max, point.dp_max);
}

void JsonRows::add_damper(Object& json, std::string_view key,
                          const std::optional<DamperAnswer>& answer) const {
  if (!answer) return;
  Object damper = json.object(key);
  damper.code(answer->code);
  if (!answer->has_position()) return;
  damper.number("position", answer->position);
  put_pressure(damper, keys_.dp, answer->dp);
}

void JsonRows::add_fan(Object& json, const std::optional<FanAnswer>& answer) const {
  if (!answer) return;
  Object fan = json.object("fan");
  fan.code(answer->code);
  put_pressure(fan, keys_.total, answer->total);
  put_pressure(fan, keys_.fan_static, answer->fan_static);
  put_pressure(fan, keys_.dynamic, answer->dynamic);
  if (answer->check_code) fan.object("check").code(*answer->check_code);
}

void JsonRows::add_sound(Object& json, const OperatingPoint& point) {
  if (!point.sound) return;
  Object sound = json.object("sound");
  sound.code(point.sound->code);
  if (point.sound->code != 0) return;
  sound.bands("lw_dB", point.sound->lw);
  sound.number("lw_dBA", point.sound->lw_A);
  sound.number("room_level_dBA", point.sound->room_level);
  if (point.reachable) sound.flag("reachable", *point.reachable);
}

void JsonRows::add(std::string& out, const Chosen& chosen, const OperatingPoint& point) {
  out += first_ ? "\n" : ",\n";
  first_ = false;
  const Product& product = chosen.product;
  Object json(out);
  if (names_product_) {
    json.text("class", printable(product.key.class_id));
    json.text("id", printable(product.key.object_id));
  }
  add_operating_point(json, product.flow, point);
  add_range(json, point);
  add_damper(json, "position_stepless", point.stepless);
  add_damper(json, "position_stepped", point.stepped);
  add_fan(json, point.fan);
  add_sound(json, point);
  if (point.attenuation) json.bands("attenuation_dB", *point.attenuation);
  if (point.throw_length) json.number("throw_length_m", *point.throw_length);
}

}  // namespace

std::unique_ptr<SweepRows> json_rows(bool names_product, const AnswerForm& form) {
  return std::make_unique<JsonRows>(names_product, form);
}

}  // namespace tavdhost
