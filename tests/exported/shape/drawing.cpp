#include "exported/shape/drawing.h"

#include <array>
#include <cstdio>
#include <string_view>

namespace tavdtest {
namespace {

// Reads the lines one after the other. What belongs to a dimension or to a centre mark is known once its last
// line has come: the strokes before it are then taken back.
class Reader {
 public:
  void take(const std::string& line) {
    if (line.starts_with("select pen ")) {
      select(line);
    } else if (line.starts_with("align ")) {
      align_ = line.substr(6);
    } else if (line.starts_with("move ")) {
      Position to{};
      std::sscanf(line.c_str(), "move %d %d", &to.x, &to.y);
      drawing_.strokes.push_back({pen_, {to}});
    } else if (line.starts_with("line ")) {
      Position to{};
      std::sscanf(line.c_str(), "line %*d %*d %d %d", &to.x, &to.y);
      drawing_.strokes.back().points.push_back(to);
      end_centre();
    } else if (line.starts_with("ellipse ")) {
      ellipse(line);
    } else if (line.starts_with("arc ")) {
      Figure arc{};
      arc.pen = pen_;
      std::sscanf(line.c_str(), "arc %d %d %d %d %d %d %d %d", &arc.left, &arc.top, &arc.right, &arc.bottom,
                  &arc.from.x, &arc.from.y, &arc.to.x, &arc.to.y);
      drawing_.arcs.push_back(arc);
    } else if (line.starts_with("text ")) {
      text(line);
    }
  }

  Drawing drawing() { return std::move(drawing_); }

 private:
  void select(const std::string& line) {
    pen_ = line.starts_with("select pen dot ")             ? Pen::kDot
           : line.starts_with("select pen solid width=1 ") ? Pen::kThin
           : line.starts_with("select pen solid ")         ? Pen::kThick
                                                           : Pen::kOther;
    if (drawing_.pens.empty() || drawing_.pens.back() != pen_) {
      drawing_.pens.push_back(pen_);
    }
  }

  void ellipse(const std::string& line) {
    Figure circle{};
    circle.pen = pen_;
    std::sscanf(line.c_str(), "ellipse %d %d %d %d", &circle.left, &circle.top, &circle.right,
                &circle.bottom);
    drawing_.circles.push_back(circle);
    strokes_at_circle_ = drawing_.strokes.size();
  }

  // A circle and right behind it two diagonals that cross in its middle.
  void end_centre() {
    auto& strokes = drawing_.strokes;
    if (drawing_.circles.empty() || strokes.size() != strokes_at_circle_ + 2) {
      return;
    }
    const Stroke& a = strokes[strokes.size() - 2];
    const Stroke& b = strokes[strokes.size() - 1];
    if (a.pen != Pen::kThin || a.points.size() != 2 || b.points.size() != 2) {
      return;
    }
    const Figure& circle = drawing_.circles.back();
    const Position middle = {(circle.left + circle.right) / 2, (circle.top + circle.bottom) / 2};
    const auto is_about = [&](const Stroke& s) {
      return s.points[0].x + s.points[1].x == 2 * middle.x && s.points[0].y + s.points[1].y == 2 * middle.y;
    };
    if (is_about(a) && is_about(b) && a.points[0].x == b.points[0].x && a.points[0].y == b.points[1].y) {
      drawing_.centres.push_back(middle);
      drawing_.circles.pop_back();
      strokes.pop_back();
      strokes.pop_back();
    }
  }

  void text(const std::string& line) {
    Label label{};
    std::sscanf(line.c_str(), "text %d %d", &label.at.x, &label.at.y);
    const std::size_t quote = line.find('"');
    label.text = line.substr(quote + 1, line.size() - quote - 2);
    label.align = align_;
    if (drawing_.title.align.empty()) {
      drawing_.title = label;
    } else if (!dimension(label)) {
      drawing_.texts.push_back(label);
    }
  }

  // The last three strokes are a line and two heads with their tips at its ends.
  bool dimension(const Label& label) {
    auto& strokes = drawing_.strokes;
    if (strokes.size() < 3) {
      return false;
    }
    const Stroke line = strokes[strokes.size() - 3];
    const Stroke first = strokes[strokes.size() - 2];
    const Stroke second = strokes[strokes.size() - 1];
    if (line.points.size() != 2 || first.points.size() != 3 || second.points.size() != 3 ||
        first.points[1] != line.points[0] || second.points[1] != line.points[1]) {
      return false;
    }
    drawing_.dimensions.push_back({line.points[0], line.points[1], label});
    drawing_.arrows.push_back(first);
    drawing_.arrows.push_back(second);
    strokes.resize(strokes.size() - 3);
    return true;
  }

  Drawing drawing_;
  Pen pen_ = Pen::kOther;
  std::string align_;
  std::size_t strokes_at_circle_ = 0;
};

}  // namespace

int Drawing::rectangles() const {
  int count = 0;
  for (const Stroke& stroke : strokes) {
    const auto& p = stroke.points;
    count += p.size() == 5 && p[0] == p[4] && p[0].y == p[1].y && p[1].x == p[2].x && p[2].y == p[3].y &&
                     p[3].x == p[0].x
                 ? 1
                 : 0;
  }
  return count;
}

std::vector<std::string> Drawing::said() const {
  std::vector<std::string> all;
  for (const DimensionLine& dimension : dimensions) {
    all.push_back(dimension.label.text);
  }
  return all;
}

std::vector<std::string> Drawing::written() const {
  std::vector<std::string> all;
  for (const Label& label : texts) {
    all.push_back(label.text);
  }
  return all;
}

Drawing read_drawing(const std::vector<std::string>& lines) {
  Reader reader;
  for (const std::string& line : lines) {
    reader.take(line);
  }
  return reader.drawing();
}

}  // namespace tavdtest
