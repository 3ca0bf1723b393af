// Arrays for every answer of tavdn_calculate, full of nonsense before a call.
#pragma once

#include <cstdint>
#include <vector>

#include "tavd/tavdn.h"

namespace manytest {

constexpr float kUnwritten = -12345.0F;
constexpr std::int32_t kNoCode = 12345;

struct Results {
  explicit Results(std::size_t n) {
    tavdn_results& out = record;
    out.size = sizeof out;
    for (auto* const codes : {&out.range_code, &out.position_code, &out.setting_code, &out.fan_code,
                              &out.fan_check, &out.lw_code, &out.dlw_code, &out.throw_code}) {
      *codes = integers.emplace_back(n, kNoCode).data();
    }
    for (auto* const numbers : {&out.dp_min, &out.dp_max, &out.position, &out.setting, &out.fan_total,
                                &out.fan_static, &out.fan_dynamic, &out.lpa, &out.throw_length}) {
      *numbers = floats.emplace_back(n, kUnwritten).data();
    }
    for (auto* const rows : {&out.lw, &out.dlw}) {
      *rows = floats.emplace_back(n * TAVD_BANDS, kUnwritten).data();
    }
  }

  tavdn_results record{};
  std::vector<std::vector<std::int32_t>> integers;
  std::vector<std::vector<float>> floats;
};

}  // namespace manytest
