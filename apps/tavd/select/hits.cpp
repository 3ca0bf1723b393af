#include "select/hits.h"

#include "base/text.h"
#include "product/product.h"

namespace tavdhost {

ShownHit::ShownHit(const tavdn_catalogue* catalogue, const tavdn_hit& shown)
    : hit(shown), flow(*tavdn_flowdata(tavdn_catalogue_variant(catalogue, shown.product, shown.variant))) {
  constexpr std::size_t kTextUnits = 256;
  const tavdn_listed& listed = *tavdn_catalogue_product(catalogue, shown.product);
  class_id = printable(listed.class_id);
  object_id = printable(listed.object_id);
  code = printable(to_utf8(listed.code, kTextUnits));
  description = printable(to_utf8(listed.description, kTextUnits));
  size = size_text(listed.duct);
  for (const auto& [name, value] : chosen_parameters(flow)) {
    parameters += (parameters.empty() ? "" : " ") + printable(name) + "=" + printable(value);
  }
}

}  // namespace tavdhost
