#include "support/screen_data.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <numeric>
#include <system_error>

namespace touch {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t blockSize = 128;
constexpr std::array<std::uint8_t, 8> header = {0, 255, 255, 255, 255, 255, 255, 0};
constexpr std::size_t widthInCm = 21;
constexpr std::size_t heightInCm = 22;
constexpr std::array<std::size_t, 4> descriptors = {54, 72, 90, 108};
constexpr std::size_t descriptorSize = 18;
constexpr int smallest = 20;  // mm
constexpr int largest = 3000;

/// In a detailed timing: the low bytes of width and height, and four bits more of each.
std::pair<int, int> sizeOf(std::span<const std::uint8_t> timing) {
  return {timing[12] | (timing[14] & 0xF0) << 4, timing[13] | (timing[14] & 0x0F) << 8};
}

bool isTiming(std::span<const std::uint8_t> descriptor) {
  return descriptor[0] != 0 || descriptor[1] != 0;
}

std::string nameIn(std::span<const std::uint8_t> descriptor) {
  constexpr std::uint8_t nameTag = 0xFC;
  constexpr std::size_t textStart = 5;
  std::string name;
  if (isTiming(descriptor) || descriptor[3] != nameTag) return name;
  for (const std::uint8_t byte : descriptor.subspan(textStart)) {
    if (byte == '\n') break;
    if (byte >= ' ' && byte <= '~') name += static_cast<char>(byte);
  }
  return name.substr(0, name.find_last_not_of(' ') + 1);
}

/// "card0-HDMI-A-1" as window systems call it: "HDMI-A-1", or "HDMI-1".
bool isCalled(std::string_view entry, std::string_view connector) {
  const auto dash = entry.find('-');
  if (!entry.starts_with("card") || dash == entry.npos) return false;
  std::string name(entry.substr(dash + 1));
  if (name == connector) return true;
  if (const auto kind = name.find("-A-"); kind != name.npos) name.erase(kind, 2);
  return name == connector;
}

std::optional<ScreenData> readEdid(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::array<char, blockSize> bytes{};
  if (!stream.read(bytes.data(), bytes.size())) return std::nullopt;
  std::array<std::uint8_t, blockSize> block{};
  std::ranges::transform(bytes, block.begin(),
                         [](char byte) { return static_cast<std::uint8_t>(byte); });
  return parseScreenData(block);
}

}  // namespace

std::optional<ScreenData> parseScreenData(std::span<const std::uint8_t> edid) {
  if (edid.size() < blockSize) return std::nullopt;
  const auto block = edid.first(blockSize);
  if (!std::ranges::equal(header, block.first(header.size()))) return std::nullopt;
  if (std::accumulate(block.begin(), block.end(), 0U) % 256 != 0) return std::nullopt;

  const int roughWidth = block[widthInCm] * 10;
  const int roughHeight = block[heightInCm] * 10;
  ScreenData data{roughWidth, roughHeight, {}};
  const auto first = block.subspan(descriptors.front(), descriptorSize);
  if (const auto [width, height] = sizeOf(first); isTiming(first) && width > 0 && height > 0) {
    // Some hold the picture's proportions there instead.
    constexpr int rounding = 10;
    const bool isRough = roughWidth > 0 && roughHeight > 0;
    if (isRough &&
        (std::abs(width - roughWidth) > rounding || std::abs(height - roughHeight) > rounding))
      return std::nullopt;
    data.widthMm = width;
    data.heightMm = height;
  }
  const auto [shorter, longer] = std::minmax(data.widthMm, data.heightMm);
  if (shorter < smallest || longer > largest) return std::nullopt;
  for (const std::size_t at : descriptors)
    if (data.name.empty()) data.name = nameIn(block.subspan(at, descriptorSize));
  return data;
}

std::optional<ScreenData> readScreenData(std::string_view connector, const fs::path& folder) {
  std::error_code failed;
  for (fs::directory_iterator entry(folder, failed), end; !failed && entry != end;
       entry.increment(failed)) {
    if (isCalled(entry->path().filename().string(), connector))
      return readEdid(entry->path() / "edid");
  }
  return std::nullopt;
}

}  // namespace touch
