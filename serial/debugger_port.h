#pragma once

#include <optional>
#include <string>

#include "core/connection.h"
#include "core/serial_port.h"
#include "core/session.h"

namespace touch {

class Prompt;

/// The serial port while the debugger talks to a controller without the driver. The driver lets go of its port when
/// this takes it, and gets it back, whatever happens between: on `giveBack`, when no port can be opened, when the device
/// has gone, on destruction. Only while one is open the driver is without.
/// The driver's controller stays open from the one to the other, because both operations want the same handle;
/// CloseController is the last thing said to the driver.
class DebuggerPort {
 public:
  /// The COM port on which the debugger always starts; it does not search.
  static constexpr int startPort = 1;

  /// Takes nothing yet. All of them must outlive it.
  DebuggerPort(const Access& access, Prompt& prompt, SerialPort& serial)
      : access_(access), prompt_(prompt), serial_(serial) {}
  DebuggerPort(const DebuggerPort&) = delete;
  DebuggerPort& operator=(const DebuggerPort&) = delete;
  ~DebuggerPort() { giveBack(); }

  /// Makes the driver let go and opens the COM port at "9600,n,8,1". Returns why it cannot be opened and what to do about
  /// it, or nothing. After an error the driver has its port back, and the user can mend it and try again.
  std::optional<std::string> take(int port = startPort);
  /// Closes the port, makes the driver take its own again (even when the port was closed already) and closes the
  /// controller. Without having taken it nothing happens.
  void giveBack();
  bool isTaken() const { return connection_.has_value(); }

  SerialPort& serial() { return serial_; }

  /// Opens COM1 to COM16 in turn, each in place of the one before; ports that are absent are passed over. COM16 stays
  /// open if there is one.
  void selectcom();
  /// Looks on COM1 and COM2, and only there, for a controller that answers "Z", and leaves its port open; the driver
  /// lets go before. Without one no port stays open and the user is told. Returns the found port.
  std::optional<int> comporttest();
  /// The COM port that is open, or was the last that was tried.
  int selected() const { return selected_; }
  /// What the last comporttest found.
  std::optional<int> foundPort() const { return foundPort_; }
  /// Tells a controller that speaks 7 data bits and 2 stop bits to speak 8 and 1 from now on, and sets the port to
  /// "9600,n,8,1". Whether the controller has understood is not known. False when it could not be told; the user knows
  /// why then.
  bool N72toN81();

  /// When the device has gone while the port was open: gives the port back and tells the user, once. Returns whether
  /// that was so. To be asked at the end of whatever uses the port.
  bool tellLoss();

  /// Marks the port as used by an action with waits in it: nobody else may read or write it meanwhile.
  class Use {
   public:
    explicit Use(DebuggerPort& port) : port_(port) { ++port_.uses_; }
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;
    ~Use() { --port_.uses_; }

   private:
    DebuggerPort& port_;
  };
  bool isBusy() const { return uses_ > 0; }

 private:
  void takeFromDriver();
  void select(int port);
  /// What the controller on the open port says to two "Z"; empty when it says nothing.
  std::vector<std::uint8_t> probe();
  void sendFresh(const Frame& frame);

  Access access_;
  Prompt& prompt_;
  SerialPort& serial_;
  std::optional<Connection> connection_;  ///< while the driver's port is taken
  int selected_ = startPort;
  std::optional<int> foundPort_;
  int uses_ = 0;
};

}  // namespace touch
