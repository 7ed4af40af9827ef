#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/driver/connection.h"
#include "core/serial_port.h"
#include "core/session.h"
#include "serial/port/line_settings.h"
#include "support/gate.h"

namespace touch {

class ConsoleLog;
class Prompt;

/// The serial port while the debugger talks to a controller without the driver. The driver is made
/// to let go of its port when this first takes one, and gets it back once, on `giveBack`, whatever
/// became of the port between: refused, lost or never found. Whoever has let it be taken gives it
/// back. Its controller stays open all that time, because both operations want the same handle;
/// CloseController is the last thing said to the driver.
class DebuggerPort {
 public:
  /// The COM port on which the debugger always starts; it does not search.
  static constexpr int startPort = 1;

  /// Takes nothing yet. All of them must outlive it. What it says to the controller by itself, and
  /// hears, stands in `log`.
  DebuggerPort(const Access& access, Prompt& prompt, SerialPort& serial, ConsoleLog& log)
      : access_(access), prompt_(prompt), serial_(serial), log_(log), gate_(access.clock) {}
  DebuggerPort(const DebuggerPort&) = delete;
  DebuggerPort& operator=(const DebuggerPort&) = delete;
  /// The last resort of who has not given the port back. What fails then nobody hears of.
  ~DebuggerPort();

  /// Makes the driver let go, unless it has, and opens the COM port at `line`, else as the user has
  /// set it, else at "9600,n,8,1". The error says why it cannot be opened and what to do about it;
  /// the user can mend it and try again.
  Result<void, std::string> take(int port = startPort,
                                 const std::optional<LineSettings>& line = std::nullopt);
  /// Makes the driver let go of its port, unless it has.
  void takeFromDriver();
  /// Closes the port, makes the driver take its own again (even when the port was closed already)
  /// and closes the controller. Without having taken it nothing happens.
  void giveBack();
  bool isTaken() const { return connection_.has_value(); }
  /// What the driver answered to letting go; nothing before it was asked.
  std::optional<std::int32_t> letGoResult() const { return letGo_; }
  /// Says that the driver has let go of its port, or which one has not; nothing where there is no
  /// controller.
  std::string driverText() const;

  SerialPort& serial() { return serial_; }

  /// Opens COM1 to COM16 in turn, each in place of the one before; ports that are absent are passed
  /// over. COM16 stays open if there is one.
  void selectcom();
  /// Looks on COM1 and COM2, and only there, for a controller that answers "Z", and leaves its port
  /// open; the driver lets go before. Without one no port stays open and the user is told. Returns
  /// the found port.
  std::optional<int> comporttest();
  /// A port and how its line is set.
  struct Place {
    int port = startPort;
    LineSettings line{};
  };
  struct Search {
    std::optional<Place> found;
    std::map<int, std::string> refused;  ///< why, by port, it could not be opened, or not any more
    bool isComplete = true;              ///< false: it was cut short
  };
  /// Asks at each place for a controller that answers "Z". The first at which one does stays open,
  /// else none. Settings that a port does not take are passed over, and a port that cannot be
  /// opened with all its places. `onAsking` is told the number of each place before it is asked.
  /// Ends early when the gate is cut short.
  Search search(std::span<const Place> places,
                const std::function<void(std::size_t)>& onAsking = nullptr);
  /// The COM port that is open, or was the last that was tried.
  int selected() const { return selected_; }
  /// What the last comporttest found.
  std::optional<int> foundPort() const { return foundPort_; }
  /// Tells a controller that speaks 7 data bits and 2 stop bits to speak 8 and 1 from now on, and
  /// sets the port to "9600,n,8,1". Whether the controller has understood is not known. False when
  /// it could not be told; the user knows why then.
  bool N72toN81();

  /// How the port's line is set outside of scripts, and of a search, which leaves it at the normal
  /// settings.
  LineSettings line() const;
  /// For this port from now on, as long as this lives. The error says why it does not take them.
  Result<void, std::string> setLine(const LineSettings& line);
  /// Gives the port these settings back.
  void setUsualLine() { serial_.setSettings(describe(line())); }
  /// The wires that this end switches. A port that is opened has them on.
  struct Wires {
    bool dtr = true;
    bool rts = true;
  };
  /// As the user has switched those of the port that is selected.
  Wires wires() const;
  /// Also each time that the port is opened from now on, as long as this lives. False when it has
  /// no such wire.
  bool switchLine(LineSwitch which, bool on);
  /// Holds the line for as long as any controller takes for a break. False when it has none.
  bool sendBreak();

  /// Writes `bytes` and notes that they went out. Returns whether they did; the user is to be told
  /// otherwise.
  bool send(std::span<const std::uint8_t> bytes);
  /// Everything that has come in, which is noted as well, and what of it was damaged.
  std::vector<std::uint8_t> receive();
  /// Notes what has come damaged since this was last called.
  void noteDamage();
  /// The bytes that came damaged since the port was first taken.
  std::size_t damaged() const { return damaged_; }
  /// Says that a command did not go out, and why.
  void tellNotSent();

  /// When the device has gone while the port was open: tells the user, once. Returns whether that
  /// was so. To be asked at the end of whatever uses the port.
  bool tellLoss();
  /// The same for whoever says it in another way: why it has gone.
  std::optional<std::string> takeLoss();
  /// The device has gone, and no other port was chosen since.
  bool isAwaited() const { return awaited_ == selected_ && !serial_.isOpen(); }
  /// The device of a port that was in use has gone, which the user knows: the console says when,
  /// and takeUpAgain opens it.
  void await(int port);
  /// Opens the port as it was when its device is there again. Returns whether it was. To be asked
  /// now and then.
  bool takeUpAgain();
  /// Opens the awaited port's hardware, which is at another port now, as it was set. Returns
  /// whether it was opened.
  bool takeUpAs(int port, const std::string& device);

  /// Held by whatever waits for an answer on the port, or has a box up: nobody else may read or
  /// write it then, nor give it back.
  Gate& gate() { return gate_; }
  const Gate& gate() const { return gate_; }

 private:
  /// Whether it is open, or has been until its device went.
  bool wasOpenLast() const { return serial_.isOpen() || serial_.lost(); }

  void findController();
  bool changeLineSettings();
  /// Where there is no controller nobody holds a port, whatever was answered.
  bool driverHoldsPort() const { return letGo_ == 0 && !controller_.empty(); }
  Result<void, std::string> openPort(int port);
  /// With its wires as the user has switched them.
  Result<void, std::string> open();
  void select(int port);
  /// What the controller on the open port says to two "Z"; empty when it says nothing.
  std::vector<std::uint8_t> probe();
  void noteGone();
  bool sendFresh(const Frame& frame);
  /// Opens the port, unless it is open, and sets its line. False when that place is not to be
  /// asked.
  bool isReadyAt(const Place& place, Search& search);

  Access access_;
  Prompt& prompt_;
  SerialPort& serial_;
  ConsoleLog& log_;
  std::optional<Connection> connection_;  ///< from the first taking to the end
  std::string controller_;                ///< whose driver was asked to let go; empty: none
  std::optional<std::int32_t> letGo_;
  bool lossTold_ = false;
  std::optional<int> awaited_;  ///< the port whose device has gone
  std::size_t damaged_ = 0;
  int selected_ = startPort;
  std::optional<int> foundPort_;
  std::map<int, LineSettings> lines_;  ///< by port, where the user has set them
  std::map<int, Wires> wires_;         ///< by port, where the user has switched one
  Gate gate_;
};

}  // namespace touch
