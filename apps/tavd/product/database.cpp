#include "product/database.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <map>
#include <utility>

#include "base/errors.h"
#include "base/paths.h"
#include "base/platform.h"
#include "base/text.h"
#include "product/languages.h"
#include "product/record_layout.h"
#include "tavd/attributes.h"
#include "tavd/tavd.h"
#include "tavd/tavdcore.h"
#include "tavd/tavdf.h"
#include "tavd/tavdsrv.h"

namespace tavdhost {
namespace {

constexpr std::size_t kMarketChars = 39;  // that the library's settings hold
constexpr std::size_t kNearIds = 5;       // shown at most

void start_library(const TextChoice& texts) {
  if (tavd_version_nmb(TAVD_INTERFACE_VERSION) != TAVD_INTERFACE_VERSION) {
    throw std::runtime_error("libtavd has another interface version than this program");
  }
  const std::int16_t language =
      texts.language.empty() ? language_of_market(texts.market) : language_number(texts.language);
  const bool fits = texts.market.size() <= kMarketChars;
  tavdcore_init(language, fits ? texts.market.c_str() : "", "");
  if (!texts.market.empty() && tavdcore_pcodeAttId() == TAVD_ATT_CODE_DEFAULT) {
    throw UserError("no market area " + in_quotes(texts.market) +
                    "; expected a code such as FIN, SWE or GBR");
  }
}

// The service would say the same of files, in fewer words.
void refuse_what_is_no_file(const std::string& path, Database::Open open) {
  std::error_code error;
  const auto status = std::filesystem::status(to_path(path), error);
  if (open == Database::Open::kExisting && !std::filesystem::exists(status)) {
    throw UserError("no database " + path_in_quotes(path) + ": " +
                    (error ? error.message() : std::string("there is no such file")));
  }
  if (std::filesystem::is_directory(status)) {
    throw UserError(path_in_quotes(path) + " is a folder, expected a product database");
  }
}

std::int16_t open_database(const std::string& path, Database::Open open) {
  if (!is_on_server(path)) refuse_what_is_no_file(path, open);
  const std::int16_t handle = open_database_file(path, open == Database::Open::kCreate ? 1 : 0);
  if (handle < 0) {
    const std::string reason = tavdsrv_lasterror();
    throw UserError("cannot open " + path_in_quotes(shown_name(path)) + " as a product database" +
                    (reason.empty() ? "" : ": " + printable(reason)));
  }
  return handle;
}

std::string joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + printable(name);
  return text;
}

}  // namespace

bool is_on_server(const std::string& name) {
  return name.starts_with(TAVB_SERVER_URI) || name.starts_with(TAVB_SERVER_HOST);
}

std::string shown_name(const std::string& name) {
  constexpr std::size_t kMostMore = 4;  // bytes, the terminator with them
  std::string shown(name.size() + kMostMore, '\0');
  const std::int32_t length =
      tavdsrv_shownname(name.c_str(), shown.data(), static_cast<std::int32_t>(shown.size()));
  shown.resize(static_cast<std::size_t>(std::max(length, 0)));
  return shown;
}

Transaction::Transaction(const Database& database) : database_(database) {
  if (tavdsrv_begin(database_.handle()) != 0) check_service();
  open_ = true;
}

Transaction::~Transaction() {
  if (open_) tavdsrv_rollback(database_.handle());
}

void Transaction::commit() {
  open_ = false;  // a commit that fails has dropped everything
  if (tavdsrv_commit(database_.handle()) != 0) check_service();
  // No save within a group can have a warning, and every command's last change is a group.
  const std::string warning = tavdsrv_lastwarning();
  if (!warning.empty()) std::cerr << "tavd: " << printable(database_.named_as_shown(warning)) << '\n';
}

void check_service() {
  const std::string reason = tavdsrv_lasterror();
  if (!reason.empty()) throw UserError(printable(reason));
}

Database::Database(const std::string& path, Open open, const TextChoice& texts, std::string shown)
    : path_(shown_name(path)), shown_(std::move(shown)) {
  start_library(texts);
  handle_ = open_database(path, open);
}

Database::~Database() {
  tavdsrv_closedatabase(handle_);
}

std::string Database::named_as_shown(const std::string& text) const {
  return shown_.empty() ? text : with_replaced(text, path_, shown_);
}

Record Database::find(std::string_view class_id, std::string_view object_id) const {
  const std::string id(trim_end(object_id));
  if (class_id.size() > hosts::kClassChars || id.empty() || id.size() > hosts::kIdChars) return {};
  return Record(tavbfindrec(handle_, hosts::padded_class(class_id).c_str(), id.c_str(), TAVB_FIND_EXACT));
}

Record Database::first() const {
  return hosts::first_record(handle_);
}

Record Database::next(const Record& record) const {
  return Record(tavbnextrec(handle_, record.get()));
}

RecordKey Database::key(const Record& record) const {
  return hosts::key_of(handle_, record);
}

std::vector<std::string> Database::classes() const {
  return hosts::classes_of(handle_);
}

Record Database::product(std::string_view class_id, std::string_view object_id) const {
  if (Record record = find(class_id, object_id)) return record;
  const std::vector<std::string> known = classes();
  const bool is_known = std::find(known.begin(), known.end(), hosts::padded_class(class_id)) != known.end();
  if (!is_known || class_id.size() > hosts::kClassChars) throw unknown_class(class_id);
  const std::string message =
      "no product " + in_quotes(trim_end(object_id)) + " of class " + in_quotes(class_id) + " in " + path_;
  const std::string near = joined(near_ids(class_id, object_id));
  throw UserError(message + (near.empty() ? "; tavd list shows what there is" : "; near it: " + near));
}

UserError Database::unknown_class(std::string_view class_id) const {
  std::vector<std::string> products = classes();
  std::erase_if(products, [](const std::string& name) { return !hosts::is_product_class(name); });
  const std::string known = joined(products);
  return UserError("no class " + in_quotes(class_id) + " in " + path_ +
                   (known.empty() ? "; it holds no products" : "; it has " + known));
}

std::vector<std::string> Database::near_ids(std::string_view class_id, std::string_view object_id) const {
  const std::string_view asked = trim_end(object_id);
  const std::size_t farthest = std::max<std::size_t>(2, asked.size() / 3);
  std::multimap<std::size_t, std::string> by_distance;
  Record record = hosts::first_of_class(handle_, class_id);
  for (; record; record = next(record)) {
    const RecordKey candidate = key(record);
    if (candidate.class_id != hosts::padded_class(class_id)) break;
    const std::string_view id = candidate.object_id;
    const bool begins = !asked.empty() && same_letters(id.substr(0, asked.size()), asked);
    const std::size_t away = begins ? 1 : edit_distance(asked.substr(0, hosts::kIdChars + 1), id);
    if (away <= farthest) by_distance.emplace(away, id);
    if (by_distance.size() > kNearIds) by_distance.erase(std::prev(by_distance.end()));
  }
  std::vector<std::string> ids;
  for (const auto& [away, id] : by_distance) ids.push_back(id);
  return ids;
}

}  // namespace tavdhost
