// Families of products, and how records hang together otherwise.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "product/database.h"
#include "tavd/attributes.h"
#include "tavd/types.h"

namespace tavdhost {

// A sizing mode in words, such as "main record of a family, by the * in its id".
std::string sizing_text(int mode);

// One size of a family; texts are UTF-8.
struct FamilySize {
  RecordKey key;
  std::string code, description, installation;
  DuctSize size;                    // all zero: not known
  std::vector<std::int16_t> shape;  // as stored: number, then dimensions in mm
};

struct Family {
  int mode;
  std::vector<FamilySize> sizes;     // in the order of the library's list
  std::vector<std::string> missing;  // named by the main record, but not in the database
};

// The family of the record, as the library lists it. A single product is its own one size.
Family read_family(const Database& database, const Record& record);

// Ids of the main records of the same class to whose families the record belongs.
std::vector<std::string> families_of(const Database& database, const RecordKey& key);

// Object id, of class "TVM", of the model record that a product names: without trailing blanks, empty if
// there is none.
std::string model_id(const Database& database, const Record& record);

inline constexpr const char* kModelClass = TAVD_MODEL_CLASS;
inline constexpr const char* kFileHeaderClass = TAVD_FILEHEADER_CLASS;
inline constexpr const char* kFileHeaderId = TAVD_FILEHEADER_ID;

}  // namespace tavdhost
