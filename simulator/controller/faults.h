#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string_view>

namespace touch::simulator {

/// What can be made to go wrong with a controller.
enum class Fault : std::uint8_t {
  noAnswer,
  slowAnswer,
  shortReply,
  garbledReply,
  lostBytes,
  noisyReports,
  unplugged,
  openFails,
  storeFails,
  errorReturns,
};

struct FaultName {
  Fault fault;
  std::string_view name;
};

inline constexpr std::array faultNames{
    FaultName{Fault::noAnswer, "no-answer"},      // deaf and mute: nothing is carried out either
    FaultName{Fault::slowAnswer, "slow-answer"},  // later than anybody waits for
    FaultName{Fault::shortReply, "short-reply"},  // only the first half of each reply
    FaultName{Fault::garbledReply, "garbled-reply"},  // all but the first and last byte are wrong
    FaultName{Fault::lostBytes, "lost-bytes"},        // every third byte of a reply
    FaultName{Fault::noisyReports,
              "noisy-reports"},                   // some touch reports lose a byte or follow noise
    FaultName{Fault::unplugged, "unplugged"},     // neither listed nor reachable, its port gone
    FaultName{Fault::openFails, "open-fails"},    // listed, but cannot be opened
    FaultName{Fault::storeFails, "store-fails"},  // neither calibration nor parameters can be kept
    FaultName{Fault::errorReturns, "error-returns"},  // every operation returns its error value
};

constexpr std::optional<Fault> faultNamed(std::string_view name) {
  const auto* found = std::ranges::find(faultNames, name, &FaultName::name);
  if (found == faultNames.end()) return std::nullopt;
  return found->fault;
}

/// The faults that a controller has.
class FaultSet {
 public:
  constexpr FaultSet() = default;
  constexpr FaultSet(std::initializer_list<Fault> faults) {
    for (const Fault fault : faults)
      set(fault, true);
  }

  constexpr bool has(Fault fault) const { return (bits_ & bit(fault)) != 0; }
  constexpr void set(Fault fault, bool on) {
    bits_ = on ? bits_ | bit(fault) : bits_ & ~bit(fault);
  }

 private:
  static constexpr std::uint32_t bit(Fault fault) { return 1U << static_cast<unsigned>(fault); }
  std::uint32_t bits_ = 0;
};

}  // namespace touch::simulator
