// The pages of an open group of changes, kept where no other process sees them.
#pragma once

#include <sqlite3.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tavdsrv {

// SQLite keeps what a group has changed in its cache. What no longer fits it writes into the file, behind an
// exclusive lock that shuts everyone else out until the group ends. While one of these stands between SQLite
// and the file, that lock is put off until the commit, and so is every page that others may read: it waits in
// a file of its own, beside the database and without a name there. Pages behind the file's former end are
// nobody else's and go where they belong at once; most of a large group is such. The journal has the former
// contents of all of them, as ever.
//
// Results are SQLite's codes. Memory: 4 bytes for each page of the file.
class HeldBack {
 public:
  // `file` is the database under a lock that keeps other writers out, `path` its name.
  HeldBack(sqlite3_vfs& system, sqlite3_file& file, std::string path, sqlite3_int64 size);
  ~HeldBack();
  HeldBack(const HeldBack&) = delete;
  HeldBack& operator=(const HeldBack&) = delete;

  // What SQLite asks of the file, as the group sees it.
  int read(void* to, int length, sqlite3_int64 at);
  int write(const void* from, int length, sqlite3_int64 at);
  int truncate(sqlite3_int64 size);
  void lock_exclusively() { exclusive_ = true; }

  // Whether SQLite believes that it has the exclusive lock.
  bool exclusive() const { return exclusive_; }

  // Makes durable what the file already has, so that others need not wait for that.
  int prepare();
  // Under the exclusive lock: puts the pages where they belong.
  int put_in_place();

  // The group is going to be rolled back: what it writes from now on is of no interest.
  void drop();

 private:
  using Slot = std::uint32_t;  // number of a page in the other file, from 1; 0 where it has none

  bool is_new(sqlite3_int64 at) const { return at >= size_; }
  int open_pages();
  Slot slot_at(sqlite3_int64 at) const;
  sqlite3_int64 place_of(Slot slot) const { return static_cast<sqlite3_int64>(slot - 1) * page_size_; }

  sqlite3_vfs& system_;
  sqlite3_file& file_;
  std::string path_;
  sqlite3_int64 size_;  // of the file as all others see it
  int page_size_ = 0;   // 0 before the first page is written
  std::vector<Slot> slots_;
  Slot used_ = 0;
  std::string pages_path_;  // SQLite keeps the address of its characters
  std::unique_ptr<std::max_align_t[]> pages_memory_;
  sqlite3_file* pages_ = nullptr;  // null before it is needed
  bool exclusive_ = false;
  bool grown_ = false;
  bool dropped_ = false;
};

}  // namespace tavdsrv
