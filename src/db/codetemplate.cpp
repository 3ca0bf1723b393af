#include "db/codetemplate.h"

#include <algorithm>
#include <cstdio>

#include "base/gwtext.h"
#include "tavd/codes.h"

namespace tavd {
namespace {

// The numbers that a field can ask for.
struct Dimension {
  char letter;
  bool of_round_duct;
  std::int16_t DuctSize::*size;
};
constexpr Dimension kDimensions[] = {
    {'D', true, &DuctSize::b}, {'B', false, &DuctSize::b}, {'H', false, &DuctSize::h}};

struct Unit {
  char name[3];
  int millimetres;
};
constexpr Unit kUnits[] = {{"mm", 1}, {"cm", 10}, {"dm", 100}};

struct Field {
  int value = 0;  // mm
  int digits = 0;
  int unit = 1;  // mm
};

// Reads the letter and the connection behind it. This and read_format read on from `*at` and leave it on the
// first character that they did not use.
std::int16_t read_dimension(const char** at, const DuctSize& ds1, const DuctSize& ds2, Field* field) {
  const char letter = gwtoupper(**at);
  if (letter == '\0') return TAVD_CODE_BAD_SIZE;
  const char behind = *++*at;
  const bool connection = behind >= '1' && behind <= '9';
  if (!connection && behind != ':' && behind != '}') return TAVD_CODE_BAD_LETTER;
  const DuctSize& ds = connection && behind != '1' ? ds2 : ds1;
  for (const Dimension& dimension : kDimensions) {
    if (dimension.letter != letter) continue;
    if (dimension.of_round_duct != (ds.shape == TAVD_DUCT_ROUND)) return TAVD_CODE_BAD_SIZE;
    field->value = ds.*dimension.size;
    return TAVD_CODE_OK;
  }
  return TAVD_CODE_BAD_LETTER;
}

// `*at` is on the ':' or the connection behind the letter.
std::int16_t read_format(const char** at, Field* field) {
  do {
    ++*at;
  } while (**at == ':');
  if (**at == '}') return TAVD_CODE_OK;
  if (**at == '\0') return TAVD_CODE_UNCLOSED;
  if (**at >= '0' && **at <= '9') {
    field->digits = **at - '0';
    ++*at;
    if (**at == '\0') return TAVD_CODE_DIGITS_AT_END;
  }
  for (const Unit& unit : kUnits) {
    if ((*at)[0] != unit.name[0] || (*at)[1] != unit.name[1]) continue;
    field->unit = unit.millimetres;
    *at += 2;
    return **at == '}' ? TAVD_CODE_OK : TAVD_CODE_UNCLOSED;
  }
  return TAVD_CODE_BAD_UNIT;
}

// Reads a field from its letter to behind its '}'. The first thing that is wrong is reported, so a letter
// that does not suit the duct goes before anything behind it.
std::int16_t read_field(const char** at, const DuctSize& ds1, const DuctSize& ds2, Field* field) {
  std::int16_t result = read_dimension(at, ds1, ds2, field);
  if (result == TAVD_CODE_OK && **at != '}') result = read_format(at, field);
  if (result == TAVD_CODE_OK) ++*at;
  return result;
}

// Prints a field's number and returns how many characters had room.
std::int32_t print_field(const Field& field, char* dest, std::int32_t room) {
  char sznum[32];
  // With a precision of 0 the number 0 prints as nothing.
  const int length =
      std::snprintf(sznum, sizeof sznum, "%*.*d", field.digits, field.digits, field.value / field.unit);
  const std::int32_t printed = std::min<std::int32_t>(length, room);
  std::copy_n(sznum, printed, dest);
  return printed;
}

}  // namespace

std::int16_t fill_code_template(char* dest, std::int32_t destLen, const char* code_template,
                                const DuctSize& ds1, const DuctSize& ds2) {
  std::fill_n(dest, destLen, ' ');
  const char* at = code_template;
  std::int32_t written = 0;
  while (written < destLen && *at != '\0') {
    if (*at != '{') {
      dest[written++] = *at++;
      continue;
    }
    ++at;
    Field field;
    const std::int16_t result = read_field(&at, ds1, ds2, &field);
    if (result != TAVD_CODE_OK) return result;
    written += print_field(field, dest + written, destLen - written);
  }
  return TAVD_CODE_OK;
}

}  // namespace tavd
