#include <sys/stat.h>

#include <array>
#include <csignal>

#include "support/process_state.h"

namespace touch {

namespace {

class PosixState final : public SystemState {
 public:
  // It can only be asked for by setting it.
  PosixState() : mask_(umask(S_IRWXG | S_IRWXO)) {
    umask(mask_);
    pthread_sigmask(SIG_SETMASK, nullptr, &blocked_);
    for (std::size_t i = 0; i < signals.size(); ++i)
      sigaction(signals[i], nullptr, &actions_[i]);
  }

  void restore() const override {
    umask(mask_);
    for (std::size_t i = 0; i < signals.size(); ++i)
      sigaction(signals[i], &actions_[i], nullptr);
    pthread_sigmask(SIG_SETMASK, &blocked_, nullptr);
  }

 private:
  // Those by which a program and its waits are ended, and those that would end it where a failed
  // write says the same.
  static constexpr std::array signals = {SIGHUP, SIGINT, SIGTERM, SIGALRM, SIGPIPE, SIGXFSZ};

  mode_t mask_;
  sigset_t blocked_{};
  std::array<struct sigaction, signals.size()> actions_{};
};

}  // namespace

std::unique_ptr<const SystemState> SystemState::now() {
  return std::make_unique<const PosixState>();
}

}  // namespace touch
