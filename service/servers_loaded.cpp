// Stores on servers from the shared library that stands beside this one: whoever uses files alone needs
// neither it nor what it is linked with.
#include <dlfcn.h>

#include <filesystem>

#include "service/lasterror.h"
#include "service/postgresql/part.h"
#include "service/servername.h"
#include "service/servers.h"

namespace tavdsrv {

namespace {

constexpr const char* kPart = "libtavdsrv-postgresql.so";

std::filesystem::path beside_this_library(const char* name) {
  Dl_info info{};
  if (dladdr(reinterpret_cast<const void*>(&open_server_store), &info) == 0) return name;
  return std::filesystem::absolute(info.dli_fname).parent_path() / name;
}

OpenPostgresql* load_part(const std::string& shown) {
  // The library stays loaded: stores may be open until the process ends.
  void* library = dlopen(beside_this_library(kPart).c_str(), RTLD_NOW | RTLD_LOCAL);
  void* open = library != nullptr ? dlsym(library, kOpenPostgresql) : nullptr;
  if (open != nullptr) return reinterpret_cast<OpenPostgresql*>(open);
  throw Failure(shown + ": databases on servers need " + kPart + " and libpq: " + dlerror());
}

}  // namespace

std::unique_ptr<Store> open_server_store(const std::string& name, bool create) {
  const std::string shown = shown_name(name);
  if (has_unescaped_password(name)) {
    throw Failure(shown + ": the signs @ and / in a password are written as %40 and %2F");
  }
  static OpenPostgresql* const open = load_part(shown);
  return std::unique_ptr<Store>(open(name, shown, create));
}

}  // namespace tavdsrv
