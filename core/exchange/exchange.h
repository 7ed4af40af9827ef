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

/// Writes the frame, waits, reads up to 10 bytes.
Reply ask(Connection& connection, Clock& clock, const Frame& frame, std::chrono::milliseconds wait);

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
