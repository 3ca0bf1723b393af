// Of libtavdcairo's canvases the page has those that need no Cairo: SVG, and the one that measures.
#include "gui/cairo/canvas.h"

namespace tavdcairo {

std::unique_ptr<Canvas> make_png_canvas(int /*width*/, int /*height*/) {
  return nullptr;
}

std::unique_ptr<Canvas> make_pdf_canvas(int /*width*/, int /*height*/, double /*width_mm*/,
                                        double /*height_mm*/) {
  return nullptr;
}

std::unique_ptr<Canvas> make_context_canvas(struct _cairo* /*context*/) {
  return nullptr;
}

}  // namespace tavdcairo
