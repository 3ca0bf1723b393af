// The end of the block that a dialog template is built in.
#include "base/gwdlgtemplate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>

namespace {

using tavd::DialogTemplate;

TEST(DialogTemplate, OfTooManyItemsEndsWithItsBlock) {
  constexpr std::size_t kGuard = 512;
  constexpr unsigned char kNonsense = 0xA5;
  alignas(4) unsigned char block[DialogTemplate::kSize + kGuard] = {};
  std::fill_n(block + DialogTemplate::kSize, kGuard, kNonsense);
  DialogTemplate dialog(block);
  dialog.header(300, {0, 0, 100, 100}, "title");
  for (int id = 0; id < 300; ++id) dialog.button(id, {1, 2, 3, 4}, "label");
  EXPECT_NE(std::count(block, block + DialogTemplate::kSize, 0), DialogTemplate::kSize);
  EXPECT_EQ(std::count(block + DialogTemplate::kSize, block + sizeof block, kNonsense), kGuard);
}

}  // namespace
