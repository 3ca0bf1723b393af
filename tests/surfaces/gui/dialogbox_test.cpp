#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "tavdgui/tavdgui.h"

namespace {

// Packs a dialog template as the platform does.
class TemplateBuilder {
 public:
  explicit TemplateBuilder(std::uint16_t items, const std::u16string& title = u"Caption",
                           std::uint32_t style = 0x80C80080) {
    number(style).number(std::uint32_t{0}).number(items);
    place(10, 15, 120, 62);
    number(std::uint16_t{0}).number(std::uint16_t{0}).text(title);
  }
  TemplateBuilder& item(std::uint16_t atom, std::uint32_t style, std::uint16_t id,
                        const std::u16string& caption, std::uint16_t extra = 0) {
    begin_item(style, id);
    number(std::uint16_t{0xFFFF}).number(atom).text(caption);
    number(extra);
    for (int i = 2; i < extra; ++i) {
      bytes.push_back(0xEE);
    }
    return *this;
  }
  TemplateBuilder& item(const std::u16string& name, std::uint32_t style, std::uint16_t id) {
    begin_item(style, id);
    return text(name).text(u"").number(std::uint16_t{0});
  }
  template <class Number>
  TemplateBuilder& number(Number value) {
    unsigned char raw[sizeof value];
    std::memcpy(raw, &value, sizeof value);
    bytes.insert(bytes.end(), raw, raw + sizeof value);
    return *this;
  }
  TemplateBuilder& text(const std::u16string& units) {
    for (const char16_t unit : units) {
      number(static_cast<std::uint16_t>(unit));
    }
    return number(std::uint16_t{0});
  }

  std::vector<unsigned char> bytes;

 private:
  void begin_item(std::uint32_t style, std::uint16_t id) {
    while (bytes.size() % 4 != 0) {
      bytes.push_back(0xCC);
    }
    number(style).number(std::uint32_t{0});
    place(6, 8, 40, 12);
    number(id);
  }
  void place(std::int16_t x, std::int16_t y, std::int16_t width, std::int16_t height) {
    number(x).number(y).number(width).number(height);
  }
};

constexpr std::uint32_t kStatic = 0x50000000;
constexpr std::uint32_t kButton = 0x50010000;

// A dialog's procedure that ends it with the button's id, and what it saw.
class DialogBox : public testing::Test {
 protected:
  DialogBox() {
    self() = this;
    tgui_set_message_callback(callback, this);
  }
  ~DialogBox() override { tgui_set_message_callback(nullptr, nullptr); }

  static DialogBox*& self() {
    static DialogBox* box = nullptr;
    return box;
  }
  static std::intptr_t procedure(tgui_window* dialog, unsigned message, std::uintptr_t wparam,
                                 std::intptr_t lparam) {
    DialogBox& box = *self();
    box.messages.push_back(message);
    box.dialog = dialog;
    if (message == TGUI_WM_INITDIALOG) {
      box.items_at_init = tgui_window_count();
      tgui_window_rect(dialog, &box.rect);
      box.title = tgui_window_title(dialog);
      if (box.end_at_init) {
        EXPECT_EQ(tgui_end_dialog(dialog, 42), 1);
      }
      return 1;
    }
    if (message == TGUI_WM_COMMAND) {
      box.focus_at_command = tgui_focus();
      box.control = reinterpret_cast<tgui_window*>(lparam);
      if (box.destroy_at_command) {
        tgui_destroy_window(dialog);
      } else if (++box.commands >= box.end_after) {
        EXPECT_EQ(tgui_end_dialog(dialog, static_cast<std::intptr_t>(wparam)), 1);
      }
    }
    return 0;
  }
  static std::int32_t callback(const tgui_message* message, void* context) {
    auto* const box = static_cast<DialogBox*>(context);
    box->shown = *message;
    box->text = message->text == nullptr ? "(null)" : message->text;
    box->caption = message->caption;
    return box->answer;
  }
  std::intptr_t run(const TemplateBuilder& form, tgui_window* owner = nullptr) {
    return tgui_dialog_box(nullptr, form.bytes.data(), owner, procedure);
  }
  static TemplateBuilder yes_no() {
    TemplateBuilder form(3);
    form.item(0x82, kStatic, 100, u"Save \u20AC?");
    form.item(0x80, kButton, 6, u"&Yes").item(0x80, kButton, 7, u"&No");
    return form;
  }

  std::vector<unsigned> messages;
  tgui_message shown{};
  std::string text, caption, title;
  tgui_rect rect{};
  tgui_window* dialog = nullptr;
  tgui_window* control = nullptr;
  tgui_window* focus_at_command = nullptr;
  int items_at_init = 0;
  int commands = 0;
  int end_after = 1;
  bool end_at_init = false;
  bool destroy_at_command = false;
  std::int32_t answer = 7;
};

TEST_F(DialogBox, AsksForAButtonAndAnswersWhatItsProcedureEndsWith) {
  const int before = tgui_window_count();
  const TemplateBuilder form = yes_no();
  EXPECT_EQ(run(form), 7);
  EXPECT_EQ(messages, (std::vector<unsigned>{TGUI_WM_INITDIALOG, TGUI_WM_COMMAND, TGUI_WM_DESTROY}));
  EXPECT_EQ(items_at_init, before + 4);
  EXPECT_EQ(tgui_window_count(), before);
  EXPECT_EQ(text, "Save \x80?");
  EXPECT_EQ(caption, "Caption");
  EXPECT_EQ(title, "Caption");
  EXPECT_EQ(shown.button_count, 2);
  EXPECT_EQ(shown.buttons[0], 6);
  EXPECT_EQ(shown.buttons[1], 7);
  EXPECT_EQ(shown.dialog_template, form.bytes.data());
  EXPECT_EQ(shown.template_size, form.bytes.size());
  EXPECT_NE(control, nullptr);
  EXPECT_EQ(tgui_end_dialog(dialog, 1), 0);
}

TEST_F(DialogBox, StandsAtItsPlaceInDialogUnitsOverItsOwner) {
  tgui_window* const owner = tgui_create_dialog("owner");
  tgui_move_window(owner, 300, 200, 0, 0);
  run(yes_no(), owner);
  EXPECT_EQ(shown.owner, owner);
  EXPECT_EQ(rect.left, 320);
  EXPECT_EQ(rect.top, 230);
  EXPECT_EQ(rect.right - rect.left, 240);
  EXPECT_EQ(rect.bottom - rect.top, 124);
  tgui_destroy_window(owner);
  run(yes_no());
  EXPECT_EQ(shown.owner, nullptr);
  EXPECT_EQ(rect.left, 20);
  EXPECT_EQ(rect.top, 30);
}

TEST_F(DialogBox, FocusGoesToTheFirstTabStopAndComesBack) {
  tgui_window* const window = tgui_create_dialog("main");
  tgui_set_focus(window);
  run(yes_no(), window);
  EXPECT_NE(focus_at_command, nullptr);
  EXPECT_NE(focus_at_command, window);
  EXPECT_EQ(tgui_focus(), window);
  tgui_destroy_window(window);
}

TEST_F(DialogBox, MayEndBeforeAnythingIsAsked) {
  end_at_init = true;
  EXPECT_EQ(run(yes_no()), 42);
  EXPECT_EQ(commands, 0);
  EXPECT_EQ(shown.button_count, 0);
}

TEST_F(DialogBox, AsksAgainUntilItsProcedureEndsIt) {
  end_after = 3;
  EXPECT_EQ(run(yes_no()), 7);
  EXPECT_EQ(commands, 3);
}

TEST_F(DialogBox, ThatNeverEndsIsGivenUp) {
  end_after = 1 << 30;
  tgui_set_message_callback(nullptr, nullptr);
  const int before = tgui_window_count();
  EXPECT_EQ(run(yes_no()), -1);
  EXPECT_EQ(commands, 1000);
  EXPECT_EQ(tgui_window_count(), before);
}

TEST_F(DialogBox, MayBeDestroyedByItsProcedure) {
  destroy_at_command = true;
  const int before = tgui_window_count();
  EXPECT_EQ(run(yes_no()), -1);
  EXPECT_EQ(tgui_window_count(), before);
}

TEST_F(DialogBox, DefaultsToTheDefaultButtonElseTheFirstElseCancel) {
  tgui_set_message_callback(nullptr, nullptr);
  EXPECT_EQ(run(yes_no()), 6);
  TemplateBuilder marked(2);
  marked.item(0x80, kButton, 6, u"").item(0x80, kButton | 1, 7, u"");
  EXPECT_EQ(run(marked), 7);
  EXPECT_EQ(run(TemplateBuilder(0)), 2);
}

TEST_F(DialogBox, AnAnswerThatIsNoButtonIsTheDefaultAndCancelAlwaysCounts) {
  answer = 55;
  EXPECT_EQ(run(yes_no()), 6);
  answer = 2;
  EXPECT_EQ(run(yes_no()), 2);
  EXPECT_EQ(control, nullptr);
}

TEST_F(DialogBox, TellsThreeButtonsAndTakesTheFourth) {
  TemplateBuilder form(5);
  form.item(0x80, kButton | 3, 90, u"a check box is no button to answer with");
  for (std::uint16_t id = 10; id < 14; ++id) {
    form.item(0x80, kButton, id, u"");
  }
  answer = 13;
  EXPECT_EQ(run(form), 13);
  EXPECT_EQ(shown.button_count, 3);
  EXPECT_EQ(shown.buttons[0], 10);
  EXPECT_EQ(shown.buttons[2], 12);
  EXPECT_EQ(text, "(null)");
}

TEST_F(DialogBox, ReadsFontsCreationDataAndClassNames) {
  TemplateBuilder form(3, u"T", 0x80C80080 | 0x40);
  form.number(std::uint16_t{8}).text(u"Some Face");
  form.item(0x82, kStatic, 100, u"t", 7);
  form.item(u"Button", kButton, 1).item(u"LISTBOX", kStatic, 5);
  answer = 1;
  EXPECT_EQ(run(form), 1);
  EXPECT_EQ(shown.template_size, form.bytes.size());
  EXPECT_EQ(text, "t");
}

TEST_F(DialogBox, BadTemplatesAnswerMinusOne) {
  const int before = tgui_window_count();
  EXPECT_EQ(tgui_dialog_box(nullptr, nullptr, nullptr, procedure), -1);
  EXPECT_EQ(tgui_dialog_box(nullptr, yes_no().bytes.data(), nullptr, nullptr), -1);
  EXPECT_EQ(run(TemplateBuilder(256)), -1);
  TemplateBuilder newer(0, u"", 0xFFFF0001);
  EXPECT_EQ(run(newer), -1);
  TemplateBuilder unknown_atom(1);
  unknown_atom.item(0x86, kStatic, 1, u"");
  EXPECT_EQ(run(unknown_atom), -1);
  TemplateBuilder unknown_class(1);
  unknown_class.item(u"NO SUCH CLASS", kStatic, 1);
  EXPECT_EQ(run(unknown_class), -1);
  EXPECT_TRUE(messages.empty());
  EXPECT_EQ(tgui_window_count(), before);
}

TEST_F(DialogBox, NothingIsReadBeyondTheLargestTemplate) {
  // A title without an end: the block ends where reading has to.
  TemplateBuilder endless(1);
  endless.bytes.resize(22);
  endless.bytes.resize(0x10000, 'A');
  EXPECT_EQ(run(endless), -1);
  // Creation data that reaches beyond it.
  TemplateBuilder far(2);
  far.item(0x82, kStatic, 1, u"", 0xFFFF);
  far.bytes.resize(0x10000);
  EXPECT_EQ(run(far), -1);
}

TEST_F(DialogBox, ATemplateAtAnOddAddressIsRead) {
  const TemplateBuilder form = yes_no();
  std::vector<unsigned char> moved(1);
  moved.insert(moved.end(), form.bytes.begin(), form.bytes.end());
  EXPECT_EQ(tgui_dialog_box(nullptr, moved.data() + 1, nullptr, procedure), 7);
}

}  // namespace
