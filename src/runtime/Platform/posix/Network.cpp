#include "runtime/Platform/Network.h"

#include <ifaddrs.h>
#include <net/if.h>
#include <sys/socket.h>

namespace platform {

bool network_connected() {
  ifaddrs* interfaces = nullptr;
  if (::getifaddrs(&interfaces) != 0) return false;
  bool connected = false;
  for (const ifaddrs* i = interfaces; i && !connected; i = i->ifa_next) {
    const bool up = (i->ifa_flags & IFF_UP) && (i->ifa_flags & IFF_RUNNING) && !(i->ifa_flags & IFF_LOOPBACK);
    connected = up && i->ifa_addr && (i->ifa_addr->sa_family == AF_INET || i->ifa_addr->sa_family == AF_INET6);
  }
  ::freeifaddrs(interfaces);
  return connected;
}

}  // namespace platform
