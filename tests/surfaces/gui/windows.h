// What the tests of windows share.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "tavdgui/tavdgui.h"

// Windows of a class whose procedure writes down what it is told, and may do more.
class WatchedClass {
 public:
  using Reaction = std::function<std::intptr_t(tgui_window*, unsigned, std::uintptr_t, std::intptr_t)>;

  explicit WatchedClass(const char* name = "WATCHED") : name_(name) {
    current() = this;
    tgui_class record{};
    record.size = 0x50;
    record.procedure = procedure;
    record.window_extra = 16;
    record.name = name;
    tgui_register_class(&record);
  }
  WatchedClass(const WatchedClass&) = delete;
  WatchedClass& operator=(const WatchedClass&) = delete;
  ~WatchedClass() {
    reaction = nullptr;
    tgui_unregister_class(name_.c_str(), nullptr);
    current() = nullptr;
  }

  tgui_window* window(int id = 1, tgui_window* parent = nullptr) const {
    return tgui_create_window(name_.c_str(), nullptr, 0x40000000, 10, 20, 100, 50, parent, id, nullptr);
  }
  std::vector<std::pair<tgui_window*, unsigned>> taken() { return std::exchange(messages, {}); }

  std::vector<std::pair<tgui_window*, unsigned>> messages;
  Reaction reaction;

 private:
  static WatchedClass*& current() {
    static WatchedClass* watched = nullptr;
    return watched;
  }
  static std::intptr_t procedure(tgui_window* window, unsigned message, std::uintptr_t wparam,
                                 std::intptr_t lparam) {
    if (current() == nullptr) {
      return 0;
    }
    current()->messages.emplace_back(window, message);
    const Reaction reaction = current()->reaction;
    return reaction ? reaction(window, message, wparam, lparam)
                    : tgui_default_procedure(window, message, wparam, lparam);
  }

  std::string name_;
};

using Messages = std::vector<std::pair<tgui_window*, unsigned>>;
