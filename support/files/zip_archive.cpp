#include "support/files/zip_archive.h"

#include <zlib.h>

#include <algorithm>
#include <optional>

namespace touch {

namespace {

// Every entry is written as local header, name, content; behind the last one follow the central
// headers, each with its name, and the end record. Numbers have their low byte first.
constexpr std::uint32_t localHeader = 0x04034B50;
constexpr std::uint32_t centralHeader = 0x02014B50;
constexpr std::uint32_t endRecord = 0x06054B50;
constexpr std::size_t localHeaderSize = 30;
constexpr std::size_t centralHeaderSize = 46;
constexpr std::size_t endRecordSize = 22;
constexpr std::size_t longestComment = 0xFFFF;
constexpr std::uint16_t neededVersion = 20;
// Readers take names of archives from elsewhere for text in an old code page, in spite of the flag
// below.
constexpr std::uint16_t madeOnUnix = 3 << 8 | neededVersion;
constexpr std::uint32_t plainFile = 0100644u << 16;  // with its permissions
constexpr std::uint16_t namesAreUtf8 = 1 << 11;
constexpr std::uint16_t encrypted = 1 << 0;
constexpr std::uint16_t stored = 0;
constexpr std::uint16_t deflated = 8;
constexpr int bareDeflate = -15;  // zlib: the largest window, no header of its own

const Bytef* bytesOf(std::string_view text) {
  return reinterpret_cast<const Bytef*>(text.data());
}

std::uint32_t checkSum(std::string_view bytes) {
  return static_cast<std::uint32_t>(crc32_z(crc32_z(0, nullptr, 0), bytesOf(bytes), bytes.size()));
}

/// Ends what zlib has begun.
template <int (*end)(z_streamp)>
struct Stream {
  Stream() = default;
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;
  ~Stream() { end(&zlib); }
  z_stream zlib{};
};

/// Nothing where it becomes no smaller, or there is no memory for it.
std::optional<std::string> deflatedBytes(std::string_view bytes) {
  Stream<deflateEnd> stream;
  if (deflateInit2(&stream.zlib, Z_DEFAULT_COMPRESSION, Z_DEFLATED, bareDeflate, 8,
                   Z_DEFAULT_STRATEGY) != Z_OK)
    return std::nullopt;
  std::string packed(bytes.size(), '\0');
  stream.zlib.next_in = bytesOf(bytes);
  stream.zlib.avail_in = static_cast<uInt>(bytes.size());
  stream.zlib.next_out = reinterpret_cast<Bytef*>(packed.data());
  stream.zlib.avail_out = static_cast<uInt>(packed.size());
  if (deflate(&stream.zlib, Z_FINISH) != Z_STREAM_END) return std::nullopt;
  packed.resize(stream.zlib.total_out);
  return packed;
}

/// Nothing where that is not what comes out.
std::optional<std::string> inflatedBytes(std::string_view packed, std::size_t size) {
  Stream<inflateEnd> stream;
  if (inflateInit2(&stream.zlib, bareDeflate) != Z_OK) return std::nullopt;
  // One byte more than it may have shows when there is more of it.
  std::string bytes(size + 1, '\0');
  stream.zlib.next_in = bytesOf(packed);
  stream.zlib.avail_in = static_cast<uInt>(packed.size());
  stream.zlib.next_out = reinterpret_cast<Bytef*>(bytes.data());
  stream.zlib.avail_out = static_cast<uInt>(bytes.size());
  if (inflate(&stream.zlib, Z_FINISH) != Z_STREAM_END || stream.zlib.total_out != size)
    return std::nullopt;
  bytes.resize(size);
  return bytes;
}

void put16(std::string& out, std::uint16_t value) {
  out += static_cast<char>(value & 0xFF);
  out += static_cast<char>(value >> 8);
}

void put32(std::string& out, std::uint32_t value) {
  put16(out, static_cast<std::uint16_t>(value & 0xFFFF));
  put16(out, static_cast<std::uint16_t>(value >> 16));
}

/// The numbers at a place of which the caller knows that it is within `bytes`.
std::uint16_t get16(std::string_view bytes, std::size_t place) {
  return static_cast<std::uint16_t>(static_cast<std::uint8_t>(bytes[place]) |
                                    static_cast<std::uint8_t>(bytes[place + 1]) << 8);
}

std::uint32_t get32(std::string_view bytes, std::size_t place) {
  return get16(bytes, place) | std::uint32_t{get16(bytes, place + 2)} << 16;
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
void putDescription(std::string& out, const ZipEntry& entry, std::string_view packed,
                    std::uint16_t method, const DosTime& when) {
  put16(out, neededVersion);
  put16(out, namesAreUtf8);
  put16(out, method);
  put16(out, when.time);
  put16(out, when.date);
  put32(out, checkSum(entry.content));
  put32(out, size32(packed));
  put32(out, size32(entry.content));
  put16(out, static_cast<std::uint16_t>(entry.name.size()));
  put16(out, 0);  // extra field
}

bool leadsOut(std::string_view name) {
  return name.empty() || name.front() == '/' || name.find('\\') != name.npos ||
         name.find(':') != name.npos || name.find('\0') != name.npos ||
         ("/" + std::string(name) + "/").find("/../") != std::string::npos;
}

/// Where the end record is; a comment may follow it.
std::optional<std::size_t> endRecordPlace(std::string_view archive) {
  if (archive.size() < endRecordSize) return std::nullopt;
  const std::size_t last = archive.size() - endRecordSize;
  const std::size_t first = last - std::min(last, longestComment);
  for (std::size_t place = last + 1; place-- > first;)
    if (get32(archive, place) == endRecord &&
        place + endRecordSize + get16(archive, place + 20) == archive.size())
      return place;
  return std::nullopt;
}

}  // namespace

std::string zipArchive(std::span<const ZipEntry> entries,
                       std::chrono::system_clock::time_point time) {
  const DosTime when = dosTime(time);
  std::string archive;
  std::string directory;
  for (const ZipEntry& entry : entries) {
    const auto smaller = deflatedBytes(entry.content);
    const std::string_view packed = smaller ? *smaller : entry.content;
    const std::uint16_t method = smaller ? deflated : stored;

    put32(directory, centralHeader);
    put16(directory, madeOnUnix);
    putDescription(directory, entry, packed, method, when);
    put16(directory, 0);  // comment
    put16(directory, 0);  // disk
    put16(directory, 0);  // internal attributes
    put32(directory, plainFile);
    put32(directory, size32(archive));
    directory += entry.name;

    put32(archive, localHeader);
    putDescription(archive, entry, packed, method, when);
    archive += entry.name;
    archive += packed;
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

Result<ZipReader> ZipReader::open(std::string archive, std::string file, Most most) {
  const auto refused = [&file](std::string expected, std::string found = {}) {
    return tl::unexpected(FileError{file, 0, std::move(expected), std::move(found)});
  };
  const auto end = endRecordPlace(archive);
  if (!end) return refused(say("files", "a ZIP archive that is complete"));
  const std::size_t count = get16(archive, *end + 10);
  if (count > most.entries)
    return refused(filled(say("files", "at most %1 files"), {std::to_string(most.entries)}),
                   std::to_string(count));

  ZipReader reader;
  std::size_t place = get32(archive, *end + 16);
  for (std::size_t i = 0; i < count; ++i) {
    if (place > *end || *end - place < centralHeaderSize || get32(archive, place) != centralHeader)
      return refused(say("files", "a ZIP archive whose list of files is whole"));
    Entry entry;
    entry.method = get16(archive, place + 10);
    entry.checkSum = get32(archive, place + 16);
    entry.packedSize = get32(archive, place + 20);
    entry.size = get32(archive, place + 24);
    entry.place = get32(archive, place + 42);
    const std::size_t nameSize = get16(archive, place + 28);
    const std::size_t size =
        centralHeaderSize + nameSize + get16(archive, place + 30) + get16(archive, place + 32);
    if (*end - place < size)
      return refused(say("files", "a ZIP archive whose list of files is whole"));
    entry.name = archive.substr(place + centralHeaderSize, nameSize);
    if (leadsOut(entry.name)) return refused(say("files", "names of files within it"), entry.name);
    if ((get16(archive, place + 8) & encrypted) != 0 ||
        (entry.method != stored && entry.method != deflated))
      return refused(say("files", "files that are stored or deflated"), entry.name);
    if (entry.size > most.size)
      return refused(filled(say("files", "files of at most %1 bytes"), {std::to_string(most.size)}),
                     entry.name + " (" + std::to_string(entry.size) + ")");
    place += size;
    if (entry.name.ends_with('/')) continue;
    if (reader.holds(entry.name)) return refused(say("files", "each file once"), entry.name);
    reader.entries_.push_back(std::move(entry));
  }
  reader.archive_ = std::move(archive);
  reader.file_ = std::move(file);
  return reader;
}

const ZipReader::Entry* ZipReader::find(std::string_view name) const {
  const auto found = std::ranges::find(entries_, name, &Entry::name);
  return found == entries_.end() ? nullptr : &*found;
}

std::vector<std::string> ZipReader::names() const {
  std::vector<std::string> names;
  for (const Entry& entry : entries_)
    names.push_back(entry.name);
  return names;
}

Result<std::string> ZipReader::content(std::string_view name) const {
  const auto refused = [&](std::string expected) {
    return tl::unexpected(FileError{file_ + ": " + std::string(name), 0, std::move(expected), {}});
  };
  const Entry* const entry = find(name);
  if (entry == nullptr) return refused(say("files", "this file, which is missing"));
  const std::string damaged = say("files", "a file that is not damaged");
  if (entry->place > archive_.size() || archive_.size() - entry->place < localHeaderSize ||
      get32(archive_, entry->place) != localHeader)
    return refused(damaged);
  // The local header's lengths may differ from those of the list.
  const std::size_t start = entry->place + localHeaderSize + get16(archive_, entry->place + 26) +
                            get16(archive_, entry->place + 28);
  if (start > archive_.size() || archive_.size() - start < entry->packedSize)
    return refused(damaged);
  const std::string_view packed(archive_.data() + start, entry->packedSize);
  auto bytes = entry->method == deflated ? inflatedBytes(packed, entry->size)
                                         : std::optional(std::string(packed));
  if (!bytes || bytes->size() != entry->size || checkSum(*bytes) != entry->checkSum)
    return refused(damaged);
  return std::move(*bytes);
}

}  // namespace touch
