#include "worker.h"

#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace bench {
namespace {

[[noreturn]] void give_up(const char* what) {
  std::perror(what);
  std::exit(2);
}

[[noreturn]] void work(int socket, const std::function<void()>& job) {
  // All else that is open goes: a pipe that this process held too would not end for its reader.
  constexpr int kOnlyOne = STDERR_FILENO + 1;
  dup2(socket, kOnlyOne);
  close_range(kOnlyOne + 1, ~0U, 0);
  char told;
  while (read(kOnlyOne, &told, 1) == 1) {
    job();
    if (write(kOnlyOne, &told, 1) != 1) break;
  }
  _exit(0);
}

}  // namespace

Worker::Worker(const std::function<void()>& job) {
  int ends[2];
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) give_up("bench: no socket to a process");
  child_ = fork();
  if (child_ < 0) give_up("bench: no process");
  if (child_ == 0) work(ends[1], job);
  close(ends[1]);
  socket_ = ends[0];
}

Worker::~Worker() {
  close(socket_);  // which ends the process
  waitpid(child_, nullptr, 0);
}

void Worker::begin() {
  if (write(socket_, "", 1) != 1) give_up("bench: a process is not to be told anything");
}

void Worker::finish() {
  char done;
  if (read(socket_, &done, 1) != 1) give_up("bench: a process does not answer");
}

}  // namespace bench
