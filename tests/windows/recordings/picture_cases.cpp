#include <vector>

#include "cases.h"
#include "recording.h"
#include "tavd/tavdshapepic.h"
#include "tavd/tavdsrv.h"

namespace recordings {
namespace {

void draw_picture(tavd_hdc hdc) {
  tavdshapepic_create_drawing_tools();
  tavdshapepic_draw(hdc);
  tavdshapepic_destroy_drawing_tools();
}

constexpr std::int16_t kShape = 1110;   // attribute: shape number and measures
constexpr std::int16_t kHeader = 1650;  // attribute: flow data header
constexpr std::int16_t kFirstShape = 100;
constexpr std::int16_t kLastShape = 193;
constexpr int kVariants = 4;

// Measures of a shape that has one form, or chooses its form by the second or the fifth value.
std::vector<std::int16_t> measures(std::int16_t shape, int variant) {
  const auto form = static_cast<std::int16_t>(variant);
  if (variant != 0) return {shape, form, 220, 230, form, 250};
  std::vector<std::int16_t> values = {shape};
  for (std::int16_t value = 110; values.size() < 30; value = static_cast<std::int16_t>(value + 10)) {
    values.push_back(value);
  }
  return values;
}

template <class Item>
void insert(std::int16_t db, tavb_rec& record, std::int16_t attribute, const std::vector<Item>& items) {
  tavbinsertatt(db, &record, attribute, items.data(), static_cast<std::int16_t>(items.size() * sizeof(Item)));
}

void add(const Product& product, Report& report, const std::string& drawing) {
  report.add(product.name, "picture " + drawing, 0, drawn(draw_picture));
}

}  // namespace

void draw_picture_cases(const Product& product, Report& report) {
  tavdshapepic_init(module(), product.db, product.record, 0);
  add(product, report, "plain");
  report.add(product.name, "picture window", 0, painted(tavdshapepic_picproc, 777, 419));
  tavdshapepic_resize(-20, 30, 1500, 1999);
  add(product, report, "resized");
  tavdshapepic_resize_default();
  tavdshapepic_set_title(kTitle);
  tavdshapepic_initdata(product.record);
  add(product, report, "title");
  tavdshapepic_release();
}

void draw_shapes(std::int16_t db, Report& report) {
  for (std::int16_t shape = kFirstShape; shape <= kLastShape; ++shape) {
    for (int variant = 0; variant < kVariants; ++variant) {
      Product product{db, tavdsrv_newrec("DMP", "SHAPE"), "shape " + std::to_string(shape), {}};
      insert(db, product.record, kShape, measures(shape, variant));
      // Kind, width and height; the limits of flow and pressure count for nothing here.
      insert<std::int16_t>(db, product.record, kHeader, {120, 160, 100, 0, 0, 0, 0, 0, 0, 0, 0});
      tavdshapepic_init(module(), db, product.record, 0);
      add(product, report, "variant " + std::to_string(variant));
      tavbreleaserec(product.record);
    }
  }
  tavdshapepic_release();
}

}  // namespace recordings
