#include "commands/calculated.h"

#include <span>
#include <utility>

#include "product/point_calculator.h"

namespace tavdhost {

Calculated calculate(Chosen chosen, const Amount& qv, std::optional<float> dp, const AnswerForm& form) {
  const Product& product = chosen.product;
  if (product.flow.nhdd == 0) return {std::move(chosen), {}, {}};
  const float flow = flow_of(product, qv);
  PointCalculator calculator(product, answers_of(product, dp.has_value()), form.room_damping);
  calculator.calculate({&flow, 1}, dp ? std::span(&*dp, 1) : std::span<const float>());
  const OperatingPoint point = calculator.point(0);
  std::string typed = typed_text(product, qv, form.units);
  return {std::move(chosen), point, std::move(typed)};
}

}  // namespace tavdhost
