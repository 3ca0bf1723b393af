// Records of an enhanced metafile as GDI writes them.
#pragma once

#include <windows.h>

#include <cstddef>
#include <optional>
#include <string>

namespace tavdhost {

template <typename Record>
const Record& as(const ENHMETARECORD* record) {
  return *reinterpret_cast<const Record*>(record);
}

inline const ENHMETAHEADER& header_of(const std::string& metafile) {
  return *reinterpret_cast<const ENHMETAHEADER*>(metafile.data());
}

// Calls `use` with each record behind the header.
template <typename Use>
void walk(const std::string& metafile, Use use) {
  for (std::size_t at = header_of(metafile).nSize; at + sizeof(EMR) <= metafile.size();) {
    const auto* record = reinterpret_cast<const ENHMETARECORD*>(metafile.data() + at);
    if (record->iType == EMR_EOF || record->nSize < sizeof(EMR) || record->nSize > metafile.size() - at) {
      return;
    }
    use(record);
    at += record->nSize;
  }
}

// A text, which GDI records in one of several forms.
struct TextRecord {
  POINTL at;
  bool is_narrow;
  const char* letters;  // a byte each, or two bytes each
  int count;

  const wchar_t* wide() const { return reinterpret_cast<const wchar_t*>(letters); }
};

// Nothing: it is another record.
std::optional<TextRecord> text_of(const ENHMETARECORD* record);

}  // namespace tavdhost
