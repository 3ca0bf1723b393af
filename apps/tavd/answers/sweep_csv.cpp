// Calculated points as comma-separated values.
#include <algorithm>
#include <iterator>
#include <string_view>

#include "answers/sweep_rows.h"
#include "base/csv.h"
#include "base/text.h"

namespace tavdhost {
namespace {

// What a line is written of.
struct Row {
  const Chosen& chosen;
  const OperatingPoint& point;
  const AnswerForm& form;
};

void write_bands(CsvLine& line, const Bands* bands) {
  for (std::size_t band = 0; band < TAVD_BANDS; ++band) {
    if (bands == nullptr) {
      line.empty();
    } else {
      line.number((*bands)[band]);
    }
  }
}

void write_empty(CsvLine& line, int count) {
  for (int i = 0; i < count; ++i) line.empty();
}

void write_pressure(CsvLine& line, const Row& row, float pressure) {
  line.number(shown(pressure, *row.form.units.pressure));
}

void write_product(CsvLine& line, const Row& row) {
  const Product& product = row.chosen.product;
  line.text(printable(product.key.class_id));
  line.text(printable(product.key.object_id));
  line.text(product.code);
  line.text(kind_text(product.flow));
  line.text(size_text(product.size));
  line.text(printable(data_of(row.chosen)));
}

void write_flow(CsvLine& line, const Row& row, bool by_velocity) {
  const FlowData& flow = row.chosen.product.flow;
  if (flow.nhdd == 0 || (flow.isvelocity != 0) != by_velocity) {
    line.empty();
  } else {
    line.number(shown(row.point.qv, row.form.units.flow_of(flow)));
  }
}

void write_qv(CsvLine& line, const Row& row) {
  write_flow(line, row, false);
}

void write_v(CsvLine& line, const Row& row) {
  write_flow(line, row, true);
}

void write_dp(CsvLine& line, const Row& row) {
  if (row.point.dp) {
    write_pressure(line, row, *row.point.dp);
  } else {
    line.empty();
  }
  if (row.point.reachable) {
    line.whole(*row.point.reachable ? 1 : 0);
  } else {
    line.empty();
  }
}

void write_range(CsvLine& line, const Row& row) {
  if (row.point.range_code != 0 || row.chosen.product.flow.nhdd == 0) return write_empty(line, 2);
  write_pressure(line, row, row.point.dp_min);
  write_pressure(line, row, row.point.dp_max);
}

void write_damper(CsvLine& line, const Row& row, const std::optional<DamperAnswer>& answer) {
  if (!answer) return write_empty(line, 3);
  if (answer->has_position()) {
    line.number(answer->position);
    line.whole(answer->code);
    write_pressure(line, row, answer->dp);
  } else {
    line.empty();
    line.whole(answer->code);
    line.empty();
  }
}

void write_positions(CsvLine& line, const Row& row) {
  write_damper(line, row, row.point.stepless);
  write_damper(line, row, row.point.stepped);
}

void write_fan(CsvLine& line, const Row& row) {
  const std::optional<FanAnswer>& fan = row.point.fan;
  if (!fan) return write_empty(line, 4);
  write_pressure(line, row, fan->total);
  write_pressure(line, row, fan->fan_static);
  write_pressure(line, row, fan->dynamic);
  line.whole(fan->code);
}

void write_fan_check(CsvLine& line, const Row& row) {
  if (row.point.fan && row.point.fan->check_code) {
    line.whole(*row.point.fan->check_code);
  } else {
    line.empty();
  }
}

void write_sound(CsvLine& line, const Row& row) {
  const std::optional<SoundAnswer>& sound = row.point.sound;
  const bool known = sound && sound->code == 0;
  write_bands(line, known ? &sound->lw : nullptr);
  if (sound) {
    line.whole(sound->code);
  } else {
    line.empty();
  }
  if (!known) return write_empty(line, 2);
  line.number(sound->lw_A);
  line.number(sound->room_level);
}

void write_attenuation(CsvLine& line, const Row& row) {
  write_bands(line, row.point.attenuation ? &*row.point.attenuation : nullptr);
}

void write_throw(CsvLine& line, const Row& row) {
  if (row.point.throw_length) {
    line.number(*row.point.throw_length);
  } else {
    line.empty();
  }
}

class CsvRows : public SweepRows {
 public:
  CsvRows(const RowColumns& columns, const AnswerForm& form);
  void begin(std::string& out) override {
    CsvLine line(out);
    for (const std::string& name : names_) line.text(name);
    line.end();
  }
  void add(std::string& out, const Chosen& chosen, const OperatingPoint& point) override {
    CsvLine line(out);
    for (const Write write : writers_) write(line, {chosen, point, form_});
    line.end();
  }
  void end(std::string& /*out*/) override {}

 private:
  using Write = void (*)(CsvLine&, const Row&);

  void group(bool wanted, const std::vector<std::string>& names, Write write) {
    if (!wanted) return;
    names_.insert(names_.end(), names.begin(), names.end());
    writers_.push_back(write);
  }
  void add_sound(const Answers& answers);

  AnswerForm form_;
  std::vector<std::string> names_;
  std::vector<Write> writers_;
};

std::vector<std::string> band_columns(const std::string& what) {
  std::vector<std::string> names;
  names.reserve(kBandHz.size());
  for (const int hz : kBandHz) names.push_back(what + "_" + std::to_string(hz) + "Hz_dB");
  return names;
}

CsvRows::CsvRows(const RowColumns& columns, const AnswerForm& form) : form_(form) {
  const Answers& answers = columns.answers;
  const ShownUnits& units = form.units;
  const auto dp = [&](const std::string& before, const char* which) {
    return before + pressure_key(which, units);
  };
  group(columns.names_product, {"class", "id", "code", "kind", "size_mm", "data_of"}, write_product);
  group(columns.by_flow, {std::string("qv_") + units.flow->key}, write_qv);
  group(columns.by_velocity, {std::string("v_") + units.velocity->key}, write_v);
  group(columns.with_dp, {dp("", ""), "reachable"}, write_dp);
  group(answers.range, {dp("", "_min"), dp("", "_max")}, write_range);
  group(answers.position,
        {"position_stepless", "position_stepless_code", dp("position_stepless_", ""), "position_stepped",
         "position_stepped_code", dp("position_stepped_", "")},
        write_positions);
  group(answers.fan, {dp("fan_", "_total"), dp("fan_", "_static"), dp("fan_", "_dynamic"), "fan_code"},
        write_fan);
  group(answers.fan_check, {"fan_check_code"}, write_fan_check);
  add_sound(answers);
  group(answers.throw_length, {"throw_length_m"}, write_throw);
}

void CsvRows::add_sound(const Answers& answers) {
  std::vector<std::string> sound = band_columns("lw");
  sound.insert(sound.end(), {"lw_code", "lw_dBA", "room_level_dBA"});
  group(answers.sound, sound, write_sound);
  group(answers.attenuation, band_columns("attenuation"), write_attenuation);
}

}  // namespace

RowColumns columns_of(const std::vector<const Product*>& products, bool with_dp, bool names_product) {
  RowColumns columns{names_product, false, false, with_dp, {}};
  Answers& all = columns.answers;
  for (const Product* product : products) {
    const Answers one = answers_of(*product, with_dp);
    all = {all.range || one.range,
           all.position || one.position,
           all.fan || one.fan,
           all.fan_check || one.fan_check,
           all.sound || one.sound,
           all.attenuation || one.attenuation,
           all.throw_length || one.throw_length};
    if (product->flow.nhdd == 0) continue;
    bool& measured = product->flow.isvelocity != 0 ? columns.by_velocity : columns.by_flow;
    measured = true;
  }
  return columns;
}

std::unique_ptr<SweepRows> csv_rows(const RowColumns& columns, const AnswerForm& form) {
  return std::make_unique<CsvRows>(columns, form);
}

}  // namespace tavdhost
