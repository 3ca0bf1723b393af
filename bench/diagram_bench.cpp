// The level search beside its plain transcription, and whole paints of the flow diagram on a recording.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include "diagram/soundlevels.h"
#include "oracle/reference/level_search.h"
#include "oracle/reference/records.h"
#include "paint.h"
#include "table.h"
#include "tavdgui/tavdgui.h"

namespace bench {

namespace {

namespace ref = transcription;
using reference::Random;

constexpr double kSearchRatio = 3.0;  // wanted of the level search
constexpr float kRoomdamp = 4.0F;     // dB, what the library starts with
constexpr std::uint64_t kSeed = 1;

// A sound table and the levels that a diagram seeks in it.
struct LevelScene {
  tavd::LevelTable table{kRoomdamp};
  std::vector<ref::LevelSearchRow> rows;
  std::vector<float> levels;
  int groups = 0;
};

// Measured rows: whole dB, rising with the pressure by 12 dB an octave or so.
std::shared_ptr<LevelScene> level_scene(int groups, int rows_of_group, std::vector<float> levels) {
  Random random(kSeed);
  auto scene = std::make_shared<LevelScene>();
  scene->groups = groups;
  scene->levels = std::move(levels);
  for (int g = 0; g < groups; ++g) {
    float val = random.uniform(10, 40);
    float level = random.uniform(20, 35);
    for (int i = 0; i < rows_of_group; ++i) {
      tavd::LevelRow row{};
      row.group = static_cast<std::int16_t>(g);
      row.val = val;
      for (float& band : row.lw) band = std::floor(level + random.uniform(-12, 12));
      scene->table.add(row);
      ref::LevelSearchRow copy{row.group, row.val, {}};
      std::copy(row.lw, row.lw + TAVD_BANDS, copy.lw);
      scene->rows.push_back(copy);
      val *= random.uniform(1.6F, 2.5F);
      level += random.uniform(8, 14);
    }
  }
  return scene;
}

void add_search(std::vector<Job>& jobs, const char* detail, const std::shared_ptr<LevelScene>& scene) {
  const auto each = [scene](auto find) {
    return [scene, find] {
      for (const float L : scene->levels) {
        for (int g = 0; g < scene->groups; ++g) benchmark::DoNotOptimize(find(*scene, L, g));
      }
    };
  };
  jobs.push_back(
      {"lp_find", detail, static_cast<int>(scene->levels.size()) * scene->groups,
       each([](const LevelScene& s, float L, int g) { return tavd::lp_find(s.table, L, g); }),
       each([](const LevelScene& s, float L, int g) {
         return ref::lp_find(static_cast<int>(s.rows.size()), s.rows.data(), L, g, kRoomdamp);
       }),
       Wanted{.ratio = kSearchRatio},
       "\n## Level search\n\nThe flow or pressure at which a product is as loud as wanted, beside the "
       "plain\ntranscription of the search that the tests compare it with.\n\n"
       "| Function | Product | Library, ns | Yardstick, ns | Times as fast | Allocations | Wanted |\n"
       "|---|---|---:|---:|---:|---:|---|\n"});
}

// Paints of one product on a recording.
class RecordedPaint {
 public:
  explicit RecordedPaint(std::int16_t kind) : paint_(kind), surface_(tgui_recording_create(1000, 1000)) {}
  ~RecordedPaint() { tgui_surface_destroy(surface_); }
  RecordedPaint(const RecordedPaint&) = delete;
  RecordedPaint& operator=(const RecordedPaint&) = delete;

  void whole() {
    tgui_recording_clear(surface_);
    paint_.whole(surface_);
  }
  void chart_alone() {
    tgui_recording_clear(surface_);
    paint_.chart_alone(surface_);
  }

 private:
  Paint paint_;
  tgui_surface* surface_;
};

void add_paints(std::vector<Job>& jobs) {
  for (const std::int16_t kind : kPaintedKinds) {
    const auto paint = std::make_shared<RecordedPaint>(kind);
    jobs.push_back(
        {"tavdg_draw_diagram", "kind " + std::to_string(kind), 1, [paint] { paint->whole(); },
         [paint] { paint->chart_alone(); }, Wanted{.may_allocate = true},
         "\n## Painting\n\nOne paint of the flow diagram on a recording surface, its pens and fonts "
         "included.\nThe yardstick is the chart without curves. What is allocated are the operations "
         "written\ndown, pens and fonts, and one block for each smoothed curve.\n\n"
         "| Function | Product | Library, ns | Chart alone, ns | Times as fast | Allocations | Wanted |\n"
         "|---|---|---:|---:|---:|---:|---|\n"});
  }
}

}  // namespace

void add_jobs(std::vector<Job>& jobs) {
  add_search(jobs, "marks: 1 group of 8 rows, 5 levels", level_scene(1, 8, {20, 25, 30, 35, 40}));
  add_search(jobs, "lines: 10 groups of 6 rows, 5 levels", level_scene(10, 6, {20, 30, 40, 50, 60}));
  add_search(jobs, "lines: 20 groups of 3 rows, 10 levels",
             level_scene(20, 3, {21, 25, 29, 33, 37, 41, 45, 49, 53, 57}));
  add_paints(jobs);
}

}  // namespace bench
