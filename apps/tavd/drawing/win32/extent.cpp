// How far a drawing reaches, and what it consists of: told from its records.
#include <windows.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <optional>
#include <vector>

#include "drawing/win32/recorded.h"
#include "drawing/win32/records.h"

namespace tavdhost {
namespace {

constexpr int kFineUnits = 16;  // to a pixel, in which texts are measured

// A memory device context that measures texts.
class MeasuringContext {
 public:
  MeasuringContext() : hdc_(CreateCompatibleDC(nullptr)) {}
  ~MeasuringContext() { DeleteDC(hdc_); }
  MeasuringContext(const MeasuringContext&) = delete;
  MeasuringContext& operator=(const MeasuringContext&) = delete;

  // Width and height of the cell, in the units of the font's height.
  SIZE measure(const LOGFONTW& font, const TextRecord& text) const {
    const HFONT made = CreateFontIndirectW(&font);
    const HGDIOBJ former = SelectObject(hdc_, made);
    SIZE size = {};
    if (text.is_narrow) {
      GetTextExtentPoint32A(hdc_, text.letters, text.count, &size);
    } else {
      GetTextExtentPoint32W(hdc_, text.wide(), text.count, &size);
    }
    SelectObject(hdc_, former);
    DeleteObject(made);
    return size;
  }

 private:
  HDC hdc_;
};

// Takes record by record.
class Measurer {
 public:
  Measurer(PictureSize plane, const Area& place) : plane_(plane), place_(place) {}

  void take(const ENHMETARECORD* record);
  std::optional<Covered> covered() const {
    if (!all_) return {};
    return Covered{*all_, texts_};
  }

 private:
  double x(double plane_x) const { return place_.left + plane_x * place_.width() / plane_.width; }
  double y(double plane_y) const { return place_.top + plane_y * place_.height() / plane_.height; }
  void select(DWORD index);
  void take(const Extent& extent);
  void take_point(const POINTL& at);
  void take_box(const RECTL& box);
  void take_text(const TextRecord& text);

  PictureSize plane_;
  Area place_;
  MeasuringContext context_;
  std::map<DWORD, LOGFONTW> fonts_;  // by their index in the metafile, which pens have too
  std::map<DWORD, double> pens_;     // widths, pixels
  LOGFONTW font_ = {};
  double pen_ = 1;
  UINT align_ = TA_LEFT | TA_TOP;
  POINTL position_ = {};
  std::optional<Extent> all_;
  std::vector<Extent> texts_;
};

void Measurer::take(const ENHMETARECORD* record) {
  switch (record->iType) {
    case EMR_EXTCREATEFONTINDIRECTW: {
      const auto& font = as<EMREXTCREATEFONTINDIRECTW>(record);
      pens_.erase(font.ihFont);
      fonts_[font.ihFont] = font.elfw.elfLogFont;
      break;
    }
    case EMR_CREATEPEN: {
      const auto& pen = as<EMRCREATEPEN>(record);
      fonts_.erase(pen.ihPen);
      pens_[pen.ihPen] =
          std::max(1.0, static_cast<double>(pen.lopn.lopnWidth.x) * place_.width() / plane_.width);
      break;
    }
    case EMR_SELECTOBJECT:
      select(as<EMRSELECTOBJECT>(record).ihObject);
      break;
    case EMR_SETTEXTALIGN:
      align_ = as<EMRSETTEXTALIGN>(record).iMode;
      break;
    case EMR_MOVETOEX:
      position_ = as<EMRMOVETOEX>(record).ptl;
      break;
    case EMR_LINETO:
      take_point(position_);
      position_ = as<EMRLINETO>(record).ptl;
      take_point(position_);
      break;
    case EMR_ELLIPSE:
      take_box(as<EMRELLIPSE>(record).rclBox);
      break;
    case EMR_ARC:  // the whole ellipse, which is never less
      take_box(as<EMRARC>(record).rclBox);
      break;
    default:
      if (const std::optional<TextRecord> text = text_of(record)) take_text(*text);
  }
}

void Measurer::select(DWORD index) {
  const auto font = fonts_.find(index);
  const auto pen = pens_.find(index);
  if (font != fonts_.end()) font_ = font->second;
  if (pen != pens_.end()) pen_ = pen->second;
}

void Measurer::take(const Extent& extent) {
  if (!all_) all_ = extent;
  all_ = Extent{std::min(all_->left, extent.left), std::min(all_->top, extent.top),
                std::max(all_->right, extent.right), std::max(all_->bottom, extent.bottom)};
}

void Measurer::take_point(const POINTL& at) {
  const double half = pen_ / 2;
  take({x(at.x) - half, y(at.y) - half, x(at.x) + half, y(at.y) + half});
}

void Measurer::take_box(const RECTL& box) {
  take_point({box.left, box.top});
  take_point({box.right, box.bottom});
}

// The cell of the text, turned about its reference point.
void Measurer::take_text(const TextRecord& text) {
  LOGFONTW font = font_;
  font.lfHeight =
      std::lround(static_cast<double>(font.lfHeight) * place_.height() * kFineUnits / plane_.height);
  font.lfEscapement = 0;
  const SIZE size = context_.measure(font, text);
  const double width = static_cast<double>(size.cx) / kFineUnits;
  const double height = static_cast<double>(size.cy) / kFineUnits;
  const double left = (align_ & TA_CENTER) == TA_CENTER ? -width / 2 : (align_ & TA_RIGHT) != 0 ? -width : 0;
  const double top = (align_ & TA_BOTTOM) != 0 ? -height : 0;
  const double angle = font_.lfEscapement / 10.0 * std::numbers::pi / 180;
  std::optional<Extent> cell;
  for (const double along : {left, left + width}) {
    for (const double across : {top, top + height}) {
      const double at_x = x(text.at.x) + along * std::cos(angle) + across * std::sin(angle);
      const double at_y = y(text.at.y) - along * std::sin(angle) + across * std::cos(angle);
      if (!cell) cell = Extent{at_x, at_y, at_x, at_y};
      cell = Extent{std::min(cell->left, at_x), std::min(cell->top, at_y), std::max(cell->right, at_x),
                    std::max(cell->bottom, at_y)};
    }
  }
  texts_.push_back(*cell);
  take(*cell);
}

// Counts what pens draw; with `pen` only what one of that look does.
class Counter {
 public:
  explicit Counter(const hosts::PenName* pen) : pen_(pen) {}

  void take(const ENHMETARECORD* record);
  const Strokes& strokes() const { return strokes_; }

 private:
  const hosts::PenName* pen_;
  std::map<DWORD, bool> pens_;  // whether they count, by their index in the metafile
  bool counts_ = pen_ == nullptr;
  Strokes strokes_;
};

void Counter::take(const ENHMETARECORD* record) {
  switch (record->iType) {
    case EMR_CREATEPEN: {
      const auto& made = as<EMRCREATEPEN>(record);
      pens_[made.ihPen] =
          pen_ == nullptr || (made.lopn.lopnColor == pen_->colour && made.lopn.lopnWidth.x == pen_->width);
      break;
    }
    case EMR_DELETEOBJECT:
      pens_.erase(as<EMRDELETEOBJECT>(record).ihObject);
      break;
    case EMR_SELECTOBJECT: {
      const DWORD index = as<EMRSELECTOBJECT>(record).ihObject;
      const auto pen = pens_.find(index);
      if (pen != pens_.end()) counts_ = pen->second;
      if (index == (ENHMETA_STOCK_OBJECT | BLACK_PEN)) counts_ = pen_ == nullptr;
      break;
    }
    case EMR_LINETO:
      if (counts_) ++strokes_.lines;
      break;
    case EMR_ELLIPSE:
      if (counts_) ++strokes_.ellipses;
      break;
    default:
      break;
  }
}

Strokes counted(const hosts::LibraryDrawing& drawing, const hosts::PenName* pen) {
  Counter counter(pen);
  const Recorded recorded(drawing);
  walk(recorded.bytes(), [&counter](const ENHMETARECORD* record) { counter.take(record); });
  return counter.strokes();
}

}  // namespace

std::optional<Covered> covered(const hosts::LibraryDrawing& drawing, const Area& place) {
  Measurer measurer({drawing.plane_width, drawing.plane_height}, place);
  const Recorded recorded(drawing);
  walk(recorded.bytes(), [&measurer](const ENHMETARECORD* record) { measurer.take(record); });
  return measurer.covered();
}

Strokes strokes(const hosts::LibraryDrawing& drawing) {
  return counted(drawing, nullptr);
}

Strokes strokes(const hosts::LibraryDrawing& drawing, const hosts::PenName& pen) {
  return counted(drawing, &pen);
}

}  // namespace tavdhost
