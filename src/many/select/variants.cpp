#include "many/select/variants.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

#include "calc/numeric.h"
#include "tavd/tavca.h"

namespace tavd {
namespace {

std::string value_of(const ParEntry& row) {
  return {row.value, strnlen(row.value, sizeof row.value)};
}

bool is_number(const std::string& value) {
  float number = 0;
  return tavca_param_valuetoreal(value.c_str(), &number) == TAVCA_OK;
}

// Numbers may lie between the rows of a table of numbers; any other value must be one of the rows.
// tavca_param_setvalue quietly takes the first row for a value that it does not find.
bool table_has(const ParTable& table, const std::string& value) {
  const ParEntry* const end = table.table + row_count(table.count, TAVD_PARAMETER_ROWS);
  const bool numbers =
      std::all_of(table.table, end, [](const ParEntry& row) { return is_number(value_of(row)); });
  if (numbers && is_number(value)) return true;
  return std::any_of(table.table, end, [&](const ParEntry& row) {
    return tavca_param_valuecmp(value_of(row).c_str(), value.c_str()) == 0;
  });
}

// The table that a name chooses in: the one whose value changes with it. Null if there is none.
ParTable* chosen_table(FlowData& fd, const char* name) {
  for (int i = 0; i < std::clamp<int>(fd.npar, 0, TAVD_PARAMETERS); ++i) {
    FlowData alone = fd;
    alone.npar = 1;
    alone.par[0] = fd.par[i];
    if (tavca_param_setvalue(&alone, name, nullptr) == TAVCA_OK) return &fd.par[i];
  }
  return nullptr;
}

// All records that a set makes of one; none if a table does not have a value.
std::vector<FlowData> chosen_records(const FlowData& loaded, const WantedValues& wanted) {
  std::vector<FlowData> records = {loaded};
  for (const WantedValue& value : wanted) {
    const ParTable* const table = chosen_table(records.front(), value.name.c_str());
    if (table == nullptr) continue;
    std::vector<std::string> values = {value.value};
    if (value.is_free) {
      values.clear();
      const int rows = row_count(table->count, TAVD_PARAMETER_ROWS);
      for (int i = 0; i < rows; ++i) values.push_back(value_of(table->table[i]));
    } else if (!value.value.empty() && !table_has(*table, value.value)) {
      return {};
    }
    std::vector<FlowData> chosen;
    chosen.reserve(records.size() * values.size());
    for (const FlowData& record : records) {
      for (const std::string& one : values) {
        tavca_param_setvalue(&chosen.emplace_back(record), value.name.c_str(), one.c_str());
      }
    }
    records = std::move(chosen);
    if (records.empty()) return {};
  }
  return records;
}

// Records of the same load differ in nothing but what is chosen, so the same choice is the same bytes.
std::string_view bytes_of(const FlowData& fd) {
  return {reinterpret_cast<const char*>(&fd), sizeof fd};
}

std::uint32_t variant_of(const FlowData& fd, Candidate& candidate) {
  const auto same = [&](const std::unique_ptr<const tavdn_product>& product) {
    return bytes_of(product->fd) == bytes_of(fd);
  };
  auto found = std::find_if(candidate.variants.begin(), candidate.variants.end(), same);
  if (found == candidate.variants.end()) {
    candidate.variants.push_back(std::make_unique<const tavdn_product>(fd, &candidate.listed.duct));
    found = candidate.variants.end() - 1;
  }
  return static_cast<std::uint32_t>(found - candidate.variants.begin());
}

}  // namespace

void prepare_variants(const FlowData& loaded, const std::vector<WantedValues>& sets, Candidate& candidate) {
  for (const WantedValues& wanted : sets) {
    const auto first = static_cast<std::uint32_t>(candidate.choices.size());
    for (const FlowData& record : chosen_records(loaded, wanted)) {
      candidate.choices.push_back(variant_of(record, candidate));
    }
    candidate.of_set.push_back({first, static_cast<std::uint32_t>(candidate.choices.size()) - first});
  }
  if (candidate.variants.empty()) variant_of(loaded, candidate);
  candidate.listed.variants = static_cast<std::int32_t>(candidate.variants.size());
}

}  // namespace tavd
