// A recording surface and what a test asks of it.
#pragma once

#include <array>
#include <cstdio>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "tavdgui/tavdgui.h"

namespace tavdtest {

using Segment = std::array<int, 4>;  // x1, y1, x2, y2

struct Text {
  int x, y;
  std::string text;
  bool operator==(const Text&) const = default;
};

class Recording {
 public:
  Recording() : surface_(tgui_recording_create(1000, 1000)) {}
  ~Recording() { tgui_surface_destroy(surface_); }
  Recording(const Recording&) = delete;
  Recording& operator=(const Recording&) = delete;

  tgui_surface* surface() const { return surface_; }
  std::string text() const { return tgui_recording_text(surface_); }
  void clear() { tgui_recording_clear(surface_); }

  std::vector<std::string> lines() const {
    std::vector<std::string> all;
    std::istringstream stream(text());
    for (std::string line; std::getline(stream, line);) {
      all.push_back(line);
    }
    return all;
  }

  // The lines that begin with a word, in order.
  std::vector<std::string> lines(std::string_view word) const {
    std::vector<std::string> some;
    for (const std::string& line : lines()) {
      if (line.starts_with(std::string(word) + ' ')) {
        some.push_back(line);
      }
    }
    return some;
  }

  // Lines of a figure with four coordinates: "line", "ellipse".
  std::vector<Segment> figures(std::string_view word) const {
    std::vector<Segment> all;
    for (const std::string& line : lines(word)) {
      Segment s{};
      std::sscanf(line.c_str(), "%*s %d %d %d %d", &s[0], &s[1], &s[2], &s[3]);
      all.push_back(s);
    }
    return all;
  }
  std::vector<Segment> segments() const { return figures("line"); }

  // Narrow texts, without their quotes.
  std::vector<Text> texts(std::string_view word = "text") const {
    std::vector<Text> all;
    for (const std::string& line : lines(word)) {
      Text t{};
      std::sscanf(line.c_str(), "%*s %d %d", &t.x, &t.y);
      const std::size_t quote = line.find('"');
      t.text = line.substr(quote + 1, line.size() - quote - 2);
      all.push_back(t);
    }
    return all;
  }

 private:
  tgui_surface* surface_;
};

}  // namespace tavdtest
