#pragma once

#include <string>
#include <vector>

#include "core/session.h"

namespace touch {

/// What a controller says of itself; empty texts where it said nothing usable.
struct Identity {
  std::string unitType;  ///< "UT"
  std::string
      firmware;  ///< "OI": the label's text, whose last five characters are the firmware number
};

/// Reads unit type and firmware of the session's controller.
Identity readfw(const Access& access);

/// Asks the session's controller "Uu" which model it is.
ModelProbe conMT(const Access& access);

/// What the unit type says about the model, for people: "first model", "model variant 03"; empty
/// when it says nothing.
std::string modelName(const std::string& unitType);

/// The firmware that wants its parameter 01 written again before it is locked.
bool wantsClosingParameter(const std::string& firmware);

/// True when the name is that of a controller on a serial line.
bool isSerialController(const std::string& name);

/// The lines of the information list for the session's controller: line, identity and unit type.
std::vector<std::string> controllerInformation(const Access& access);

}  // namespace touch
