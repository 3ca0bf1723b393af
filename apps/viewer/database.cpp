#include "database.h"

#include <windows.h>

#include <cstring>
#include <set>

#include "tavd/attributes.h"
#include "tavd/tavb.h"
#include "tavd/tavdcore.h"
#include "tavd/tavdf.h"
#include "tavd/tavdsrv.h"
#include "tavd/tavfm.h"

namespace viewer {
namespace {

constexpr std::size_t kClassChars = 3;
constexpr std::size_t kIdChars = 30;
constexpr int kTextChars = 256;

std::string trimmed(const char* bytes, std::size_t room) {
  std::string text(bytes, strnlen(bytes, room));
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}

std::wstring trimmed(std::wstring text) {
  text.erase(text.find_last_not_of(L' ') + 1);
  return text;
}

// The file header and the models behind the products.
bool holds_products(const std::string& class_id) {
  return class_id != TAVD_FILEHEADER_CLASS && class_id != TAVD_MODEL_CLASS;
}

// The library's own list, released at the end.
class FamilyMembers {
 public:
  FamilyMembers(std::int16_t db, const ProductKey& family) {
    tavfm_initw(&list_);
    count_ = tavfm_readw(&list_, db, family.class_id.c_str(), family.object_id.c_str());
  }
  ~FamilyMembers() { tavfm_releasew(&list_); }
  FamilyMembers(const FamilyMembers&) = delete;
  FamilyMembers& operator=(const FamilyMembers&) = delete;

  int count() const { return count_; }
  FamilyMemberW member(int index) const {
    FamilyMemberW member{};
    tavfm_getw(&list_, index, &member);
    return member;
  }

 private:
  FamilyListW list_{};
  int count_ = 0;
};

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

Record Database::find(const ProductKey& key) const {
  return Record(tavbfindrec(handle_, key.class_id.c_str(), key.object_id.c_str(), TAVB_FIND_EXACT));
}

ProductKey Database::key(const Record& record) const {
  char class_id[8] = {};
  char object_id[32] = {};
  tavbgetID(handle_, record.get(), class_id, object_id);
  return {std::string(class_id, strnlen(class_id, kClassChars)), trimmed(object_id, kIdChars)};
}

Listed Database::listed(const Record& record) const {
  wchar_t code[kTextChars] = {};
  wchar_t description[kTextChars] = {};
  std::int16_t mode = 0;
  tavdf_copyproductcodew(handle_, record.get(), code, kTextChars);
  tavdf_copyproductdescw(handle_, record.get(), description, kTextChars);
  tavbcopyatt(handle_, record.get(), TAVD_ATT_SIZING_MODE, nullptr, &mode, sizeof mode);
  return {key(record), trimmed(code), trimmed(description),
          mode == TAVD_SIZING_PATTERN || mode == TAVD_SIZING_LIST};
}

std::vector<std::string> Database::classes() const {
  const std::string past_all_ids(kIdChars, '\xFF');
  std::vector<std::string> found;
  Record record(tavbfindrec(handle_, "\x01\x01\x01", "\x01", TAVB_FIND_FROM));
  std::string former;
  while (record) {
    const std::string class_id = key(record).class_id;
    if (class_id == former) break;  // an id of nothing but 0xFF would hold the walk up
    if (holds_products(class_id)) found.push_back(class_id);
    former = class_id;
    record = Record(tavbfindrec(handle_, class_id.c_str(), past_all_ids.c_str(), TAVB_FIND_FROM));
  }
  return found;
}

std::vector<Listed> Database::products(const std::string& class_id) const {
  std::vector<Listed> all;
  std::set<std::string> members;
  Record record(tavbfindrec(handle_, class_id.c_str(), "", TAVB_FIND_FROM));
  for (; record; record = Record(tavbnextrec(handle_, record.get()))) {
    Listed product = listed(record);
    if (product.key.class_id != class_id) break;
    if (product.family) {
      const FamilyMembers family(handle_, product.key);
      for (int i = 0; i < family.count(); ++i) members.insert(trimmed(family.member(i).objId, kIdChars));
    }
    all.push_back(std::move(product));
  }
  std::erase_if(all, [&](const Listed& product) {
    return !product.family && members.count(product.key.object_id) != 0;
  });
  return all;
}

std::vector<Listed> Database::sizes(const ProductKey& family) const {
  const FamilyMembers list(handle_, family);
  std::vector<Listed> sizes;
  for (int i = 0; i < list.count(); ++i) {
    const FamilyMemberW member = list.member(i);
    sizes.push_back({{family.class_id, trimmed(member.objId, kIdChars)}, member.pcode, member.descr, false});
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
