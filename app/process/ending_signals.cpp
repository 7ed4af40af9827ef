#include "app/process/ending_signals.h"

#include <asio/io_context.hpp>
#include <asio/signal_set.hpp>
#include <system_error>
#include <thread>
#include <utility>

namespace touch {

class EndingSignals::Watch {
 public:
  explicit Watch(std::function<void()> onSignal) : onSignal_(std::move(onSignal)) {
    prepareToEndWaits();
    // Before anything else goes on, so that no signal finds nobody.
    for (const int signal : endingSignals())
      signals_.add(signal);
    wait();
    thread_ = std::thread([this] { context_.run(); });
  }
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;
  ~Watch() {
    context_.stop();
    thread_.join();
  }

 private:
  void wait() {
    signals_.async_wait([this](const std::error_code& error, int) {
      if (error) return;
      onSignal_();
      endWaits();
      wait();
    });
  }

  std::function<void()> onSignal_;
  asio::io_context context_{1};
  asio::signal_set signals_{context_};
  std::thread thread_;
};

EndingSignals::EndingSignals(std::function<void()> onSignal)
    : watch_(std::make_unique<Watch>(std::move(onSignal))) {}

EndingSignals::~EndingSignals() = default;

}  // namespace touch
