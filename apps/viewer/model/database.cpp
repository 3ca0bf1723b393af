#include "model/database.h"

#include <windows.h>

#include <set>

#include "tavd/attributes.h"
#include "tavd/tavb.h"
#include "tavd/tavdcore.h"
#include "tavd/tavdf.h"
#include "tavd/tavdsrv.h"

namespace viewer {
namespace {

constexpr int kTextChars = 256;

std::wstring trimmed(std::wstring text) {
  text.erase(text.find_last_not_of(L' ') + 1);
  return text;
}

std::string member_id(const FamilyMemberW& member) {
  return hosts::trimmed_id({member.objId, sizeof member.objId});
}

std::int16_t open_database(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    throw UserError(L"Cannot open \"" + path + L"\": there is no such file.");
  }
  if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    throw UserError(L"Cannot open \"" + path + L"\": it is a folder, and a product database is a file.");
  }
  const std::int16_t handle = tavdf_open_databasew(path.c_str(), 0);
  if (handle >= 0) return handle;
  const std::wstring reason = wide(tavdsrv_lasterror());
  throw UserError(L"Cannot open \"" + path + L"\": it is not a product database, or it cannot be read." +
                  (reason.empty() ? L"" : L"\n\n" + reason));
}

}  // namespace

Database::Database(const std::wstring& path) : path_(path) {
  tavdcore_initw(TAVD_LANGUAGE_ENGLISH, "", L"");
  handle_ = open_database(path);
}

Database::~Database() {
  tavdsrv_closedatabase(handle_);
}

Record Database::find(const RecordKey& key) const {
  return Record(tavbfindrec(handle_, key.class_id.c_str(), key.object_id.c_str(), TAVB_FIND_EXACT));
}

RecordKey Database::key(const Record& record) const {
  return hosts::key_of(handle_, record);
}

Listed Database::listed(const Record& record) const {
  wchar_t code[kTextChars] = {};
  wchar_t description[kTextChars] = {};
  tavdf_copyproductcodew(handle_, record.get(), code, kTextChars);
  tavdf_copyproductdescw(handle_, record.get(), description, kTextChars);
  const int mode = hosts::sizing_mode(handle_, record);
  return {key(record), trimmed(code), trimmed(description),
          mode == TAVD_SIZING_PATTERN || mode == TAVD_SIZING_LIST};
}

std::vector<std::string> Database::classes() const {
  std::vector<std::string> found = hosts::classes_of(handle_);
  std::erase_if(found, [](const std::string& class_id) { return !hosts::is_product_class(class_id); });
  return found;
}

std::vector<Listed> Database::products(const std::string& class_id) const {
  std::vector<Listed> all;
  std::set<std::string> members;
  Record record = hosts::first_of_class(handle_, class_id);
  for (; record; record = Record(tavbnextrec(handle_, record.get()))) {
    Listed product = listed(record);
    if (product.key.class_id != class_id) break;
    if (product.family) {
      const hosts::FamilyMembers family(handle_, product.key);
      for (std::int32_t i = 0; i < family.count(); ++i) members.insert(member_id(family.member(i)));
    }
    all.push_back(std::move(product));
  }
  std::erase_if(all, [&](const Listed& product) {
    return !product.family && members.count(product.key.object_id) != 0;
  });
  return all;
}

std::vector<Listed> Database::sizes(const RecordKey& family) const {
  const hosts::FamilyMembers list(handle_, family);
  std::vector<Listed> sizes;
  for (std::int32_t i = 0; i < list.count(); ++i) {
    const FamilyMemberW member = list.member(i);
    sizes.push_back({{family.class_id, member_id(member)}, member.pcode, member.descr, false});
  }
  return sizes;
}

std::wstring wide(const std::string& bytes) {
  const int size = static_cast<int>(bytes.size());
  // UTF-8 if it is; else the system's code page, which takes every byte.
  for (const UINT page : {UINT{CP_UTF8}, UINT{CP_ACP}}) {
    const DWORD flags = page == CP_UTF8 ? MB_ERR_INVALID_CHARS : 0;
    const int length = MultiByteToWideChar(page, flags, bytes.data(), size, nullptr, 0);
    if (length <= 0) continue;
    std::wstring text(static_cast<std::size_t>(length), L' ');
    MultiByteToWideChar(page, flags, bytes.data(), size, text.data(), length);
    return text;
  }
  return {};
}

}  // namespace viewer
