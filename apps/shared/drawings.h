// The three drawings that the library makes, one of each kind at a time, as a host has them drawn.
#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "tavd/tavdg.h"
#include "tavd/types.h"

namespace hosts {

// A pen of a drawing and what is drawn with it. Pens of one look stand in the order in which they draw.
struct PenName {
  std::uint32_t colour;  // 0x00BBGGRR
  int width;             // in the units of the plane
  const char* name;
};

// The drawing is in a plane of logical units that a window stretches over the picture.
struct LibraryDrawing {
  const char* name;          // as a heading
  const char* window_class;  // whose windows paint the drawing; null if none do
  std::intptr_t (*window_procedure)(tavd_hwnd, unsigned int, std::uintptr_t, std::intptr_t);
  int plane_width, plane_height;
  bool keeps_proportions;              // as high as the picture, and in the middle of it
  std::function<void()> create_tools;  // pens and fonts for the next draw()
  std::function<void(tavd_hdc)> draw;
  std::function<void()> destroy_tools;
  std::span<const PenName> pens;
};

// What host and product have marked in a diagram.
extern const PenName kOperatingPoint;  // of both diagrams
extern const PenName kFlowLimits;      // of the flow diagram

inline constexpr int kDiagramPlane = TAVDG_EXTENT;

extern const LibraryDrawing kFlowDrawing;   // of the state that tavdg_ functions set
extern const LibraryDrawing kThrowDrawing;  // L2dg_
extern const LibraryDrawing kShapeDrawing;  // tavdshapepic_

}  // namespace hosts
