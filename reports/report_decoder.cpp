#include "reports/report_decoder.h"

#include <algorithm>

namespace touch {

namespace {

using enum CoordinateEncoding;
using enum ReportFamily;

/// One of the families' own packets, in the words in which "zevrik.fmt" adds others.
struct OwnPacket {
  ReportFamily family = tablet;
  ReportFormat format;
  std::uint8_t second = 0;  ///< the second byte, where it must be a certain one
  std::uint8_t needed = 0;  ///< bytes, where a report need not wait for all of its packet
  std::uint8_t liftPlace = 0;
  std::uint8_t lift = 0;  ///< the byte at `liftPlace` that says that the pen is lifted
};

const std::array<OwnPacket, 3>& ownPackets() {
  static const std::array<OwnPacket, 3> packets = {{
      {tablet, {"tablet", 5, {0xD8, 0xD9}, {0x98, 0x99}, {sevenBitLowFirst, 1, 3}}},
      {tablet, {"tablet", 5, {0xC8, 0xC9}, {0x88}, {sevenBitHighFirst, 1, 3}}},
      {e02, {"E02", 10, {'U'}, {}, {sixteenBitLittleEndian, 3, 5}}, 'T', 7, 2, 0x84},
  }};
  return packets;
}

}  // namespace

std::string_view builtInFormat(std::uint8_t status) {
  for (const OwnPacket& own : ownPackets())
    for (const auto* bytes : {&own.format.touching, &own.format.released})
      if (std::ranges::count(*bytes, status) > 0) return own.format.name;
  return {};
}

ReportDecoder::ReportDecoder(ReportFamily family, std::span<const ReportFormat> added) {
  for (const ReportFormat& format : added)
    know(format);
  for (const OwnPacket& own : ownPackets()) {
    if (own.family != family) continue;
    know(own.format);
    if (own.second == 0) continue;
    Kind& kind = kinds_[own.format.touching.front()];
    kind.second = own.second;
    kind.needed = own.needed;
    kind.liftPlace = own.liftPlace;
    kind.lift = own.lift;
  }
}

void ReportDecoder::know(const ReportFormat& format) {
  const bool wide = format.layout.encoding == sixteenBitLittleEndian;
  const bool highFirst = format.layout.encoding == sevenBitHighFirst;
  Kind kind;
  kind.length = static_cast<std::uint8_t>(format.packetLength);
  kind.needed = kind.length;
  kind.xLow = static_cast<std::uint8_t>(format.layout.x + (highFirst ? 1U : 0U));
  kind.xHigh = static_cast<std::uint8_t>(format.layout.x + (highFirst ? 0U : 1U));
  kind.yLow = static_cast<std::uint8_t>(format.layout.y + (highFirst ? 1U : 0U));
  kind.yHigh = static_cast<std::uint8_t>(format.layout.y + (highFirst ? 0U : 1U));
  kind.lowBits = wide ? 8 : 7;
  kind.clearBits = wide ? 0 : 0x80;
  kind.greatest = greatestCoordinate(format.layout.encoding);
  for (const std::uint8_t status : format.touching) {
    kind.lift = static_cast<std::uint8_t>(~status);
    kinds_[status] = kind;
  }
  for (const std::uint8_t status : format.released) {
    kind.lift = status;
    kinds_[status] = kind;
  }
}

std::size_t ReportDecoder::passOwed(std::size_t count) {
  const std::size_t owed = std::min(owed_, count);
  owed_ -= owed;
  decided_ += owed;
  return owed;
}

std::size_t ReportDecoder::append(std::span<const std::uint8_t> bytes) {
  const std::size_t owed = passOwed(bytes.size());
  bytes = bytes.subspan(owed);
  const auto taken = bytes.first(std::min(bytes.size(), capacity - held_));
  std::ranges::copy(taken, bytes_.begin() + static_cast<std::ptrdiff_t>(held_));
  held_ += taken.size();
  return owed + taken.size();
}

std::size_t ReportDecoder::find(std::span<const std::uint8_t> bytes,
                                std::vector<TouchReport>& reports) {
  const std::size_t count = bytes.size();
  std::size_t place = 0;
  while (place < count) {
    const std::uint8_t first = bytes[place];
    const Kind& kind = kinds_[first];
    // A stroke's packets are of one kind: the next is found without waiting for the table.
    while (place + kind.needed <= count && bytes[place] == first && kind.isAt(&bytes[place])) {
      reports.push_back(kind.report(&bytes[place], decided_ + place));
      place += kind.length;
    }
    if (place >= count || bytes[place] != first) continue;
    if (kind.beginsAt(&bytes[place], count - place)) break;
    ++stray_;
    ++place;
  }
  const std::size_t done = std::min(place, count);
  if (place > count) owed_ = place - count;
  decided_ += done;
  return done;
}

void ReportDecoder::decode(std::vector<TouchReport>& reports) {
  const std::size_t done = find(std::span(bytes_).first(held_), reports);
  std::copy(bytes_.begin() + done, bytes_.begin() + held_, bytes_.begin());
  held_ -= done;
}

void ReportDecoder::feed(std::span<const std::uint8_t> bytes, std::vector<TouchReport>& reports) {
  bytes = bytes.subspan(passOwed(bytes.size()));
  // Where nothing waits before them they are read where they lie.
  if (held_ == 0) bytes = bytes.subspan(find(bytes, reports));
  while (!bytes.empty()) {
    bytes = bytes.subspan(append(bytes));
    decode(reports);
  }
}

ReportDecoder::Part ReportDecoder::partAt(std::uint8_t first, std::size_t place) const {
  const Kind& kind = kinds_[first];
  if (kind.length == 0) return Part::other;
  if (place == kind.xLow) return Part::xLow;
  if (place == kind.xHigh) return Part::xHigh;
  if (place == kind.yLow) return Part::yLow;
  if (place == kind.yHigh) return Part::yHigh;
  return place == kind.liftPlace ? Part::state : Part::other;
}

}  // namespace touch
