// The handshake between a host and the library.
#include "tavd/tavd.h"

int tavd_version_nmb(int version) {
  return version == TAVD_INTERFACE_VERSION ? TAVD_INTERFACE_VERSION : TAVD_INTERFACE_REFUSED;
}
