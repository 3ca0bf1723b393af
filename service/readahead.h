// The records that a walk is about to ask for, read together with the one before them.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "service/connection.h"
#include "service/record.h"

namespace tavdsrv {

// A step of a walk takes the file's locks and gives them back, which costs many times what reading a record
// does. So a walk that has come some way reads several records in one step. They are handed out only while
// the file is as it was when they were read. That is looked at again after kTrusted, so a walk sees what
// another process has saved at most so much later than it would step by step.
class ReadAhead {
 public:
  static constexpr std::chrono::microseconds kTrusted{20};

  // The record after `key`, if it is here and the file has not changed since.
  std::unique_ptr<Record> take_after(const Key& key, const Connection& connection);

  // A walk reads from `from` on to `to`, and forgets what is left of former steps. Answers how many records
  // behind `to` are worth reading now: never more than a quarter of those that the walk has met, so that
  // short walks read little that nobody asks for.
  std::size_t step(const Key& from, const Key& to);

  // Keeps the record that follows, as it is stored; false if there is no room for it. Only while the
  // statement that reads it is being stepped: no other process can change the file then.
  bool keep(const Key& key, Bytes body, const Connection& connection);

  void forget();

 private:
  using Clock = std::chrono::steady_clock;

  bool still_true(const Connection& connection);

  struct Row {
    Key key;
    std::size_t end;  // of its body in bodies_; it begins where the one before ends
  };

  // Records are made of these when they are handed out, one at a time: none holds memory longer than it must.
  std::vector<Row> rows_;
  std::vector<unsigned char> bodies_;
  std::size_t next_ = 0;                  // the first of rows_ that was not handed out
  std::optional<std::uint32_t> changes_;  // the file's change counter when they were read
  Clock::time_point checked_;             // when it was last looked at
  std::optional<Key> last_;               // where the walk is
  std::size_t met_ = 0;                   // records that it has met
};

}  // namespace tavdsrv
