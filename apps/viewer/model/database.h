// An open product database, its records, and which of them are products that a user picks.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "shared/records.h"

namespace viewer {

// An error that the user reads as one sentence.
class UserError : public std::runtime_error {
 public:
  explicit UserError(std::wstring text) : std::runtime_error("viewer"), text_(std::move(text)) {}
  const std::wstring& text() const { return text_; }

 private:
  std::wstring text_;
};

using hosts::Record;
using hosts::RecordKey;

// A product as a list shows it.
struct Listed {
  RecordKey key;
  std::wstring code, description;
  bool family = false;  // has sizes
};

class Database {
 public:
  // Throws UserError if there is no such file, or it is no product database.
  explicit Database(const std::wstring& path);
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  std::int16_t handle() const { return handle_; }
  const std::wstring& path() const { return path_; }

  Record find(const RecordKey& key) const;
  RecordKey key(const Record& record) const;
  Listed listed(const Record& record) const;

  // Classes that hold products, in order.
  std::vector<std::string> classes() const;

  // Families of a class, and its products that are no size of any family, in the order of their ids.
  std::vector<Listed> products(const std::string& class_id) const;

  // Sizes of a family in the order of the library's list; a product without sizes is its own one.
  std::vector<Listed> sizes(const RecordKey& family) const;

 private:
  std::int16_t handle_;
  std::wstring path_;
};

// Text of the service or of an id as wide characters, whatever its bytes.
std::wstring wide(const std::string& bytes);

}  // namespace viewer
