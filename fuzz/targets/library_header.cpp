// Headers of libraries.

#include "core/driver/library_header.h"

#include "fuzz/target.h"

namespace touch::fuzz {

void execute(std::span<const std::uint8_t> bytes) {
  const std::string_view text = textOf(bytes);
  const FileBytes file = [text](std::size_t offset, std::size_t count) {
    return offset < text.size() ? std::string(text.substr(offset, count)) : std::string();
  };
  const auto bits = libraryBits(file);
  require(!bits || *bits == 32 || *bits == 64, "a library has 32 or 64 bits");
  libraryVersion(file);
}

}  // namespace touch::fuzz
