#include "gui/objects.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <mutex>
#include <span>

#include "gui/guard.h"

namespace {

// Failures ordered by tgui_fail_objects.
struct FailurePlan {
  std::int32_t skip = 0;
  std::int32_t failures = 0;
};
FailurePlan failure_plan;
std::mutex failure_mutex;
std::atomic<std::int32_t> created_count = 0;

tgui_object* create(const tgui_object_info& info);
tgui_object* find_stock(int number);
bool is_in_stock(const tgui_object* object);
bool creation_fails();
bool known_pen_style(std::int32_t style);
std::int32_t magnitude(std::int32_t width);
bool is_stock(const tgui_object* object) {
  return object->info.stock >= 0;
}

// An object goes with its last owner. The stock stays; were its owners counted, all threads that draw would
// write to one place.
void own(tgui_object* object) {
  if (!is_stock(object)) {
    ++object->owners;
  }
}

void disown(tgui_object* object) {
  if (!is_stock(object) && --object->owners == 0) {
    tgui::registry<tgui_object>().remove(object);
    delete object;
  }
}

}  // namespace

tgui_object* tgui_create_pen(int32_t style, int32_t width, uint32_t colour) {
  if (!known_pen_style(style)) {
    return nullptr;
  }
  tgui_object_info info{};
  info.kind = TGUI_PEN;
  info.style = style;
  info.width = magnitude(width);
  info.colour = colour & tgui::kColourBits;
  return create(info);
}

tgui_object* tgui_create_brush(uint32_t colour) {
  tgui_object_info info{};
  info.kind = TGUI_BRUSH;
  info.colour = colour & tgui::kColourBits;
  return create(info);
}

tgui_object* tgui_create_font(const tgui_font* font) {
  if (font == nullptr) {
    return nullptr;
  }
  tgui_object_info info{};
  info.kind = TGUI_FONT;
  info.font = *font;
  // What stands behind the terminator is the host's rubbish.
  char* const face = info.font.face;
  const std::size_t length = strnlen(face, sizeof info.font.face - 1);
  std::memset(face + length, 0, sizeof info.font.face - length);
  return create(info);
}

tgui_object* tgui_stock_object(int32_t stock) {
  return find_stock(stock);
}

int32_t tgui_delete_object(tgui_object* object) {
  if (!tgui::usable(object)) {
    return 0;
  }
  if (is_stock(object)) {
    return 1;
  }
  if (object->deleted.exchange(true)) {
    return 0;
  }
  --created_count;
  disown(object);
  return 1;
}

int32_t tgui_get_object(const tgui_object* object, tgui_object_info* info) {
  // An object that was deleted while selected can still be described: surfaces go on drawing with it.
  if (!is_in_stock(object) && !tgui::alive(object)) {
    return -1;
  }
  if (info != nullptr) {
    *info = object->info;
  }
  return 0;
}

int32_t tgui_object_count(void) {
  return created_count;
}

void tgui_fail_objects(int32_t skip, int32_t n) {
  const std::scoped_lock lock(failure_mutex);
  failure_plan = {std::max(skip, 0), std::max(n, 0)};
}

namespace tgui {

tgui_object* stock(int number) {
  return find_stock(number);
}

bool usable(const tgui_object* object) {
  return is_in_stock(object) || (alive(object) && !object->deleted);
}

Hold::Hold(tgui_object* object) noexcept : object_(object) {
  own(object_);
}

Hold& Hold::operator=(const Hold& other) noexcept {
  Hold copy(other);
  std::swap(object_, copy.object_);
  return *this;
}

Hold::~Hold() {
  disown(object_);
}

}  // namespace tgui

namespace {

tgui_object* create(const tgui_object_info& info) {
  if (creation_fails()) {
    return nullptr;
  }
  return tgui::guarded<tgui_object*>(nullptr, [&] {
    auto object = std::make_unique<tgui_object>();
    object->info = info;
    object->info.stock = -1;
    tgui::registry<tgui_object>().add(object.get());
    ++created_count;
    return object.release();
  });
}

bool creation_fails() {
  const std::scoped_lock lock(failure_mutex);
  if (failure_plan.failures == 0) {
    return false;
  }
  if (failure_plan.skip > 0) {
    --failure_plan.skip;
    return false;
  }
  --failure_plan.failures;
  return true;
}

bool known_pen_style(std::int32_t style) {
  return (style >= TGUI_PEN_SOLID && style <= TGUI_PEN_DASHDOT) || style == TGUI_PEN_NULL;
}

std::int32_t magnitude(std::int32_t width) {
  return std::abs(std::max(width, -std::numeric_limits<std::int32_t>::max()));
}

tgui_object stock_pen(int number, int style, std::uint32_t colour) {
  return {{TGUI_PEN, number, style, style == TGUI_PEN_NULL ? 0 : 1, colour, {}}};
}

tgui_object stock_brush(int number, int style, std::uint32_t colour) {
  return {{TGUI_BRUSH, number, style, 0, colour, {}}};
}

// The stock fonts are bitmap fonts of fixed cell heights.
tgui_object stock_font(int number, std::int32_t cell_height, std::int32_t weight, const char* face) {
  tgui_object_info info{};
  info.kind = TGUI_FONT;
  info.stock = number;
  info.font.height = cell_height;
  info.font.weight = weight;
  std::strncpy(info.font.face, face, sizeof info.font.face - 1);
  return {info};
}

std::span<tgui_object> the_stock() {
  static tgui_object objects[] = {
      stock_brush(TGUI_WHITE_BRUSH, 0, 0xFFFFFF),
      stock_brush(TGUI_LTGRAY_BRUSH, 0, 0xC0C0C0),
      stock_brush(TGUI_GRAY_BRUSH, 0, 0x808080),
      stock_brush(TGUI_DKGRAY_BRUSH, 0, 0x404040),
      stock_brush(TGUI_BLACK_BRUSH, 0, 0x000000),
      stock_brush(TGUI_NULL_BRUSH, 1, 0x000000),
      stock_pen(TGUI_WHITE_PEN, 0, 0xFFFFFF),
      stock_pen(TGUI_BLACK_PEN, 0, 0x000000),
      stock_pen(TGUI_NULL_PEN, TGUI_PEN_NULL, 0),
      stock_font(TGUI_ANSI_VAR_FONT, 13, 400, "MS Sans Serif"),
      stock_font(TGUI_SYSTEM_FONT, 16, 700, "System"),
  };
  return objects;
}

tgui_object* find_stock(int number) {
  for (tgui_object& object : the_stock()) {
    if (object.info.stock == number) {
      return &object;
    }
  }
  return nullptr;
}

// By its address: it may be one that is no object, or no longer. No thread waits for another here.
bool is_in_stock(const tgui_object* object) {
  const std::span<tgui_object> stock = the_stock();
  return std::any_of(stock.begin(), stock.end(), [&](const tgui_object& other) { return &other == object; });
}

}  // namespace
