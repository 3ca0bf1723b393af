#include "calc/settings.h"

#include "base/gwmsg.h"
#include "tavd/tavca.h"

namespace tavd {
namespace {

// Plain stores and loads: hosts set these before they calculate.
tavd_hwnd warningwnd = nullptr;
std::int16_t warningmode = 0;  // 0: no warnings
float roomdamp_db = 4.0F;

}  // namespace

float room_damping() {
  return roomdamp_db;
}

}  // namespace tavd

using namespace tavd;  // the border below stands outside

void tavca_setwarningmode(tavd_hwnd wnd, std::int16_t mode) {
  warningwnd = wnd;
  warningmode = mode;
}

void tavca_setroomdamp(float roomdamp) {
  roomdamp_db = roomdamp;
}

void tavca_msg(const char* text) {
  if (warningmode == 0 || text == nullptr) return;
  gwmsg(warningwnd, text);
}
