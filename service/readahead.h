// The records that a walk is about to ask for, read together with the one before them.
#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "service/record.h"
#include "service/store.h"

namespace tavdsrv {

// A step of a walk takes a file's locks and gives them back, or goes to a server and back, which costs many
// times what reading a record does. So a walk that has come some way reads several records in one step. They
// are handed out only while the contents are as they were when they were read. That is looked at again as
// often as the store says, so a walk sees what another process has saved at most so much later than it would
// step by step.
class ReadAhead {
 public:
  // The record after `key`, if it is here and nothing has changed since.
  std::unique_ptr<Record> take_after(const Key& key, Store& store);

  // How many records behind the one after `key` are worth reading now: never more than a quarter of those
  // that the walk has met, or what the store has at hardly any cost, so that short walks read little that
  // nobody asks for.
  std::size_t wanted_after(const Key& key, const Store& store) const;

  // A walk reads from `from` on to `to`, and forgets what is left of former steps.
  void step(const Key& from, const Key& to);

  // Keeps the record that follows, as it is stored; false if there is no room for it. Only while the store's
  // walk hands it out.
  bool keep(const Key& key, Bytes body, Store& store);

  void forget();

 private:
  using Clock = std::chrono::steady_clock;

  bool still_true(Store& store);
  std::size_t met_until(const Key& key) const { return key == last_ ? met_ : 0; }

  struct Row {
    Key key;
    std::size_t end;  // of its body in bodies_; it begins where the one before ends
  };

  // Records are made of these when they are handed out, one at a time: none holds memory longer than it must.
  std::vector<Row> rows_;
  std::vector<unsigned char> bodies_;
  std::size_t next_ = 0;              // the first of rows_ that was not handed out
  std::optional<std::string> state_;  // of the store's contents when they were read
  Clock::time_point checked_;         // when it was last looked at
  std::optional<Key> last_;           // where the walk is
  std::size_t met_ = 0;               // records that it has met
};

}  // namespace tavdsrv
