// tavd compare: products side by side at an operating point.
#include <algorithm>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "answers/calculated_json.h"
#include "answers/calculated_text.h"
#include "base/csv.h"
#include "base/json_text.h"
#include "base/numbers.h"
#include "base/text.h"
#include "commands/calculation.h"
#include "commands/commands.h"

namespace tavdhost {
namespace {

using Tell = std::string (*)(const Calculated&, const AnswerForm&);

// What products are compared by; a line that none of them has an answer to is left out.
struct Quantity {
  const char* name;
  const char* unit;  // null: that of pressures
  Tell cell;
};

std::string position_cell(const std::optional<DamperAnswer>& answer) {
  return answer && answer->has_position() ? fixed(answer->position, 2) : "";
}

const SoundAnswer* sound_of(const Calculated& product) {
  const std::optional<SoundAnswer>& sound = product.point.sound;
  return sound && sound->code == 0 ? &*sound : nullptr;
}

bool has_range(const Calculated& product) {
  return product.chosen.product.flow.nhdd != 0 && product.point.range_code == 0;
}

constexpr Quantity kQuantities[] = {
    {"Code", "", [](const Calculated& p, const AnswerForm& /*form*/) { return p.chosen.product.code; }},
    {"Data of", "",
     [](const Calculated& p, const AnswerForm& /*form*/) { return printable(data_of(p.chosen)); }},
    {"Kind", "",
     [](const Calculated& p, const AnswerForm& /*form*/) { return kind_text(p.chosen.product.flow); }},
    {"Size", "mm",
     [](const Calculated& p, const AnswerForm& /*form*/) { return size_text(p.chosen.product.size); }},
    {"Flow", "",
     [](const Calculated& p, const AnswerForm& form) {
       const FlowData& flow = p.chosen.product.flow;
       if (flow.nhdd == 0) return std::string();
       const hosts::Unit& unit = form.units.flow_of(flow);
       return brief(shown(p.point.qv, unit)) + " " + unit.name;
     }},
    {"Flow as typed", "", [](const Calculated& p, const AnswerForm& /*form*/) { return p.typed; }},
    {"Total pressure", nullptr,
     [](const Calculated& p, const AnswerForm& form) {
       return p.point.dp ? pressure_text(*p.point.dp, form) : std::string();
     }},
    {"Flow limits", "",
     [](const Calculated& p, const AnswerForm& form) {
       const FlowData& flow = p.chosen.product.flow;
       return flow.nhdd == 0 ? std::string() : flow_limits_text(flow, form.units);
     }},
    {"Within the flow limits", "",
     [](const Calculated& p, const AnswerForm& /*form*/) {
       if (p.chosen.product.flow.nhdd == 0) return std::string();
       return std::string(p.point.flow_in_range ? "yes" : "no");
     }},
    {"Point can be reached", "",
     [](const Calculated& p, const AnswerForm& /*form*/) {
       return p.point.reachable ? std::string(*p.point.reachable ? "yes" : "no") : std::string();
     }},
    {"Lowest pressure", nullptr,
     [](const Calculated& p, const AnswerForm& form) {
       return has_range(p) ? pressure_text(p.point.dp_min, form) : std::string();
     }},
    {"Highest pressure", nullptr,
     [](const Calculated& p, const AnswerForm& form) {
       return has_range(p) ? pressure_text(p.point.dp_max, form) : std::string();
     }},
    {"Position, stepless", "",
     [](const Calculated& p, const AnswerForm& /*form*/) { return position_cell(p.point.stepless); }},
    {"Position, stepped", "",
     [](const Calculated& p, const AnswerForm& /*form*/) { return position_cell(p.point.stepped); }},
    {"Fan, total pressure", nullptr,
     [](const Calculated& p, const AnswerForm& form) {
       return p.point.fan ? pressure_text(p.point.fan->total, form) : std::string();
     }},
    {"Throw length", "m",
     [](const Calculated& p, const AnswerForm& /*form*/) {
       return p.point.throw_length ? length_text(*p.point.throw_length) : std::string();
     }},
    {"Sound power, A-weighted", "dB(A)",
     [](const Calculated& p, const AnswerForm& /*form*/) {
       return sound_of(p) != nullptr ? level_text(sound_of(p)->lw_A) : std::string();
     }},
    {"Sound level in the room", "dB(A)",
     [](const Calculated& p, const AnswerForm& /*form*/) {
       return sound_of(p) != nullptr ? level_text(sound_of(p)->room_level) : std::string();
     }},
    {"End reflection", "",
     [](const Calculated& p, const AnswerForm& /*form*/) {
       return sound_of(p) != nullptr ? std::string(end_reflection_word(p.chosen.end_reflection))
                                     : std::string();
     }},
};

using Table = std::vector<std::vector<std::string>>;

std::string band_name(const char* what, std::size_t band) {
  return std::string(what) + ", " + std::to_string(kBandHz[band]) + " Hz";
}

// A line per band, of `bands`, which tells null where a product has none.
template <typename BandsOf>
void add_bands(Table& table, const std::vector<Calculated>& products, const char* what, BandsOf bands_of) {
  for (std::size_t band = 0; band < TAVD_BANDS; ++band) {
    std::vector<std::string> line{band_name(what, band), "dB"};
    for (const Calculated& product : products) {
      const Bands* bands = bands_of(product);
      line.push_back(bands == nullptr ? "" : level_text((*bands)[band]));
    }
    table.push_back(std::move(line));
  }
}

// Heading, and the lines that any product has an answer to: name, unit, products.
Table table_of(const std::vector<Calculated>& products, const AnswerForm& form) {
  Table table{{"QUANTITY", "UNIT"}};
  for (const Calculated& product : products) {
    table.front().push_back(printable(product.chosen.product.key.object_id));
  }
  for (const Quantity& quantity : kQuantities) {
    std::vector<std::string> line{quantity.name,
                                  quantity.unit != nullptr ? quantity.unit : form.units.pressure->name};
    for (const Calculated& product : products) line.push_back(quantity.cell(product, form));
    table.push_back(std::move(line));
  }
  add_bands(table, products, "Sound power", [](const Calculated& product) {
    const SoundAnswer* sound = sound_of(product);
    return sound == nullptr ? nullptr : &sound->lw;
  });
  add_bands(table, products, "Attenuation", [](const Calculated& product) {
    return product.point.attenuation ? &*product.point.attenuation : nullptr;
  });
  std::erase_if(table, [](const std::vector<std::string>& line) {
    return std::all_of(line.begin() + 2, line.end(), [](const std::string& cell) { return cell.empty(); });
  });
  return table;
}

void print_compared(const Table& table) {
  Columns columns;
  for (std::vector<std::string> line : table) {
    for (std::string& cell : line) cell = cell.empty() && &cell != &line[1] ? "-" : cell;
    columns.add(std::move(line));
  }
  for (std::size_t column = 2; column < table.front().size(); ++column) columns.align_right(column);
  columns.print(std::cout);
}

void print_compared_csv(const Table& table) {
  std::string text;
  for (const std::vector<std::string>& cells : table) {
    CsvLine line(text);
    for (const std::string& cell : cells) line.text(cell);
    line.end();
  }
  std::cout << text;
}

void run_compare(const PointOptions& options) {
  const AnswerForm form = answer_form(options);
  const CalculatedProducts answers = calculate(options, form);
  const std::vector<Calculated>& products = answers.products;
  if (options.json) {
    Json::Value list(Json::arrayValue);
    for (const Calculated& product : products) list.append(calculated_json(product, form));
    write_json(std::cout, list);
  } else if (options.csv) {
    print_compared_csv(table_of(products, form));
  } else {
    print_compared(table_of(products, form));
  }
}

}  // namespace

void add_compare_command(CLI::App& app) {
  auto options = std::make_shared<PointOptions>();
  CLI::App* command = app.add_subcommand("compare", "Puts products side by side at an operating point");
  add_point_options(*command, *options, "The same table, comma-separated", "As tavd calc --json answers");
  command->footer("Example: tavd compare catalogue.tavdb DMP QZDA-160 QZDA-200 --qv 80 --dp 60");
  command->callback([options] { run_compare(*options); });
}

}  // namespace tavdhost
