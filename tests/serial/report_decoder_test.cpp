#include "serial/report_decoder.h"

#include <gtest/gtest.h>

#include <numeric>

namespace touch {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Reports = std::vector<TouchReport>;

Bytes operator+(Bytes first, const Bytes& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

Reports decoded(ReportDecoder& decoder, const Bytes& bytes) {
  Reports reports;
  decoder.feed(bytes, reports);
  return reports;
}

struct PacketCase {
  const char* what;
  Bytes packet;
  std::uint16_t x;
  std::uint16_t y;
  bool touching;
};

const PacketCase tabletCases[] = {
    {"D8", {0xD8, 0x10, 0x20, 0x30, 0x01}, 4112, 176, true},
    {"D9", {0xD9, 0x7F, 0x7F, 0x00, 0x00}, 16383, 0, true},
    {"98", {0x98, 0x10, 0x20, 0x30, 0x01}, 4112, 176, false},
    {"99", {0x99, 0x00, 0x01, 0x7F, 0x7F}, 128, 16383, false},
    {"C8", {0xC8, 0x10, 0x20, 0x30, 0x01}, 2080, 6145, true},
    {"C9", {0xC9, 0x00, 0x01, 0x01, 0x00}, 1, 128, true},
    {"88", {0x88, 0x7F, 0x00, 0x00, 0x7F}, 16256, 127, false},
};
const PacketCase e02Packets[] = {
    {"touched", {'U', 'T', 0x82, 0x34, 0x12, 0xFF, 0xFF, 0, 0, 'S'}, 0x1234, 0xFFFF, true},
    {"released", {'U', 'T', 0x84, 0x00, 0x80, 0x01, 0x00, 'U', 'T', 'S'}, 0x8000, 1, false},
    {"any third byte",
     {'U', 'T', 'U', 'U', 'T', 0x84, 0x88, 0xD8, 0xD8, 'U'},
     0x5455,
     0x8884,
     true},
};

const ReportFormat wide{
    "wide", 8, {0x5A, 'U'}, {0x5B}, {CoordinateEncoding::sixteenBitLittleEndian, 5, 2}};
const ReportFormat marked{
    "marked", 6, {0xE8, 0xD8}, {0xA8}, {CoordinateEncoding::sevenBitHighFirst, 1, 4}};
const std::vector<ReportFormat> added = {wide, marked};
const PacketCase addedCases[] = {
    {"wide", {0x5A, 0xD8, 0x02, 0x03, 0xD8, 0x04, 0x05, 0xD8}, 0x0504, 0x0302, true},
    {"wide released", {0x5B, 0, 0x02, 0x03, 0, 0x04, 0x05, 0}, 0x0504, 0x0302, false},
    {"marked", {0xE8, 0x01, 0x02, 0xF8, 0x03, 0x04}, 130, 388, true},
    {"marked released", {0xA8, 0x01, 0x02, 0x00, 0x03, 0x04}, 130, 388, false},
};

/// Every kind of packet of a family with garbage before, between and after, and what must be found in it.
struct Stream {
  Bytes bytes;
  Reports reports;
  std::size_t stray = 0;

  void addGarbage(const Bytes& garbage) {
    bytes = bytes + garbage;
    stray += garbage.size();
  }
  void add(const PacketCase& c, std::uint16_t greatest) {
    reports.push_back(
        {bytes.size(), c.x, c.y, greatest, static_cast<std::uint8_t>(c.packet.size()), c.touching});
    bytes = bytes + c.packet;
  }
};

Stream streamOf(ReportFamily family) {
  Stream stream;
  stream.addGarbage({0x00, 0x7F, 0xFF, 0x80});
  const auto own = family == ReportFamily::e02 ? std::span<const PacketCase>(e02Packets)
                                               : std::span<const PacketCase>(tabletCases);
  for (const PacketCase& c : own) {
    stream.add(c, family == ReportFamily::e02 ? 65535 : 16383);
    stream.add(c, family == ReportFamily::e02 ? 65535 : 16383);
    stream.addGarbage({0x01, 0xF0});
  }
  for (const PacketCase& c : addedCases)
    stream.add(c, c.what[0] == 'w' ? 65535 : 16383);
  // Packets that lost a byte: only they are lost.
  stream.addGarbage({0xE8, 0x01, 0x02, 0x03, 0xF0, 0x04});
  stream.add(own[0], family == ReportFamily::e02 ? 65535 : 16383);
  stream.addGarbage({0x0D});
  return stream;
}

class EitherFamily : public testing::TestWithParam<ReportFamily> {
 protected:
  Stream stream = streamOf(GetParam());
  ReportDecoder decoder{GetParam(), added};
};
INSTANTIATE_TEST_SUITE_P(Decoder, EitherFamily,
                         testing::Values(ReportFamily::tablet, ReportFamily::e02));

TEST_P(EitherFamily, FindsTheSameHoweverTheStreamIsCut) {
  const auto middle = [this](std::size_t at) {
    return stream.bytes.begin() + static_cast<std::ptrdiff_t>(at);
  };
  for (std::size_t cut = 0; cut <= stream.bytes.size(); ++cut) {
    ReportDecoder fresh(GetParam(), added);
    Reports all = decoded(fresh, {stream.bytes.begin(), middle(cut)});
    const Reports after = decoded(fresh, {middle(cut), stream.bytes.end()});
    all.insert(all.end(), after.begin(), after.end());
    EXPECT_EQ(all, stream.reports) << cut;
    fresh.reset();
    EXPECT_EQ(fresh.strayBytes(), stream.stray) << cut;
    EXPECT_EQ(fresh.decided(), stream.bytes.size()) << cut;
  }
  Reports byByte;
  for (const std::uint8_t& byte : stream.bytes)
    decoder.feed({&byte, 1}, byByte);
  EXPECT_EQ(byByte, stream.reports);
}

TEST_P(EitherFamily, FindsTheSameWhereverTheRingWraps) {
  for (std::size_t offset = 0; offset < ReportDecoder::ringSize; ++offset) {
    decoder = ReportDecoder(GetParam(), added);
    decoded(decoder, Bytes(offset, 0x00));
    ASSERT_EQ(decoder.pending(), 0u);
    Reports reports = decoded(decoder, stream.bytes);
    for (TouchReport& report : reports)
      report.offset -= offset;
    ASSERT_EQ(reports, stream.reports) << offset;
  }
}

TEST_P(EitherFamily, TakesNoMoreThanTheRingHoldsAndLosesNothing) {
  const Bytes full(ReportDecoder::ringSize - 1, 0x00);
  for (const std::size_t start : {std::size_t{0}, std::size_t{1}, std::size_t{5000}}) {
    decoder = ReportDecoder(GetParam(), added);
    decoded(decoder, Bytes(start, 0x00));
    EXPECT_EQ(decoder.append(full), full.size());
    EXPECT_EQ(decoder.pending(), full.size());
    EXPECT_EQ(decoder.append(stream.bytes), 0u);
    Reports reports;
    decoder.decode(reports);
    EXPECT_EQ(decoder.pending(), 0u);
    EXPECT_EQ(decoded(decoder, stream.bytes).size(), stream.reports.size());
  }
  Bytes many;
  for (int i = 0; i < 500; ++i)
    many = many + stream.bytes;
  EXPECT_EQ(decoded(decoder, many).size(), 500 * stream.reports.size());
}

TEST(Decoder, WaitsForFourBytesBehindAStatusByteAndSixBehindAnE02Start) {
  const struct {
    ReportFamily family;
    Bytes packet;
    std::size_t needed;
  } cases[] = {{ReportFamily::tablet, tabletCases[0].packet, 5},
               {ReportFamily::e02, e02Packets[0].packet, 7}};
  for (const auto& [family, packet, needed] : cases) {
    for (std::size_t count = 0; count <= packet.size(); ++count) {
      ReportDecoder decoder(family);
      const auto end = packet.begin() + static_cast<std::ptrdiff_t>(count);
      EXPECT_EQ(decoded(decoder, {packet.begin(), end}).size(), count >= needed ? 1u : 0u) << count;
      EXPECT_EQ(decoder.pending(), count >= needed ? 0u : count) << count;
      EXPECT_EQ(decoder.received(), count);
      decoder.reset();
      EXPECT_EQ(decoder.strayBytes(), count >= needed ? 0u : count) << count;
      EXPECT_EQ(decoded(decoder, packet).size(), 1u) << "what came before is forgotten";
    }
  }
}

TEST(Decoder, GivesUpAPacketWithAStatusByteInsideForTheOneThatBeginsThere) {
  ReportDecoder decoder(ReportFamily::tablet);
  const Reports reports = decoded(decoder, Bytes{0xD8, 0x10, 0x20} + tabletCases[0].packet +
                                               Bytes{0xC8, 0xD8, 0xD8} + tabletCases[2].packet);
  ASSERT_EQ(reports.size(), 2u);
  EXPECT_EQ(reports[0].offset, 3u);
  EXPECT_EQ(reports[1].offset, 11u);
  EXPECT_EQ(decoder.strayBytes(), 6u);
}

TEST(Decoder, PutsItsOwnFormatsBeforeAddedOnes) {
  ReportDecoder tablet(ReportFamily::tablet, added);
  EXPECT_EQ(decoded(tablet, tabletCases[0].packet).at(0).length, 5) << "D8 is the tablet's";
  ReportDecoder e02(ReportFamily::e02, added);
  EXPECT_EQ(decoded(e02, e02Packets[0].packet).at(0).length, 10) << "U and T are the E02's";
  EXPECT_EQ(decoded(e02, {'U', 'x', 2, 3, 4, 5, 6, 7}).at(0).length, 8) << "U and x are not";
  EXPECT_EQ(decoded(e02, {0xD8, 1, 2, 3, 4, 5}).at(0).length, 6) << "D8 is free there";
}

TEST(Decoder, CountsWhatItIsToldToPassOver) {
  ReportDecoder decoder(ReportFamily::tablet);
  decoded(decoder, {0xD8, 0x01});
  decoder.passOver(100);
  EXPECT_EQ(decoder.strayBytes(), 2u);
  EXPECT_EQ(decoded(decoder, tabletCases[0].packet).at(0).offset, 102u);
}

}  // namespace
}  // namespace touch
