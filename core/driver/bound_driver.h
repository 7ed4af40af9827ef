#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "core/driver/driver.h"
#include "support/result.h"
#include "support/text/language.h"

namespace touch {

/// Why no driver could be bound: which library, and in whose words what was wrong.
struct BindError {
  std::string library;
  std::string reason;
  std::filesystem::path foundAt{};  ///< where it was loaded from; empty when it could not be
  std::string describe() const {
    return filled(say("driver", "The touch driver library %1 cannot be used: %2"),
                  {library, reason});
  }
};

/// A driver library that is bound, wherever it runs.
class BoundDriver : public Driver {
 public:
  /// What the maker's library is called.
  static constexpr const char* makersLibrary = "nexapi";

  virtual const std::filesystem::path& path() const = 0;
};

using BoundDriverOrError = Result<std::unique_ptr<BoundDriver>, BindError>;

}  // namespace touch
