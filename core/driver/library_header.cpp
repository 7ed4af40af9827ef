#include "core/driver/library_header.h"

#include <array>
#include <cstdint>
#include <fstream>
#include <memory>

namespace touch {

namespace {

// Numbers of PE files, lowest byte first.
constexpr std::size_t headerPlace = 0x3C;  // where a PE file says where its header is
constexpr std::size_t fileHeaderSize = 24;
constexpr std::size_t sectionSize = 40;
constexpr std::uint32_t machine32 = 0x14C;
constexpr std::uint32_t machine64 = 0x8664;
constexpr std::uint32_t magic64 = 0x20B;
constexpr std::uint32_t versionResource = 16;
constexpr std::uint32_t furtherFolder = 0x80000000;
constexpr std::uint32_t fixedVersionMark = 0xFEEF04BD;
constexpr std::size_t mostEntries = 4096;

class Reader {
 public:
  explicit Reader(const FileBytes& bytes) : bytes_(bytes) {}

  /// 0 where the file has ended.
  std::uint32_t number(std::size_t offset, std::size_t size) const {
    const std::string bytes = bytes_(offset, size);
    if (bytes.size() != size) return 0;
    std::uint32_t value = 0;
    for (std::size_t i = size; i-- > 0;)
      value = value << 8 | static_cast<unsigned char>(bytes[i]);
    return value;
  }
  std::string text(std::size_t offset, std::size_t size) const { return bytes_(offset, size); }

 private:
  const FileBytes& bytes_;
};

std::optional<std::size_t> peHeader(const Reader& file) {
  if (file.text(0, 2) != "MZ") return std::nullopt;
  const std::size_t header = file.number(headerPlace, 4);
  if (file.text(header, 4) != std::string("PE\0\0", 4)) return std::nullopt;
  return header;
}

/// Where a place in the loaded library stands in the file.
std::optional<std::size_t> inFile(const Reader& file, std::size_t header, std::uint32_t address) {
  const std::size_t sections = header + fileHeaderSize + file.number(header + 20, 2);
  const std::uint32_t count = file.number(header + 6, 2);
  for (std::uint32_t i = 0; i < count && i < mostEntries; ++i) {
    const std::size_t section = sections + i * sectionSize;
    const std::uint32_t begin = file.number(section + 12, 4);
    const std::uint32_t size = file.number(section + 16, 4);
    if (address >= begin && address - begin < size)
      return std::size_t{file.number(section + 20, 4)} + (address - begin);
  }
  return std::nullopt;
}

/// The offset in the entry of that number, or the first one, of a folder of resources.
std::optional<std::uint32_t> entryOf(const Reader& file, std::size_t folder,
                                     std::optional<std::uint32_t> wanted) {
  const std::uint32_t count = file.number(folder + 12, 2) + file.number(folder + 14, 2);
  for (std::uint32_t i = 0; i < count && i < mostEntries; ++i) {
    const std::size_t entry = folder + 16 + std::size_t{8} * i;
    if (!wanted || file.number(entry, 4) == *wanted) return file.number(entry + 4, 4);
  }
  return std::nullopt;
}

/// Where the version resource stands: folders of kinds, names and languages, one in another.
std::optional<std::size_t> versionInfo(const Reader& file, std::size_t header) {
  const bool is64 = file.number(header + fileHeaderSize, 2) == magic64;
  const std::size_t directories = header + fileHeaderSize + (is64 ? 112 : 96);
  const auto resources = inFile(file, header, file.number(directories + 16, 4));
  if (!resources) return std::nullopt;
  std::size_t folder = *resources;
  std::optional<std::uint32_t> wanted = versionResource;
  for (int level = 0; level < 3; ++level) {
    const auto entry = entryOf(file, folder, wanted);
    if (!entry) return std::nullopt;
    folder = *resources + (*entry & ~furtherFolder);
    if ((*entry & furtherFolder) == 0) return inFile(file, header, file.number(folder, 4));
    wanted.reset();
  }
  return std::nullopt;
}

FileBytes bytesOf(const std::filesystem::path& file) {
  // A pipe would be waited for.
  std::error_code unknown;
  if (!std::filesystem::is_regular_file(file, unknown))
    return [](std::size_t, std::size_t) { return std::string(); };
  return [stream = std::make_shared<std::ifstream>(file, std::ios::binary)](std::size_t offset,
                                                                            std::size_t count) {
    std::string bytes(count, '\0');
    stream->clear();
    stream->seekg(static_cast<std::streamoff>(offset));
    stream->read(bytes.data(), static_cast<std::streamsize>(count));
    bytes.resize(static_cast<std::size_t>(stream->gcount()));
    return bytes;
  };
}

}  // namespace

std::optional<int> libraryBits(const FileBytes& bytes) {
  const Reader file(bytes);
  if (file.text(0, 4) ==
      "\x7F"
      "ELF") {
    const std::uint32_t elfClass = file.number(4, 1);
    return elfClass == 1 ? std::optional(32) : elfClass == 2 ? std::optional(64) : std::nullopt;
  }
  const auto header = peHeader(file);
  const std::uint32_t machine = header ? file.number(*header + 4, 2) : 0;
  return machine == machine32   ? std::optional(32)
         : machine == machine64 ? std::optional(64)
                                : std::nullopt;
}

std::string libraryVersion(const FileBytes& bytes) {
  const Reader file(bytes);
  const auto header = peHeader(file);
  const auto info = header ? versionInfo(file, *header) : std::nullopt;
  if (!info) return {};
  // Its head, "VS_VERSION_INFO" in 16 bits a character, and a gap go before the numbers.
  constexpr std::size_t fixedPart = 40;
  if (file.number(*info + fixedPart, 4) != fixedVersionMark) return {};
  std::string version;
  constexpr std::array<std::size_t, 4> places = {10, 8, 14, 12};
  for (const std::size_t place : places) {
    if (!version.empty()) version += '.';
    version += std::to_string(file.number(*info + fixedPart + place, 2));
  }
  return version;
}

std::optional<int> libraryBits(const std::filesystem::path& file) {
  return libraryBits(bytesOf(file));
}

std::string libraryVersion(const std::filesystem::path& file) {
  return libraryVersion(bytesOf(file));
}

}  // namespace touch
