// What every function of the interface stands on: no exception leaves the library, and no handle is followed
// before it is known to be alive.
#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <unordered_map>

namespace tgui {

// Runs the body of an interface function. If memory runs out in it, or a host's entry throws, the answer is
// `fallback`.
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
// tell a handle from a later one at the same address.
template <class T>
class Registry {
 public:
  std::uint64_t add(const T* handle) {
    serials_.emplace(handle, ++last_);
    return last_;
  }
  void remove(const T* handle) { serials_.erase(handle); }
  bool alive(const T* handle) const { return handle != nullptr && serials_.contains(handle); }
  // 0 for a handle that is not alive.
  std::uint64_t serial(const T* handle) const {
    const auto found = serials_.find(handle);
    return found == serials_.end() ? 0 : found->second;
  }
  std::size_t size() const { return serials_.size(); }

 private:
  std::unordered_map<const T*, std::uint64_t> serials_;
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
  return registry<T>().alive(handle);
}

// A handle that its owner may destroy at any time, such as a window that a procedure is called for.
template <class T>
class Weak {
 public:
  Weak() = default;
  explicit Weak(T* handle) : handle_(handle), serial_(registry<T>().serial(handle)) {}
  // Null once the handle was destroyed, even if another lives at its address.
  T* get() const { return serial_ != 0 && registry<T>().serial(handle_) == serial_ ? handle_ : nullptr; }

 private:
  T* handle_ = nullptr;
  std::uint64_t serial_ = 0;
};

}  // namespace tgui
