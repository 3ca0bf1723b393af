// Dialog templates in memory, as the platform packs them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tgui {

// Places and sizes in dialog units.
struct TemplateItem {
  std::uint32_t style = 0;
  std::int16_t x = 0, y = 0, width = 0, height = 0;
  std::uint16_t id = 0;
  std::uint16_t atom = 0;  // number of a class of the platform's, 0 if the class has a name
  std::u16string class_name;
  std::u16string text;
};

struct DialogTemplate {
  std::uint32_t style = 0;
  std::int16_t x = 0, y = 0, width = 0, height = 0;
  std::u16string title;
  std::vector<TemplateItem> items;
  std::size_t size = 0;  // bytes read
};

// Class numbers in templates.
inline constexpr std::uint16_t kAtomButton = 0x80;
inline constexpr std::uint16_t kAtomEdit = 0x81;
inline constexpr std::uint16_t kAtomStatic = 0x82;
inline constexpr std::uint16_t kAtomListBox = 0x83;
inline constexpr std::uint16_t kAtomScrollBar = 0x84;
inline constexpr std::uint16_t kAtomComboBox = 0x85;

// Reads a template whose length nobody gives: it reads forward only, as far as the format says, and gives up
// beyond kLargestTemplate bytes or kMostItems items. Nothing if the template is no good.
inline constexpr std::size_t kLargestTemplate = 0x10000;
inline constexpr std::size_t kMostItems = 255;
std::optional<DialogTemplate> read_template(const void* bytes);

}  // namespace tgui
