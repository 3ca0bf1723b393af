// The sheet of diagrams, one product of each kind.
#include <algorithm>
#include <iostream>
#include <set>
#include <string>
#include <vector>

#include "base/errors.h"
#include "drawing/description.h"
#include "drawing/drawings.h"
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

// False if the limits of the product make no diagram.
bool draw_cell(const Database& database, const Choice& cell, Picture& sheet, int number) {
  const int left = number % kColumns * kCell.width;
  const int top = number / kColumns * kCell.height;
  const Area place = {left, top, left + kCell.width, top + kCell.height};
  const auto paint = [&](const auto& diagram) {
    if (diagram.is_drawable()) diagram.paint_cell(sheet, place);
    return diagram.is_drawable();
  };
  if (cell.is_throw) {
    return paint(ThrowDiagram(database, cell.record, cell.product, 0, throw_flow_unit_number("l/s"),
                              first_throw_value(cell.product.flow)));
  }
  return paint(FlowDiagram(database, cell.record, cell.product, DiagramSettings{kCell}, false));
}

}  // namespace

void draw_diagram_sheet(const Database& database, const std::string& path) {
  const std::vector<Choice> cells = choose_cells(database);
  if (cells.empty()) throw UserError(database.path() + " has no products with flow data to draw");
  const int rows = (static_cast<int>(cells.size()) + kColumns - 1) / kColumns;
  Picture sheet(path, {kColumns * kCell.width, rows * kCell.height});
  std::string names;
  int drawn = 0;
  for (const Choice& cell : cells) {
    if (draw_cell(database, cell, sheet, drawn)) {
      names += (drawn++ == 0 ? "" : ", ") + name_of(cell.product) + " (" +
               (cell.is_throw ? "throw length" : kind_text(cell.product.flow)) + ")";
    }
  }
  sheet.describe({"Diagrams of every kind", "From left to right and row by row: " + names + "."});
  sheet.finish();
  std::cout << path << ": " << drawn << " diagrams\n";
}

}  // namespace tavdhost
