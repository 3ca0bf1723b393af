// Stands in front of the C library's allocator. operator new comes through here too.
#include "allocations.h"

#include <atomic>
#include <cstddef>

extern "C" {
// The allocator itself, under the names that glibc keeps for those who stand in front of it.
void* __libc_malloc(std::size_t size);                           // NOLINT(bugprone-reserved-identifier)
void* __libc_calloc(std::size_t n, std::size_t size);            // NOLINT(bugprone-reserved-identifier)
void* __libc_realloc(void* block, std::size_t size);             // NOLINT(bugprone-reserved-identifier)
void* __libc_memalign(std::size_t alignment, std::size_t size);  // NOLINT(bugprone-reserved-identifier)
}

namespace {

std::atomic<long> calls;

void count() {
  calls.fetch_add(1, std::memory_order_relaxed);
}

}  // namespace

long bench::allocations() {
  return calls.load(std::memory_order_relaxed);
}

extern "C" {

void* malloc(std::size_t size) {
  count();
  return __libc_malloc(size);
}

void* calloc(std::size_t n, std::size_t size) {
  count();
  return __libc_calloc(n, size);
}

void* realloc(void* block, std::size_t size) {
  count();
  return __libc_realloc(block, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
  count();
  return __libc_memalign(alignment, size);
}
}
