#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/messages.h"
#include "tavd/tavd.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Version, AnswersItsOwnNumberAndRefusesAllOthers) {
  EXPECT_EQ(tavd_version_nmb(190), 190);
  for (int version : {0, 189, 191, -190, 1, 2147483647, -2147483647 - 1}) {
    EXPECT_EQ(tavd_version_nmb(version), -190) << version;
  }
}

// A window of the host's for one test.
class Owner {
 public:
  Owner() : window_(tgui_create_dialog("owner")) {}
  ~Owner() { tgui_destroy_window(window_); }
  Owner(const Owner&) = delete;
  Owner& operator=(const Owner&) = delete;
  tavd_hwnd window() const { return window_; }

 private:
  tavd_hwnd window_;
};

TEST(Message, IsNotShownWithWarningsOff) {
  const Owner owner;
  tavdtest::Messages messages(0, owner.window());
  tavca_msg("text");
  EXPECT_THAT(messages.texts, IsEmpty());
}

TEST(Message, IsShownWithoutOwnerForANullWindow) {
  tavdtest::Messages messages(1);
  tavca_msg("text");
  EXPECT_THAT(messages.texts, ElementsAre("text"));
  EXPECT_THAT(messages.owners, ElementsAre(nullptr));
}

TEST(Message, IsShownToItsOwnerForAnyModeButZero) {
  const Owner owner;
  ASSERT_NE(owner.window(), nullptr);
  tavdtest::Messages messages(-3, owner.window());
  tavca_msg("text");
  EXPECT_THAT(messages.owners, ElementsAre(owner.window()));
}

TEST(Message, OfNoTextShowsNothing) {
  tavdtest::Messages messages(1);
  tavca_msg(nullptr);
  EXPECT_THAT(messages.texts, IsEmpty());
}

TEST(RoomDamping, OfZeroIsKept) {
  const float lw[8] = {40, 40, 40, 40, 40, 40, 40, 40};
  tavca_setroomdamp(0.0F);
  const float undamped = tavca_LpA(lw);
  tavca_setroomdamp(4.0F);
  EXPECT_NEAR(undamped, 46.987, 0.0005);
  EXPECT_NEAR(tavca_LpA(lw), 42.987, 0.0005);
}

TEST(RoomDamping, TakesAnyValueAsItStands) {
  const float lw[8] = {40, 40, 40, 40, 40, 40, 40, 40};
  tavca_setroomdamp(-1000.0F);
  const float amplified = tavca_LpA(lw);
  tavca_setroomdamp(4.0F);
  EXPECT_NEAR(amplified, 1046.987, 0.001);
}

}  // namespace
