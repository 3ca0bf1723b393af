// Lines of equal sound level that a picture shows well, for pictures whose levels nobody has asked for.
#pragma once

#include "drawing/picture.h"
#include "product/database.h"
#include "product/product.h"

namespace tavdhost {

// The lowest level of a damper's lines and the step between them at which no label stands on another text or
// beside the diagram, dB(A); 0: what the diagram chooses by itself, also where nothing else is better.
struct Levels {
  float lowest, step;
};
Levels legible_levels(const Database& database, const Record& record, const Product& product,
                      PictureSize size);

}  // namespace tavdhost
