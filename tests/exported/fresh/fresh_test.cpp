// What the three drawings do in a process that has called none of their inits. Each test is a process of its
// own: this program never calls an init outside of one.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "tavd/tavd.h"
#include "tavdgui/tavdgui.h"

namespace {

// One of the three drawings: everything that a host may call, in a wrong order.
struct Drawing {
  const char* name;
  void (*call_all)();              // all but drawing
  void (*draw)(tavd_hdc surface);  // with and without tools
  intptr_t (*procedure)(tavd_hwnd, unsigned int, uintptr_t, intptr_t);
};

void PrintTo(const Drawing& drawing, std::ostream* out) {
  *out << drawing.name;
}

void call_flow_diagram() {
  tgui_window* const dialog = tgui_create_dialog("");
  tavdg_release();
  tavdg_destroy_drawing_tools();
  tavdg_set_tavb(1);
  tavdg_set_xunit(TAVDG_FLOW_M3_H);
  tavdg_set_yunit(TAVDG_PRESSURE_KPA);
  tavdg_set_dptype(TAVDG_DP_STATIC);
  tavdg_set_title("title");
  tavdg_set_LpA_label("label");
  tavdg_set_damperpos_label("label");
  tavdg_set_a_label(1.0f, "label");
  tavdg_set_lpmin_lpmax_lpstep(20.0f, 50.0f, 5.0f);
  tavdg_set_operation_point(50.0f, 60.0f);
  tavdg_set_qvlimits(10.0f, 100.0f);
  tavdg_setcurveresolution(4);
  tavdg_set_parameter("G", "45");
  tavdg_reset_parameters();
  tavdg_fillsizeLB(dialog);
  tavdg_update_from_list(dialog);
  tavdg_fill_parameter_combo(dialog, 1);
  tavdg_update_parameter_combo(dialog, 1);
  tavdg_resize(0, 0, 400, 300);
  tavdg_resize_default();
  if (tavdg_initdiagramdata(nullptr) != TAVDG_NOT_BUILT) std::_Exit(3);
  tavdg_release();
  tavdg_release();
  tgui_destroy_window(dialog);
}

void draw_flow_diagram(tavd_hdc surface) {
  tavdg_draw_diagram(surface);
  tavdg_create_drawing_tools();
  tavdg_draw_diagram(surface);
  tavdg_destroy_drawing_tools();
  tavdg_destroy_drawing_tools();
}

void call_throw_diagram() {
  tgui_window* const dialog = tgui_create_dialog("");
  L2dg_release();
  L2dg_destroy_drawing_tools();
  L2dg_set_title("title");
  L2dg_set_damperpos_label("label");
  L2dg_setcurveresolution(4);
  L2dg_set_parameter("G", "45");
  L2dg_reset_parameters();
  L2dg_fillsizeLB(dialog);
  L2dg_update_from_list(dialog);
  L2dg_fill_parameter_combo(dialog, 1, 0);
  L2dg_update_parameter_combo(dialog, 1);
  L2dg_resize(0, 0, 400, 300);
  L2dg_resize_default();
  if (L2dg_initdiagramdata(nullptr) != L2DG_NOT_BUILT) std::_Exit(3);
  L2dg_release();
  L2dg_release();
  tgui_destroy_window(dialog);
}

void draw_throw_diagram(tavd_hdc surface) {
  L2dg_draw_diagram(surface);
  L2dg_create_drawing_tools();
  L2dg_draw_diagram(surface);
  L2dg_destroy_drawing_tools();
  L2dg_destroy_drawing_tools();
}

void call_shape_picture() {
  tgui_window* const dialog = tgui_create_dialog("");
  tavdshapepic_release();
  tavdshapepic_destroy_drawing_tools();
  tavdshapepic_set_title("");
  tavdshapepic_fillsizeLB(dialog);
  tavdshapepic_update_from_list(dialog);
  tavdshapepic_resize(0, 0, 100, 168);
  tavdshapepic_resize_default();
  tavdshapepic_initdata(nullptr);
  tavdshapepic_release();
  tavdshapepic_release();
  tgui_destroy_window(dialog);
}

void draw_shape_picture(tavd_hdc surface) {
  tavdshapepic_draw(surface);
  tavdshapepic_create_drawing_tools();
  tavdshapepic_draw(surface);
  tavdshapepic_destroy_drawing_tools();
  tavdshapepic_destroy_drawing_tools();
}

class Fresh : public testing::TestWithParam<Drawing> {};

// Lines, figures and texts of a recording; what is selected and set does not show.
bool shows_something(tgui_surface* recording) {
  const std::string drawn = tgui_recording_text(recording);
  for (const char* operation : {"line ", "ellipse ", "arc ", "text \"", "textw"}) {
    if (drawn.find(std::string("\n") + operation) != std::string::npos) return true;
  }
  return false;
}

TEST_P(Fresh, EveryCallWithoutAnInitComesBack) {
  EXPECT_EXIT(
      {
        GetParam().call_all();
        std::exit(0);
      },
      testing::ExitedWithCode(0), "");
}

TEST_P(Fresh, DrawingWithoutAnInitShowsNothing) {
  EXPECT_EXIT(
      {
        tgui_surface* const recording = tgui_recording_create(1000, 1000);
        GetParam().draw(recording);
        GetParam().draw(nullptr);
        const bool showed = shows_something(recording);
        tgui_surface_destroy(recording);
        std::exit(showed ? 2 : 0);
      },
      testing::ExitedWithCode(0), "");
}

TEST_P(Fresh, WindowProcedureWithoutAnInitComesBack) {
  EXPECT_EXIT(
      {
        tgui_window* const window = tgui_create_dialog("");
        tgui_surface* const recording = tgui_recording_create(1000, 1000);
        tgui_set_surface(window, recording);
        GetParam().procedure(window, TGUI_WM_PAINT, 0, 0);
        GetParam().procedure(nullptr, TGUI_WM_PAINT, 0, 0);
        tgui_destroy_window(window);
        tgui_surface_destroy(recording);
        std::exit(0);
      },
      testing::ExitedWithCode(0), "");
}

INSTANTIATE_TEST_SUITE_P(
    Drawings, Fresh,
    testing::Values(Drawing{"flow diagram", call_flow_diagram, draw_flow_diagram, tavdg_diagram_proc},
                    Drawing{"throw diagram", call_throw_diagram, draw_throw_diagram, L2dg_diagram_proc},
                    Drawing{"shape picture", call_shape_picture, draw_shape_picture, tavdshapepic_picproc}));

}  // namespace
