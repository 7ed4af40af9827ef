#pragma once

#include <chrono>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/exchange/reply.h"
#include "core/session.h"
#include "serial/debugger/console_log.h"
#include "serial/debugger/debugger_port.h"

namespace touch {

/// What stands in the debugger's controls when "Send" is pressed.
struct SendChoice {
  std::string entry{};                   ///< of the command list; empty: none is chosen
  std::optional<std::size_t> setting{};  ///< the chosen item of the entry's setting list, from 0
  std::string address{};                 ///< two hexadecimal digits, as the selector gives them
  std::string high{};                    ///< the data boxes
  std::string low{};
  std::string digit{};  ///< behind a command that needs one
};

/// A controller's answer and how the reply labels show it.
struct DebuggerReply {
  std::vector<std::uint8_t> bytes;
  std::string text;  ///< the characters from 30 on, each byte one of Latin-1, in UTF-8
  std::string hex;   ///< each byte in two digits with a blank behind it
};
DebuggerReply shownReply(std::vector<std::uint8_t> bytes);

/// The debugger's "Send": puts the chosen command on the wire in the active set's framing, waits,
/// repeats it when the answer is no good, and shows what came. Everything that went out and came
/// back stands in the console's log.
class DebuggerExchange {
 public:
  DebuggerExchange(const Access& access, Prompt& prompt, DebuggerPort& port, ConsoleLog& log)
      : access_(access), prompt_(prompt), port_(port), log_(log) {}

  /// The answer to show, or nothing: when nothing was sent, when nothing printable came back (the
  /// user has been told the reason) and for the change of the line's settings, which has no answer.
  /// While an exchange is under way a second one does nothing.
  std::optional<DebuggerReply> send(const SendChoice& choice);

  /// Puts `bytes` on the wire once, as they are. What came back within the set's usual time, which
  /// may be nothing; no value when they did not go out and the user was told why.
  std::optional<DebuggerReply> sendBytes(std::span<const std::uint8_t> bytes);

  /// True until a command was sent after which the controller may report in another format.
  bool replyFormat() const { return replyFormat_; }

 private:
  std::optional<DebuggerReply> converse(const SendChoice& choice);
  std::optional<DebuggerReply> elocmd(const SendChoice& choice);
  void changeLineSettings();
  /// What goes on the wire for a command of the M01 or the quorvane set; empty when the user was
  /// told why nothing does.
  Frame framed(std::string_view command, const SendChoice& choice);
  bool portIsOpen();
  /// Makes `frame` the shared output frame, and the port ready for it.
  void begin(const Frame& frame);
  void clearPort();
  /// The answer; nothing when `bytes` did not go out, which the user has been told.
  std::optional<Reply> ask(std::span<const std::uint8_t> bytes, std::chrono::milliseconds wait);
  std::optional<DebuggerReply> display(std::optional<Reply> reply);

  Access access_;
  Prompt& prompt_;
  DebuggerPort& port_;
  ConsoleLog& log_;
  bool replyFormat_ = true;
};

}  // namespace touch
