#include "drawing/win32/recorded.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>
#include <optional>
#include <stdexcept>
#include <vector>

#include "drawing/win32/dashes.h"
#include "drawing/win32/memory_metafile.h"
#include "drawing/win32/records.h"

namespace tavdhost {
namespace {

// The fine units, of texts and broken lines: so many to a pixel, the same each way. In a plane that is
// stretched more in one direction than in the other, players of metafiles disagree on the width of letters
// and on the pace of rotated ones.
constexpr int kFineUnits = 16;

// A pen of a drawing.
struct Pen {
  HPEN pen;
  std::optional<Dashes> dashes;  // in fine units, as its width is then
};

// Draws record by record.
class Player {
 public:
  Player(HDC hdc, PictureSize plane, const Placed& placed, POINT origin, int fineness, std::size_t objects)
      : hdc_(hdc), plane_(plane), placed_(placed), origin_(origin), fineness_(fineness), objects_(objects) {
    saved_ = SaveDC(hdc);
    SetBkMode(hdc, TRANSPARENT);
    use_plane();
  }
  ~Player() {
    RestoreDC(hdc_, saved_);
    for (const HGDIOBJ object : objects_) {
      if (object != nullptr) DeleteObject(object);
    }
    for (const auto& [index, font] : fonts_) DeleteObject(font);
    for (const auto& [index, pen] : pens_) DeleteObject(pen.pen);
  }
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;

  void play(const ENHMETARECORD* record);
  void draw_frame(const Area& window, std::uint32_t colour);

 private:
  void use_plane();
  void use_fine_units();
  // Of the plane, in fine units.
  LONG fine_x(double x) const;
  LONG fine_y(double y) const;
  void make_font(const EMREXTCREATEFONTINDIRECTW& record);
  void make_pen(const EMRCREATEPEN& record);
  // Whether there was a pen or font of that index, which another object may have next.
  bool drop(DWORD index);
  void select(const ENHMETARECORD* record);
  void move_to(LONG x, LONG y);
  void line_to(LONG x, LONG y);
  void broken_line(DashPoint from, DashPoint to);
  void broken_arc(const RECTL& box, POINTL start, POINTL end);
  void text(const TextRecord& text);
  void play_as_it_is(const ENHMETARECORD* record);

  HDC hdc_;
  PictureSize plane_;
  const Placed& placed_;
  POINT origin_;
  int fineness_;
  std::vector<HGDIOBJ> objects_;  // by their index in the metafile, which fonts have too
  std::map<DWORD, HFONT> fonts_;
  std::map<DWORD, Pen> pens_;
  Dashes* dashes_ = nullptr;  // of the selected pen, if it breaks lines
  LONG x_ = 0, y_ = 0;        // where the next line begins
  int saved_;
};

void Player::use_plane() {
  SetMapMode(hdc_, MM_ANISOTROPIC);
  SetWindowExtEx(hdc_, plane_.width, plane_.height, nullptr);
  SetViewportOrgEx(hdc_, (placed_.place.left - origin_.x) * fineness_,
                   (placed_.place.top - origin_.y) * fineness_, nullptr);
  SetViewportExtEx(hdc_, placed_.place.width() * fineness_, placed_.place.height() * fineness_, nullptr);
}

void Player::use_fine_units() {
  SetWindowExtEx(hdc_, kFineUnits, kFineUnits, nullptr);
  SetViewportExtEx(hdc_, fineness_, fineness_, nullptr);
}

LONG Player::fine_x(double x) const {
  return std::lround(x * placed_.place.width() * kFineUnits / plane_.width);
}

LONG Player::fine_y(double y) const {
  return std::lround(y * placed_.place.height() * kFineUnits / plane_.height);
}

void Player::play(const ENHMETARECORD* record) {
  switch (record->iType) {
    case EMR_MOVETOEX:
      move_to(as<EMRMOVETOEX>(record).ptl.x, as<EMRMOVETOEX>(record).ptl.y);
      break;
    case EMR_LINETO:
      line_to(as<EMRLINETO>(record).ptl.x, as<EMRLINETO>(record).ptl.y);
      break;
    case EMR_EXTCREATEFONTINDIRECTW:
      make_font(as<EMREXTCREATEFONTINDIRECTW>(record));
      break;
    case EMR_SELECTOBJECT:
      select(record);
      break;
    case EMR_DELETEOBJECT:
      if (!drop(as<EMRDELETEOBJECT>(record).ihObject)) play_as_it_is(record);
      break;
    case EMR_SETBKMODE:
    case EMR_SETTEXTALIGN:
    case EMR_SETTEXTCOLOR:
    case EMR_EXTCREATEPEN:
    case EMR_CREATEBRUSHINDIRECT:
      play_as_it_is(record);
      break;
    case EMR_CREATEPEN:
      make_pen(as<EMRCREATEPEN>(record));
      break;
    case EMR_ELLIPSE: {
      const RECTL& box = as<EMRELLIPSE>(record).rclBox;
      const POINTL right = {box.right, (box.top + box.bottom) / 2};
      if (dashes_ == nullptr) {
        play_as_it_is(record);
      } else {
        broken_arc(box, right, right);
      }
      break;
    }
    case EMR_ARC: {
      const auto& arc = as<EMRARC>(record);
      if (dashes_ == nullptr) {
        play_as_it_is(record);
      } else {
        broken_arc(arc.rclBox, arc.ptlStart, arc.ptlEnd);
      }
      break;
    }
    default:  // the mapping is the player's own
      if (const std::optional<TextRecord> given = text_of(record)) text(*given);
  }
}

void Player::play_as_it_is(const ENHMETARECORD* record) {
  PlayEnhMetaFileRecord(hdc_, reinterpret_cast<HANDLETABLE*>(objects_.data()), record,
                        static_cast<UINT>(objects_.size()));
}

void Player::make_font(const EMREXTCREATEFONTINDIRECTW& record) {
  LOGFONTW font = record.elfw.elfLogFont;
  font.lfHeight = fine_y(font.lfHeight);
  // Shades in all directions: colours at the edges of letters are for screens.
  font.lfQuality = ANTIALIASED_QUALITY;
  drop(record.ihFont);
  fonts_[record.ihFont] = CreateFontIndirectW(&font);
}

// No line is thinner than a pixel of the picture.
void Player::make_pen(const EMRCREATEPEN& record) {
  const LOGPEN& pen = record.lopn;
  const double pixel = static_cast<double>(plane_.width) / placed_.place.width();
  const double width = std::max<double>(pen.lopnWidth.x, pixel);
  drop(record.ihPen);
  const std::span<const double> pattern = dash_pattern(pen.lopnStyle);
  if (pattern.empty()) {
    pens_[record.ihPen] = {
        CreatePen(static_cast<int>(pen.lopnStyle), static_cast<int>(std::lround(width)), pen.lopnColor), {}};
    return;
  }
  const LOGBRUSH ink = {BS_SOLID, pen.lopnColor, 0};
  const LONG fine_width = fine_x(width);
  pens_[record.ihPen] = {ExtCreatePen(PS_GEOMETRIC | PS_SOLID | PS_ENDCAP_FLAT,
                                      static_cast<DWORD>(fine_width), &ink, 0, nullptr),
                         Dashes(pattern, static_cast<double>(fine_width))};
}

bool Player::drop(DWORD index) {
  const auto font = fonts_.find(index);
  const auto pen = pens_.find(index);
  if (font != fonts_.end()) {
    DeleteObject(font->second);
    fonts_.erase(font);
    return true;
  }
  if (pen == pens_.end()) return false;
  if (dashes_ && pen->second.dashes) dashes_ = nullptr;
  DeleteObject(pen->second.pen);
  pens_.erase(pen);
  return true;
}

void Player::select(const ENHMETARECORD* record) {
  const DWORD index = as<EMRSELECTOBJECT>(record).ihObject;
  const auto font = fonts_.find(index);
  const auto pen = pens_.find(index);
  if (font != fonts_.end()) {
    SelectObject(hdc_, font->second);
  } else if (pen != pens_.end()) {
    SelectObject(hdc_, pen->second.pen);
    dashes_ = pen->second.dashes ? &*pen->second.dashes : nullptr;
  } else {
    play_as_it_is(record);
    // GDI's own pen may have taken the place of a broken one.
    if (GetObjectType(GetCurrentObject(hdc_, OBJ_PEN)) == OBJ_PEN) dashes_ = nullptr;
  }
}

void Player::move_to(LONG x, LONG y) {
  if (dashes_ != nullptr && (x != x_ || y != y_)) dashes_->restart();
  x_ = x;
  y_ = y;
}

void Player::line_to(LONG x, LONG y) {
  std::optional<Line> line = Line{x_, y_, x, y};
  if (placed_.cell != nullptr) line = cut_line(*line, placed_.cell->window);
  if (line && dashes_ != nullptr) {
    use_fine_units();
    broken_line({static_cast<double>(line->x1), static_cast<double>(line->y1)},
                {static_cast<double>(line->x2), static_cast<double>(line->y2)});
    use_plane();
  } else if (line) {
    MoveToEx(hdc_, line->x1, line->y1, nullptr);
    LineTo(hdc_, line->x2, line->y2);
  }
  x_ = x;
  y_ = y;
}

// Between two points of the plane; fine units are in use.
void Player::broken_line(DashPoint from, DashPoint to) {
  const auto fine = [this](DashPoint at) {
    return DashPoint{static_cast<double>(fine_x(at.x)), static_cast<double>(fine_y(at.y))};
  };
  for (const Dash& dash : dashes_->cut(fine(from), fine(to))) {
    MoveToEx(hdc_, std::lround(dash.from.x), std::lround(dash.from.y), nullptr);
    LineTo(hdc_, std::lround(dash.to.x), std::lround(dash.to.y));
  }
}

// The outline of an ellipse or a part of it. Broken ones are not filled.
void Player::broken_arc(const RECTL& box, POINTL start, POINTL end) {
  const std::vector<DashPoint> points = ellipse_points(box, start, end);
  dashes_->restart();
  use_fine_units();
  for (std::size_t i = 1; i < points.size(); ++i) broken_line(points[i - 1], points[i]);
  use_plane();
}

void Player::text(const TextRecord& text) {
  if (placed_.cell != nullptr && !placed_.cell->window.holds(text.at.x, text.at.y)) return;
  use_fine_units();
  const LONG x = fine_x(text.at.x);
  const LONG y = fine_y(text.at.y);
  if (text.is_narrow) {
    TextOutA(hdc_, x, y, text.letters, text.count);
  } else {
    TextOutW(hdc_, x, y, text.wide(), text.count);
  }
  use_plane();
}

void Player::draw_frame(const Area& window, std::uint32_t colour) {
  const HPEN pen = CreatePen(PS_SOLID, 1, colour);
  const HGDIOBJ former = SelectObject(hdc_, pen);
  MoveToEx(hdc_, window.left, window.top, nullptr);
  LineTo(hdc_, window.right, window.top);
  LineTo(hdc_, window.right, window.bottom);
  LineTo(hdc_, window.left, window.bottom);
  LineTo(hdc_, window.left, window.top);
  SelectObject(hdc_, former);
  DeleteObject(pen);
}

}  // namespace

Recorded::Recorded(const hosts::LibraryDrawing& drawing) : plane_{drawing.plane_width, drawing.plane_height} {
  MemoryMetafile metafile(plane_, L"");
  drawing.create_tools();
  drawing.draw(metafile.hdc());
  bytes_ = metafile.finish();
  drawing.destroy_tools();
}

void Recorded::draw(HDC hdc, const Placed& placed, POINT origin, int fineness) const {
  Player player(hdc, plane_, placed, origin, fineness, header_of(bytes_).nHandles);
  walk(bytes_, [&player](const ENHMETARECORD* record) { player.play(record); });
  if (placed.cell != nullptr && placed.cell->frame) {
    player.draw_frame(placed.cell->window, *placed.cell->frame);
  }
}

// Of a cell with some room about it, for texts that run beyond it.
Area Recorded::covered(const Placed& placed, PictureSize size) const {
  if (placed.cell == nullptr) return placed.room;
  constexpr int kRoom = 8;  // of the width and the height
  const Area& place = placed.place;
  const int x = place.width() / kRoom;
  const int y = place.height() / kRoom;
  return {std::max(place.left - x, 0), std::max(place.top - y, 0), std::min(place.right + x, size.width),
          std::min(place.bottom + y, size.height)};
}

}  // namespace tavdhost
