// The sheet of diagrams, one product of each kind.
#include <algorithm>
#include <iostream>
#include <set>
#include <string>
#include <vector>

#include "base/errors.h"
#include "drawing/description.h"
#include "drawing/drawings.h"
#include "drawing/levels.h"
#include "drawing/own_drawings.h"
#include "drawing/picture.h"
#include "drawing/units.h"
#include "gallery/gallery.h"

namespace tavdhost {
namespace {

constexpr int kColumns = 3;
constexpr PictureSize kCell = {480, 360};  // pixels

// What a cell of the sheet shows.
struct Choice {
  Record record;
  Product product;
  bool is_throw;
};

// The first product of each kind and the first with throw data. Main records of families come only where the
// family has no member of its own.
std::vector<Choice> choose_cells(const Database& database) {
  std::vector<Choice> cells;
  std::set<int> kinds;
  bool has_throw = false;
  for (const bool main_records : {false, true}) {
    for (Record record = database.first(); record; record = database.next(record)) {
      const RecordKey key = database.key(record);
      if (!hosts::is_product_class(key.class_id) ||
          (key.object_id.find('*') != std::string::npos) != main_records) {
        continue;
      }
      const Product product = load_product(database, record);
      if (product.flow.nhdd == 0) continue;
      const int kind = product.flow.kind;
      if (kinds.insert(kind).second) {
        cells.push_back({database.find(key.class_id, key.object_id), product, false});
      }
      if (!has_throw && has_throw_data(product.flow)) {
        has_throw = true;
        cells.push_back({database.find(key.class_id, key.object_id), product, true});
      }
    }
  }
  std::ranges::stable_sort(cells, [](const Choice& a, const Choice& b) {
    const int kind_a = a.product.flow.kind;
    const int kind_b = b.product.flow.kind;
    return a.is_throw != b.is_throw ? b.is_throw : kind_a < kind_b;
  });
  return cells;
}

// Calls `use` with the diagram of a cell, if the limits of the product make one; whether they do.
template <typename Use>
bool with_diagram(const Database& database, const Choice& cell, Use use) {
  const auto used = [&](auto&& diagram) {
    if (diagram.is_drawable()) use(diagram);
    return diagram.is_drawable();
  };
  if (cell.is_throw) {
    return used(ThrowDiagram(database, cell.record, cell.product, 0, throw_flow_unit_number("l/s"),
                             first_throw_value(cell.product.flow)));
  }
  OwnFlowDiagram measured(DrawingSource(database, cell.record, cell.product.flow));
  const Levels levels = legible_levels(measured, kCell);
  const DiagramSettings settings = {.size = kCell, .lpmin = levels.lowest, .lpstep = levels.step};
  return used(FlowDiagram(database, cell.record, cell.product, settings, false));
}

// Those that make no diagram leave no gap.
void drop_undrawable(const Database& database, std::vector<Choice>& cells) {
  std::erase_if(cells, [&](const Choice& cell) { return !with_diagram(database, cell, [](auto&) {}); });
}

DrawingText sheet_text(const std::vector<Choice>& cells) {
  std::string names;
  for (const Choice& cell : cells) {
    names += (names.empty() ? "" : ", ") + name_of(cell.product) + " (" +
             (cell.is_throw ? "throw length" : kind_text(cell.product.flow)) + ")";
  }
  return {"Diagrams of every kind", "From left to right and row by row: " + names + "."};
}

Area place_of(int number) {
  const int left = number % kColumns * kCell.width;
  const int top = number / kColumns * kCell.height;
  return {left, top, left + kCell.width, top + kCell.height};
}

}  // namespace

void draw_diagram_sheet(const Database& database, const std::string& path) {
  std::vector<Choice> cells = choose_cells(database);
  if (cells.empty()) throw UserError(database.path() + " has no products with flow data to draw");
  const int rows = (static_cast<int>(cells.size()) + kColumns - 1) / kColumns;
  drop_undrawable(database, cells);
  Picture sheet(path, {kColumns * kCell.width, rows * kCell.height});
  sheet.describe(sheet_text(cells));
  int number = 0;
  for (const Choice& cell : cells) {
    with_diagram(database, cell, [&](auto& diagram) { diagram.paint(sheet, place_of(number)); });
    ++number;
  }
  sheet.finish();
  std::cout << path << ": " << number << " diagrams\n";
}

}  // namespace tavdhost
