#include "support/files/sha256.h"

#include <gcrypt.h>

#include <array>
#include <cstdint>

namespace touch {

std::string sha256(std::string_view bytes) {
  // The library sets itself up when its version is asked for; only the first time it does.
  static const char* const version = gcry_check_version(nullptr);
  static_cast<void>(version);
  std::array<std::uint8_t, 32> digest{};
  gcry_md_hash_buffer(GCRY_MD_SHA256, digest.data(), bytes.data(), bytes.size());
  std::string text;
  constexpr const char* digits = "0123456789abcdef";
  for (const std::uint8_t byte : digest) {
    text += digits[byte >> 4U];
    text += digits[byte & 0x0FU];
  }
  return text;
}

}  // namespace touch
