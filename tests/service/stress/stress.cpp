#include "stress.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <vector>

namespace stress {

namespace {

constexpr int kAttributes = 12;
constexpr std::int16_t kFirstAttribute = 20000;  // numbers that mean nothing to the service
constexpr std::int16_t kExact = 0;               // mode of tavbfindrec

std::string bytes_of(int generation, std::size_t length) {
  std::string bytes(std::max(length, sizeof generation), static_cast<char>(generation));
  std::memcpy(bytes.data(), &generation, sizeof generation);
  return bytes;
}

std::string attribute_of(tavb_rec rec, std::int32_t index) {
  std::int16_t number = 0;
  const void* data = nullptr;
  std::int32_t length = 0;
  expect(tavdsrv_attributeat(rec, index, &number, &data, &length) == 0, "an attribute is missing");
  return {static_cast<const char*>(data), static_cast<std::size_t>(length)};
}

}  // namespace

void expect(bool good, const std::string& what) {
  if (good) return;
  const std::string reason = tavdsrv_lasterror();
  throw Failed(reason.empty() ? what : what + ": " + reason);
}

Opened::Opened(const std::filesystem::path& path, std::int32_t mode)
    : handle_(tavbopendatabase(nullptr, path.c_str(), mode)) {
  expect(handle_ > 0, "cannot open " + path.string());
}

Opened::~Opened() {
  tavdsrv_closedatabase(handle_);
}

Record::Record(const char* class_id, const std::string& object_id, int generation, std::size_t bytes)
    : rec_(tavdsrv_newrec(class_id, object_id.c_str())) {
  // Attributes of different lengths, so that they lie on the file's pages in every way.
  for (int i = 0; i < kAttributes; ++i) {
    const std::size_t share = bytes / kAttributes + static_cast<std::size_t>(i);
    const std::string value = bytes_of(generation, std::min<std::size_t>(share, INT16_MAX));
    tavbinsertatt(0, &rec_, static_cast<std::int16_t>(kFirstAttribute + i), value.data(),
                  static_cast<std::int16_t>(value.size()));
  }
}

Record::~Record() {
  tavbreleaserec(rec_);
}

bool Record::save(std::int16_t db) const {
  tavbsaverec(db, rec_);
  return *tavdsrv_lasterror() == '\0';
}

int generation_of(tavb_rec rec) {
  if (rec == nullptr) return kAbsent;
  expect(tavdsrv_attributecount(rec) == kAttributes, "a record has lost attributes");
  int generation = 0;
  for (int i = 0; i < kAttributes; ++i) {
    const std::string value = attribute_of(rec, i);
    expect(value.size() >= sizeof generation, "an attribute was cut");
    if (i == 0) std::memcpy(&generation, value.data(), sizeof generation);
    if (value != bytes_of(generation, value.size())) throw Failed("a torn record");
  }
  return generation;
}

int stored_generation(std::int16_t db, const char* class_id, const std::string& object_id) {
  tavb_rec rec = tavbfindrec(db, class_id, object_id.c_str(), kExact);
  expect(*tavdsrv_lasterror() == '\0', "cannot find " + object_id);
  try {
    const int generation = generation_of(rec);
    tavbreleaserec(rec);
    return generation;
  } catch (...) {
    tavbreleaserec(rec);
    throw;
  }
}

void expect_sound(const std::filesystem::path& path) {
  sqlite3* connection = nullptr;
  sqlite3_stmt* statement = nullptr;
  std::string answer = "no answer";
  if (sqlite3_open_v2(path.c_str(), &connection, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK &&
      sqlite3_prepare_v2(connection, "PRAGMA integrity_check", -1, &statement, nullptr) == SQLITE_OK &&
      sqlite3_step(statement) == SQLITE_ROW) {
    answer = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
  }
  sqlite3_finalize(statement);
  sqlite3_close(connection);
  if (answer != "ok") throw Failed(path.string() + " is not sound: " + answer);
}

pid_t start(const std::function<void()>& steps) {
  std::fflush(stdout);
  const pid_t process = fork();
  if (process < 0) throw Failed("cannot start a process");
  if (process > 0) return process;
  int code = 1;
  try {
    steps();
    code = 0;
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "%s\n", problem.what());
  }
  std::fflush(stdout);
  _exit(code);
}

void finish(pid_t process) {
  int status = -1;
  waitpid(process, &status, 0);
  if (WIFSIGNALED(status)) throw Failed("a process died of signal " + std::to_string(WTERMSIG(status)));
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) throw Failed("a process failed");
}

long told_in(const char* file, const char* name) {
  std::ifstream in(file);
  for (std::string word; in >> word;) {
    long value = 0;
    if (word == name && in >> value) return value;
  }
  return 0;
}

long peak_memory() {
  return told_in("/proc/self/status", "VmHWM:");
}

void* shared_memory(std::size_t bytes) {
  void* memory = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) throw Failed("no shared memory");
  return memory;
}

int run_tavd(const Scale& scale, const std::vector<std::string>& arguments) {
  std::vector<char*> argv = {const_cast<char*>(scale.tavd.c_str())};
  for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);
  const pid_t process = fork();
  if (process == 0) {
    const int nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
    execv(scale.tavd.c_str(), argv.data());
    _exit(127);
  }
  int status = -1;
  waitpid(process, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace stress
