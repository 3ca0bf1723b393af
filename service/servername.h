// Names of databases that stand on a server, as libpq takes them.
#pragma once

#include <string>
#include <string_view>

namespace tavdsrv {

// Whether a database of this name is on a server; any other name is that of a file.
bool is_server_name(std::string_view name);

// The name with asterisks in place of passwords, for messages. A file's name stays as it is.
std::string shown_name(std::string_view name);

// Whether the name has a password of which libpq would take a part for the host, and tell it.
bool has_unescaped_password(std::string_view name);

}  // namespace tavdsrv
