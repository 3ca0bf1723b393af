#include "support/messages.h"

#include "imports.h"

namespace tavdtest {

namespace {

Messages* collector = nullptr;
void* message_box = nullptr;

int WINAPI collect(HWND owner, LPCSTR text, LPCSTR /*caption*/, UINT /*flags*/) {
  collector->texts.emplace_back(text != nullptr ? text : "(null)");
  collector->owners.push_back(owner);
  return IDOK;
}

}  // namespace

Messages::Messages(std::int16_t warningmode, tavd_hwnd owner) {
  collector = this;
  message_box =
      redirect_import(GetModuleHandleA("tavd.dll"), "MessageBoxA", reinterpret_cast<void*>(&collect));
  tavca_setwarningmode(owner, warningmode);
}

Messages::~Messages() {
  tavca_setwarningmode(nullptr, 0);
  redirect_import(GetModuleHandleA("tavd.dll"), "MessageBoxA", message_box);
}

}  // namespace tavdtest
