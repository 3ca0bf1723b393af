#include "processes.h"

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

// Does its part of the job for every byte that comes, and sends it back.
[[noreturn]] void work(int socket, const Processes::Job& job, std::size_t part) {
  // All else that is open goes: a pipe that this process held too would not end for its reader.
  constexpr int kOnlyOne = STDERR_FILENO + 1;
  dup2(socket, kOnlyOne);
  close_range(kOnlyOne + 1, ~0U, 0);
  char told;
  while (read(kOnlyOne, &told, 1) == 1) {
    job(part);
    if (write(kOnlyOne, &told, 1) != 1) break;
  }
  _exit(0);
}

}  // namespace

Processes::Processes(std::size_t count, const Job& job) {
  for (std::size_t part = 0; part < count; ++part) {
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) give_up("bench: no socket");
    const pid_t id = fork();
    if (id < 0) give_up("bench: no process");
    if (id == 0) work(ends[1], job, part);
    close(ends[1]);
    processes_.push_back({id, ends[0]});
  }
}

Processes::~Processes() {
  for (const Process& process : processes_) {
    close(process.socket);  // which ends it
    waitpid(process.id, nullptr, 0);
  }
}

void Processes::run() {
  for (const Process& process : processes_) {
    if (write(process.socket, "", 1) != 1) give_up("bench: a process cannot be told to begin");
  }
  for (const Process& process : processes_) {
    char done;
    if (read(process.socket, &done, 1) != 1) give_up("bench: a process has ended");
  }
}

}  // namespace bench
