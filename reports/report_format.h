#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "reports/raw_counts.h"
#include "support/result.h"

namespace touch {

// The file "zevrik.fmt" describes touch reports that the decoder does not know by itself; its
// built-in formats come first. One format a line, in five fields with blanks or tabs between them:
//
//   name       any word; no two formats have the same
//   length     bytes in a packet, 5 to 64
//   touching   the status bytes, a packet's first byte, while the panel is touched: hexadecimal,
//              with commas between them; no other format has them, and no built-in one
//   released   those that end a touch; "-" when the controller sends none
//   layout     how the coordinates are written, "@", the place of X in the packet, ",", that of Y.
//              The status byte is at place 0; each coordinate takes two bytes.
//                low7    7 bits a byte, the low ones first: 0 to 16383
//                high7   7 bits a byte, the high ones first: 0 to 16383
//                le16    16 bits, the low byte first: 0 to 65535
//
// Empty lines, and what follows a "#", are passed over. The bytes of 7 bits stay below 80, so with
// them a status byte is from 80 to FF: that is how a packet's start is found.
//
//   # name    length  touching  released  layout
//   tablet-2  5       E8,E9     A8        low7@1,3
//   wide      8       5A        5B        le16@2,4

enum class CoordinateEncoding : std::uint8_t {
  sevenBitLowFirst,
  sevenBitHighFirst,
  sixteenBitLittleEndian
};

/// Where and how a packet holds its coordinates. Places are counted from the status byte, which is
/// at 0.
struct CoordinateLayout {
  CoordinateEncoding encoding = CoordinateEncoding::sevenBitLowFirst;
  std::size_t x = 1;
  std::size_t y = 3;
  friend bool operator==(const CoordinateLayout&, const CoordinateLayout&) = default;
};

/// One kind of touch report.
struct ReportFormat {
  std::string name;
  std::size_t packetLength = 5;
  std::vector<std::uint8_t> touching;  ///< status bytes; at least one
  std::vector<std::uint8_t> released;  ///< status bytes; may be empty
  CoordinateLayout layout;
  friend bool operator==(const ReportFormat&, const ReportFormat&) = default;
};

/// What a format file holds: the formats that are in order, and what is wrong with the other lines.
struct ReportFormats {
  std::vector<ReportFormat> formats;
  std::vector<FileError> problems;
};

/// `name` is what a problem calls the file.
ReportFormats parseFormats(std::string_view text, const std::string& name);

/// Reads the report format descriptor "zevrik.fmt" in `folder`. Without that file there are no
/// formats and no problems.
ReportFormats rdformad(const std::filesystem::path& folder);

/// The first ten of its problems, one a line, and how many there are; empty when there are none.
std::string describeProblems(const ReportFormats& formats);

/// The greatest coordinate that this encoding can write.
RawCounts greatestCoordinate(CoordinateEncoding encoding);

}  // namespace touch
