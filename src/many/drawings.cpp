// The library's three drawings, each call with a state of its own.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>

#include "base/gwgdi.h"
#include "base/gwtext.h"
#include "base/held.h"
#include "diagram/flowdiagram.h"
#include "diagram/flowdiagram_build.h"
#include "diagram/flowdiagram_draw.h"
#include "diagram/throwdiagram.h"
#include "diagram/throwdiagram_build.h"
#include "diagram/throwdiagram_draw.h"
#include "many/product.h"
#include "shape/picture.h"
#include "tavd/attributes.h"
#include "tavd/tavb.h"
#include "tavd/tavdn.h"

namespace tavd {
namespace {

constexpr float kRoomDamping = 4.0F;  // dB, what a process of the exported functions begins with

// A record of options as far as the caller handed one over: `known` is false for one of another size.
template <typename Options>
Options read_options(const Options* options, bool* known) {
  Options read{};
  read.size = sizeof read;
  *known = options == nullptr || options->size == sizeof read;
  if (options != nullptr && *known) read = *options;
  return read;
}

// The state of a diagram for one drawing, cleared; it goes with its chart.
template <typename Diagram>
class Owned {
 public:
  Owned() : diagram_(new (std::nothrow) Diagram{}) {
    if (diagram_) set_up(*diagram_, TAVB_NO_DATABASE);
  }
  ~Owned() {
    if (diagram_) release(*diagram_);
  }
  Owned(const Owned&) = delete;
  Owned& operator=(const Owned&) = delete;

  Diagram* get() const { return diagram_.get(); }

 private:
  std::unique_ptr<Diagram> diagram_;
};

bool is_given(const tavdn_rectangle& r) {
  return r.left != 0 || r.top != 0 || r.right != 0 || r.bottom != 0;
}

template <typename Drawn>
void lay_out(Drawn& drawn, const tavdn_rectangle& r) {
  if (is_given(r)) resize(drawn, r.left, r.top, r.right, r.bottom);
}

void set_labels(FlowDiagram& dg, const tavdn_flow_options& options) {
  gwstrcpyfield(dg.LpA_label, options.LpA_label, sizeof dg.LpA_label);
  gwstrcpyfield(dg.damperpos_label, options.damperpos_label, sizeof dg.damperpos_label);
  const int labels =
      options.a_labels != nullptr ? std::clamp(options.na_labels, 0, static_cast<int>(TAVDG_A_LABELS)) : 0;
  for (; dg.nalabels < labels; ++dg.nalabels) {
    const tavdn_position_label& label = options.a_labels[dg.nalabels];
    dg.alabels[dg.nalabels].value = label.position;
    gwstrcpyfield(dg.alabels[dg.nalabels].text, label.text, sizeof dg.alabels->text);
  }
}

float positive(float value) {
  return value > 0.0F ? value : 0.0F;
}

void set_up(FlowDiagram& dg, const tavdn_flow_options& options) {
  dg.qv = options.qv;
  dg.dp = options.dp;
  dg.qvlimit1 = options.qvlimit1;
  dg.qvlimit2 = options.qvlimit2;
  set_xunit(dg, options.xunit);
  set_yunit(dg, options.yunit);
  dg.dptype = options.dptype == TAVDG_DP_STATIC ? TAVDG_DP_STATIC : TAVDG_DP_TOTAL;
  dg.lpmin = positive(options.lpmin);
  dg.lpmax = positive(options.lpmax);
  dg.lpstep = positive(options.lpstep);
  dg.roomdamp = options.roomdamp;
  if (options.resolution != 0) set_resolution(dg, options.resolution);
  set_labels(dg, options);
  if (options.titlew != nullptr) {
    gwwcscpyfield(dg.titlew, options.titlew, kChartTitleSize);
  } else {
    gwstrcpyfield(dg.title, options.title, kChartTitleSize);
  }
}

}  // namespace
}  // namespace tavd

using namespace tavd;  // the border below stands outside

int tavdn_draw_flow(const tavdn_product* product, const tavdn_flow_options* options, tavd_hdc surface) {
  bool known = false;
  tavdn_flow_options wanted = read_options(options, &known);
  if (product == nullptr || !known) return TAVDN_BAD_ARGUMENT;
  if (options == nullptr) wanted.roomdamp = kRoomDamping;
  const Owned<FlowDiagram> owned;
  FlowDiagram* const dg = owned.get();
  if (dg == nullptr) return TAVDN_NO_MEMORY;
  dg->flowdata = product->fd;
  set_up(*dg, wanted);
  if (!build_chart(*dg, wanted.titlew != nullptr)) return TAVDN_NOT_DRAWN;
  lay_out(*dg, wanted.rectangle);
  create_tools(*dg);
  draw(*dg, surface);
  destroy_tools(*dg);
  return TAVDN_OK;
}

int tavdn_draw_throw(const tavdn_product* product, const tavdn_throw_options* options, tavd_hdc surface) {
  bool known = false;
  const tavdn_throw_options wanted = read_options(options, &known);
  if (product == nullptr || !known) return TAVDN_BAD_ARGUMENT;
  const Owned<ThrowDiagram> owned;
  ThrowDiagram* const dg = owned.get();
  if (dg == nullptr) return TAVDN_NO_MEMORY;
  dg->flowdata = product->fd;
  dg->qv = wanted.qv;
  dg->xunit = held<std::int16_t>(std::int64_t{wanted.xunit});
  dg->xfactor = throw_flow_unit(dg->xunit).factor;
  gwstrcpyfield(dg->title, wanted.title, kChartTitleSize);
  if (!build_chart(*dg)) return TAVDN_NOT_DRAWN;
  lay_out(*dg, wanted.rectangle);
  ThrowChoices choices{};
  // A choice of a parameter keeps as much of its value.
  gwstrcpyfield(choices.parL2value, wanted.value, TAVD_PARAMETER_CHARS + 1);
  create_tools(*dg);
  draw(*dg, choices, surface);
  gwletgo(surface);  // the throw line leaves its tools selected
  destroy_tools(*dg);
  return TAVDN_OK;
}

void tavdn_read_shape(int16_t db, tavb_rec rec, tavdn_shape* shape) {
  if (shape == nullptr) return;
  *shape = {};
  ShapeState picture{};
  picture.db = db;
  read_measures(picture, rec);
  shape->nvalues = picture.nvalues;
  std::copy(std::begin(picture.values), std::end(picture.values), shape->values);
  shape->nheader = picture.nheader;
  shape->b = picture.header.b;
  shape->h = picture.header.h;
}

int tavdn_draw_shape(const tavdn_shape* shape, const tavdn_shape_options* options, tavd_hdc surface) {
  bool known = false;
  const tavdn_shape_options wanted = read_options(options, &known);
  if (shape == nullptr || !known) return TAVDN_BAD_ARGUMENT;
  ShapeState picture{};
  resize_default(picture);
  gwstrcpyfield(picture.title, wanted.title, TAVDSHAPEPIC_TITLE_CHARS);
  picture.nvalues = std::clamp<std::int16_t>(shape->nvalues, 0, kShapeWords);
  std::copy_n(shape->values, picture.nvalues, picture.values);
  picture.nheader = shape->nheader;
  picture.header.b = shape->b;
  picture.header.h = shape->h;
  lay_out(picture, wanted.rectangle);
  create_tools(picture);
  draw(picture, surface);
  destroy_tools(picture);
  return TAVDN_OK;
}
