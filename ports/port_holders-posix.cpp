#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <fstream>
#include <optional>
#include <system_error>

#include "ports/port_holders.h"
#include "ports/port_lock.h"

namespace touch {

namespace {

namespace fs = std::filesystem;

constexpr const char* genericPortDriver = "port";
constexpr unsigned firstPseudoTerminal = 136;  // major number; the minor one is the terminal's

/// The number of the character device at `path`.
std::optional<dev_t> deviceNumber(const fs::path& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0 || !S_ISCHR(status.st_mode)) return std::nullopt;
  return status.st_rdev;
}

std::string firstLine(const fs::path& file) {
  std::ifstream stream(file);
  std::string line;
  std::getline(stream, line);
  return line;
}

/// Whether the process's open file `number` is the far end of the pseudo-terminal `device`.
bool isFarEnd(const fs::path& process, const fs::path& number, dev_t device) {
  std::ifstream facts(process / "fdinfo" / number);
  for (std::string name, value; facts >> name && std::getline(facts, value);) {
    if (name != "tty-index:") continue;
    unsigned index = 0;
    const auto digits = value.find_first_not_of(" \t");
    if (digits == value.npos) return false;
    std::from_chars(value.data() + digits, value.data() + value.size(), index);
    return index == minor(device) && major(device) == firstPseudoTerminal;
  }
  return false;
}

enum class Look { has, hasNot, mayNot };

/// Whether the process has the device open, under whatever name it opened it.
Look lookInto(const fs::path& process, dev_t device) {
  std::error_code failed;
  auto file = fs::directory_iterator(process / "fd", failed);
  if (failed == std::errc::permission_denied) return Look::mayNot;
  int opened = 0;
  bool servesIt = false;
  for (; !failed && file != fs::directory_iterator(); file.increment(failed)) {
    std::error_code gone;
    // Only devices are looked at more closely: a file on a network may not answer.
    const auto target = fs::read_symlink(file->path(), gone);
    if (gone || !target.native().starts_with("/dev/")) continue;
    if (target.filename() == "ptmx") {
      servesIt = servesIt || isFarEnd(process, file->path().filename(), device);
    } else if (deviceNumber(file->path()) == device) {
      ++opened;
    }
  }
  // Whoever is at the other end of a pseudo-terminal has it open once, so that it stays there when
  // others close it.
  return opened > (servesIt ? 1 : 0) ? Look::has : Look::hasNot;
}

/// The number of a pseudo-terminal, by which the program at its other end knows it.
std::optional<unsigned> terminalNumber(dev_t device) {
  constexpr unsigned firstMajor = 136;
  constexpr unsigned lastMajor = 143;
  constexpr unsigned ofEachMajor = 256;
  if (major(device) < firstMajor || major(device) > lastMajor) return std::nullopt;
  return (major(device) - firstMajor) * ofEachMajor + minor(device);
}

/// Whether the process is at the other end of this pseudo-terminal.
bool servesTerminal(const fs::path& process, unsigned terminal) {
  const std::string wanted = "tty-index:\t" + std::to_string(terminal);
  std::error_code failed;
  for (auto file = fs::directory_iterator(process / "fd", failed);
       !failed && file != fs::directory_iterator(); file.increment(failed)) {
    std::error_code gone;
    if (fs::read_symlink(file->path(), gone).filename() != "ptmx") continue;
    std::ifstream about(process / "fdinfo" / file->path().filename());
    for (std::string line; std::getline(about, line);)
      if (line == wanted) return true;
  }
  return false;
}

std::optional<pid_t> processNumber(const fs::path& entry) {
  const std::string name = entry.filename();
  pid_t number = 0;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
  if (error != std::errc{} || end != name.data() + name.size()) return std::nullopt;
  return number;
}

bool isAmong(const std::vector<gid_t>& groups, gid_t group) {
  return std::ranges::find(groups, group) != groups.end();
}

std::vector<gid_t> groupsOfThisSession() {
  std::vector<gid_t> groups(static_cast<std::size_t>(std::max(getgroups(0, nullptr), 0)));
  const int count = getgroups(static_cast<int>(groups.size()), groups.data());
  groups.resize(static_cast<std::size_t>(std::max(count, 0)));
  groups.push_back(getegid());
  return groups;
}

std::vector<gid_t> groupsOfTheNextSession() {
  const passwd* const user = getpwuid(geteuid());
  if (user == nullptr) return {};
  int count = 0;
  getgrouplist(user->pw_name, user->pw_gid, nullptr, &count);
  std::vector<gid_t> groups(static_cast<std::size_t>(count));
  if (getgrouplist(user->pw_name, user->pw_gid, groups.data(), &count) < 0) return {};
  return groups;
}

/// A serial port of a board whose hardware was never found has a device all the same.
bool hasHardware(const fs::path& entry) {
  std::error_code ignored;
  return fs::is_symlink(entry / "device" / "driver", ignored) && firstLine(entry / "type") != "0";
}

/// Where the system keeps what it knows of the port; empty when there is nothing.
fs::path hardwareOf(const std::string& device, const fs::path& devices) {
  std::error_code failed;
  const auto file = fs::canonical(device, failed);
  if (failed) return {};
  auto hardware = fs::canonical(devices / file.filename() / "device", failed);
  return failed ? fs::path() : hardware;
}

/// The folder that has `fact`: `hardware`, or one around it, as an adapter's port is a part of the
/// device that was plugged in. Empty when none has.
fs::path findAround(fs::path hardware, const char* fact) {
  constexpr int mostAround = 5;
  for (int around = 0; !hardware.empty() && around < mostAround; ++around) {
    if (!firstLine(hardware / fact).empty()) return hardware;
    hardware = hardware.parent_path();
  }
  return {};
}

}  // namespace

PortHolders portHolders(const std::string& device) {
  PortHolders holders;
  const auto wanted = deviceNumber(device);
  if (!wanted) return holders;
  std::error_code failed;
  auto entry = fs::directory_iterator("/proc", failed);
  holders.complete = !failed;
  const auto terminal = terminalNumber(*wanted);
  for (; !failed && entry != fs::directory_iterator(); entry.increment(failed)) {
    const auto process = processNumber(entry->path());
    if (!process) continue;
    const Look look = lookInto(entry->path(), *wanted);
    if (look == Look::mayNot) holders.complete = false;
    if (look != Look::has) continue;
    holders.known.push_back({firstLine(entry->path() / "comm"), *process, *process == getpid(),
                             terminal && servesTerminal(entry->path(), *terminal)});
  }
  const auto locking = lockHolder(device);
  if (locking && std::ranges::find(holders.known, locking->process, &PortHolder::process) ==
                     holders.known.end())
    holders.known.push_back(*locking);
  return holders;
}

PortPermission portPermission(const std::string& device) {
  PortPermission permission;
  permission.granted = faccessat(AT_FDCWD, device.c_str(), R_OK | W_OK, AT_EACCESS) == 0;
  struct stat status {};
  constexpr mode_t readAndWrite = S_IRGRP | S_IWGRP;
  if (permission.granted || stat(device.c_str(), &status) != 0) return permission;
  if ((status.st_mode & readAndWrite) != readAndWrite) return permission;
  const group* const named = getgrgid(status.st_gid);
  permission.group = named != nullptr ? named->gr_name : std::to_string(status.st_gid);
  permission.joined = isAmong(groupsOfTheNextSession(), status.st_gid) &&
                      !isAmong(groupsOfThisSession(), status.st_gid);
  return permission;
}

bool portExists(const std::string& device) {
  return deviceNumber(device).has_value();
}

std::string portDriver(const std::string& device, const fs::path& devices) {
  std::error_code failed;
  const auto file = fs::canonical(device, failed);
  if (failed) return {};
  const auto hardware = fs::canonical(devices / file.filename() / "device", failed);
  if (failed) return {};
  std::string driver = fs::read_symlink(hardware / "driver", failed).filename();
  if (driver != genericPortDriver) return driver;
  // Between a port and the chip that it is on, newer kernels have two devices of their own.
  std::string chip =
      fs::read_symlink(hardware.parent_path().parent_path() / "driver", failed).filename();
  return chip.empty() ? driver : chip;
}

std::string portMaker(const std::string& device, const fs::path& devices) {
  const auto adapter = findAround(hardwareOf(device, devices), "product");
  if (adapter.empty()) return {};
  std::string name = firstLine(adapter / "manufacturer");
  if (!name.empty()) name += ' ';
  return name += firstLine(adapter / "product");
}

std::string portHardware(const std::string& device, const fs::path& devices) {
  const auto hardware = hardwareOf(device, devices);
  const auto adapter = findAround(hardware, "product");
  if (adapter.empty()) return {};
  std::string text = portDriver(device, devices);
  const auto add = [&text](const fs::path& folder, const char* fact) {
    text += '\n' + (folder.empty() ? std::string() : firstLine(folder / fact));
  };
  for (const char* const fact : {"manufacturer", "product", "serial"})
    add(adapter, fact);
  // An adapter with several ports has each on an interface of its own, or counts them.
  constexpr const char* interface = "bInterfaceNumber";
  add(findAround(hardware, interface), interface);
  add(hardware, "port_number");
  return text;
}

std::vector<std::string> serialDevices(const fs::path& devices) {
  std::vector<std::string> found;
  std::error_code failed;
  for (auto entry = fs::directory_iterator(devices, failed);
       !failed && entry != fs::directory_iterator(); entry.increment(failed)) {
    const std::string device = "/dev/" + entry->path().filename().string();
    if (hasHardware(entry->path()) && portExists(device)) found.push_back(device);
  }
  std::ranges::sort(found);
  return found;
}

}  // namespace touch
