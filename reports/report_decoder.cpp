#include "reports/report_decoder.h"

#include <algorithm>

namespace touch {

namespace {

// The families' own packets, in the words in which "zevrik.fmt" adds others.
const std::vector<ReportFormat>& ownFormats(ReportFamily family) {
  using enum CoordinateEncoding;
  static const std::vector<ReportFormat> tablet = {
      {"tablet", 5, {0xD8, 0xD9}, {0x98, 0x99}, {sevenBitLowFirst, 1, 3}},
      {"tablet", 5, {0xC8, 0xC9}, {0x88}, {sevenBitHighFirst, 1, 3}},
  };
  static const std::vector<ReportFormat> e02 = {
      {"E02", 10, {'U'}, {}, {sixteenBitLittleEndian, 3, 5}},
  };
  return family == ReportFamily::tablet ? tablet : e02;
}

// An E02 packet says more than its first byte: it goes on with "T", then says whether the pen is lifted, and its end
// carries nothing that is worth waiting for.
constexpr std::uint8_t e02Second = 'T';
constexpr std::uint8_t e02LiftPlace = 2;
constexpr std::uint8_t e02Lift = 0x84;
constexpr std::uint8_t e02Needed = 7;

bool hasStatus(const ReportFormat& format, std::uint8_t status) {
  return std::ranges::count(format.touching, status) > 0 ||
         std::ranges::count(format.released, status) > 0;
}

}  // namespace

std::string_view builtInFormat(std::uint8_t status) {
  for (const ReportFamily family : {ReportFamily::tablet, ReportFamily::e02})
    for (const ReportFormat& format : ownFormats(family))
      if (hasStatus(format, status)) return format.name;
  return {};
}

bool isOwnPacket(ReportFamily family, std::span<const std::uint8_t> packet) {
  if (family == ReportFamily::e02 && packet[1] != e02Second) return false;
  return std::ranges::any_of(ownFormats(family), [&packet](const ReportFormat& format) {
    return hasStatus(format, packet[0]);
  });
}

ReportDecoder::ReportDecoder(ReportFamily family, std::span<const ReportFormat> added) {
  for (const ReportFormat& format : ownFormats(family))
    know(format);
  if (family == ReportFamily::e02) {
    Kind& kind = kinds_[ownFormats(family).front().touching.front()];
    kind.needed = e02Needed;
    kind.second = e02Second;
    kind.liftPlace = e02LiftPlace;
    kind.lift = e02Lift;
  }
  for (const ReportFormat& format : added)
    know(format);
}

void ReportDecoder::know(const ReportFormat& format) {
  const bool wide = format.layout.encoding == CoordinateEncoding::sixteenBitLittleEndian;
  const bool highFirst = format.layout.encoding == CoordinateEncoding::sevenBitHighFirst;
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
  } else if (known.second != 0 && otherwise_.length == 0) {
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
    const Kind* kind = &kinds_[*packet];
    if (kind->second != 0) {
      if (held < 2) return;
      if (packet[1] != kind->second) kind = &otherwise_;
    }
    if (held < kind->needed) return;
    const std::uint8_t* const x = packet + kind->x;
    const std::uint8_t* const y = packet + kind->y;
    std::size_t passed = 1;
    if (kind->length != 0 && ((x[0] | x[1] | y[0] | y[1]) & kind->clearBits) == 0) {
      const auto coordinate = [kind](const std::uint8_t* bytes) {
        return static_cast<std::uint16_t>(bytes[0] * kind->firstWeight +
                                          bytes[1] * kind->secondWeight);
      };
      reports.push_back({decided_, coordinate(x), coordinate(y), kind->greatest, kind->length,
                         packet[kind->liftPlace] != kind->lift});
      passed = std::min<std::size_t>(kind->length, held);
      owed_ = kind->length - passed;
    } else {
      ++stray_;
    }
    pass(passed);
    held -= passed;
  }
}

void ReportDecoder::pass(std::size_t count) {
  decided_ += count;
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
