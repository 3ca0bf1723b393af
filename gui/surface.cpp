#include "gui/surface.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "gui/guard.h"

using tgui::alive;
using tgui::guarded;

namespace {

constexpr std::int32_t kLargestSize = 32767;  // device units

tgui::Hold& place_of(tgui_surface* surface, std::int32_t kind);
std::size_t saved_place(const tgui_surface* surface, std::int32_t id);
bool takes_extents(const tgui_surface* surface, std::int32_t x, std::int32_t y);
void set_pair(std::int32_t (&pair)[2], std::int32_t x, std::int32_t y);
double map(double value, std::int32_t org, std::int32_t ext, std::int32_t to_org, std::int32_t to_ext);

// Calls an entry of the surface's table, if it is there. It may destroy the surface: nothing follows it.
template <class Entry, class... Arguments>
void tell(tgui_surface* surface, Entry tgui_operations::*entry, Arguments... arguments) {
  if (const Entry function = surface->operations.*entry) {
    function(surface->context, surface, arguments...);
  }
}

}  // namespace

tgui_surface* tgui_surface_create(const tgui_operations* operations, void* context, int32_t width,
                                  int32_t height) {
  if (operations == nullptr || operations->size != sizeof(tgui_operations) || width < 1 ||
      width > kLargestSize || height < 1 || height > kLargestSize) {
    return nullptr;
  }
  return guarded<tgui_surface*>(nullptr, [&] {
    auto surface = std::make_unique<tgui_surface>();
    surface->operations = *operations;
    surface->context = context;
    surface->width = width;
    surface->height = height;
    tgui::registry<tgui_surface>().add(surface.get());
    return surface.release();
  });
}

void tgui_surface_destroy(tgui_surface* surface) {
  if (!alive(surface)) {
    return;
  }
  guarded([&] {
    tgui::registry<tgui_surface>().remove(surface);
    const std::unique_ptr<tgui_surface> owned(surface);
    if (owned->operations.release != nullptr) {
      owned->operations.release(owned->context);
    }
  });
}

void* tgui_surface_context(const tgui_surface* surface) {
  return alive(surface) ? surface->context : nullptr;
}

void tgui_surface_size(const tgui_surface* surface, int32_t* width, int32_t* height) {
  const bool known = alive(surface);
  if (width != nullptr) {
    *width = known ? surface->width : 0;
  }
  if (height != nullptr) {
    *height = known ? surface->height : 0;
  }
}

int32_t tgui_surface_state(const tgui_surface* surface, tgui_state* state) {
  if (!alive(surface)) {
    return -1;
  }
  if (state == nullptr) {
    return 0;
  }
  const tgui::State& now = surface->state;
  *state = {now.pen.get(),
            now.brush.get(),
            now.font.get(),
            now.text_align,
            now.text_colour,
            now.background_mode,
            now.map_mode,
            {now.window_org[0], now.window_org[1]},
            {now.window_ext[0], now.window_ext[1]},
            {now.viewport_org[0], now.viewport_org[1]},
            {now.viewport_ext[0], now.viewport_ext[1]},
            {now.position[0], now.position[1]}};
  return 0;
}

void tgui_to_device(const tgui_surface* surface, double x, double y, double* device_x, double* device_y) {
  double device[2] = {0, 0};
  if (alive(surface)) {
    const tgui::State& now = surface->state;
    const double logical[2] = {x, y};
    for (int axis = 0; axis < 2; ++axis) {
      const bool stretched = now.map_mode == TGUI_MM_ANISOTROPIC;
      device[axis] = map(logical[axis], now.window_org[axis], stretched ? now.window_ext[axis] : 1,
                         now.viewport_org[axis], stretched ? now.viewport_ext[axis] : 1);
    }
  }
  if (device_x != nullptr) {
    *device_x = device[0];
  }
  if (device_y != nullptr) {
    *device_y = device[1];
  }
}

tgui_object* tgui_select(tgui_surface* surface, tgui_object* object) {
  if (!alive(surface) || !tgui::usable(object)) {
    return nullptr;
  }
  return guarded<tgui_object*>(nullptr, [&] {
    tgui::Hold& place = place_of(surface, object->info.kind);
    tgui_object* const former = place.get();
    place = tgui::Hold(object);
    tell(surface, &tgui_operations::select, object);
    return former;
  });
}

uint32_t tgui_set_text_align(tgui_surface* surface, uint32_t align) {
  if (!alive(surface)) {
    return 0;
  }
  const std::uint32_t former = std::exchange(surface->state.text_align, align);
  guarded([&] { tell(surface, &tgui_operations::text_align, align); });
  return former;
}

uint32_t tgui_set_text_colour(tgui_surface* surface, uint32_t colour) {
  if (!alive(surface)) {
    return 0;
  }
  colour &= tgui::kColourBits;
  const std::uint32_t former = std::exchange(surface->state.text_colour, colour);
  guarded([&] { tell(surface, &tgui_operations::text_colour, colour); });
  return former;
}

int32_t tgui_set_background_mode(tgui_surface* surface, int32_t mode) {
  if (!alive(surface) || (mode != TGUI_TRANSPARENT && mode != TGUI_OPAQUE)) {
    return 0;
  }
  const std::int32_t former = std::exchange(surface->state.background_mode, mode);
  guarded([&] { tell(surface, &tgui_operations::background_mode, mode); });
  return former;
}

void tgui_move_to(tgui_surface* surface, int32_t x, int32_t y) {
  if (alive(surface)) {
    set_pair(surface->state.position, x, y);
    guarded([&] { tell(surface, &tgui_operations::move_to, x, y); });
  }
}

void tgui_line_to(tgui_surface* surface, int32_t x, int32_t y) {
  if (alive(surface)) {
    const std::int32_t x1 = surface->state.position[0];
    const std::int32_t y1 = surface->state.position[1];
    set_pair(surface->state.position, x, y);
    guarded([&] { tell(surface, &tgui_operations::line_to, x1, y1, x, y); });
  }
}

void tgui_ellipse(tgui_surface* surface, int32_t left, int32_t top, int32_t right, int32_t bottom) {
  if (alive(surface)) {
    guarded([&] { tell(surface, &tgui_operations::ellipse, left, top, right, bottom); });
  }
}

void tgui_arc(tgui_surface* surface, int32_t left, int32_t top, int32_t right, int32_t bottom, int32_t xs,
              int32_t ys, int32_t xe, int32_t ye) {
  if (alive(surface)) {
    guarded([&] { tell(surface, &tgui_operations::arc, left, top, right, bottom, xs, ys, xe, ye); });
  }
}

void tgui_text(tgui_surface* surface, int32_t x, int32_t y, const char* text, int32_t length) {
  if (alive(surface) && text != nullptr && length > 0) {
    guarded([&] { tell(surface, &tgui_operations::text, x, y, text, length); });
  }
}

void tgui_textw(tgui_surface* surface, int32_t x, int32_t y, const tavd_wchar* text, int32_t length) {
  if (alive(surface) && text != nullptr && length > 0) {
    guarded([&] { tell(surface, &tgui_operations::textw, x, y, text, length); });
  }
}

int32_t tgui_set_map_mode(tgui_surface* surface, int32_t mode) {
  if (!alive(surface) || (mode != TGUI_MM_TEXT && mode != TGUI_MM_ANISOTROPIC)) {
    return 0;
  }
  const std::int32_t former = std::exchange(surface->state.map_mode, mode);
  if (mode == TGUI_MM_TEXT) {  // its extents are fixed; the origins stay
    set_pair(surface->state.window_ext, 1, 1);
    set_pair(surface->state.viewport_ext, 1, 1);
  }
  guarded([&] { tell(surface, &tgui_operations::map_mode, mode); });
  return former;
}

void tgui_set_window_org(tgui_surface* surface, int32_t x, int32_t y) {
  if (alive(surface)) {
    set_pair(surface->state.window_org, x, y);
    guarded([&] { tell(surface, &tgui_operations::window_org, x, y); });
  }
}

void tgui_set_window_ext(tgui_surface* surface, int32_t x, int32_t y) {
  if (alive(surface) && takes_extents(surface, x, y)) {
    set_pair(surface->state.window_ext, x, y);
    guarded([&] { tell(surface, &tgui_operations::window_ext, x, y); });
  }
}

void tgui_set_viewport_org(tgui_surface* surface, int32_t x, int32_t y) {
  if (alive(surface)) {
    set_pair(surface->state.viewport_org, x, y);
    guarded([&] { tell(surface, &tgui_operations::viewport_org, x, y); });
  }
}

void tgui_set_viewport_ext(tgui_surface* surface, int32_t x, int32_t y) {
  if (alive(surface) && takes_extents(surface, x, y)) {
    set_pair(surface->state.viewport_ext, x, y);
    guarded([&] { tell(surface, &tgui_operations::viewport_ext, x, y); });
  }
}

int32_t tgui_save(tgui_surface* surface) {
  if (!alive(surface)) {
    return 0;
  }
  return guarded<std::int32_t>(0, [&] {
    surface->saved.push_back(surface->state);
    const auto id = static_cast<std::int32_t>(surface->saved.size());
    tell(surface, &tgui_operations::save, id);
    return id;
  });
}

int32_t tgui_restore(tgui_surface* surface, int32_t id) {
  const std::size_t place = alive(surface) ? saved_place(surface, id) : 0;
  if (place == 0) {
    return 0;
  }
  return guarded<std::int32_t>(0, [&] {
    surface->state = surface->saved[place - 1];
    surface->saved.erase(surface->saved.begin() + static_cast<std::ptrdiff_t>(place - 1),
                         surface->saved.end());
    tell(surface, &tgui_operations::restore, static_cast<std::int32_t>(place));
    return 1;
  });
}

namespace tgui {

void begin_paint(tgui_surface* surface, std::uint64_t painter) {
  end_paint(surface, painter);
  surface->frames.push_back({painter, surface->state, surface->saved});
  surface->state = State();
  surface->saved.clear();
}

void end_paint(tgui_surface* surface, std::uint64_t painter) {
  auto& frames = surface->frames;
  const auto frame = std::find_if(frames.begin(), frames.end(),
                                  [painter](const PaintFrame& each) { return each.painter == painter; });
  if (frame != frames.end()) {
    surface->state = frame->state;
    surface->saved.swap(frame->saved);
    frames.erase(frame, frames.end());
  }
}

}  // namespace tgui

namespace {

tgui::Hold& place_of(tgui_surface* surface, std::int32_t kind) {
  switch (kind) {
    case TGUI_PEN:
      return surface->state.pen;
    case TGUI_BRUSH:
      return surface->state.brush;
    default:
      return surface->state.font;
  }
}

// The id that a saved state was given, 0 if there is none.
std::size_t saved_place(const tgui_surface* surface, std::int32_t id) {
  const auto count = static_cast<std::int64_t>(surface->saved.size());
  const std::int64_t place = id < 0 ? count + 1 + id : id;
  return place < 1 || place > count ? 0 : static_cast<std::size_t>(place);
}

bool takes_extents(const tgui_surface* surface, std::int32_t x, std::int32_t y) {
  return surface->state.map_mode == TGUI_MM_ANISOTROPIC && x != 0 && y != 0;
}

void set_pair(std::int32_t (&pair)[2], std::int32_t x, std::int32_t y) {
  pair[0] = x;
  pair[1] = y;
}

double map(double value, std::int32_t org, std::int32_t ext, std::int32_t to_org, std::int32_t to_ext) {
  return (value - org) * to_ext / (ext == 0 ? 1 : ext) + to_org;
}

}  // namespace
