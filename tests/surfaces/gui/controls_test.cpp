#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "tavdgui/tavdgui.h"

namespace {

// The messages of a list box or of a combo box.
struct Numbers {
  tgui_window* (*create)(tgui_window*, std::int32_t);
  unsigned add, reset, select, selected, text, length, count;
};

constexpr Numbers kListBox = {tgui_create_list_box, TGUI_LB_ADDSTRING, TGUI_LB_RESETCONTENT,
                              TGUI_LB_SETCURSEL,    TGUI_LB_GETCURSEL, TGUI_LB_GETTEXT,
                              TGUI_LB_GETTEXTLEN,   TGUI_LB_GETCOUNT};
constexpr Numbers kComboBox = {tgui_create_combo_box, TGUI_CB_ADDSTRING, TGUI_CB_RESETCONTENT,
                               TGUI_CB_SETCURSEL,     TGUI_CB_GETCURSEL, TGUI_CB_GETLBTEXT,
                               TGUI_CB_GETLBTEXTLEN,  TGUI_CB_GETCOUNT};

// What the names of the tests say of it.
void PrintTo(const Numbers& numbers, std::ostream* out) {
  *out << (numbers.add == kListBox.add ? "list" : "combo");
}

class Box : public testing::TestWithParam<Numbers> {
 protected:
  Box() { GetParam().create(dialog, kId); }
  ~Box() override { tgui_destroy_window(dialog); }

  std::intptr_t send(unsigned message, std::uintptr_t wparam = 0, std::intptr_t lparam = 0) {
    return tgui_send_item_message(dialog, kId, message, wparam, lparam);
  }
  std::intptr_t add(const char* text) {
    return send(GetParam().add, 0, reinterpret_cast<std::intptr_t>(text));
  }
  std::intptr_t addw(const tavd_wchar* text) {
    return tgui_send_item_messagew(dialog, kId, GetParam().add, 0, reinterpret_cast<std::intptr_t>(text));
  }
  std::intptr_t text(std::uintptr_t row) {
    std::memset(narrow, 'x', sizeof narrow);
    return send(GetParam().text, row, reinterpret_cast<std::intptr_t>(narrow));
  }
  std::intptr_t textw(std::uintptr_t row) {
    std::fill_n(wide, 32, u'x');
    return tgui_send_item_messagew(dialog, kId, GetParam().text, row, reinterpret_cast<std::intptr_t>(wide));
  }

  static constexpr int kId = 77;
  static constexpr auto kNone = static_cast<std::uintptr_t>(-1);
  tgui_window* dialog = tgui_create_dialog("boxes");
  char narrow[32];
  tavd_wchar wide[32];
};

TEST_P(Box, AddingAnswersTheRow) {
  EXPECT_EQ(send(GetParam().count), 0);
  EXPECT_EQ(add("b"), 0);
  EXPECT_EQ(add("a"), 1);
  EXPECT_EQ(addw(u"c"), 2);
  EXPECT_EQ(send(GetParam().count), 3);
  EXPECT_EQ(text(1), 1);
  EXPECT_STREQ(narrow, "a");
  EXPECT_EQ(send(GetParam().add), -1);
}

TEST_P(Box, TextComesOutInEitherWidth) {
  add("\xC5ngstr\xF6m \x80");  // windows-1252: capital a with a ring, o diaeresis, euro
  EXPECT_EQ(textw(0), 10);
  EXPECT_EQ(std::u16string(wide), u"\u00C5ngstr\u00F6m \u20AC");
  addw(u"\u00C5 \u20AC \u0416");  // windows-1252 has no Cyrillic letter
  EXPECT_EQ(text(1), 5);
  EXPECT_STREQ(narrow, "\xC5 \x80 ?");
  EXPECT_EQ(textw(1), 5);
  EXPECT_EQ(std::u16string(wide), u"\u00C5 \u20AC \u0416");
}

TEST_P(Box, EveryByteComesBackAsItWent) {
  for (int byte = 1; byte < 256; ++byte) {
    const char one[] = {static_cast<char>(byte), '\0'};
    const std::intptr_t row = add(one);
    EXPECT_EQ(text(static_cast<std::uintptr_t>(row)), 1) << byte;
    EXPECT_STREQ(narrow, one) << byte;
  }
}

TEST_P(Box, LengthsAreThoseOfTheTexts) {
  add("");
  addw(u"z\U0001F600");
  EXPECT_EQ(send(GetParam().length, 0), 0);
  EXPECT_EQ(text(0), 0);
  EXPECT_EQ(narrow[0], '\0');
  EXPECT_EQ(narrow[1], 'x');
  EXPECT_EQ(send(GetParam().length, 1), 3);
  EXPECT_EQ(text(1), 3);
  EXPECT_STREQ(narrow, "z??");
  EXPECT_EQ(tgui_send_item_messagew(dialog, kId, GetParam().length, 1, 0), 3);
  EXPECT_EQ(send(GetParam().length, 2), -1);
}

TEST_P(Box, RowsOutsideAnswerAnErrorAndWriteNothing) {
  add("only");
  for (const std::uintptr_t row :
       {std::uintptr_t{1}, kNone, std::uintptr_t{0xFFFFFFFF}, std::uintptr_t{1} << 32}) {
    EXPECT_EQ(text(row), -1) << row;
    EXPECT_EQ(narrow[0], 'x');
    EXPECT_EQ(textw(row), -1) << row;
    EXPECT_EQ(wide[0], u'x');
  }
  EXPECT_EQ(send(GetParam().text, 0, 0), -1);
}

TEST_P(Box, NothingIsSelectedAtFirst) {
  EXPECT_EQ(send(GetParam().selected), -1);
  add("a");
  EXPECT_EQ(send(GetParam().selected), -1);
}

TEST_P(Box, SelectingOutsideClearsTheSelection) {
  add("a");
  add("b");
  EXPECT_EQ(send(GetParam().select, 1), 1);
  EXPECT_EQ(send(GetParam().selected), 1);
  EXPECT_EQ(send(GetParam().select, 2), -1);
  EXPECT_EQ(send(GetParam().selected), -1);
  EXPECT_EQ(send(GetParam().select, 0), 0);
  EXPECT_EQ(send(GetParam().select, kNone), -1);
  EXPECT_EQ(send(GetParam().selected), -1);
}

TEST_P(Box, ResettingEmptiesAndClearsTheSelection) {
  add("a");
  send(GetParam().select, 0);
  EXPECT_EQ(send(GetParam().reset), 0);
  EXPECT_EQ(send(GetParam().count), 0);
  EXPECT_EQ(send(GetParam().selected), -1);
  EXPECT_EQ(text(0), -1);
  EXPECT_EQ(add("again"), 0);
}

TEST_P(Box, IsAWindowOfTheDialogByItsId) {
  tgui_window* const item = tgui_dialog_item(dialog, kId);
  ASSERT_NE(item, nullptr);
  EXPECT_EQ(tgui_parent(item), dialog);
  EXPECT_EQ(tgui_dialog_item(dialog, kId + 1), nullptr);
  EXPECT_EQ(tgui_send_item_message(dialog, kId + 1, GetParam().count, 0, 0), 0);
  add("a");
  EXPECT_EQ(tgui_send_message(item, GetParam().count, 0, 0), 1);
  EXPECT_EQ(tgui_send_message(item, TGUI_WM_SETFONT, 0, 0), 0);
}

TEST_P(Box, GoesWithItsDialog) {
  tgui_window* const item = tgui_dialog_item(dialog, kId);
  const int before = tgui_window_count();
  tgui_destroy_window(dialog);
  EXPECT_EQ(tgui_window_count(), before - 2);
  EXPECT_EQ(tgui_send_message(item, GetParam().count, 0, 0), 0);
}

INSTANTIATE_TEST_SUITE_P(ListBox, Box, testing::Values(kListBox));
INSTANTIATE_TEST_SUITE_P(ComboBox, Box, testing::Values(kComboBox));

TEST(Boxes, LeaveMessagesOfTheOtherKindAlone) {
  tgui_window* const dialog = tgui_create_dialog(nullptr);
  tgui_create_list_box(dialog, 1);
  tgui_create_combo_box(dialog, 2);
  const auto text = reinterpret_cast<std::intptr_t>("a");
  EXPECT_EQ(tgui_send_item_message(dialog, 1, TGUI_CB_ADDSTRING, 0, text), 0);
  EXPECT_EQ(tgui_send_item_message(dialog, 2, TGUI_LB_ADDSTRING, 0, text), 0);
  EXPECT_EQ(tgui_send_item_message(dialog, 1, TGUI_LB_GETCOUNT, 0, 0), 0);
  EXPECT_EQ(tgui_send_item_message(dialog, 2, TGUI_CB_GETCOUNT, 0, 0), 0);
  tgui_destroy_window(dialog);
}

}  // namespace
