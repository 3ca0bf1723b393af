// Hostile products, settings and sizes through all three drawings: the flow diagram, the throw diagram and
// the sketch, onto the recording surface and as an SVG picture.
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <vector>

#include "fuzz/input.h"
#include "fuzz/records.h"
#include "tavd/tavd.h"
#include "tavdgui/tavdcairo.h"
#include "tavdgui/tavdgui.h"

namespace {

using fuzz::Input;
using fuzz::Records;
using fuzz::require;

struct Rectangle {
  std::int16_t left, top, right, bottom;
};

struct Settings {
  explicit Settings(Input& input)
      : flags(input.number<std::uint8_t>()),
        x_unit(input.number<std::int8_t>()),
        y_unit(input.number<std::int8_t>()),
        resolution(input.number<std::int8_t>()),
        resize(input.number<Rectangle>()) {
    for (float& value : numbers) value = input.number<float>();
    for (std::string& text : texts) text = input.text();
  }

  bool has(int bit) const { return (flags >> bit & 1) != 0; }

  std::uint8_t flags;  // 0: static pressure, 1: resized, 2: as SVG, 3: through the window
  std::int8_t x_unit, y_unit, resolution;
  Rectangle resize;
  float numbers[8];      // lpmin, lpmax, lpstep, qv, dp, qv1, qv2, position of the a-label
  std::string texts[6];  // title, level label, position label, a-label, parameter's name and value
};

struct Drawing {
  std::function<void()> create_tools, destroy_tools;
  std::function<void(tavd_hdc)> draw;
  const char* window_class;
};

std::string record_once(const Drawing& drawing) {
  tgui_surface* surface = tgui_recording_create(1000, 1000);
  drawing.create_tools();
  drawing.draw(surface);
  drawing.destroy_tools();
  std::string text = tgui_recording_text(surface);
  tgui_surface_destroy(surface);
  return text;
}

void paint_window(const Drawing& drawing) {
  tgui_surface* surface = tgui_recording_create(1000, 1000);
  tgui_window* window =
      tgui_create_window(drawing.window_class, "", 0, 0, 0, 640, 480, nullptr, 0, tgui_main_module());
  if (window != nullptr) {
    tgui_set_surface(window, surface);
    tgui_send_message(window, TGUI_WM_PAINT, 0, 0);
    tgui_destroy_window(window);
  }
  tgui_surface_destroy(surface);
}

void draw_svg(const Drawing& drawing) {
  static const std::string path =
      (std::filesystem::temp_directory_path() / ("tavd-fuzz-" + std::to_string(getpid()) + ".svg")).string();
  tgui_surface* surface = tgui_cairo_svg(path.c_str(), 500, 500);
  tgui_set_map_mode(surface, TGUI_MM_ANISOTROPIC);
  tgui_set_window_ext(surface, 10000, 10000);
  tgui_set_viewport_ext(surface, 500, 500);
  drawing.create_tools();
  drawing.draw(surface);
  drawing.destroy_tools();
  require(tgui_cairo_finish(surface, nullptr, 0) == 0);
  std::filesystem::remove(path);
}

// A drawing depends on nothing but its state: the second is the first again.
void draw(const Settings& settings, const Drawing& drawing) {
  require(record_once(drawing) == record_once(drawing));
  if (settings.has(2)) draw_svg(drawing);
  if (settings.has(3)) paint_window(drawing);
}

void draw_flow_diagram(const Settings& settings, const Records& records) {
  const auto& n = settings.numbers;
  tavdg_init(tgui_main_module(), records.db(), nullptr, 0, n[3], n[4]);
  tavdg_set_xunit(settings.x_unit);
  tavdg_set_yunit(settings.y_unit);
  tavdg_set_dptype(settings.has(0) ? 1 : 0);
  tavdg_set_title(settings.texts[0].c_str());
  tavdg_set_LpA_label(settings.texts[1].c_str());
  tavdg_set_damperpos_label(settings.texts[2].c_str());
  tavdg_set_a_label(n[7], settings.texts[3].c_str());
  tavdg_set_lpmin_lpmax_lpstep(n[0], n[1], n[2]);
  tavdg_setcurveresolution(settings.resolution);
  tavdg_set_parameter(settings.texts[4].c_str(), settings.texts[5].c_str());
  if (settings.has(1)) {
    tavdg_resize(settings.resize.left, settings.resize.top, settings.resize.right, settings.resize.bottom);
  }
  tavdg_initdiagramdata(records.product());
  tavdg_set_operation_point(n[3], n[4]);
  tavdg_set_qvlimits(n[5], n[6]);
  draw(settings, {tavdg_create_drawing_tools, tavdg_destroy_drawing_tools, tavdg_draw_diagram, "TAVDDGR"});
  tavdg_release();
  tavdg_reset_parameters();
}

void draw_throw_diagram(const Settings& settings, const Records& records) {
  L2dg_init(tgui_main_module(), records.db(), nullptr, 0, settings.numbers[3], settings.numbers[4],
            settings.x_unit);
  L2dg_set_title(settings.texts[0].c_str());
  L2dg_set_damperpos_label(settings.texts[2].c_str());
  L2dg_set_parameter(settings.texts[4].c_str(), settings.texts[5].c_str());
  if (settings.has(1)) {
    L2dg_resize(settings.resize.left, settings.resize.top, settings.resize.right, settings.resize.bottom);
  }
  L2dg_initdiagramdata(records.product());
  draw(settings, {L2dg_create_drawing_tools, L2dg_destroy_drawing_tools, L2dg_draw_diagram, "TAVDDGRL02"});
  L2dg_release();
  L2dg_reset_parameters();
}

void draw_sketch(const Settings& settings, const Records& records) {
  tavdshapepic_init(tgui_main_module(), records.db(), nullptr, 0);
  tavdshapepic_set_title(settings.texts[0].substr(0, 79).c_str());
  tavdshapepic_initdata(records.product());
  if (settings.has(1)) {
    tavdshapepic_resize(settings.resize.left, settings.resize.top, settings.resize.right,
                        settings.resize.bottom);
  }
  draw(settings, {tavdshapepic_create_drawing_tools, tavdshapepic_destroy_drawing_tools, tavdshapepic_draw,
                  "TAVDSHAPE"});
  tavdshapepic_release();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  const Settings settings(input);
  const Records records(input);
  draw_flow_diagram(settings, records);
  draw_throw_diagram(settings, records);
  draw_sketch(settings, records);
  return 0;
}
