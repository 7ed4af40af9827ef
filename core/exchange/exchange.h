#pragma once

#include <chrono>

#include "core/driver/connection.h"

namespace touch {

using namespace std::chrono_literals;

/// How long a controller needs to answer an enquiry ("UT", "OI", "Uu").
inline constexpr auto enquiryWait = 100ms;
/// How long it needs to store a parameter word.
inline constexpr auto parameterWait = 200ms;
/// How long it needs to carry out a command that changes it ("RD", "R", "CR", "CX", "SE").
inline constexpr auto commandWait = 300ms;

/// How a command is asked.
struct Asking {
  std::chrono::milliseconds wait{};  ///< from the frame to its reply
  int tries = 1;                     ///< how often the frame is written until a reply is good
  bool (*isGood)(const Reply&) = [](const Reply& reply) { return reply.acknowledged(); };
};

/// Writes the frame, waits and reads up to 10 bytes, until the reply is good or the tries are used
/// up. Returns the last reply, whatever it is.
Reply ask(Connection& connection, Clock& clock, const Frame& frame, const Asking& asking);

/// Opens the session's controller, drops what it had to say, and writes `frame` until it is
/// acknowledged: at most twice. Returns the last reply: what the second says counts, whatever it
/// is.
Reply exchange(const Access& access, const Frame& frame);
/// The same; returns whether the frame was acknowledged.
bool exchangeAcknowledged(const Access& access, const Frame& frame);

/// Opens `controller` and writes `frame` twice without judging the reply: for a command that a
/// controller on its way out of use may no longer answer.
void exchangeUnacknowledged(const Access& access, const std::string& controller,
                            const Frame& frame);

}  // namespace touch
