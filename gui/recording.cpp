// Surfaces that keep a readable list of what was drawn. docs/recording.md describes the form of each line.
#include <algorithm>
#include <array>
#include <cstdio>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

#include "gui/guard.h"
#include "gui/surface.h"
#include "gui/text.h"

namespace {

struct Recording {
  std::string text;
  std::int32_t lines = 0;

  void add(std::string line) {
    line += '\n';
    text += line;
    lines += lines < std::numeric_limits<std::int32_t>::max() ? 1 : 0;
  }
};

const tgui_operations& recording_operations();
Recording* recording_of(const tgui_surface* surface);

}  // namespace

tgui_surface* tgui_recording_create(int32_t width, int32_t height) {
  return tgui::guarded<tgui_surface*>(nullptr, [&] {
    auto recording = std::make_unique<Recording>();
    tgui_surface* const surface =
        tgui_surface_create(&recording_operations(), recording.get(), width, height);
    if (surface != nullptr) {
      recording.release();  // NOLINT(bugprone-unused-return-value): the surface's from here
    }
    return surface;
  });
}

const char* tgui_recording_text(const tgui_surface* surface) {
  const Recording* const recording = recording_of(surface);
  return recording == nullptr ? "" : recording->text.c_str();
}

int32_t tgui_recording_count(const tgui_surface* surface) {
  const Recording* const recording = recording_of(surface);
  return recording == nullptr ? 0 : recording->lines;
}

void tgui_recording_clear(tgui_surface* surface) {
  if (Recording* const recording = recording_of(surface)) {
    recording->text.clear();
    recording->lines = 0;
  }
}

namespace {

// "name 1 2 3"
template <class... Numbers>
std::string words(std::string_view name, Numbers... numbers) {
  std::string line(name);
  ((line += ' ', line += std::to_string(numbers)), ...);
  return line;
}

template <class... Numbers>
void record(void* context, std::string_view name, Numbers... numbers) {
  static_cast<Recording*>(context)->add(words(name, numbers...));
}

void record_line(void* context, std::string line) {
  static_cast<Recording*>(context)->add(std::move(line));
}

template <class... Arguments>
std::string printed(const char* format, Arguments... arguments) {
  std::array<char, 64> buffer{};
  std::snprintf(buffer.data(), buffer.size(), format, arguments...);
  return buffer.data();
}

std::string colour_text(std::uint32_t colour) {
  return printed("#%02X%02X%02X", colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF);
}

bool begins_pair(std::u16string_view wide) {
  return wide.size() >= 2 && wide[0] >= 0xD800 && wide[0] < 0xDC00 && wide[1] >= 0xDC00 && wide[1] < 0xE000;
}

// Control characters and lone surrogates, which have no place in a line of UTF-8.
bool needs_number(tavd_wchar unit) {
  return unit < 0x20 || (unit >= 0x7F && unit < 0xA0) || (unit >= 0xD800 && unit < 0xE000);
}

std::string quoted_unit(tavd_wchar unit) {
  switch (unit) {
    case u'"':
      return "\\\"";
    case u'\\':
      return "\\\\";
    case u'\n':
      return "\\n";
    case u'\r':
      return "\\r";
    case u'\t':
      return "\\t";
    default:
      return needs_number(unit) ? printed("\\u%04X", static_cast<unsigned>(unit)) : tgui::to_utf8({&unit, 1});
  }
}

std::string quoted(std::u16string_view wide) {
  std::string line = "\"";
  while (!wide.empty()) {
    const std::size_t taken = begins_pair(wide) ? 2 : 1;
    line += taken == 2 ? tgui::to_utf8(wide.substr(0, 2)) : quoted_unit(wide[0]);
    wide.remove_prefix(taken);
  }
  return line + '"';
}

std::string quoted(std::string_view narrow) {
  return quoted(tgui::to_wide(narrow));
}

std::string stock_name(std::int32_t number) {
  static constexpr struct {
    int number;
    const char* name;
  } kNames[] = {
      {TGUI_WHITE_BRUSH, "white-brush"}, {TGUI_LTGRAY_BRUSH, "ltgray-brush"},
      {TGUI_GRAY_BRUSH, "gray-brush"},   {TGUI_DKGRAY_BRUSH, "dkgray-brush"},
      {TGUI_BLACK_BRUSH, "black-brush"}, {TGUI_NULL_BRUSH, "null-brush"},
      {TGUI_WHITE_PEN, "white-pen"},     {TGUI_BLACK_PEN, "black-pen"},
      {TGUI_NULL_PEN, "null-pen"},       {TGUI_ANSI_VAR_FONT, "ansi-var-font"},
      {TGUI_SYSTEM_FONT, "system-font"},
  };
  const auto* const found = std::find_if(std::begin(kNames), std::end(kNames),
                                         [number](const auto& each) { return each.number == number; });
  return found == std::end(kNames) ? std::to_string(number) : found->name;
}

const char* pen_style_name(std::int32_t style) {
  static constexpr const char* kNames[] = {"solid", "dash", "dot", "dashdot", "", "null"};
  return kNames[style];
}

std::string font_text(const tgui_font& font) {
  std::string line =
      printed("font height=%d weight=%d escapement=%d", font.height, font.weight, font.escapement);
  line += printed(" charset=%d italic=%d underline=%d strikeout=%d", font.charset, font.italic,
                  font.underline, font.strikeout);
  // Both are 0 in nearly every font.
  if (font.width != 0) {
    line += printed(" width=%d", font.width);
  }
  if (font.orientation != 0) {
    line += printed(" orientation=%d", font.orientation);
  }
  return line + " face=" + quoted(std::string_view(font.face));
}

std::string object_text(const tgui_object* object) {
  tgui_object_info info{};
  tgui_get_object(object, &info);
  if (info.stock >= 0) {
    return "stock " + stock_name(info.stock);
  }
  switch (info.kind) {
    case TGUI_PEN:
      return std::string("pen ") + pen_style_name(info.style) + printed(" width=%d", info.width) +
             " colour=" + colour_text(info.colour);
    case TGUI_BRUSH:
      return "brush solid colour=" + colour_text(info.colour);
    default:
      return font_text(info.font);
  }
}

std::string align_text(std::uint32_t align) {
  static constexpr const char* kHorizontal[] = {"left", "right", nullptr, "center"};
  static constexpr const char* kVertical[] = {"top", "bottom", nullptr, "baseline"};
  const char* const horizontal = kHorizontal[align >> 1 & 3];
  const char* const vertical = kVertical[align >> 3 & 3];
  if (horizontal == nullptr || vertical == nullptr || (align & ~0x1EU) != 0) {
    return printed("0x%X", align);
  }
  return std::string(horizontal) + '+' + vertical;
}

tgui_operations make_operations() {
  using Surface = tgui_surface;
  tgui_operations table{};
  table.size = sizeof table;
  table.select = [](void* context, Surface*, const tgui_object* object) {
    record_line(context, "select " + object_text(object));
  };
  table.text_align = [](void* context, Surface*, std::uint32_t align) {
    record_line(context, "align " + align_text(align));
  };
  table.text_colour = [](void* context, Surface*, std::uint32_t colour) {
    record_line(context, "text-colour " + colour_text(colour));
  };
  table.background_mode = [](void* context, Surface*, std::int32_t mode) {
    record(context, mode == TGUI_TRANSPARENT ? "background transparent" : "background opaque");
  };
  table.move_to = [](void* context, Surface*, std::int32_t x, std::int32_t y) {
    record(context, "move", x, y);
  };
  table.line_to = [](void* context, Surface*, std::int32_t x1, std::int32_t y1, std::int32_t x2,
                     std::int32_t y2) { record(context, "line", x1, y1, x2, y2); };
  table.ellipse = [](void* context, Surface*, std::int32_t left, std::int32_t top, std::int32_t right,
                     std::int32_t bottom) { record(context, "ellipse", left, top, right, bottom); };
  table.arc = [](void* context, Surface*, std::int32_t left, std::int32_t top, std::int32_t right,
                 std::int32_t bottom, std::int32_t xs, std::int32_t ys, std::int32_t xe,
                 std::int32_t ye) { record(context, "arc", left, top, right, bottom, xs, ys, xe, ye); };
  table.text = [](void* context, Surface*, std::int32_t x, std::int32_t y, const char* text,
                  std::int32_t length) {
    record_line(context, words("text", x, y) + ' ' + quoted({text, static_cast<std::size_t>(length)}));
  };
  table.textw = [](void* context, Surface*, std::int32_t x, std::int32_t y, const tavd_wchar* text,
                   std::int32_t length) {
    record_line(context, words("textw", x, y) + ' ' + quoted({text, static_cast<std::size_t>(length)}));
  };
  table.map_mode = [](void* context, Surface*, std::int32_t mode) {
    record(context, mode == TGUI_MM_TEXT ? "map text" : "map anisotropic");
  };
  table.window_org = [](void* context, Surface*, std::int32_t x, std::int32_t y) {
    record(context, "window-org", x, y);
  };
  table.window_ext = [](void* context, Surface*, std::int32_t x, std::int32_t y) {
    record(context, "window-ext", x, y);
  };
  table.viewport_org = [](void* context, Surface*, std::int32_t x, std::int32_t y) {
    record(context, "viewport-org", x, y);
  };
  table.viewport_ext = [](void* context, Surface*, std::int32_t x, std::int32_t y) {
    record(context, "viewport-ext", x, y);
  };
  table.save = [](void* context, Surface*, std::int32_t id) { record(context, "save", id); };
  table.restore = [](void* context, Surface*, std::int32_t id) { record(context, "restore", id); };
  table.release = [](void* context) { delete static_cast<Recording*>(context); };
  return table;
}

const tgui_operations& recording_operations() {
  static const tgui_operations table = make_operations();
  return table;
}

// No host can name this table's entries, so one of them tells a recording from other surfaces.
Recording* recording_of(const tgui_surface* surface) {
  if (!tgui::alive(surface) || surface->operations.release != recording_operations().release) {
    return nullptr;
  }
  return static_cast<Recording*>(surface->context);
}

}  // namespace
