// Message boxes and the library's own dialog on the screen, answered from another thread as by a user.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "base/gwmsg.h"
#include "base/gwsys.h"
#include "host.h"
#include "imports.h"
#include "live_objects.h"

namespace {

using tavdtest::Dialog;

constexpr int kText = 100;  // the own dialog's control
constexpr int kPatience = 500;
constexpr DWORD kMoment = 10;  // ms

struct Button {
  int id;
  std::wstring label;
  RECT place;  // in the dialog
  bool operator==(const Button& other) const { return id == other.id && label == other.label; }
};

// The first dialog of the other thread that is neither `known` nor invisible.
struct Search {
  HWND known;
  HWND found;
};

BOOL CALLBACK is_dialog(HWND window, LPARAM search) {
  auto* at = reinterpret_cast<Search*>(search);
  char name[16] = "";
  GetClassNameA(window, name, sizeof name);
  if (window != at->known && std::string(name) == "#32770" && IsWindowVisible(window)) at->found = window;
  return at->found == nullptr;
}

std::wstring text_of(HWND window) {
  wchar_t text[4096] = L"";
  GetWindowTextW(window, text, 4096);
  return text;
}

RECT place_in(HWND dialog, HWND item) {
  RECT rect{};
  GetWindowRect(item, &rect);
  MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&rect), 2);
  return rect;
}

// Waits beside the thread that shows a message, looks at it and answers it.
class User {
 public:
  // `answer` is posted as a command; 0: the escape key.
  User(int answer, HWND host, std::function<void(HWND)> look = nullptr)
      : thread_([this, answer, host, look = std::move(look), thread = GetCurrentThreadId()] {
          HWND dialog = wait(thread, host);
          if (dialog == nullptr) return;
          seen = true;
          note(dialog);
          if (look) look(dialog);
          if (answer != 0) {
            PostMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(answer), 0);
          } else {
            PostMessageA(dialog, WM_KEYDOWN, VK_ESCAPE, 0);
          }
        }) {}
  ~User() { thread_.join(); }
  User(const User&) = delete;
  User& operator=(const User&) = delete;

  std::atomic<bool> seen = false;
  std::wstring title, text;
  std::vector<Button> buttons;  // from left to right

 private:
  static HWND wait(DWORD thread, HWND host) {
    for (int i = 0; i < kPatience; ++i) {
      Search search{host, nullptr};
      EnumThreadWindows(thread, is_dialog, reinterpret_cast<LPARAM>(&search));
      if (search.found != nullptr) return search.found;
      Sleep(kMoment);
    }
    return nullptr;
  }

  void note(HWND dialog) {
    title = text_of(dialog);
    for (HWND item = GetWindow(dialog, GW_CHILD); item != nullptr; item = GetWindow(item, GW_HWNDNEXT)) {
      char name[16] = "";
      GetClassNameA(item, name, sizeof name);
      if (std::string(name) == "Button" && IsWindowVisible(item)) {
        buttons.push_back({GetDlgCtrlID(item), text_of(item), place_in(dialog, item)});
      } else if (!text_of(item).empty()) {
        text = text_of(item);
      }
    }
    std::sort(buttons.begin(), buttons.end(),
              [](const Button& a, const Button& b) { return a.place.left < b.place.left; });
  }

  std::thread thread_;
};

class Messages : public testing::Test {
 protected:
  Messages() { tavd::gwInit(GetModuleHandleA(nullptr)); }
  ~Messages() override {
    tavd::gwset_own_dialog(0);
    tavd::gwset_dialog_labels("&Ok", "&Cancel", "&Yes", "&No");
    tavd::gwset_message_caption(nullptr);
    tavd::gwExit();
  }
  HWND owner() const { return host_.window(); }

  Dialog host_;
};

std::vector<int> ids(const std::vector<Button>& buttons) {
  std::vector<int> all;
  for (const Button& button : buttons) all.push_back(button.id);
  return all;
}

TEST_F(Messages, BoxShowsItsTextAndAnswersTheButton) {
  for (const int answer : {IDYES, IDNO}) {
    User user(answer, owner());
    tavd::gwset_message_caption("caption");
    EXPECT_EQ(tavd::gwmsg_yesno(owner(), "Yes or \xC4?"), answer);
    ASSERT_TRUE(user.seen);
    EXPECT_EQ(user.title, L"caption");
    EXPECT_EQ(user.text.substr(0, 7), L"Yes or ");
    EXPECT_EQ(ids(user.buttons), (std::vector<int>{IDYES, IDNO}));
  }
}

TEST_F(Messages, EscapeKeyAnswersCancel) {
  User user(0, owner());
  EXPECT_EQ(tavd::gwmsg_okcancel(owner(), "text"), IDCANCEL);
  EXPECT_TRUE(user.seen);
}

TEST_F(Messages, BoxWithoutAnOwnerIsAnswered) {
  User user(IDOK, owner());
  EXPECT_EQ(tavd::gwmsg(nullptr, "text"), IDOK);
  EXPECT_TRUE(user.seen);
}

UINT flags_seen = 0;
HWND focus_wanted = nullptr;

int WINAPI steal_focus(HWND, LPCSTR, LPCSTR, UINT flags) {
  flags_seen = flags;
  SetFocus(focus_wanted);
  return IDOK;
}

TEST_F(Messages, FocusComesBackAndTheFlagsAreAsTold) {
  HWND list = GetDlgItem(owner(), tavdtest::kList);
  focus_wanted = GetDlgItem(owner(), tavdtest::kCombo);
  const tavdtest::Redirected box(GetModuleHandleA(nullptr), "MessageBoxA",
                                 reinterpret_cast<void*>(&steal_focus));
  ASSERT_NE(box.original(), nullptr);
  SetFocus(list);
  ASSERT_EQ(GetFocus(), list);
  EXPECT_EQ(tavd::gwmsg(owner(), "text"), IDOK);
  EXPECT_EQ(GetFocus(), list);
  EXPECT_EQ(flags_seen, 0x40U);
  tavd::gwmsg(nullptr, "text");
  EXPECT_EQ(flags_seen, 0x2040U);
  tavd::gwmsg_yesnocancel(owner(), "text");
  EXPECT_EQ(flags_seen, 0x23U);
}

TEST_F(Messages, OwnDialogHasItsTextItsButtonsAndTheirPlaces) {
  tavd::gwset_own_dialog(1);
  tavd::gwset_message_caption("caption \xC4");
  tavd::gwset_dialog_labels("Ok", "Avbryt", "Ja", "Nej");
  RECT text{6, 8, 6 + 136 - 12, 8 + 32};
  RECT first{4, 44, 4 + 40, 44 + 12};
  RECT third{92, 44, 92 + 40, 44 + 12};
  RECT text_place{};
  HGDIOBJ font = nullptr;
  User user(IDNO, owner(), [&](HWND dialog) {
    for (RECT* rect : {&text, &first, &third}) MapDialogRect(dialog, rect);
    text_place = place_in(dialog, GetDlgItem(dialog, kText));
    font = reinterpret_cast<HGDIOBJ>(SendDlgItemMessageA(dialog, kText, WM_GETFONT, 0, 0));
  });
  EXPECT_EQ(tavd::gwmsg_yesnocancel(owner(), "a question"), IDNO);
  ASSERT_TRUE(user.seen);
  EXPECT_EQ(user.title.substr(0, 8), L"caption ");
  EXPECT_EQ(user.text, L"a question");
  ASSERT_EQ(ids(user.buttons), (std::vector<int>{IDYES, IDNO, IDCANCEL}));
  EXPECT_EQ(user.buttons[0].label, L"Ja");
  EXPECT_EQ(user.buttons[1].label, L"Nej");
  EXPECT_EQ(user.buttons[2].label, L"Avbryt");
  EXPECT_NE(EqualRect(&user.buttons[0].place, &first), 0);
  EXPECT_NE(EqualRect(&user.buttons[2].place, &third), 0);
  EXPECT_NE(EqualRect(&text_place, &text), 0);
  EXPECT_EQ(font, GetStockObject(ANSI_VAR_FONT));
}

TEST_F(Messages, OwnDialogStandsOverItsOwner) {
  tavd::gwset_own_dialog(1);
  MoveWindow(owner(), 300, 250, 500, 400, TRUE);
  RECT rect{};
  User user(IDOK, owner(), [&rect](HWND dialog) { GetWindowRect(dialog, &rect); });
  EXPECT_EQ(tavd::gwmsg(owner(), "text"), IDOK);
  ASSERT_TRUE(user.seen);
  EXPECT_EQ(rect.left, 300 + (500 - (rect.right - rect.left)) / 2);
  EXPECT_EQ(rect.top, 250 + (400 - (rect.bottom - rect.top)) / 2);
}

TEST_F(Messages, OwnDialogLeavesNothingBehind) {
  tavd::gwset_own_dialog(1);
  const auto show = [this] {
    User user(IDOK, owner());
    EXPECT_EQ(tavd::gwmsg(owner(), "text"), IDOK);
    EXPECT_TRUE(user.seen);
  };
  for (int i = 0; i < 5; ++i) show();
  const int objects = tavdtest::live_gdi_objects();
  const int windows = tavdtest::live_windows();
  for (int i = 0; i < 50; ++i) show();
  EXPECT_EQ(tavdtest::live_gdi_objects(), objects);
  EXPECT_EQ(tavdtest::live_windows(), windows);
}

}  // namespace
