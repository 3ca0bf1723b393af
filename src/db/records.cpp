// Reading a product record: its duct size, its shape and its texts.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>

#include "base/gwfile.h"
#include "codepage/codepage.h"
#include "db/ids.h"
#include "db/texts.h"
#include "tavd/attributes.h"
#include "tavd/tavb.h"
#include "tavd/tavdcore.h"
#include "tavd/tavdf.h"

namespace tavd {
namespace {

// Whether the service opens a database of this name on a server, where no file tells that there is none.
template <typename Character>
bool is_on_server(const Character* name) {
  const auto begins_with = [name](std::string_view beginning) {
    for (std::size_t i = 0; i < beginning.size(); ++i) {
      if (name[i] != static_cast<Character>(beginning[i])) return false;
    }
    return true;
  };
  return begins_with(TAVB_SERVER_URI) || begins_with(TAVB_SERVER_HOST);
}

// Capacities with which the sources of the duct size are read, in words.
constexpr int kFlowHeaderWords = 11;
constexpr int kOldHeaderWords = 10;

// What a shape description that is too short is completed with, mm.
constexpr std::int16_t kDamperFirst = 50;
constexpr std::int16_t kDamperLength = 500;
constexpr std::int16_t kDiameter = 200;

// Where a product code is looked for behind the market's own attribute, in this order.
constexpr std::int16_t kCodeAttributes[] = {TAVD_ATT_CODE_DEFAULT, TAVD_ATT_CODE_SECOND, TAVD_ATT_CODE_THIRD};

constexpr std::int32_t kNarrowFormRoom = 256;  // wide characters

// Reads an attribute of int16 items into a local array. Words that it does not have stay 0.
template <std::size_t kWords>
bool copy_words(std::int16_t db, tavb_rec rec, std::int16_t attribute, std::int16_t (&words)[kWords]) {
  return tavbcopyatt(db, rec, attribute, nullptr, words, static_cast<std::int16_t>(sizeof words)) != nullptr;
}

DuctSize round_size(std::int16_t diameter) {
  return {TAVD_DUCT_ROUND, diameter, diameter};
}

std::int16_t word(int value) {
  return static_cast<std::int16_t>(value);  // wraps
}

// The older form of a box with a grille, in the order of the newer one. Words behind its eight are not read.
void rewrite_box(std::int16_t* shape) {
  const std::int16_t old[8] = {shape[0], shape[1], shape[2], shape[3],
                               shape[4], shape[5], shape[6], shape[7]};
  const std::int16_t rewritten[TAVDF_SHAPE_MIN_WORDS] = {
      TAVD_SHAPE_BOX, old[3], old[1], word(old[1] / 2), old[1], old[2], old[4], old[5], old[6], old[7]};
  std::memcpy(shape, rewritten, sizeof rewritten);
}

// Reads a text attribute in wide form, in the way that its number is stored. `capacity` is in bytes.
bool copy_text(std::int16_t db, tavb_rec rec, std::int16_t attribute, tavd_wchar* dest,
               std::int32_t capacity) {
  return tavbcopywsz(db, rec, attribute, dest, capacity, tavdf_charsetId(attribute)) != nullptr;
}

// The last source of a product code: the object id. The walk that takes the blanks off starts one place
// behind the id, at the NUL of the clearing, and ends there at once, so that the blanks stay: hosts get all
// 30 characters.
void copy_object_id(std::int16_t db, tavb_rec rec, tavd_wchar* dest, std::int32_t destLen) {
  char objId[kIdRoom] = {};
  tavbgetID(db, rec, nullptr, objId);
  for (std::size_t i = kIdChars; i > 0 && objId[i] == ' '; --i) objId[i] = '\0';
  const std::size_t room = static_cast<std::size_t>(destLen) - 1;
  dest[codepage::widen(codepage::kDefault, objId, kIdChars, dest, room)] = 0;
}

// All three narrow texts are the product code.
void copy_narrow_code(std::int16_t db, tavb_rec rec, char* dest, std::int32_t destLen) {
  if (dest == nullptr || destLen <= 0) return;
  std::fill_n(dest, destLen, '\0');
  tavd_wchar code[kNarrowFormRoom] = {};
  tavdf_copyproductcodew(db, rec, code, kNarrowFormRoom);
  codepage::narrow(codepage::kDefault, code, codepage::length(code, kNarrowFormRoom), dest,
                   static_cast<std::size_t>(destLen) - 1);
}

}  // namespace

void copy_plain_text(std::int16_t db, tavb_rec rec, std::int16_t attribute, tavd_wchar* dest,
                     std::int32_t destLen) {
  if (dest == nullptr || destLen <= 0) return;
  std::fill_n(dest, destLen, tavd_wchar{0});
  if (rec == nullptr || attribute == 0) return;
  const std::int64_t capacity = (std::int64_t{destLen} - 1) * 2;
  constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max() - 1;
  copy_text(db, rec, attribute, dest, static_cast<std::int32_t>(std::min(capacity, kMost)));
}

void copy_product_code(std::int16_t db, tavb_rec rec, std::int16_t market, tavd_wchar* dest,
                       std::int32_t destLen) {
  if (dest == nullptr || destLen <= 0) return;
  // The byte length is a 16-bit number. It never exceeds the real room, and where it starts again at 0
  // nothing but the terminator is written.
  const auto bytes = static_cast<std::uint16_t>(2U * static_cast<std::uint32_t>(destLen));
  dest[0] = 0;
  std::fill_n(dest, bytes / 2, tavd_wchar{0});
  if (rec == nullptr) return;

  const std::int32_t capacity = std::max(bytes - 2, 0);
  if (market != 0 && copy_text(db, rec, market, dest, capacity)) return;
  for (const std::int16_t attribute : kCodeAttributes) {
    if (copy_text(db, rec, attribute, dest, capacity)) return;
  }
  copy_object_id(db, rec, dest, destLen);
}

}  // namespace tavd

using namespace tavd;  // the border below stands outside

int16_t tavdf_open_database(const char* dbPath, int32_t mode) {
  if (dbPath == nullptr || (mode == 0 && !is_on_server(dbPath) && !gwfile_exists(dbPath)))
    return TAVDF_NO_DATABASE;
  return tavbopendatabase(tavdcore_vlkFilename(), dbPath, mode);
}

int16_t tavdf_open_databasew(const tavd_wchar* dbPath, int32_t mode) {
  if (dbPath == nullptr || (mode == 0 && !is_on_server(dbPath) && !gwfile_existsw(dbPath)))
    return TAVDF_NO_DATABASE;
  return tavbopendatabasew(tavdcore_vlkFilenamew(), dbPath, mode);
}

int32_t tavdf_load_ductsize(int16_t db, tavb_rec rec, DuctSize* ds) {
  if (ds == nullptr) return TAVDF_OTHER_SIZE;
  *ds = {};
  if (rec == nullptr) return TAVDF_OTHER_SIZE;

  int16_t add[kFlowHeaderWords] = {};
  if (copy_words(db, rec, TAVD_ATT_FLOW_HEADER, add)) {
    *ds = add[2] == 0 ? round_size(add[1]) : DuctSize{TAVD_DUCT_RECTANGULAR, add[1], add[2]};
    return 0;
  }
  int16_t hdd[kOldHeaderWords] = {};
  if (copy_words(db, rec, TAVD_ATT_OLD_HEADER, hdd)) {
    *ds = round_size(hdd[1]);
    return TAVDF_OTHER_SIZE;
  }
  int16_t d[TAVD_DIAMETER_ITEMS] = {};
  if (copy_words(db, rec, TAVD_ATT_DIAMETERS, d)) *ds = round_size(d[0]);
  return TAVDF_OTHER_SIZE;
}

int16_t tavdf_load_shapedata(int16_t db, tavb_rec rec, const DuctSize* ds, int16_t* shapedata,
                             int16_t maxwords) {
  if (rec == nullptr || shapedata == nullptr) return 0;
  constexpr int kMostWords = std::numeric_limits<int16_t>::max() / 2;  // the service counts bytes in 16 bits
  const int16_t room = std::max<int16_t>(maxwords, 0);
  const int capacity = 2 * std::min<int>(room, kMostWords);
  int16_t nsh = 0;
  tavbcopyatt(db, rec, TAVD_ATT_SHAPE_DATA, &nsh, shapedata, static_cast<int16_t>(capacity));
  if (nsh <= 0) return 0;
  tavdf_check_shapedata(shapedata, &nsh, ds);
  return std::min(nsh, room);
}

int32_t tavdf_check_shapedata(int16_t* shapedata, int16_t* nsh, const DuctSize* ds) {
  if (shapedata == nullptr || nsh == nullptr) return 0;
  switch (shapedata[0]) {
    case TAVD_SHAPE_OLD_BOX:
      rewrite_box(shapedata);
      *nsh = TAVDF_SHAPE_MIN_WORDS;
      break;
    case TAVD_SHAPE_DAMPER:
      if (*nsh < 3 || shapedata[2] < 1) {
        shapedata[2] = kDamperLength;
        if (*nsh < 2) shapedata[1] = kDamperFirst;
        *nsh = 3;
      }
      break;
    case TAVD_SHAPE_HEATER:
    case TAVD_SHAPE_FILTER:
      if (*nsh < 2 || shapedata[1] < 1) {
        shapedata[1] = kDiameter;
        *nsh = 2;
      }
      break;
    case TAVD_SHAPE_CASING_BY_MARGINS:
      if (ds != nullptr) {
        shapedata[0] = TAVD_SHAPE_CASING;
        shapedata[2] = word(ds->b + 2 * shapedata[2]);
        shapedata[3] = word(ds->h + 2 * shapedata[3]);
      }
      break;
    case TAVD_SHAPE_ROUND_CASING_BY_MARGIN:
      if (ds != nullptr) {
        shapedata[0] = TAVD_SHAPE_ROUND_CASING;
        shapedata[2] = word(ds->b + 2 * shapedata[2]);
      }
      break;
    default:
      break;
  }
  return 0;
}

int32_t tavdf_load_installationdef(int16_t db, tavb_rec rec, char* buffer, int32_t capacity) {
  if (buffer == nullptr) return TAVDF_NO_TEXT;
  // The buffer goes along even where there is no room in it: without one the service would hand out a block.
  const int32_t room = std::clamp<int32_t>(capacity, 0, std::numeric_limits<int16_t>::max());
  if (rec != nullptr &&
      tavbcopyatt(db, rec, TAVD_ATT_INSTALLATION, nullptr, buffer, static_cast<int16_t>(room)) != nullptr) {
    return 0;
  }
  if (room > 0) buffer[0] = '\0';
  return TAVDF_NO_TEXT;
}

void tavdf_copyproductcodew(int16_t db, tavb_rec rec, tavd_wchar* dest, int32_t destLen) {
  copy_product_code(db, rec, tavdcore_pcodeAttId(), dest, destLen);
}

void tavdf_copyproductdescw(int16_t db, tavb_rec rec, tavd_wchar* dest, int32_t destLen) {
  copy_plain_text(db, rec, tavdcore_pdescAttId(), dest, destLen);
}

void tavdf_copyweblinkw(int16_t db, tavb_rec rec, tavd_wchar* dest, int32_t destLen) {
  copy_plain_text(db, rec, tavdcore_weblinkAttId(), dest, destLen);
}

void tavdf_copyproductcode(int16_t db, tavb_rec rec, char* dest, int32_t destLen) {
  copy_narrow_code(db, rec, dest, destLen);
}

void tavdf_copyproductdesc(int16_t db, tavb_rec rec, char* dest, int32_t destLen) {
  copy_narrow_code(db, rec, dest, destLen);
}

void tavdf_copyweblink(int16_t db, tavb_rec rec, char* dest, int32_t destLen) {
  copy_narrow_code(db, rec, dest, destLen);
}
