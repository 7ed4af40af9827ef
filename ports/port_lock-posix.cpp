#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fstream>
#include <string_view>
#include <utility>

#include "ports/port_lock.h"
#include "support/files/system_file.h"

namespace touch {

namespace {

namespace fs = std::filesystem;

constexpr int mostTries = 3;  // another program may make one while a stale one is taken away
// No program takes longer from making a lock file to writing its number into it.
constexpr std::time_t secondsToWrite = 10;

/// Empty when there is no such device.
fs::path lockFile(const std::string& device, const fs::path& folder) {
  std::error_code missing;
  std::string name = fs::canonical(device, missing).string();
  if (missing || !fs::is_character_file(name, missing)) return {};
  constexpr std::string_view devices = "/dev/";
  if (name.starts_with(devices)) name.erase(0, devices.size());
  std::ranges::replace(name, '/', '_');
  return folder / ("LCK.." + name);
}

/// Digits, or, from old programs, the four bytes of the number itself.
std::optional<pid_t> lockingProcess(std::string_view content) {
  pid_t number = 0;
  if (content.size() == sizeof number &&
      content.find_first_not_of(" \n0123456789") != content.npos) {
    std::memcpy(&number, content.data(), sizeof number);
  } else {
    content.remove_prefix(std::min(content.find_first_not_of(' '), content.size()));
    std::from_chars(content.data(), content.data() + content.size(), number);
  }
  return number > 0 ? std::optional(number) : std::nullopt;
}

/// Whether the process could have made the file. Anybody may make files in the folder, and name
/// anybody's process.
bool mayHaveMade(const struct stat& file, pid_t process) {
  struct stat running {};
  if (stat(("/proc/" + std::to_string(process)).c_str(), &running) != 0) return errno != ENOENT;
  return file.st_uid == running.st_uid || file.st_uid == 0;
}

std::string programName(pid_t process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/comm");
  std::string name;
  std::getline(file, name);
  return name;
}

/// Whether a file that names nobody may be one that a program is just writing.
bool isFresh(const struct stat& file) {
  const std::time_t age = std::time(nullptr) - file.st_mtim.tv_sec;
  return S_ISREG(file.st_mode) && age >= 0 && age < secondsToWrite;
}

struct Lock {
  bool there = false;
  std::optional<PortHolder> holder;  ///< also this program
};

Lock readLock(const fs::path& path) {
  const int opened = open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (opened < 0 && errno == ENOENT) return {};
  std::array<char, 64> content{};
  struct stat status {};
  if ((opened < 0 ? lstat(path.c_str(), &status) : fstat(opened, &status)) != 0) status = {};
  const bool canBeRead = opened >= 0 && S_ISREG(status.st_mode);
  const auto count = canBeRead ? read(opened, content.data(), content.size()) : -1;
  if (opened >= 0) close(opened);
  const auto process =
      count > 0 ? lockingProcess({content.data(), static_cast<std::size_t>(count)}) : std::nullopt;
  if (!process && isFresh(status)) return {true, PortHolder{{}, 0, false, false, path}};
  const bool runs = process && (kill(*process, 0) == 0 || errno == EPERM);
  if (!runs || !mayHaveMade(status, *process)) return {true, {}};
  return {true, PortHolder{programName(*process), *process, *process == getpid(), false, path}};
}

}  // namespace

// It gets its name only when the number is in it: an empty one may be taken for a stale one.
std::optional<PortLock::Made> PortLock::make(const fs::path& file) {
  const fs::path beside = file.string() + '.' + std::to_string(getpid());
  unlink(beside.c_str());  // left by a crash of one that had this number
  const File made = createFile(beside);
  if (!made) return std::nullopt;
  setMode(made.get(), fs::perms{0644});
  struct stat status {};
  const bool isWhole = std::fprintf(made.get(), "%10d\n", static_cast<int>(getpid())) > 0 &&
                       std::fflush(made.get()) == 0 && fstat(fileno(made.get()), &status) == 0;
  const bool named = isWhole && link(beside.c_str(), file.c_str()) == 0;
  const int why = errno;
  unlink(beside.c_str());
  errno = why;
  return named ? std::optional(Made{file, status.st_dev, status.st_ino}) : std::nullopt;
}

Result<PortLock, PortHolder> PortLock::take(const std::string& device, const fs::path& folder) {
  const fs::path file = lockFile(device, folder);
  for (int tries = 0; !file.empty() && tries < mostTries; ++tries) {
    const Lock lock = readLock(file);
    if (lock.holder && !lock.holder->isThisProgram) return tl::unexpected(*lock.holder);
    if (lock.holder) break;
    if (lock.there && unlink(file.c_str()) != 0) break;
    if (auto made = make(file)) return PortLock(std::move(made));
    if (errno != EEXIST) break;
  }
  return PortLock(std::nullopt);
}

PortLock::~PortLock() {
  struct stat status {};
  if (!made_ || lstat(made_->file.c_str(), &status) != 0) return;
  if (status.st_dev == made_->disk && status.st_ino == made_->number) unlink(made_->file.c_str());
}

std::optional<PortHolder> lockHolder(const std::string& device, const fs::path& folder) {
  const fs::path file = lockFile(device, folder);
  if (file.empty()) return std::nullopt;
  auto holder = readLock(file).holder;
  return holder && !holder->isThisProgram ? holder : std::nullopt;
}

}  // namespace touch
