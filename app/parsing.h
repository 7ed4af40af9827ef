#pragma once

#include <functional>
#include <optional>

#include "app/completion.h"
#include "app/manual.h"

namespace touch {

/// Parses a program's command line, or says the exit status to end with: after --help and
/// --version, and after wrong use, which is explained on the error output. In the first place it
/// also takes what is not for users: "--man" prints the manual page, "--complete WORD..." what may
/// stand in place of the last word; before those `declareAll` declares what has been left
/// undeclared as yet.
std::optional<int> parseCommandLine(
    CLI::App& app, const Manual& manual, const KnownValues& known, int argc, char** argv,
    const std::function<void()>& declareAll = [] {});

}  // namespace touch
