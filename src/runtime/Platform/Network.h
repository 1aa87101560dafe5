// Whether the machine is on a network: some interface other than the
// loopback is up and has an address.
#pragma once

#ifdef VELANT_ABOVE_RUNTIME
#error "the layers above the runtime reach the platform through the runtime's functions"
#endif

namespace platform {

bool network_connected();

}  // namespace platform
