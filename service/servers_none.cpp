// In place of stores on servers, where there are none.
#include "service/lasterror.h"
#include "service/servername.h"
#include "service/servers.h"

namespace tavdsrv {

std::unique_ptr<Store> open_server_store(const std::string& name, bool) {
  throw Failure(shown_name(name) + ": databases on servers are not available on this system, only files");
}

}  // namespace tavdsrv
