// What tests of the wrappers share: handles of libtavdgui that go when the test ends.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tavdgui/tavdgui.h"

namespace tavdtest {

struct DestroyWindow {
  void operator()(tgui_window* window) const { tgui_destroy_window(window); }
};
using Window = std::unique_ptr<tgui_window, DestroyWindow>;

struct DestroySurface {
  void operator()(tgui_surface* surface) const { tgui_surface_destroy(surface); }
};
using Surface = std::unique_ptr<tgui_surface, DestroySurface>;

inline Window make_dialog() {
  return Window(tgui_create_dialog("dialog"));
}

// A surface that records what is drawn on it.
class Recording {
 public:
  Recording() : surface_(tgui_recording_create(1000, 1000)) {}
  tgui_surface* hdc() { return surface_.get(); }
  std::string text() const { return tgui_recording_text(surface_.get()); }

 private:
  Surface surface_;
};

}  // namespace tavdtest
