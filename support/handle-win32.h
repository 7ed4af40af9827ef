#pragma once

#include <windows.h>

#include <memory>

namespace touch {

struct CloseIt {
  void operator()(void* handle) const { CloseHandle(handle); }
};
/// An object of Windows that is closed with this one; null when there is none.
using Handle = std::unique_ptr<void, CloseIt>;

inline Handle owned(HANDLE handle) {
  return Handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

/// One read, write or connection that is under way, with the event that tells of its end. It must
/// have ended before this goes.
class OverlappedTransfer {
 public:
  OverlappedTransfer() : event_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
    state_.hEvent = event_.get();
  }
  OVERLAPPED* state() { return &state_; }
  HANDLE event() const { return event_.get(); }

 private:
  Handle event_;
  OVERLAPPED state_{};
};

}  // namespace touch
