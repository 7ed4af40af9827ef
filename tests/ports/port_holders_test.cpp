#include "ports/port_holders.h"

#include <grp.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include "ports/port_list.h"
#include "ports/port_lock.h"
#include "ports/spare_numbers.h"
#include "serial/port/asio_serial_port.h"
#include "tests/doubles/temporary_folder.h"
#include "tests/ports/pseudo_terminal.h"

namespace touch::test {
namespace {

/// A program that has no file open but those of its `work`, after which it waits to be killed.
template <typename Work>
pid_t startWaiting(const Work& work) {
  int ready[2];
  EXPECT_EQ(pipe(ready), 0);
  const pid_t program = fork();
  if (program == 0) {
    alarm(60);
    for (int file = 3; file < 256; ++file)
      if (file != ready[1]) close(file);
    [[maybe_unused]] const auto held = work();
    EXPECT_EQ(write(ready[1], "", 1), 1);
    pause();
    _exit(0);
  }
  char byte = 0;
  EXPECT_EQ(read(ready[0], &byte, 1), 1);
  close(ready[0]);
  close(ready[1]);
  return program;
}

void end(pid_t program) {
  kill(program, SIGKILL);
  waitpid(program, nullptr, 0);
}

TEST(PortInUse, IsNamedWithTheProgramThatHasIt) {
  const PseudoTerminal terminal;
  const pid_t other = startWaiting(
      [&] { return flock(open(terminal.path().c_str(), O_RDWR | O_NOCTTY), LOCK_EX | LOCK_NB); });
  AsioSerialPort port(terminal.asPort(1));
  const std::string name = "serial_tests (process " + std::to_string(other) + ")";
  const std::string refusal = "COM1 (" + terminal.path() + ") cannot be opened: it is in use by " +
                              name + ". Close that program and try again.";
  EXPECT_EQ(whyNot(port.open()), refusal) << "it is locked";
  const int line = open(terminal.path().c_str(), O_RDWR | O_NOCTTY);
  ASSERT_EQ(ioctl(line, TIOCEXCL), 0);
  EXPECT_EQ(whyNot(port.open()), refusal) << "only root gets as far as the lock";

  // By another name of the same device, as adapters have them; the test looks on.
  const TemporaryFolder folder;
  fs::create_symlink(terminal.path(), folder.path() / "adapter");
  const std::string names = portHolders(folder.path() / "adapter").names();
  EXPECT_TRUE(names == name + ", this program" || names == "this program, " + name) << names;

  end(other);
  ioctl(line, TIOCNXCL);  // a pseudo-terminal stays exclusive for as long as it is open anywhere
  close(line);
  EXPECT_EQ(portHolders(terminal.path()).names(), "")
      << "who is only at the other end, as this test is, uses nothing";
  EXPECT_EQ(whyNot(port.open()), "");
}

TEST(SharedPort, IsSaidToBeWhenAnotherProgramHadItOpenBefore) {
  const PseudoTerminal terminal;
  const pid_t other =
      startWaiting([&] { return open(terminal.path().c_str(), O_RDWR | O_NOCTTY); });
  AsioSerialPort port(terminal.asPort(1));
  ASSERT_EQ(whyNot(port.open()), "");
  EXPECT_EQ(port.sharedWith(), "COM1 (" + terminal.path() + "): serial_tests (process " +
                                   std::to_string(other) + ") has it open too and takes replies.");
  port.close();
  end(other);
  ASSERT_EQ(whyNot(port.open()), "");
  EXPECT_EQ(port.sharedWith(), "") << "whoever is at the other end is no other program";
}

TEST(PortLock, IsHonouredWhileItsProgramRuns) {
  const PseudoTerminal terminal;
  const TemporaryFolder folder;
  std::string name = terminal.path().substr(std::string("/dev/").size());
  std::ranges::replace(name, '/', '_');
  const std::string file = "LCK.." + name;
  const auto alone = startWaiting([] { return 0; });
  const auto gone = startWaiting([] { return 0; });
  end(gone);
  const auto inTen = [](pid_t process) {
    const std::string digits = std::to_string(process);
    return std::string(10 - digits.size(), ' ') + digits + '\n';
  };
  const std::tuple<const char*, std::string, std::chrono::seconds, std::optional<pid_t>> cases[] = {
      {"another's", inTen(alone), 60s, alone},
      {"another's in bytes", {reinterpret_cast<const char*>(&alone), sizeof alone}, 60s, alone},
      {"stale", inTen(gone), 0s, {}},
      {"empty", "", 60s, {}},
      {"empty, as it has just been made", "", 0s, 0},
      {"nonsense", "yes\n", 60s, {}},
      {"process -1, which is everybody", "        -1\n", 60s, {}},
  };
  for (const auto& [what, content, age, holder] : cases) {
    SCOPED_TRACE(what);
    const bool honoured = holder.has_value();
    folder.write(file, content);
    const auto written = fs::last_write_time(folder.path() / file);
    fs::last_write_time(folder.path() / file, written - age);
    {
      const auto lock = PortLock::take(terminal.path(), folder.path());
      EXPECT_EQ(lock.has_value(), !honoured);
      EXPECT_EQ(folder.read(file), honoured ? content : inTen(getpid()));
      if (honoured) {
        EXPECT_EQ(lock.error().process, *holder);
      } else {
        const auto again = PortLock::take(terminal.path(), folder.path());
        EXPECT_TRUE(again) << "it is this program's";
      }
    }
    EXPECT_EQ(fs::exists(folder.path() / file), honoured) << "it goes with the port";
    EXPECT_EQ(fs::is_empty(folder.path()), !honoured);
  }
  fs::remove(folder.path() / file);
  folder.write("theirs", "theirs");
  fs::create_symlink("theirs", folder.path() / file);
  EXPECT_TRUE(PortLock::take(terminal.path(), folder.path()));
  EXPECT_EQ(folder.read("theirs"), "theirs");
  EXPECT_TRUE(PortLock::take(terminal.path(), folder.path() / "none")) << "where none can be made";
  end(alone);
}

TEST(PortLock, KeepsThePortFromOtherPrograms) {
  const PseudoTerminal terminal;
  const pid_t other = startWaiting([&] { return PortLock::take(terminal.path()); });
  if (!lockHolder(terminal.path())) GTEST_SKIP() << "this user may make no lock files";
  AsioSerialPort port(terminal.asPort(1));
  EXPECT_THAT(whyNot(port.open()), HasSubstr("(process " + std::to_string(other) +
                                             ", by its lock file /var/lock/LCK.."));
  end(other);
  EXPECT_EQ(whyNot(port.open()), "") << "the lock file is stale";
}

TEST(PortInUse, SaysAsMuchAsIsKnown) {
  const PortHolder self{"touchctl", 1, true};
  EXPECT_EQ(
      inUseText({{self, {"minicom", 7, false}, {"getty", 8, false}}, true}),
      "it is in use by minicom (process 7), getty (process 8). Close that program and try again.");
  EXPECT_THAT(inUseText({{}, false}), HasSubstr("only an administrator can see"));
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
  const PseudoTerminal terminal;
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
    EXPECT_TRUE(asNobody([&] {
      return whyNot(AsioSerialPort(terminal.asPort(1)).open()) == refusal;
    })) << mode;
  }
  ASSERT_EQ(chmod(terminal.path().c_str(), 0666), 0);
  EXPECT_TRUE(asNobody([&] { return portPermission(terminal.path()).granted; }));
}

TEST(SpareNumbers, GoToDevicesWithoutOneAndStay) {
  ComPorts ports;
  ASSERT_EQ(whyNot(ports.assign("3=/dev/ttyUSB0")), "");
  std::vector<std::string> there = {"/dev/ttyS1", "/dev/ttyUSB0", "/dev/ttyUSB2"};
  addSpareNumbers(ports, [&there] { return there; });
  const ComPorts copy = ports;
  EXPECT_EQ(copy.device(17), "/dev/ttyUSB2");
  there = {"/dev/ttyACM0", "/dev/ttyUSB2"};
  EXPECT_EQ(copy.device(18), "/dev/ttyACM0") << "the one that came later";
  EXPECT_EQ(ports.device(17), "/dev/ttyUSB2");
  there = {"/dev/ttyACM0"};
  EXPECT_EQ(ports.device(17), "") << "unplugged";
  EXPECT_EQ(ports.device(18), "/dev/ttyACM0");
}

TEST(SpareNumbers, LeaveNumbersThatTheUserHasGivenAlone) {
  ComPorts ports;
  ASSERT_EQ(whyNot(ports.assign("17=/dev/ttyGiven")), "");
  addSpareNumbers(ports, [] { return std::vector<std::string>{"/dev/ttyUSB0"}; });
  EXPECT_EQ(ports.device(17), "/dev/ttyGiven");
  EXPECT_EQ(ports.device(18), "/dev/ttyUSB0");
  const auto listed = listedPorts(ports);
  const auto given = std::ranges::find(listed, 17, &ListedPort::number);
  ASSERT_NE(given, listed.end());
  EXPECT_TRUE(given->isAssigned);
}

TEST(SerialDevices, AreThoseWithHardwareAndNameTheirDriver) {
  const TemporaryFolder system;
  const auto add = [&system](const fs::path& device, const std::string& name,
                             const std::string& driver, const std::string& type) {
    fs::create_directories(system.path() / device);
    fs::create_directories(system.path() / "tty" / name);
    fs::create_symlink(system.path() / device, system.path() / "tty" / name / "device");
    if (name == "null") {
      system.write((device.parent_path() / "manufacturer").string(), "Maker\n");
      system.write((device.parent_path() / "product").string(), "UART\n");
      system.write((device.parent_path() / "serial").string(), "A1\n");
      system.write((device / "port_number").string(), "2\n");
    }
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
  EXPECT_EQ(portMaker("/dev/null", devices), "Maker UART");
  EXPECT_EQ(portMaker("/dev/tty", devices), "");
  EXPECT_EQ(portHardware("/dev/null", devices), "ftdi_sio\nMaker\nUART\nA1\n\n2");
  EXPECT_EQ(portHardware("/dev/zero", devices), "") << "it is not plugged in";
}

}  // namespace
}  // namespace touch::test
