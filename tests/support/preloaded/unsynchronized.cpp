// Loaded in front of a program: its folders cannot be synchronized, its files can.
#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace {

using Synchronize = int (*)(int);

int synchronize(int descriptor, const char* call) {
  struct stat status {};
  if (fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode)) {
    errno = EIO;
    return -1;
  }
  return reinterpret_cast<Synchronize>(dlsym(RTLD_NEXT, call))(descriptor);
}

}  // namespace

extern "C" [[gnu::visibility("default")]] int fsync(int descriptor) {
  return synchronize(descriptor, "fsync");
}

extern "C" [[gnu::visibility("default")]] int fdatasync(int descriptor) {
  return synchronize(descriptor, "fdatasync");
}
