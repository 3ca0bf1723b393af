#include "service/stores.h"

#include "service/servername.h"
#include "service/servers.h"
#include "service/sqlite/files.h"
#include "service/sqlite/filestore.h"

namespace tavdsrv {

std::unique_ptr<Store> open_store(const std::filesystem::path& name, bool create) {
  const std::string text = utf8(name);
  return is_server_name(text) ? open_server_store(text, create) : open_file_store(name, create);
}

}  // namespace tavdsrv
