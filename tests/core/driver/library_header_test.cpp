#include "core/driver/library_header.h"

#include <gtest/gtest.h>

#include <string>

namespace touch::test {
namespace {

/// A file made of numbers, lowest byte first, in their places.
class Image {
 public:
  Image& put(std::size_t place, std::uint64_t value, std::size_t size) {
    if (bytes_.size() < place + size) bytes_.resize(place + size);
    for (std::size_t i = 0; i < size; ++i)
      bytes_[place + i] = static_cast<char>(value >> 8 * i & 0xFF);
    return *this;
  }
  Image& put(std::size_t place, const std::string& text) {
    bytes_.resize(std::max(bytes_.size(), place + text.size()));
    bytes_.replace(place, text.size(), text);
    return *this;
  }
  FileBytes file() const {
    return [bytes = bytes_](std::size_t place, std::size_t count) {
      return place < bytes.size() ? bytes.substr(place, count) : std::string();
    };
  }
  void cut(std::size_t size) { bytes_.resize(std::min(size, bytes_.size())); }
  std::size_t size() const { return bytes_.size(); }

 private:
  std::string bytes_;
};

constexpr std::size_t header = 0x40;
constexpr std::size_t resources = 0x200;

/// A PE file with version 1.2.3.65535 in its resources, which it loads at 0x1000.
Image library(bool is64) {
  Image image;
  const std::size_t optional = header + 24;
  const std::size_t optionalSize = is64 ? 240 : 224;
  const std::size_t section = optional + optionalSize;
  image.put(0, "MZ").put(0x3C, header, 4).put(header, std::string("PE\0\0", 4));
  image.put(header + 4, is64 ? 0x8664 : 0x14C, 2).put(header + 6, 1, 2);
  image.put(header + 20, optionalSize, 2).put(optional, is64 ? 0x20B : 0x10B, 2);
  image.put(optional + (is64 ? 112 : 96) + 16, 0x1000, 4);
  image.put(section + 12, 0x1000, 4).put(section + 16, 0x200, 4).put(section + 20, resources, 4);
  const auto folder = [&image](std::size_t place, std::uint32_t kind, std::uint32_t entry) {
    image.put(resources + place + 14, 2, 2).put(resources + place + 16, 3, 4);
    image.put(resources + place + 24, kind, 4).put(resources + place + 28, entry, 4);
    // Of names and languages the first is taken.
    if (kind != 16) image.put(resources + place + 20, entry, 4);
  };
  folder(0, 16, 0x80000040);
  folder(0x40, 1, 0x80000080);
  folder(0x80, 0x409, 0xC0);
  image.put(resources + 0xC0, 0x1100, 4);
  const std::size_t info = resources + 0x100 + 40;
  image.put(info, 0xFEEF04BD, 4).put(info + 8, 0x00010002, 4).put(info + 12, 0x0003FFFF, 4);
  return image;
}

TEST(LibraryHeader, TellsBitsAndVersion) {
  EXPECT_EQ(libraryBits(library(true).file()), 64);
  EXPECT_EQ(libraryBits(library(false).file()), 32);
  EXPECT_EQ(libraryVersion(library(true).file()), "1.2.3.65535");
  EXPECT_EQ(libraryVersion(library(false).file()), "1.2.3.65535");
  EXPECT_EQ(libraryBits(Image()
                            .put(0,
                                 "\x7F"
                                 "ELF\x01")
                            .file()),
            32);
  EXPECT_EQ(libraryBits(std::filesystem::path(ATTACHED_LIBRARY)), 8 * sizeof(void*));
  EXPECT_EQ(libraryVersion(std::filesystem::path(ATTACHED_LIBRARY)), "");
}

TEST(LibraryHeader, SaysNothingOfWhatIsNone) {
  EXPECT_EQ(libraryBits(Image()
                            .put(0,
                                 "\x7F"
                                 "ELF\x07")
                            .file()),
            std::nullopt);
  EXPECT_EQ(libraryBits(Image().put(0, "no library").file()), std::nullopt);
  EXPECT_EQ(libraryBits(library(true).put(header + 4, 0xAA64, 2).file()), std::nullopt);
  for (const char* const file : {"/", "/none", "/dev/zero", ""})
    EXPECT_EQ(libraryBits(std::filesystem::path(file)), std::nullopt) << file;
  EXPECT_EQ(libraryVersion(library(true).put(resources + 0x128, 0, 4).file()), "");
  for (std::size_t size = library(true).size(); size-- > 0;) {
    Image cut = library(true);
    cut.cut(size);
    libraryBits(cut.file());
    EXPECT_NE(libraryVersion(cut.file()), "1.2.3.65535");
  }
}

}  // namespace
}  // namespace touch::test
