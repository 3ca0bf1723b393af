// A window of one of the library's classes, and what it paints.
#pragma once

#include <cstdint>

#include "support/recording.h"
#include "tavdgui/tavdgui.h"

namespace tavdtest {

class Painted {
 public:
  // The window is its parent's; one without a parent is the caller's, who destroys it.
  Painted(const char* class_name, int width, int height, tgui_window* parent = nullptr)
      : window_(tgui_create_window(class_name, "", parent != nullptr ? kChild : 0, 0, 0, width, height,
                                   parent, 0, tgui_main_module())) {
    tgui_set_surface(window_, recording_.surface());
  }

  tgui_window* window() const { return window_; }
  const Recording& recording() const { return recording_; }

  // Paints, and returns what the window's procedure answers.
  intptr_t send_paint() {
    recording_.clear();
    return tgui_send_message(window_, TGUI_WM_PAINT, 0, 0);
  }
  const Recording& paint() {
    send_paint();
    return recording_;
  }

 private:
  static constexpr std::uint32_t kChild = 0x40000000;

  Recording recording_;
  tgui_window* window_;
};

}  // namespace tavdtest
