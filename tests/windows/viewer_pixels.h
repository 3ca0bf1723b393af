// Pictures of the screen, what ink is in them, and how alike two of them are.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

namespace drive {

struct Colour {
  int red, green, blue;
};

struct Picture {
  int width = 0, height = 0;
  std::vector<std::uint32_t> pixels;  // 0x00RRGGBB, row by row from the top

  Colour at(int x, int y) const;
  Picture part(const RECT& rect) const;
};

// A rectangle of the screen, as it is shown.
Picture screen(const RECT& rect);

// A metafile played on white.
Picture played(HENHMETAFILE metafile, SIZE size);

// GDI+ for as long as it lives; the two functions below need it.
class PictureFiles {
 public:
  PictureFiles();
  ~PictureFiles();
  PictureFiles(const PictureFiles&) = delete;
  PictureFiles& operator=(const PictureFiles&) = delete;

 private:
  ULONG_PTR token_ = 0;
};

bool save_png(const Picture& picture, const std::wstring& path);
Picture load_png(const std::wstring& path);  // empty if it cannot be read

// Pixels within `slack` of the colour, in each of red, green and blue.
int count_of(const Picture& picture, Colour colour, int slack);

// Share of pixels that are not white, 0 to 1.
double ink_share(const Picture& picture);

// How alike two pictures are in their coarse structure: the correlation, -1 to 1, of the ink in the cells of
// a grid laid over each. They may have different sizes.
double likeness(const Picture& a, const Picture& b);

// Distance between the middles of the ink of one colour in two pictures, as a share of their width; 1 if
// there is no such ink in one of them.
double distance_of(const Picture& a, const Picture& b, Colour colour, int slack);

}  // namespace drive
