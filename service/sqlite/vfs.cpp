#include "service/sqlite/vfs.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <optional>
#include <string>
#include <utility>

#include "service/lasterror.h"
#include "service/sqlite/heldback.h"

namespace tavdsrv {

namespace {

thread_local bool removal_is_uncertain = false;

// A database's file. The system's own lies behind it in the memory that SQLite gives to both. Journals and
// all other files are the system's alone.
struct DatabaseFile : sqlite3_file {
  sqlite3_vfs* system;
  std::string path;
  std::optional<HeldBack> group;  // while the changes of one are held back

  sqlite3_file* real();
};

constexpr std::size_t kOwnBytes = (sizeof(DatabaseFile) + alignof(std::max_align_t) - 1) /
                                  alignof(std::max_align_t) * alignof(std::max_align_t);

sqlite3_file* DatabaseFile::real() {
  return reinterpret_cast<sqlite3_file*>(reinterpret_cast<unsigned char*>(this) + kOwnBytes);
}

DatabaseFile& own(sqlite3_file* file) {
  return *static_cast<DatabaseFile*>(file);
}

// Hands a call on to the system's file.
template <auto Method, typename... Arguments>
int pass(sqlite3_file* file, Arguments... arguments) {
  sqlite3_file* real = own(file).real();
  return (real->pMethods->*Method)(real, arguments...);
}

int close_file(sqlite3_file* file) {
  own(file).group.reset();
  const int code = pass<&sqlite3_io_methods::xClose>(file);
  own(file).~DatabaseFile();
  return code;
}

int read_file(sqlite3_file* file, void* to, int length, sqlite3_int64 at) {
  auto& group = own(file).group;
  return group ? group->read(to, length, at) : pass<&sqlite3_io_methods::xRead>(file, to, length, at);
}

int write_file(sqlite3_file* file, const void* from, int length, sqlite3_int64 at) {
  auto& group = own(file).group;
  return group ? group->write(from, length, at) : pass<&sqlite3_io_methods::xWrite>(file, from, length, at);
}

int truncate_file(sqlite3_file* file, sqlite3_int64 size) {
  auto& group = own(file).group;
  return group ? group->truncate(size) : pass<&sqlite3_io_methods::xTruncate>(file, size);
}

int sync_file(sqlite3_file* file, int flags) {
  return own(file).group ? SQLITE_OK : pass<&sqlite3_io_methods::xSync>(file, flags);
}

int lock_file(sqlite3_file* file, int level) {
  auto& group = own(file).group;
  if (!group || level != SQLITE_LOCK_EXCLUSIVE) return pass<&sqlite3_io_methods::xLock>(file, level);
  group->lock_exclusively();
  return SQLITE_OK;
}

int unlock_file(sqlite3_file* file, int level) {
  if (level < SQLITE_LOCK_RESERVED) own(file).group.reset();
  return pass<&sqlite3_io_methods::xUnlock>(file, level);
}

// Without a memory map and the shared memory of write-ahead logs: SQLite does not ask for what is missing.
constexpr sqlite3_io_methods kFileMethods = {
    .iVersion = 1,
    .xClose = close_file,
    .xRead = read_file,
    .xWrite = write_file,
    .xTruncate = truncate_file,
    .xSync = sync_file,
    .xFileSize = pass<&sqlite3_io_methods::xFileSize, sqlite3_int64*>,
    .xLock = lock_file,
    .xUnlock = unlock_file,
    .xCheckReservedLock = pass<&sqlite3_io_methods::xCheckReservedLock, int*>,
    .xFileControl = pass<&sqlite3_io_methods::xFileControl, int, void*>,
    .xSectorSize = pass<&sqlite3_io_methods::xSectorSize>,
    .xDeviceCharacteristics = pass<&sqlite3_io_methods::xDeviceCharacteristics>,
    .xShmMap = nullptr,
    .xShmLock = nullptr,
    .xShmBarrier = nullptr,
    .xShmUnmap = nullptr,
    .xFetch = nullptr,
    .xUnfetch = nullptr,
};

sqlite3_vfs* system_of(sqlite3_vfs* vfs) {
  return static_cast<sqlite3_vfs*>(vfs->pAppData);
}

int open_file(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags, int* flags_given) {
  sqlite3_vfs* system = system_of(vfs);
  if ((flags & SQLITE_OPEN_MAIN_DB) == 0) return system->xOpen(system, name, file, flags, flags_given);
  auto* opened = new (file) DatabaseFile{{nullptr}, system, name, std::nullopt};
  std::memset(opened->real(), 0, static_cast<std::size_t>(system->szOsFile));
  const int code = system->xOpen(system, name, opened->real(), flags, flags_given);
  if (code == SQLITE_OK) {
    opened->pMethods = &kFileMethods;
  } else {
    opened->~DatabaseFile();
    file->pMethods = nullptr;
  }
  return code;
}

// Once a journal is gone the change is valid for everybody, and nothing can undo it. SQLite would report it
// as failed if the folder could not be synchronised.
int delete_file(sqlite3_vfs* vfs, const char* name, int sync_folder) {
  const int code = system_of(vfs)->xDelete(system_of(vfs), name, sync_folder);
  if (code != SQLITE_IOERR_DIR_FSYNC) return code;
  removal_is_uncertain = true;
  return SQLITE_OK;
}

int access_file(sqlite3_vfs* vfs, const char* name, int flags, int* result) {
  return system_of(vfs)->xAccess(system_of(vfs), name, flags, result);
}

int full_path(sqlite3_vfs*, const char* name, int room, char* result) {
  const std::size_t length = std::strlen(name);
  if (length >= static_cast<std::size_t>(room)) return SQLITE_CANTOPEN;
  std::memcpy(result, name, length + 1);
  return SQLITE_OK;
}

class Registration {
 public:
  Registration() : vfs_(*sqlite3_vfs_find(nullptr)) {
    vfs_.pAppData = sqlite3_vfs_find(nullptr);
    vfs_.szOsFile += static_cast<int>(kOwnBytes);
    vfs_.zName = name_.c_str();
    vfs_.xOpen = open_file;
    vfs_.xDelete = delete_file;
    vfs_.xAccess = access_file;
    vfs_.xFullPathname = full_path;
    sqlite3_vfs_register(&vfs_, 0);
  }
  // The library may be unloaded before SQLite is.
  ~Registration() { sqlite3_vfs_unregister(&vfs_); }
  Registration(const Registration&) = delete;
  Registration& operator=(const Registration&) = delete;

  const char* name() const { return name_.c_str(); }

 private:
  sqlite3_vfs vfs_;
  // Another copy of this library may be in the process, with a SQLite that both share.
  std::string name_ = "tavdsrv-" + std::to_string(reinterpret_cast<std::uintptr_t>(this));
};

}  // namespace

const char* vfs_name() {
  static const Registration registration;
  return registration.name();
}

int hold_back(sqlite3_file* file) {
  DatabaseFile& database = own(file);
  sqlite3_int64 size = 0;
  const int code = pass<&sqlite3_io_methods::xFileSize>(file, &size);
  if (code == SQLITE_OK) database.group.emplace(*database.system, *database.real(), database.path, size);
  return code;
}

int let_through(sqlite3_file* file, int (*wait)(void*, int)) {
  auto& group = own(file).group;
  if (!group) return SQLITE_OK;
  if (!group->exclusive()) {
    group.reset();
    return SQLITE_OK;
  }
  int code = group->prepare();
  if (code != SQLITE_OK) return code;
  for (int times = 0;; ++times) {
    code = pass<&sqlite3_io_methods::xLock>(file, SQLITE_LOCK_EXCLUSIVE);
    if (code != SQLITE_BUSY || wait(nullptr, times) == 0) break;
  }
  if (code != SQLITE_OK) return code;
  code = group->put_in_place();
  group.reset();
  return code;
}

void drop_held_back(sqlite3_file* file) {
  auto& group = own(file).group;
  if (group) group->drop();
}

bool take_uncertain_removal() {
  return std::exchange(removal_is_uncertain, false);
}

}  // namespace tavdsrv
