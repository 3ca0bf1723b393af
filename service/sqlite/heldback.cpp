#include "service/sqlite/heldback.h"

#include <utility>

#include "drafts/drafts.h"
#include "service/sqlite/files.h"

namespace tavdsrv {

HeldBack::HeldBack(sqlite3_vfs& system, sqlite3_file& file, std::string path, sqlite3_int64 size)
    : system_(system), file_(file), path_(std::move(path)), size_(size) {}

HeldBack::~HeldBack() {
  if (pages_ != nullptr) pages_->pMethods->xClose(pages_);
}

// SQLite reads whole pages, or a few bytes inside of one.
int HeldBack::read(void* to, int length, sqlite3_int64 at) {
  const Slot slot = slot_at(at);
  if (slot == 0) return file_.pMethods->xRead(&file_, to, length, at);
  return pages_->pMethods->xRead(pages_, to, length, place_of(slot) + at % page_size_);
}

int HeldBack::write(const void* from, int length, sqlite3_int64 at) {
  if (dropped_) return SQLITE_OK;
  if (page_size_ == 0) page_size_ = length;
  if (length != page_size_ || at % page_size_ != 0) return SQLITE_IOERR_WRITE;
  if (is_new(at)) {
    grown_ = true;
    return file_.pMethods->xWrite(&file_, from, length, at);
  }
  if (pages_ == nullptr) {
    const int code = open_pages();
    if (code != SQLITE_OK) return code;
  }
  Slot& slot = slots_[static_cast<std::size_t>(at / page_size_)];
  const Slot target = slot != 0 ? slot : used_ + 1;
  const int code = pages_->pMethods->xWrite(pages_, from, length, place_of(target));
  if (code != SQLITE_OK) return code;
  if (slot == 0) slot = ++used_;
  return SQLITE_OK;
}

// SQLite cuts off what a group has added when it rolls it back. Below the former end there is nothing to cut
// before the commit.
int HeldBack::truncate(sqlite3_int64 size) {
  return is_new(size) ? file_.pMethods->xTruncate(&file_, size) : SQLITE_OK;
}

int HeldBack::prepare() {
  return grown_ ? file_.pMethods->xSync(&file_, SQLITE_SYNC_NORMAL) : SQLITE_OK;
}

int HeldBack::put_in_place() {
  std::vector<unsigned char> page(static_cast<std::size_t>(page_size_));
  for (std::size_t i = 0; i < slots_.size(); ++i) {
    if (slots_[i] == 0) continue;
    int code = pages_->pMethods->xRead(pages_, page.data(), page_size_, place_of(slots_[i]));
    if (code != SQLITE_OK) return code;
    const sqlite3_int64 at = static_cast<sqlite3_int64>(i) * page_size_;
    code = file_.pMethods->xWrite(&file_, page.data(), page_size_, at);
    if (code != SQLITE_OK) return code;
  }
  return SQLITE_OK;
}

void HeldBack::drop() {
  dropped_ = true;
  slots_.assign(slots_.size(), 0);
}

// In the database's folder: the group needs room there anyway, for its journal. Where the system can, the
// file loses its name as soon as it is open, so that a killed process leaves nothing.
int HeldBack::open_pages() {
  constexpr int kFlags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_EXCLUSIVE |
                         SQLITE_OPEN_DELETEONCLOSE | SQLITE_OPEN_TRANSIENT_DB;
  slots_.resize(static_cast<std::size_t>((size_ + page_size_ - 1) / page_size_));
  const auto units = static_cast<std::size_t>(system_.szOsFile) / sizeof(std::max_align_t) + 1;
  pages_memory_ = std::make_unique<std::max_align_t[]>(units);
  auto* opened = reinterpret_cast<sqlite3_file*>(pages_memory_.get());
  pages_path_ = utf8(drafts::unused_name(from_utf8(path_)));
  const int code = system_.xOpen(&system_, pages_path_.c_str(), opened, kFlags, nullptr);
  if (code == SQLITE_OK) pages_ = opened;
  return code;
}

HeldBack::Slot HeldBack::slot_at(sqlite3_int64 at) const {
  if (pages_ == nullptr || is_new(at)) return 0;
  return slots_[static_cast<std::size_t>(at / page_size_)];
}

}  // namespace tavdsrv
