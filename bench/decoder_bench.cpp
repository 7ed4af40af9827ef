#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>

#include "bench/baselines/byte_machines.h"
#include "bench/subjects.h"

namespace touch::bench {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr int reportsInStream = 100'000;
constexpr int reportsInStroke = 60;
constexpr int oneGarbageByteIn = 100;

std::uint8_t byteOf(int value, int mask) {
  return static_cast<std::uint8_t>(value & mask);
}

Bytes tabletPacket(bool touching, int kind, int x, int y) {
  constexpr std::array<std::array<std::uint8_t, 2>, 4> statuses = {
      {{0x98, 0xD8}, {0x99, 0xD9}, {0x88, 0xC8}, {0x88, 0xC9}}};
  const bool highFirst = kind >= 2;
  const std::uint8_t status = statuses[static_cast<std::size_t>(kind)][touching ? 1 : 0];
  Bytes packet = {status, byteOf(x, 0x7F), byteOf(x >> 7, 0x7F), byteOf(y, 0x7F),
                  byteOf(y >> 7, 0x7F)};
  if (highFirst) {
    std::swap(packet[1], packet[2]);
    std::swap(packet[3], packet[4]);
  }
  return packet;
}

Bytes e02Packet(bool touching, int x, int y) {
  return {'U',
          'T',
          byteOf(touching ? 0x04 : 0x84, 0xFF),
          byteOf(x, 0xFF),
          byteOf(x >> 8, 0xFF),
          byteOf(y, 0xFF),
          byteOf(y >> 8, 0xFF),
          0,
          0,
          '\r'};
}

/// Strokes of a finger that wanders, each with a lift at its end, and one byte of garbage in a
/// hundred anywhere.
Bytes streamOf(ReportFamily family) {
  std::mt19937 random(1);
  const auto upTo = [&random](int end) {
    return static_cast<int>(random() % static_cast<unsigned>(end));
  };
  const int side = family == ReportFamily::tablet ? 1 << 14 : 1 << 16;
  Bytes stream;
  int kind = 0;
  int x = 0;
  int y = 0;
  for (int i = 0; i < reportsInStream; ++i) {
    const int inStroke = i % reportsInStroke;
    if (inStroke == 0) {
      kind = upTo(4);
      x = upTo(side);
      y = upTo(side);
    }
    x = std::clamp(x + upTo(81) - 40, 0, side - 1);
    y = std::clamp(y + upTo(81) - 40, 0, side - 1);
    const bool touching = inStroke != reportsInStroke - 1;
    for (const std::uint8_t byte : family == ReportFamily::tablet
                                       ? tabletPacket(touching, kind, x, y)
                                       : e02Packet(touching, x, y)) {
      if (upTo(oneGarbageByteIn) == 0) stream.push_back(byteOf(upTo(256), 0xFF));
      stream.push_back(byte);
    }
  }
  return stream;
}

/// Feeds the stream in pieces as they come from a port; `heed` is given the reports of each.
template <typename Decoder, typename Heed>
void decode(Decoder& decoder, std::span<const std::uint8_t> stream, std::size_t piece,
            const Heed& heed) {
  std::vector<TouchReport> reports;
  while (!stream.empty()) {
    const auto taken = stream.first(std::min(piece, stream.size()));
    stream = stream.subspan(taken.size());
    reports.clear();
    decoder.feed(taken, reports);
    heed(reports);
  }
}

template <typename Decoder>
std::vector<TouchReport> allReports(Decoder decoder, std::span<const std::uint8_t> stream) {
  std::vector<TouchReport> all;
  decode(decoder, stream, stream.size(), [&all](const auto& reports) { all = reports; });
  return all;
}

template <typename Decoder>
void run(benchmark::State& state, Decoder decoder, const Bytes& stream, std::size_t count,
         std::size_t piece) {
  for (auto _ : state)
    decode(decoder, stream, piece,
           [](const auto& reports) { benchmark::DoNotOptimize(reports.data()); });
  state.counters["per report"] = {
      static_cast<double>(count),
      benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert};
}

template <typename Machine>
void registerFamily(ReportFamily family, const std::string& name) {
  const Bytes stream = streamOf(family);
  const auto expected = allReports(Machine(), stream);
  const bool same = allReports(ReportDecoder(family), stream) == expected;
  // What 50 ms bring at 9600 baud, and what a recording brings.
  for (const std::size_t piece : {48U, 4096U}) {
    const std::string suffix = name + '/' + std::to_string(piece);
    benchmark::RegisterBenchmark(("decoder/" + suffix).c_str(), [=](benchmark::State& state) {
      if (!same) return state.SkipWithError("the two find different reports");
      run(state, ReportDecoder(family), stream, expected.size(), piece);
    });
    benchmark::RegisterBenchmark(("byte machine/" + suffix).c_str(), [=](benchmark::State& state) {
      run(state, Machine(), stream, expected.size(), piece);
    });
  }
}

}  // namespace

void registerDecoder() {
  registerFamily<TabletMachine>(ReportFamily::tablet, "tablet");
  registerFamily<E02Machine>(ReportFamily::e02, "E02");
}

}  // namespace touch::bench
