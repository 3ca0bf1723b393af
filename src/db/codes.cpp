// Product codes and product ids. One engine fills every template; the forms differ in widths and in what
// comes before and behind it.
#include <algorithm>
#include <cstddef>
#include <cstring>

#include "base/gwtext.h"
#include "codepage/codepage.h"
#include "db/codetemplate.h"
#include "db/encoding.h"
#include "tavd/attributes.h"
#include "tavd/codes.h"
#include "tavd/tavb.h"

namespace tavd {
namespace {

// Bytes of the buffers that lie between wide and narrow text.
constexpr std::size_t kTextRoom = 256;

// How much template a product id is made from, and how much id; bytes.
struct IdForm {
  std::int16_t template_bytes;
  std::int32_t id_bytes;
};
constexpr IdForm kFixedIdForm = {200, TAVD_PRODUCTID_CHARS - 1};
constexpr IdForm kSizedIdForm = {TAVD_ID_TEMPLATE_BYTES, TAVD_ID_TEMPLATE_BYTES};

DuctSize size_or_zero(const DuctSize* ds) {
  return ds != nullptr ? *ds : DuctSize{};
}

std::int16_t build_code(char* dest, std::int32_t destLen, const char* code_template, const DuctSize* ds1,
                        const DuctSize* ds2) {
  if (dest == nullptr || destLen <= 0) return TAVD_CODE_OK;
  return fill_code_template(dest, destLen, code_template != nullptr ? code_template : "", size_or_zero(ds1),
                            size_or_zero(ds2));
}

// Bytes a UTF-8 character has that begins with this byte; 1 for what begins none.
std::size_t utf8_length(unsigned char first) {
  if (first >= 0xC2 && first <= 0xDF) return 2;
  if (first >= 0xE0 && first <= 0xEF) return 3;
  if (first >= 0xF0 && first <= 0xF4) return 4;
  return 1;
}

// The length of a text without a character that its end divides.
std::size_t without_divided_character(const char* text, std::size_t length) {
  std::size_t first = length;
  while (first > 0 && length - first < 4) {
    const auto byte = static_cast<unsigned char>(text[--first]);
    if ((byte & 0xC0U) == 0x80U) continue;
    return utf8_length(byte) > length - first ? first : length;
  }
  return length;
}

// Converts a narrow text that was cut at `limit` bytes, and takes the trailing blanks off.
void widen_trimmed(unsigned page, const char* text, std::size_t limit, tavd_wchar* dest, std::int32_t room) {
  std::size_t length = strnlen(text, limit);
  if (page == codepage::kUtf8 && length == limit) length = without_divided_character(text, length);
  dest[codepage::widen(page, text, length, dest, static_cast<std::size_t>(room) - 1)] = 0;
  gwrtrimw(dest);
}

// Builds a code of `width` bytes of UTF-8 and hands it out as wide text.
std::int16_t build_wide_code(tavd_wchar* dest, std::int32_t room, std::int32_t width,
                             const tavd_wchar* code_template, const DuctSize* ds1, const DuctSize* ds2) {
  char tmpStruct[kTextRoom] = {};
  char tmpDest[kTextRoom] = {};
  if (code_template != nullptr) {
    codepage::narrow(codepage::kUtf8, code_template, codepage::length(code_template, kTextRoom), tmpStruct,
                     kTextRoom - 1);
  }
  const std::int16_t result = build_code(tmpDest, width, tmpStruct, ds1, ds2);
  widen_trimmed(codepage::kUtf8, tmpDest, static_cast<std::size_t>(width), dest, room);
  return result;
}

// Writes limit + 1 bytes, all that is behind the id zero.
void build_id(std::int16_t db, char* dest, std::int32_t limit, const IdForm& form, tavb_rec rec,
              const DuctSize* ds1, const DuctSize* ds2) {
  // One byte more than is written: texts that fill their room have no terminator.
  char szStruct[kTextRoom + 1] = {};
  char sID[kTextRoom + 1] = {};
  if (rec != nullptr) {
    const bool built =
        tavbcopyatt(db, rec, TAVD_ATT_ID_TEMPLATE, nullptr, szStruct, form.template_bytes) != nullptr &&
        build_code(sID, form.id_bytes, szStruct, ds1, ds2) == TAVD_CODE_OK;
    if (!built) tavbgetID(db, rec, nullptr, sID);  // 30 characters; what stands behind them stays
  }
  gwstrtrimcpy(dest, sID, limit);
}

// Hands out a product id of at most `limit` bytes as wide text. If the database's encoding is unknown nothing
// is converted: what stands in `dest` is kept, and cut at its end and its trailing blanks like any result.
void widen_id(std::int16_t db, const char* id, std::size_t limit, tavd_wchar* dest, std::int32_t room) {
  const std::int16_t usesUTF8 = uses_utf8(db);
  if (usesUTF8 == TAVD_TEXTS_UTF8) {
    widen_trimmed(codepage::kUtf8, id, limit, dest, room);
  } else if (is_default_encoding(usesUTF8)) {
    widen_trimmed(codepage::kDefault, id, limit, dest, room);
  } else {
    dest[codepage::length(dest, static_cast<std::size_t>(room) - 1)] = 0;
    gwrtrimw(dest);
  }
}

}  // namespace
}  // namespace tavd

using namespace tavd;  // the border below stands outside

int16_t tavd_build_code_ds2(char* dest, int32_t destLen, const char* codeTemplate, const DuctSize* ds1,
                            const DuctSize* ds2) {
  return build_code(dest, destLen, codeTemplate, ds1, ds2);
}

int16_t tavd_build_code_ds(char* dest, const char* codeTemplate, const DuctSize* ds1, const DuctSize* ds2) {
  return build_code(dest, TAVD_CODE_WIDTH, codeTemplate, ds1, ds2);
}

int16_t tavd_build_code_dsw2(tavd_wchar* dest, int32_t destLen, const tavd_wchar* codeTemplate,
                             const DuctSize* ds1, const DuctSize* ds2) {
  if (dest == nullptr || destLen <= 0) return TAVD_CODE_OK;
  // Bytes, not characters: the second half of the room keeps what the host has there.
  std::memset(dest, 0, static_cast<std::size_t>(destLen));
  return build_wide_code(dest, destLen, kTextRoom - 1, codeTemplate, ds1, ds2);
}

int16_t tavd_build_code_dsw(tavd_wchar* dest, const tavd_wchar* codeTemplate, const DuctSize* ds1,
                            const DuctSize* ds2) {
  if (dest == nullptr) return TAVD_CODE_OK;
  return build_wide_code(dest, TAVD_CODE_WIDE_CHARS, TAVD_CODE_WIDTH, codeTemplate, ds1, ds2);
}

int tavd_build_productId_ds2(int16_t db, char* dest, int32_t destLen, tavb_rec rec, const DuctSize* ds1,
                             const DuctSize* ds2) {
  if (dest == nullptr || destLen <= 0) return 0;
  build_id(db, dest, destLen - 1, kSizedIdForm, rec, ds1, ds2);
  return 0;
}

int tavd_build_productId_ds(int16_t db, char* dest, tavb_rec rec, const DuctSize* ds1, const DuctSize* ds2) {
  if (dest == nullptr) return 0;
  build_id(db, dest, TAVD_PRODUCTID_CHARS - 1, kFixedIdForm, rec, ds1, ds2);
  return 0;
}

int tavd_build_productId_dsw2(int16_t db, tavd_wchar* dest, int32_t destLen, tavb_rec rec,
                              const DuctSize* ds1, const DuctSize* ds2) {
  if (dest == nullptr || destLen <= 0) return 0;
  std::fill_n(dest, destLen, tavd_wchar{0});
  char tmpDest[kTextRoom];
  const int result = tavd_build_productId_ds2(db, tmpDest, sizeof tmpDest, rec, ds1, ds2);
  widen_id(db, tmpDest, sizeof tmpDest - 1, dest, destLen);
  return result;
}

int tavd_build_productId_dsw(int16_t db, tavd_wchar* dest, tavb_rec rec, const DuctSize* ds1,
                             const DuctSize* ds2) {
  if (dest == nullptr) return 0;
  char tmpDest[TAVD_PRODUCTID_CHARS];
  const int result = tavd_build_productId_ds(db, tmpDest, rec, ds1, ds2);
  widen_id(db, tmpDest, sizeof tmpDest - 1, dest, TAVD_PRODUCTID_WIDE_CHARS);
  return result;
}
