// Works the cases of cases.txt and tells what the library answers beside what is expected.
//
//   conformance CASES                the page, as Markdown; fails if a case misses its tolerance
//   conformance CASES --check PAGE   fails if PAGE is not that page to the letter, too
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <numbers>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "monotone_cubic.h"
#include "tavd/tavca.h"

namespace {

constexpr std::array<int, TAVD_BANDS> kNominal = {63, 125, 250, 500, 1000, 2000, 4000, 8000};  // Hz
constexpr double kSpeedOfSound = 340.0;                                                        // m/s
constexpr double kSmallestArea = 0.008;  // m2, of the openings that the end reflection is asked for
constexpr double kLargestArea = 1.9;     // m2
constexpr int kAreas = 5000;
constexpr double kPi = std::numbers::pi;

struct Figures {
  double expected;
  double computed;
};

int band_of(const std::string& input) {
  const auto* at = std::find(kNominal.begin(), kNominal.end(), std::stoi(input));
  if (at == kNominal.end()) throw std::runtime_error("no octave band " + input);
  return static_cast<int>(at - kNominal.begin());
}

double exact_centre(int band) {
  return 1000.0 * std::pow(10.0, 0.3 * (band - 4));
}

// ---- Sound
// ---------------------------------------------------------------------------------------------------

// What the library makes of 80 dB in one band and next to nothing in the others.
double level_of_one_band(int band) {
  float lw[TAVD_BANDS];
  std::fill(std::begin(lw), std::end(lw), -300.0F);
  lw[band] = 80.0F;
  return tavca_LpA(lw) - 80.0;
}

Figures a_weighting(const std::string& input) {
  const int band = band_of(input);
  const auto curve = [](double f) {
    constexpr double f1 = 20.599;
    constexpr double f2 = 107.653;
    constexpr double f3 = 737.862;
    constexpr double f4 = 12194.217;
    const double f_2 = f * f;
    return f4 * f4 * f_2 * f_2 /
           ((f_2 + f1 * f1) * std::sqrt((f_2 + f2 * f2) * (f_2 + f3 * f3)) * (f_2 + f4 * f4));
  };
  tavca_setroomdamp(0.0F);
  return {20.0 * std::log10(curve(exact_centre(band)) / curve(1000.0)), level_of_one_band(band)};
}

Figures a_weighted_sum(const std::string& input) {
  std::istringstream numbers(input);
  float lw[TAVD_BANDS];
  for (float& level : lw) {
    if (!(numbers >> level)) throw std::runtime_error("not eight levels: " + input);
  }
  tavca_setroomdamp(0.0F);
  return {0, tavca_LpA(lw)};
}

Figures energy_sum(const std::string& input) {
  // The weights that the library uses; whether they are right is asked above.
  constexpr std::array<double, TAVD_BANDS> weights = {-26.2, -16.1, -8.6, -3.2, 0, 1.2, 1.0, -1.1};
  tavca_setroomdamp(0.0F);
  std::mt19937 random(7235);
  double greatest = 0;
  for (int row = std::stoi(input); row > 0; --row) {
    float lw[TAVD_BANDS];
    double sum = 0;
    for (std::size_t b = 0; b < TAVD_BANDS; ++b) {
      lw[b] = -20.0F + static_cast<float>(random() % 12001) / 100.0F;
      sum += std::pow(10.0, (static_cast<double>(lw[b]) + weights[b]) / 10.0);
    }
    greatest = std::max(greatest, std::fabs(tavca_LpA(lw) - 10.0 * std::log10(sum)));
  }
  return {0, greatest};
}

// With the room damping that a process starts with, asked before any case has set another.
double default_level_of_one_band = 0;

Figures room_damping(const std::string& input) {
  return {10.0 * std::log10(4.0 / std::stod(input)), default_level_of_one_band};
}

// The greatest distance between the library's end reflection and the standard's for an opening that radiates
// into `solid_angle`.
Figures end_reflection(const std::string& input, double solid_angle) {
  const int band = band_of(input);
  const double f = exact_centre(band);
  double greatest = 0;
  int areas = 0;
  for (int step = 0; step <= kAreas; ++step) {
    const double area =
        kSmallestArea * std::pow(kLargestArea / kSmallestArea, static_cast<double>(step) / kAreas);
    const double ours = tavca_endref_A(band, static_cast<float>(area));
    if (ours <= 0.5) continue;
    const double k = 4.0 * kPi * f;
    const double standard =
        10.0 * std::log10(1.0 + solid_angle * kSpeedOfSound * kSpeedOfSound / (k * k * area));
    greatest = std::max(greatest, std::fabs(ours - standard));
    ++areas;
  }
  if (areas == 0) throw std::runtime_error("no area with an end reflection in band " + input);
  return {0, greatest};
}

// ---- Fan
// -----------------------------------------------------------------------------------------------------

const std::vector<double> kFanFlow = {0.9418, 1.886, 2.828, 3.302, 3.775, 4.171};  // m3/s
const std::vector<double> kFanPressure = {2685, 2536, 1698, 1191, 581, 0};         // Pa

double fan_pressure_at(double flow) {
  FlowData fd{};
  fd.nhdd = 1;
  fd.kind = 40;
  fd.kind100 = 140;
  fd.nfan = static_cast<std::int16_t>(kFanFlow.size());
  for (std::size_t i = 0; i < kFanFlow.size(); ++i) {
    fd.fancurve[i] = {static_cast<float>(kFanFlow[i] * 1000), static_cast<float>(kFanPressure[i]), 0};
  }
  float dptot = -1;
  if (tavca_fan_dp(&fd, static_cast<float>(flow * 1000), &dptot, nullptr, nullptr) != 0) {
    throw std::runtime_error("the fan has no answer");
  }
  return dptot;
}

Figures fan_between(const std::string& input) {
  const conformance::MonotoneCubic cubic(kFanFlow, kFanPressure);
  const int steps = std::stoi(input);
  double greatest = 0;
  for (std::size_t i = 0; i + 1 < kFanFlow.size(); ++i) {
    for (int step = 1; step < steps; ++step) {
      const double flow = kFanFlow[i] + (kFanFlow[i + 1] - kFanFlow[i]) * step / steps;
      greatest = std::max(greatest, std::fabs(fan_pressure_at(flow) - cubic.at(flow)));
    }
  }
  return {0, greatest};
}

// ---- Cases and page
// ------------------------------------------------------------------------------------------

struct Question {
  const char* name;
  const char* input_unit;
  Figures (*answer)(const std::string& input);
};
constexpr Question kQuestions[] = {
    {"a_weighting", "Hz", a_weighting},
    {"a_weighted_sum", "dB", a_weighted_sum},
    {"energy_sum", "rows", energy_sum},
    {"room_damping", "m2", room_damping},
    {"end_reflection_free", "Hz", [](const std::string& input) { return end_reflection(input, 4.0 * kPi); }},
    {"end_reflection_flush", "Hz", [](const std::string& input) { return end_reflection(input, 2.0 * kPi); }},
    {"fan_pressure", "m3/s",
     [](const std::string& input) {
       return Figures{0, fan_pressure_at(std::stod(input))};
     }},
    {"fan_between", "steps", fan_between},
};

std::vector<std::string> fields_of(const std::string& line) {
  std::vector<std::string> fields;
  std::istringstream text(line);
  for (std::string field; std::getline(text, field, '|');) {
    const auto first = field.find_first_not_of(' ');
    const auto last = field.find_last_not_of(' ');
    fields.push_back(first == std::string::npos ? "" : field.substr(first, last - first + 1));
  }
  if (fields.size() != 6) throw std::runtime_error("not six fields: " + line);
  return fields;
}

std::string decimal(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.5f", value);
  return text;
}

// One line of the page; counts a missed tolerance.
std::string work(const std::string& line, int* missed) {
  const std::vector<std::string> field = fields_of(line);
  const auto* question = std::find_if(std::begin(kQuestions), std::end(kQuestions),
                                      [&](const Question& q) { return field[0] == q.name; });
  if (question == std::end(kQuestions)) throw std::runtime_error("no question " + field[0]);
  Figures figures = question->answer(field[1]);
  if (field[2] != "formula") figures.expected = std::stod(field[2]);
  std::string held = "stated";
  std::string tolerance = "";
  if (field[3] != "stated") {
    const bool inside = std::fabs(figures.computed - figures.expected) <= std::stod(field[3]);
    held = inside ? "yes" : "**no**";
    tolerance = field[3];
    if (!inside) ++*missed;
  }
  return "| " + field[0] + " | " + field[1] + " " + question->input_unit + " | " + decimal(figures.expected) +
         " | " + decimal(figures.computed) + " | " + tolerance + " | " + field[4] + " | " + held + " | " +
         field[5] + " |\n";
}

std::string page_of(std::istream& cases, int* missed) {
  std::string page =
      "# Conformance\n\nNumbers of standards and measurements beside the library's. Made by "
      "`scripts/conformance` from\n"
      "`tests/oracle/conformance/cases.txt`; a test checks that it is up to date.\n";
  bool in_table = false;
  bool in_text = false;
  for (std::string line; std::getline(cases, line);) {
    if (line.rfind("##", 0) == 0) {
      page += "\n" + line + "\n";
      in_table = in_text = false;
    } else if (line.rfind("> ", 0) == 0) {
      page += (in_text ? "" : "\n") + line.substr(2) + "\n";
      in_table = false;
      in_text = true;
    } else if (!line.empty() && line[0] != '#') {
      if (!in_table) {
        page +=
            "\n| Asked | Input | Expected | Computed | Tolerance | Unit | Held | Source |\n"
            "|---|---|---:|---:|---:|---|---|---|\n";
      }
      page += work(line, missed);
      in_table = true;
      in_text = false;
    }
  }
  return page;
}

int run(int argc, char** argv) {
  if (argc != 2 && !(argc == 4 && std::string(argv[2]) == "--check")) {
    std::cerr << "usage: conformance CASES [--check PAGE]\n";
    return 2;
  }
  std::ifstream cases(argv[1]);
  if (!cases) throw std::runtime_error(std::string("cannot read ") + argv[1]);
  default_level_of_one_band = level_of_one_band(4);
  int missed = 0;
  const std::string page = page_of(cases, &missed);
  bool same = true;
  if (argc == 4) {
    std::ifstream committed(argv[3]);
    std::ostringstream text;
    text << committed.rdbuf();
    same = text.str() == page;
    if (!same) std::cerr << argv[3] << " is not what the library answers now; run scripts/conformance\n";
  } else {
    std::cout << page;
  }
  if (missed != 0) std::cerr << missed << " cases miss their tolerance\n";
  return same && missed == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const std::exception& e) {
    std::cerr << "conformance: " << e.what() << "\n";
    return 2;
  }
}
