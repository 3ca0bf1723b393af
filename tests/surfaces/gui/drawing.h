// What the tests of surfaces share.
#pragma once

#include <memory>
#include <string>

#include "tavdgui/tavdgui.h"

struct SurfaceDeleter {
  void operator()(tgui_surface* surface) const { tgui_surface_destroy(surface); }
};
using SurfaceOwner = std::unique_ptr<tgui_surface, SurfaceDeleter>;

inline SurfaceOwner recording() {
  return SurfaceOwner(tgui_recording_create(640, 480));
}

inline tgui_state state_of(const tgui_surface* surface) {
  tgui_state state;
  tgui_surface_state(surface, &state);
  return state;
}

// The lines recorded since the last call.
inline std::string taken(tgui_surface* surface) {
  std::string text = tgui_recording_text(surface);
  tgui_recording_clear(surface);
  return text;
}
