#pragma once

#include <QMessageBox>
#include <QPointer>
#include <atomic>
#include <functional>

#include "core/driver/host/driver_patience.h"

namespace touch {

class EventLoopClock;

/// What a window says of a driver that hangs or is lost. A hanging one may be waited for or
/// restarted; nothing else in the program can be used before that.
class DriverNotice final : public DriverPatience {
 public:
  /// The clock outlives the notice.
  explicit DriverNotice(EventLoopClock& clock) : clock_(clock) {}
  ~DriverNotice() override { waitEnded(); }

  /// The program is to end; from any thread.
  void endSoon() { ending_ = true; }
  /// Run when a driver is lost after that: what its action then says is of use to nobody.
  std::function<void()> onLostInEnding;

  Next stillWaiting(const DriverWait& wait) override;
  void waitEnded() override;
  bool isEnding() const override { return ending_; }
  void lost(const std::string& text) override;

 private:
  static constexpr std::chrono::seconds unsaid{3};  ///< so long a driver may take without a word

  void show(const DriverWait& wait);

  EventLoopClock& clock_;
  QPointer<QMessageBox> box_;
  std::chrono::milliseconds nextLook_ = unsaid;
  std::chrono::milliseconds waited_{};
  bool restart_ = false;
  std::atomic<bool> ending_ = false;
};

}  // namespace touch
