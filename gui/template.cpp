#include "gui/template.h"

#include <cstring>

#include "tavd/types.h"

namespace tgui {

namespace {

// First word of a name or text that is a number instead, and first words of the newer form of template.
constexpr std::uint16_t kOrdinal = 0xFFFF;
constexpr std::uint32_t kNewerForm = 0xFFFF0001;

constexpr std::uint32_t kSetFont = 0x40;  // dialog style: the size and face of a font follow the title

// Items begin on this boundary, counted from the template's first byte.
constexpr std::size_t kItemBoundary = 4;

// Reads forward over the template; once it has come to the end of what is allowed, everything reads as 0.
class Reader {
 public:
  explicit Reader(const void* bytes) : bytes_(static_cast<const unsigned char*>(bytes)) {}

  bool failed() const { return failed_; }
  std::size_t position() const { return position_; }

  template <class Number>
  Number number() {
    Number value = 0;
    if (take(sizeof value)) {
      std::memcpy(&value, bytes_ + position_ - sizeof value, sizeof value);
    }
    return value;
  }

  void skip(std::size_t count) { take(count); }
  void align() { skip((kItemBoundary - position_ % kItemBoundary) % kItemBoundary); }

  // The units up to the terminator, `first` being the first of them.
  std::u16string text(tavd_wchar first) {
    std::u16string units;
    for (tavd_wchar unit = first; unit != 0; unit = number<std::uint16_t>()) {
      units += unit;
    }
    return units;
  }
  std::u16string text() { return text(number<std::uint16_t>()); }

  // A text, or a number that goes to `ordinal`.
  std::u16string text_or_ordinal(std::uint16_t& ordinal) {
    const auto first = number<std::uint16_t>();
    if (first == kOrdinal) {
      ordinal = number<std::uint16_t>();
      return {};
    }
    return text(first);
  }

 private:
  bool take(std::size_t count) {
    failed_ = failed_ || count > kLargestTemplate - position_;
    position_ += failed_ ? 0 : count;
    return !failed_;
  }

  const unsigned char* bytes_;
  std::size_t position_ = 0;
  bool failed_ = false;
};

// x, y, width and height of a dialog or an item.
template <class Placed>
void read_place(Reader& reader, Placed& placed) {
  for (std::int16_t Placed::*field : {&Placed::x, &Placed::y, &Placed::width, &Placed::height}) {
    placed.*field = reader.number<std::int16_t>();
  }
}

TemplateItem read_item(Reader& reader) {
  TemplateItem item;
  reader.align();
  item.style = reader.number<std::uint32_t>();
  reader.skip(sizeof(std::uint32_t));  // extended style
  read_place(reader, item);
  item.id = reader.number<std::uint16_t>();
  item.class_name = reader.text_or_ordinal(item.atom);
  std::uint16_t resource = 0;
  item.text = reader.text_or_ordinal(resource);
  const auto creation_size = reader.number<std::uint16_t>();  // counts itself if it is not 0
  reader.skip(creation_size > sizeof creation_size ? creation_size - sizeof creation_size : 0);
  return item;
}

}  // namespace

std::optional<DialogTemplate> read_template(const void* bytes) {
  if (bytes == nullptr) {
    return std::nullopt;
  }
  Reader reader(bytes);
  DialogTemplate dialog;
  dialog.style = reader.number<std::uint32_t>();
  if (dialog.style == kNewerForm) {
    return std::nullopt;
  }
  reader.skip(sizeof(std::uint32_t));  // extended style
  const std::size_t count = reader.number<std::uint16_t>();
  if (count > kMostItems) {
    return std::nullopt;
  }
  read_place(reader, dialog);
  std::uint16_t ordinal = 0;
  reader.text_or_ordinal(ordinal);  // menu
  reader.text_or_ordinal(ordinal);  // class
  dialog.title = reader.text();
  if ((dialog.style & kSetFont) != 0) {
    reader.skip(sizeof(std::uint16_t));
    reader.text();
  }
  while (dialog.items.size() < count && !reader.failed()) {
    dialog.items.push_back(read_item(reader));
  }
  dialog.size = reader.position();
  return reader.failed() ? std::nullopt : std::optional(std::move(dialog));
}

}  // namespace tgui
