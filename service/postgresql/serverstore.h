// The store of a product database on a server.
#pragma once

#include <optional>
#include <string>

#include "service/postgresql/server.h"
#include "service/store.h"

namespace tavdsrv::postgresql {

class ServerStore final : public Store {
 public:
  // Throws Failure if the server cannot be reached, or has no product database of this name that this service
  // reads; with `create` one is made in a database that holds none.
  ServerStore(const std::string& name, const std::string& shown, bool create);

  const std::string& name() const override { return server_.shown(); }

  void find(const Key& key, const Take& take) override;
  void find_at_or_after(const Key& key, const Take& take) override;
  void walk(const Key& key, std::size_t ahead, const TakeNext& take) override;
  // The way to the server and back takes as long as some twenty usual records on it.
  std::size_t least_ahead() const override { return 16; }
  void ahm(const Key& key, const TakeBlock& take) override;

  void save(const Key& key, Bytes body) override;
  void save(const Key& key, Bytes body, Bytes ahm) override;
  void remove(const Key& key) override;

  void begin() override;
  void commit() override;
  void rollback() noexcept override;

  std::optional<std::string> state() override;
  std::optional<std::string> state_of_walk() override;
  // Asking takes a twentieth of it.
  std::chrono::microseconds trusted() const override { return std::chrono::milliseconds{1}; }
  unsigned version_read() const override { return version_read_; }

 private:
  Result read(const Statement& statement, std::span<const Bytes> arguments);
  void change(const Statement& statement, std::span<const Bytes> arguments);
  void take_first(const Statement& statement, const Key& key, const Take& take);
  bool walk_page(const Key& key, std::size_t ahead, const TakeNext& take);
  std::size_t rows_ahead(std::size_t wanted) const;
  void connect_again();
  void give_up_group(const std::string& reason);
  void end_transaction() noexcept;
  void note_state(const Result& result);
  void settle_commit(const std::string& transaction, const std::string& reason);
  std::string status_of(const std::string& transaction);

  Server server_;
  bool in_group_ = false;
  std::string group_lost_;        // why the open group's changes are gone; empty while they are not
  std::string last_state_;        // of the contents as they were read last; empty where nothing tells it
  unsigned version_read_ = 0;     // how often that was another than before
  std::size_t usual_length_ = 0;  // of a body, in the walk's last page
};

}  // namespace tavdsrv::postgresql
