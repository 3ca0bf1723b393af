// Windows: their lives, messages, painting, places and extra bytes.
#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

#include "gui/surface.h"
#include "gui/text.h"
#include "gui/window.h"

using tgui::alive;
using tgui::guarded;
using tgui::Weak;

namespace {

// Windows within windows. Destroying recurses as deep.
constexpr int kDeepest = 50;

void destroy(tgui_window* window);
void send_size(tgui_window* window);
void unlink(tgui_window* window);
bool is_child(const tgui_window* window);

Weak<tgui_window>& focused() {
  static Weak<tgui_window> window;
  return window;
}

}  // namespace

tgui_window* tgui_create_window(const char* class_name, const char* title, uint32_t style, int32_t x,
                                int32_t y, int32_t width, int32_t height, tgui_window* parent, int32_t id,
                                tgui_module* module) {
  if (class_name == nullptr || (parent != nullptr && !alive(parent))) {
    return nullptr;
  }
  return guarded<tgui_window*>(nullptr, [&]() -> tgui_window* {
    tgui::WindowPlan plan;
    plan.window_class = tgui::find_class(class_name, module, true);
    plan.title = tgui::title_text(title);
    plan.style = style;
    plan.x = x;
    plan.y = y;
    plan.width = width;
    plan.height = height;
    plan.parent = parent;
    plan.id = id;
    return plan.window_class == nullptr ? nullptr : tgui::make_window_of_class(std::move(plan));
  });
}

void tgui_destroy_window(tgui_window* window) {
  if (alive(window) && !window->dying) {
    guarded([&] { destroy(window); });
  }
}

int32_t tgui_window_count(void) {
  return static_cast<std::int32_t>(tgui::registry<tgui_window>().size());
}

intptr_t tgui_send_message(tgui_window* window, unsigned int message, uintptr_t wparam, intptr_t lparam) {
  return guarded<std::intptr_t>(0, [&] { return tgui::dispatch(window, message, wparam, lparam, false); });
}

intptr_t tgui_default_procedure(tgui_window* window, unsigned int message, uintptr_t /*wparam*/,
                                intptr_t /*lparam*/) {
  if (alive(window) && message == TGUI_WM_PAINT) {
    window->invalid = false;
  }
  return 0;
}

void tgui_set_surface(tgui_window* window, tgui_surface* surface) {
  if (alive(window)) {
    window->surface = Weak<tgui_surface>(surface);
  }
}

tgui_surface* tgui_begin_paint(tgui_window* window) {
  if (!alive(window)) {
    return nullptr;
  }
  return guarded<tgui_surface*>(nullptr, [&] {
    tgui_end_paint(window);
    window->invalid = false;
    tgui_surface* const surface = window->surface.get();
    if (surface != nullptr) {
      tgui::begin_paint(surface, window->serial);
      window->painted_on = window->surface;
    }
    return surface;
  });
}

void tgui_end_paint(tgui_window* window) {
  if (!alive(window)) {
    return;
  }
  guarded([&] {
    if (tgui_surface* const surface = window->painted_on.get()) {
      window->painted_on = {};
      tgui::end_paint(surface, window->serial);
    }
  });
}

void tgui_client_rect(const tgui_window* window, tgui_rect* rect) {
  if (rect != nullptr) {
    *rect = {};
    if (alive(window)) {
      rect->right = window->plan.width;
      rect->bottom = window->plan.height;
    }
  }
}

void tgui_window_rect(const tgui_window* window, tgui_rect* rect) {
  if (rect == nullptr) {
    return;
  }
  *rect = {};
  if (!alive(window)) {
    return;
  }
  rect->left = window->plan.x;
  rect->top = window->plan.y;
  for (const tgui_window* inner = window; is_child(inner); inner = inner->plan.parent) {
    rect->left = tgui::add(rect->left, inner->plan.parent->plan.x);
    rect->top = tgui::add(rect->top, inner->plan.parent->plan.y);
  }
  rect->right = tgui::add(rect->left, window->plan.width);
  rect->bottom = tgui::add(rect->top, window->plan.height);
}

void tgui_move_window(tgui_window* window, int32_t x, int32_t y, int32_t width, int32_t height) {
  if (!alive(window)) {
    return;
  }
  tgui::WindowPlan& plan = window->plan;
  plan.x = x;
  plan.y = y;
  const std::int32_t new_width = width > 0 ? width : plan.width;
  const std::int32_t new_height = height > 0 ? height : plan.height;
  if (new_width != plan.width || new_height != plan.height) {
    plan.width = new_width;
    plan.height = new_height;
    window->invalid = true;
    guarded([&] { send_size(window); });
  }
}

tgui_window* tgui_parent(const tgui_window* window) {
  return alive(window) ? window->plan.parent : nullptr;
}

const char* tgui_window_title(const tgui_window* window) {
  return alive(window) ? window->plan.title.c_str() : "";
}

void tgui_invalidate(tgui_window* window) {
  if (alive(window)) {
    window->invalid = true;
  }
}

int32_t tgui_is_invalid(const tgui_window* window) {
  return alive(window) && window->invalid ? 1 : 0;
}

intptr_t tgui_window_long(const tgui_window* window, int32_t offset) {
  std::intptr_t value = 0;
  if (alive(window) && offset >= 0 &&
      static_cast<std::size_t>(offset) + sizeof value <= window->extra.size()) {
    std::memcpy(&value, window->extra.data() + offset, sizeof value);
  }
  return value;
}

intptr_t tgui_set_window_long(tgui_window* window, int32_t offset, intptr_t value) {
  const std::intptr_t former = tgui_window_long(window, offset);
  if (alive(window) && offset >= 0 &&
      static_cast<std::size_t>(offset) + sizeof value <= window->extra.size()) {
    std::memcpy(window->extra.data() + offset, &value, sizeof value);
  }
  return former;
}

tgui_window* tgui_focus(void) {
  return focused().get();
}

tgui_window* tgui_set_focus(tgui_window* window) {
  if (window != nullptr && !alive(window)) {
    return nullptr;
  }
  return std::exchange(focused(), Weak<tgui_window>(window)).get();
}

namespace tgui {

tgui_window* make_window(WindowPlan plan) {
  tgui_window* const parent = plan.parent;
  const int depth = parent == nullptr ? 0 : parent->depth + 1;
  if (depth > kDeepest || (parent != nullptr && parent->dying)) {
    return nullptr;
  }
  auto window = std::make_unique<tgui_window>();
  if (plan.window_class != nullptr) {
    plan.procedure = plan.window_class->record.procedure;
    window->extra.resize(static_cast<std::size_t>(plan.window_class->record.window_extra));
  }
  plan.width = std::max(plan.width, 0);
  plan.height = std::max(plan.height, 0);
  window->plan = std::move(plan);
  window->depth = depth;
  if (parent != nullptr) {
    parent->children.reserve(parent->children.size() + 1);
  }
  window->serial = registry<tgui_window>().add(window.get());
  if (parent != nullptr) {
    parent->children.push_back(window.get());
  }
  return window.release();
}

tgui_window* make_window_of_class(WindowPlan plan) {
  const Weak<tgui_window> window(make_window(std::move(plan)));
  if (window.get() != nullptr && dispatch(window.get(), TGUI_WM_CREATE, 0, 0, false) == -1) {
    tgui_destroy_window(window.get());
  }
  return window.get();
}

std::intptr_t dispatch(tgui_window* window, unsigned message, std::uintptr_t wparam, std::intptr_t lparam,
                       bool wide) {
  if (!alive(window)) {
    return 0;
  }
  return window->plan.procedure != nullptr ? window->plan.procedure(window, message, wparam, lparam)
                                           : control_message(window, message, wparam, lparam, wide);
}

std::int32_t add(std::int32_t a, std::int32_t b) {
  using Limits = std::numeric_limits<std::int32_t>;
  const std::int64_t sum = std::int64_t{a} + b;
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(sum, Limits::min(), Limits::max()));
}

}  // namespace tgui

namespace {

// A procedure may destroy any window while it handles WM_DESTROY, this one's parent included, so that
// after each message the window may be gone. A window that is dying is destroyed without the message again.
void destroy(tgui_window* handle) {
  const Weak<tgui_window> window(handle);
  if (!std::exchange(handle->dying, true)) {
    guarded([&] { tgui::dispatch(handle, TGUI_WM_DESTROY, 0, 0, false); });
  }
  while (window.get() != nullptr && !window.get()->children.empty()) {
    destroy(window.get()->children.back());
  }
  if (window.get() != nullptr) {
    tgui_end_paint(handle);
    unlink(handle);
    tgui::registry<tgui_window>().remove(handle);
    delete handle;
  }
}

void unlink(tgui_window* window) {
  if (window->plan.parent != nullptr) {
    std::erase(window->plan.parent->children, window);
  }
}

void send_size(tgui_window* window) {
  const auto width = static_cast<std::uint32_t>(window->plan.width) & 0xFFFF;
  const auto height = static_cast<std::uint32_t>(window->plan.height) & 0xFFFF;
  tgui::dispatch(window, TGUI_WM_SIZE, 0, static_cast<std::intptr_t>(height << 16 | width), false);
}

// A child stands in its parent's client area, an owned window on the screen.
bool is_child(const tgui_window* window) {
  return window->plan.parent != nullptr &&
         (window->plan.style & (tgui::kChild | tgui::kPopup)) == tgui::kChild;
}

}  // namespace
