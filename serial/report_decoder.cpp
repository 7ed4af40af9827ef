#include "serial/report_decoder.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace touch {

namespace {

struct TabletStatus {
  std::uint8_t status;
  bool released;
  CoordinateEncoding encoding;
};
constexpr std::array tabletStatuses = {
    TabletStatus{0xD8, false, CoordinateEncoding::sevenBitLowFirst},
    TabletStatus{0xD9, false, CoordinateEncoding::sevenBitLowFirst},
    TabletStatus{0x98, true, CoordinateEncoding::sevenBitLowFirst},
    TabletStatus{0x99, true, CoordinateEncoding::sevenBitLowFirst},
    TabletStatus{0xC8, false, CoordinateEncoding::sevenBitHighFirst},
    TabletStatus{0xC9, false, CoordinateEncoding::sevenBitHighFirst},
    TabletStatus{0x88, true, CoordinateEncoding::sevenBitHighFirst},
};

constexpr std::uint8_t e02Start = 'U';
constexpr std::uint8_t e02Second = 'T';
constexpr std::uint8_t e02LiftPlace = 2;
constexpr std::uint8_t e02Lift = 0x84;
constexpr std::uint8_t e02Needed = 7;

struct Weights {
  std::uint16_t first;
  std::uint16_t second;
  std::uint8_t clearBits;
};

Weights weightsOf(CoordinateEncoding encoding) {
  switch (encoding) {
    case CoordinateEncoding::sevenBitLowFirst:
      return {1, 128, 0x80};
    case CoordinateEncoding::sevenBitHighFirst:
      return {128, 1, 0x80};
    case CoordinateEncoding::sixteenBitLittleEndian:
      break;
  }
  return {1, 256, 0};
}

/// The four bytes of both coordinates: X in the lower half, Y in the upper, the earlier byte below.
std::uint32_t coordinateBytes(const std::uint8_t* x, const std::uint8_t* y) {
  return static_cast<std::uint32_t>(x[0]) | static_cast<std::uint32_t>(x[1]) << 8 |
         static_cast<std::uint32_t>(y[0]) << 16 | static_cast<std::uint32_t>(y[1]) << 24;
}
/// The same where Y follows X at once.
std::uint32_t coordinateBytes(const std::uint8_t* x) {
  if constexpr (std::endian::native == std::endian::little) {
    std::uint32_t bytes = 0;
    std::memcpy(&bytes, x, sizeof bytes);
    return bytes;
  } else {
    return coordinateBytes(x, x + 2);
  }
}

/// Both coordinates at once, X in the lower half: no sum reaches into the other half.
std::uint32_t coordinates(std::uint32_t firstWeight, std::uint32_t secondWeight,
                          std::uint32_t bytes) {
  constexpr std::uint32_t firstBytes = 0x00FF00FF;
  return (bytes & firstBytes) * firstWeight + (bytes >> 8 & firstBytes) * secondWeight;
}

template <typename Kind>
bool hasStrayBits(const Kind& kind, std::uint32_t bytes) {
  return (bytes & kind.clearBits * 0x01010101U) != 0;
}

template <typename Kind>
TouchReport makeReport(const Kind& kind, const std::uint8_t* packet, std::uint32_t bytes,
                       std::uint64_t offset) {
  const std::uint32_t both = coordinates(kind.firstWeight, kind.secondWeight, bytes);
  return {offset,
          static_cast<std::uint16_t>(both),
          static_cast<std::uint16_t>(both >> 16),
          kind.greatest,
          kind.length,
          packet[kind.liftPlace] != kind.lift};
}

// What all packets of a family have in common.
struct TabletPackets {
  static constexpr std::uint8_t length = 5;
  static constexpr std::size_t x = 1;        ///< Y follows
  static constexpr std::uint8_t second = 0;  ///< 0: any
  static constexpr std::size_t liftPlace = 0;
  static constexpr std::uint16_t greatest = 0x3FFF;
  static constexpr std::uint32_t strayBits = 0x80808080;  ///< those that no coordinate bytes have
};
struct E02Packets {
  static constexpr std::uint8_t length = 10;
  static constexpr std::size_t x = 3;
  static constexpr std::uint8_t second = e02Second;
  static constexpr std::size_t liftPlace = e02LiftPlace;
  static constexpr std::uint16_t greatest = 0xFFFF;
  static constexpr std::uint32_t strayBits = 0;
};

bool isTabletStatus(std::uint8_t byte) {
  return std::ranges::find(tabletStatuses, byte, &TabletStatus::status) != tabletStatuses.end();
}

}  // namespace

std::string_view builtInFormat(std::uint8_t status) {
  if (isTabletStatus(status)) return "tablet";
  return status == e02Start ? "E02" : "";
}

bool isOwnPacket(ReportFamily family, std::span<const std::uint8_t> packet) {
  if (family == ReportFamily::e02) return packet[0] == e02Start && packet[1] == e02Second;
  return isTabletStatus(packet[0]);
}

ReportDecoder::ReportDecoder(ReportFamily family, std::span<const ReportFormat> added)
    : family_(family) {
  if (family == ReportFamily::tablet) {
    for (const TabletStatus& tablet : tabletStatuses) {
      ReportFormat format;
      (tablet.released ? format.released : format.touching) = {tablet.status};
      format.packetLength = packetLength(family);
      format.layout = {tablet.encoding, 1, 3};
      know(format);
    }
  } else {
    ReportFormat format;
    format.touching = {e02Start};
    format.packetLength = packetLength(family);
    format.layout = {CoordinateEncoding::sixteenBitLittleEndian, 3, 5};
    know(format);
    Kind& kind = kinds_[e02Start];
    kind.needed = e02Needed;
    kind.secondMask = 0xFF;
    kind.second = e02Second;
    kind.liftPlace = e02LiftPlace;
    kind.lift = e02Lift;
  }
  for (Kind& kind : kinds_)
    kind.own = kind.length != 0;
  for (const ReportFormat& format : added)
    know(format);
}

void ReportDecoder::know(const ReportFormat& format) {
  const Weights weights = weightsOf(format.layout.encoding);
  Kind kind;
  kind.length = static_cast<std::uint8_t>(format.packetLength);
  kind.needed = kind.length;
  kind.x = static_cast<std::uint8_t>(format.layout.x);
  kind.y = static_cast<std::uint8_t>(format.layout.y);
  kind.clearBits = weights.clearBits;
  kind.firstWeight = weights.first;
  kind.secondWeight = weights.second;
  kind.greatest = greatestCoordinate(format.layout.encoding);
  for (const std::uint8_t status : format.touching) {
    kind.lift = static_cast<std::uint8_t>(~status);
    add(status, kind);
  }
  for (const std::uint8_t status : format.released) {
    kind.lift = status;
    add(status, kind);
  }
}

void ReportDecoder::add(std::uint8_t status, const Kind& kind) {
  Kind& known = kinds_[status];
  if (known.length == 0) {
    known = kind;
  } else if (known.secondMask != 0 && otherwise_.length == 0) {
    otherwise_ = kind;
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
  std::copy_n(wrapped.data(), wrapped.size(), ring_.data());
  if (write_ < longestPacket || !wrapped.empty()) {
    std::copy_n(ring_.data(), longestPacket, ring_.data() + ringSize);
  }
  write_ = (write_ + taken.size()) % ringSize;
  return owed + taken.size();
}

void ReportDecoder::decode(std::vector<TouchReport>& reports) {
  do {
    if (family_ == ReportFamily::tablet) {
      decodeRun<TabletPackets>(reports);
    } else {
      decodeRun<E02Packets>(reports);
    }
  } while (decodeOne(reports));
}

// The family's own packets that lie in the ring in one piece, and the stray bytes between them: nearly all that ever
// comes. What all of them have in common the compiler knows, so that little is left to be looked up for each, and a byte
// of garbage makes the processor guess wrong once and not at every step on the way to the next packet.
template <typename Packets>
void ReportDecoder::decodeRun(std::vector<TouchReport>& reports) {
  const std::uint8_t* const begin = ring_.data() + read_;
  const std::uint8_t* const end = begin + std::min(pending(), ringSize - read_);
  const std::uint8_t* packet = begin;
  while (end - packet >= Packets::length) {
    const Kind& kind = kinds_[*packet];
    const std::uint32_t bytes = coordinateBytes(packet + Packets::x);
    if (kind.own && (bytes & Packets::strayBits) == 0) {
      if (Packets::second != 0 && packet[1] != Packets::second) break;
      const std::uint32_t both = coordinates(kind.firstWeight, kind.secondWeight, bytes);
      reports.push_back({decided_ + static_cast<std::size_t>(packet - begin),
                         static_cast<std::uint16_t>(both), static_cast<std::uint16_t>(both >> 16),
                         Packets::greatest, Packets::length,
                         packet[Packets::liftPlace] != kind.lift});
      packet += Packets::length;
    } else {
      if (!kind.own && kind.length != 0) break;
      const std::uint8_t* const stray = packet;
      do {
        ++packet;
      } while (packet != end && kinds_[*packet].length == 0);
      stray_ += static_cast<std::size_t>(packet - stray);
    }
  }
  const auto passed = static_cast<std::size_t>(packet - begin);
  pass(passed);
  decided_ += passed;
}

// What decodeRun stops at. False when the ring is empty or more bytes must come before anything can be said.
bool ReportDecoder::decodeOne(std::vector<TouchReport>& reports) {
  const std::size_t held = pending();
  if (held == 0) return false;
  const std::uint8_t* const packet = ring_.data() + read_;
  const Kind* kind = &kinds_[*packet];
  if (kind->secondMask != 0) {
    if (held < 2) return false;
    if ((packet[1] & kind->secondMask) != kind->second) kind = &otherwise_;
  }
  if (held < kind->needed) return false;
  std::size_t passed = 1;
  const std::uint32_t bytes = coordinateBytes(packet + kind->x, packet + kind->y);
  if (kind->length != 0 && !hasStrayBits(*kind, bytes)) {
    reports.push_back(makeReport(*kind, packet, bytes, decided_));
    passed = std::min<std::size_t>(kind->length, held);
    owed_ = kind->length - passed;
  } else {
    ++stray_;
  }
  pass(passed);
  decided_ += passed;
  return true;
}

void ReportDecoder::pass(std::size_t count) {
  read_ += count;
  if (read_ >= ringSize) read_ -= ringSize;
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

}  // namespace touch
