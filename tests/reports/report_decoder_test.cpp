#include "reports/report_decoder.h"

#include "tests/serial/debugger/debugger_bench.h"

namespace touch::test {
namespace {

using Reports = std::vector<TouchReport>;

Reports decoded(ReportDecoder& decoder, std::span<const std::uint8_t> bytes) {
  Reports reports;
  decoder.feed(bytes, reports);
  return reports;
}

struct PacketCase {
  Bytes packet;
  std::uint16_t x;
  std::uint16_t y;
  bool touching;
  std::uint16_t greatest = 16383;
};

const std::vector<PacketCase> tabletCases = {
    {{0xD8, 0x10, 0x20, 0x30, 0x01}, 4112, 176, true},
    {{0xD9, 0x7F, 0x7F, 0x00, 0x00}, 16383, 0, true},
    {{0x98, 0x10, 0x20, 0x30, 0x01}, 4112, 176, false},
    {{0x99, 0x00, 0x01, 0x7F, 0x7F}, 128, 16383, false},
    {{0xC8, 0x10, 0x20, 0x30, 0x01}, 2080, 6145, true},
    {{0xC9, 0x00, 0x01, 0x01, 0x00}, 1, 128, true},
    {{0x88, 0x7F, 0x00, 0x00, 0x7F}, 16256, 127, false},
};
const std::vector<PacketCase> e02Packets = {
    {{'U', 'T', 0x82, 0x34, 0x12, 0xFF, 0xFF, 0, 0, 'S'}, 0x1234, 0xFFFF, true, 65535},
    {{'U', 'T', 0x84, 0x00, 0x80, 0x01, 0x00, 'U', 'T', 'S'}, 0x8000, 1, false, 65535},
    // Any other third byte means touched.
    {{'U', 'T', 'U', 'U', 'T', 0x84, 0x88, 0xD8, 0xD8, 'U'}, 0x5455, 0x8884, true, 65535},
};
// What starts like a tablet packet is one where the family is that.
const std::vector<ReportFormat> added = {
    {"wide", 8, {0x5A}, {0x5B}, {CoordinateEncoding::sixteenBitLittleEndian, 5, 2}},
    {"marked", 6, {0xE8, 0xD8}, {0xA8}, {CoordinateEncoding::sevenBitHighFirst, 1, 4}}};
const std::vector<PacketCase> addedCases = {
    {{0x5A, 0xD8, 0x02, 0x03, 0xD8, 0x04, 0x05, 0xD8}, 0x0504, 0x0302, true, 65535},
    {{0x5B, 0, 0x02, 0x03, 0, 0x04, 0x05, 0}, 0x0504, 0x0302, false, 65535},
    {{0xE8, 0x01, 0x02, 0xF8, 0x03, 0x04}, 130, 388, true},
    {{0xA8, 0x01, 0x02, 0x00, 0x03, 0x04}, 130, 388, false},
};

/// Every kind of packet of a family with garbage before, between and after, and what must be found
/// in it.
class EitherFamily : public testing::TestWithParam<ReportFamily> {
 protected:
  EitherFamily() {
    const auto& own = GetParam() == ReportFamily::e02 ? e02Packets : tabletCases;
    bytes = {0x00, 0x7F, 0xFF, 0x80};
    for (const PacketCase& c : own) {
      add(c);
      add(c);
      bytes = bytes + Bytes{0x01, 0xF0};
    }
    for (const PacketCase& c : addedCases)
      add(c);
    // Packets that lost a byte: only they are lost.
    bytes = bytes + Bytes{'U', 'x', 0xE8, 0x01, 0x02, 0x03, 0xF0, 0x04, 0xC8, 0xD8, 0x10, 0x20};
    add(own[0]);
    bytes.push_back(0x0D);
  }

  void add(const PacketCase& c) {
    const auto length = static_cast<std::uint8_t>(c.packet.size());
    reports.push_back({bytes.size(), {c.x}, {c.y}, {c.greatest}, length, c.touching});
    bytes = bytes + c.packet;
    inPackets += length;
  }

  Bytes bytes;
  Reports reports;
  std::size_t inPackets = 0;
  ReportDecoder decoder{GetParam(), added};
};
INSTANTIATE_TEST_SUITE_P(Decoder, EitherFamily,
                         testing::Values(ReportFamily::tablet, ReportFamily::e02));

TEST_P(EitherFamily, FindsTheSameHoweverTheStreamIsCutAndHoweverMuchCameBefore) {
  for (std::size_t offset = 0; offset <= ReportDecoder::capacity; ++offset) {
    decoder = ReportDecoder(GetParam(), added);
    decoded(decoder, Bytes(offset, 0x00));
    const std::size_t cut = offset % bytes.size();
    Reports found = decoded(decoder, std::span(bytes).first(cut));
    decoder.feed(std::span(bytes).subspan(cut), found);
    for (TouchReport& report : found)
      report.offset -= offset;
    ASSERT_EQ(found, reports) << offset;
    decoder.reset();
    ASSERT_EQ(decoder.strayBytes(), offset + bytes.size() - inPackets) << offset;
    ASSERT_EQ(decoder.decided(), offset + bytes.size()) << offset;
  }
  decoder = ReportDecoder(GetParam(), added);
  Reports byByte;
  for (const std::uint8_t& byte : bytes)
    decoder.feed({&byte, 1}, byByte);
  EXPECT_EQ(byByte, reports);
  EXPECT_EQ(decoded(decoder, times(500, bytes)).size(), 500 * reports.size())
      << "more than can wait at once";
}

TEST(Decoder, TellsAnE02ReportAtItsCoordinatesAndForgetsTheRestWhenReset) {
  const std::span<const std::uint8_t> packet = e02Packets[0].packet;
  ReportDecoder decoder(ReportFamily::e02);
  EXPECT_EQ(decoded(decoder, packet.first(6)).size(), 0u);
  EXPECT_EQ(decoded(decoder, packet.subspan(6, 1)).size(), 1u);
  decoder.reset();
  EXPECT_EQ(decoded(decoder, packet).size(), 1u);
}

}  // namespace
}  // namespace touch::test
