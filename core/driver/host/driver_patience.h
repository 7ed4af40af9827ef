#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace touch {

/// An operation that has not returned yet.
struct DriverWait {
  std::string library;
  std::string operation;
  std::chrono::milliseconds waited{};
};

/// How long the program has patience with a driver, and what it tells its user of it.
class DriverPatience {
 public:
  enum class Next : std::uint8_t { wait, giveUp };

  DriverPatience() = default;
  DriverPatience(const DriverPatience&) = delete;
  DriverPatience& operator=(const DriverPatience&) = delete;
  virtual ~DriverPatience() = default;

  /// Asked again and again while an operation has not returned.
  virtual Next stillWaiting(const DriverWait& wait) = 0;
  /// It has returned after all, or was given up.
  virtual void waitEnded() {}
  /// The program is to end, and waits for no driver any more.
  virtual bool isEnding() const = 0;
  /// The driver was lost, for the reason that `text` says.
  virtual void lost(const std::string& text) = 0;
  /// After a loss the next action may have a driver again.
  virtual bool startsAfresh() const { return true; }
};

}  // namespace touch
