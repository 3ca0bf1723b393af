// The tables of a product database on a server: making them, and making sure that they are ours.
#pragma once

#include "service/postgresql/server.h"

namespace tavdsrv::postgresql {

// Whether the database that the server has connected to holds a product database, and this user may read it.
// Throws Failure if what bears its name is declared in any other way than ours, or may not be read.
bool check_tables(Server& server);

// Makes the tables. Somebody else may win; check_tables then sees theirs.
void make_tables(Server& server);

}  // namespace tavdsrv::postgresql
