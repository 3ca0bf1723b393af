// A set in storage that holds nonsense, over a database of layered records.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "exported/db/service_spy.h"
#include "support/database.h"
#include "tavd/tavdidset.h"

namespace tavdtest {

constexpr std::int16_t kMain = 10;
constexpr std::int16_t kSub = 11;
// The attribute by which these tests ask which layer answers; it holds the record's own id. Its number, and
// those above, are copies on purpose: see support/database.h.
constexpr std::int16_t kNameAttribute = 1501;

class IdSetTest : public testing::Test {
 protected:
  void SetUp() override {
    std::memset(&set_, 0x5A, sizeof set_);
    tavdidset_init(&set_);
  }
  void TearDown() override {
    tavdidset_release(&set_);
    EXPECT_EQ(handles_out(), before_) << "a released set holds no handle";
  }

  // A record of a layer that tells its own id.
  void save(const char* id, std::int16_t sizingmode) {
    Record("ASD", id).words(1150, {sizingmode}).text(kNameAttribute, id).save(db());
  }
  void save_exact(const char* id) { Record("ASD", id).text(kNameAttribute, id).save(db()); }

  // Main record ABC-*-*, three patterns under it, and neighbours that belong to other products.
  void save_product() {
    save("ABC-*-*", kMain);
    save("ABC-*-20", kSub);
    save("ABC-100-*", kSub);
    save("ABC-200-*", kSub);
    save("ABB-*", kMain);
    save("ABD-*", kMain);
  }

  std::int32_t read(const char* id, const char* class_id = "ASD") {
    return tavdidset_read(&set_, db(), class_id, id);
  }
  std::int32_t adjust(const char* id) { return tavdidset_adjust(&set_, db(), id); }

  // The ids of the sub records, in the order in which they are asked; those that do not match behind a bar.
  std::vector<std::string> order() const {
    std::vector<std::string> ids;
    bool matching = true;
    for (const IdSetItem& item : items()) {
      if (matching && item.matches == 0) ids.emplace_back("|");
      matching = item.matches != 0;
      ids.emplace_back(item.id);
    }
    return ids;
  }
  std::vector<IdSetItem> items() const {
    const auto* first = static_cast<const IdSetItem*>(set_.subs.data);
    return {first, first + set_.subs.count};
  }

  // What a text attribute says, "-" if no layer holds it, else the result.
  std::string find(std::int16_t attribute) {
    std::int16_t count = 77;
    char text[64];
    std::memset(text, 0x5A, sizeof text);
    const std::int32_t result = tavdidset_findatt(&set_, db(), attribute, &count, text, sizeof text);
    if (result == 1) {
      EXPECT_EQ(count, 1);
      return text;
    }
    EXPECT_EQ(count, 0);
    EXPECT_EQ(text[0], 0x5A) << "the buffer is untouched";
    return result == 0 ? "-" : std::to_string(result);
  }
  std::string layer() { return find(kNameAttribute); }

  std::int16_t db() const { return database_.handle(); }

  std::size_t before_ = handles_out();
  Database database_;
  IdSet set_;
};

}  // namespace tavdtest
