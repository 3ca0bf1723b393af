#include "cases.h"
#include "recording.h"
#include "tavd/L2dg.h"

namespace recordings {
namespace {

constexpr std::int16_t kUnits = 7;

// Where the platform refuses the window class, the first start in the process ends there, and the next one
// goes on.
int start(const Product& product, float qv, std::int16_t unit) {
  static const int first = L2dg_init(module(), product.db, nullptr, 0, 0, 0, 0);
  static_cast<void>(first);
  L2dg_reset_parameters();
  return L2dg_init(module(), product.db, product.record, 0, qv, 0, unit);
}

void add(const Product& product, Report& report, const std::string& drawing, int result) {
  report.add(product.name, "throw " + drawing, result, drawn(L2dg_draw_diagram));
}

// Font and pen stay selected, so that they are deleted when the context is gone.
void add_with_tools(const Product& product, Report& report, const std::string& drawing, int result) {
  L2dg_create_drawing_tools();
  add(product, report, drawing, result);
  L2dg_destroy_drawing_tools();
}

void draw_values(const Product& product, float qv, Report& report) {
  const auto draw = [&](const std::string& parameter, const std::string& value) {
    start(product, qv, 0);
    L2dg_set_parameter(parameter.c_str(), value.c_str());
    add_with_tools(product, report, parameter + "=" + value, L2dg_initdiagramdata(product.record));
  };
  for_each_throw_value(product.flow, draw);
  for_each_value(product.flow, draw);
  L2dg_reset_parameters();
}

}  // namespace

void draw_throw_cases(const Product& product, Report& report) {
  const float qv = middle(product.flow.qvmin, product.flow.qvmax);
  for (std::int16_t unit = 0; unit < kUnits; ++unit) {
    add_with_tools(product, report, "unit " + std::to_string(unit), start(product, qv, unit));
  }
  add_with_tools(product, report, "point outside", start(product, product.flow.qvmax * 2, 0));
  add(product, report, "without tools", start(product, qv, 0));
  draw_values(product, qv, report);

  start(product, qv, 0);
  L2dg_set_title(kTitle);
  add_with_tools(product, report, "title", L2dg_initdiagramdata(product.record));
  L2dg_resize(100, -50, 6000, 4000);
  add_with_tools(product, report, "resized", 0);

  const int result = start(product, qv, 0);
  report.add(product.name, "throw window", result, result == 0 ? painted(L2dg_diagram_proc, 333, 500) : "");
  L2dg_release();
}

}  // namespace recordings
