// A product as tavdn_prepare makes it: the record, and what is known from its tables alone.
#pragma once

#include "calc/calculations.h"
#include "tavd/flowdata.h"
#include "tavd/tavdn.h"
#include "tavd/types.h"

struct tavdn_product {
  tavdn_product(const FlowData& record, const DuctSize* size);

  const DuctSize* duct() const { return has_duct ? &duct_size : nullptr; }

  const FlowData fd;
  const bool has_duct;
  const DuctSize duct_size;
  bool has_throw_line;
  tavd::ThrowLine throw_line;  // of the value of the first parameter
};
