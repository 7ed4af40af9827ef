// The decoder of touch reports. The first byte chooses the family, whether formats are added, and
// whether the stream is cut into reports too; the second, how much came before; the next two, the
// pieces in which it comes. The rest is the stream. It must give the same reports whole
// and in pieces.

#include "reports/report_decoder.h"

#include <map>
#include <tuple>
#include <vector>

#include "fuzz/target.h"
#include "reports/report_splitter.h"

namespace touch::fuzz {

namespace {

constexpr std::size_t lastStarts = 64;

const std::vector<ReportFormat>& addedFormats() {
  static const std::vector<ReportFormat> formats = parseFormats(
                                                       "short 5  E8,E9 A8 low7@1,3\n"
                                                       "apart 8  5A    5B le16@5,1\n"
                                                       "long  64 F0    -  high7@62,1\n",
                                                       "formats")
                                                       .formats;
  return formats;
}

std::span<const ReportFormat> formatsOf(bool added) {
  return added ? std::span(addedFormats()) : std::span<const ReportFormat>();
}

/// A decoder that has had no byte, or nearly as many as can wait at once.
const ReportDecoder& decoderAt(ReportFamily family, bool added, std::size_t start) {
  static std::map<std::tuple<ReportFamily, bool, std::size_t>, ReportDecoder> decoders;
  const std::size_t place = start % (lastStarts + 1);
  const auto [made, isNew] = decoders.try_emplace({family, added, place}, family, formatsOf(added));
  if (isNew && place > 0) {
    std::vector<TouchReport> none;
    made->second.feed(std::vector<std::uint8_t>(ReportDecoder::capacity + 1 - place), none);
  }
  return made->second;
}

void checkReports(const ReportDecoder& before, const ReportDecoder& after, std::size_t streamSize,
                  std::span<const TouchReport> reports) {
  require(after.received() == before.received() + streamSize, "every byte is counted");
  require(after.pending() <= ReportDecoder::capacity, "no more waits than can");
  std::uint64_t next = before.decided();
  std::uint64_t inReports = 0;
  for (const TouchReport& report : reports) {
    require(report.offset >= next, "packets do not overlap");
    require(report.x <= report.greatest && report.y <= report.greatest,
            "coordinates have a greatest");
    next = report.offset + report.length;
    inReports += std::min<std::uint64_t>(report.length, after.decided() - report.offset);
  }
  require(
      after.decided() - before.decided() == inReports + after.strayBytes() - before.strayBytes(),
      "a decided byte is in a packet or stray");
}

/// The stream in pieces of two sizes by turns.
template <typename Feed>
void inPieces(std::span<const std::uint8_t> stream, std::size_t one, std::size_t other,
              const Feed& feed) {
  while (!stream.empty()) {
    const auto piece = stream.first(std::min(one, stream.size()));
    feed(piece);
    stream = stream.subspan(piece.size());
    std::swap(one, other);
  }
}

void checkSplitter(ReportFamily family, bool added, std::span<const std::uint8_t> stream,
                   std::size_t one, std::size_t other) {
  ReportSplitter splitter(family, formatsOf(added));
  std::size_t told = 0;
  const auto sink = [&](const TouchReport* report, std::span<const std::uint8_t> bytes) {
    require(told + bytes.size() <= stream.size() &&
                std::equal(bytes.begin(), bytes.end(), stream.data() + told),
            "bytes are told in their order");
    require(report == nullptr || (report->offset == told && bytes.size() <= report->length),
            "a report is told with its packet");
    told += bytes.size();
  };
  inPieces(stream, one, other, [&](auto piece) { splitter.feed(piece, sink); });
  splitter.flush(sink);
  require(told == stream.size(), "every byte is told");
}

}  // namespace

void execute(std::span<const std::uint8_t> bytes) {
  Input input(bytes);
  const std::uint8_t choice = input.byte();
  const auto family = (choice & 1) != 0 ? ReportFamily::e02 : ReportFamily::tablet;
  const bool added = (choice & 2) != 0;
  const ReportDecoder& before = decoderAt(family, added, input.byte());
  const std::size_t one = 1 + input.below(16);
  const std::size_t other = 1 + input.below(16);
  const auto stream = input.rest();

  ReportDecoder whole = before;
  std::vector<TouchReport> reports;
  whole.feed(stream, reports);
  checkReports(before, whole, stream.size(), reports);

  ReportDecoder pieces = before;
  std::vector<TouchReport> sameReports;
  inPieces(stream, one, other, [&](auto piece) { pieces.feed(piece, sameReports); });
  require(reports == sameReports, "pieces make no difference");
  require(whole.decided() == pieces.decided() && whole.strayBytes() == pieces.strayBytes(),
          "pieces make no difference to what is counted");

  whole.reset();
  require(whole.pending() == 0 && whole.received() == before.received() + stream.size(),
          "what is left is counted as passed");
  if ((choice & 4) != 0) checkSplitter(family, added, stream, one, other);
}

}  // namespace touch::fuzz
