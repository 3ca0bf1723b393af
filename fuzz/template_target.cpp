// Hostile templates of product codes and product ids, expanded narrow and wide into rooms of every size.
#include <algorithm>
#include <vector>

#include "fuzz/input.h"
#include "fuzz/records.h"
#include "tavd/tavd.h"

namespace {

using fuzz::Input;
using fuzz::Records;

constexpr std::int16_t kAttTemplate = 1511;
constexpr std::int16_t kAttUsesUtf8 = 1049;

DuctSize size_from(Input& input) {
  return {input.number<std::int16_t>(), input.number<std::int16_t>(), input.number<std::int16_t>()};
}

// Rooms lie on the heap and are exactly as long as is said, so that the sanitizer sees each byte beside them.
void build_codes(const std::string& text, std::int32_t room, const DuctSize* ds1, const DuctSize* ds2) {
  std::vector<char> narrow(static_cast<std::size_t>(room));
  tavd_build_code_ds2(narrow.data(), room, text.c_str(), ds1, ds2);
  std::vector<char> field(TAVD_CODE_WIDTH);
  tavd_build_code_ds(field.data(), text.c_str(), ds1, ds2);
  std::vector<tavd_wchar> wide_template(text.begin(), text.end());
  wide_template.push_back(0);
  std::vector<tavd_wchar> wide(static_cast<std::size_t>(room));
  tavd_build_code_dsw2(wide.data(), room, wide_template.data(), ds1, ds2);
  wide.resize(TAVD_CODE_WIDE_CHARS);
  tavd_build_code_dsw(wide.data(), wide_template.data(), ds1, ds2);
}

void build_ids(const Records& records, std::int32_t room, const DuctSize* ds1, const DuctSize* ds2) {
  std::vector<char> narrow(static_cast<std::size_t>(room));
  tavd_build_productId_ds2(records.db(), narrow.data(), room, records.product(), ds1, ds2);
  narrow.resize(TAVD_PRODUCTID_CHARS);
  tavd_build_productId_ds(records.db(), narrow.data(), records.product(), ds1, ds2);
  std::vector<tavd_wchar> wide(static_cast<std::size_t>(room));
  tavd_build_productId_dsw2(records.db(), wide.data(), room, records.product(), ds1, ds2);
  wide.resize(TAVD_PRODUCTID_WIDE_CHARS);
  tavd_build_productId_dsw(records.db(), wide.data(), records.product(), ds1, ds2);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  const DuctSize first = size_from(input);
  const DuctSize second = size_from(input);
  const std::int32_t room = input.number<std::uint8_t>();
  const auto flags = input.number<std::uint8_t>();
  const DuctSize* ds1 = (flags & 1) == 0 ? &first : nullptr;
  const DuctSize* ds2 = (flags & 2) == 0 ? &second : nullptr;
  const std::string text = input.rest();
  build_codes(text, room, ds1, ds2);

  const std::string utf8(1, static_cast<char>(flags >> 2 & 3));
  const std::string bytes =
      fuzz::begin_record("ASD", "AB-1") + fuzz::attribute(kAttTemplate, text.substr(0, UINT16_MAX)) +
      fuzz::begin_record("000", "FILEHEADER") + fuzz::attribute(kAttUsesUtf8, utf8 + std::string(1, '\0'));
  Input record_input(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  const Records records(record_input);
  build_ids(records, room, ds1, ds2);
  DuctSize read = {};
  std::string editable = text;
  ewads_sscanf(editable.data(), &read);
  return 0;
}
