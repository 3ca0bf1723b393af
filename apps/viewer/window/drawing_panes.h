// The three child windows, and the library's one flow diagram, one throw length diagram and one picture
// behind them.
#pragma once

#include <windows.h>

#include <array>
#include <vector>

#include "drawing/drawings.h"
#include "model/product.h"
#include "model/results.h"

namespace viewer {

// What the drawings show beside the product.
struct DrawingSettings {
  OperatingPoint point;
  int flow_unit, pressure_unit;  // the library's numbers
  std::vector<Choice> choices;   // of parameter values
};

class DrawingPanes {
 public:
  // Has the library register its window classes.
  explicit DrawingPanes(HINSTANCE module);
  ~DrawingPanes();
  DrawingPanes(const DrawingPanes&) = delete;
  DrawingPanes& operator=(const DrawingPanes&) = delete;

  // Makes the windows, children of `host`, with ids from `first_id` on in the order of the drawings.
  void create(HWND host, int first_id);

  // Begins with a family (or a product without sizes): the library fills the list box `sizes` of `host`.
  void start(HWND host, int sizes, std::int16_t db, const Record& family);

  // Builds all drawings of a product.
  void build(const Record& product, const DrawingSettings& settings);

  // Moves the operating point, and rebuilds what needs it.
  void move_point(const Record& product, const DrawingSettings& settings);

  // Nothing is drawn any more.
  void clear();

  // Whether the last build gave a drawing.
  bool is_drawn(Drawing drawing) const { return drawn_[static_cast<std::size_t>(drawing)]; }

 private:
  void build_throw(const Record& product, const DrawingSettings& settings);
  void set_point(const OperatingPoint& point);
  void repaint(Drawing drawing);

  HINSTANCE module_;
  std::int16_t db_ = -1;
  std::array<HWND, kDrawingCount> windows_{};
  std::array<bool, kDrawingCount> drawn_{};
};

}  // namespace viewer
