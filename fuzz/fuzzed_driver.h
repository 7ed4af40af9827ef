#pragma once

#include <array>
#include <functional>
#include <map>
#include <span>
#include <string>

#include "console/parameters/parameter_words.h"
#include "core/driver/driver.h"
#include "fuzz/target.h"

namespace touch::fuzz {

/// A driver whose every answer comes from an input: counts, names without a closing zero, handles,
/// results, replies, and buffers filled up to their size and beyond it, as far as the contract's
/// margin goes. To get beyond the first question it can also answer as a controller would, with a
/// parameter memory behind it. When the input is used up it answers 0 and says nothing.
class FuzzedDriver final : public Driver {
 public:
  explicit FuzzedDriver(Input& input);

  /// Run before each answer: time may pass, and the user may do something.
  std::function<void()> onCall;

  /// Controllers that were opened with a usable handle and not closed as often.
  bool anyOpen() const { return !open_.empty(); }

#define FUZZED_OPERATION(name, parameters, arguments) std::int32_t name parameters override;
  NEXAPI_OPERATIONS(FUZZED_OPERATION)
#undef FUZZED_OPERATION

 private:
  std::int32_t result();
  /// What a controller says, as reply number `kind` of the known ones or as the input's own bytes.
  std::span<const std::uint8_t> reply(std::uint8_t kind);

  Input& input_;
  std::map<std::int32_t, int> open_;  ///< how often, by handle
  std::int32_t lastHandle_ = 1;
  std::int32_t touches_ = 0;
  std::array<ParameterWord, 256> memory_{};
  std::string asked_;  ///< the text of the last command
  std::string answer_;
};

}  // namespace touch::fuzz
