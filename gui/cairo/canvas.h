// What a picture is made of, in device units with y downward: the little that the operations of a surface
// come down to once their state is applied. Two makes of it exist, on a cairo context and as SVG text.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

struct _cairo;

namespace tavdcairo {

struct Point {
  double x, y;
};

struct Stroke {
  double width;          // device units
  std::uint32_t colour;  // 0x00BBGGRR
  int style;             // TGUI_PEN_ values
};

// A figure's paint: either may be missing.
struct Paint {
  std::optional<Stroke> stroke;
  std::optional<std::uint32_t> fill;
};

// An axis-parallel ellipse.
struct Ellipse {
  Point centre;
  double rx, ry;
};

enum class Horizontal { kLeft, kCentre, kRight };
enum class Vertical { kTop, kBottom, kBaseline };

struct TextStyle {
  std::string family;  // the face as it was asked for
  double size;         // em height, device units
  int weight;          // 400 normal, 700 bold
  bool italic, underline, strikeout;
  std::uint32_t colour;   // 0x00BBGGRR
  double angle;           // degrees, counter-clockwise
  Horizontal horizontal;  // where the reference point stands along the line
  Vertical vertical;      // and across it
  bool opaque;            // white behind the text
};

class Canvas {
 public:
  Canvas() = default;
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;
  virtual ~Canvas() = default;

  virtual void polyline(const std::vector<Point>& points, const Stroke& stroke) = 0;
  virtual void ellipse(const Ellipse& ellipse, const Paint& paint) = 0;
  // Counter-clockwise on the screen, angles in radians from the x axis, y downward.
  virtual void arc(const Ellipse& ellipse, double from, double to, const Stroke& stroke) = 0;
  virtual void text(const std::string& utf8, Point reference, const TextStyle& style) = 0;
  // Completes the picture; its bytes, or nothing and a reason. Canvases without a file answer no bytes.
  virtual bool finish(std::string& bytes, std::string& reason) = 0;
  // What the picture shows, UTF-8; and a name for what is drawn from now on, empty for none. Canvases that
  // have no place for them leave them out.
  virtual void describe(const std::string& /*title*/, const std::string& /*description*/) {}
  virtual void group(const std::string& /*name*/) {}
  // Whether straight lines along the axes should fall on whole pixels.
  virtual bool has_pixels() const = 0;
};

// Null where a build has none of that make.
std::unique_ptr<Canvas> make_png_canvas(int width, int height);
std::unique_ptr<Canvas> make_pdf_canvas(int width, int height, double width_mm, double height_mm);
std::unique_ptr<Canvas> make_context_canvas(struct _cairo* context);
std::unique_ptr<Canvas> make_svg_canvas(int width, int height);

// Dash lengths of a pen style in units of the pen's width; empty for a solid line.
const std::vector<double>& dashes(int style);

}  // namespace tavdcairo
