// Places for the labels of curves: on their curve, turned along it, where they stand on nothing else.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "sheet/chart/geometry.h"
#include "sheet/painter.h"

namespace tavdhost {

struct ChartLabel {
  std::string text;
  TextStyle style;
  PagePoint middle;
  double angle;  // degrees, counter-clockwise
  Quad quad;     // its cell with a margin, where nothing else may be
};

// A frame about several lines of text beside a point.
struct ChartFlag {
  std::vector<std::string> lines;
  TextStyle style;
  Box box;
};

inline constexpr double kMainLine = 3;
inline constexpr double kUsualLine = 1;
inline constexpr double kFaintLine = 0.3;

class LabelPlacer {
 public:
  // Labels stay in the room.
  LabelPlacer(Painter& painter, const Box& room) : painter_(painter), room_(room) {}

  // What no label may stand on; and lines that none crosses as long as there is another place: the heavier a
  // line, the less. No label of a line stands on a line of kMainLine.
  void keep_free(const Quad& quad) { taken_.push_back(quad); }
  void add_line(const Polyline& line, double weight) { lines_.push_back({line, weight}); }

  // A label in a gap of a line that was added, as near to a part of its length (0 to 1) as can be; nothing
  // where there is no place for it. It is kept free from then on.
  std::optional<ChartLabel> on_line(std::size_t line, const std::string& text, const TextStyle& style,
                                    double preferred);
  // An upright label about so far from a point.
  std::optional<ChartLabel> beside(PagePoint point, double gap, const std::string& text,
                                   const TextStyle& style);
  std::optional<ChartFlag> flag(PagePoint point, double gap, const std::vector<std::string>& lines,
                                const TextStyle& style);

  void draw(const ChartLabel& label, const Box& room) const;
  void draw(const ChartFlag& flag, const Box& room) const;

 private:
  bool is_free(const Quad& quad) const;
  struct Line {
    Polyline points;
    double weight;
  };
  double crossed(const Quad& quad, std::size_t but) const;
  std::optional<Box> box_beside(PagePoint point, double gap, double width, double height) const;

  Painter& painter_;
  Box room_;
  std::vector<Quad> taken_;
  std::vector<Line> lines_;
};

}  // namespace tavdhost
