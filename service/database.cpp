#include "service/database.h"

#include <cstring>

#include "service/lasterror.h"
#include "tavd/attributes.h"

namespace tavdsrv {

namespace {

const Key& file_header_key() {
  static const Key key = make_key(TAVD_FILEHEADER_CLASS, TAVD_FILEHEADER_ID);
  return key;
}

}  // namespace

std::unique_ptr<Record> Database::find(const Key& key) {
  const std::lock_guard lock(mutex_);
  std::unique_ptr<Record> found;
  store_->find(key, [&](const Key& stored, Bytes body) {
    if (stored == key) found = std::make_unique<Record>(stored, body);
  });
  return found;
}

std::unique_ptr<Record> Database::find_at_or_after(const Key& key) {
  const std::lock_guard lock(mutex_);
  std::unique_ptr<Record> found;
  store_->find_at_or_after(key, [&](const Key& stored, Bytes body) {
    if (stored >= key) found = std::make_unique<Record>(stored, body);
  });
  return found;
}

std::unique_ptr<Record> Database::find_after(const Key& key) {
  const std::lock_guard lock(mutex_);
  if (auto record = ahead_.take_after(key, *store_)) return record;
  std::unique_ptr<Record> found;
  Key last = key;
  const std::size_t ahead = ahead_.wanted_after(key, *store_);
  std::size_t wanted = ahead;
  const auto take = [&](const Key& stored, Bytes body) {
    // In a damaged store the order may lie; a walk that went back would never end.
    if (stored <= last) return false;
    last = stored;
    if (found == nullptr) {
      found = std::make_unique<Record>(stored, body);
      ahead_.step(key, stored);
    } else {
      if (!ahead_.keep(stored, body, *store_)) return false;
      --wanted;
    }
    return wanted > 0;
  };
  store_->walk(key, ahead, std::ref(take));
  return found;
}

void Database::save(const Record& record) {
  change(record.key(), [&] {
    const Bytes body = record.packed();
    check_length(body);
    store_->save(record.key(), body);
  });
}

void Database::save(const Record& record, Bytes ahm) {
  change(record.key(), [&] {
    const Bytes body = record.packed();
    check_length(body);
    check_length(ahm);
    store_->save(record.key(), body, ahm);
  });
}

void Database::remove(const Key& key) {
  change(key, [&] { store_->remove(key); });
}

void Database::ahm(const Key& key, const Store::TakeBlock& take) {
  const std::lock_guard lock(mutex_);
  store_->ahm(key, take);
}

void Database::begin() {
  const std::lock_guard lock(mutex_);
  if (in_batch_) throw Failure(store_->name() + ": a group of changes is open already");
  store_->begin();
  in_batch_ = true;
}

void Database::commit() {
  const std::lock_guard lock(mutex_);
  if (!in_batch_) throw Failure(store_->name() + ": no group of changes is open");
  try {
    if (!batch_failure_.empty()) refuse_for_batch();
    store_->commit();
  } catch (...) {
    end_batch();
    throw;
  }
  in_batch_ = false;
}

void Database::rollback() {
  const std::lock_guard lock(mutex_);
  if (!in_batch_) throw Failure(store_->name() + ": no group of changes is open");
  end_batch();
}

bool Database::uses_utf8() {
  {
    const std::lock_guard lock(mutex_);
    if (encoding_.has_value() && encoding_->version_read == store_->version_read()) return encoding_->utf8;
  }
  const auto header = find(file_header_key());
  const std::lock_guard lock(mutex_);
  std::int16_t flag = 0;
  if (header != nullptr) {
    const auto value = header->find(TAVD_ATT_USES_UTF8);
    if (value.has_value() && value->size() >= sizeof flag) std::memcpy(&flag, value->data(), sizeof flag);
  }
  encoding_ = Encoding{flag == 1, store_->version_read()};
  return encoding_->utf8;
}

// Makes a change, inside a group of changes or durable at once.
template <typename Change>
void Database::change(const Key& key, Change&& change) {
  const std::lock_guard lock(mutex_);
  // The store may have rolled the whole group back; what came now would be durable on its own.
  if (!batch_failure_.empty()) refuse_for_batch();
  if (key == file_header_key()) encoding_.reset();
  ahead_.forget();
  try {
    change();
  } catch (const std::exception& problem) {
    if (in_batch_) batch_failure_ = problem.what();
    throw;
  }
}

void Database::check_length(Bytes bytes) const {
  if (bytes.size() <= kMostBytes) return;
  throw Failure(store_->name() + ": " + std::to_string(bytes.size()) + " bytes for one record, at most " +
                std::to_string(kMostBytes) + " can be stored");
}

void Database::end_batch() {
  store_->rollback();
  in_batch_ = false;
  batch_failure_.clear();
  ahead_.forget();
  encoding_.reset();
}

void Database::refuse_for_batch() const {
  throw Failure(batch_failure_ + "; the group's changes are dropped");
}

}  // namespace tavdsrv
