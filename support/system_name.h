#pragma once

#include <string>

namespace touch {

/// The operating system and its version, e.g. "Debian GNU/Linux 12 (bookworm), Linux 6.1.0-18-amd64
/// x86_64".
std::string systemName();

}  // namespace touch
