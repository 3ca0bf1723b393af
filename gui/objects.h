// Pens, brushes and fonts, and how the states of surfaces keep them.
#pragma once

#include <atomic>
#include <cstdint>

#include "tavdgui/tavdgui.h"

// States of surfaces in several threads may hold one object.
struct tgui_object {
  tgui_object_info info;
  std::atomic<int> owners = 1;        // its creator, and the states, current and saved, that have it selected
  std::atomic<bool> deleted = false;  // by its creator; it goes with its last owner
};

namespace tgui {

// What of a colour counts: blue, green and red.
constexpr std::uint32_t kColourBits = 0x00FFFFFF;

// Whether a host may still name this object: a stock object, or one created and not deleted.
bool usable(const tgui_object* object);

// A stock object that is known to exist.
tgui_object* stock(int number);

// A state's hold on an object: a deleted object lives on while a state holds it.
class Hold {
 public:
  explicit Hold(tgui_object* object) noexcept;
  Hold(const Hold& other) noexcept : Hold(other.object_) {}
  Hold& operator=(const Hold& other) noexcept;
  ~Hold();
  tgui_object* get() const { return object_; }

 private:
  tgui_object* object_;
};

}  // namespace tgui
