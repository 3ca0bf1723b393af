// Records of a product database in the hands of a host: handles that release themselves, keys, and the order
// in which records stand.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tavd/tavb.h"
#include "tavd/tavfm.h"

namespace hosts {

// Bytes of ids in the database, blank-padded.
inline constexpr std::size_t kClassChars = 3;
inline constexpr std::size_t kIdChars = 30;

// One record in memory, released at the end. May be empty.
class Record {
 public:
  Record() = default;
  explicit Record(tavb_rec rec) : rec_(rec) {}
  ~Record() { tavbreleaserec(rec_); }
  Record(Record&& other) noexcept : rec_(std::exchange(other.rec_, nullptr)) {}
  Record& operator=(Record&& other) noexcept {
    std::swap(rec_, other.rec_);
    return *this;
  }
  Record(const Record&) = delete;
  Record& operator=(const Record&) = delete;

  explicit operator bool() const { return rec_ != nullptr; }
  tavb_rec get() const { return rec_; }
  // For tavbinsertatt, which may move the record.
  tavb_rec* address() { return &rec_; }

 private:
  tavb_rec rec_ = nullptr;
};

// The key of a record in the database's bytes: the class, and the object id without trailing blanks.
struct RecordKey {
  std::string class_id;
  std::string object_id;
  auto operator<=>(const RecordKey&) const = default;
};

RecordKey key_of(std::int16_t db, const Record& record);

// The bytes up to the first zero, without trailing blanks.
std::string trimmed_id(std::string_view bytes);

// A class as the database stores it.
std::string padded_class(std::string_view class_id);

// The first record of all, and the first of a class or of one that comes after it; empty where there is none.
Record first_record(std::int16_t db);
Record first_of_class(std::int16_t db, std::string_view class_id);

// The classes that the database holds, in record order.
std::vector<std::string> classes_of(std::int16_t db);

// Whether records of this class are products: all are but the file header and the model records.
bool is_product_class(std::string_view class_id);

// The library's list of a family's sizes, released at the end.
class FamilyMembers {
 public:
  FamilyMembers(std::int16_t db, const RecordKey& family);
  ~FamilyMembers();
  FamilyMembers(const FamilyMembers&) = delete;
  FamilyMembers& operator=(const FamilyMembers&) = delete;

  std::int32_t count() const { return count_; }
  FamilyMemberW member(std::int32_t index) const;

 private:
  FamilyListW list_{};
  std::int32_t count_;
};

// How a record takes part in a family or a layered product, TAVD_SIZING_; 0 if the record says nothing.
int sizing_mode(std::int16_t db, const Record& record);

}  // namespace hosts
