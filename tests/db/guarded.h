// A buffer with canaries on both sides, and records that their functions must give back whole.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

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

}  // namespace tavdtest
