#include "drafts/naming.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using drafts::draft_name;
using drafts::is_draft_of;
using drafts::lies_in_draft;

TEST(DraftNames, HaveSixteenDigits) {
  EXPECT_EQ(draft_name("x.svg", 0x12AB), ".x.svg.00000000000012ab.tavd-new");
  EXPECT_EQ(draft_name("x.svg", ~std::uint64_t{0}), ".x.svg.ffffffffffffffff.tavd-new");
}

TEST(DraftNames, OfLongTargetsAreCutBetweenCharacters) {
  const std::string start(39, 'a');
  EXPECT_EQ(draft_name(start + "bc", 0), "." + start + "b.0000000000000000.tavd-new");
  EXPECT_EQ(draft_name(start + "\u00C4c", 0), "." + start + ".0000000000000000.tavd-new");
  EXPECT_TRUE(is_draft_of(draft_name(start + "bc", 7), start + "bd"));
  EXPECT_FALSE(is_draft_of(draft_name(start + "bc", 7), start + "cc"));
}

TEST(DraftNames, AreThoseOfTheirTargetOnly) {
  const std::string name = ".x.svg.0123456789abcdef.tavd-new";
  EXPECT_TRUE(is_draft_of(name, "x.svg"));
  for (const char* target : {"", "x", "y.svg", "x.svg.", "x.svgz", "svg"}) {
    EXPECT_FALSE(is_draft_of(name, target)) << target;
  }
  for (const char* other :
       {"", ".", ".x.svg", "x.svg.0123456789abcdef.tavd-new", ".x.svg.0123456789abcdef.tavd-ne",
        ".x.svg.0123456789abcdef.tavd-new-journal", ".x.svg.0123456789abcdeg.tavd-new",
        ".x.svg.0123456789ABCDEF.tavd-new", ".x.svg.123456789abcdef.tavd-new",
        ".x.svg.00123456789abcdef.tavd-new", ".0123456789abcdef.tavd-new"}) {
    EXPECT_FALSE(is_draft_of(other, "x.svg")) << other;
  }
}

TEST(DraftNames, TellWhatLiesInADraft) {
  EXPECT_TRUE(lies_in_draft("a/.sheets.0123456789abcdef.tavd-new/x.svg"));
  EXPECT_FALSE(lies_in_draft("a/.sheets.0123456789abcdef.tavd-new"));
  EXPECT_FALSE(lies_in_draft("a/sheets/x.svg"));
  EXPECT_FALSE(lies_in_draft("x.svg"));
}

}  // namespace
