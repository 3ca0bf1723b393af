// Names of window classes are compared without regard to the case of their Latin letters.
#pragma once

namespace tgui {

template <typename Char>
constexpr Char ascii_upper(Char c) {
  return c >= 'a' && c <= 'z' ? static_cast<Char>(c - 'a' + 'A') : c;
}

}  // namespace tgui
