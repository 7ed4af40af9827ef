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
  kind.x = static_cast<std::uint8_t>(format.layout.x);
  kind.y = static_cast<std::uint8_t>(format.layout.y);
  kind.clearBits = wide ? 0 : 0x80;
  kind.firstWeight = highFirst ? 128 : 1;
  kind.secondWeight = highFirst ? 1 : wide ? 256 : 128;
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

std::size_t ReportDecoder::append(std::span<const std::uint8_t> bytes) {
  const std::size_t owed = std::min(owed_, bytes.size());
  owed_ -= owed;
  decided_ += owed;
  bytes = bytes.subspan(owed);
  const auto taken = bytes.first(std::min(bytes.size(), ringSize - 1 - pending()));
  const auto behind = taken.first(std::min(taken.size(), ringSize - write_));
  const auto wrapped = taken.subspan(behind.size());
  std::copy_n(behind.data(), behind.size(), ring_.data() + write_);
  if (write_ < longestPacket || !wrapped.empty()) {
    std::copy_n(wrapped.data(), wrapped.size(), ring_.data());
    std::copy_n(ring_.data(), longestPacket, ring_.data() + ringSize);
  }
  write_ += taken.size();
  if (write_ >= ringSize) write_ -= ringSize;
  return owed + taken.size();
}

void ReportDecoder::decode(std::vector<TouchReport>& reports) {
  for (std::size_t held = pending(); held > 0;) {
    const std::uint8_t* const packet = ring_.data() + read_;
    const Kind& kind = kinds_[*packet];
    bool begins = kind.length != 0;
    if (kind.second != 0 && held > 1) begins = packet[1] == kind.second;
    if (begins && held < kind.needed) return;
    const std::uint8_t* const x = packet + kind.x;
    const std::uint8_t* const y = packet + kind.y;
    std::size_t passed = 1;
    if (begins && ((x[0] | x[1] | y[0] | y[1]) & kind.clearBits) == 0) {
      const auto coordinate = [&kind](const std::uint8_t* bytes) {
        return static_cast<std::uint16_t>(bytes[0] * kind.firstWeight +
                                          bytes[1] * kind.secondWeight);
      };
      reports.push_back({decided_, coordinate(x), coordinate(y), kind.greatest, kind.length,
                         packet[kind.liftPlace] != kind.lift});
      passed = std::min<std::size_t>(kind.length, held);
      owed_ = kind.length - passed;
    } else {
      ++stray_;
    }
    held -= passed;
    decided_ += passed;
    read_ += passed;
    if (read_ >= ringSize) read_ -= ringSize;
  }
}

void ReportDecoder::feed(std::span<const std::uint8_t> bytes, std::vector<TouchReport>& reports) {
  while (!bytes.empty()) {
    bytes = bytes.subspan(append(bytes));
    decode(reports);
  }
}

void ReportDecoder::reset() {
  decided_ += pending();
  stray_ += pending();
  read_ = 0;
  write_ = 0;
  owed_ = 0;
}

void ReportDecoder::passOver(std::size_t count) {
  reset();
  decided_ += count;
}

ReportDecoder::Part ReportDecoder::partAt(std::uint8_t first, std::size_t place) const {
  const Kind& kind = kinds_[first];
  const bool lowFirst = kind.firstWeight < kind.secondWeight;
  if (kind.length == 0) return Part::other;
  if (place == kind.x) return lowFirst ? Part::xLow : Part::xHigh;
  if (place == kind.x + 1U) return lowFirst ? Part::xHigh : Part::xLow;
  if (place == kind.y) return lowFirst ? Part::yLow : Part::yHigh;
  if (place == kind.y + 1U) return lowFirst ? Part::yHigh : Part::yLow;
  return place == kind.liftPlace ? Part::state : Part::other;
}

}  // namespace touch
