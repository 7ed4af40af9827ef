#include "serial/port_holders.h"

#include <grp.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <csignal>

#include "serial/asio_serial_port.h"
#include "tests/serial/pseudo_terminal.h"
#include "tests/support/temporary_folder.h"

namespace touch {
namespace {

namespace fs = std::filesystem;

/// Another program that has the device open for itself, until it is killed or a minute has passed.
pid_t startHolding(const std::string& device) {
  const int held = open(device.c_str(), O_RDWR | O_NOCTTY);
  EXPECT_EQ(flock(held, LOCK_EX | LOCK_NB), 0);
  const pid_t program = fork();
  if (program == 0) {
    alarm(60);
    pause();
    _exit(0);
  }
  close(held);
  return program;
}

TEST(PortInUse, IsNamedWithTheProgramThatHasIt) {
  const test::PseudoTerminal terminal;
  const pid_t other = startHolding(terminal.path());
  AsioSerialPort port(terminal.asPort(1));
  const std::string name = "serial_tests (process " + std::to_string(other) + ")";
  const std::string refusal = "COM1 (" + terminal.path() + ") cannot be opened: it is in use by " +
                              name + ". Close that program and try again.";
  EXPECT_EQ(port.open(), refusal) << "it is locked";
  const int line = open(terminal.path().c_str(), O_RDWR | O_NOCTTY);
  ASSERT_EQ(ioctl(line, TIOCEXCL), 0);
  EXPECT_EQ(port.open(), refusal) << "only root gets as far as the lock";

  // By another name of the same device, as adapters have them; the test looks on.
  const test::TemporaryFolder folder;
  fs::create_symlink(terminal.path(), folder.path() / "adapter");
  const std::string names = portHolders(folder.path() / "adapter").names();
  EXPECT_TRUE(names == name + ", this program" || names == "this program, " + name) << names;

  kill(other, SIGKILL);
  waitpid(other, nullptr, 0);
  ioctl(line, TIOCNXCL);  // a pseudo-terminal stays exclusive for as long as it is open anywhere
  close(line);
  EXPECT_EQ(portHolders(terminal.path()).names(), "")
      << "who is only at the other end, as this test is, uses nothing";
  EXPECT_EQ(port.open(), std::nullopt);
}

TEST(PortInUse, SaysAsMuchAsIsKnown) {
  const PortHolder self{"touchctl", 1, true};
  EXPECT_EQ(
      inUseText({{self, {"minicom", 7, false}, {"getty", 8, false}}, true}),
      "it is in use by minicom (process 7), getty (process 8). Close that program and try again.");
  EXPECT_NE(inUseText({{}, false}).find("only an administrator can see"), std::string::npos);
}

/// What `look` says to a user who owns nothing and is in no group; run in a process of its own.
template <typename Look>
bool asNobody(const Look& look) {
  const pid_t child = fork();
  if (child == 0) {
    constexpr uid_t nobody = 65534;
    const bool changed = geteuid() != 0 ||
                         (setgroups(0, nullptr) == 0 && setgid(nobody) == 0 && setuid(nobody) == 0);
    _exit(changed && look() ? 0 : 1);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

TEST(PortPermission, NamesTheGroupThatMayOpenIt) {
  const test::PseudoTerminal terminal;
  struct stat status {};
  ASSERT_EQ(stat(terminal.path().c_str(), &status), 0);
  const std::string group = getgrgid(status.st_gid)->gr_name;
  const std::pair<mode_t, std::string> cases[] = {
      {0060, "Add yourself to the group " + group + " and log in again."},
      {0040, "Ask an administrator: no group of users may open it."},
  };
  for (const auto& [mode, wayOut] : cases) {
    const std::string refusal =
        "COM1 (" + terminal.path() + ") cannot be opened: permission denied. " + wayOut;
    ASSERT_EQ(chmod(terminal.path().c_str(), mode), 0);
    EXPECT_TRUE(asNobody([&] { return AsioSerialPort(terminal.asPort(1)).open() == refusal; }))
        << mode;
  }
  ASSERT_EQ(chmod(terminal.path().c_str(), 0666), 0);
  EXPECT_TRUE(asNobody([&] { return portPermission(terminal.path()).granted; }));
}

TEST(SerialDevices, AreThoseWithHardwareAndNameTheirDriver) {
  const test::TemporaryFolder system;
  const auto add = [&system](const fs::path& device, const std::string& name,
                             const std::string& driver, const std::string& type) {
    fs::create_directories(system.path() / device);
    fs::create_directories(system.path() / "tty" / name);
    fs::create_symlink(system.path() / device, system.path() / "tty" / name / "device");
    if (!driver.empty()) fs::create_symlink(driver, system.path() / device / "driver");
    system.write("tty/" + name + "/type", type);
  };
  // Devices that every machine has stand in for serial ones.
  add("usb/adapter", "null", "/drivers/ftdi_sio", "");
  add("board/ctrl/port", "zero", "/drivers/port", "4\n");
  fs::create_symlink("/drivers/serial8250", system.path() / "board" / "driver");
  add("board/absent", "full", "/drivers/port", "0\n");
  add("console", "tty", "", "");
  add("unplugged", "there-is-none", "/drivers/ftdi_sio", "");
  const auto devices = system.path() / "tty";
  EXPECT_EQ(serialDevices(devices), (std::vector<std::string>{"/dev/null", "/dev/zero"}));
  EXPECT_EQ(portDriver("/dev/null", devices), "ftdi_sio");
  EXPECT_EQ(portDriver("/dev/zero", devices), "serial8250");
  EXPECT_EQ(portDriver("/dev/tty", devices), "");
}

}  // namespace
}  // namespace touch
