// Sixteen threads draw the same prepared products at once, each on surfaces of its own: as a list of
// operations, and as SVG, PNG and PDF. Run under ThreadSanitizer (preset `threads`), which reports any write
// that they would share; what Cairo and Pango share among themselves is theirs (tests/support/threads.supp).
#include <array>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

#include "oracle/reference/records.h"
#include "tavd/tavca.h"
#include "tavd/tavdg.h"
#include "tavd/tavdn.h"
#include "tavd/tavdshapepic.h"
#include "tavdgui/tavdcairo.h"

namespace {

constexpr std::size_t kThreads = 16;
constexpr std::int32_t kWidth = 400;  // pixels
constexpr std::int32_t kHeight = 300;
constexpr std::array<std::int16_t, 8> kKinds = {10, 11, 12, 13, 20, 22, 30, 40};
constexpr std::array<std::int16_t, 4> kShapes = {101, 107, 130, 165};

using Pictures = std::vector<std::string>;

int32_t keep(void* kept, const void* bytes, std::size_t length) {
  static_cast<std::string*>(kept)->assign(static_cast<const char*>(bytes), length);
  return 0;
}

void map(tgui_surface* surface, std::int32_t width, std::int32_t height) {
  tgui_set_map_mode(surface, TGUI_MM_ANISOTROPIC);
  tgui_set_window_ext(surface, width, height);
  tgui_set_viewport_ext(surface, kWidth, kHeight);
}

void draw(const tavdn_product* product, std::int16_t shape_number, tgui_surface* surface) {
  tavdn_flow_options flow{};
  flow.size = sizeof flow;
  flow.title = "shared";
  flow.roomdamp = 4.0F;
  flow.LpA_label = "dB(A)";
  tavdn_throw_options throws{};
  throws.size = sizeof throws;
  throws.title = "shared";
  tavdn_shape shape{};
  shape.nvalues = TAVDN_SHAPE_VALUES;
  shape.values[0] = shape_number;
  for (std::int16_t i = 1; i < TAVDN_SHAPE_VALUES; ++i) shape.values[i] = static_cast<std::int16_t>(10 * i);
  map(surface, TAVDG_EXTENT, TAVDG_EXTENT);
  tavdn_draw_flow(product, &flow, surface);
  tavdn_draw_throw(product, &throws, surface);
  map(surface, TAVDSHAPEPIC_WIDTH, TAVDSHAPEPIC_HEIGHT);
  tavdn_draw_shape(&shape, nullptr, surface);
}

void draw_all(const std::vector<tavdn_product*>& products, Pictures& pictures) {
  for (std::size_t i = 0; i < products.size(); ++i) {
    const std::int16_t shape = kShapes[i % kShapes.size()];
    tgui_surface* const recording = tgui_recording_create(kWidth, kHeight);
    draw(products[i], shape, recording);
    pictures.emplace_back(tgui_recording_text(recording));
    tgui_surface_destroy(recording);
    for (tgui_surface* surface :
         {tgui_cairo_svg("x.svg", kWidth, kHeight), tgui_cairo_png("x.png", kWidth, kHeight),
          tgui_cairo_pdf("x.pdf", kWidth, kHeight, 297, 210)}) {
      draw(products[i], shape, surface);
      std::string bytes;
      tgui_cairo_finish_into(surface, keep, &bytes, nullptr, 0);
      pictures.push_back(bytes);
    }
  }
}

}  // namespace

int main() {
  std::vector<tavdn_product*> products;
  for (const std::int16_t kind : kKinds) {
    reference::Random random(7);
    const FlowData fd = random_product(random, kind, reference::Shape::sorted).fd;
    tavdn_product* product = nullptr;
    if (tavdn_prepare(&fd, nullptr, &product) != TAVDN_OK) return 1;
    products.push_back(product);
  }
  Pictures alone;
  draw_all(products, alone);

  std::array<Pictures, kThreads> together;
  std::vector<std::thread> threads;
  for (Pictures& pictures : together) threads.emplace_back([&] { draw_all(products, pictures); });
  for (std::thread& thread : threads) thread.join();

  int wrong = tgui_object_count();
  std::size_t bytes = 0;
  for (const std::string& picture : alone) {
    bytes += picture.size();
    if (picture.empty()) ++wrong;
  }
  for (const Pictures& pictures : together) wrong += pictures == alone ? 0 : 1;
  for (tavdn_product* product : products) tavdn_release(product);
  std::printf("%zu threads, %zu pictures of %zu bytes each: %s\n", kThreads, alone.size(), bytes,
              wrong == 0 ? "as by one thread" : "NOT as by one thread");
  return wrong == 0 ? 0 : 1;
}
