// A database, air terminals and the one throw length diagram of the process, drawn on a recording.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "support/database.h"
#include "support/recording.h"
#include "tavd/L2dg.h"
#include "tavd/flowdata.h"
#include "tavdgui/tavdgui.h"

namespace tavdtest {

// A row of the throw table by parameter value.
inline ParL2Point throw_row(std::string_view value, float qv, float L2) {
  ParL2Point row{};
  std::memset(row.value, ' ', sizeof row.value);
  std::copy_n(value.data(), std::min(value.size(), sizeof row.value), row.value);
  row.qv = qv;
  row.L2 = L2;
  return row;
}

// A row of a parameter table that changes the throw alone.
inline ParEntry factor_row(std::string_view value, float factor) {
  ParEntry row{};
  std::memset(row.value, ' ', sizeof row.value);
  std::copy_n(value.data(), std::min(value.size(), sizeof row.value), row.value);
  row.factor = factor;
  return row;
}

class ThrowDiagram : public ::testing::Test {
 protected:
  using Strings = std::vector<std::string>;

  void SetUp() override {
    L2dg_reset_parameters();
    L2dg_init_empty(tgui_main_module(), db());
  }
  void TearDown() override {
    L2dg_destroy_drawing_tools();
    L2dg_release();
    L2dg_reset_parameters();
  }

  std::int16_t db() const { return database_.handle(); }

  static Record& limits(Record& product) { return product.header(110, 0, 0, 100, 1000, 10, 100); }

  // A terminal with one throw line from the lower left corner: 1 m at 100 l/s, 10 m at 1000 l/s. Its throw
  // axis ends at 11 m, the next whole metre.
  static Record& terminal(Record& product) { return limits(product).rows<QvL2Point>(1659, {{100, 1}}); }

  // A terminal with a throw line for each of two values. Its throw axis spans the decade from 1 to 10 m, over
  // 6483 units from 8045 up to 1562, and its flow axis that from 100 to 1000 l/s, over 7447 units from 1553
  // to 9000. Value 10 rises from 2 m to 9.5 m, value 20 from 1.5 m to 4 m.
  static Record& terminal_by_value(Record& product) {
    return limits(product).rows<ParL2Point>(1660, {throw_row("10", 1000, 9.5F), throw_row("10", 100, 2),
                                                   throw_row("20", 1000, 4), throw_row("20", 100, 1.5F)});
  }
  static int decade_x(double qv) { return static_cast<int>(1553 + 7447 * (std::log10(qv) - 2)); }
  static int decade_y(double L2) { return static_cast<int>(8045 - 6483 * std::log10(L2)); }

  // Builds the product with an operating point.
  static int init(std::int16_t db, tavb_rec rec, float qv, float L2 = 0, std::int16_t xunit = 0) {
    return L2dg_init(tgui_main_module(), db, rec, 0, qv, L2, xunit);
  }

  // What L2dg_draw_diagram draws with its tools.
  Recording& draw() {
    recording_ = std::make_unique<Recording>();  // the tools stay selected into the former one
    L2dg_create_drawing_tools();
    L2dg_draw_diagram(recording_->surface());
    L2dg_destroy_drawing_tools();
    return *recording_;
  }

  // The same less what the chart itself draws: what follows its last reselection.
  Strings curves() {
    const Strings all = draw().lines();
    const auto chart_end = std::find(all.begin(), all.end(), "select stock black-pen");
    return chart_end == all.end() ? all : Strings(chart_end + 1, all.end());
  }
  Strings curves(std::string_view word) {
    Strings some;
    for (const std::string& line : curves()) {
      if (line.starts_with(std::string(word) + ' ')) {
        some.push_back(line);
      }
    }
    return some;
  }

  // The throw line, the first line behind the chart; all zero if there is none.
  Segment throw_line() {
    Segment s{};
    const Strings lines = curves("line");
    if (!lines.empty()) {
      std::sscanf(lines.front().c_str(), "line %d %d %d %d", &s[0], &s[1], &s[2], &s[3]);
    }
    return s;
  }

  // The texts of the chart: its title, those of its axes, and the tick labels.
  Strings titles() {
    Strings some;
    for (const Text& t : draw().texts()) {
      some.push_back(t.text);
    }
    some.resize(std::max<std::size_t>(some.size(), 3));
    return some;
  }
  std::string title() { return titles()[0]; }
  Strings x_labels() { return labels("align right+top", "align right+bottom"); }
  Strings y_labels() { return labels("align right+bottom", "select stock system-font"); }

  Database database_;
  std::unique_ptr<Recording> recording_ = std::make_unique<Recording>();

 private:
  Strings labels(const std::string& from, const std::string& to) {
    Strings some;
    const Strings all = draw().lines();
    auto line = std::find(all.begin(), all.end(), from);
    for (; line != all.end() && *line != to; ++line) {
      if (line->starts_with("text ")) {
        const std::size_t quote = line->find('"');
        some.push_back(line->substr(quote + 1, line->size() - quote - 2));
      }
    }
    return some;
  }
};

}  // namespace tavdtest
