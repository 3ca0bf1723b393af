// List boxes and combo boxes of a real dialog, narrow and wide alike.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <string>

#include "base/gwlist.h"
#include "host.h"

namespace {

using tavdtest::Dialog;
using tavdtest::kCombo;
using tavdtest::kList;

struct Control {
  const char* name;
  int id;
  void (*add)(tavd_hwnd, int, const char*);
  void (*addw)(tavd_hwnd, int, const tavd_wchar*);
  void (*clear)(tavd_hwnd, int);
  int (*gettext)(tavd_hwnd, int, int, char*, int);
  int (*gettextw)(tavd_hwnd, int, int, tavd_wchar*, int);
  UINT select;
  Dialog::Characters characters;
};

const Control kControls[] = {
    {"ListBoxOfANarrowDialog", kList, tavd::gwlb_add, tavd::gwlb_addw, tavd::gwlb_clear, tavd::gwlb_gettext,
     tavd::gwlb_gettextw, LB_SETCURSEL, Dialog::Characters::narrow},
    {"ListBoxOfAWideDialog", kList, tavd::gwlb_add, tavd::gwlb_addw, tavd::gwlb_clear, tavd::gwlb_gettext,
     tavd::gwlb_gettextw, LB_SETCURSEL, Dialog::Characters::wide},
    {"ComboBoxOfANarrowDialog", kCombo, tavd::gwcb_add, tavd::gwcb_addw, tavd::gwcb_clear, tavd::gwcb_gettext,
     tavd::gwcb_gettextw, CB_SETCURSEL, Dialog::Characters::narrow},
    {"ComboBoxOfAWideDialog", kCombo, tavd::gwcb_add, tavd::gwcb_addw, tavd::gwcb_clear, tavd::gwcb_gettext,
     tavd::gwcb_gettextw, CB_SETCURSEL, Dialog::Characters::wide},
};

class Rows : public testing::TestWithParam<Control> {
 protected:
  Rows() : dialog_(GetParam().characters) {
    GetParam().add(window(), id(), "first");
    GetParam().add(window(), id(), "second");
    GetParam().addw(window(), id(), L"\u00C5ngstr\u00F6m");
    std::fill_n(text_, 32, '#');
    std::fill_n(wide_, 32, L'#');
  }
  HWND window() const { return dialog_.window(); }
  static int id() { return GetParam().id; }
  void select(int row) const { dialog_.send(id(), GetParam().select, static_cast<WPARAM>(row)); }
  int gettext(int index, int size = 32) { return GetParam().gettext(window(), id(), index, text_, size); }
  int gettextw(int index, int size = 32) { return GetParam().gettextw(window(), id(), index, wide_, size); }

  Dialog dialog_;
  char text_[32];
  wchar_t wide_[32];
};

TEST_P(Rows, NarrowAndWideTextsAreTheSameRows) {
  EXPECT_EQ(dialog_.rows(id()), (std::vector<std::wstring>{L"first", L"second", L"\u00C5ngstr\u00F6m"}));
  EXPECT_EQ(gettext(2), 2);
  char expected[32] = "";
  WideCharToMultiByte(CP_ACP, 0, L"\u00C5ngstr\u00F6m", -1, expected, 32, nullptr, nullptr);
  EXPECT_STREQ(text_, expected);
  EXPECT_EQ(gettextw(2), 2);
  EXPECT_STREQ(wide_, L"\u00C5ngstr\u00F6m");
  EXPECT_EQ(gettextw(0), 0);
  EXPECT_STREQ(wide_, L"first");
}

TEST_P(Rows, WithoutASelectionTheRowIsNoneAndTheBufferEmpty) {
  EXPECT_EQ(gettext(-1), -1);
  EXPECT_STREQ(text_, "");
  EXPECT_EQ(gettextw(-1), -1);
  EXPECT_STREQ(wide_, L"");
}

TEST_P(Rows, NegativeIndexAnswersTheSelectedRow) {
  select(1);
  EXPECT_EQ(gettext(-1), 1);
  EXPECT_STREQ(text_, "second");
  EXPECT_EQ(gettextw(-7), 1);
  EXPECT_STREQ(wide_, L"second");
  EXPECT_EQ(GetParam().gettext(window(), id(), -1, nullptr, 0), 1);
}

TEST_P(Rows, RowThatDoesNotExistLeavesTheBufferEmpty) {
  EXPECT_EQ(gettext(3), 3);
  EXPECT_STREQ(text_, "");
  EXPECT_EQ(gettext(100'000'000), -1);
}

TEST_P(Rows, LongTextIsCutInsideTheBuffer) {
  EXPECT_EQ(gettext(1, 4), 1);
  EXPECT_EQ(std::string(text_, 5), std::string("sec\0#", 5));
  EXPECT_EQ(gettextw(2, 4), 2);
  EXPECT_EQ(std::wstring(wide_, 5), std::wstring(L"\u00C5ng\0#", 5));
}

TEST_P(Rows, ClearingEmptiesTheControl) {
  GetParam().clear(window(), id());
  EXPECT_TRUE(dialog_.rows(id()).empty());
  EXPECT_EQ(gettext(-1), -1);
}

TEST_P(Rows, ControlThatIsNotThereHasNoSelection) {
  EXPECT_EQ(GetParam().gettext(window(), 999, 0, text_, 32), 0);
  EXPECT_STREQ(text_, "");
  EXPECT_LE(GetParam().gettext(window(), 999, -1, text_, 32), 0);
}

INSTANTIATE_TEST_SUITE_P(Controls, Rows, testing::ValuesIn(kControls),
                         [](const auto& info) { return info.param.name; });

TEST(ListBox, RowIsSelectedByItsNumber) {
  const Dialog dialog;
  tavd::gwlb_add(dialog.window(), kList, "first");
  tavd::gwlb_add(dialog.window(), kList, "second");
  tavd::gwlb_select(dialog.window(), kList, 1);
  EXPECT_EQ(dialog.send(kList, LB_GETCURSEL), 1);
}

}  // namespace
