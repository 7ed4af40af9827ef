#pragma once

#include <string>
#include <tl/expected.hpp>

#include "support/text/language.h"

namespace touch {

/// What is wrong with a file: which one, where in it, what was expected, what stands there instead.
struct FileError {
  std::string file;
  int line = 0;  ///< counted from 1; 0 when the whole file is meant
  std::string expected;
  std::string found;

  /// One sentence for the user: "errmsg.txt, line 3: expected ..., found ...".
  std::string describe() const {
    const std::string place =
        line > 0 ? filled(say("files", "%1, line %2"), {file, std::to_string(line)}) : file;
    return found.empty()
               ? filled(say("files", "%1: expected %2"), {place, expected})
               : filled(say("files", "%1: expected %2, found %3"), {place, expected, found});
  }
};

/// A value, or the reason why there is none. `E` is FileError, where the reason is in a file, the
/// text for the user or whatever else the caller needs to know.
template <typename T, typename E = FileError>
using Result = tl::expected<T, E>;

/// Whether something went well, or why it did not.
using Status = Result<void>;

}  // namespace touch
