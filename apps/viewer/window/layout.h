// Where everything stands in the main window.
#pragma once

#include <windows.h>

#include <optional>
#include <vector>

namespace viewer {

// Shares of the parts that the user can drag.
struct Shares {
  double tree = 0.22;     // width of the left column, of the whole
  double sketch = 0.40;   // width of the right column, of the whole
  double products = 0.7;  // height of the tree, of the left column
  double flow = 0.5;      // height of the flow diagram, of the middle column
  double shape = 0.56;    // height of the sketch, of the right column
};

struct Measures {
  int dpi;
  int line;    // height of a line of text, pixels
  int status;  // height of the status bar, pixels
};

struct Placed {
  int id;  // of the control
  RECT rect;
};

// A gap that can be dragged, and the share that it sets: from 0 to 1 over `from` to `to`.
struct Splitter {
  RECT rect;
  bool upright;  // dragged to the left and right
  double Shares::*share;
  int from, to;
  bool reversed;  // the share grows towards `from`
};

struct Layout {
  std::vector<Placed> controls;
  std::vector<Splitter> splitters;
};

Layout laid_out(SIZE client, const Measures& measures, const Shares& shares);

// Client size below which parts would overlap.
SIZE smallest_client(int dpi);

// The splitter under a point, none outside of them.
std::optional<Splitter> splitter_at(const Layout& layout, POINT point);

// Moves the splitter to the point, within what leaves room on both sides.
void drag(const Splitter& splitter, POINT point, Shares& shares);

}  // namespace viewer
