#include "sheet/contents.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <string_view>

#include "base/numbers.h"
#include "base/text.h"
#include "drawing/description.h"
#include "shared/kinds.h"
#include "sheet/notes.h"

namespace tavdhost {
namespace {

constexpr int kLevelDecimals = 1;   // dB
constexpr int kLengthDecimals = 2;  // m
constexpr int kPositionDecimals = 2;
constexpr const char* kIndent = "\u2003";  // in front of what belongs to the line above

// Lines of a table, with the signs of a language.
class Lines {
 public:
  explicit Lines(const SheetForm& form) : texts_(*form.texts), form_(form) {}

  void text(std::string_view name, std::string value, std::string remark = "") {
    lines_.push_back({std::string(name), std::move(value), "", std::move(remark)});
  }
  void number(std::string_view name, const std::string& value, std::string unit,
              std::string_view remark = "") {
    lines_.push_back({std::string(name), localized(texts_, value), std::move(unit), std::string(remark)});
  }
  void pressure(std::string_view name, float value, std::string_view remark = "") {
    const hosts::Unit& unit = *form_.units.pressure;
    number(name, fixed(shown(value, unit), unit.decimals), unit_sign(texts_, unit), remark);
  }
  void level(std::string_view name, float value, const char* unit) {
    number(name, fixed(value, kLevelDecimals), unit_sign(texts_, unit));
  }
  std::vector<SheetLine> take() { return std::move(lines_); }

 private:
  const SheetTexts& texts_;
  const SheetForm& form_;
  std::vector<SheetLine> lines_;
};

std::string_view kind_in(const SheetTexts& texts, const FlowData& flow) {
  const std::string_view text = text_of(texts.kinds, flow.kind);
  return text.empty() ? texts.words.unknown : text;
}

// What a code means; one that the language has no words for is a fault of the data, told by its number.
std::string code_in(const SheetTexts& texts, std::span<const NumberedText> codes, int code) {
  const std::string_view text = text_of(codes, code);
  if (!text.empty()) return std::string(text);
  return std::string(texts.words.not_calculated) + " (" + std::to_string(code) + ")";
}

std::vector<SheetLine> product_lines(const Product& product, const SheetForm& form) {
  const SheetTexts& texts = *form.texts;
  Lines lines(form);
  lines.text(texts.words.id, printable(product.key.class_id) + " " + printable(product.key.object_id));
  lines.text(texts.words.kind, std::string(kind_in(texts, product.flow)));
  const std::string size = size_text(product.size);
  if (!size.empty()) lines.number(texts.words.size, size, unit_sign(texts, "mm"));
  lines.text(texts.names.flow_limits, flow_limits_in(form, product.flow));
  lines.text(texts.names.pressure_limits, pressure_limits_in(form, product.flow));
  for (const auto& [name, value] : chosen_parameters(product.flow)) {
    lines.text(filled(texts.names.parameter, printable(name)), localized(texts, printable(value)));
  }
  return lines.take();
}

const char* end_reflection_in(const SheetTexts& texts, EndReflection end_reflection) {
  switch (end_reflection) {
    case EndReflection::kInTable:
      return texts.end_reflection.in_table;
    case EndReflection::kTakenOff:
      return texts.end_reflection.taken_off;
    case EndReflection::kNone:
      break;
  }
  return texts.end_reflection.none;
}

std::vector<SheetLine> duty_lines(const SheetSubject& subject, const SheetForm& form) {
  const SheetTexts& texts = *form.texts;
  const FlowData& flow = subject.chosen.product.flow;
  Lines lines(form);
  const hosts::Unit& unit = form.units.flow_of(flow);
  lines.number(flow.isvelocity != 0 ? texts.names.velocity : texts.names.flow,
               brief(shown(subject.point.qv, unit)), unit_sign(texts, unit));
  if (subject.point.dp) {
    const hosts::Unit& pressure = *form.units.pressure;
    lines.number(texts.names.pressure, brief(shown(*subject.point.dp, pressure)), unit_sign(texts, pressure));
  }
  if (subject.point.sound) {
    lines.level(texts.names.room_damping, form.room_damping, "dB");
    lines.text(texts.names.end_reflection, end_reflection_in(texts, subject.chosen.end_reflection));
  }
  return lines.take();
}

void add_range(Lines& lines, const OperatingPoint& point, const SheetTexts& texts) {
  if (point.range_code != 0) {
    lines.text(texts.names.pressure, "–", code_in(texts, texts.range_codes, point.range_code));
    return;
  }
  lines.pressure(texts.answers.lowest_pressure, point.dp_min);
  lines.pressure(texts.answers.highest_pressure, point.dp_max);
}

void add_damper(Lines& lines, const char* name, const std::optional<DamperAnswer>& answer,
                const SheetTexts& texts) {
  if (!answer) return;
  const bool known = answer->has_position();
  lines.number(name, known ? fixed(answer->position, kPositionDecimals) : "–", "",
               code_in(texts, texts.damper_codes, answer->code));
  if (known) lines.pressure(kIndent + std::string(texts.answers.pressure_there), answer->dp);
}

void add_fan(Lines& lines, const std::optional<FanAnswer>& fan, const SheetTexts& texts) {
  if (!fan) return;
  lines.pressure(texts.answers.fan_total, fan->total, code_in(texts, texts.fan_codes, fan->code));
  lines.pressure(texts.answers.fan_static, fan->fan_static);
  lines.pressure(texts.answers.fan_dynamic, fan->dynamic);
  if (fan->check_code) {
    lines.text(texts.answers.fan_point, code_in(texts, texts.check_codes, *fan->check_code));
  }
}

void add_sound(Lines& lines, const std::optional<SoundAnswer>& sound, const SheetTexts& texts) {
  if (!sound) return;
  if (sound->code != 0) {
    lines.text(texts.answers.sound_power, "–", code_in(texts, texts.sound_codes, sound->code));
    return;
  }
  lines.level(texts.answers.sound_power, sound->lw_A, "dB(A)");
  lines.level(texts.answers.room_level, sound->room_level, "dB(A)");
}

std::vector<SheetLine> answer_lines(const OperatingPoint& point, const SheetForm& form) {
  const SheetTexts& texts = *form.texts;
  Lines lines(form);
  add_range(lines, point, texts);
  add_damper(lines, texts.answers.position, point.stepless, texts);
  add_damper(lines, texts.answers.setting, point.stepped, texts);
  add_fan(lines, point.fan, texts);
  if (point.throw_length) {
    lines.number(texts.answers.throw_length, fixed(*point.throw_length, kLengthDecimals),
                 unit_sign(texts, "m"));
  }
  add_sound(lines, point.sound, texts);
  return lines.take();
}

void add_summary(std::string& text, const std::vector<SheetLine>& lines) {
  for (const SheetLine& line : lines) {
    text += text.empty() ? "" : "; ";
    text += line.name + ": " + line.value;
    if (!line.unit.empty()) text += " " + line.unit;
    if (!line.remark.empty()) text += ", " + line.remark;
  }
}

}  // namespace

SheetContents sheet_contents(const SheetSubject& subject, const SheetForm& form) {
  const Product& product = subject.chosen.product;
  SheetContents contents;
  contents.code = name_of(product);
  contents.description = product.description;
  contents.product = product_lines(product, form);
  contents.duty = duty_lines(subject, form);
  contents.answers = answer_lines(subject.point, form);
  if (subject.point.sound && subject.point.sound->code == 0) {
    contents.sound_power = subject.point.sound->lw;
    contents.sound_power_A = subject.point.sound->lw_A;
    contents.room_level = subject.point.sound->room_level;
  }
  contents.attenuation = subject.point.attenuation;
  contents.notes = sheet_notes(subject, form);
  return contents;
}

std::string sheet_summary(const SheetContents& contents) {
  std::string text = contents.description;
  add_summary(text, contents.product);
  add_summary(text, contents.duty);
  add_summary(text, contents.answers);
  return text;
}

}  // namespace tavdhost
