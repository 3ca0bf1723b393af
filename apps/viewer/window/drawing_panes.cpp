#include "window/drawing_panes.h"

#include "shared/drawings.h"
#include "tavd/L2dg.h"
#include "tavd/tavdg.h"
#include "tavd/tavdshapepic.h"

namespace viewer {
namespace {

constexpr int kNoList = 0;
constexpr float kNoFlow = -1.0f;  // outside every axis, so that no point is marked

// Where the platform refused the library's record of a class, one of ours takes its place; the
// procedure is the same.
constexpr const char* kOwnClasses[kDrawingCount] = {"TavdViewerFlow", "TavdViewerThrow", "TavdViewerShape"};

std::size_t place(Drawing drawing) {
  return static_cast<std::size_t>(drawing);
}

// The class of a drawing's windows.
const char* window_class(HINSTANCE module, Drawing drawing) {
  const hosts::LibraryDrawing& library = library_drawing(drawing);
  const char* own_class = kOwnClasses[place(drawing)];
  WNDCLASSEXA known{};
  known.cbSize = sizeof known;
  if (GetClassInfoExA(module, library.window_class, &known) != 0) return library.window_class;
  if (GetClassInfoExA(module, own_class, &known) != 0) return own_class;
  WNDCLASSEXA own{};
  own.cbSize = sizeof own;
  own.style = CS_HREDRAW | CS_VREDRAW;
  own.lpfnWndProc = reinterpret_cast<WNDPROC>(library.window_procedure);
  own.cbWndExtra = sizeof(void*);
  own.hInstance = module;
  own.hCursor = LoadCursor(nullptr, IDC_ARROW);
  own.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
  own.lpszClassName = own_class;
  RegisterClassExA(&own);
  return own_class;
}

}  // namespace

DrawingPanes::DrawingPanes(HINSTANCE module) : module_(module) {
  clear();
}

DrawingPanes::~DrawingPanes() {
  tavdg_release();
  L2dg_release();
  tavdshapepic_release();
}

void DrawingPanes::create(HWND host, int first_id) {
  for (const Drawing drawing : kDrawings) {
    const auto id = std::intptr_t{first_id} + static_cast<std::intptr_t>(drawing);
    windows_[place(drawing)] = CreateWindowExA(WS_EX_CLIENTEDGE, window_class(module_, drawing), "",
                                               WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS, 0, 0, 0, 0, host,
                                               reinterpret_cast<HMENU>(id), module_, nullptr);
  }
}

void DrawingPanes::start(HWND host, int sizes, std::int16_t db, const Record& family) {
  clear();
  db_ = db;
  tavdg_reset_parameters();
  L2dg_reset_parameters();
  tavdg_init(module_, db, family.get(), sizes, kNoFlow, kNoFlow);
  tavdg_fillsizeLB(host);
}

void DrawingPanes::build(const Record& product, const DrawingSettings& settings) {
  tavdg_reset_parameters();
  L2dg_reset_parameters();
  for (const Choice& choice : settings.choices) {
    tavdg_set_parameter(choice.name.c_str(), choice.value.c_str());
    L2dg_set_parameter(choice.name.c_str(), choice.value.c_str());
  }
  tavdg_set_xunit(settings.flow_unit);
  tavdg_set_yunit(settings.pressure_unit);
  set_point(settings.point);
  drawn_[place(Drawing::kFlow)] = tavdg_initdiagramdata(product.get()) == 0;
  repaint(Drawing::kFlow);

  build_throw(product, settings);

  tavdshapepic_init(module_, db_, product.get(), kNoList);
  drawn_[place(Drawing::kShape)] = static_cast<bool>(product);
  repaint(Drawing::kShape);
}

void DrawingPanes::move_point(const Record& product, const DrawingSettings& settings) {
  set_point(settings.point);
  repaint(Drawing::kFlow);
  build_throw(product, settings);
}

void DrawingPanes::clear() {
  tavdg_release();
  L2dg_release();
  tavdshapepic_release();
  tavdg_init_empty(module_, db_);
  L2dg_init_empty(module_, db_);
  tavdshapepic_init(module_, db_, nullptr, kNoList);
  drawn_ = {};
  for (const Drawing drawing : kDrawings) repaint(drawing);
}

// The flow of this diagram is given at its start alone; the parameter choices outlive that.
void DrawingPanes::build_throw(const Record& product, const DrawingSettings& settings) {
  bool& drawn = drawn_[place(Drawing::kThrow)];
  drawn = product && L2dg_init(module_, db_, product.get(), kNoList, settings.point.qv.value_or(kNoFlow),
                               0.0f, static_cast<std::int16_t>(settings.flow_unit)) == 0;
  repaint(Drawing::kThrow);
}

void DrawingPanes::set_point(const OperatingPoint& point) {
  tavdg_set_operation_point(point.qv.value_or(kNoFlow), point.dp.value_or(kNoFlow));
}

void DrawingPanes::repaint(Drawing drawing) {
  if (windows_[place(drawing)] != nullptr) InvalidateRect(windows_[place(drawing)], nullptr, TRUE);
}

}  // namespace viewer
