#include "families.h"

#include <cstring>

namespace clitest {

using tavdtest::Database;
using tavdtest::Record;

namespace {

constexpr int kReference = 1651;  // an attribute, like those of the header
constexpr std::size_t kIdChars = 30;

void add_sizes(const Database& database) {
  Record("FAM", "F-*")
      .words(kSizingMode, {1})
      .text(kMaker, "Main works")
      .text(kModelId, "MODEL-1")
      .text(kTemplate, "F-{D:3mm}")
      .text(kInstallation, "Duct")
      .header(110, 100, 0, 10, 100, 5, 200)
      .floats(kReference, {50, 20})
      .save(database.handle());
  Record("FAM", "F-100")
      .text(kMaker, "Own works")
      .text(kModelId, "MODEL-2")
      .text(kInstallation, "Wall")
      .text(1562, "Hundred")
      .words(kShape, {140})
      .header(110, 100, 0, 10, 100, 5, 200)
      .floats(kReference, {50, 20})
      .save(database.handle());
  Record("FAM", "F-125")
      .header(110, 125, 0, 16, 160, 5, 200)
      .floats(kReference, {80, 20})
      .save(database.handle());
  Record("FAM", "F")
      .words(kSizingMode, {2})
      .text(kMemberIds, member_ids({"F-125", "GONE", "F-100"}))
      .save(database.handle());
}

void add_layers(const Database& database) {
  Record("LAY", "P-*-*")
      .words(kSizingMode, {10})
      .text(kInstallation, "main")
      .text(kMaker, "maker of all")
      .text(kTemplate, "P-{B}")
      .save(database.handle());
  Record("LAY", "P-10-*").words(kSizingMode, {11}).text(kInstallation, "ten").save(database.handle());
  Record("LAY", "P-*-A")
      .words(kSizingMode, {11})
      .text(kInstallation, "A")
      .text(kMaker, "maker of A")
      .save(database.handle());
  Record("LAY", "P-10-A").text(kInstallation, "exact").save(database.handle());
}

void add_models(const Database& database) {
  Record model("TVM", "MODEL-1");
  model.text(1562, "First model");
  std::string block = kModelBlock;
  tavbsaverecwithahm(database.handle(), model.rec(), block.data(), static_cast<std::int32_t>(block.size()));
  Record("TVM", "MODEL-2").text(1562, "Second model").save(database.handle());
}

}  // namespace

std::string member_ids(const std::vector<std::string>& ids) {
  std::string bytes;
  for (const std::string& id : ids) bytes += id + std::string(kIdChars - id.size(), ' ');
  return bytes;
}

void add_families(const Database& database) {
  Record("000", "FILEHEADER").words(1049, {0}).save(database.handle());
  add_sizes(database);
  add_layers(database);
  add_models(database);
}

}  // namespace clitest
