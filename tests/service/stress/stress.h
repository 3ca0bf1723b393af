// What the service is put through beyond the tests of its functions: load, kills, full disks, size. Each task
// runs at a small scale in a few seconds, or at full scale.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "tavd/tavdsrv.h"

namespace stress {

struct Scale {
  bool full;
  std::string tavd;              // the command line host
  std::filesystem::path folder;  // an empty one, to work in
};

// Each ends quietly, or throws Failed; what it did is printed in one line or a few.
void two_processes(const Scale& scale);
void kills(const Scale& scale);
void full_disk(const Scale& scale);
void large_group(const Scale& scale);
void size(const Scale& scale);

struct Failed : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Throws Failed with `what` and the service's last error unless `good`.
void expect(bool good, const std::string& what);

// An open database, closed at the end.
class Opened {
 public:
  explicit Opened(const std::filesystem::path& path, std::int32_t mode = 0);
  ~Opened();
  Opened(const Opened&) = delete;
  Opened& operator=(const Opened&) = delete;
  std::int16_t handle() const { return handle_; }

 private:
  std::int16_t handle_;
};

// A record whose attributes all tell the generation it was written in. `bytes` is about its size.
class Record {
 public:
  Record(const char* class_id, const std::string& object_id, int generation, std::size_t bytes);
  ~Record();
  Record(const Record&) = delete;
  Record& operator=(const Record&) = delete;
  tavb_rec get() const { return rec_; }
  // False if the service says that it failed.
  bool save(std::int16_t db) const;

 private:
  tavb_rec rec_;
};

inline constexpr int kAbsent = -1;

// The generation of a record; kAbsent if `rec` is null. Throws Failed if its attributes tell different ones.
int generation_of(tavb_rec rec);
// The same for the record of that key. Throws Failed if the service says that it failed.
int stored_generation(std::int16_t db, const char* class_id, const std::string& object_id);

// What SQLite says of the file, opened apart from the service; throws Failed unless it is sound.
void expect_sound(const std::filesystem::path& path);

// Runs `steps` in a process of its own; a Failed in there ends it with a message and exit code 1.
pid_t start(const std::function<void()>& steps);
// Waits for it. Throws Failed unless it ended well.
void finish(pid_t process);

// The peak of this process's resident memory, kB; 0 where the system does not tell it.
long peak_memory();

// A number that the system tells of this process; 0 where it does not.
long told_in(const char* file, const char* name);

// Zeroed memory that the processes started from here on share.
void* shared_memory(std::size_t bytes);
template <typename Type>
Type& shared() {
  return *static_cast<Type*>(shared_memory(sizeof(Type)));
}

// Runs the command line host quietly and answers its exit code, -1 if it died of a signal.
int run_tavd(const Scale& scale, const std::vector<std::string>& arguments);

}  // namespace stress
