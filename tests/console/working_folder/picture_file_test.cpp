#include "console/working_folder/picture_file.h"

#include <gmock/gmock.h>

#include "tests/doubles/temporary_folder.h"

namespace touch {
namespace {

using namespace std::string_literals;

std::string bigEndian(std::uint32_t value, int count = 4) {
  std::string text;
  for (int shift = 8 * (count - 1); shift >= 0; shift -= 8)
    text += static_cast<char>(value >> shift);
  return text;
}
std::string littleEndian(std::uint32_t value, int count = 4) {
  const std::string text = bigEndian(value, count);
  return {text.rbegin(), text.rend()};
}

std::string jpeg(int width, int height, int scans = 1, char frame = '\xC2') {
  std::string text = "\xFF\xD8\xFF\xE0\x00\x04xy\xFF"s + frame + "\x00\x0B\x08"s;
  text += bigEndian(static_cast<std::uint32_t>(height), 2);
  text += bigEndian(static_cast<std::uint32_t>(width), 2) + "\x01\x01\x11\x00"s;
  for (int i = 0; i < scans; ++i)
    text += "\xFF\xDA\x00\x08\x01\x01\x00\x00\x3F\x00 pixels \xFF\x00\xFF\xD0 more"s;
  return text + "\xFF\xD9";
}
std::string chunk(const char* kind, const std::string& text, std::uint32_t declared) {
  return bigEndian(declared) + kind + text + "crc.";
}
std::string png(std::uint32_t width, std::uint32_t height, char interlaced = 0,
                const std::string& chunks = {}) {
  return "\x89PNG\r\n\x1A\n"s + bigEndian(13) + "IHDR" + bigEndian(width) + bigEndian(height) +
         "\x08\x02\x00\x00"s + interlaced + "crc." + chunks + chunk("IEND", "", 0);
}
std::string gif(std::uint32_t width, std::uint32_t height) {
  return "GIF89a" + littleEndian(1, 2) + littleEndian(1, 2) + "\x80\x00\x00"s + "colour" +
         "\x21\xF9\x02xy\x00"s + "\x2C" + littleEndian(0) + littleEndian(width, 2) +
         littleEndian(height, 2) + "\x00\x02\x03"s + "abc" + "\x00\x3B"s;
}
std::string bmp(std::uint32_t width, std::uint32_t height) {
  return "BM" + littleEndian(0) + littleEndian(0) + littleEndian(54) + littleEndian(40) +
         littleEndian(width) + littleEndian(height) + littleEndian(1, 2) + littleEndian(24, 2) +
         std::string(24 + 48, '\0');
}
/// Each entry takes the same picture.
std::string ico(std::uint32_t entries, std::uint32_t side, const std::string& chunks = {}) {
  const std::string picture = png(side, side, 0, chunks);
  std::string text = "\x00\x00\x01\x00"s + littleEndian(entries, 2);
  for (std::uint32_t i = 0; i < entries; ++i)
    text += std::string(8, '\0') + littleEndian(static_cast<std::uint32_t>(picture.size())) +
            littleEndian(6 + 16 * entries);
  return text + picture;
}

TEST(PictureFiles, AreReadToTheirEndAndRefusedBeyondTheirLimits) {
  const std::string pixels = "expected at most 16777216 pixels, found ";
  const std::string packed = "expected a picture without compressed text, found a chunk ";
  const std::string besides = "expected at most 1048576 bytes besides the pixels, found ";
  const std::string profile = chunk("iCCP", "", 0);
  const std::string text =
      chunk("IDAT", "pixels", 6) + chunk("tEXt", "text", 4) + chunk("iTXt", "a\0\0"s, 3);
  const std::string longText = chunk("tEXt", std::string(1U << 14U, 'x'), 1U << 14U);
  const std::string whole = "expected a whole picture, found one that is cut off";
  const struct {
    const char* what;
    std::string sound;
    std::string tooMuch;
    std::string problem;
  } cases[] = {
      {"jpeg", jpeg(4096, 4096, 1, '\xC0'), jpeg(4097, 4096, 1, '\xC0'), pixels},
      {"progressive", jpeg(2896, 2896), jpeg(2897, 2896), "expected at most 8388608 pixels, found"},
      {"in scans", jpeg(2896, 2896, 23), jpeg(2897, 2896, 2, '\xC0'), "expected at most 8388608 "},
      {"scans", jpeg(100, 100, 2000), jpeg(2896, 2896, 24),
       "expected at most 23 scans of as many pixels, found 24"},
      {"png", png(4096, 4096), png(0xFFFFFFFF, 0xFFFFFFFF), pixels},
      {"interlaced", png(2896, 2896, 1), png(2897, 2896, 1), "expected at most 8388608 "},
      {"packed text", png(1, 1, 0, text), png(1, 1, 0, chunk("zTXt", "text", 4)), packed + "zTXt"},
      {"behind pixels", png(1, 1, 0, text), png(1, 1, 0, text + chunk("iTXt", "a\0\1"s, 3)),
       packed},
      {"text", png(1, 1, 0, text), png(1, 1, 0, text + chunk("tEXt", "", 1U << 20U)), besides},
      {"profile", png(1, 1, 0, profile), png(1, 1, 0, chunk("iCCP", "", 1U << 20U)), besides},
      {"profiles", ico(4, 1, profile), ico(5, 1, profile), "expected at most 4 colour profiles, "},
      {"text in an icon", ico(1, 1, text), ico(64, 1, longText), besides},
      {"packed in an icon", ico(1, 1, text), ico(1, 1, text + chunk("zTXt", "", 0)), packed},
      {"gif", gif(4096, 4096), gif(4097, 4096), pixels},
      {"bmp", bmp(4, 4), bmp(65535, 65535), pixels},
      {"bmp upside down", bmp(4, 0xFFFFFFFC), bmp(0x80000000, 0x80000000), pixels},
      {"ico", ico(64, 256), ico(64, 257), "expected at most 4194304 pixels, found "},
      {"entries", ico(64, 1), ico(65, 1), "expected at most 64 pictures in an icon, found 65"},
      {"bytes", gif(1, 1), std::string((16U << 20U) + 1, 'x'), "expected at most 16777216 bytes"},
      {"nothing", gif(1, 1), "", "expected a picture, found an empty line"},
      {"no size", png(1, 1), png(0, 1), whole},
  };
  const test::TemporaryFolder folder;
  const auto file = folder.path() / "p";
  const auto complaint = [&](const std::string& content) {
    folder.write("p", content);
    const auto read = readPicture(file);
    return read ? "sound" : read.error().describe();
  };
  for (const auto& [what, sound, tooMuch, problem] : cases) {
    SCOPED_TRACE(what);
    EXPECT_EQ(complaint(sound), "sound");
    EXPECT_THAT(complaint(tooMuch), testing::StartsWith(file.string() + ": " + problem));
    for (const std::size_t cut : {1U, 8U, 20U})
      EXPECT_NE(complaint(sound.substr(0, sound.size() - cut)), "sound") << cut;
    EXPECT_EQ(complaint(sound + "what follows does no harm"), "sound");
  }
}

}  // namespace
}  // namespace touch
