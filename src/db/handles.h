// Owners of what the service hands out, so that every path gives it back.
#pragma once

#include <utility>

#include "tavd/tavb.h"

namespace tavd {

// A record handle.
class RecordHandle {
 public:
  explicit RecordHandle(tavb_rec rec) : rec_(rec) {}
  ~RecordHandle() { release(); }
  RecordHandle(const RecordHandle&) = delete;
  RecordHandle& operator=(const RecordHandle&) = delete;
  RecordHandle(RecordHandle&& other) noexcept : rec_(std::exchange(other.rec_, nullptr)) {}
  RecordHandle& operator=(RecordHandle&& other) noexcept {
    std::swap(rec_, other.rec_);
    other.release();
    return *this;
  }

  explicit operator bool() const { return rec_ != nullptr; }
  tavb_rec get() const { return rec_; }
  tavb_rec* address() { return &rec_; }  // for tavbinsertatt, which may move the record

  void release() {
    if (rec_ != nullptr) tavbreleaserec(std::exchange(rec_, nullptr));
  }

 private:
  tavb_rec rec_;
};

}  // namespace tavd
