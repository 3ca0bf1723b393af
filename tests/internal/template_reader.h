// Reads a dialog template in memory, by the platform's description of DLGTEMPLATE and DLGITEMTEMPLATE.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace tavdtest {

struct TemplateItem {
  std::size_t offset;
  std::uint32_t style, extended_style;
  std::int16_t x, y, width, height;
  std::uint16_t id, class_mark, class_atom;
  std::u16string text;
  std::uint16_t creation_data;
};

struct Template {
  std::size_t size;
  std::uint32_t style, extended_style;
  std::uint16_t count;
  std::int16_t x, y, width, height;
  std::uint16_t menu, window_class;
  std::u16string title;
  std::vector<TemplateItem> items;
};

class TemplateReader {
 public:
  TemplateReader(const void* bytes, std::size_t size)
      : bytes_(static_cast<const unsigned char*>(bytes), static_cast<const unsigned char*>(bytes) + size) {}

  template <typename Number>
  void read(Number& value) {
    value = 0;
    if (at_ + sizeof value > bytes_.size()) {
      ADD_FAILURE() << "the template ends early";
      return;
    }
    std::memcpy(&value, bytes_.data() + at_, sizeof value);
    at_ += sizeof value;
  }
  void read(std::u16string& text) {
    for (;;) {
      std::uint16_t unit = 0;
      read(unit);
      if (unit == 0) return;
      text += static_cast<char16_t>(unit);
    }
  }
  template <typename... Fields>
  void read_all(Fields&... fields) {
    (read(fields), ...);
  }
  void align() { at_ = (at_ + 3) / 4 * 4; }
  std::size_t at() const { return at_; }

 private:
  std::vector<unsigned char> bytes_;
  std::size_t at_ = 0;
};

inline Template read_template(const void* bytes, std::size_t size) {
  TemplateReader reader(bytes, size);
  Template dialog{};
  dialog.size = size;
  reader.read_all(dialog.style, dialog.extended_style, dialog.count, dialog.x, dialog.y, dialog.width,
                  dialog.height, dialog.menu, dialog.window_class, dialog.title);
  for (int i = 0; i < dialog.count; ++i) {
    reader.align();
    TemplateItem item{};
    item.offset = reader.at();
    reader.read_all(item.style, item.extended_style, item.x, item.y, item.width, item.height, item.id,
                    item.class_mark, item.class_atom, item.text, item.creation_data);
    dialog.items.push_back(item);
  }
  EXPECT_EQ(reader.at(), size);
  return dialog;
}

}  // namespace tavdtest
