// Drafts by handles through which nobody else may delete: one that can be opened for deleting has no owner.
#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <system_error>
#include <utility>
#include <vector>

#include "codepage/system.h"
#include "drafts/drafts.h"
#include "drafts/naming.h"

namespace drafts {

namespace {

namespace fs = std::filesystem;

constexpr int kMostNames = 100;                   // tried before giving up
constexpr const wchar_t* kJournal = L"-journal";  // what SQLite may have left beside a database
constexpr DWORD kAllShare = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

class Handle {
 public:
  Handle() = default;
  explicit Handle(HANDLE handle) : handle_(handle) {}
  ~Handle() { close(); }
  Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, INVALID_HANDLE_VALUE)) {}
  Handle& operator=(Handle&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  HANDLE get() const { return handle_; }
  explicit operator bool() const { return handle_ != INVALID_HANDLE_VALUE; }
  bool close() {
    const HANDLE former = std::exchange(handle_, INVALID_HANDLE_VALUE);
    return former == INVALID_HANDLE_VALUE || CloseHandle(former) != 0;
  }

 private:
  HANDLE handle_ = INVALID_HANDLE_VALUE;
};

std::string text_of(const std::error_code& error) {
  return codepage::utf8_of(error.message());
}

std::string error_text(DWORD error) {
  return text_of({static_cast<int>(error), std::system_category()});
}

std::string last_error() {
  return error_text(GetLastError());
}

std::string utf8(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

fs::path draft_path(const fs::path& target) {
  std::random_device random;
  const std::uint64_t number = std::uint64_t{random()} << 32 ^ random();
  const std::string name = draft_name(utf8(target.filename()), number);
  return target.parent_path() / fs::path(std::u8string(name.begin(), name.end()));
}

// Where a target lies, after its links. Empty, and a reason, if no file can be made there.
fs::path locate(const fs::path& target, std::string& reason) {
  std::error_code problem;
  fs::path place = fs::weakly_canonical(fs::absolute(target, problem), problem);
  if (place.empty() || problem) {
    reason = text_of(problem);
    return {};
  }
  if (fs::is_directory(place, problem)) {
    reason = text_of(std::make_error_code(std::errc::is_a_directory));
    return {};
  }
  if (!fs::is_directory(place.parent_path(), problem)) {
    reason = text_of(std::make_error_code(std::errc::no_such_file_or_directory));
    return {};
  }
  return place;
}

// A pipe, the console or another device, opened for writing; none if a file has the name, or nothing has.
Handle open_stream(const fs::path& target) {
  Handle handle(CreateFileW(target.c_str(), GENERIC_WRITE, kAllShare, nullptr, OPEN_EXISTING,
                            FILE_ATTRIBUTE_NORMAL, nullptr));
  if (handle && GetFileType(handle.get()) == FILE_TYPE_DISK) handle.close();
  return handle;
}

void clear_file(const fs::path& draft) {
  const Handle handle(CreateFileW(draft.c_str(), DELETE, 0, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
  if (!handle) return;
  fs::path journal = draft;
  journal += kJournal;
  DeleteFileW(journal.c_str());
}

// The files in it and the folder itself; if it holds anything else it stays.
void remove_folder(const fs::path& draft) {
  std::error_code problem;
  std::vector<fs::path> files;
  for (fs::directory_iterator at(draft, problem), end; !problem && at != end; at.increment(problem)) {
    files.push_back(at->path());
  }
  for (const fs::path& file : files) DeleteFileW(file.c_str());
  RemoveDirectoryW(draft.c_str());
}

void clear_folder(const fs::path& draft) {
  constexpr DWORD kFlags = FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT;
  Handle handle(CreateFileW(draft.c_str(), DELETE, 0, nullptr, OPEN_EXISTING, kFlags, nullptr));
  if (!handle) return;
  handle.close();
  remove_folder(draft);
}

void clear_drafts(const fs::path& place) {
  std::error_code problem;
  const std::string name = utf8(place.filename());
  std::vector<fs::path> drafts;
  for (fs::directory_iterator at(place.parent_path(), problem), end; !problem && at != end;
       at.increment(problem)) {
    if (is_draft_of(utf8(at->path().filename()), name)) drafts.push_back(at->path());
  }
  for (const fs::path& draft : drafts) {
    const fs::file_status status = fs::symlink_status(draft, problem);
    if (fs::is_regular_file(status)) clear_file(draft);
    if (fs::is_directory(status)) clear_folder(draft);
  }
}

// Makes a draft and opens it. Empty, and a reason, if that fails.
fs::path make_file(const fs::path& place, DWORD access, DWORD share, Handle& handle, std::string& reason) {
  for (int i = 0; i < kMostNames; ++i) {
    fs::path draft = draft_path(place);
    handle = Handle(
        CreateFileW(draft.c_str(), access, share, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (handle) return draft;
    if (GetLastError() != ERROR_FILE_EXISTS) break;
  }
  reason = last_error();
  return {};
}

// By the handle that owns the draft: without it another process could clear what is just to get its name.
bool rename_by_handle(HANDLE handle, const fs::path& target) {
  const std::wstring& name = target.native();
  // Zeros all through, the padding of its elements too: the name ends in one.
  std::vector<std::byte> room(sizeof(FILE_RENAME_INFO) + name.size() * sizeof(wchar_t));
  auto* const info = reinterpret_cast<FILE_RENAME_INFO*>(room.data());
  info->ReplaceIfExists = TRUE;
  info->RootDirectory = nullptr;
  info->FileNameLength = static_cast<DWORD>(name.size() * sizeof(wchar_t));
  name.copy(info->FileName, name.size());
  return SetFileInformationByHandle(handle, FileRenameInfo, info, static_cast<DWORD>(room.size())) != 0;
}

}  // namespace

// ---- A file ----------------------------------------------------------------

class File::Writing {
 public:
  explicit Writing(const fs::path& target);
  ~Writing();
  Writing(const Writing&) = delete;
  Writing& operator=(const Writing&) = delete;

  bool write(std::string_view bytes);
  bool finish();
  const std::string& reason() const { return reason_; }

 private:
  std::string reason_;
  fs::path place_;
  fs::path draft_;  // empty: there is none
  Handle handle_;
};

File::Writing::Writing(const fs::path& target) : handle_(open_stream(target)) {
  if (handle_) return;
  place_ = locate(target, reason_);
  if (place_.empty()) return;
  if (!lies_in_draft(place_)) clear_drafts(place_);
  draft_ = make_file(place_, GENERIC_WRITE | DELETE, 0, handle_, reason_);
}

File::Writing::~Writing() {
  handle_.close();
  if (!draft_.empty()) DeleteFileW(draft_.c_str());
}

bool File::Writing::write(std::string_view bytes) {
  constexpr std::size_t kBlock = std::size_t{1} << 24;
  while (reason_.empty() && !bytes.empty()) {
    const auto size = static_cast<DWORD>(std::min(bytes.size(), kBlock));
    DWORD written = 0;
    if (WriteFile(handle_.get(), bytes.data(), size, &written, nullptr) == 0) reason_ = last_error();
    bytes.remove_prefix(written);
  }
  return reason_.empty();
}

bool File::Writing::finish() {
  if (!reason_.empty()) return false;
  if (draft_.empty()) {
    if (!handle_.close()) reason_ = last_error();
    return reason_.empty();
  }
  // Not every file system renames so.
  bool done = rename_by_handle(handle_.get(), place_);
  handle_.close();
  if (!done) done = MoveFileExW(draft_.c_str(), place_.c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
  if (done) {
    draft_.clear();
  } else {
    reason_ = last_error();
  }
  return done;
}

File::File(const fs::path& target) : writing_(std::make_unique<Writing>(target)) {}
File::~File() = default;
bool File::write(std::string_view bytes) {
  return writing_->write(bytes);
}
bool File::finish() {
  return writing_->finish();
}
const std::string& File::reason() const {
  return writing_->reason();
}

// ---- A folder --------------------------------------------------------------

class Folder::Holding {
 public:
  explicit Holding(const fs::path& target);
  ~Holding();
  Holding(const Holding&) = delete;
  Holding& operator=(const Holding&) = delete;

  const fs::path& path() const { return draft_; }
  bool finish();
  const std::string& reason() const { return reason_; }

 private:
  std::string reason_;
  fs::path place_;
  fs::path draft_;  // empty: there is none
  Handle handle_;
};

Folder::Holding::Holding(const fs::path& target) : place_(locate(target, reason_)) {
  if (place_.empty()) return;
  clear_drafts(place_);
  const fs::path draft = draft_path(place_);
  if (CreateDirectoryW(draft.c_str(), nullptr) != 0) {
    handle_ = Handle(CreateFileW(draft.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                 OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  }
  if (handle_) {
    draft_ = draft;
  } else {
    reason_ = last_error();
  }
}

Folder::Holding::~Holding() {
  handle_.close();
  if (!draft_.empty()) remove_folder(draft_);
}

bool Folder::Holding::finish() {
  if (!reason_.empty()) return false;
  handle_.close();
  if (MoveFileExW(draft_.c_str(), place_.c_str(), 0) == 0) {
    reason_ = last_error();
    return false;
  }
  draft_.clear();
  return true;
}

// Folders here are as private as those that they lie in.
Folder::Folder(const fs::path& target, Use /*use*/) : holding_(std::make_unique<Holding>(target)) {}
Folder::~Folder() = default;
const fs::path& Folder::path() const {
  return holding_->path();
}
bool Folder::finish() {
  return holding_->finish();
}
const std::string& Folder::reason() const {
  return holding_->reason();
}

// ---- A file for others -----------------------------------------------------

class NewFile::Holding {
 public:
  explicit Holding(const fs::path& target);
  ~Holding();
  Holding(const Holding&) = delete;
  Holding& operator=(const Holding&) = delete;

  const fs::path& path() const { return draft_; }
  Added add();
  const std::string& reason() const { return reason_; }

 private:
  std::string reason_;
  fs::path place_;
  fs::path draft_;  // empty: there is none
  Handle handle_;
};

// The handle that owns it lets others read and write, and asks for no more than they let.
NewFile::Holding::Holding(const fs::path& target) : place_(locate(target, reason_)) {
  if (place_.empty()) return;
  if (!lies_in_draft(place_)) clear_drafts(place_);
  draft_ = make_file(place_, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, handle_, reason_);
}

NewFile::Holding::~Holding() {
  handle_.close();
  if (draft_.empty()) return;
  fs::path journal = draft_;
  journal += kJournal;
  DeleteFileW(journal.c_str());
  DeleteFileW(draft_.c_str());
}

Added NewFile::Holding::add() {
  if (draft_.empty()) return Added::kFailed;
  handle_.close();
  const Added added = drafts::add(draft_, place_, reason_);
  if (added == Added::kDone) draft_.clear();
  return added;
}

NewFile::NewFile(const fs::path& target) : holding_(std::make_unique<Holding>(target)) {}
NewFile::~NewFile() = default;
const fs::path& NewFile::path() const {
  return holding_->path();
}
Added NewFile::add() {
  return holding_->add();
}
const std::string& NewFile::reason() const {
  return holding_->reason();
}

// ---- Files that are there --------------------------------------------------

bool replace(const fs::path& file, const fs::path& target, std::string& reason) {
  const fs::path place = locate(target, reason);
  if (place.empty()) return false;
  if (MoveFileExW(file.c_str(), place.c_str(), MOVEFILE_REPLACE_EXISTING) != 0) return true;
  reason = last_error();
  return false;
}

Added add(const fs::path& file, const fs::path& target, std::string& reason) {
  const fs::path place = locate(target, reason);
  if (place.empty()) return Added::kFailed;
  if (MoveFileExW(file.c_str(), place.c_str(), 0) != 0) return Added::kDone;
  const DWORD error = GetLastError();
  if (error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS) return Added::kTaken;
  reason = error_text(error);
  return Added::kFailed;
}

void clear(const fs::path& target) {
  std::string ignored;
  const fs::path place = locate(target, ignored);
  if (!place.empty()) clear_drafts(place);
}

fs::path unused_name(const fs::path& target) {
  return draft_path(target);
}

}  // namespace drafts
