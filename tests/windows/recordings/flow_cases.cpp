#include "cases.h"
#include "recording.h"
#include "tavd/tavdg.h"

namespace recordings {
namespace {

using Step = void (*)(const Product&);

void nothing(const Product&) {}

void choose_point(const Product& product) {
  const FlowData& flow = product.flow;
  tavdg_set_operation_point(middle(flow.qvmin, flow.qvmax), middle(flow.dpmin, flow.dpmax));
}

void choose_labels(const Product& product) {
  choose_point(product);
  tavdg_set_LpA_label("dB(A) \xB1 2 %");
  tavdg_set_damperpos_label("pos 100 %%");
  tavdg_set_a_label(2.0F, "half open \xBD");
  tavdg_set_a_label(4.0F, "%d open");
}

constexpr struct {
  const char* name;
  Step before;  // of the build
  Step after;
} kCases[] = {
    {"plain", nothing, nothing},
    {"point", choose_point, nothing},
    {"point-outside", [](const Product& p) { tavdg_set_operation_point(p.flow.qvmax * 2, p.flow.dpmin / 2); },
     nothing},
    {"flow-alone", [](const Product& p) { tavdg_set_operation_point(middle(p.flow.qvmin, p.flow.qvmax), 0); },
     nothing},
    {"static",
     [](const Product& p) {
       choose_point(p);
       tavdg_set_dptype(1);
     },
     nothing},
    {"units-metric",
     [](const Product& p) {
       choose_point(p);
       tavdg_set_xunit(3);
       tavdg_set_yunit(1);
     },
     nothing},
    {"units-imperial",
     [](const Product& p) {
       choose_point(p);
       tavdg_set_xunit(4);
       tavdg_set_yunit(2);
     },
     nothing},
    {"limits", [](const Product& p) { tavdg_set_qvlimits(p.flow.qvmin * 1.5F, p.flow.qvmax / 1.5F); },
     nothing},
    {"levels", [](const Product&) { tavdg_set_lpmin_lpmax_lpstep(20, 40, 4); }, nothing},
    {"labels", choose_labels, nothing},
    {"title", [](const Product&) { tavdg_set_title(kTitle); }, nothing},
    {"fine", [](const Product&) { tavdg_setcurveresolution(6); }, nothing},
    {"resized", choose_point, [](const Product&) { tavdg_resize(-300, 200, 7000, 5000); }},
};

int start(const Product& product, Step before) {
  tavdg_init_empty(module(), product.db);
  tavdg_reset_parameters();
  before(product);
  return tavdg_initdiagramdata(product.record);
}

void draw_flow(tavd_hdc hdc) {
  tavdg_create_drawing_tools();
  tavdg_draw_diagram(hdc);
  tavdg_destroy_drawing_tools();
}

void draw_values(const Product& product, Report& report) {
  for_each_value(product.flow, [&](const std::string& parameter, const std::string& value) {
    tavdg_init_empty(module(), product.db);
    tavdg_reset_parameters();
    tavdg_set_parameter(parameter.c_str(), value.c_str());
    choose_point(product);
    const int result = tavdg_initdiagramdata(product.record);
    report.add(product.name, "flow " + parameter + "=" + value, result, drawn(draw_flow));
  });
  tavdg_reset_parameters();
}

}  // namespace

void draw_flow_cases(const Product& product, Report& report) {
  for (const auto& each : kCases) {
    const int result = start(product, each.before);
    each.after(product);
    report.add(product.name, std::string("flow ") + each.name, result, drawn(draw_flow));
  }
  draw_values(product, report);
  const int result = start(product, choose_point);
  report.add(product.name, "flow window", result, result == 0 ? painted(tavdg_diagram_proc, 640, 401) : "");
  tavdg_release();
}

}  // namespace recordings
