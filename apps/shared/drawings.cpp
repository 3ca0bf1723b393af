#include "shared/drawings.h"

#include "tavd/L2dg.h"
#include "tavd/tavdg.h"
#include "tavd/tavdshapepic.h"

namespace hosts {
namespace {

constexpr std::uint32_t kBlack = 0x000000;
constexpr std::uint32_t kGrey = 0x808080;
constexpr std::uint32_t kRed = 0x0000FF;
constexpr std::uint32_t kBlue = 0xFF0000;
constexpr int kThin = kDiagramPlane / 1000;
constexpr int kWide = kDiagramPlane / 500;

}  // namespace

constexpr PenName kOperatingPoint = {kBlue, kThin, "Operating point"};
constexpr PenName kFlowLimits = {kRed, 2 * kWide, "Flow limits"};

namespace {

constexpr PenName kFlowPens[] = {
    {kBlack, kThin, "Axes"},
    {kBlack, kThin, "Curves"},
    {kGrey, kThin, "Curves between"},
    {kRed, kWide, "Sound levels"},
    kFlowLimits,
    kOperatingPoint,
};

constexpr PenName kThrowPens[] = {
    {kBlack, kThin, "Axes"},
    {kRed, kWide, "Throw length"},
    kOperatingPoint,
};

}  // namespace

const LibraryDrawing kFlowDrawing = {"Flow diagram",
                                     TAVDG_WINDOW_CLASS,
                                     tavdg_diagram_proc,
                                     kDiagramPlane,
                                     kDiagramPlane,
                                     false,
                                     tavdg_create_drawing_tools,
                                     tavdg_draw_diagram,
                                     tavdg_destroy_drawing_tools,
                                     kFlowPens};

const LibraryDrawing kThrowDrawing = {"Throw length diagram",
                                      L2DG_WINDOW_CLASS,
                                      L2dg_diagram_proc,
                                      kDiagramPlane,
                                      kDiagramPlane,
                                      false,
                                      L2dg_create_drawing_tools,
                                      L2dg_draw_diagram,
                                      L2dg_destroy_drawing_tools,
                                      kThrowPens};

const LibraryDrawing kShapeDrawing = {"Sketch",
                                      TAVDSHAPEPIC_WINDOW_CLASS,
                                      tavdshapepic_picproc,
                                      TAVDSHAPEPIC_WIDTH,
                                      TAVDSHAPEPIC_HEIGHT,
                                      true,
                                      tavdshapepic_create_drawing_tools,
                                      tavdshapepic_draw,
                                      tavdshapepic_destroy_drawing_tools,
                                      {}};

}  // namespace hosts
