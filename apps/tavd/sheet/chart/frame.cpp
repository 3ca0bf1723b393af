#include "sheet/chart/frame.h"

#include <algorithm>
#include <utility>

#include "sheet/chart/look.h"

namespace tavdhost {
namespace {

constexpr double kTick = 0.9;       // mm, of a tick
constexpr double kTickGap = 0.5;    // mm, between a tick and its number
constexpr double kTitleGap = 0.5;   // mm, between numbers and title
constexpr double kLegendGap = 1.0;  // mm above the legend
constexpr double kLegendRow = 3.7;  // mm
constexpr double kSample = 8.5;     // mm, of a line in the legend
constexpr double kSampleGap = 1.2;  // mm, to its text
constexpr double kEntryGap = 5;     // mm, between entries
constexpr double kWordGap = 0.8;    // mm, between the words of a title
constexpr double kDrop = 0.45;      // mm, of a subscript below its line

Axis axis_of(const AxisNeeds& needs, double begin, double end) {
  return {needs.scale, needs.low, needs.high, begin, end};
}

// The same axis in its other unit: numbers stand where the base units are.
std::vector<Tick> far_ticks_of(const Axis& axis, const ChartUnits& units, char decimal,
                               const LabelRoom& room) {
  return units.far_side.unit == nullptr ? std::vector<Tick>() : ticks_of(axis, units.far_side, decimal, room);
}

}  // namespace

Frame::Frame(Painter& painter, const Box& box, const AxisNeeds& x, const AxisNeeds& y,
             std::vector<LegendEntry> legend, const ChartForm& form)
    : painter_(painter),
      box_(box),
      form_(form),
      legend_(std::move(legend)),
      style_{kChartLetters, false, kInk, TextDirection::kByText},
      across_{x, {}, {}},
      up_{y, {}, {}} {
  const double legend_height =
      legend_.empty() ? 0 : kLegendGap + kLegendRow * static_cast<double>(legend_rows().size());
  const double numbers = kTickGap + kRow;
  const double top = box.top + (across_.has_far() ? kRow + kTitleGap + numbers : kRow / 2);
  const double bottom = box.bottom() - legend_height - kRow - kTitleGap - numbers - kTick;
  y_ = axis_of(y, bottom, top);
  const LabelRoom heights = [](const std::string&) { return kChartLetters; };
  up_.ticks = ticks_of(*y_, y.units.near_side, form.decimal, heights);
  up_.far_ticks = far_ticks_of(*y_, y.units, form.decimal, heights);
  const double left = box.left + kRow + kTitleGap + widest(up_.ticks) + kTickGap + kTick;
  double right = box.right() - kRow;
  if (up_.has_far()) right = box.right() - (kRow + kTitleGap + widest(up_.far_ticks) + kTickGap);
  x_ = axis_of(x, left, right);
  const LabelRoom widths = [this](const std::string& label) { return width(label); };
  across_.ticks = ticks_of(*x_, x.units.near_side, form.decimal, widths);
  across_.far_ticks = far_ticks_of(*x_, x.units, form.decimal, widths);
  plot_ = {left, top, right - left, bottom - top};
}

double Frame::widest(const std::vector<Tick>& ticks) const {
  double most = 0;
  for (const Tick& tick : ticks) most = std::max(most, width(tick.label));
  return most;
}

void Frame::draw_plane(const Box& limits) const {
  painter_.area(plot_, kOutside);
  if (limits.width > 0 && limits.height > 0) painter_.area(limits, kWhite);
  for (const bool is_major : {false, true}) {
    const LineStyle& style = is_major ? kMajorGrid : kMinorGrid;
    for (const Tick& tick : across_.ticks) {
      if (tick.is_major() != is_major) continue;
      const std::array<PagePoint, 2> line = {{{tick.place, plot_.top}, {tick.place, plot_.bottom()}}};
      painter_.line(line, style);
    }
    for (const Tick& tick : up_.ticks) {
      if (tick.is_major() != is_major) continue;
      const std::array<PagePoint, 2> line = {{{plot_.left, tick.place}, {plot_.right(), tick.place}}};
      painter_.line(line, style);
    }
  }
}

void Frame::draw_ticks() const {
  const auto mark = [this](PagePoint from, PagePoint to) {
    const std::array<PagePoint, 2> line = {{from, to}};
    painter_.line(line, kFrameLine);
  };
  const auto number = [this](const Tick& tick, PagePoint at, Along along, Across across) {
    painter_.text(tick.label, style_, {at, along, across}, box_);
  };
  const auto length = [](const Tick& tick) { return tick.is_major() ? kTick : kTick / 2; };
  for (const Tick& tick : across_.ticks) {
    mark({tick.place, plot_.bottom()}, {tick.place, plot_.bottom() + length(tick)});
    number(tick, {tick.place, plot_.bottom() + kTick + kTickGap}, Along::kCentre, Across::kTop);
  }
  for (const Tick& tick : across_.far_ticks) {
    mark({tick.place, plot_.top}, {tick.place, plot_.top - length(tick)});
    number(tick, {tick.place, plot_.top - kTick - kTickGap}, Along::kCentre, Across::kBottom);
  }
  for (const Tick& tick : up_.ticks) {
    mark({plot_.left, tick.place}, {plot_.left - length(tick), tick.place});
    number(tick, {plot_.left - kTick - kTickGap, tick.place}, Along::kRight, Across::kMiddle);
  }
  for (const Tick& tick : up_.far_ticks) {
    mark({plot_.right(), tick.place}, {plot_.right() + length(tick), tick.place});
    number(tick, {plot_.right() + kTick + kTickGap, tick.place}, Along::kLeft, Across::kMiddle);
  }
}

// "Flow qv, l/s" about a point: the name, the symbol with its subscript, and the unit; from the right where
// the language is read so. Each stands for itself, for the symbol and the unit run from the left in every
// language.
void Frame::draw_title(const AxisTitle& title, const std::string& unit, PagePoint middle,
                       double angle) const {
  TextStyle lowered = style_;
  lowered.size *= kSubscript;
  struct Piece {
    std::string text;
    TextStyle style;
    double drop, gap;  // mm; the gap is behind it
  };
  const std::string comma = unit.empty() ? "" : form_.comma();
  std::vector<Piece> pieces = {{title.symbol, style_, 0, 0}, {title.subscript, lowered, kDrop, 0}};
  if (form_.right_to_left) {
    pieces.insert(pieces.begin(), {{unit, style_, 0, kWordGap}, {comma, style_, 0, 0}});
    pieces.back().gap = kWordGap;
    pieces.push_back({title.name, style_, 0, 0});
  } else {
    pieces.insert(pieces.begin(), {title.name, style_, 0, title.name.empty() ? 0 : kWordGap});
    pieces.push_back({comma, style_, 0, kWordGap});
    pieces.push_back({unit, style_, 0, 0});
  }
  double whole = 0;
  for (const Piece& piece : pieces) whole += painter_.measure(piece.text, piece.style).width + piece.gap;
  double at = -whole / 2;
  for (const Piece& piece : pieces) {
    const PagePoint place = angle == 0 ? PagePoint{middle.x + at, middle.y + piece.drop}
                                       : PagePoint{middle.x + piece.drop, middle.y - at};
    painter_.text(piece.text, piece.style, {place, Along::kLeft, Across::kMiddle, angle}, box_);
    at += painter_.measure(piece.text, piece.style).width + piece.gap;
  }
}

void Frame::draw_edges() const {
  const std::array<PagePoint, 5> border = {{{plot_.left, plot_.top},
                                            {plot_.right(), plot_.top},
                                            {plot_.right(), plot_.bottom()},
                                            {plot_.left, plot_.bottom()},
                                            {plot_.left, plot_.top}}};
  painter_.line(border, kFrameLine);
  draw_ticks();
  const PagePoint middle = {plot_.left + plot_.width / 2, plot_.top + plot_.height / 2};
  const double below = plot_.bottom() + kTick + kTickGap + kRow + kTitleGap + kRow / 2;
  constexpr double kUpward = 90;
  draw_title(across_.needs.title, across_.needs.units.near_side.sign, {middle.x, below}, 0);
  draw_title(up_.needs.title, up_.needs.units.near_side.sign, {box_.left + kRow / 2, middle.y}, kUpward);
  const auto short_title = [](AxisTitle title) {
    title.name.clear();
    return title;
  };
  if (across_.has_far()) {
    draw_title(short_title(across_.needs.title), across_.needs.units.far_side.sign,
               {middle.x, box_.top + kRow / 2}, 0);
  }
  if (up_.has_far()) {
    draw_title(short_title(up_.needs.title), up_.needs.units.far_side.sign,
               {box_.right() - kRow / 2, middle.y}, kUpward);
  }
  draw_legend();
}

double Frame::legend_width(const LegendEntry& entry) const {
  return kSample + kSampleGap + width(entry.text);
}

// Which entries stand in which row.
std::vector<std::vector<std::size_t>> Frame::legend_rows() const {
  std::vector<std::vector<std::size_t>> rows;
  double room = 0;
  for (std::size_t i = 0; i < legend_.size(); ++i) {
    const double needed = legend_width(legend_[i]);
    if (rows.empty() || needed > room) {
      rows.emplace_back();
      room = box_.width;
    }
    rows.back().push_back(i);
    room -= needed + kEntryGap;
  }
  return rows;
}

void Frame::draw_legend() const {
  const std::vector<std::vector<std::size_t>> rows = legend_rows();
  double y = box_.bottom() - kLegendRow * (static_cast<double>(rows.size()) - 0.5);
  for (const std::vector<std::size_t>& row : rows) {
    double whole = -kEntryGap;
    for (const std::size_t i : row) whole += legend_width(legend_[i]) + kEntryGap;
    double at = std::max(box_.left, plot_.left + (plot_.width - whole) / 2);
    at = std::min(at, box_.right() - whole);
    for (std::size_t k = 0; k < row.size(); ++k) {
      const LegendEntry& entry = legend_[row[form_.right_to_left ? row.size() - 1 - k : k]];
      const double text = legend_width(entry) - kSample - kSampleGap;
      const double sample = form_.right_to_left ? at + text + kSampleGap : at;
      draw_sample(entry, sample, y);
      painter_.text(
          entry.text, style_,
          {{form_.right_to_left ? at : at + kSample + kSampleGap, y}, Along::kLeft, Across::kMiddle}, box_);
      at += legend_width(entry) + kEntryGap;
    }
    y += kLegendRow;
  }
}

void Frame::draw_sample(const LegendEntry& entry, double left, double y) const {
  const PagePoint middle = {left + kSample / 2, y};
  const std::array<PagePoint, 2> line = {{{left, y}, {left + kSample, y}}};
  painter_.line(line, entry.style);
  if (entry.kind == LegendEntry::Kind::kDot) painter_.disc(middle, kMarkRadius, kLevelColour);
  if (entry.kind == LegendEntry::Kind::kDuty) painter_.circle(middle, kDutyRadius, kDutyRing);
}

void draw_empty_chart(Painter& painter, const Box& box, const std::string& text) {
  const std::array<PagePoint, 5> border = {{{box.left, box.top},
                                            {box.right(), box.top},
                                            {box.right(), box.bottom()},
                                            {box.left, box.bottom()},
                                            {box.left, box.top}}};
  painter.line(border, kMajorGrid);
  painter.text(text, {kChartLetters, false, kInk, TextDirection::kByText},
               {{box.left + box.width / 2, box.top + box.height / 2}, Along::kCentre, Across::kMiddle}, box);
}

}  // namespace tavdhost
