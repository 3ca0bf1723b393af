#include "gui/cairo/canvas.h"

#include "tavdgui/tavdgui.h"

namespace tavdcairo {

const std::vector<double>& dashes(int style) {
  static const std::vector<double> solid;
  static const std::vector<double> dash = {8, 4};
  static const std::vector<double> dot = {2, 3};
  static const std::vector<double> dash_dot = {8, 3, 2, 3};
  switch (style) {
    case TGUI_PEN_DASH:
      return dash;
    case TGUI_PEN_DOT:
      return dot;
    case TGUI_PEN_DASHDOT:
      return dash_dot;
    default:
      return solid;
  }
}

}  // namespace tavdcairo
