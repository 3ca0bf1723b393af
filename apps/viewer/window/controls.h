// The plain controls of the main window.
#pragma once

#include <windows.h>

#include <span>
#include <string>

#include "model/units.h"

namespace viewer {

// Makes them all, children of `host`, in the order of the Tab key.
void create_controls(HWND host, HINSTANCE module);

// Gives every child of `host` the font, and the results their tab stops.
void set_font(HWND host, HFONT font);

std::wstring text_of(HWND host, int id);

// Leaves the control alone if it has that text already.
void set_text(HWND host, int id, const std::wstring& text);

void list_units(HWND host, int id, std::span<const Unit> units, int selected);

}  // namespace viewer
