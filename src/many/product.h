// A product as tavdn_prepare makes it: the record, and what is known from its tables alone.
#pragma once

#include "calc/calculations.h"
#include "many/levels.h"
#include "many/limits.h"
#include "many/positions.h"
#include "tavd/flowdata.h"
#include "tavd/tavdn.h"
#include "tavd/types.h"

struct tavdn_product {
  tavdn_product(const FlowData& record, const DuctSize* size);

  const DuctSize* duct() const { return has_duct ? &duct_size : nullptr; }

  const FlowData fd;
  const bool has_duct;
  const DuctSize duct_size;
  const tavd::Limits limits;
  const tavd::Positions positions;
  const tavd::Levels levels;
  bool has_throw_line;
  tavd::ThrowLine throw_line;  // of the value of the first parameter
};
