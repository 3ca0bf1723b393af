// The few messages that the library shows.
#pragma once

#include <cstdint>

#include "tavd/types.h"

namespace tavd {

// Each returns the id of the button: 1 OK, 2 Cancel, 6 Yes, 7 No.
int gwmsg(tavd_hwnd owner, const char* text);
int gwmsg_okcancel(tavd_hwnd owner, const char* text);
int gwmsg_yesno(tavd_hwnd owner, const char* text);
int gwmsg_yesnocancel(tavd_hwnd owner, const char* text);
#if defined(__GNUC__)
__attribute__((format(printf, 2, 3)))
#endif
int gwmsgf(tavd_hwnd owner, const char* format, ...);
int gwmsgbox(tavd_hwnd owner, const char* text, std::uint32_t flags);
// The library's own dialog, built in memory; 2 if it cannot be built.
int gwmsgdialog(tavd_hwnd owner, const char* text, std::uint32_t flags);

void gwset_own_dialog(std::int32_t on);  // exactly 1: the own dialog instead of the platform's message box
void gwset_dialog_labels(const char* ok, const char* cancel, const char* yes, const char* no);
// Caption of all messages, kept by address; null for none. gwInit clears it, and no host can set it.
void gwset_message_caption(const char* caption);

}  // namespace tavd
