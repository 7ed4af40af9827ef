#include "support/files/zip_archive.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

namespace touch {

namespace {

// Every entry is written as local header, name, content; behind the last one follow the central
// headers, each with its name, and the end record. Numbers have their low byte first.
constexpr std::uint32_t localHeader = 0x04034B50;
constexpr std::uint32_t centralHeader = 0x02014B50;
constexpr std::uint32_t endRecord = 0x06054B50;
constexpr std::uint16_t neededVersion = 20;
// Readers take names of archives from elsewhere for text in an old code page, in spite of the flag
// below.
constexpr std::uint16_t madeOnUnix = 3 << 8 | neededVersion;
constexpr std::uint32_t plainFile = 0100644u << 16;  // with its permissions
constexpr std::uint16_t namesAreUtf8 = 1 << 11;
constexpr std::uint16_t stored = 0;

using Table = std::array<std::uint32_t, 256>;

constexpr Table makeCrcTable() {
  constexpr std::uint32_t polynomial = 0xEDB88320;
  Table table{};
  for (std::uint32_t byte = 0; byte < table.size(); ++byte) {
    std::uint32_t value = byte;
    for (int bit = 0; bit < 8; ++bit)
      value = (value >> 1) ^ ((value & 1) != 0 ? polynomial : 0);
    table[byte] = value;
  }
  return table;
}

std::uint32_t crc32(std::string_view bytes) {
  static constexpr Table table = makeCrcTable();
  std::uint32_t value = 0xFFFFFFFF;
  for (const char byte : bytes)
    value = table[(value ^ static_cast<std::uint8_t>(byte)) & 0xFF] ^ (value >> 8);
  return ~value;
}

void put16(std::string& out, std::uint16_t value) {
  out += static_cast<char>(value & 0xFF);
  out += static_cast<char>(value >> 8);
}

void put32(std::string& out, std::uint32_t value) {
  put16(out, static_cast<std::uint16_t>(value & 0xFFFF));
  put16(out, static_cast<std::uint16_t>(value >> 16));
}

std::uint32_t size32(std::string_view bytes) {
  return static_cast<std::uint32_t>(bytes.size());
}

/// Date and time as ZIP has them: in steps of two seconds, from 1980 on.
struct DosTime {
  std::uint16_t time = 0;
  std::uint16_t date = 0;
};

DosTime dosTime(std::chrono::system_clock::time_point time) {
  using namespace std::chrono;
  const auto day = floor<days>(time);
  const year_month_day date(day);
  const hh_mm_ss clock(floor<seconds>(time - day));
  const int year = std::clamp(static_cast<int>(date.year()), 1980, 2107) - 1980;
  return {static_cast<std::uint16_t>(clock.hours().count() << 11 | clock.minutes().count() << 5 |
                                     clock.seconds().count() / 2),
          static_cast<std::uint16_t>(year << 9 | static_cast<int>(unsigned(date.month())) << 5 |
                                     static_cast<int>(unsigned(date.day())))};
}

/// What the local and the central header of an entry have in common.
void putDescription(std::string& out, const ZipEntry& entry, const DosTime& when) {
  put16(out, neededVersion);
  put16(out, namesAreUtf8);
  put16(out, stored);
  put16(out, when.time);
  put16(out, when.date);
  put32(out, crc32(entry.content));
  put32(out, size32(entry.content));
  put32(out, size32(entry.content));
  put16(out, static_cast<std::uint16_t>(entry.name.size()));
  put16(out, 0);  // extra field
}

void putCentralHeader(std::string& out, const ZipEntry& entry, const DosTime& when,
                      std::uint32_t place) {
  put32(out, centralHeader);
  put16(out, madeOnUnix);
  putDescription(out, entry, when);
  put16(out, 0);  // comment
  put16(out, 0);  // disk
  put16(out, 0);  // internal attributes
  put32(out, plainFile);
  put32(out, place);
  out += entry.name;
}

}  // namespace

std::string zipArchive(std::span<const ZipEntry> entries,
                       std::chrono::system_clock::time_point time) {
  const DosTime when = dosTime(time);
  std::string archive;
  std::string directory;
  for (const ZipEntry& entry : entries) {
    putCentralHeader(directory, entry, when, size32(archive));
    put32(archive, localHeader);
    putDescription(archive, entry, when);
    archive += entry.name;
    archive += entry.content;
  }
  const std::uint32_t directoryPlace = size32(archive);
  archive += directory;
  put32(archive, endRecord);
  put16(archive, 0);  // this disk
  put16(archive, 0);  // the directory's disk
  put16(archive, static_cast<std::uint16_t>(entries.size()));
  put16(archive, static_cast<std::uint16_t>(entries.size()));
  put32(archive, size32(directory));
  put32(archive, directoryPlace);
  put16(archive, 0);  // comment
  return archive;
}

}  // namespace touch
