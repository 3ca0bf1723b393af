// Where records are kept: what the service asks of a file, or of a server.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "service/ids.h"
#include "service/record.h"

namespace tavdsrv {

// Packed records in the order of their keys, each with an ahm block or without. Calls come one at a time.
// Those that can fail throw Failure.
class Store {
 public:
  // What is done with what was found; key and bytes are valid until it returns.
  using Take = std::function<void(const Key&, Bytes body)>;
  using TakeNext = std::function<bool(const Key&, Bytes body)>;  // false ends the walk
  using TakeBlock = std::function<void(Bytes)>;

  Store() = default;
  virtual ~Store() = default;
  Store(const Store&) = delete;
  Store& operator=(const Store&) = delete;

  // What messages call it, in UTF-8.
  virtual const std::string& name() const = 0;

  virtual void find(const Key& key, const Take& take) = 0;
  virtual void find_at_or_after(const Key& key, const Take& take) = 0;
  // The record after `key` and, where `take` wants them, up to `ahead` records behind that, in order. A
  // failure behind the first one ends the walk as if `take` had.
  virtual void walk(const Key& key, std::size_t ahead, const TakeNext& take) = 0;
  // So many records a walk may as well read at once, when it takes a second step.
  virtual std::size_t least_ahead() const = 0;
  virtual void ahm(const Key& key, const TakeBlock& take) = 0;

  // Each is done whole or not at all: durable when it returns, or in the group that is open.
  virtual void save(const Key& key, Bytes body) = 0;
  virtual void save(const Key& key, Bytes body, Bytes ahm) = 0;  // an empty block removes the stored one
  virtual void remove(const Key& key) = 0;

  // A group of changes. One whose commit failed is open until it is rolled back.
  virtual void begin() = 0;
  virtual void commit() = 0;
  virtual void rollback() noexcept = 0;

  // Stands for the contents as they are now: each change that anybody commits makes it another. Nothing if it
  // cannot be told.
  virtual std::optional<std::string> state() = 0;
  // That of the contents, or of earlier ones, from which `walk` hands out; asked only while it does.
  virtual std::optional<std::string> state_of_walk() = 0;
  // What was read is taken for the contents for so long without asking for their state again.
  virtual std::chrono::microseconds trusted() const = 0;
  // Becomes another number when what was read last shows a change of somebody else.
  virtual unsigned version_read() const = 0;
};

}  // namespace tavdsrv
