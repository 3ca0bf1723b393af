// The state of a shape picture: a title and a dimensioned sketch of one product. Each picture has one of its
// own; what reads and draws takes it as an argument.
#pragma once

#include <cstdint>

#include "base/gwgdi.h"
#include "tavd/tavdshapepic.h"
#include "tavd/tavfm.h"
#include "tavd/types.h"

namespace tavd {

inline constexpr int kShapeWords = 30;

// The flow data header as the database stores it.
#pragma pack(push, 1)
struct ShapeFlowHeader {
  std::int16_t kind100;
  std::int16_t b;      // diameter or width of the connection, mm
  std::int16_t h;      // its height, mm; 0 for a round one
  float qvmin, qvmax;  // l/s
  float dpmin, dpmax;  // Pa
};
#pragma pack(pop)
static_assert(sizeof(ShapeFlowHeader) == 22, "is filled from an attribute of this size");

struct ShapeState {
  gwobject pen_thick;    // outlines; the drawing tools live for the time of one paint
  gwobject pen_dot;      // hidden edges and centre lines
  gwobject pen_dashdot;  // made with the others, though no drawer selects it
  gwobject pen_thin;     // extension lines, dimensions, fine detail
  gwobject font_text;
  gwobject font_title;
  std::int16_t nvalues;              // words of `values` that the product has, at most all of them
  std::int16_t values[kShapeWords];  // the shape number, then its dimensions, mm; 0 behind nvalues
  char classID[8];                   // of the product given to the init
  char title[TAVDSHAPEPIC_TITLE_CHARS];
  char usertitle[TAVDSHAPEPIC_TITLE_CHARS];
  int listid;    // control id of the family list box, 0 for none
  tavb_rec rec;  // the product given to the init; the host's
  FamilyList familylist;
  std::int16_t db;
  int pic_left, pic_top, pic_right, pic_bottom;  // the picture's rectangle, device units
  int pic_origin_y;                              // device y of drawing unit 0, under the title
  double pic_xscale, pic_yscale;                 // device units per drawing unit
  std::int16_t nheader;                          // 0: the product has no flow data header
  ShapeFlowHeader header;
};

// A picture that is being drawn, and what on.
struct ShapeCanvas {
  const ShapeState& state;
  tavd_hdc hdc;
};

// Gives a cleared picture its default rectangle and its family list.
void set_up(ShapeState& picture, std::int16_t db);

// Title, shape and connection of a product.
void read_product(ShapeState& picture, tavb_rec rec);
void read_measures(ShapeState& picture, tavb_rec rec);  // those without the title

// Lays the picture out in a rectangle.
void resize(ShapeState& picture, int left, int top, int right, int bottom);
void resize_default(ShapeState& picture);

// Pens and fonts live for the time of one paint. Those of a former one are deleted first.
void create_tools(ShapeState& picture);
void destroy_tools(ShapeState& picture);

// Title and sketch, with the tools.
void draw(const ShapeState& picture, tavd_hdc hdc);

// Draws what the shape number asks for; nothing for a number without a drawing.
void draw_shape(const ShapeCanvas& canvas);

}  // namespace tavd
