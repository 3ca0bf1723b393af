#include "cases.h"
#include "recording.h"
#include "tavd/tavdshapepic.h"

namespace recordings {
namespace {

void draw(tavd_hdc hdc) {
  tavdshapepic_create_drawing_tools();
  tavdshapepic_draw(hdc);
  tavdshapepic_destroy_drawing_tools();
}

void add(const Product& product, Report& report, const std::string& drawing) {
  report.add(product.name, "picture " + drawing, 0, drawn(draw));
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

}  // namespace recordings
