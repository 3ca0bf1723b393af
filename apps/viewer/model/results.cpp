#include "model/results.h"

#include <algorithm>
#include <iterator>

#include "shared/codes.h"
#include "shared/kinds.h"
#include "shared/numbers.h"
#include "tavd/tavca.h"

namespace viewer {
namespace {

constexpr const wchar_t* kRange = L" – ";
constexpr const wchar_t* kBandNames[TAVD_BANDS] = {L"63", L"125", L"250", L"500", L"1k", L"2k", L"4k", L"8k"};

class Lines {
 public:
  Lines(const Product& product, const Unit& flow, const Unit& pressure)
      : product_(product),
        flow_(product.flow.isvelocity != 0 ? velocity_unit() : flow),
        pressure_(pressure) {}

  void product();
  void pressures(float qv);
  void damper(float qv, float dp);
  void fan(float qv, std::optional<float> dp);
  void throw_length(float qv, const std::string& value);
  void sound(float qv, float dp, float room_damping);

  std::vector<ResultLine> take() { return std::move(lines_); }

 private:
  void add(std::wstring label, std::wstring text) {
    if (!text.empty()) lines_.push_back({std::move(label), {std::move(text)}});
  }
  void add_bands(std::wstring label, const float (&levels)[TAVD_BANDS]);
  std::wstring range(double low, double high, const Unit& unit) const {
    return fixed(hosts::from_base(low, unit), unit.decimals) + kRange + with_unit(high, unit);
  }

  const Product& product_;
  const Unit flow_, pressure_;
  std::vector<ResultLine> lines_;
};

void Lines::product() {
  const FlowData& flow = product_.flow;
  add(L"Size", size_text(product_.size));
  add(L"Kind", kind_text(product_));
  if (!has_flow_data(product_)) return;
  add(L"Flow limits", range(flow.qvmin, flow.qvmax, flow_));
  add(L"Pressure limits", range(flow.dpmin, flow.dpmax, pressure_));
}

void Lines::pressures(float qv) {
  float lowest = 0;
  float highest = 0;
  if (tavca_minmaxdptot(&product_.flow, qv, &lowest, &highest) != 0) {
    add(L"Pressure", L"the product has no pressure law");
  } else if (lowest < highest || highest < lowest) {
    add(L"Pressure range", range(lowest, highest, pressure_));
  } else {
    add(L"Pressure drop", with_unit(lowest, pressure_));
  }
}

void Lines::damper(float qv, float dp) {
  float position = 0;
  const FlowData& flow = product_.flow;
  int code = tavca_damper_pos(&flow, qv, dp, &position);
  const std::wstring meaning = wide(hosts::damper_text(code));
  add(L"Setting", hosts::has_position(code) ? fixed(position, 2) + L" (" + meaning + L")" : meaning);
  code = tavca_damper_pos_fixed(&flow, qv, dp, &position);
  if (!hosts::has_position(code)) return;
  add(L"Nearest fixed setting",
      fixed(position, 2) + L" (" + with_unit(tavca_dptot_damperpos(&flow, qv, position), pressure_) + L")");
}

void Lines::fan(float qv, std::optional<float> dp) {
  float total = 0;
  float fan_static = 0;
  float dynamic = 0;
  const int code = tavca_fan_dp(&product_.flow, qv, &total, &fan_static, &dynamic);
  add(L"Fan delivers",
      code == 0 ? with_unit(total, pressure_) + L" total, " + with_unit(fan_static, pressure_) + L" static"
                : wide(hosts::fan_text(code)));
  if (dp) add(L"Fan point", wide(hosts::fan_check_text(tavca_fan_op_check(&product_.flow, qv, *dp))));
}

void Lines::throw_length(float qv, const std::string& value) {
  if (product_.flow.nqvL2 <= 0 && product_.flow.nparL2 <= 0) return;
  const float length = tavca_L2_isothermal(&product_.flow, qv, value.c_str());
  add(L"Throw length", length > 0 ? fixed(length, 2) + L" m" : L"not calculated");
}

void Lines::sound(float qv, float dp, float room_damping) {
  const FlowData& flow = product_.flow;
  float lw[TAVD_BANDS] = {};
  const bool loud = flow.nlw > 0 && tavca_lw(&flow, qv, dp, lw, &product_.size) == 0;
  float attenuation[TAVD_BANDS] = {};
  tavca_dlw(&flow, qv, dp, attenuation);
  const bool damps = std::ranges::any_of(attenuation, [](float level) { return level > 0; });
  const std::wstring damping = room_damping == hosts::kRoomDamping
                                   ? L""
                                   : L", room damping " + wide(hosts::brief(room_damping)) + L" dB";
  if (loud) add(L"Sound level in the room", fixed(tavca_LpA(lw), 1) + L" dB(A)" + damping);
  if (!loud && flow.nlw > 0) add(L"Sound level", L"not in the sound table");
  if (!loud && !damps) return;
  lines_.push_back({L"Octave band, Hz", {std::begin(kBandNames), std::end(kBandNames)}});
  if (loud) add_bands(L"Sound power, dB", lw);
  if (damps) add_bands(L"Attenuation, dB", attenuation);
}

void Lines::add_bands(std::wstring label, const float (&levels)[TAVD_BANDS]) {
  ResultLine line{std::move(label), {}};
  for (const float level : levels) line.cells.push_back(fixed(level, 1));
  lines_.push_back(std::move(line));
}

}  // namespace

std::vector<ResultLine> results_of(const Product& product, const OperatingPoint& point,
                                   const std::string& throw_value, const Unit& flow, const Unit& pressure) {
  Lines lines(product, flow, pressure);
  lines.product();
  if (!has_flow_data(product) || !point.qv) return lines.take();
  const float qv = *point.qv;
  lines.pressures(qv);
  if (hosts::is_damper(product.flow) && point.dp) lines.damper(qv, *point.dp);
  if (hosts::is_fan(product.flow)) lines.fan(qv, point.dp);
  lines.throw_length(qv, throw_value);
  if (point.dp || hosts::has_fixed_pressure(product.flow)) {
    lines.sound(qv, point.dp.value_or(0.0f), point.room_damping);
  }
  return lines.take();
}

std::wstring text_of(const std::vector<ResultLine>& lines) {
  std::wstring text;
  for (const ResultLine& line : lines) {
    text += line.label;
    for (const std::wstring& cell : line.cells) text += L'\t' + cell;
    text += L"\r\n";
  }
  return text;
}

std::wstring remark_of(const Product& product, const OperatingPoint& point) {
  const FlowData& flow = product.flow;
  if (!has_flow_data(product)) return L"This product has no flow data.";
  if (!point.qv) return L"Type a flow.";
  if (*point.qv < flow.qvmin || *point.qv > flow.qvmax) return L"The flow is outside the product's limits.";
  if (!point.dp)
    return hosts::has_fixed_pressure(flow) ? L"" : L"Type a pressure for setting and sound level.";
  if (*point.dp < flow.dpmin || *point.dp > flow.dpmax) {
    return L"The pressure is outside the product's limits.";
  }
  return {};
}

}  // namespace viewer
