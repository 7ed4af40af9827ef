#include "simulator/commands.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace touch::simulator {
namespace {

std::vector<std::string> packetsIn(const std::string& bytes) {
  PacketReader reader;
  std::vector<std::string> texts;
  for (const char byte : bytes) {
    if (const auto packet = reader.take(static_cast<std::uint8_t>(byte))) {
      texts.push_back((packet->family == Family::framed ? "frame " : "ten ") + packet->text);
    }
  }
  return texts;
}

TEST(PacketReader, findsPacketsAmongGarbage) {
  const struct {
    std::string bytes;
    std::vector<std::string> packets;
  } cases[] = {
      {"\x01UT\x0D", {"frame UT"}},
      {"\x01UT\x0D\x01PL\x0D", {"frame UT", "frame PL"}},
      {"noise\x0D\x0A\x01Z\x0Dnoise", {"frame Z"}},
      {"\x01O\x01OI\x0D", {"frame OI"}},
      {"\x01" + std::string(200, 'x') + "\x0D\x01Z\x0D", {"frame Z"}},
      {"\x01\x0D", {"frame "}},
      {"Ua2345678S", {"ten Ua2345678S"}},
      {"UUa2345678S", {"ten Ua2345678S"}},
      {"Ux2345678SUb2345678S", {"ten Ub2345678S"}},
      {"Ua23456789", {}},
      {"Ua23\x01UT\x0D", {"frame UT"}},
      {"Ua23\x0DUi2345678S", {"ten Ui2345678S"}},
      {"\x01Uu23456\x0DS\x01Z\x0D", {"frame Uu23456", "frame Z"}},
  };
  for (const auto& [bytes, packets] : cases)
    EXPECT_EQ(packetsIn(bytes), packets) << bytes;
}

TEST(Commands, refusesWhatNoSetKnows) {
  for (const char* text : {"", "r", "RDX", "GP", "GP0", "GP0G", "GP012", "SP00123", "SP0012345",
                           "SE", "SE5", "SEA", "iX", "Uu2345", "N72toN81"}) {
    EXPECT_FALSE(parseCommand({Family::framed, text})) << text;
  }
  for (const char* text : {"UL2345678S", "UM3345678S", "Uz2345678S", "U"}) {
    EXPECT_FALSE(parseCommand({Family::tenCharacters, text})) << text;
  }
}

}  // namespace
}  // namespace touch::simulator
