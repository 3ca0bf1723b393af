#include <algorithm>
#include <cmath>
#include <cstring>

#include "cases.h"

namespace recordings {
namespace {

// A value is padded with blanks and need not be terminated.
std::string text_of(const char (&value)[TAVD_PARAMETER_CHARS]) {
  std::string text(value, strnlen(value, TAVD_PARAMETER_CHARS));
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}

int rows(int count, int most) {
  return std::clamp(count, 0, most);
}

}  // namespace

void for_each_value(const FlowData& flow, const UseOfValue& use) {
  for (int index = 0; index < rows(flow.npar, TAVD_PARAMETERS); ++index) {
    const ParTable& parameter = flow.par[index];
    for (int row = 0; row < rows(parameter.count, TAVD_PARAMETER_ROWS); ++row) {
      use(parameter.name, text_of(parameter.table[row].value));
    }
  }
}

void for_each_throw_value(const FlowData& flow, const UseOfValue& use) {
  for (int row = 0; row < rows(flow.nparL2, TAVD_PARL2_ROWS); ++row) {
    use("G", text_of(flow.parL2[row].value));
  }
}

float middle(float lowest, float highest) {
  return std::sqrt(lowest * highest);
}

}  // namespace recordings
