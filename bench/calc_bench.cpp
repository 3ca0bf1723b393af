// Every exported calculation on records whose tables are full.
#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>

#include "oracle/reference/transcription.h"
#include "scene.h"
#include "table.h"
#include "tavd/ewads.h"
#include "tavd/tavca.h"

namespace bench {

namespace {

namespace ref = transcription;
using reference::Point;

constexpr int kPoints = 64;               // operating points of one run
constexpr double kSoundPowerRatio = 3.0;  // wanted of tavca_lw

std::shared_ptr<Scene> scene(std::int16_t kind) {
  return bench::scene(kind, kPoints);
}

// A line of the table: both functions get the record and a point.
template <typename Library, typename Yardstick>
void add(std::vector<Job>& jobs, const std::shared_ptr<Scene>& scene, std::string name, std::string detail,
         Library library, Yardstick yardstick, Wanted wanted = {}) {
  const auto run = [scene](auto function) {
    return [scene, function] {
      for (const Point& at : scene->points) function(scene->product.fd, at);
    };
  };
  jobs.push_back({std::move(name), std::move(detail), kPoints, run(library), run(yardstick), wanted, {}});
}

// The same call of both, with the record as `fd` and the point as `at`.
#define TAVD_LINE(scene, detail, library_name, library_call, yardstick_call, ...) \
  add(                                                                            \
      jobs, scene, library_name, detail,                                          \
      [](FlowData& fd, const Point& at) {                                         \
        Out out;                                                                  \
        benchmark::DoNotOptimize(&fd);                                            \
        benchmark::DoNotOptimize(&at);                                            \
        library_call;                                                             \
        benchmark::DoNotOptimize(out);                                            \
      },                                                                          \
      [](FlowData& fd, const Point& at) {                                         \
        Out out;                                                                  \
        benchmark::DoNotOptimize(&fd);                                            \
        benchmark::DoNotOptimize(&at);                                            \
        yardstick_call;                                                           \
        benchmark::DoNotOptimize(out);                                            \
      } __VA_OPT__(, ) __VA_ARGS__)

// Where the calls leave their results.
struct Out {
  float result;
  float floats[TAVD_BANDS];
  int code;
};

void add_sound(std::vector<Job>& jobs) {
  struct Line {
    std::int16_t kind;
    const char* detail;
    double wanted;
  };
  for (const Line& line : {Line{10, "kind 10", 0}, Line{12, "kind 12", 0}, Line{13, "kind 13", 0},
                           Line{20, "kind 20", kSoundPowerRatio}, Line{22, "kind 22", 0},
                           Line{30, "kind 30", kSoundPowerRatio}, Line{40, "kind 40", 0}}) {
    TAVD_LINE(scene(line.kind), line.detail, "tavca_lw",
              out.code = tavca_lw(&fd, at.qv, at.dp, out.floats, &at.duct),
              out.code = ref::lw(&fd, at.qv, at.dp, out.floats, &at.duct), Wanted{.ratio = line.wanted});
  }
  const auto damper = scene(20);
  damper->product.fd.ndlw = 0;  // by position
  TAVD_LINE(damper, "kind 20", "tavca_dlw", out.code = tavca_dlw(&fd, at.qv, at.dp, out.floats),
            out.code = ref::dlw(&fd, at.qv, at.dp, out.floats));
}

void add_room(std::vector<Job>& jobs) {
  const auto any = scene(30);
  TAVD_LINE(
      any, "", "tavca_LpA",
      {
        for (int b = 0; b < TAVD_BANDS; ++b) out.floats[b] = at.dp / static_cast<float>(b + 1);
        out.result = tavca_LpA(out.floats);
      },
      {
        for (int b = 0; b < TAVD_BANDS; ++b) out.floats[b] = at.dp / static_cast<float>(b + 1);
        out.result = ref::LpA(out.floats, 4.0F);
      });
  TAVD_LINE(any, "63 Hz", "tavca_endref_A", out.result = tavca_endref_A(0, fd.ductarea),
            out.result = ref::endref_A(0, fd.ductarea));
  // Takes the reflection off again and again; the levels end at 0, the work stays the same.
  const auto opening = scene(20);
  std::memcpy(opening->product.fd.szclass, "TVX", 4);
  opening->product.fd.ductarea = 0.05F;
  TAVD_LINE(opening, "60 rows", "tavca_check_end_reflection", tavca_check_end_reflection(&fd),
            ref::check_end_reflection(&fd));
}

void add_pressure(std::vector<Job>& jobs) {
  const auto damper = scene(20);
  const auto curve = scene(12);
  const auto fan = scene(40);
  TAVD_LINE(curve, "kind 12", "tavca_floating_dp", out.result = tavca_floating_dp(&fd, at.qv),
            out.result = ref::floating_dp(&fd, at.qv));
  TAVD_LINE(fan, "kind 40", "tavca_fan_dp",
            out.code = tavca_fan_dp(&fd, at.qv, &out.floats[0], &out.floats[1], &out.floats[2]),
            out.code = ref::fan_dp(&fd, at.qv, &out.floats[0], &out.floats[1], &out.floats[2]));
  TAVD_LINE(fan, "kind 40", "tavca_fan_op_check", out.code = tavca_fan_op_check(&fd, at.qv, at.dp),
            out.code = ref::fan_op_check(&fd, at.qv, at.dp));
  TAVD_LINE(damper, "kind 20", "tavca_minmaxdptot",
            out.code = tavca_minmaxdptot(&fd, at.qv, &out.floats[0], &out.floats[1]),
            out.code = ref::minmaxdptot(&fd, at.qv, &out.floats[0], &out.floats[1]));
  TAVD_LINE(damper, "kind 20", "tavca_dptotmin", out.result = tavca_dptotmin(&fd, at.qv),
            out.result = ref::dptotmin(&fd, at.qv));
  TAVD_LINE(damper, "kind 20", "tavca_dptotmax", out.result = tavca_dptotmax(&fd, at.qv),
            out.result = ref::dptotmax(&fd, at.qv));
  TAVD_LINE(damper, "kind 20", "tavca_dptot_damperpos",
            out.result = tavca_dptot_damperpos(&fd, at.qv, at.pos),
            out.result = ref::dptot_damperpos(&fd, at.qv, at.pos));
  TAVD_LINE(damper, "kind 20", "tavca_damper_pos",
            out.code = tavca_damper_pos(&fd, at.qv, at.dp, &out.result),
            out.code = ref::damper_pos(&fd, at.qv, at.dp, &out.result));
  TAVD_LINE(damper, "kind 20", "tavca_damper_pos_fixed",
            out.code = tavca_damper_pos_fixed(&fd, at.qv, at.dp, &out.result),
            out.code = ref::damper_pos_fixed(&fd, at.qv, at.dp, &out.result));
}

void add_parameters(std::vector<Job>& jobs) {
  const auto any = scene(20);
  TAVD_LINE(any, "number", "tavca_param_setvalue", out.code = tavca_param_setvalue(&fd, "LEN", "45"),
            out.code = ref::param_setvalue(&fd, "LEN", "45"));
  TAVD_LINE(any, "", "tavca_param_valuetoreal", out.code = tavca_param_valuetoreal(" 12.5", &out.result),
            out.code = ref::param_valuetoreal(" 12.5", &out.result));
  TAVD_LINE(any, "labels", "tavca_param_valuecmp", out.code = tavca_param_valuecmp("\"open\"", "OPENED"),
            out.code = ref::param_valuecmp("\"open\"", "OPENED"));
  TAVD_LINE(any, "by parameter", "tavca_L2_isothermal", out.result = tavca_L2_isothermal(&fd, at.qv, "15"),
            out.result = ref::L2_isothermal(&fd, at.qv, "15"));
}

void add_air(std::vector<Job>& jobs) {
  const auto any = scene(30);
  TAVD_LINE(any, "", "tavca_pdyn", out.result = tavca_pdyn(at.qv, 0.1F, 0),
            out.result = ref::pdyn(at.qv, 0.1F, 0));
  TAVD_LINE(any, "", "tavca_ductarea_m2", out.result = tavca_ductarea_m2(at.duct.b, at.duct.h),
            out.result = ref::ductarea_m2(at.duct.b, at.duct.h));
  TAVD_LINE(any, "", "tavca_qminqmax", out.code = tavca_qminqmax(&fd, &out.floats[0], &out.floats[1]),
            out.code = ref::qminqmax(&fd, &out.floats[0], &out.floats[1]));
  TAVD_LINE(any, "", "tavca_linlog_interp",
            out.result = tavca_linlog_interp(1.0F, 3.0F, at.qv, 20.0F, at.dp + 1.0F),
            out.result = ref::linlog_interp(1.0F, 3.0F, at.qv, 20.0F, at.dp + 1.0F));
  TAVD_LINE(any, "", "tavca_loglin_interp",
            out.result = tavca_loglin_interp(10.0F, 300.0F, at.qv, 20.0F, at.dp),
            out.result = ref::loglin_interp(10.0F, 300.0F, at.qv, 20.0F, at.dp));
}

void add_sizes(std::vector<Job>& jobs) {
  const auto any = scene(30);
  TAVD_LINE(any, "", "ewads_is_circular", out.code = ewads_is_circular(&at.duct) ? 1 : 0,
            out.code = ref::is_circular(&at.duct) ? 1 : 0);
  TAVD_LINE(any, "", "ewads_is_rectangular", out.code = ewads_is_rectangular(&at.duct) ? 1 : 0,
            out.code = ref::is_rectangular(&at.duct) ? 1 : 0);
  TAVD_LINE(any, "", "ewads_equal_size", out.code = ewads_equal_size(&at.duct, &at.duct),
            out.code = ref::equal_size(&at.duct, &at.duct));
  TAVD_LINE(any, "", "ewads_greater_b_or_h", out.code = ewads_greater_b_or_h(&at.duct, &at.duct),
            out.code = ref::greater_b_or_h(&at.duct, &at.duct));
  TAVD_LINE(any, "", "ewads_dekv", out.result = ewads_dekv(&at.duct), out.result = ref::dekv(&at.duct));
  TAVD_LINE(any, "", "ewads_dhydr", out.result = ewads_dhydr(&at.duct), out.result = ref::dhydr(&at.duct));
  TAVD_LINE(any, "", "ewads_diagonal", out.code = ewads_diagonal(&at.duct),
            out.code = ref::diagonal(&at.duct));
  TAVD_LINE(any, "", "ewads_m2", out.result = ewads_m2(&at.duct), out.result = ref::m2(&at.duct));
  TAVD_LINE(any, "", "ewads_vms", out.result = ewads_vms(&at.duct, 100.0),
            out.result = ref::vms(&at.duct, 100.0));
  TAVD_LINE(
      any, "", "ewads_sprintf",
      {
        char text[32];
        out.code = static_cast<unsigned char>(ewads_sprintf(&at.duct, text)[0]);
      },
      {
        char text[32];
        ref::print(&at.duct, text);
        out.code = static_cast<unsigned char>(text[0]);
      });
  TAVD_LINE(
      any, "", "ewads_sscanf",
      {
        char text[] = "400x200";
        DuctSize size{};
        out.code = ewads_sscanf(text, &size) + size.h;
      },
      {
        char text[] = "400x200";
        DuctSize size{};
        out.code = ref::scan(text, &size) + size.h;
      });
}

#undef TAVD_LINE

}  // namespace

void add_calculations(std::vector<Job>& jobs) {
  add_sound(jobs);
  add_room(jobs);
  add_pressure(jobs);
  add_parameters(jobs);
  add_air(jobs);
  add_sizes(jobs);
  for (Job& job : jobs) {
    job.group =
        "\n## Calculations\n\nThe yardstick is the plain transcription of the formulas that the tests "
        "compare the\n"
        "library with. Records are full to the last row, two parameters are chosen.\n\n"
        "| Function | Product | Library, ns | Yardstick, ns | Times as fast | Allocations | Wanted |\n"
        "|---|---|---:|---:|---:|---:|---|\n";
  }
}

}  // namespace bench
