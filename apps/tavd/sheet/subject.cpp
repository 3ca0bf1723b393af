#include "sheet/subject.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <system_error>
#include <utility>
#include <vector>

#include "base/paths.h"
#include "base/text.h"
#include "drawing/drawings.h"
#include "product/point_calculator.h"

namespace tavdhost {
namespace {

// Where catalogues and offers tell flows in m3/h.
constexpr const char* kHourlyMarkets[] = {
    "DEU", "AUT", "CHE", "NOR", "FRA", "BEL", "ESP", "ITA", "POL", "DNK", "CZE", "PRT", "HUN", "NLD",
    "EST", "LTU", "LVA", "RUS", "SVK", "BGR", "ROU", "BIH", "HRV", "SVN", "CHN", "JPN", "TUR", "UKR"};

}  // namespace

SheetSubject sheet_subject(const Database& database, ProductChooser& chooser, const RecordKey& key,
                           std::span<const std::string> parameters, const SheetDuty& duty,
                           const SheetForm& form) {
  SheetSubject subject{chooser.choose(key.class_id, key.object_id), {}, {}};
  Product& product = subject.chosen.product;
  refuse_without_flow_data(subject.chosen, database);
  set_parameters(product.flow, {parameters.begin(), parameters.end()});
  settle_end_reflection(subject.chosen, form.without_end_reflection);
  subject.point = calculated_point(product, flow_of(product, duty.qv), duty.dp, form.room_damping);
  const Record record = database.find(key.class_id, key.object_id);
  if (record && has_shape(database, record)) subject.sketch.emplace(database, record, product.flow);
  return subject;
}

ShownUnits units_of_market(const std::string& market) {
  ShownUnits units;
  const bool hourly = std::ranges::any_of(
      kHourlyMarkets, [&](const char* hourly_market) { return same_letters(market, hourly_market); });
  if (hourly) units.flow = hosts::find_unit("m3/h");
  return units;
}

void name_database(const std::string& path, SheetForm& form) {
  const std::filesystem::path file = to_path(path);
  form.database = printable(to_text(file.filename()));
  std::error_code problem;
  const auto changed = std::filesystem::last_write_time(file, problem);
  if (problem) return;
  using std::chrono::floor;
  const auto time = floor<std::chrono::minutes>(std::chrono::file_clock::to_sys(changed));
  const auto day = floor<std::chrono::days>(time);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss clock(time - day);
  std::array<char, 32> text;
  std::snprintf(text.data(), text.size(), "%04d-%02u-%02u %02d:%02d UTC", int{date.year()},
                unsigned{date.month()}, unsigned{date.day()}, static_cast<int>(clock.hours().count()),
                static_cast<int>(clock.minutes().count()));
  form.database_time = text.data();
}

}  // namespace tavdhost
