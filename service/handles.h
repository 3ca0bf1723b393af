// Database handles: small numbers that hosts hold.
#pragma once

#include <cstdint>
#include <memory>

#include "service/database.h"
#include "tavd/tavb.h"

namespace tavdsrv {

inline constexpr std::int16_t kNoDatabase = TAVB_NO_DATABASE;

// Takes the lowest free handle, 1 and up. Throws Failure when all are in use.
std::int16_t add_handle(std::shared_ptr<Database> database);

// The database behind a handle. Throws Failure if there is none; `find_database` answers null.
std::shared_ptr<Database> database_of(std::int16_t handle);
std::shared_ptr<Database> find_database(std::int16_t handle);

// Frees the handle. Throws Failure if there is no database behind it.
void remove_handle(std::int16_t handle);

}  // namespace tavdsrv
