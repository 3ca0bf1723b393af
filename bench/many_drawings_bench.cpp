// Pictures that sixteen threads draw through libtavdn, beside the same pictures by one thread and by sixteen
// processes.
#include <array>
#include <atomic>
#include <barrier>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stop_token>
#include <string>
#include <thread>
#include <vector>

#include "processes.h"
#include "scene.h"
#include "table.h"
#include "tavd/tavdg.h"
#include "tavd/tavdn.h"
#include "tavdgui/tavdcairo.h"

namespace bench {
namespace {

constexpr std::size_t kThreads = 16;
// Of one run. The caches of sixteen threads are cold when it begins, which takes 9 ms and counts for little.
constexpr std::size_t kPictures = 128 * kThreads;
constexpr double kWantedRatio = 1.8;        // beside one thread, on two cores
constexpr double kWantedOfProcesses = 0.9;  // beside sixteen processes, wherever
constexpr double kMicrosecond = 1000;
constexpr std::int32_t kWidth = 800;  // pixels, as a gallery has them
constexpr std::int32_t kHeight = 600;
constexpr double kPageWidth = 297;  // mm
constexpr double kPageHeight = 210;
constexpr std::array<std::int16_t, 4> kKinds = {10, 12, 20, 30};

struct Form {
  const char* name;
  tgui_surface* (*create)();
};
constexpr std::array<Form, 3> kForms = {{
    {"SVG", [] { return tgui_cairo_svg("x.svg", kWidth, kHeight); }},
    {"PNG", [] { return tgui_cairo_png("x.png", kWidth, kHeight); }},
    {"PDF", [] { return tgui_cairo_pdf("x.pdf", kWidth, kHeight, kPageWidth, kPageHeight); }},
}};

std::int32_t keep(void* kept, const void* bytes, std::size_t length) {
  static_cast<std::string*>(kept)->assign(static_cast<const char*>(bytes), length);
  return 0;
}

// Flow diagrams of products that all threads share, as files in memory.
class Drawings {
 public:
  explicit Drawings(const Form& form) : form_(form) {
    for (std::size_t i = 0; i < kKinds.size(); ++i) {
      tavdn_prepare(&scene(kKinds[i], 1)->product.fd, nullptr, &products_[i]);
    }
  }
  ~Drawings() {
    for (tavdn_product* product : products_) tavdn_release(product);
  }
  Drawings(const Drawings&) = delete;
  Drawings& operator=(const Drawings&) = delete;

  void by_one() const {
    for (std::size_t i = 0; i < kPictures; ++i) draw(i);
  }
  void by_process(std::size_t part) const {
    for (std::size_t i = part; i < kPictures; i += kThreads) draw(i);
  }
  // By a thread of a team, which takes the next one that nobody has taken.
  void by_member(std::atomic<std::size_t>& taken) const {
    for (std::size_t i = taken++; i < kPictures; i = taken++) draw(i);
  }

 private:
  void draw(std::size_t number) const {
    tavdn_flow_options options{};
    options.size = sizeof options;
    options.title = "Sixteen threads";
    options.LpA_label = "dB(A)";
    options.roomdamp = 4.0F;
    tgui_surface* const surface = form_.create();
    tgui_set_map_mode(surface, TGUI_MM_ANISOTROPIC);
    tgui_set_window_ext(surface, TAVDG_EXTENT, TAVDG_EXTENT);
    tgui_set_viewport_ext(surface, kWidth, kHeight);
    const int drawn = tavdn_draw_flow(products_[number / kThreads % kKinds.size()], &options, surface);
    std::string bytes;
    const bool finished = tgui_cairo_finish_into(surface, keep, &bytes, nullptr, 0) == 0;
    if (drawn == TAVDN_OK && finished && !bytes.empty()) return;
    std::fprintf(stderr, "%s was not drawn\n", form_.name);
    std::exit(2);
  }

  const Form& form_;
  std::array<tavdn_product*, kKinds.size()> products_{};
};

// Threads that live as long as a server's do: each makes its fonts once, in the first run.
class Team {
 public:
  explicit Team(const Drawings& drawings) {
    for (std::size_t member = 0; member < kThreads; ++member) {
      threads_.emplace_back([this, &drawings](const std::stop_token& stop) {
        for (begin_.arrive_and_wait(); !stop.stop_requested(); begin_.arrive_and_wait()) {
          drawings.by_member(taken_);
          end_.arrive_and_wait();
        }
      });
    }
  }
  ~Team() {
    for (std::jthread& thread : threads_) thread.request_stop();
    begin_.arrive_and_wait();
  }
  Team(const Team&) = delete;
  Team& operator=(const Team&) = delete;

  void run() {
    taken_ = 0;
    begin_.arrive_and_wait();
    end_.arrive_and_wait();
  }

 private:
  std::atomic<std::size_t> taken_ = 0;
  std::barrier<> begin_{kThreads + 1};
  std::barrier<> end_{kThreads + 1};
  std::vector<std::jthread> threads_;
};

// The team, the one who draws alone, and as many processes as the team has threads.
struct Contest {
  explicit Contest(const Form& form)
      : drawings(form),
        processes(kThreads, [this](std::size_t part) { drawings.by_process(part); }),
        team(drawings) {}
  Drawings drawings;
  Processes processes;
  Team team;
};

}  // namespace

void add_drawings(std::vector<Job>& jobs) {
  for (const Form& form : kForms) {
    const auto contest = std::make_shared<Contest>(form);
    Job job;
    job.name = "tavdn_draw_flow";
    job.detail = std::string(form.name) + " beside one thread";
    job.calls = static_cast<int>(kPictures);
    job.library = [contest] { contest->team.run(); };
    job.yardstick = [contest] { contest->drawings.by_one(); };
    job.wanted.ratio = kWantedRatio;
    job.wanted.may_allocate = true;
    job.unit = kMicrosecond;
    job.group =
        "\n## Drawings by many threads\n\nFlow diagrams of 800 by 600 pixels as files in memory, by sixteen "
        "threads that live on.\nSixteen processes wait for nothing of each other, and share the processors "
        "as the threads do.\n\n"
        "| Function | File | Sixteen threads, us a picture | Yardstick, us a picture | Times as fast | "
        "Allocations | Wanted |\n"
        "|---|---|---:|---:|---:|---:|---|\n";
    jobs.push_back(job);
    job.detail = std::string(form.name) + " beside sixteen processes";
    job.yardstick = [contest] { contest->processes.run(); };
    job.wanted.ratio = kWantedOfProcesses;
    jobs.push_back(job);
  }
}

}  // namespace bench
