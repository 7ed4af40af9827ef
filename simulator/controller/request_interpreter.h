#pragma once

#include <string>
#include <string_view>

#include "simulator/driver/simulated_devices.h"

namespace touch::simulator {

/// The answer to a request, or the reason for its refusal.
struct RequestAnswer {
  bool done = false;
  std::string text;
};

/// Carries out a request in the grammar of requests.h.
RequestAnswer carryOutRequest(SimulatedDevices& devices, std::string_view request);

}  // namespace touch::simulator
