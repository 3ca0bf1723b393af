#include "base/gwsys.h"

#include <array>
#include <mutex>

#include "base/gwmsg.h"
#include "base/gwwindow.h"

namespace tavd {
namespace {

constexpr int kCachePlaces = 20;

struct CachedTool {
  std::int32_t index;
  gwobject object;
};

struct ToolCache {
  std::array<CachedTool, kCachePlaces> places;
  int used;
};

// All that gwInit clears.
struct SystemBlock {
  tavd_hmodule instance;
  bool initialised;
  ToolCache pens;
  ToolCache brushes;
};

SystemBlock block{};

// The lock is there from the start; `initialised` says whether it is in force. Taken again by its holder it
// does not block.
std::recursive_mutex& lock() {
  static std::recursive_mutex mutex;
  return mutex;
}

gwobject solid_pen(std::uint32_t colour) {
  return gwcreatepen(kPenSolid, 1, colour);
}

gwobject cached(ToolCache& cache, std::int32_t index, gwobject (*make)(std::uint32_t colour)) {
  for (int i = 0; i < cache.used; ++i) {
    const CachedTool& tool = cache.places[static_cast<std::size_t>(i)];
    if (tool.index == index) return tool.object;
  }
  if (cache.used == kCachePlaces) return cache.places.back().object;
  gwobject object = make(gwsyscolour(index));
  // A tool that could not be made takes no place: it may succeed another time.
  if (object != nullptr) cache.places[static_cast<std::size_t>(cache.used++)] = {index, object};
  return object;
}

gwobject cached_under_lock(ToolCache& cache, std::int32_t index, gwobject (*make)(std::uint32_t colour)) {
  gwLock();
  gwobject object = cached(cache, index, make);
  gwUnlock();
  return object;
}

void empty(ToolCache& cache) {
  for (int i = 0; i < cache.used; ++i) gwdelete(cache.places[static_cast<std::size_t>(i)].object);
  cache = {};
}

}  // namespace

void gwInit(tavd_hmodule instance) {
  block = {};
  block.instance = instance;
  gwset_message_caption(nullptr);
  block.initialised = true;
}

void gwExit() {
  block.initialised = false;
  empty(block.pens);
  empty(block.brushes);
}

void gwLock() {
  if (block.initialised) lock().lock();
}

void gwUnlock() {
  if (block.initialised) lock().unlock();
}

gwobject gwSysPen(std::int32_t index) {
  return cached_under_lock(block.pens, index, solid_pen);
}

gwobject gwSysBrush(std::int32_t index) {
  return cached_under_lock(block.brushes, index, gwcreatebrush);
}

tavd_hmodule gwmodule() {
  return block.instance;
}

}  // namespace tavd
