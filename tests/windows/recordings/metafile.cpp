// A metafile keeps logical coordinates, so places, extents, pen widths and fonts are taken as they stand in
// it. It does not keep everything that was called, and says some things in another way.
//
// Narrow text has become wide text, through the code page of its font: all texts are told as wide ones, and
// compare_recordings takes the one word for the other.
//
// The right and the lower edge of a box are told one less than they were given, since GDI leaves them out;
// they are counted back. A box without width or height draws nothing and leaves no record.
//
// Objects are numbers of a table. They are told by what they are; that they are made and deleted is not told,
// as in recordings of surfaces.
//
// A saved state that comes back is told as its distance from the last one. It is told as the number it had.
#include "metafile.h"

#include <map>
#include <string_view>
#include <utility>
#include <vector>

#include "metafile_text.h"

namespace recordings {
namespace {

class Reader {
 public:
  void read(const ENHMETARECORD* record);
  std::string take() { return std::move(text_); }

 private:
  bool read_object(const ENHMETARECORD* record);
  bool read_saving(const ENHMETARECORD* record);
  bool read_figure(const ENHMETARECORD* record);

  void select(DWORD index);
  void line_to(POINTL to);
  void save();
  void restore(LONG distance);
  template <class Character>
  void text(const ENHMETARECORD* record);

  void add(const std::string& line) { text_ += line + '\n'; }

  std::string text_;
  std::map<DWORD, std::string> objects_;
  POINTL position_{};
  std::vector<POINTL> saved_;  // the position of each state; the rest of it is nothing that lines tell
};

template <class Record>
const Record& as(const ENHMETARECORD* record) {
  return *reinterpret_cast<const Record*>(record);
}

std::string place_words(const char* name, POINTL point) {
  return words(name, {point.x, point.y});
}

std::string extent_words(const char* name, SIZEL size) {
  return words(name, {size.cx, size.cy});
}

// What changes the state of the context, without what is selected and saved; empty for any other record.
std::string state_words(const ENHMETARECORD* record) {
  switch (record->iType) {
    case EMR_SETTEXTALIGN:
      return "align " + align_text(as<EMRSETTEXTALIGN>(record).iMode);
    case EMR_SETTEXTCOLOR:
      return "text-colour " + colour_text(as<EMRSETTEXTCOLOR>(record).crColor);
    case EMR_SETBKMODE:
      return background_text(as<EMRSETBKMODE>(record).iMode);
    case EMR_SETMAPMODE:
      return map_text(as<EMRSETMAPMODE>(record).iMode);
    case EMR_SETWINDOWORGEX:
      return place_words("window-org", as<EMRSETWINDOWORGEX>(record).ptlOrigin);
    case EMR_SETWINDOWEXTEX:
      return extent_words("window-ext", as<EMRSETWINDOWEXTEX>(record).szlExtent);
    case EMR_SETVIEWPORTORGEX:
      return place_words("viewport-org", as<EMRSETVIEWPORTORGEX>(record).ptlOrigin);
    case EMR_SETVIEWPORTEXTEX:
      return extent_words("viewport-ext", as<EMRSETVIEWPORTEXTEX>(record).szlExtent);
    default:
      return "";
  }
}

void Reader::read(const ENHMETARECORD* record) {
  switch (record->iType) {
    case EMR_HEADER:
    case EMR_EOF:
    case EMR_GDICOMMENT:
      return;
    default:
      break;
  }
  if (read_object(record) || read_saving(record) || read_figure(record)) return;
  const std::string state = state_words(record);
  add(!state.empty() ? state : "record " + std::to_string(record->iType));
}

bool Reader::read_object(const ENHMETARECORD* record) {
  switch (record->iType) {
    case EMR_CREATEPEN: {
      const auto& pen = as<EMRCREATEPEN>(record);
      objects_[pen.ihPen] = pen_text(pen.lopn.lopnStyle, pen.lopn.lopnWidth.x, pen.lopn.lopnColor);
      return true;
    }
    case EMR_CREATEBRUSHINDIRECT: {
      const auto& brush = as<EMRCREATEBRUSHINDIRECT>(record);
      objects_[brush.ihBrush] = brush_text(brush.lb.lbStyle, brush.lb.lbColor);
      return true;
    }
    case EMR_EXTCREATEFONTINDIRECTW: {
      const auto& font = as<EMREXTCREATEFONTINDIRECTW>(record);
      objects_[font.ihFont] = font_text(font.elfw.elfLogFont);
      return true;
    }
    case EMR_SELECTOBJECT:
      select(as<EMRSELECTOBJECT>(record).ihObject);
      return true;
    case EMR_DELETEOBJECT:
      objects_.erase(as<EMRDELETEOBJECT>(record).ihObject);
      return true;
    default:
      return false;
  }
}

bool Reader::read_saving(const ENHMETARECORD* record) {
  switch (record->iType) {
    case EMR_SAVEDC:
      save();
      return true;
    case EMR_RESTOREDC:
      restore(as<EMRRESTOREDC>(record).iRelative);
      return true;
    default:
      return false;
  }
}

bool Reader::read_figure(const ENHMETARECORD* record) {
  switch (record->iType) {
    case EMR_MOVETOEX:
      position_ = as<EMRMOVETOEX>(record).ptl;
      add(place_words("move", position_));
      return true;
    case EMR_LINETO:
      line_to(as<EMRLINETO>(record).ptl);
      return true;
    case EMR_ELLIPSE: {
      const RECTL& box = as<EMRELLIPSE>(record).rclBox;
      add(words("ellipse", {box.left, box.top, box.right + 1, box.bottom + 1}));
      return true;
    }
    case EMR_ARC: {
      const auto& arc = as<EMRARC>(record);
      add(words("arc", {arc.rclBox.left, arc.rclBox.top, arc.rclBox.right + 1, arc.rclBox.bottom + 1,
                        arc.ptlStart.x, arc.ptlStart.y, arc.ptlEnd.x, arc.ptlEnd.y}));
      return true;
    }
    case EMR_EXTTEXTOUTA:
      text<char>(record);
      return true;
    case EMR_EXTTEXTOUTW:
      text<wchar_t>(record);
      return true;
    default:
      return false;
  }
}

// The highest bit marks the number of a stock object.
void Reader::select(DWORD index) {
  constexpr DWORD kStock = ENHMETA_STOCK_OBJECT;
  if ((index & kStock) != 0) {
    add("select stock " + stock_name(index & ~kStock));
  } else {
    const auto object = objects_.find(index);
    add("select " + (object == objects_.end() ? "an object that was never made" : object->second));
  }
}

void Reader::line_to(POINTL to) {
  add(words("line", {position_.x, position_.y, to.x, to.y}));
  position_ = to;
}

void Reader::save() {
  saved_.push_back(position_);
  add("save " + std::to_string(saved_.size()));
}

void Reader::restore(LONG distance) {
  const auto id = static_cast<LONG>(saved_.size()) + distance + 1;
  if (distance >= 0 || id < 1) {
    add("restore by " + std::to_string(distance));
    return;
  }
  position_ = saved_[static_cast<std::size_t>(id - 1)];
  saved_.resize(static_cast<std::size_t>(id - 1));
  add("restore " + std::to_string(id));
}

// Narrow and wide texts have records of one form.
template <class Character>
void Reader::text(const ENHMETARECORD* record) {
  const EMRTEXT& text = as<EMREXTTEXTOUTW>(record).emrtext;
  const auto* const characters =
      reinterpret_cast<const Character*>(reinterpret_cast<const BYTE*>(record) + text.offString);
  std::string line = place_words("textw", text.ptlReference) + ' ';
  line += quoted(wide(std::basic_string_view<Character>(characters, text.nChars)));
  // Rectangles that fill and cut, which nothing here asks for.
  if ((text.fOptions & (ETO_OPAQUE | ETO_CLIPPED)) != 0) line += " options=" + std::to_string(text.fOptions);
  add(line);
}

int CALLBACK read_record(HDC, HANDLETABLE*, const ENHMETARECORD* record, int, LPARAM reader) {
  reinterpret_cast<Reader*>(reader)->read(record);
  return 1;
}

}  // namespace

std::string operations_of(HENHMETAFILE file) {
  Reader reader;
  EnumEnhMetaFile(nullptr, file, read_record, &reader, nullptr);
  return reader.take();
}

}  // namespace recordings
