#include "sheet/chart/curve_chart.h"

#include <algorithm>
#include <utility>

#include "sheet/chart/look.h"

namespace tavdhost {
namespace {

constexpr double kInset = 0.4;    // mm that labels keep from the limits
constexpr double kFlagGap = 2.4;  // mm from the duty to its values
constexpr double kDotGap = 1.1;   // mm from a dot to its label
constexpr double kEdge = 0.05;    // mm, nearer to which a limit is the edge of the plot
constexpr double kClear = 0.5;    // mm about the mark of the duty

Box common(const Box& a, const Box& b) {
  const double left = std::max(a.left, b.left);
  const double top = std::max(a.top, b.top);
  return {left, top, std::min(a.right(), b.right()) - left, std::min(a.bottom(), b.bottom()) - top};
}

Box smaller(const Box& box, double by) {
  return {box.left + by, box.top + by, box.width - 2 * by, box.height - 2 * by};
}

Box limits_on(const Frame& frame, const CurvePoint& least, const CurvePoint& most) {
  const PagePoint low = frame.place(least);
  const PagePoint high = frame.place(most);
  return common({low.x, high.y, high.x - low.x, low.y - high.y}, frame.plot());
}

Quad quad_about(PagePoint point, double radius) {
  return quad_of({point.x - radius, point.y - radius, 2 * radius, 2 * radius});
}

// The cell of a label without its margin.
Quad cell_of(Painter& painter, const ChartLabel& label) {
  const TextSize size = painter.measure(label.text, label.style);
  return turned_quad(label.middle, size.width, size.height(), label.angle);
}

}  // namespace

CurveChart::CurveChart(Painter& painter, const Frame& frame, const CurvePoint& least, const CurvePoint& most)
    : painter_(painter),
      frame_(frame),
      limits_(limits_on(frame, least, most)),
      placer_(painter, smaller(limits_, kInset)) {
  layout_.plot = frame.plot();
  layout_.limits = limits_;
}

void CurveChart::add(const Curve& curve, const std::vector<CurvePoint>& points) {
  Polyline line;
  for (const CurvePoint& point : points) line.push_back(frame_.place(point));
  for (Polyline& part : inside(line, limits_)) curves_.push_back({curve, {std::move(part)}, {}});
}

void CurveChart::add_mark(const CurvePoint& point, const std::string& label) {
  marks_.push_back({frame_.place(point), label, {}});
}

void CurveChart::set_duty(const CurvePoint& point, const std::vector<std::string>& values) {
  if (!frame_.x().holds(point.x)) return;
  duty_has_y_ = frame_.y().holds(point.y);
  if (!duty_has_y_ && point.y > 0) return;
  duty_ =
      PagePoint{frame_.x().place(point.x), duty_has_y_ ? frame_.y().place(point.y) : frame_.plot().bottom()};
  values_ = values;
}

// From the duty to its numbers on the axes.
std::vector<Polyline> CurveChart::duty_lines() const {
  const Box& plot = frame_.plot();
  if (!duty_has_y_) return {{{duty_->x, plot.bottom()}, {duty_->x, plot.top}}};
  return {{{duty_->x, duty_->y + kDutyRadius}, {duty_->x, plot.bottom()}},
          {{duty_->x - kDutyRadius, duty_->y}, {plot.left, duty_->y}}};
}

void CurveChart::place_duty() {
  if (!duty_) return;
  for (const Polyline& line : duty_lines()) placer_.add_line(line, kFaintLine);
  if (duty_has_y_) placer_.keep_free(quad_about(*duty_, kDutyRadius + kClear));
  for (const Mark& mark : marks_) placer_.keep_free(quad_about(mark.at, kMarkRadius));
  const PagePoint at =
      duty_has_y_ ? *duty_ : PagePoint{duty_->x, frame_.plot().top + frame_.plot().height / 2};
  const TextStyle style = {kLabelLetters, false, kDutyColour, TextDirection::kByText};
  flag_ = placer_.flag(at, kFlagGap, values_, style);
  if (!flag_) layout_.left_out.push_back(values_.empty() ? "" : values_.front());
}

void CurveChart::place_label(Drawn& drawn, std::size_t line) {
  if (drawn.curve.label.empty()) return;
  TextStyle style = {kLabelLetters, false, drawn.curve.style.colour, TextDirection::kByText};
  for (const double letters : {kLabelLetters, kSmallLabelLetters}) {
    style.size = letters;
    drawn.label = placer_.on_line(line, drawn.curve.label, style, drawn.curve.label_at);
    if (drawn.label) return;
  }
  drawn.is_drawn = !drawn.curve.only_with_label;
  layout_.left_out.push_back(drawn.curve.label);
}

void CurveChart::place_labels() {
  for (const Drawn& drawn : curves_) placer_.add_line(drawn.parts.front(), drawn.curve.weight);
  place_duty();
  const TextStyle style = {kLabelLetters, false, kLevelColour, TextDirection::kByText};
  for (Mark& mark : marks_) {
    mark.label = placer_.beside(mark.at, kDotGap, mark.text, style);
    if (!mark.label) layout_.left_out.push_back(mark.text);
  }
  for (std::size_t i = 0; i < curves_.size(); ++i) place_label(curves_[i], i);
}

// No curve runs through a label or the flag, and the grid ends there too.
void CurveChart::draw_gaps() {
  std::vector<Quad> gaps;
  for (const Drawn& drawn : curves_) {
    if (drawn.label) gaps.push_back(drawn.label->quad);
  }
  for (const Mark& mark : marks_) {
    if (mark.label) gaps.push_back(mark.label->quad);
  }
  for (const Quad& gap : gaps) painter_.area(gap, kWhite);
  if (flag_) gaps.push_back(quad_of(flag_->box));
  for (Drawn& drawn : curves_) {
    for (const Quad& gap : gaps) {
      std::vector<Polyline> left;
      for (const Polyline& part : drawn.parts) {
        for (Polyline& piece : outside(part, gap)) left.push_back(std::move(piece));
      }
      drawn.parts = std::move(left);
    }
  }
}

// The curves of a name that follow each other are one group.
void CurveChart::draw_curves() {
  std::string group;
  for (const Drawn& drawn : curves_) {
    if (!drawn.is_drawn) continue;
    if (drawn.curve.name != group) {
      if (!group.empty()) painter_.end_group();
      group = drawn.curve.name;
      if (!group.empty()) painter_.begin_group(group);
    }
    for (const Polyline& part : drawn.parts) painter_.line(part, drawn.curve.style);
  }
  if (!group.empty()) painter_.end_group();
  for (const Mark& mark : marks_) painter_.disc(mark.at, kMarkRadius, kLevelColour);
}

// A limit at the edge of the plot is none: nothing lies beyond it.
void CurveChart::draw_limits() const {
  if (!(limits_.width > 0) || !(limits_.height > 0)) return;
  const Box& plot = frame_.plot();
  const PagePoint upper_left = {limits_.left, limits_.top};
  const PagePoint upper_right = {limits_.right(), limits_.top};
  const PagePoint lower_left = {limits_.left, limits_.bottom()};
  const PagePoint lower_right = {limits_.right(), limits_.bottom()};
  const auto side = [this](double beyond, PagePoint from, PagePoint to) {
    const std::array<PagePoint, 2> line = {{from, to}};
    if (beyond > kEdge) painter_.line(line, kLimitLine);
  };
  side(limits_.left - plot.left, lower_left, upper_left);
  side(plot.right() - limits_.right(), lower_right, upper_right);
  side(limits_.top - plot.top, upper_left, upper_right);
  side(plot.bottom() - limits_.bottom(), lower_left, lower_right);
}

void CurveChart::draw_duty() const {
  if (!duty_) return;
  for (const Polyline& line : duty_lines()) {
    std::vector<Polyline> parts = {line};
    if (flag_) parts = outside(line, quad_of(flag_->box));
    for (const Polyline& part : parts) painter_.line(part, kDutyLine);
  }
  if (!duty_has_y_) return;
  draw_leader();
  painter_.circle(*duty_, kDutyRadius, kDutyRing);
  painter_.disc(*duty_, kDutyRing.width, kDutyColour);
}

// From the mark to its values where they stand away from it.
void CurveChart::draw_leader() const {
  if (!flag_) return;
  const Box& box = flag_->box;
  const PagePoint nearest = {std::clamp(duty_->x, box.left, box.right()),
                             std::clamp(duty_->y, box.top, box.bottom())};
  const double away = distance(*duty_, nearest);
  if (away < kDutyRadius + kFlagGap) return;
  const double part = kDutyRadius / away;
  const std::array<PagePoint, 2> line = {
      {{duty_->x + (nearest.x - duty_->x) * part, duty_->y + (nearest.y - duty_->y) * part}, nearest}};
  painter_.line(line, kFlagFrame);
}

void CurveChart::note(const ChartLabel& label) {
  layout_.labels.push_back({label.text, cell_of(painter_, label)});
}

void CurveChart::draw_labels() {
  for (const Drawn& drawn : curves_) {
    if (!drawn.label) continue;
    placer_.draw(*drawn.label, frame_.plot());
    note(*drawn.label);
  }
  for (const Mark& mark : marks_) {
    if (!mark.label) continue;
    placer_.draw(*mark.label, frame_.plot());
    note(*mark.label);
  }
  if (flag_) placer_.draw(*flag_, frame_.plot());
}

ChartLayout CurveChart::draw(const std::string& inscription) {
  place_labels();
  frame_.draw_plane(limits_);
  draw_gaps();
  draw_limits();
  draw_curves();
  draw_duty();
  frame_.draw_edges();
  draw_labels();
  if (curves_.empty() && marks_.empty() && !inscription.empty()) {
    const TextStyle style = {kLabelLetters, false, kInk, TextDirection::kByText};
    const PagePoint middle = {limits_.left + limits_.width / 2, limits_.top + limits_.height / 2};
    const std::optional<ChartLabel> label = placer_.beside(middle, 0, inscription, style);
    if (label) {
      placer_.draw(*label, frame_.plot());
      note(*label);
    }
  }
  layout_.duty = duty_has_y_ ? duty_ : std::nullopt;
  if (flag_) layout_.flag = flag_->box;
  return std::move(layout_);
}

}  // namespace tavdhost
