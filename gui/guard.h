// What every function of the interface stands on: no exception leaves the library, and no handle is followed
// before it is known to be alive.
#pragma once

#include <cstddef>
#include <cstdint>
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
template <class T>
class Registry {
 public:
  std::uint64_t add(T* handle) {
    entries_.emplace(reinterpret_cast<std::uintptr_t>(handle), Entry{handle, ++last_});
    return last_;
  }
  void remove(const T* handle) { entries_.erase(reinterpret_cast<std::uintptr_t>(handle)); }
  // 0 for an address where no handle lives.
  std::uint64_t serial(std::uintptr_t address) const {
    const auto found = entries_.find(address);
    return found == entries_.end() ? 0 : found->second.serial;
  }
  // Null unless the handle of that serial number lives.
  T* find(std::uintptr_t address, std::uint64_t serial) const {
    const auto found = entries_.find(address);
    return found == entries_.end() || found->second.serial != serial ? nullptr : found->second.handle;
  }
  std::size_t size() const { return entries_.size(); }

 private:
  struct Entry {
    T* handle;
    std::uint64_t serial;
  };
  std::unordered_map<std::uintptr_t, Entry> entries_;
  std::uint64_t last_ = 0;
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
