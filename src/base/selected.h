// A pen, font or brush that is selected for the time of a block.
#pragma once

#include "base/gwgdi.h"

namespace tavd {

// Selects an object and, at the end of the block, what was selected before. An object that could not be made
// is null and selects nothing.
class Selected {
 public:
  Selected(tavd_hdc hdc, gwobject object) : hdc_(hdc), former_(gwselect(hdc, object)) {}
  ~Selected() { gwselect(hdc_, former_); }
  Selected(const Selected&) = delete;
  Selected& operator=(const Selected&) = delete;

  // Selects another object of the same kind in its place.
  void change(gwobject object) {
    const gwobject replaced = gwselect(hdc_, object);
    if (former_ == nullptr) former_ = replaced;
  }

 private:
  tavd_hdc hdc_;
  gwobject former_;
};

// The same, and the object is this one's: it is deleted at the end of the block.
class OwnedSelected {
 public:
  OwnedSelected(tavd_hdc hdc, gwobject object) : hdc_(hdc), object_(object), former_(gwselect(hdc, object)) {}
  ~OwnedSelected() {
    gwselect(hdc_, former_);
    gwdelete(object_);
  }
  OwnedSelected(const OwnedSelected&) = delete;
  OwnedSelected& operator=(const OwnedSelected&) = delete;

 private:
  tavd_hdc hdc_;
  gwobject object_;
  gwobject former_;
};

}  // namespace tavd
