// Enhanced metafiles of the drawings: for the clipboard, and for files.
#pragma once

#include <windows.h>

#include <string>

#include "drawing/page.h"

namespace viewer {

// Owns an enhanced metafile.
class Metafile {
 public:
  explicit Metafile(HENHMETAFILE handle) : handle_(handle) {}
  ~Metafile();
  Metafile(Metafile&& other) noexcept : handle_(other.release()) {}
  Metafile& operator=(Metafile&&) = delete;

  HENHMETAFILE handle() const { return handle_; }
  HENHMETAFILE release();

 private:
  HENHMETAFILE handle_;
};

// Records one drawing, or a page of A4 size. Throws UserError.
Metafile recorded(Drawing drawing);
Metafile recorded(const PageContents& contents);

// Both throw UserError.
void copy_to_clipboard(HWND owner, Metafile&& metafile);
void save(const Metafile& metafile, const std::wstring& path);

void copy_text_to_clipboard(HWND owner, const std::wstring& text);

}  // namespace viewer
