// What every function of the interface stands on: no exception leaves the library, and no handle is followed
// before it is known to be alive.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <new>
#include <unordered_map>

namespace tgui {

// Runs the body of an interface function. If memory runs out in it, or a host's entry throws, the answer
// is `fallback`.
template <class Result, class Body>
Result guarded(Result fallback, Body body) {
  try {
    return body();
  } catch (...) {
    return fallback;
  }
}

template <class Body>
void guarded(Body body) {
  try {
    body();
  } catch (...) {  // NOLINT(bugprone-empty-catch): a host in C has no use for it
  }
}

// Holds a value that is never destroyed: hosts may still use handles while the process ends.
template <class T>
union Immortal {
  Immortal() { new (&value) T(); }
  ~Immortal() {}
  Immortal(const Immortal&) = delete;
  Immortal& operator=(const Immortal&) = delete;
  T value;
};

// The living handles of one type. A handle that was destroyed, or never was one, is not in it. Serial numbers
// tell a handle from a later one at the same address. Handles are kept as plain addresses: those of the dead
// are compared and never followed.
//
// Threads ask at once, for every operation on a surface. The handles are dealt out to shelves by address,
// each with a lock of its own, so that threads that draw on surfaces of their own hardly ever wait for one
// another.
template <class T>
class Registry {
 public:
  std::uint64_t add(T* handle) {
    const auto address = reinterpret_cast<std::uintptr_t>(handle);
    const std::uint64_t serial = ++last_;
    Shelf& shelf = shelf_of(address);
    const std::scoped_lock lock(shelf.mutex);
    shelf.entries.emplace(address, Entry{handle, serial});
    ++size_;
    return serial;
  }
  void remove(const T* handle) {
    const auto address = reinterpret_cast<std::uintptr_t>(handle);
    Shelf& shelf = shelf_of(address);
    const std::scoped_lock lock(shelf.mutex);
    size_ -= shelf.entries.erase(address);
  }
  // 0 for an address where no handle lives.
  std::uint64_t serial(std::uintptr_t address) const { return entry(address).serial; }
  // Null unless the handle of that serial number lives.
  T* find(std::uintptr_t address, std::uint64_t serial) const {
    const Entry found = entry(address);
    return found.serial == serial ? found.handle : nullptr;
  }
  std::size_t size() const { return size_; }

 private:
  struct Entry {
    T* handle = nullptr;
    std::uint64_t serial = 0;
  };
  struct alignas(64) Shelf {  // a line of the cache each
    mutable std::mutex mutex;
    std::unordered_map<std::uintptr_t, Entry> entries;
  };

  // The lowest bits of addresses are alike, and so are those that an allocator spaces regularly.
  static std::size_t place(std::uintptr_t address) {
    constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15;  // of 2^64
    return static_cast<std::size_t>((std::uint64_t{address} * kGoldenRatio) >> 58U);
  }
  Shelf& shelf_of(std::uintptr_t address) { return shelves_[place(address)]; }

  Entry entry(std::uintptr_t address) const {
    const Shelf& shelf = shelves_[place(address)];
    const std::scoped_lock lock(shelf.mutex);
    const auto found = shelf.entries.find(address);
    return found == shelf.entries.end() ? Entry{} : found->second;
  }

  std::array<Shelf, 64> shelves_;
  std::atomic<std::uint64_t> last_ = 0;
  std::atomic<std::size_t> size_ = 0;
};

// The one registry of a handle type.
template <class T>
Registry<T>& registry() {
  static Immortal<Registry<T>> the_registry;
  return the_registry.value;
}

template <class T>
bool alive(const T* handle) {
  return registry<T>().serial(reinterpret_cast<std::uintptr_t>(handle)) != 0;
}

// A handle that its owner may destroy at any time, such as a window that a procedure is called for.
template <class T>
class Weak {
 public:
  Weak() = default;
  explicit Weak(T* handle)
      : address_(reinterpret_cast<std::uintptr_t>(handle)), serial_(registry<T>().serial(address_)) {}
  // Null once the handle was destroyed, even if another lives at its address.
  T* get() const { return registry<T>().find(address_, serial_); }

 private:
  std::uintptr_t address_ = 0;
  std::uint64_t serial_ = 0;
};

}  // namespace tgui
