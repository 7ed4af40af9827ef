#include "console/working_folder/picture_file.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "support/files/whole_file.h"
#include "support/text/language.h"

namespace touch {

namespace {

using namespace std::string_view_literals;

/// Bytes of a file that may end anywhere: behind the end all are 0, and `isCutOff` says so.
class PictureBytes {
 public:
  explicit PictureBytes(std::string_view bytes) : bytes_(bytes) {}

  std::uint8_t at(std::size_t place) {
    if (place < bytes_.size()) return static_cast<std::uint8_t>(bytes_[place]);
    cutOff_ = true;
    return 0;
  }
  std::uint32_t big(std::size_t place, std::size_t count) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < count; ++i)
      value = value << 8U | at(place + i);
    return value;
  }
  std::uint32_t little(std::size_t place, std::size_t count) {
    std::uint32_t value = 0;
    for (std::size_t i = count; i-- > 0;)
      value = value << 8U | at(place + i);
    return value;
  }
  bool hasAt(std::size_t place, std::string_view text) const {
    return place <= bytes_.size() && bytes_.substr(place).starts_with(text);
  }
  void need(std::uint64_t end) { cutOff_ = cutOff_ || end > bytes_.size(); }
  bool isCutOff() const { return cutOff_; }

 private:
  std::string_view bytes_;
  bool cutOff_ = false;
};

/// How much there is to decode.
struct PictureExtent {
  std::uint64_t pixels = 0;
  std::uint64_t scans = 1;
  std::size_t entries = 1;
  bool isInScans = false;
  bool isIcon = false;
  std::size_t profiles = 0;      ///< of colours
  std::uint64_t besides = 0;     ///< bytes of a PNG that are no pixels
  std::string_view packed = {};  ///< the kind of a chunk whose text is unpacked, to any length
};

std::uint64_t magnitude(std::uint32_t value) {
  // The height of a bitmap is negative when its rows stand from top to bottom.
  return value >> 31U != 0 ? ~value + std::uint64_t{1} : value;
}

/// The place behind the data of a scan, in which FF is followed by 0 or by the number of a restart.
std::size_t behindScan(PictureBytes& bytes, std::size_t place) {
  while (!bytes.isCutOff()) {
    const std::uint8_t next = bytes.at(place + 1);
    const bool isMarker = bytes.at(place) == 0xFF && next != 0 && (next < 0xD0 || next > 0xD7);
    if (isMarker) break;
    ++place;
  }
  return place;
}

PictureExtent jpegExtent(PictureBytes& bytes) {
  constexpr std::uint8_t end = 0xD9;
  constexpr std::uint8_t scan = 0xDA;
  PictureExtent extent{0, 0};
  std::size_t place = 2;
  while (!bytes.isCutOff()) {
    const std::uint8_t marker = bytes.at(place + 1);
    if (bytes.at(place) != 0xFF || marker == 0xFF) {
      ++place;
      continue;
    }
    if (marker == end) break;
    const bool isFrame =
        marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
    if (isFrame) {
      const std::uint64_t pixels = std::uint64_t{bytes.big(place + 5, 2)} * bytes.big(place + 7, 2);
      extent.pixels = std::max(extent.pixels, pixels);
      // Progressive ones come in scans, however few there are.
      extent.isInScans = extent.isInScans || (marker & 3U) == 2;
    }
    place += 2 + std::max<std::size_t>(bytes.big(place + 2, 2), 2);
    if (marker != scan) continue;
    ++extent.scans;
    extent.isInScans = extent.isInScans || extent.scans > 1;
    place = behindScan(bytes, place);
  }
  return extent;
}

/// The kind of the chunk at `place` if it holds compressed text; else empty.
std::string_view packedText(PictureBytes& bytes, std::size_t place) {
  constexpr std::size_t longestKeyword = 79;
  if (bytes.hasAt(place + 4, "zTXt")) return "zTXt";
  if (!bytes.hasAt(place + 4, "iTXt")) return {};
  // Behind the keyword and its 0 stands whether it is.
  std::size_t end = place + 8;
  while (end < place + 8 + longestKeyword && bytes.at(end) != 0)
    ++end;
  return bytes.at(end) == 0 && bytes.at(end + 1) == 0 ? "" : "iTXt";
}

/// Text takes ten times its size when it is decoded, and packed text a thousand times, wherever in
/// the file it stands. A colour profile is packed too, but the decoder takes 8 MB of it at most.
PictureExtent pngExtentAt(PictureBytes& bytes, std::size_t start) {
  constexpr std::size_t aroundData = 12;
  constexpr std::size_t interlacing = 28;
  const std::uint64_t width = bytes.big(start + 16, 4);
  PictureExtent extent{.pixels = width * bytes.big(start + 20, 4),
                       .isInScans = bytes.at(start + interlacing) != 0};
  for (std::uint64_t place = start + 8; !bytes.isCutOff();) {
    const auto here = static_cast<std::size_t>(place);
    const std::uint32_t size = bytes.big(here, 4);
    place += size + aroundData;
    bytes.need(place);
    extent.besides += bytes.hasAt(here + 4, "IDAT") ? aroundData : size + aroundData;
    extent.profiles += bytes.hasAt(here + 4, "iCCP") ? 1 : 0;
    if (const auto kind = packedText(bytes, here); !kind.empty()) extent.packed = kind;
    if (bytes.hasAt(here + 4, "IEND")) break;
  }
  return extent;
}

PictureExtent pngExtent(PictureBytes& bytes) {
  return pngExtentAt(bytes, 0);
}

std::size_t behindColours(PictureBytes& bytes, std::size_t place, std::uint8_t flags) {
  constexpr std::uint8_t hasColours = 0x80;
  const std::size_t behind = place + ((flags & hasColours) != 0 ? 3U << ((flags & 7U) + 1U) : 0U);
  bytes.need(behind);
  return behind;
}

PictureExtent gifExtent(PictureBytes& bytes) {
  constexpr std::uint8_t end = 0x3B;
  constexpr std::uint8_t frame = 0x2C;
  PictureExtent extent{std::uint64_t{bytes.little(6, 2)} * bytes.little(8, 2)};
  std::size_t place = behindColours(bytes, 13, bytes.at(10));
  while (!bytes.isCutOff() && bytes.at(place) != end) {
    if (bytes.at(place) == frame) {
      const std::uint64_t pixels =
          std::uint64_t{bytes.little(place + 5, 2)} * bytes.little(place + 7, 2);
      extent.pixels = std::max(extent.pixels, pixels);
      place = behindColours(bytes, place + 10, bytes.at(place + 9)) + 1;
    } else {
      place += 2;
    }
    while (!bytes.isCutOff() && bytes.at(place) != 0)
      place += bytes.at(place) + std::size_t{1};
    ++place;
  }
  return extent;
}

PictureExtent bmpExtent(PictureBytes& bytes) {
  constexpr std::uint32_t oldHeader = 12;
  const bool isOld = bytes.little(14, 4) == oldHeader;
  const std::uint64_t width = isOld ? bytes.little(18, 2) : magnitude(bytes.little(18, 4));
  const std::uint64_t height = isOld ? bytes.little(20, 2) : magnitude(bytes.little(22, 4));
  const std::uint64_t bits = bytes.little(isOld ? 24 : 28, 2);
  const bool isPacked = !isOld && (bytes.little(30, 4) == 1 || bytes.little(30, 4) == 2);
  const std::uint64_t row = (width * bits + 31) / 32 * 4;
  // Far below where the product would run over.
  constexpr std::uint64_t widest = 65536;
  const bool isSane = width <= widest && height <= widest && bits <= 32;
  bytes.need(bytes.little(10, 4) + (isPacked || !isSane ? 1 : row * height));
  return {width * height};
}

PictureExtent icoExtent(PictureBytes& bytes) {
  PictureExtent extent{.entries = bytes.little(4, 2), .isIcon = true};
  for (std::size_t entry = 0; entry < extent.entries && !bytes.isCutOff(); ++entry) {
    const std::size_t row = 6 + 16 * entry;
    const std::size_t place = bytes.little(row + 12, 4);
    bytes.need(std::uint64_t{place} + bytes.little(row + 8, 4));
    std::uint64_t pixels = 0;
    if (bytes.hasAt(place, "\x89PNG")) {
      const PictureExtent png = pngExtentAt(bytes, place);
      pixels = png.pixels;
      extent.besides += png.besides;
      extent.profiles += png.profiles;
      if (!png.packed.empty()) extent.packed = png.packed;
    } else {
      pixels = magnitude(bytes.little(place + 4, 4)) * (magnitude(bytes.little(place + 8, 4)) / 2);
    }
    // Sixteen bits' worth of them cannot make the sum run over.
    constexpr std::uint64_t farTooMany = std::uint64_t{1} << 40U;
    extent.pixels += std::min(pixels, farTooMany);
  }
  return extent;
}

struct PictureKind {
  std::string_view beginning;
  std::string_view format;
  PictureExtent (*extent)(PictureBytes& bytes);
};
constexpr std::array pictureKinds = {
    PictureKind{"\xFF\xD8\xFF"sv, "jpeg", jpegExtent},
    PictureKind{"\x89PNG\r\n\x1A\n"sv, "png", pngExtent},
    PictureKind{"GIF8"sv, "gif", gifExtent},
    PictureKind{"BM"sv, "bmp", bmpExtent},
    PictureKind{"\x00\x00\x01\x00"sv, "ico", icoExtent},
};

/// What is wrong within a picture.
struct PictureFlaw {
  std::string expected;
  std::string found;
};

tl::unexpected<PictureFlaw> flaw(std::string expected, std::string found) {
  return tl::unexpected(PictureFlaw{std::move(expected), std::move(found)});
}

/// Refuses a picture that has too much of something.
Result<void, PictureFlaw> checkExtent(const PictureExtent& extent, const PictureLimits& limits) {
  if (extent.entries > limits.entries) {
    return flaw(
        filled(say("main", "at most %1 pictures in an icon"), {std::to_string(limits.entries)}),
        std::to_string(extent.entries));
  }
  if (!extent.packed.empty()) {
    return flaw(say("main", "a picture without compressed text"),
                filled(say("main", "a chunk %1"), {std::string(extent.packed)}));
  }
  if (extent.profiles > limits.profiles) {
    return flaw(
        filled(say("main", "at most %1 colour profiles"), {std::to_string(limits.profiles)}),
        std::to_string(extent.profiles));
  }
  if (extent.besides > limits.besides) {
    return flaw(filled(say("main", "at most %1 bytes besides the pixels"),
                       {std::to_string(limits.besides)}),
                std::to_string(extent.besides));
  }
  const std::uint64_t mostPixels = extent.isIcon      ? limits.iconPixels
                                   : extent.isInScans ? limits.pixelsInScans
                                                      : limits.pixels;
  if (extent.pixels > mostPixels) {
    return flaw(filled(say("main", "at most %1 pixels"), {std::to_string(mostPixels)}),
                std::to_string(extent.pixels));
  }
  if (extent.pixels * extent.scans > limits.scanned) {
    return flaw(filled(say("main", "at most %1 scans of as many pixels"),
                       {std::to_string(limits.scanned / extent.pixels)}),
                std::to_string(extent.scans));
  }
  return {};
}

}  // namespace

Result<PictureFile> readPicture(const std::filesystem::path& file, const PictureLimits& limits) {
  auto content = readWholeFile(file, limits.bytes);
  if (!content) return tl::unexpected(content.error());
  const auto refuse = [&file](std::string expected, std::string found) {
    return tl::unexpected(FileError{file.string(), 0, std::move(expected), std::move(found)});
  };
  const auto* const kind = std::ranges::find_if(
      pictureKinds, [&](const PictureKind& each) { return content->starts_with(each.beginning); });
  if (kind == pictureKinds.end())
    return refuse(say("main", "a picture"), foundText(content->substr(0, 4)));
  PictureBytes bytes(*content);
  const PictureExtent extent = kind->extent(bytes);
  if (const auto fits = checkExtent(extent, limits); !fits)
    return refuse(fits.error().expected, fits.error().found);
  if (bytes.isCutOff() || extent.pixels == 0)
    return refuse(say("main", "a whole picture"), say("main", "one that is cut off"));
  return PictureFile{std::move(*content), kind->format};
}

}  // namespace touch
