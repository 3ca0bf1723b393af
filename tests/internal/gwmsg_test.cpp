#include "base/gwmsg.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "gui_fixture.h"
#include "template_reader.h"

namespace {

using tavdtest::read_template;
using tavdtest::Template;
using tavdtest::TemplateItem;
using tavdtest::Window;

// A message as the host's callback sees it, copied.
struct Seen {
  tgui_window* owner;
  std::optional<std::string> text, caption;
  std::uint32_t flags;
  std::vector<int> buttons;
  std::optional<Template> dialog;
};

// Answers messages and keeps what they were. Everything that a message leaves behind is put back at the end.
class Messages : public testing::Test {
 protected:
  Messages() : owner_(tavdtest::make_dialog()), other_(tavdtest::make_dialog()) {
    tgui_set_focus(nullptr);
    tgui_set_message_callback(
        [](const tgui_message* message, void* self) { return static_cast<Messages*>(self)->see(*message); },
        this);
  }
  ~Messages() override {
    tgui_set_message_callback(nullptr, nullptr);
    tgui_set_focus(nullptr);
    tavd::gwset_own_dialog(0);
    tavd::gwset_dialog_labels("&Ok", "&Cancel", "&Yes", "&No");
    tavd::gwset_message_caption(nullptr);
  }

  tgui_window* owner() { return owner_.get(); }
  tgui_window* other() { return other_.get(); }
  const Seen& seen() const { return seen_.at(0); }

  // The template of the own dialog for a text and flags.
  Template own_dialog(const std::string& text, std::uint32_t flags) {
    seen_.clear();
    tavd::gwmsgdialog(owner(), text.c_str(), flags);
    EXPECT_EQ(seen_.size(), 1U);
    return seen_.at(0).dialog.value();
  }

  int answer_ = 0;                    // of the next messages
  std::function<void()> on_message_;  // called while one is on show
  std::vector<Seen> seen_;

 private:
  static std::optional<std::string> copy(const char* text) {
    return text == nullptr ? std::nullopt : std::optional<std::string>(text);
  }
  int see(const tgui_message& message) {
    Seen seen{message.owner, copy(message.text), copy(message.caption), message.flags, {}, {}};
    seen.buttons.assign(message.buttons, message.buttons + message.button_count);
    if (message.dialog_template != nullptr) {
      seen.dialog = read_template(message.dialog_template, message.template_size);
    }
    seen_.push_back(seen);
    if (on_message_) on_message_();
    return answer_;
  }

  Window owner_;
  Window other_;
};

TEST_F(Messages, WithoutAnOwnerTheyAreTaskModal) {
  tavd::gwmsg(nullptr, "text");
  EXPECT_EQ(seen().flags, 0x2040U);
  EXPECT_EQ(seen().owner, nullptr);
}

TEST_F(Messages, WithAnOwnerTheyAreNot) {
  tavd::gwmsg(owner(), "text");
  EXPECT_EQ(seen().flags, 0x40U);
  EXPECT_EQ(seen().owner, owner());
  EXPECT_EQ(seen().text, "text");
  EXPECT_EQ(seen().caption, std::nullopt);
}

TEST_F(Messages, EachKindHasItsFlags) {
  tavd::gwmsg_okcancel(owner(), "text");
  tavd::gwmsg_yesno(owner(), "text");
  tavd::gwmsg_yesnocancel(owner(), "text");
  tavd::gwmsgbox(owner(), "text", 0x10);
  ASSERT_EQ(seen_.size(), 4U);
  EXPECT_EQ(seen_[0].flags, 0x21U);
  EXPECT_EQ(seen_[1].flags, 0x24U);
  EXPECT_EQ(seen_[2].flags, 0x23U);
  EXPECT_EQ(seen_[3].flags, 0x10U);
}

TEST_F(Messages, AnswerTheButton) {
  answer_ = 7;
  EXPECT_EQ(tavd::gwmsg_yesno(owner(), "text"), 7);
  answer_ = 2;
  EXPECT_EQ(tavd::gwmsg_okcancel(owner(), "text"), 2);
}

TEST_F(Messages, WithoutACallbackAnswerTheDefaultButton) {
  tgui_set_message_callback(nullptr, nullptr);
  EXPECT_EQ(tavd::gwmsg(nullptr, "text"), 1);
  EXPECT_EQ(tavd::gwmsg_yesnocancel(nullptr, "text"), 6);
}

TEST_F(Messages, CaptionIsShown) {
  tavd::gwset_message_caption("Product selection");
  tavd::gwmsg(owner(), "text");
  EXPECT_EQ(seen().caption, "Product selection");
}

TEST_F(Messages, FormattedTextIsPrintedAndCutAt511Characters) {
  answer_ = 1;
  EXPECT_EQ(tavd::gwmsgf(owner(), "Duplicate mainrecord\r\nin product %s", "ABC"), 1);
  EXPECT_EQ(seen_.at(0).text, "Duplicate mainrecord\r\nin product ABC");
  EXPECT_EQ(seen_.at(0).flags, 0x40U);
  tavd::gwmsgf(owner(), "%s", std::string(2000, 'a').c_str());
  EXPECT_EQ(seen_.at(1).text, std::string(511, 'a'));
}

TEST_F(Messages, FocusThatMovedComesBack) {
  tgui_set_focus(owner());
  on_message_ = [this] { tgui_set_focus(other()); };
  tavd::gwmsg(owner(), "text");
  EXPECT_EQ(tgui_focus(), owner());
}

TEST_F(Messages, FocusStaysWhereAMessagePutItIfThereWasNone) {
  on_message_ = [this] { tgui_set_focus(other()); };
  tavd::gwmsg(owner(), "text");
  EXPECT_EQ(tgui_focus(), other());
}

TEST_F(Messages, OwnDialogIsUsedForExactlyOne) {
  for (const int on : {0, 2, -1}) {
    seen_.clear();
    tavd::gwset_own_dialog(1);
    tavd::gwset_own_dialog(on);
    tavd::gwmsg(owner(), "text");
    EXPECT_FALSE(seen().dialog.has_value()) << on;
  }
  seen_.clear();
  tavd::gwset_own_dialog(1);
  tavd::gwmsg(owner(), "text");
  EXPECT_TRUE(seen().dialog.has_value());
}

using OwnDialog = Messages;

void expect_item(const TemplateItem& item, std::uint32_t style, int x, int y, int width, int height, int id,
                 int atom, const std::u16string& text) {
  EXPECT_EQ(item.offset % 4, 0U);
  EXPECT_EQ(item.style, style);
  EXPECT_EQ(item.extended_style, 0U);
  EXPECT_EQ(item.x, x);
  EXPECT_EQ(item.y, y);
  EXPECT_EQ(item.width, width);
  EXPECT_EQ(item.height, height);
  EXPECT_EQ(item.id, id);
  EXPECT_EQ(item.class_mark, 0xFFFF);
  EXPECT_EQ(item.class_atom, atom);
  EXPECT_EQ(item.text, text);
  EXPECT_EQ(item.creation_data, 0);
}

std::vector<int> button_places(const Template& dialog) {
  std::vector<int> places;
  for (std::size_t i = 1; i < dialog.items.size(); ++i) places.push_back(dialog.items[i].x);
  return places;
}

std::vector<int> button_ids(const Template& dialog) {
  std::vector<int> ids;
  for (std::size_t i = 1; i < dialog.items.size(); ++i) ids.push_back(dialog.items[i].id);
  return ids;
}

TEST_F(OwnDialog, IsWrittenFieldByField) {
  tavd::gwset_message_caption("Caption \x80");
  const Template dialog = own_dialog("Two\r\nlines", 0x21);
  EXPECT_EQ(dialog.style, 0x80C80080U);
  EXPECT_EQ(dialog.extended_style, 0U);
  EXPECT_EQ(dialog.count, 3);
  EXPECT_EQ(dialog.x, 10);
  EXPECT_EQ(dialog.y, 15);
  EXPECT_EQ(dialog.width, 120);
  EXPECT_EQ(dialog.height, 62);
  EXPECT_EQ(dialog.menu, 0);
  EXPECT_EQ(dialog.window_class, 0);
  EXPECT_EQ(dialog.title, u"Caption \u20AC");
  ASSERT_EQ(dialog.items.size(), 3U);
  expect_item(dialog.items[0], 0x50000000, 6, 8, 108, 32, 100, 0x82, u"Two\r\nlines");
  expect_item(dialog.items[1], 0x50010000, 18, 44, 40, 12, 1, 0x80, u"&Ok");
  expect_item(dialog.items[2], 0x50010000, 62, 44, 40, 12, 2, 0x80, u"&Cancel");
}

TEST_F(OwnDialog, OneOkButtonStandsAt40InAWidthOf120) {
  const Template dialog = own_dialog("text", 0x40);
  EXPECT_EQ(dialog.width, 120);
  EXPECT_EQ(button_ids(dialog), (std::vector<int>{1}));
  EXPECT_EQ(button_places(dialog), (std::vector<int>{40}));
}

TEST_F(OwnDialog, FlagsThreeGiveThreeButtonsInAWidthOf136) {
  const Template dialog = own_dialog("text", 3);
  EXPECT_EQ(dialog.width, 136);
  EXPECT_EQ(button_ids(dialog), (std::vector<int>{6, 7, 2}));
  EXPECT_EQ(button_places(dialog), (std::vector<int>{4, 48, 92}));
}

TEST_F(OwnDialog, FlagsChooseTheButtons) {
  EXPECT_EQ(button_ids(own_dialog("text", 0)), (std::vector<int>{1}));
  EXPECT_EQ(button_ids(own_dialog("text", 1)), (std::vector<int>{1, 2}));
  EXPECT_EQ(button_ids(own_dialog("text", 2)), (std::vector<int>{1}));
  EXPECT_EQ(button_ids(own_dialog("text", 4)), (std::vector<int>{6, 7}));
  EXPECT_EQ(button_ids(own_dialog("text", 5)), (std::vector<int>{6, 7}));
  EXPECT_EQ(button_ids(own_dialog("text", 7)), (std::vector<int>{6, 7, 2}));
  EXPECT_EQ(button_ids(own_dialog("text", 0x23)), (std::vector<int>{6, 7, 2}));
}

TEST_F(OwnDialog, TwoButtonsStandAt18And62) {
  EXPECT_EQ(button_places(own_dialog("text", 4)), (std::vector<int>{18, 62}));
}

TEST_F(OwnDialog, LineOf40CharactersWidensItTo144) {
  const Template dialog = own_dialog("short\r\n" + std::string(40, 'a') + "\r\nshort", 0x40);
  EXPECT_EQ(dialog.width, 144);
  EXPECT_EQ(dialog.items[0].width, 132);
  EXPECT_EQ(button_places(dialog), (std::vector<int>{52}));
}

TEST_F(OwnDialog, LineOf100CharactersWidensItToTheLimit) {
  EXPECT_EQ(own_dialog(std::string(100, 'a'), 0x40).width, 200);
}

TEST_F(OwnDialog, LineOf32CharactersIsNotLong) {
  EXPECT_EQ(own_dialog(std::string(32, 'a'), 0x40).width, 120);
  EXPECT_EQ(own_dialog(std::string(33, 'a'), 0x40).width, 123);
}

TEST_F(OwnDialog, LongLineNarrowerThanTheButtonsWidensNothing) {
  EXPECT_EQ(own_dialog(std::string(33, 'a'), 3).width, 136);
}

TEST_F(OwnDialog, NullCaptionIsAnEmptyTitle) {
  EXPECT_EQ(own_dialog("text", 0x40).title, u"");
}

TEST_F(OwnDialog, NullTextIsEmpty) {
  tavd::gwmsgdialog(owner(), nullptr, 0x40);
  EXPECT_EQ(seen().dialog->items.at(0).text, u"");
}

TEST_F(OwnDialog, LabelsAreTrimmedAndCutAt31Characters) {
  const std::string longest = "0123456789012345678901234567890123456789";
  tavd::gwset_dialog_labels("&Bra   ", longest.c_str(), "&J\xE4", "&Nej");
  EXPECT_EQ(own_dialog("text", 1).items.at(1).text, u"&Bra");
  EXPECT_EQ(own_dialog("text", 1).items.at(2).text, u"0123456789012345678901234567890");
  EXPECT_EQ(own_dialog("text", 4).items.at(1).text, u"&J\u00E4");
  EXPECT_EQ(own_dialog("text", 4).items.at(2).text, u"&Nej");
}

TEST_F(OwnDialog, TextLongerThanTheBlockIsCutAndTheButtonsStay) {
  const Template dialog = own_dialog(std::string(10'000, 'a'), 3);
  EXPECT_LE(dialog.size, 4000U);
  ASSERT_EQ(dialog.items.size(), 4U);
  const std::u16string& text = dialog.items[0].text;
  EXPECT_GT(text.size(), 1500U);
  EXPECT_EQ(text, std::u16string(text.size(), u'a'));
  EXPECT_EQ(dialog.items[1].text, u"&Yes");
  EXPECT_EQ(dialog.items[3].text, u"&Cancel");
}

TEST_F(OwnDialog, CaptionAndTextThatFitAreWhole) {
  const std::string caption(800, 'c');
  tavd::gwset_message_caption(caption.c_str());
  const Template dialog = own_dialog(std::string(900, 'a'), 3);
  EXPECT_EQ(dialog.title, std::u16string(800, u'c'));
  EXPECT_EQ(dialog.items.at(0).text, std::u16string(900, u'a'));
}

TEST_F(OwnDialog, EndlessCaptionAndLabelsStayInsideTheBlock) {
  const std::string caption(5000, 'c');
  const std::string label(40, 'l');
  tavd::gwset_message_caption(caption.c_str());
  tavd::gwset_dialog_labels(label.c_str(), label.c_str(), label.c_str(), label.c_str());
  const Template dialog = own_dialog(std::string(5000, 'a'), 3);
  EXPECT_LE(dialog.size, 4000U);
  EXPECT_LE(dialog.title.size(), 2000U);
  ASSERT_EQ(dialog.items.size(), 4U);
  for (std::size_t i = 1; i < 4; ++i) EXPECT_EQ(dialog.items[i].text, std::u16string(31, u'l'));
}

TEST_F(OwnDialog, AnswersTheButton) {
  for (const int button : {6, 7, 2}) {
    answer_ = button;
    EXPECT_EQ(tavd::gwmsgdialog(owner(), "text", 3), button);
  }
  answer_ = 1;
  EXPECT_EQ(tavd::gwmsgdialog(owner(), "text", 0), 1);
}

TEST_F(OwnDialog, LeavesNoWindowBehind) {
  const int before = tgui_window_count();
  tavd::gwmsgdialog(owner(), "text", 3);
  EXPECT_EQ(tgui_window_count(), before);
}

TEST_F(OwnDialog, StandsCentredOverItsOwner) {
  tgui_move_window(owner(), 400, 300, 1000, 600);
  tgui_rect rect{};
  on_message_ = [&] { tgui_window_rect(tgui_parent(tgui_focus()), &rect); };
  tavd::gwmsgdialog(owner(), "text", 0x40);
  // 120 by 62 dialog units are 240 by 124.
  EXPECT_EQ(rect.left, 400 + (1000 - 240) / 2);
  EXPECT_EQ(rect.top, 300 + (600 - 124) / 2);
  EXPECT_EQ(rect.right - rect.left, 240);
  EXPECT_EQ(rect.bottom - rect.top, 124);
}

TEST_F(OwnDialog, WithoutAnOwnerStandsInTheMiddleOfTheScreen) {
  tgui_rect rect{};
  on_message_ = [&] { tgui_window_rect(tgui_parent(tgui_focus()), &rect); };
  tavd::gwmsgdialog(nullptr, "text", 0x40);
  EXPECT_EQ(rect.left, (1920 - 240) / 2);
  EXPECT_EQ(rect.top, (1080 - 20 - 124) / 2);
}

TEST_F(OwnDialog, FocusGoesBackToWhereItWas) {
  tgui_set_focus(other());
  tavd::gwmsgdialog(owner(), "text", 0x40);
  EXPECT_EQ(tgui_focus(), other());
}

TEST_F(OwnDialog, FocusGoesToTheOwnerIfThereWasNone) {
  tavd::gwmsgdialog(owner(), "text", 0x40);
  EXPECT_EQ(tgui_focus(), owner());
}

TEST_F(Messages, FormatThatIsNullGivesAnEmptyText) {
  const char* const none = nullptr;
  tavd::gwmsgf(owner(), none);
  EXPECT_EQ(seen().text, "");
}

TEST_F(Messages, FocusThatStayedIsNotMoved) {
  tgui_set_focus(owner());
  tavd::gwmsg(owner(), "text");
  EXPECT_EQ(tgui_focus(), owner());
}

TEST_F(OwnDialog, LabelThatIsNullStaysAsItWas) {
  tavd::gwset_dialog_labels("&Ja", "&Avbryt", "&Ja", "&Nej");
  tavd::gwset_dialog_labels(nullptr, "&Stopp", nullptr, nullptr);
  EXPECT_EQ(own_dialog("text", 1).items.at(1).text, u"&Ja");
  EXPECT_EQ(own_dialog("text", 1).items.at(2).text, u"&Stopp");
}

TEST_F(OwnDialog, CommandThatIsNoButtonLeavesItOpen) {
  answer_ = 7;
  on_message_ = [] {
    tgui_window* const dialog = tgui_parent(tgui_focus());
    EXPECT_EQ(tgui_send_message(dialog, TGUI_WM_COMMAND, 9, 0), 1);
  };
  EXPECT_EQ(tavd::gwmsgdialog(owner(), "text", 4), 7);
}

TEST_F(OwnDialog, ThatIsDestroyedAnswersCancel) {
  answer_ = 7;
  on_message_ = [] { tgui_destroy_window(tgui_parent(tgui_focus())); };
  EXPECT_EQ(tavd::gwmsgdialog(owner(), "text", 4), 2);
}

}  // namespace
