// Collects the messages that the library shows while it lives, with warnings as told.
#pragma once

#include <string>
#include <vector>

#include "tavd/tavca.h"
#include "tavdgui/tavdgui.h"

namespace tavdtest {

class Messages {
 public:
  explicit Messages(std::int16_t warningmode, tavd_hwnd owner = nullptr) {
    tgui_set_message_callback(&Messages::take, this);
    tavca_setwarningmode(owner, warningmode);
  }
  ~Messages() {
    tavca_setwarningmode(nullptr, 0);
    tgui_set_message_callback(nullptr, nullptr);
  }
  Messages(const Messages&) = delete;
  Messages& operator=(const Messages&) = delete;

  std::vector<std::string> texts;
  std::vector<tgui_window*> owners;

 private:
  static std::int32_t take(const tgui_message* message, void* context) {
    auto* messages = static_cast<Messages*>(context);
    messages->texts.emplace_back(message->text != nullptr ? message->text : "(null)");
    messages->owners.push_back(message->owner);
    return 1;
  }
};

}  // namespace tavdtest
