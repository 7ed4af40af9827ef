#pragma once

#include <cfenv>
#include <filesystem>
#include <locale>
#include <memory>
#include <string>

namespace touch {

/// How this process takes signals and makes files, where a system has such.
class SystemState {
 public:
  /// As it is now.
  static std::unique_ptr<const SystemState> now();
  SystemState() = default;
  SystemState(const SystemState&) = delete;
  SystemState& operator=(const SystemState&) = delete;
  virtual ~SystemState() = default;
  virtual void restore() const = 0;
};

/// What belongs to the process as a whole and a library inside it can change: how it takes the
/// signals that end it, the mode of new files, the current folder, locale and floating point.
class ProcessState {
 public:
  /// As it is now.
  ProcessState();
  /// Puts right what has changed.
  void restore() const;

 private:
  std::unique_ptr<const SystemState> system_;
  std::filesystem::path folder_;  ///< empty: there is none
  std::string locale_;            ///< of C
  std::locale streams_;
  std::fenv_t arithmetic_{};
};

}  // namespace touch
