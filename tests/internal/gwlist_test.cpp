#include "base/gwlist.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "gui_fixture.h"

namespace {

using tavdtest::Window;

constexpr int kItem = 700;
constexpr int kNoSuchItem = 701;
constexpr int kHighestRow = 99'999'999;

// List boxes and combo boxes behave alike: each test runs on both, narrow and wide.
struct Control {
  const char* name;
  tgui_window* (*create)(tgui_window* dialog, std::int32_t id);
  void (*add)(tavd_hwnd, int, const char*);
  void (*addw)(tavd_hwnd, int, const tavd_wchar*);
  void (*clear)(tavd_hwnd, int);
  int (*gettext)(tavd_hwnd, int, int, char*, int);
  int (*gettextw)(tavd_hwnd, int, int, tavd_wchar*, int);
  unsigned select;
  unsigned count;
};

constexpr Control kListBox = {"ListBox",           tgui_create_list_box, tavd::gwlb_add,
                              tavd::gwlb_addw,     tavd::gwlb_clear,     tavd::gwlb_gettext,
                              tavd::gwlb_gettextw, TGUI_LB_SETCURSEL,    TGUI_LB_GETCOUNT};
constexpr Control kComboBox = {"ComboBox",          tgui_create_combo_box, tavd::gwcb_add,
                               tavd::gwcb_addw,     tavd::gwcb_clear,      tavd::gwcb_gettext,
                               tavd::gwcb_gettextw, TGUI_CB_SETCURSEL,     TGUI_CB_GETCOUNT};

// What the names of the tests say of it.
void PrintTo(const Control& control, std::ostream* out) {
  *out << control.name;
}

class Rows : public testing::TestWithParam<Control> {
 protected:
  Rows() : dialog_(tavdtest::make_dialog()) {
    EXPECT_NE(control().create(dialog_.get(), kItem), nullptr);
    control().add(dialog_.get(), kItem, "first");
    control().add(dialog_.get(), kItem, "second");
    control().addw(dialog_.get(), kItem, u"\u00C5ngstr\u00F6m");
    std::memset(text_, '#', sizeof text_);
    std::fill_n(wide_, 32, u'#');
  }

  const Control& control() const { return GetParam(); }
  tgui_window* dialog() { return dialog_.get(); }
  void select(int row) {
    tgui_send_item_message(dialog(), kItem, control().select, static_cast<std::uintptr_t>(row), 0);
  }
  std::intptr_t rows() { return tgui_send_item_message(dialog(), kItem, control().count, 0, 0); }
  int gettext(int index, int size = 32) { return control().gettext(dialog(), kItem, index, text_, size); }
  int gettextw(int index, int size = 32) { return control().gettextw(dialog(), kItem, index, wide_, size); }

  char text_[32];
  tavd_wchar wide_[32];

 private:
  Window dialog_;
};

TEST_P(Rows, WithoutASelectionTheRowIsNoneAndTheBufferEmpty) {
  EXPECT_EQ(gettext(-1), -1);
  EXPECT_STREQ(text_, "");
  EXPECT_EQ(gettextw(-1), -1);
  EXPECT_EQ(std::u16string(wide_), u"");
}

TEST_P(Rows, NegativeIndexAnswersTheSelectedRow) {
  select(1);
  EXPECT_EQ(gettext(-1), 1);
  EXPECT_STREQ(text_, "second");
  EXPECT_EQ(gettextw(-7), 1);
  EXPECT_EQ(std::u16string(wide_), u"second");
}

TEST_P(Rows, NullBufferAsksForTheSelectionAlone) {
  EXPECT_EQ(control().gettext(dialog(), kItem, -1, nullptr, 0), -1);
  select(2);
  EXPECT_EQ(control().gettext(dialog(), kItem, -1, nullptr, 0), 2);
  EXPECT_EQ(control().gettextw(dialog(), kItem, -1, nullptr, 99), 2);
}

TEST_P(Rows, IndexNamesTheRowWhateverIsSelected) {
  select(1);
  EXPECT_EQ(gettext(0), 0);
  EXPECT_STREQ(text_, "first");
  EXPECT_EQ(gettextw(0), 0);
  EXPECT_EQ(std::u16string(wide_), u"first");
}

TEST_P(Rows, NarrowAndWideTextsAreTheSameRows) {
  EXPECT_EQ(rows(), 3);
  EXPECT_EQ(gettext(2), 2);
  EXPECT_STREQ(text_, "\xC5ngstr\xF6m");
  EXPECT_EQ(gettextw(2), 2);
  EXPECT_EQ(std::u16string(wide_), u"\u00C5ngstr\u00F6m");
}

TEST_P(Rows, RowThatDoesNotExistLeavesTheBufferEmpty) {
  EXPECT_EQ(gettext(3), 3);
  EXPECT_STREQ(text_, "");
  EXPECT_EQ(gettext(kHighestRow), kHighestRow);
  EXPECT_STREQ(text_, "");
}

TEST_P(Rows, IndexAboveTheHighestRowIsNone) {
  EXPECT_EQ(gettext(kHighestRow + 1), -1);
  EXPECT_STREQ(text_, "");
  EXPECT_EQ(gettextw(kHighestRow + 1), -1);
  EXPECT_EQ(std::u16string(wide_), u"");
}

TEST_P(Rows, TextThatJustFitsIsWhole) {
  EXPECT_EQ(gettext(1, 7), 1);
  EXPECT_EQ(std::string(text_, 8), std::string("second\0#", 8));
}

TEST_P(Rows, TextLongerThanTheBufferIsCut) {
  EXPECT_EQ(gettext(1, 6), 1);
  EXPECT_EQ(std::string(text_, 8), std::string("secon\0##", 8));
  EXPECT_EQ(gettextw(2, 4), 2);
  EXPECT_EQ(std::u16string(wide_, 6), std::u16string(u"\u00C5ng\0##", 6));
  EXPECT_EQ(gettext(0, 1), 0);
  EXPECT_EQ(std::string(text_, 2), std::string("\0e", 2));
}

TEST_P(Rows, CutLeavesNoHalfOfASurrogatePair) {
  control().addw(dialog(), kItem, u"ab\U0001F600cd");
  EXPECT_EQ(gettextw(3, 4), 3);
  EXPECT_EQ(std::u16string(wide_), u"ab");
  EXPECT_EQ(wide_[4], u'#');
  EXPECT_EQ(gettextw(3, 5), 3);
  EXPECT_EQ(std::u16string(wide_), u"ab\U0001F600");
}

TEST_P(Rows, BufferWithoutRoomIsNotTouched) {
  EXPECT_EQ(gettext(1, 0), 1);
  EXPECT_EQ(text_[0], '#');
}

TEST_P(Rows, ClearEmptiesTheControl) {
  select(1);
  control().clear(dialog(), kItem);
  EXPECT_EQ(rows(), 0);
  EXPECT_EQ(gettext(-1), -1);
}

TEST_P(Rows, UnknownControlHasNoText) {
  EXPECT_EQ(control().gettext(dialog(), kNoSuchItem, 0, text_, 32), 0);
  EXPECT_STREQ(text_, "");
}

TEST_P(Rows, CutKeepsAWholeCharacterAboveTheSurrogates) {
  control().addw(dialog(), kItem, u"a\uFF21\uFF22");
  EXPECT_EQ(gettextw(3, 3), 3);
  EXPECT_EQ(std::u16string(wide_), u"a\uFF21");
}

TEST_P(Rows, BufferForTheTerminatorAloneIsEmpty) {
  EXPECT_EQ(gettextw(1, 1), 1);
  EXPECT_EQ(std::u16string(wide_, 2), std::u16string(u"\0#", 2));
}

INSTANTIATE_TEST_SUITE_P(Controls, Rows, testing::Values(kListBox, kComboBox),
                         [](const auto& control) { return std::string(control.param.name); });

TEST(ListBoxSelection, SelectsTheRowAndMinusOneNone) {
  const Window dialog = tavdtest::make_dialog();
  tgui_create_list_box(dialog.get(), kItem);
  tavd::gwlb_add(dialog.get(), kItem, "first");
  tavd::gwlb_add(dialog.get(), kItem, "second");
  tavd::gwlb_select(dialog.get(), kItem, 1);
  EXPECT_EQ(tavd::gwlb_gettext(dialog.get(), kItem, -1, nullptr, 0), 1);
  tavd::gwlb_select(dialog.get(), kItem, -1);
  EXPECT_EQ(tavd::gwlb_gettext(dialog.get(), kItem, -1, nullptr, 0), -1);
}

}  // namespace
