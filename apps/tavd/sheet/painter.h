// What pages are drawn with: lines, areas and texts in millimetres. Texts are measured before they are
// placed, and each is drawn for a room that it has to stay in. Pages of Cairo, SVG text and recordings are
// made of it.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "sheet/box.h"

namespace tavdhost {

struct LineStyle {
  double width;                         // mm
  std::uint32_t colour = 0x000000;      // 0x00BBGGRR
  std::span<const double> dashes = {};  // mm, drawn and left out in turn; empty: solid. Outlives its use
};

// Which way a text is read. kByText: as its first letter that has a direction.
enum class TextDirection { kByText, kLeftToRight, kRightToLeft };

struct TextStyle {
  double size;  // of the em, mm
  bool bold = false;
  std::uint32_t colour = 0x000000;  // 0x00BBGGRR
  TextDirection direction = TextDirection::kByText;
};

// Of one line of text, mm.
struct TextSize {
  double width;    // how far it advances
  double ascent;   // from the top of its cell to the baseline
  double descent;  // from the baseline to the bottom of its cell
  double height() const { return ascent + descent; }
};

// Where the reference point of a text stands along its line, and across it. kMiddle is half the height of a
// digit above the baseline: so numbers stand beside a line of the grid.
enum class Along { kLeft, kCentre, kRight };
enum class Across { kTop, kMiddle, kBaseline, kBottom };

struct TextPlace {
  PagePoint at;
  Along along = Along::kLeft;
  Across across = Across::kBaseline;
  double angle = 0;  // degrees, counter-clockwise about `at`
};

// A text as it was drawn.
struct PlacedText {
  std::string text;
  std::array<PagePoint, 4>
      corners;  // of its cell: upper left, upper right, lower right, lower left as it is read
  Box room;     // it must stay in
};

class Painter {
 public:
  Painter() = default;
  virtual ~Painter() = default;
  Painter(const Painter&) = delete;
  Painter& operator=(const Painter&) = delete;

  virtual void line(std::span<const PagePoint> points, const LineStyle& style) = 0;
  virtual void area(std::span<const PagePoint> corners, std::uint32_t colour) = 0;
  virtual void circle(PagePoint centre, double radius, const LineStyle& style) = 0;
  virtual void disc(PagePoint centre, double radius, std::uint32_t colour) = 0;
  void area(const Box& box, std::uint32_t colour);

  // One line, UTF-8.
  virtual TextSize measure(const std::string& text, const TextStyle& style) = 0;
  void text(const std::string& text, const TextStyle& style, const TextPlace& place, const Box& room);

  // What is drawn until the end belongs together and has a name, for those who read the page without seeing
  // it. Groups may stand in groups. A page that has no place for them leaves them out.
  virtual void begin_group(const std::string& /*name*/) {}
  virtual void end_group() {}

  // From now on every text is kept, for tests: none may leave its room.
  void keep_texts() { keeps_texts_ = true; }
  const std::vector<PlacedText>& texts() const { return texts_; }

 protected:
  virtual void draw_text(const std::string& text, const TextStyle& style, const TextPlace& place,
                         const TextSize& size) = 0;
  // From the reference point of a text to where its baseline begins on the left, before it is turned.
  static PagePoint baseline_offset(const TextStyle& style, const TextPlace& place, const TextSize& size);

 private:
  bool keeps_texts_ = false;
  std::vector<PlacedText> texts_;
};

}  // namespace tavdhost
