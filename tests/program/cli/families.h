// Families, a layered product and a model record, small enough to work out by hand.
#pragma once

#include <string>

#include "support/database.h"

namespace clitest {

// Numbers of attributes, copied from tavd/attributes.h on purpose: see support/database.h.
inline constexpr int kShape = 1110;
inline constexpr int kSizingMode = 1150;
inline constexpr int kMaker = 1503;
inline constexpr int kTemplate = 1511;
inline constexpr int kInstallation = 1513;
inline constexpr int kModelId = 1525;
inline constexpr int kMemberIds = 1604;
inline constexpr int kModelIdFallback = 1669;
inline constexpr const char* kModelBlock = "block of the model";

// Object ids as attribute 1604 holds them.
std::string member_ids(const std::vector<std::string>& ids);

// Adds to the database the file header (windows-1252) and
// - class "FAM": main record "F-*" (sizing mode 1, maker "Main works", model "MODEL-1", template
// "F-{D:3mm}"), its
//   sizes "F-100" (maker "Own works", model "MODEL-2", installation "Wall") and "F-125" (neither), and "F" (a
//   family by list: "F-125", "GONE" and "F-100");
// - class "LAY": main record "P-*-*" (mode 10), sub records "P-10-*" and "P-*-A" (mode 11), exact record
// "P-10-A".
//   The text 1513 stands in all: "main", "ten", "A", "exact"; 1503 in main and "P-*-A"; the template in the
//   main record alone;
// - class "TVM": "MODEL-1" with an attached block, and "MODEL-2".
void add_families(const tavdtest::Database& database);

}  // namespace clitest
