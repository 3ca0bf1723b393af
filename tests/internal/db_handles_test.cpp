// Owner of record handles, and the copying of model records on its own.
#include <gtest/gtest.h>

#include <utility>

#include "db/copy.h"
#include "db/handles.h"
#include "support/database.h"
#include "tavd/tavdsrv.h"

namespace {

using tavd::RecordHandle;

TEST(RecordHandle, MovedHandleIsEmptyAndTheOldOneIsGivenBack) {
  RecordHandle first(tavdsrv_newrec("ASD", "A"));
  RecordHandle second(tavdsrv_newrec("ASD", "B"));
  tavb_rec kept = second.get();
  first = std::move(second);
  EXPECT_EQ(first.get(), kept);
  EXPECT_FALSE(second);  // NOLINT(bugprone-use-after-move)
  RecordHandle third(std::move(first));
  EXPECT_EQ(third.get(), kept);
  EXPECT_FALSE(first);  // NOLINT(bugprone-use-after-move)
  third.release();
  EXPECT_FALSE(third);
  third.release();
}

TEST(RecordHandle, AddressTakesAMovedRecord) {
  RecordHandle handle(tavdsrv_newrec("ASD", "A"));
  tavbinsertatt(0, handle.address(), 1503, "text", 4);
  EXPECT_EQ(tavdsrv_attributecount(handle.get()), 1);
}

TEST(CopyModel, NothingIsWrittenForARecordWithoutModel) {
  const tavdtest::Database from;
  const tavdtest::Database to;
  const tavdtest::Record record("ASD", "A");
  tavd::copy_model(from.handle(), to.handle(), record.rec());
  const RecordHandle any(tavbfindrec(to.handle(), "   ", "", 1));
  EXPECT_FALSE(any);
}

TEST(CopyModel, PresentButEmptyIdHidesTheOlderOne) {
  const tavdtest::Database from;
  const tavdtest::Database to;
  tavdtest::Record("TVM", "OLDER").save(from.handle());
  tavdtest::Record record("ASD", "A");
  record.text(1525, "").text(1669, "OLDER");
  tavd::copy_model(from.handle(), to.handle(), record.rec());
  const RecordHandle model(tavbfindrec(to.handle(), "TVM", "OLDER", 0));
  EXPECT_FALSE(model);
}

}  // namespace
