#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "support/result.h"

namespace touch {

// The two pictures of the working folder: JPEG, PNG, GIF, BMP or ICO. Whoever can write there must
// not be able to hold up the program's start or to fill its memory, which takes a file of a few
// bytes.

/// What a picture may be at most, so that it is decoded within a second and a hundred megabytes.
struct PictureLimits {
  std::size_t bytes = std::size_t{16} << 20U;
  std::uint64_t pixels = std::uint64_t{16} << 20U;
  std::uint64_t pixelsInScans = std::uint64_t{8}
                                << 20U;  ///< what all scans have said of each is kept to the last
  std::uint64_t iconPixels = std::uint64_t{4}
                             << 20U;    ///< all its pictures together, which stay in memory
  std::uint64_t scanned = 200'000'000;  ///< pixels, each as often as the file has scans over all
  std::size_t entries = 64;             ///< pictures of an icon
  std::size_t profiles = 4;             ///< of colours, in all PNGs of an icon
  std::uint64_t besides = std::uint64_t{1} << 20U;  ///< text, colours and the like of PNGs
};

/// A picture that may be decoded.
struct PictureFile {
  std::string content;
  std::string_view format;  ///< "jpeg", "png", "gif", "bmp" or "ico"
};

/// Reads a picture to its end, without decoding it, and refuses what is cut off or beyond `limits`.
Result<PictureFile> readPicture(const std::filesystem::path& file,
                                const PictureLimits& limits = {});

}  // namespace touch
