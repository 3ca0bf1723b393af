// A database, products and the one flow diagram of the process, drawn on a recording.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/database.h"
#include "support/recording.h"
#include "tavd/flowdata.h"
#include "tavd/tavdg.h"
#include "tavdgui/tavdgui.h"

namespace tavdtest {

class FlowDiagram : public ::testing::Test {
 protected:
  void SetUp() override {
    tavdg_reset_parameters();
    tavdg_init_empty(tgui_main_module(), db());
  }
  void TearDown() override {
    tavdg_destroy_drawing_tools();
    tavdg_release();
    tavdg_reset_parameters();
  }

  std::int16_t db() const { return database_.handle(); }

  // Limits that give both axes labels of five characters, so that the plot runs from 1955, 1562 to 9000,
  // 8045: one decade of flow over 7045 units, two of pressure over 6483.
  static Record& limits(Record& product, std::int16_t kind) {
    return product.header(kind, 0, 0, 100, 1000, 100, 10000);
  }

  // A fixed resistance whose curve is the diagonal of the plot.
  static Record& resistance(Record& product) { return limits(product, 110).floats(1651, {100, 100}); }

  // What tavdg_draw_diagram draws with its tools.
  Recording& draw() {
    recording_.clear();
    tavdg_create_drawing_tools();
    tavdg_draw_diagram(recording_.surface());
    tavdg_destroy_drawing_tools();
    return recording_;
  }

  // The same less what the chart itself draws: what follows its last reselection.
  std::vector<std::string> curves() {
    const std::vector<std::string> all = draw().lines();
    const auto chart_end = std::find(all.begin(), all.end(), "select stock black-pen");
    return chart_end == all.end() ? all : std::vector<std::string>(chart_end + 1, all.end());
  }
  std::vector<std::string> curves(std::string_view word) {
    std::vector<std::string> some;
    for (const std::string& line : curves()) {
      if (line.starts_with(std::string(word) + ' ')) {
        some.push_back(line);
      }
    }
    return some;
  }

  bool is_drawn(const std::string& text) {
    for (const char* word : {"text", "textw"}) {
      for (const Text& t : draw().texts(word)) {
        if (t.text == text) {
          return true;
        }
      }
    }
    return false;
  }

  Database database_;
  Recording recording_;
};

}  // namespace tavdtest
