#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "tavdgui/tavdgui.h"

namespace {

// Answers messages with `answer` and keeps the last one.
class Messages : public testing::Test {
 protected:
  Messages() { tgui_set_message_callback(callback, this); }
  ~Messages() override { tgui_set_message_callback(nullptr, nullptr); }

  static std::int32_t callback(const tgui_message* message, void* context) {
    auto* const self = static_cast<Messages*>(context);
    self->shown = *message;
    self->text = message->text == nullptr ? "(null)" : message->text;
    self->caption = message->caption == nullptr ? "(null)" : message->caption;
    return self->answer;
  }
  std::vector<int> buttons() const { return {shown->buttons, shown->buttons + shown->button_count}; }

  std::optional<tgui_message> shown;
  std::string text, caption;
  std::int32_t answer = 0;
};

TEST_F(Messages, ReachTheCallbackWhole) {
  tgui_window* const owner = tgui_create_dialog("owner");
  answer = 7;
  EXPECT_EQ(tgui_message_box(owner, "Replace?", "Question", 0x24), 7);
  EXPECT_EQ(shown->owner, owner);
  EXPECT_EQ(text, "Replace?");
  EXPECT_EQ(caption, "Question");
  EXPECT_EQ(shown->flags, 0x24U);
  EXPECT_EQ(shown->dialog_template, nullptr);
  EXPECT_EQ(shown->template_size, 0U);
  tgui_destroy_window(owner);
  EXPECT_EQ(tgui_message_box(owner, nullptr, nullptr, 0x4), 7);
  EXPECT_EQ(shown->owner, nullptr);
  EXPECT_EQ(text, "(null)");
  EXPECT_EQ(caption, "(null)");
}

TEST_F(Messages, ButtonsFollowTheFlags) {
  const std::vector<std::vector<int>> sets = {{1}, {1, 2}, {3, 4, 5}, {6, 7, 2}, {6, 7}, {4, 2}, {2, 10, 11}};
  for (std::size_t set = 0; set < sets.size(); ++set) {
    tgui_message_box(nullptr, "", "", static_cast<std::uint32_t>(set) | 0x2040);
    EXPECT_EQ(buttons(), sets[set]) << set;
  }
  shown.reset();
  EXPECT_EQ(tgui_message_box(nullptr, "", "", 7), 0);
  EXPECT_EQ(tgui_message_box(nullptr, "", "", 15), 0);
  EXPECT_FALSE(shown.has_value());
}

TEST_F(Messages, AnAnswerThatIsNoButtonIsTheDefaultButton) {
  for (const int no_button : {0, -1, 3, 99}) {
    answer = no_button;
    EXPECT_EQ(tgui_message_box(nullptr, "", "", 0x124), 7) << no_button;
  }
}

TEST(UnansweredMessages, AnswerTheDefaultButton) {
  tgui_set_message_callback(nullptr, nullptr);
  EXPECT_EQ(tgui_message_box(nullptr, "", "", 0x40), 1);
  EXPECT_EQ(tgui_message_box(nullptr, "", "", 0x21), 1);
  EXPECT_EQ(tgui_message_box(nullptr, "", "", 0x121), 2);
  EXPECT_EQ(tgui_message_box(nullptr, "", "", 0x023), 6);
  EXPECT_EQ(tgui_message_box(nullptr, "", "", 0x123), 7);
  EXPECT_EQ(tgui_message_box(nullptr, "", "", 0x223), 2);
}

TEST(UnansweredMessages, ADefaultButtonThatIsNotThereIsTheFirst) {
  EXPECT_EQ(tgui_message_box(nullptr, "", "", 0x323), 6);
  EXPECT_EQ(tgui_message_box(nullptr, "", "", 0x224), 6);
  EXPECT_EQ(tgui_message_box(nullptr, "", "", 0x100), 1);
  EXPECT_EQ(tgui_message_box(nullptr, "", "", 0xF04), 6);
}

}  // namespace
