#pragma once

#include <functional>
#include <optional>

#include "app/completion.h"
#include "app/manual.h"

namespace touch {

/// What is said when the standard output has not taken all.
inline constexpr const char* lostOutput =
    "the output could not be written: nobody reads it any more, or the disk is full";

/// Parses a program's command line, or says the exit status to end with: after --help and
/// --version, and after wrong use, which is explained on the error output. In the first place it
/// also takes what is not for users: "--man" prints the manual page, "--complete WORD..." what may
/// stand in place of the last word; before those `declareAll` declares what has been left
/// undeclared as yet.
std::optional<int> parseCommandLine(
    CLI::App& app, const Manual& manual, const KnownValues& known, int argc, char** argv,
    const std::function<void()>& declareAll = [] {});

}  // namespace touch
