// Buffers that tell what is written or read outside of them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include "support/pages.h"

namespace tavdtest {

// `size` items of nonsense between two rows of nonsense that nobody may touch.
template <typename T>
class Guarded {
 public:
  explicit Guarded(std::size_t size, T nonsense = T(0x5A))
      : nonsense_(nonsense), items_(size + 2 * kRow, nonsense) {}

  T* data() { return items_.data() + kRow; }
  T& operator[](std::size_t i) { return items_[kRow + i]; }
  std::size_t size() const { return items_.size() - 2 * kRow; }

  // Whether nothing was written from item `first` on, nor in front of the buffer.
  bool untouched_from(std::size_t first) const {
    const auto is_nonsense = [this](T item) { return item == nonsense_; };
    return std::all_of(items_.begin(), items_.begin() + kRow, is_nonsense) &&
           std::all_of(items_.begin() + kRow + static_cast<std::ptrdiff_t>(first), items_.end(), is_nonsense);
  }
  bool intact() const { return untouched_from(size()); }

 private:
  static constexpr std::ptrdiff_t kRow = 64;
  T nonsense_;
  std::vector<T> items_;
};

// A copy of `items`, or `size` items of nonsense, directly in front of a page that may be neither read nor
// written: one byte too far ends the program.
template <typename T>
class AtPageEnd {
 public:
  explicit AtPageEnd(const std::vector<T>& items) : AtPageEnd(items.size()) {
    std::copy(items.begin(), items.end(), data_);
  }
  explicit AtPageEnd(std::size_t size, T nonsense = T(0x5A))
      : size_(size), pages_(size * sizeof(T)), data_(reinterpret_cast<T*>(pages_.end() - size * sizeof(T))) {
    std::fill_n(data_, size, nonsense);
  }
  AtPageEnd(const AtPageEnd&) = delete;
  AtPageEnd& operator=(const AtPageEnd&) = delete;

  T* data() { return data_; }
  T& operator[](std::size_t i) { return data_[i]; }
  std::size_t size() const { return size_; }

 private:
  std::size_t size_;
  Pages pages_;
  T* data_;
};

}  // namespace tavdtest
