#include "service/handles.h"

#include <algorithm>
#include <limits>
#include <mutex>
#include <shared_mutex>
#include <string>
#include <vector>

#include "service/lasterror.h"

namespace tavdsrv {

namespace {

constexpr std::size_t kMostHandles = std::numeric_limits<std::int16_t>::max() - 1;

struct Table {
  std::shared_mutex mutex;
  std::vector<std::shared_ptr<Database>> databases;  // handle n at n - 1
};

// Never destroyed: a host may call while the process is ending.
Table& table() {
  static Table& the_table = *new Table;
  return the_table;
}

std::size_t index_of(std::int16_t handle) {
  return static_cast<std::size_t>(handle) - 1;
}

}  // namespace

std::int16_t add_handle(std::shared_ptr<Database> database) {
  auto& [mutex, databases] = table();
  const std::unique_lock lock(mutex);
  auto slot = std::find(databases.begin(), databases.end(), nullptr);
  if (slot == databases.end()) {
    if (databases.size() == kMostHandles) throw Failure("too many open databases");
    slot = databases.insert(slot, nullptr);
  }
  *slot = std::move(database);
  return static_cast<std::int16_t>(slot - databases.begin() + 1);
}

std::shared_ptr<Database> find_database(std::int16_t handle) {
  auto& [mutex, databases] = table();
  const std::shared_lock lock(mutex);
  if (handle < 1 || index_of(handle) >= databases.size()) return nullptr;
  return databases[index_of(handle)];
}

std::shared_ptr<Database> database_of(std::int16_t handle) {
  auto database = find_database(handle);
  if (database == nullptr) throw Failure(std::to_string(handle) + " is no open database");
  return database;
}

void remove_handle(std::int16_t handle) {
  auto& [mutex, databases] = table();
  std::shared_ptr<Database> closing;
  const std::unique_lock lock(mutex);
  if (handle < 1 || index_of(handle) >= databases.size() || databases[index_of(handle)] == nullptr) {
    throw Failure(std::to_string(handle) + " is no open database");
  }
  closing = std::move(databases[index_of(handle)]);
}

}  // namespace tavdsrv
