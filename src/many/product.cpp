#include "many/product.h"

#include <new>

tavdn_product::tavdn_product(const FlowData& record, const DuctSize* size)
    : fd(record),
      has_duct(size != nullptr),
      duct_size(has_duct ? *size : DuctSize{}),
      limits(fd),
      positions(fd),
      levels(fd, limits, duct()),
      throw_line{} {
  has_throw_line = tavd::throw_line(fd, fd.par[0].value, &throw_line);
}

int tavdn_prepare(const FlowData* fd, const DuctSize* duct, tavdn_product** product) {
  if (product == nullptr) return TAVDN_BAD_ARGUMENT;
  *product = nullptr;
  if (fd == nullptr) return TAVDN_BAD_ARGUMENT;
  try {
    *product = new tavdn_product(*fd, duct);
  } catch (const std::bad_alloc&) {
    return TAVDN_NO_MEMORY;
  }
  return TAVDN_OK;
}

void tavdn_release(tavdn_product* product) {
  delete product;
}

const FlowData* tavdn_flowdata(const tavdn_product* product) {
  return product != nullptr ? &product->fd : nullptr;
}
