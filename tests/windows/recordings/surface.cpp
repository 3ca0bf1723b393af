// Recordings through libtavdgui, which has a surface that writes them.
#include <memory>

#include "recording.h"
#include "tavdgui/tavdgui.h"

namespace recordings {
namespace {

constexpr int kDefaultSize = 1000;  // device units of a surface that stands in no window

class Surface {
 public:
  Surface(int width, int height) : surface_(tgui_recording_create(width, height), tgui_surface_destroy) {}

  tgui_surface* get() const { return surface_.get(); }
  std::string text() const { return tgui_recording_text(surface_.get()); }

 private:
  std::unique_ptr<tgui_surface, decltype(&tgui_surface_destroy)> surface_;
};

}  // namespace

tavd_hmodule module() {
  return tgui_main_module();
}

std::string drawn(const std::function<void(tavd_hdc)>& draw) {
  const Surface surface(kDefaultSize, kDefaultSize);
  draw(surface.get());
  return surface.text();
}

// The flow diagram's class serves any procedure: the message goes past the window's own.
std::string painted(WindowProcedure procedure, int width, int height) {
  const Surface surface(width, height);
  tgui_window* const window =
      tgui_create_window("TAVDDGR", "", 0, 0, 0, width, height, nullptr, 0, tgui_main_module());
  tgui_set_surface(window, surface.get());
  procedure(window, TGUI_WM_PAINT, 0, 0);
  tgui_destroy_window(window);
  return surface.text();
}

}  // namespace recordings
