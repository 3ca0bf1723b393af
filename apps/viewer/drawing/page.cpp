#include "drawing/page.h"

#include <algorithm>

namespace viewer {
namespace {

// Shares of the page.
constexpr double kTitleHeight = 0.032;
constexpr double kSubtitleHeight = 0.02;
constexpr double kTextHeight = 0.0145;  // of the characters of a result
constexpr double kLineHeight = 0.02;
constexpr double kDrawingsTop = 0.075;
constexpr double kDrawingsBottom = 0.68;
constexpr double kResultsTop = 0.70;
constexpr double kDiagramsWidth = 0.60;
constexpr double kSketchLeft = 0.63;
constexpr double kFirstCell = 0.28;
constexpr double kBandCell = 0.085;
constexpr wchar_t kFace[] = L"Arial";

class Page {
 public:
  Page(HDC hdc, const RECT& area) : hdc_(hdc), area_(area) {}

  RECT part(double left, double top, double right, double bottom) const {
    const double width = static_cast<double>(area_.right - area_.left);
    const double height = static_cast<double>(area_.bottom - area_.top);
    return {area_.left + static_cast<LONG>(left * width), area_.top + static_cast<LONG>(top * height),
            area_.left + static_cast<LONG>(right * width), area_.top + static_cast<LONG>(bottom * height)};
  }

  void text(const std::wstring& text, double left, double top, double height, int weight) const {
    HFONT font = CreateFontW(-pixels(height), 0, 0, 0, weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET, 0, 0, 0,
                             0, kFace);
    HGDIOBJ former = SelectObject(hdc_, font);
    RECT line = part(left, top, 1.0, top + 2 * height);
    DrawTextW(hdc_, text.c_str(), static_cast<int>(text.size()), &line,
              DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
    SelectObject(hdc_, former);
    DeleteObject(font);
  }

  void rule(double top) const {
    const RECT line = part(0.0, top, 1.0, top);
    HPEN pen = CreatePen(PS_SOLID, std::max(1, pixels(0.0006)), RGB(128, 128, 128));
    HGDIOBJ former = SelectObject(hdc_, pen);
    MoveToEx(hdc_, static_cast<int>(line.left), static_cast<int>(line.top), nullptr);
    LineTo(hdc_, static_cast<int>(line.right), static_cast<int>(line.top));
    SelectObject(hdc_, former);
    DeleteObject(pen);
  }

 private:
  int pixels(double share) const {
    return static_cast<int>(share * static_cast<double>(area_.bottom - area_.top));
  }

  HDC hdc_;
  RECT area_;
};

void draw_results(const Page& page, const std::vector<ResultLine>& lines) {
  double top = kResultsTop;
  for (const ResultLine& line : lines) {
    page.text(line.label, 0.0, top, kTextHeight, FW_NORMAL);
    double left = kFirstCell;
    for (const std::wstring& cell : line.cells) {
      page.text(cell, left, top, kTextHeight, FW_NORMAL);
      left += kBandCell;
    }
    top += kLineHeight;
  }
}

}  // namespace

void draw_page(HDC hdc, const RECT& area, const PageContents& contents) {
  const Page page(hdc, area);
  const int saved = SaveDC(hdc);
  SetBkMode(hdc, TRANSPARENT);
  SetTextColor(hdc, RGB(0, 0, 0));
  SetTextAlign(hdc, TA_LEFT | TA_TOP | TA_NOUPDATECP);
  page.text(contents.title, 0.0, 0.0, kTitleHeight, FW_BOLD);
  page.text(contents.subtitle, 0.0, kTitleHeight * 1.25, kSubtitleHeight, FW_NORMAL);
  page.rule(kDrawingsTop - 0.004);
  page.rule(kResultsTop - 0.008);
  draw_results(page, contents.lines);
  RestoreDC(hdc, saved);

  const auto drawn = [&](Drawing drawing) { return contents.drawn[static_cast<std::size_t>(drawing)]; };
  const double middle = (kDrawingsTop + kDrawingsBottom) / 2;
  if (drawn(Drawing::kFlow)) draw(Drawing::kFlow, hdc, page.part(0.0, kDrawingsTop, kDiagramsWidth, middle));
  if (drawn(Drawing::kThrow)) {
    draw(Drawing::kThrow, hdc, page.part(0.0, middle, kDiagramsWidth, kDrawingsBottom));
  }
  if (drawn(Drawing::kShape)) {
    draw(Drawing::kShape, hdc, page.part(kSketchLeft, kDrawingsTop, 1.0, kDrawingsBottom));
  }
}

}  // namespace viewer
