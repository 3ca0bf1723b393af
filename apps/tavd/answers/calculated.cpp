#include "answers/calculated.h"

#include <utility>

#include "product/point_calculator.h"

namespace tavdhost {

Calculated calculate(Chosen chosen, const Amount& qv, std::optional<float> dp, const AnswerForm& form) {
  const Product& product = chosen.product;
  if (product.flow.nhdd == 0) return {std::move(chosen), {}, {}};
  const OperatingPoint point = calculated_point(product, flow_of(product, qv), dp, form.room_damping);
  std::string typed = typed_text(product, qv, form.units);
  return {std::move(chosen), point, std::move(typed)};
}

}  // namespace tavdhost
