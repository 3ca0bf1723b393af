#include "model/selection.h"

#include <algorithm>
#include <cmath>
#include <cwctype>
#include <new>

#include "model/product.h"
#include "shared/numbers.h"
#include "shared/selection.h"
#include "tavd/tavdsrv.h"

namespace viewer {
namespace {

std::wstring refusal(const wchar_t* name, const std::wstring& text, const std::string& expected) {
  return std::wstring(name) + L" is \"" + text + L"\", expected " + wide(expected) + L'.';
}

// In base units; `unit` is one of what is typed in them.
double above_zero(DutyField field, const wchar_t* name, const std::wstring& text, double unit = 1) {
  const double base = parsed(text).value_or(0) * unit;
  if (!(static_cast<float>(base) > 0)) {
    throw FieldError(field, refusal(name, text, hosts::kExpectedAboveZero));
  }
  return base;
}

// It may be below 0, as on the command line.
float decibels(const std::wstring& text) {
  const std::size_t first = text.find_first_not_of(L' ');
  const bool is_below = first != std::wstring::npos && text[first] == L'-';
  const std::optional<double> number = parsed(is_below ? std::wstring_view(text).substr(first + 1) : text);
  if (!number) {
    throw FieldError(DutyField::kDamping, refusal(L"Room damping", text, hosts::kExpectedDecibels));
  }
  return static_cast<float>(is_below ? -*number : *number);
}

int wanted_hits(const std::wstring& text) {
  const double number = parsed(text).value_or(0);
  if (number < 1 || number > hosts::kMostHits || number != std::floor(number)) {
    throw FieldError(DutyField::kWanted,
                     refusal(L"Answers", text, hosts::expected_whole(1, hosts::kMostHits)));
  }
  return static_cast<int>(number);
}

// But for the class, whose text must stay where it is.
tavdn_duty duty_of(const DutyTexts& texts) {
  if (texts.flow.empty()) throw FieldError(DutyField::kFlow, L"Type a flow.");
  if (texts.pressure.empty()) throw FieldError(DutyField::kPressure, L"Type the pressure that is available.");
  tavdn_duty duty{};
  duty.size = sizeof duty;
  duty.qv = above_zero(DutyField::kFlow, L"Flow", texts.flow, texts.flow_unit->in_base);
  duty.dp = static_cast<float>(
      above_zero(DutyField::kPressure, L"Pressure", texts.pressure, texts.pressure_unit->in_base));
  if (!texts.level.empty()) {
    duty.lp_max = static_cast<float>(above_zero(DutyField::kLevel, L"Highest level", texts.level));
  }
  duty.roomdamp = decibels(texts.damping);
  duty.wanted = wanted_hits(texts.wanted);
  duty.rank = texts.rank;
  return duty;
}

// "14 of 66 products fit, the best 5 are listed.": of those of the class.
std::wstring told(const hosts::Selected& selected) {
  const auto others = std::ranges::count(selected.reasons, TAVDN_WHY_CLASS);
  const std::size_t all = selected.reasons.size() - static_cast<std::size_t>(others);
  std::wstring text = wide(hosts::fitting_text(selected.products, all));
  text.front() = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(text.front())));
  if (selected.products > selected.hits.size()) {
    text += selected.hits.size() == 1
                ? L", the best one is listed"
                : L", the best " + std::to_wstring(selected.hits.size()) + L" are listed";
  }
  if (selected.hits.empty() && all > 0) {
    text += L". Of those that come nearest, " + wide(hosts::nearest_reason(selected.reasons));
  }
  return text + L'.';
}

}  // namespace

std::vector<std::wstring> found_titles(const Unit& pressure_unit) {
  return {L"Rank",         L"Class",   L"Id", L"Size", L"Flow", L"Pressure, " + sign_of(pressure_unit),
          L"Level, dB(A)", L"Throw, m"};
}

// As the results have it: nothing chosen of parameters, and sound levels freed of the duct end reflection.
Catalogue::Catalogue(const Database& database) {
  tavdn_catalogue_options options{};
  options.size = sizeof options;
  options.without_end_reflection = 1;
  tavdn_catalogue* opened = nullptr;
  if (tavdn_catalogue_open(database.handle(), &options, &opened) != TAVDN_OK) throw std::bad_alloc();
  catalogue_.reset(opened);
  const std::wstring reason = wide(tavdsrv_lasterror());
  if (!reason.empty()) throw UserError(L"The products cannot all be read.\n\n" + reason);
}

Selection Catalogue::select(const DutyTexts& texts) const {
  tavdn_duty duty = duty_of(texts);
  const char* const class_id = texts.class_id.c_str();
  duty.classes = &class_id;
  duty.nclasses = texts.class_id.empty() ? 0 : 1;
  if (tavdn_check_duty(catalogue_.get(), &duty) == TAVDN_DUTY_CLASS) {
    throw FieldError(DutyField::kClass,
                     L"Class \"" + wide(texts.class_id) + L"\" has no products with flow data.");
  }
  const hosts::Selected selected = hosts::select_one(catalogue_.get(), duty, true);
  Selection selection{{}, told(selected)};
  for (const tavdn_hit& hit : selected.hits) {
    selection.products.push_back(found(selection.products.size() + 1, hit, texts, duty.roomdamp));
  }
  return selection;
}

Found Catalogue::found(std::size_t rank, const tavdn_hit& hit, const DutyTexts& texts,
                       float room_damping) const {
  const tavdn_listed& listed = *tavdn_catalogue_product(catalogue_.get(), hit.product);
  const FlowData& flow = *tavdn_flowdata(tavdn_catalogue_variant(catalogue_.get(), hit.product, hit.variant));
  const Unit& flow_unit = flow.isvelocity != 0 ? velocity_unit() : *texts.flow_unit;
  const hosts::HitTexts numbers = hosts::hit_texts(hit, flow, flow_unit, *texts.pressure_unit);
  const RecordKey key = {listed.class_id, listed.object_id};
  return {key,
          {hit.qv, hit.dp, room_damping},
          {std::to_wstring(rank), wide(key.class_id), wide(key.object_id), size_text(listed.duct),
           wide(numbers.flow) + L' ' + sign_of(flow_unit), wide(numbers.pressure), wide(numbers.level),
           wide(numbers.throw_length)}};
}

}  // namespace viewer
