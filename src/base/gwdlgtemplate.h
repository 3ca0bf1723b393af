// A dialog template in memory (DLGTEMPLATE, then DLGITEMTEMPLATEs), as the platform reads it: little-endian
// fields packed one after the other, items on 4-byte boundaries, texts in UTF-16.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tavd {

class DialogTemplate {
 public:
  static constexpr std::size_t kSize = 4000;  // bytes of the block that a template is built in

  struct Place {
    int x, y, width, height;  // dialog units
  };

  // Builds in `block`, kSize zero bytes aligned to 4. Texts are cut where the block ends; room for the
  // dialog's static text and three buttons is kept.
  explicit DialogTemplate(void* block) : block_(static_cast<unsigned char*>(block)) {}

  // First the header, then the items. Texts are narrow, in the default code page; null counts as empty.
  void header(int item_count, const Place& place, const char* title);
  void static_text(int id, const Place& place, const char* text);
  void button(int id, const Place& place, const char* label);

 private:
  void item(std::uint32_t style, const Place& place, int id, std::uint16_t class_atom, const char* text,
            std::size_t reserved);
  void word(std::uint16_t value);
  void dword(std::uint32_t value);
  void place(const Place& place);
  // At most `limit` bytes of `text`, so that `reserved` bytes of the block stay free behind it.
  void text(const char* text, std::size_t limit, std::size_t reserved);

  unsigned char* block_;
  std::size_t used_ = 0;
};

}  // namespace tavd
