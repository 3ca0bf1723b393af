#include "recorded.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>
#include <stdexcept>
#include <vector>

#include "memory_metafile.h"

namespace tavdhost {
namespace {

// The units of texts: so many to a pixel, the same each way. In a plane that is stretched more in one
// direction than in the other, players of metafiles disagree on the width of letters and on the pace of
// rotated ones.
constexpr int kTextUnits = 16;

// A text without the widths of its letters, which GDI records in one of several forms. mingw has no structure
// for it.
struct SmallText {
  EMR emr;
  LONG x, y;
  DWORD count, options, mode;
  FLOAT x_scale, y_scale;
};
constexpr DWORD kSmallText = 108;      // EMR_SMALLTEXTOUT
constexpr DWORD kNoRectangle = 0x100;  // ETO_NO_RECT: none stands in front of the letters
constexpr DWORD kNarrow = 0x200;       // ETO_SMALL_CHARS: a byte for each letter

template <typename Record>
const Record& as(const ENHMETARECORD* record) {
  return *reinterpret_cast<const Record*>(record);
}

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
  }
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;

  void play(const ENHMETARECORD* record);
  void draw_frame(const Area& window, std::uint32_t colour);

 private:
  void use_plane();
  void use_text_units();
  // In units of texts.
  LONG text_x(LONG x) const;
  LONG text_y(LONG y) const;
  void make_font(const EMREXTCREATEFONTINDIRECTW& record);
  bool drop_font(DWORD index);
  void select(const ENHMETARECORD* record);
  void line_to(LONG x, LONG y);
  template <typename Out>
  void text(LONG x, LONG y, Out out);
  void small_text(const ENHMETARECORD* record);
  void play_as_it_is(const ENHMETARECORD* record);

  HDC hdc_;
  PictureSize plane_;
  const Placed& placed_;
  POINT origin_;
  int fineness_;
  std::vector<HGDIOBJ> objects_;  // by their index in the metafile, which fonts have too
  std::map<DWORD, HFONT> fonts_;
  LONG x_ = 0, y_ = 0;  // where the next line begins
  int saved_;
};

void Player::use_plane() {
  SetMapMode(hdc_, MM_ANISOTROPIC);
  SetWindowExtEx(hdc_, plane_.width, plane_.height, nullptr);
  SetViewportOrgEx(hdc_, (placed_.place.left - origin_.x) * fineness_,
                   (placed_.place.top - origin_.y) * fineness_, nullptr);
  SetViewportExtEx(hdc_, placed_.place.width() * fineness_, placed_.place.height() * fineness_, nullptr);
}

void Player::use_text_units() {
  SetWindowExtEx(hdc_, kTextUnits, kTextUnits, nullptr);
  SetViewportExtEx(hdc_, fineness_, fineness_, nullptr);
}

LONG Player::text_x(LONG x) const {
  return std::lround(static_cast<double>(x) * placed_.place.width() * kTextUnits / plane_.width);
}

LONG Player::text_y(LONG y) const {
  return std::lround(static_cast<double>(y) * placed_.place.height() * kTextUnits / plane_.height);
}

void Player::play(const ENHMETARECORD* record) {
  switch (record->iType) {
    case EMR_MOVETOEX:
      x_ = as<EMRMOVETOEX>(record).ptl.x;
      y_ = as<EMRMOVETOEX>(record).ptl.y;
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
      if (!drop_font(as<EMRDELETEOBJECT>(record).ihObject)) play_as_it_is(record);
      break;
    case EMR_EXTTEXTOUTW:
    case EMR_EXTTEXTOUTA: {
      const EMRTEXT& told = as<EMREXTTEXTOUTW>(record).emrtext;
      const auto* letters = reinterpret_cast<const char*>(record) + told.offString;
      const int count = static_cast<int>(told.nChars);
      text(told.ptlReference.x, told.ptlReference.y, [&](LONG x, LONG y) {
        if (record->iType == EMR_EXTTEXTOUTA) return TextOutA(hdc_, x, y, letters, count);
        return TextOutW(hdc_, x, y, reinterpret_cast<const wchar_t*>(letters), count);
      });
      break;
    }
    case kSmallText:
      small_text(record);
      break;
    case EMR_SETBKMODE:
    case EMR_SETTEXTALIGN:
    case EMR_SETTEXTCOLOR:
    case EMR_CREATEPEN:
    case EMR_EXTCREATEPEN:
    case EMR_CREATEBRUSHINDIRECT:
    case EMR_ELLIPSE:
    case EMR_ARC:
      play_as_it_is(record);
      break;
    default:  // the mapping is the player's own
      break;
  }
}

void Player::play_as_it_is(const ENHMETARECORD* record) {
  PlayEnhMetaFileRecord(hdc_, reinterpret_cast<HANDLETABLE*>(objects_.data()), record,
                        static_cast<UINT>(objects_.size()));
}

void Player::make_font(const EMREXTCREATEFONTINDIRECTW& record) {
  LOGFONTW font = record.elfw.elfLogFont;
  font.lfHeight = text_y(font.lfHeight);
  // Shades in all directions: colours at the edges of letters are for screens.
  font.lfQuality = ANTIALIASED_QUALITY;
  drop_font(record.ihFont);
  fonts_[record.ihFont] = CreateFontIndirectW(&font);
}

// Whether there was one of that index, which another object may have next.
bool Player::drop_font(DWORD index) {
  const auto font = fonts_.find(index);
  if (font == fonts_.end()) return false;
  DeleteObject(font->second);
  fonts_.erase(font);
  return true;
}

void Player::select(const ENHMETARECORD* record) {
  const auto font = fonts_.find(as<EMRSELECTOBJECT>(record).ihObject);
  if (font != fonts_.end()) {
    SelectObject(hdc_, font->second);
  } else {
    play_as_it_is(record);
  }
}

void Player::line_to(LONG x, LONG y) {
  std::optional<Line> line = Line{x_, y_, x, y};
  if (placed_.cell != nullptr) line = cut_line(*line, placed_.cell->window);
  if (line) {
    MoveToEx(hdc_, line->x1, line->y1, nullptr);
    LineTo(hdc_, line->x2, line->y2);
  }
  x_ = x;
  y_ = y;
}

// `out` draws it at a point in units of texts.
template <typename Out>
void Player::text(LONG x, LONG y, Out out) {
  if (placed_.cell != nullptr && !placed_.cell->window.holds(x, y)) return;
  use_text_units();
  out(text_x(x), text_y(y));
  use_plane();
}

void Player::small_text(const ENHMETARECORD* record) {
  const auto& told = as<SmallText>(record);
  const auto* letters = reinterpret_cast<const char*>(record) + sizeof told +
                        ((told.options & kNoRectangle) != 0 ? 0 : sizeof(RECTL));
  const int count = static_cast<int>(told.count);
  text(told.x, told.y, [&](LONG x, LONG y) {
    if ((told.options & kNarrow) != 0) return TextOutA(hdc_, x, y, letters, count);
    return TextOutW(hdc_, x, y, reinterpret_cast<const wchar_t*>(letters), count);
  });
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

const ENHMETAHEADER& header_of(const std::string& bytes) {
  return *reinterpret_cast<const ENHMETAHEADER*>(bytes.data());
}

// Calls `use` with each record behind the header.
template <typename Use>
void walk(const std::string& bytes, Use use) {
  for (std::size_t at = header_of(bytes).nSize; at + sizeof(EMR) <= bytes.size();) {
    const auto* record = reinterpret_cast<const ENHMETARECORD*>(bytes.data() + at);
    if (record->iType == EMR_EOF || record->nSize < sizeof(EMR) || record->nSize > bytes.size() - at) return;
    use(record);
    at += record->nSize;
  }
}

}  // namespace

Recorded::Recorded(const LibraryDrawing& drawing) : plane_{drawing.plane_width, drawing.plane_height} {
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
  if (placed.cell == nullptr) return {0, 0, size.width, size.height};
  constexpr int kRoom = 8;  // of the width and the height
  const Area& place = placed.place;
  const int x = place.width() / kRoom;
  const int y = place.height() / kRoom;
  return {std::max(place.left - x, 0), std::max(place.top - y, 0), std::min(place.right + x, size.width),
          std::min(place.bottom + y, size.height)};
}

bool Recorded::has_lines() const {
  bool found = false;
  walk(bytes_, [&found](const ENHMETARECORD* record) { found = found || record->iType == EMR_LINETO; });
  return found;
}

bool has_lines(const LibraryDrawing& drawing) {
  return Recorded(drawing).has_lines();
}

}  // namespace tavdhost
