#include "window/layout.h"

#include <algorithm>

#include "window/display.h"
#include "window/resource.h"

namespace viewer {
namespace {

constexpr SIZE kSmallest = {820, 520};  // at 96 dots per inch
constexpr double kSmallestShare = 0.12;
constexpr double kLargestShare = 0.88;
constexpr double kLargestColumns = 0.75;  // of both side columns together

// Widths of the fields over the columns, at 96 dots per inch.
constexpr int kFlowLabelWidth = 34;
constexpr int kPressureLabelWidth = 52;
constexpr int kNumberWidth = 70;
constexpr int kUnitWidth = 72;
constexpr int kValueLabelWidth = 82;
constexpr int kValueWidth = 84;
constexpr int kGap = 6;
constexpr int kGroupGap = 16;
constexpr int kDropHeight = 200;

// Pixels, at any resolution, by which a field with one line is higher than that, as the system's own combo
// boxes are.
constexpr int kFieldBorders = 8;

struct Builder {
  const Measures& measures;
  Layout layout;

  int px(int pixels) const { return scaled(pixels, measures.dpi); }

  void put(int id, int left, int top, int right, int bottom) {
    layout.controls.push_back({id, {left, top, std::max(left, right), std::max(top, bottom)}});
  }

  int fields(int top);
  void titled(int label, int control, const RECT& rect);
  void column(const RECT& rect, int first_label, int first, int second_label, int second,
              double Shares::*share, double value);
};

// The line of fields; returns its lower edge. The height of a drop-down list counts with its combo box.
int Builder::fields(int top) {
  const int height = measures.line + kFieldBorders;
  const int text = top + (height - measures.line) / 2;
  int x = px(kGap);
  const auto label = [&](int id, int width) {
    put(id, x, text, x + px(width), text + measures.line);
    x += px(width + 4);
  };
  const auto combo = [&](int id, int width, int gap) {
    put(id, x, top, x + px(width), top + height + px(kDropHeight));
    x += px(width + gap);
  };
  const auto number = [&](int id) {
    put(id, x, top, x + px(kNumberWidth), top + height);
    x += px(kNumberWidth + 4);
  };
  label(IDC_FLOW_LABEL, kFlowLabelWidth);
  number(IDC_FLOW);
  combo(IDC_FLOW_UNIT, kUnitWidth, kGroupGap);
  label(IDC_PRESSURE_LABEL, kPressureLabelWidth);
  number(IDC_PRESSURE);
  combo(IDC_PRESSURE_UNIT, kUnitWidth, kGroupGap);
  label(IDC_FIRST_VALUE_LABEL, kValueLabelWidth);
  combo(IDC_FIRST_VALUE, kValueWidth, kGroupGap);
  label(IDC_SECOND_VALUE_LABEL, kValueLabelWidth);
  combo(IDC_SECOND_VALUE, kValueWidth, 0);
  return top + height;
}

void Builder::titled(int label, int control, const RECT& rect) {
  const int left = static_cast<int>(rect.left);
  const int right = static_cast<int>(rect.right);
  const int below = static_cast<int>(rect.top) + measures.line + px(3);
  put(label, left + px(1), static_cast<int>(rect.top), right, static_cast<int>(rect.top) + measures.line);
  put(control, left, below, right, static_cast<int>(rect.bottom));
}

// Two parts under one another, with a splitter between them.
void Builder::column(const RECT& rect, int first_label, int first, int second_label, int second,
                     double Shares::*share, double value) {
  const int top = static_cast<int>(rect.top);
  const int bottom = static_cast<int>(rect.bottom);
  const int middle = top + static_cast<int>((bottom - top) * value);
  const int half = px(kGap) / 2;
  titled(first_label, first, {rect.left, top, rect.right, middle - half});
  titled(second_label, second, {rect.left, middle + half, rect.right, bottom});
  layout.splitters.push_back(
      {{rect.left, middle - half, rect.right, middle + half}, false, share, top, bottom, false});
}

}  // namespace

Layout laid_out(SIZE client, const Measures& measures, const Shares& shares) {
  Builder builder{measures, {}};
  const int gap = builder.px(kGap);
  const int width = static_cast<int>(client.cx);
  const int top = builder.fields(gap) + gap;
  const int bottom = static_cast<int>(client.cy) - measures.status - gap;
  const int left_end = static_cast<int>(width * shares.tree);
  const int right_start = width - static_cast<int>(width * shares.sketch);
  constexpr int kFirst = IDC_FIRST_DRAWING;
  constexpr int kCaption = IDC_FIRST_CAPTION;
  builder.column({gap, top, left_end, bottom}, IDC_PRODUCTS_LABEL, IDC_PRODUCTS, IDC_SIZES_LABEL, IDC_SIZES,
                 &Shares::products, shares.products);
  builder.column({left_end + gap, top, right_start - gap, bottom}, kCaption, kFirst, kCaption + 1, kFirst + 1,
                 &Shares::flow, shares.flow);
  builder.column({right_start, top, width - gap, bottom}, kCaption + 2, kFirst + 2, IDC_RESULTS_LABEL,
                 IDC_RESULTS, &Shares::shape, shares.shape);
  builder.layout.splitters.push_back(
      {{left_end, top, left_end + gap, bottom}, true, &Shares::tree, 0, width, false});
  builder.layout.splitters.push_back(
      {{right_start - gap, top, right_start, bottom}, true, &Shares::sketch, 0, width, true});
  return builder.layout;
}

SIZE smallest_client(int dpi) {
  return {scaled(static_cast<int>(kSmallest.cx), dpi), scaled(static_cast<int>(kSmallest.cy), dpi)};
}

std::optional<Splitter> splitter_at(const Layout& layout, POINT point) {
  const auto found = std::ranges::find_if(
      layout.splitters, [&](const Splitter& splitter) { return PtInRect(&splitter.rect, point) != FALSE; });
  return found == layout.splitters.end() ? std::nullopt : std::optional(*found);
}

void drag(const Splitter& splitter, POINT point, Shares& shares) {
  if (splitter.to <= splitter.from) return;
  const LONG at = splitter.upright ? point.x : point.y;
  const double share = static_cast<double>(at - splitter.from) / (splitter.to - splitter.from);
  // Both side columns together leave the middle one some room.
  const double other = splitter.share == &Shares::tree ? shares.sketch : shares.tree;
  const double largest = splitter.upright ? kLargestColumns - other : kLargestShare;
  shares.*splitter.share = std::clamp(splitter.reversed ? 1.0 - share : share, kSmallestShare, largest);
}

}  // namespace viewer
