#include "many/product.h"

#include <new>

tavdn_product::tavdn_product(const FlowData& record, const DuctSize* size)
    : fd(record), has_duct(size != nullptr), duct_size(has_duct ? *size : DuctSize{}), throw_line{} {
  has_throw_line = tavd::throw_line(fd, fd.par[0].value, &throw_line);
}

int tavdn_prepare(const FlowData* fd, const DuctSize* duct, tavdn_product** product) {
  if (product == nullptr) return TAVDN_BAD_ARGUMENT;
  *product = nullptr;
  if (fd == nullptr) return TAVDN_BAD_ARGUMENT;
  *product = new (std::nothrow) tavdn_product(*fd, duct);
  return *product != nullptr ? TAVDN_OK : TAVDN_NO_MEMORY;
}

void tavdn_release(tavdn_product* product) {
  delete product;
}

const FlowData* tavdn_flowdata(const tavdn_product* product) {
  return product != nullptr ? &product->fd : nullptr;
}
