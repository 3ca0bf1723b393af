// What becomes of a picture when memory runs out at any one place: it is whole, or it is told that it is not.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <thread>

#include "tavdgui/tavdcairo.h"

namespace {

constexpr long kNever = -1;

// Allocations of C++ that still succeed before one fails, and whether those behind it fail too.
std::atomic<long> successes = kNever;
std::atomic<bool> stays_short = false;

bool runs_out() {
  if (successes == kNever) return false;
  if (successes > 0) {
    --successes;
    return false;
  }
  if (!stays_short) successes = kNever;
  return true;
}

}  // namespace

void* operator new(std::size_t size) {
  void* const memory = runs_out() ? nullptr : std::malloc(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
  std::free(memory);
}

namespace {

constexpr std::int32_t kSize = 200;  // device units

struct Form {
  const char* name;
  tgui_surface* (*create)();
  bool measures = false;
};
const std::array<Form, 4> kForms = {{
    {"PNG", [] { return tgui_cairo_png("x.png", kSize, kSize); }},
    {"SVG", [] { return tgui_cairo_svg("x.svg", kSize, kSize); }},
    {"PDF", [] { return tgui_cairo_pdf("x.pdf", kSize, kSize, 100, 100); }},
    {"measure", [] { return tgui_cairo_measure(kSize, kSize); }, true},
}};

// Pens and a font that stand ready.
class Tools {
 public:
  Tools() {
    tgui_font font = {};
    font.height = -14;
    std::snprintf(font.face, sizeof font.face, "Arial");
    font_ = tgui_create_font(&font);
  }
  ~Tools() {
    tgui_delete_object(font_);
    tgui_delete_object(pen_);
  }
  Tools(const Tools&) = delete;
  Tools& operator=(const Tools&) = delete;

  // One of each kind of figure, with all that a picture may be told.
  void draw(tgui_surface* surface) const {
    tgui_cairo_describe(surface, "A title that is longer than a short string", "and a description of it");
    tgui_cairo_name_pen(surface, 0xFF, 3, "a name that is longer than a short string");
    tgui_select(surface, pen_);
    tgui_select(surface, font_);
    tgui_move_to(surface, 10, 10);
    tgui_line_to(surface, 90, 70);
    tgui_line_to(surface, 150, 20);
    tgui_ellipse(surface, 20, 20, 80, 60);
    tgui_arc(surface, 100, 100, 180, 160, 180, 130, 100, 130);
    constexpr std::string_view text = "A label that is longer than a short string";
    tgui_text(surface, 10, 170, text.data(), static_cast<std::int32_t>(text.size()));
  }

 private:
  tgui_object* pen_ = tgui_create_pen(TGUI_PEN_DASH, 3, 0xFF);
  tgui_object* font_ = nullptr;
};

// What came of a picture. Bytes are kept where they fit, so that keeping them needs no memory.
struct Outcome {
  static std::int32_t keep(void* outcome, const void* bytes, std::size_t length) {
    auto* const self = static_cast<Outcome*>(outcome);
    if (length > self->bytes.size()) return 1;
    std::copy_n(static_cast<const char*>(bytes), length, self->bytes.begin());
    self->length = length;
    return 0;
  }

  std::array<char, 100'000> bytes = {};
  std::size_t length = 0;
  tgui_box extent = {};
  bool is_surface = false;
  bool is_done = false;
  std::array<char, 100> reason = {};
};

void make(const Form& form, const Tools& tools, Outcome& outcome) {
  tgui_surface* const surface = form.create();
  outcome.is_surface = surface != nullptr;
  if (!outcome.is_surface) return;
  tools.draw(surface);
  if (form.measures) {
    outcome.is_done = tgui_cairo_extent(surface, &outcome.extent) == 0;
    tgui_surface_destroy(surface);
  } else {
    outcome.is_done = tgui_cairo_finish_into(surface, Outcome::keep, &outcome, outcome.reason.data(),
                                             outcome.reason.size()) == 0;
  }
}

void expect_same(const Outcome& a, const Outcome& b) {
  ASSERT_TRUE(a.is_done) << a.reason.data();
  EXPECT_TRUE(std::string_view(a.bytes.data(), a.length) == std::string_view(b.bytes.data(), b.length));
  EXPECT_EQ(a.extent.left, b.extent.left);
  EXPECT_EQ(a.extent.right, b.extent.right);
  EXPECT_EQ(a.extent.bottom, b.extent.bottom);
}

// Makes a picture in a thread without fonts from earlier ones while memory runs out behind `place`
// allocations. False if that was behind the last.
bool survives(const Form& form, long place, const Outcome& whole) {
  bool is_behind = false;
  std::thread([&] {
    SCOPED_TRACE(std::string(form.name) + ", " + std::to_string(place) + " allocations");
    const Tools tools;
    auto outcome = std::make_unique<Outcome>();
    successes = place;
    make(form, tools, *outcome);
    is_behind = successes.exchange(kNever) > 0;
    if (outcome->is_done || is_behind) {
      expect_same(*outcome, whole);
    } else if (outcome->is_surface && !form.measures) {
      EXPECT_STREQ(outcome->reason.data(), "out of memory");
    }
    *outcome = {};
    make(form, tools, *outcome);  // what is kept from picture to picture took no harm
    expect_same(*outcome, whole);
  }).join();
  return !is_behind;
}

void test_all(const Form& form) {
  const Tools tools;
  auto whole = std::make_unique<Outcome>();
  make(form, tools, *whole);
  ASSERT_TRUE(whole->is_done);
  long place = 0;
  while (survives(form, place, *whole)) ++place;
  EXPECT_GT(place, 10);  // allocations that a picture makes
}

TEST(Shortage, LeavesAPictureWholeOrToldWhereOneAllocationFails) {
  stays_short = false;
  for (const Form& form : kForms) test_all(form);
}

TEST(Shortage, LeavesAPictureWholeOrToldWhereAllAllocationsFailFromOneOn) {
  stays_short = true;
  for (const Form& form : kForms) test_all(form);
}

}  // namespace
