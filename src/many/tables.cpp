// Single answers over arrays.
#include <algorithm>

#include "calc/calculations.h"
#include "many/arrays.h"
#include "many/product.h"
#include "many/roomlevels.h"
#include "many/throws.h"
#include "tavd/tavca.h"
#include "tavd/tavdn.h"

using namespace tavd;  // the border below stands outside

int tavdn_lpa(std::size_t n, const float* lw, float roomdamp, float* lpa) {
  if (!fits_memory(n)) return TAVDN_BAD_ARGUMENT;
  if (n == 0) return TAVDN_OK;
  if (lw == nullptr || lpa == nullptr) return TAVDN_BAD_ARGUMENT;
  room_levels(n, lw, roomdamp, lpa);
  return TAVDN_OK;
}

int tavdn_throw(const tavdn_product* product, const char* value, std::size_t n, const float* qv,
                float* length) {
  if (product == nullptr || !fits_memory(n)) return TAVDN_BAD_ARGUMENT;
  if (n == 0) return TAVDN_OK;
  if (qv == nullptr || length == nullptr) return TAVDN_BAD_ARGUMENT;
  ThrowLine line;
  if (!throw_line(product->fd, value, &line)) {
    std::fill_n(length, n, 0.0F);
    return TAVDN_OK;
  }
  throw_lengths(line, n, qv, length);
  return TAVDN_OK;
}

int tavdn_ductarea(std::size_t n, const int16_t* b, const int16_t* h, float* area) {
  if (!fits_memory(n)) return TAVDN_BAD_ARGUMENT;
  if (n == 0) return TAVDN_OK;
  if (b == nullptr || area == nullptr) return TAVDN_BAD_ARGUMENT;
  for (std::size_t i = 0; i < n; ++i) {
    const int16_t height = h != nullptr ? h[i] : int16_t{0};
    area[i] = tavca_ductarea_m2(b[i], height);
  }
  return TAVDN_OK;
}

int tavdn_endref(std::size_t n, const float* area, float* reflection) {
  if (!fits_memory(n)) return TAVDN_BAD_ARGUMENT;
  if (n == 0) return TAVDN_OK;
  if (area == nullptr || reflection == nullptr) return TAVDN_BAD_ARGUMENT;
  for (std::size_t i = 0; i < n; ++i) {
    for (int band = 0; band < TAVD_BANDS; ++band) *reflection++ = tavca_endref_A(band, area[i]);
  }
  return TAVDN_OK;
}
