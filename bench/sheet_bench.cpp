// Data sheets and a schedule of a thousand pages as documents, on one core: processor time, bytes and memory.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

#include "product/database.h"
#include "sheet/report.h"
#include "sheet/subject.h"

namespace bench {
namespace {

using tavdhost::Database;
using tavdhost::SheetForm;
using tavdhost::SheetSubject;

// Wanted of the documents.
constexpr double kMostMilliseconds = 15;  // of a sheet
constexpr double kMostSeconds = 15;       // of a schedule of a thousand sheets
constexpr double kMostBytes = 80 * 1024;  // of the PDF of a sheet
constexpr double kMostGrowth = 20;        // MB that 1 000 sheets take more than 100

constexpr int kSheets = 1000;
constexpr const char* kFolder = "build/bench";

struct Shown {
  const char* class_id;
  const char* object_id;
  float qv, dp;  // l/s, Pa
  const char* what;
};
constexpr Shown kShown[] = {
    {"DMP", "QZDA-160", 50, 60, "adjustable damper"},
    {"ASD", "QZSA-160", 60, 60, "supply diffuser with throws"},
    {"FAN", "QZFA-160", 100, 200, "fan"},
    {"VAV", "QZVA-160", 60, 100, "device for a pressure range"},
};
constexpr const char* kEndings[] = {"pdf", "svg", "png"};

int missed = 0;

const char* judged(bool is_good) {
  if (!is_good) ++missed;
  return is_good ? "" : ": MISSED";
}

double processor_ms() {
  rusage used;
  getrusage(RUSAGE_SELF, &used);
  const auto ms = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
  };
  return ms(used.ru_utime) + ms(used.ru_stime);
}

double median(std::vector<double> times) {
  std::ranges::nth_element(times, times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2));
  return times[times.size() / 2];
}

std::string file_of(const std::string& name) {
  return std::string(kFolder) + "/" + name;
}

void measure_sheets(const std::string& path, int runs) {
  std::printf(
      "\n## Data sheets\n\nA whole sheet as a file, processor time on one core: the answers, all charts, the "
      "sketch, "
      "the texts. Median of %d;\nthe first sheet of a process also finds the fonts.\n\n"
      "| Product | Form | First, ms | Then, ms | kB | Wanted |\n|---|---|---:|---:|---:|---|\n",
      runs);
  const Database database(path);
  tavdhost::ProductChooser chooser(database);
  SheetForm form;
  tavdhost::name_database(path, form);
  for (const char* ending : kEndings) {
    for (const Shown& shown : kShown) {
      const std::string file = file_of(std::string(shown.class_id) + "-sheet." + ending);
      std::vector<double> times;
      for (int i = 0; i <= runs; ++i) {
        const double before = processor_ms();
        tavdhost::SheetDuty duty;
        duty.qv.plain = shown.qv;
        duty.dp = shown.dp;
        const SheetSubject subject =
            tavdhost::sheet_subject(database, chooser, {shown.class_id, shown.object_id}, {}, duty, form);
        tavdhost::write_sheet(subject, form, {file, ""});
        times.push_back(processor_ms() - before);
      }
      const double first = times.front();
      times.erase(times.begin());
      const double then = median(times);
      const auto bytes = static_cast<double>(std::filesystem::file_size(file));
      const bool is_pdf = std::string(ending) == "pdf";
      std::printf("| %s | %s | %.1f | %.1f | %.0f | ", shown.what, ending, first, then, bytes / 1024);
      if (is_pdf) {
        std::printf("%.0f ms, %.0f kB%s", kMostMilliseconds, kMostBytes / 1024,
                    judged(then <= kMostMilliseconds && bytes <= kMostBytes));
      }
      std::puts(" |");
    }
  }
}

// A schedule that has so many sheets: no duty is like another.
std::string make_schedule(int sheets) {
  const std::string name = file_of("duties.csv");
  std::ofstream file(name);
  file << "room,qv [l/s],dp [Pa],class\n";
  for (int i = 0; i < sheets; ++i) {
    file << "Room " << i << ',' << 20 + 0.1 * i << ',' << 30 + i % 60 << ',' << (i % 3 == 0 ? "DMP" : "ASD")
         << '\n';
  }
  return name;
}

struct Usage {
  double seconds, memory;  // memory in MB
};

// In a process of its own, whose memory is new.
Usage write_schedule(const std::string& path, int sheets) {
  const std::string schedule = make_schedule(sheets);
  std::fflush(stdout);
  const pid_t child = fork();
  if (child == 0) {
    std::cout.setstate(std::ios::failbit);  // what it says stands in no table
    SheetForm form;
    tavdhost::name_database(path, form);
    tavdhost::SelectCatalogue catalogue(path, {}, {});
    const std::string target = file_of("schedule.pdf");
    tavdhost::write_schedule(catalogue, {}, {schedule, false, false, 1, target}, form, {target, ""});
    _exit(0);
  }
  int status = 0;
  rusage used;
  if (child < 0 || wait4(child, &status, 0, &used) != child || status != 0) {
    std::fprintf(stderr, "the schedule was not written\n");
    std::exit(2);
  }
  const double seconds = static_cast<double>(used.ru_utime.tv_sec + used.ru_stime.tv_sec) +
                         static_cast<double>(used.ru_utime.tv_usec + used.ru_stime.tv_usec) / 1e6;
  return {seconds, static_cast<double>(used.ru_maxrss) / 1024};
}

void measure_schedules(const std::string& path, int sheets) {
  std::printf(
      "\nA schedule with a sheet for each duty, processor time on one core.\n\n"
      "| Sheets | s | Most memory, MB | MB of the file | Wanted |\n|---:|---:|---:|---:|---|\n");
  const Usage few = write_schedule(path, sheets / 10);
  std::printf("| %d | %.2f | %.0f | %.1f | |\n", sheets / 10, few.seconds, few.memory,
              static_cast<double>(std::filesystem::file_size(file_of("schedule.pdf"))) / 1e6);
  const Usage many = write_schedule(path, sheets);
  const bool is_good = many.seconds <= kMostSeconds && many.memory - few.memory <= kMostGrowth;
  std::printf("| %d | %.2f | %.0f | %.1f | %.0f s, at most %.0f MB more%s |\n", sheets, many.seconds,
              many.memory, static_cast<double>(std::filesystem::file_size(file_of("schedule.pdf"))) / 1e6,
              kMostSeconds, kMostGrowth, judged(is_good));
}

}  // namespace
}  // namespace bench

// bench_sheet CATALOGUE [--smoke]
int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: bench_sheet CATALOGUE [--smoke]\n");
    return 2;
  }
  const bool is_smoke = argc > 2;
  std::filesystem::create_directories(bench::kFolder);
  bench::measure_sheets(argv[1], is_smoke ? 1 : 15);
  bench::measure_schedules(argv[1], is_smoke ? 10 : bench::kSheets);
  if (bench::missed != 0)
    std::fprintf(stderr, "%d figures of documents miss what they want\n", bench::missed);
  return bench::missed == 0 || is_smoke ? 0 : 1;
}
