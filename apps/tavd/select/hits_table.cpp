// Products that fit, as a table for reading.
#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "base/numbers.h"
#include "base/text.h"
#include "select/hits.h"
#include "shared/codes.h"
#include "shared/kinds.h"

namespace tavdhost {
namespace {

std::string number_text(float value, const hosts::Unit& unit) {
  return brief(shown(value, unit)) + " " + unit.name;
}

std::string window_text(float low, float high, const char* unit) {
  if (high == 0) return "at least " + brief(low) + " " + unit;
  if (low == 0) return "at most " + brief(high) + " " + unit;
  return brief(low) + " to " + brief(high) + " " + unit;
}

// "80 l/s, 70 Pa, at most 30 dB(A) in the room".
std::string request_text(const tavdn_duty& duty, const ShownUnits& units) {
  std::string text =
      number_text(static_cast<float>(duty.qv), *units.flow) + ", " + number_text(duty.dp, *units.pressure);
  if (duty.dp_lowest != 0) text += ", taking at least " + number_text(duty.dp_lowest, *units.pressure);
  if (duty.lp_max != 0) text += ", at most " + brief(duty.lp_max) + " dB(A) in the room";
  if (duty.throw_min != 0 || duty.throw_max != 0) {
    text += ", throw " + window_text(duty.throw_min, duty.throw_max, "m");
  }
  return text;
}

std::string position_text(const ShownHit& shown_hit) {
  const tavdn_hit& hit = shown_hit.hit;
  return hosts::is_damper(shown_hit.flow) && hosts::has_position(hit.position_code) ? fixed(hit.position, 2)
                                                                                    : "";
}

std::vector<std::string> row_of(std::size_t rank, const ShownHit& shown_hit, const ShownUnits& units) {
  const tavdn_hit& hit = shown_hit.hit;
  const hosts::Unit& flow_unit = units.flow_of(shown_hit.flow);
  const hosts::HitTexts texts = hosts::hit_texts(hit, shown_hit.flow, flow_unit, *units.pressure);
  return {std::to_string(rank),     shown_hit.class_id,
          shown_hit.object_id,      shown_hit.size,
          shown_hit.parameters,     texts.flow + " " + flow_unit.name,
          position_text(shown_hit), texts.pressure,
          texts.lowest_pressure,    texts.level,
          texts.throw_length,       fixed(hit.fit, 2),
          shown_hit.description};
}

// A column without anything in it is left out.
void print_rows(std::ostream& out, std::vector<std::vector<std::string>> rows) {
  constexpr std::array<std::size_t, 8> kNumbers = {0, 5, 6, 7, 8, 9, 10, 11};
  for (std::size_t column = rows.front().size(); column-- > 0;) {
    const bool is_empty =
        std::all_of(rows.begin() + 1, rows.end(), [&](const auto& row) { return row[column].empty(); });
    if (!is_empty) continue;
    rows.front()[column].clear();
  }
  Columns columns;
  std::size_t place = 0;
  for (std::size_t column = 0; column < rows.front().size(); ++column) {
    if (rows.front()[column].empty()) continue;
    if (std::ranges::find(kNumbers, column) != kNumbers.end()) columns.align_right(place);
    ++place;
  }
  for (const std::vector<std::string>& row : rows) {
    std::vector<std::string> kept;
    for (std::size_t column = 0; column < row.size(); ++column) {
      if (!rows.front()[column].empty()) kept.push_back(row[column]);
    }
    columns.add(kept);
  }
  columns.print(out);
}

void print_reasons(std::ostream& out, const tavdn_catalogue* catalogue, const Selected& selected) {
  Columns columns;
  for (std::size_t i = 0; i < selected.reasons.size(); ++i) {
    if (selected.reasons[i] == TAVDN_WHY_FITS) continue;
    const tavdn_listed& listed = *tavdn_catalogue_product(catalogue, i);
    columns.add({printable(listed.class_id), printable(listed.object_id), reason_text(selected.reasons[i])});
  }
  out << "\nWhy not the others\n";
  columns.print(out);
}

// How many products each reason excludes, in the order of the conditions.
void print_counts(std::ostream& out, const Selected& selected) {
  std::array<std::size_t, TAVDN_WHY_COUNT> counts{};
  for (const unsigned char reason : selected.reasons) ++counts[reason];
  Columns columns;
  columns.align_right(0);
  for (std::size_t reason = TAVDN_WHY_FITS + 1; reason < counts.size(); ++reason) {
    if (counts[reason] == 0) continue;
    columns.add({std::to_string(counts[reason]), reason_text(static_cast<int>(reason))});
  }
  columns.print(out);
}

}  // namespace

void print_hits(std::ostream& out, const SelectCatalogue& catalogue, const Request& request,
                const Selected& selected, bool explain, const ShownUnits& units) {
  const std::size_t all = catalogue.count();
  out << request_text(request.duty, units) << ": " << hosts::fitting_text(selected.products, all) << "\n";
  if (!selected.hits.empty()) {
    const std::string pressure = std::string(" ") + units.pressure->name;
    std::vector<std::vector<std::string>> rows = {{"RANK", "CLASS", "ID", "SIZE mm", "PARAMETERS", "FLOW",
                                                   "POSITION", "PRESSURE" + pressure, "LOWEST" + pressure,
                                                   "ROOM dB(A)", "THROW m", "FIT", "DESCRIPTION"}};
    for (const tavdn_hit& hit : selected.hits) {
      rows.push_back(row_of(rows.size(), ShownHit(catalogue.get(), hit), units));
    }
    print_rows(out, std::move(rows));
  }
  if (explain && selected.products < all) {
    print_reasons(out, catalogue.get(), selected);
  } else if (selected.hits.empty()) {
    print_counts(out, selected);
  }
}

}  // namespace tavdhost
