// How SQLite reaches files for this service: as it does by itself, but for what stands here.
#pragma once

#include <sqlite3.h>

namespace tavdsrv {

// The name under which SQLite knows it. Its databases are opened by this name. Names of files are taken as
// they are: absolute, with no link at their end.
const char* vfs_name();

// From here on the file stays for others as it is, until `let_through`, or until SQLite gives its locks back.
// Called while SQLite holds the lock that keeps other writers out. All three results are SQLite's codes.
int hold_back(sqlite3_file* file);

// Before a commit: waits for those who are reading, at most as long as `wait` allows, and lets the changes
// into the file. SQLite's commit then does the rest; when it fails, its journal undoes this too.
int let_through(sqlite3_file* file, int (*wait)(void*, int));

// Before a rollback: forgets the changes.
void drop_held_back(sqlite3_file* file);

// Whether this thread has removed a journal, which makes a change valid, without its folder having been made
// durable. Forgets it.
bool take_uncertain_removal();

}  // namespace tavdsrv
