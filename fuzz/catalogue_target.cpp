// Hostile catalogue text: read as `tavd db build` reads it. What is accepted has a text that reads as the
// same again.
#include <unistd.h>

#include <filesystem>

#include "catalogue/entry.h"
#include "catalogue/source.h"
#include "fuzz/input.h"
#include "product/text_codec.h"
#include "tavd/tavdsrv.h"

namespace {

using namespace tavdhost;
using fuzz::require;

// An empty database in memory, whose texts are in the default code page.
std::int16_t database() {
  static const std::int16_t db = [] {
    const auto path = std::filesystem::temp_directory_path() / ("tavd-fuzz-" + std::to_string(getpid()));
    const std::int16_t opened = tavbopendatabase(nullptr, path.c_str(), 1);
    std::filesystem::remove(path);
    require(opened >= 0);
    return opened;
  }();
  return db;
}

void expect_same_again(TextCodec& codec, const Entry& entry) {
  const Source source("again.json", entry_text(codec, entry));
  Faults faults;
  Json::Value root;
  require(parse(source, root, faults));
  const auto again = read_entry(codec, source, root, faults);
  require(faults.empty() && again.has_value());
  require(again->class_id == entry.class_id && again->object_id == entry.object_id);
  require(again->attributes == entry.attributes && again->ahm == entry.ahm);
}

void read(TextCodec& codec, const Source& source, const Json::Value& product) {
  Faults faults;
  const auto entry = read_entry(codec, source, product, faults);
  require(faults.empty() == faults.listing().empty());
  if (entry && faults.empty()) expect_same_again(codec, *entry);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Source source("fuzz.json", std::string(reinterpret_cast<const char*>(data), size));
  TextCodec codec(database());
  Faults faults;
  Json::Value root;
  if (!parse(source, root, faults)) {
    require(!faults.listing().empty());
    return 0;
  }
  if (root.isArray()) {
    for (const Json::Value& product : root) read(codec, source, product);
  } else {
    read(codec, source, root);
  }
  return 0;
}
