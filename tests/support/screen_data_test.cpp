#include "support/screen_data.h"

#include <numeric>

#include "tests/doubles/temporary_folder.h"

namespace touch::test {
namespace {

using Edid = std::vector<std::uint8_t>;

/// Makes the sum of the block a multiple of 256, as it has to be.
Edid summed(Edid block) {
  block.at(127) = 0;
  block[127] = static_cast<std::uint8_t>(-std::accumulate(block.begin(), block.begin() + 128, 0));
  return block;
}

/// 344 x 194 mm, 34 x 19 cm, "PANEL 15".
Edid panel() {
  Edid block(128);
  std::fill(block.begin() + 1, block.begin() + 7, std::uint8_t{255});
  block[21] = 34;
  block[22] = 19;
  const Edid timing = {0x24, 0x36, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x58, 0xC2, 0x10};
  std::ranges::copy(timing, block.begin() + 54);
  const std::string_view name("\0\0\0\xFC\0PANEL 15\n  ", 16);
  std::ranges::transform(name, block.begin() + 90,
                         [](char byte) { return static_cast<std::uint8_t>(byte); });
  return summed(block);
}

Edid with(std::initializer_list<std::pair<std::size_t, int>> changes) {
  Edid block = panel();
  for (const auto& [at, value] : changes)
    block[at] = static_cast<std::uint8_t>(value);
  return summed(block);
}

std::string sizeIn(const Edid& edid) {
  const auto data = parseScreenData(edid);
  if (!data) return "none";
  return std::to_string(data->widthMm) + 'x' + std::to_string(data->heightMm) + ' ' + data->name;
}

TEST(ScreenData, IsBelievedOnlyWhereItIsWhole) {
  Edid wrongSum = panel();
  ++wrongSum[30];
  Edid longer = panel();
  longer.resize(256, 7);
  Edid cut = panel();
  cut.pop_back();
  const std::tuple<const char*, Edid, const char*> cases[] = {
      {"whole", panel(), "344x194 PANEL 15"},
      {"with an extension", longer, "344x194 PANEL 15"},
      {"nothing", {}, "none"},
      {"cut", cut, "none"},
      {"damaged", wrongSum, "none"},
      {"another header", with({{0, 1}}), "none"},
      {"centimetres alone", with({{54, 0}, {55, 0}}), "340x190 PANEL 15"},
      {"no size in the timing", with({{66, 0}, {67, 0}, {68, 0}}), "340x190 PANEL 15"},
      {"millimetres alone", with({{21, 0}, {22, 0}}), "344x194 PANEL 15"},
      {"proportions for millimetres", with({{66, 160}, {67, 90}, {68, 0}}), "none"},
      {"proportions for all", with({{21, 16}, {22, 0}, {54, 0}, {55, 0}}), "none"},
      {"no size at all", with({{21, 0}, {22, 0}, {54, 0}, {55, 0}}), "none"},
      {"a wall", with({{21, 0}, {22, 0}, {68, 0xFF}}), "none"},
      {"a name with an escape", with({{95, 27}}), "344x194 ANEL 15"},
  };
  for (const auto& [what, edid, size] : cases)
    EXPECT_EQ(sizeIn(edid), size) << what;
}

TEST(ScreenData, IsThatOfTheConnector) {
  const TemporaryFolder folder;
  const Edid edid = panel();
  for (const char* const entry : {"card0-HDMI-A-1", "card1-eDP-1", "card0-DP-1", "version"})
    fs::create_directory(folder.path() / entry);
  folder.write("card0-HDMI-A-1/edid", std::string(edid.begin(), edid.end()));
  folder.write("card1-eDP-1/edid", "");
  for (const char* const connector : {"HDMI-1", "HDMI-A-1"})
    EXPECT_TRUE(readScreenData(connector, folder.path())) << connector;
  for (const char* const connector : {"eDP-1", "DP-1", "screen", "", "HDMI-2"})
    EXPECT_FALSE(readScreenData(connector, folder.path())) << connector;
  EXPECT_FALSE(readScreenData("HDMI-1", folder.path() / "none"));
}

}  // namespace
}  // namespace touch::test
