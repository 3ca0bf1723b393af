// Whether the bytes of a record are what their attribute numbers promise.
#include <cmath>
#include <cstring>

#include "base/numbers.h"
#include "base/text.h"
#include "catalogue/attributes.h"
#include "check/check.h"
#include "product/codes_text.h"
#include "product/record_layout.h"
#include "tavd/attributes.h"
#include "tavd/codes.h"
#include "tavd/tavdf.h"
#include "tavd/tavfm.h"

namespace tavdhost {
namespace {

constexpr std::size_t kNameBytes = 9;  // of a parameter's name; more are cut
constexpr std::size_t kTemplateRoom = 256;

std::string counted(std::size_t count, const char* what) {
  return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

bool in_group(std::int16_t number, const char* group) {
  for (const GroupText& text : find_text_group(group)->texts) {
    if (text.number == number) return true;
  }
  return false;
}

// Characters that lists of sizes have room for; 0: all.
std::size_t list_limit(std::int16_t number) {
  if (in_group(number, "code")) return TAVFM_PCODE_CHARS - 1;
  return in_group(number, "description") ? TAVFM_DESCR_CHARS - 1 : 0;
}

void check_text(TextCodec& codec, std::int16_t number, const Attribute& layout, const std::string& bytes,
                Findings& findings) {
  const int charset = tavdf_charsetId(number);
  const auto text = codec.decode(charset, bytes);
  // What is no character is decoded as a stand-in, which does not give the same bytes again.
  if (!text || codec.encode(charset, *text) != bytes) {
    findings.add(number, 0, std::string("a text in ") + charset_name(charset) + " without NUL",
                 counted(bytes.size(), "byte") + " that are none: " + to_hex(bytes.substr(0, 8)) +
                     (bytes.size() > 8 ? "..." : ""));
    return;
  }
  const bool wide = layout.form == Form::kWide;
  const std::size_t length = wide ? utf16_length(*text) : bytes.size();
  const std::size_t limit = layout.limit;
  const char* unit = wide ? "character" : "byte";
  if (length > limit) {
    findings.add(number, 0, "at most " + counted(limit, unit), counted(length, unit));
  } else if (list_limit(number) != 0 && length > list_limit(number)) {
    findings.add(number, 0,
                 "at most " + counted(list_limit(number), unit) + ", as lists of sizes have room for",
                 counted(length, unit));
  }
}

void check_floats(std::int16_t number, const Attribute& layout, const std::string& bytes,
                  Findings& findings) {
  const std::size_t size = item_size(layout);
  for (std::size_t item = 0; item < bytes.size() / size; ++item) {
    std::size_t at = item * size;
    for (const Column& column : layout.columns) {
      float value = 0;
      if (column.type == ColumnType::kFloat) std::memcpy(&value, bytes.data() + at, sizeof value);
      if (!std::isfinite(value)) {
        findings.add(number, layout.form == Form::kRows ? item + 1 : 0,
                     std::string("a number as ") + column.name,
                     std::isnan(value) ? "not a number" : "infinity");
      }
      at += column_size(column.type);
    }
  }
}

void check_items(std::int16_t number, const Attribute& layout, const std::string& bytes, Findings& findings) {
  const std::size_t size = item_size(layout);
  const std::size_t items = bytes.size() / size;
  if (bytes.size() % size != 0) {
    findings.add(number, 0, "whole items of " + counted(size, "byte"), counted(bytes.size(), "byte"));
  } else if (items < layout.fewest || items > layout.limit) {
    const bool exact = layout.fewest == layout.limit;
    findings.add(number, 0, (exact ? "exactly " : "at most ") + counted(layout.limit, "item"),
                 counted(items, "item"));
  }
  check_floats(number, layout, bytes, findings);
}

std::vector<std::string> names_of(const std::string& text) {
  std::vector<std::string> names(1);
  for (const char c : text) {
    if (c == ',') {
      names.emplace_back();
    } else {
      names.back() += c;
    }
  }
  return names;
}

// A parameter needs a table and a name.
void check_parameters(const Entry& entry, Findings& findings) {
  std::size_t tables = 0;
  for (const std::int16_t number : kParameterTables) tables += entry.attributes.contains(number) ? 1 : 0;
  if (!entry.attributes.contains(kParameterTables[0]) && tables > 0) {
    findings.add(kParameterTables[0], 0, "the first parameter's table, as there is a second", "none");
    return;
  }
  const auto text = entry.attributes.find(TAVD_ATT_PAR_NAMES);
  const std::vector<std::string> names =
      text == entry.attributes.end() ? std::vector<std::string>{} : names_of(text->second);
  if (names.size() != tables) {
    findings.add(TAVD_ATT_PAR_NAMES, 0, counted(tables, "name") + ", one for each parameter table",
                 counted(names.size(), "name"));
  }
  for (const std::string& name : names) {
    if (trim_end(name).empty())
      findings.add(TAVD_ATT_PAR_NAMES, 0, "a name for each parameter", "an empty one");
    if (name.size() > kNameBytes) {
      findings.add(TAVD_ATT_PAR_NAMES, 0, "names of at most " + counted(kNameBytes, "byte"), in_quotes(name));
    }
  }
}

// The size of the second connection is not in the database: a template that works with any is good.
int template_result(const std::string& text, const DuctSize& size, std::string& built) {
  constexpr DuctSize kSecond[] = {{0, 100, 100}, {1, 100, 100}};
  int result = 0;
  for (const DuctSize& second : kSecond) {
    char room[kTemplateRoom];
    result = tavd_build_code_ds2(room, sizeof room, text.c_str(), &size, &second);
    built = std::string(trim_end({room, sizeof room}));
    if (result == 0) return 0;
  }
  return result;
}

void check_template(std::int16_t number, const std::string& text, const DuctSize& size, Findings& findings) {
  std::string built;
  const int result = template_result(text, size, built);
  if (result != 0) {
    findings.add(number, 0, "a template that suits a size of " + size_text(size) + " mm",
                 in_quotes(text) + ": " + template_text(result));
  } else if (number == TAVD_ATT_ID_TEMPLATE && built.size() > hosts::kIdChars) {
    findings.add(number, 0, "a product id of at most " + counted(hosts::kIdChars, "byte"), in_quotes(built));
  }
}

}  // namespace

void check_values(TextCodec& codec, const Entry& entry, Findings& findings) {
  for (const auto& [number, bytes] : entry.attributes) {
    const Attribute* layout = attribute_layout(number);
    if (layout == nullptr) continue;  // the host's own
    if (layout->form == Form::kText || layout->form == Form::kWide) {
      check_text(codec, number, *layout, bytes, findings);
    } else {
      check_items(number, *layout, bytes, findings);
    }
  }
  if (!is_layer(entry)) check_parameters(entry, findings);
}

void check_templates(TextCodec& codec, const Entry& entry, const DuctSize& size, Findings& findings) {
  if (size.b == 0) return;
  for (const auto& [number, bytes] : entry.attributes) {
    if (number != TAVD_ATT_ID_TEMPLATE && !in_group(number, "code")) continue;
    const auto text = codec.decode(tavdf_charsetId(number), bytes);
    if (text && text->find('{') != std::string::npos) check_template(number, *text, size, findings);
  }
}

}  // namespace tavdhost
