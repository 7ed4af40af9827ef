#include "support/process_state.h"

#include <clocale>

namespace touch {

namespace {

std::filesystem::path currentFolder() {
  std::error_code failed;
  auto folder = std::filesystem::current_path(failed);
  return failed ? std::filesystem::path() : folder;
}

}  // namespace

ProcessState::ProcessState()
    : system_(SystemState::now()),
      folder_(currentFolder()),
      locale_(std::setlocale(LC_ALL, nullptr)) {
  std::fegetenv(&arithmetic_);
}

void ProcessState::restore() const {
  system_->restore();
  std::error_code gone;
  if (!folder_.empty() && currentFolder() != folder_) std::filesystem::current_path(folder_, gone);
  // Setting the one for streams may set that of C as well.
  if (std::locale() != streams_) std::locale::global(streams_);
  if (locale_ != std::setlocale(LC_ALL, nullptr)) std::setlocale(LC_ALL, locale_.c_str());
  std::fesetenv(&arithmetic_);
}

}  // namespace touch
