#include <algorithm>

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

// Font, pen and alignment stay selected, so that the host puts them back.
void draw(tavd_hdc hdc) {
  L2dg_create_drawing_tools();
  L2dg_draw_diagram(hdc);
  L2dg_destroy_drawing_tools();
}

void draw_without_tools(tavd_hdc hdc) {
  L2dg_draw_diagram(hdc);
}

void add(const Product& product, Report& report, const std::string& drawing, int result,
         void (*how)(tavd_hdc) = draw) {
  report.add(product.name, "throw " + drawing, result, drawn(how));
}

void draw_values(const Product& product, float qv, Report& report) {
  for (int row = 0; row < std::clamp<int>(product.flow.nparL2, 0, TAVD_PARL2_ROWS); ++row) {
    const std::string value = parameter_value(product.flow.parL2[row].value);
    start(product, qv, 0);
    L2dg_set_parameter("G", value.c_str());
    add(product, report, "G=" + value, L2dg_initdiagramdata(product.record));
  }
  for (int index = 0; index < std::clamp<int>(product.flow.npar, 0, TAVD_PARAMETERS); ++index) {
    const ParTable& parameter = product.flow.par[index];
    for (int row = 0; row < std::clamp<int>(parameter.count, 0, TAVD_PARAMETER_ROWS); ++row) {
      const std::string value = parameter_value(parameter.table[row].value);
      start(product, qv, 0);
      L2dg_set_parameter(parameter.name, value.c_str());
      add(product, report, std::string(parameter.name) + "=" + value, L2dg_initdiagramdata(product.record));
    }
  }
  L2dg_reset_parameters();
}

}  // namespace

void draw_throw_cases(const Product& product, Report& report) {
  const float qv = middle(product.flow.qvmin, product.flow.qvmax);
  for (std::int16_t unit = 0; unit < kUnits; ++unit) {
    add(product, report, "unit " + std::to_string(unit), start(product, qv, unit));
  }
  add(product, report, "point outside", start(product, product.flow.qvmax * 2, 0));
  add(product, report, "without tools", start(product, qv, 0), draw_without_tools);
  draw_values(product, qv, report);

  start(product, qv, 0);
  L2dg_set_title(kTitle);
  add(product, report, "title", L2dg_initdiagramdata(product.record));
  L2dg_resize(100, -50, 6000, 4000);
  add(product, report, "resized", 0);

  const int result = start(product, qv, 0);
  report.add(product.name, "throw window", result, result == 0 ? painted(L2dg_diagram_proc, 333, 500) : "");
  L2dg_release();
}

}  // namespace recordings
