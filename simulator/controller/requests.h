#pragma once

#include <cstdint>

#include "core/driver/driver_operations.h"

/// The simulated driver's one export beside the driver's own operations: moves the finger, looks
/// behind the scenes, and makes things go wrong. `request` is zero-terminated text. The answer is
/// written zero-terminated into `answer`, cut to `size` bytes with its zero; `answer` may be null
/// when `size` is 0. Returns 1 when done; 0 when refused, and then the answer is the reason. Safe
/// to call from any thread.
///
/// Words are separated by one or more blanks. NAME is a controller's name and takes the rest of the
/// request. X and Y are fractions of the panel from 0 (left, top) to 1; numbers have a decimal
/// point whatever the locale.
///
///   touch X Y               the finger is down there, on every panel; moves it when it is down
///                           already
///   lift                    the finger is up
///   error NAME              answers "MEAN MAX": the distance between finger and report over a grid
///                           of 9 x 9 places, without noise, as fractions of the panel's width
///   map X Y NAME            answers "X Y": what the controller reports for a finger there, without
///                           noise, rotation ignored
///   report X Y NAME         answers "X Y": one report for a finger there, noise and all, rotation
///                           ignored; nothing where the panel feels no touch
///   port NAME               answers the device of a serial port that the driver has let go of,
///                           else nothing
///   controllers             answers the names of the controllers, one a line
///   rate NAME               answers how many reports a second it makes
///   become PROPERTY         describes a controller, one property at a time, as in
///                           described_controller.h; "become done" then puts it in the place of
///                           all others, once
///   fault FAULT on NAME     makes something go wrong; "off" ends it
///   faults                  answers the names of the faults, one a line
///   panel KEY VALUE NAME    changes the panel: offset-x, offset-y, gain-x, gain-y, skew, noise, as
///                           fractions of the converter's range; bow and dead-strip, as fractions
///                           of the panel. VALUE "new" is what the panel has when new
///   clock manual            time stands; "clock real" lets it run again
///   advance MS              moves the standing time on by up to a day
///   reset                   all controllers as when new: finger up, faults off, ports taken back;
///                           handles stay open
extern "C" std::int32_t NEXAPI_CALL NexapiSimulate(const char* request, char* answer,
                                                   std::int32_t size);

namespace touch::simulator {

/// What is looked up under "NexapiSimulate" in a driver that may or may not be the simulated one.
using SimulateFunction = std::int32_t(NEXAPI_CALL*)(const char* request, char* answer,
                                                    std::int32_t size);

}  // namespace touch::simulator
