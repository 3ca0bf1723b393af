// Pictures drawn by others: PLplot and gnuplot.
#pragma once

#include <string>

#include "sketch.h"

namespace bench {

constexpr int kPictureSide = 700;  // pixels, or points on a PDF page

enum class Format { kPng, kSvg, kPdf };

// Draws the sketch to a file, the plotting library's start and end of a plot included.
void draw_with_plplot(const Sketch& sketch, Format format, const std::string& path);

// A gnuplot that runs beside this process and is told through a pipe what to do.
class Gnuplot {
 public:
  Gnuplot();
  ~Gnuplot();
  Gnuplot(const Gnuplot&) = delete;
  Gnuplot& operator=(const Gnuplot&) = delete;

  // Hands over the figures and the kind of file; what draw() then draws.
  void prepare(const Sketch& sketch, Format format);
  // Draws what was prepared; returns when the file is complete.
  void draw(const std::string& path);

 private:
  void say(const std::string& commands);

  int to_ = -1;    // pipe
  int from_ = -1;  // pipe
  int process_ = 0;
  std::string plot_;
};

}  // namespace bench
