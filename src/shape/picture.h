// The shape picture: a title and a dimensioned sketch of one product. One per process; its state is one
// static record.
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

extern ShapeState shp;

// Draws what the shape number asks for, with the tools; nothing for a number without a drawing.
void draw_shape(tavd_hdc hdc);

// Registers the window class, once in a process.
void register_shape_class(tavd_hmodule module);

}  // namespace tavd
