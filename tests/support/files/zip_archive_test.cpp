#include "support/files/zip_archive.h"

#include "support/files/sha256.h"
#include "tests/app/child_process.h"

namespace touch::test {
namespace {

constexpr std::chrono::sys_days day = std::chrono::year(2026) / 2 / 28;

std::string someBytes() {
  std::string bytes;
  for (int i = 0; i < 3000; ++i)
    bytes += static_cast<char>(i * 7);
  return bytes;
}

std::vector<ZipEntry> someEntries() {
  return {{"text.txt", "first line\n"},
          {"empty", ""},
          {"folder/bytes", someBytes()},
          {"long.txt", std::string(100'000, 'x')},
          {"\u00fcber.txt", "x"}};
}

/// Why it cannot be read, or ""; what can be read is read.
std::string whyNotRead(const std::string& archive, ZipReader::Most most = {}) {
  const auto reader = ZipReader::open(archive, "a.zip", most);
  if (!reader) return reader.error().describe();
  for (const std::string& name : reader->names())
    if (const auto content = reader->content(name); !content) return content.error().describe();
  return "";
}

TEST(ZipArchive, IsReadByOthersAndByItselfByteForByte) {
  const TemporaryFolder folder;
  const std::string file = folder.path() / "a.zip";
  const std::string archive = zipArchive(someEntries(), day + 23h + 59min + 58s);
  EXPECT_LT(archive.size(), 5000U) << "what repeats itself is packed";
  folder.write("a.zip", archive);

  const auto reader = ZipReader::open(archive, "a.zip", {});
  ASSERT_TRUE(reader) << reader.error().describe();
  const auto unzip = [&file](const char* option) {
    return runProgram("/usr/bin/unzip", {option, file});
  };
  EXPECT_EQ(unzip("-tq").status, 0) << "the check sums";
  for (const ZipEntry& entry : someEntries()) {
    const auto read =
        runProgram("/usr/bin/env", {"LC_ALL=C.UTF-8", "/usr/bin/unzip", "-p", file, entry.name});
    EXPECT_EQ(read.output, entry.content) << entry.name;
    EXPECT_EQ(reader->content(entry.name).value(), entry.content) << entry.name;
  }
  EXPECT_NE(unzip("-lv").output.find("2026-02-28 23:59"), std::string::npos);
  EXPECT_FALSE(reader->content("bytes"));
}

TEST(ZipArchive, ReadsWhatOthersHavePacked) {
  const TemporaryFolder folder;
  folder.write("bytes", someBytes());
  const auto made =
      runProgram("/usr/bin/python3",
                 {"-c",
                  "import sys, zipfile\n"
                  "z = zipfile.ZipFile(sys.argv[1], 'w', zipfile.ZIP_DEFLATED)\n"
                  "z.mkdir('folder') if hasattr(z, 'mkdir') else z.writestr('folder/', '')\n"
                  "z.write(sys.argv[2], 'folder/bytes')\n"
                  "z.comment = b'a comment'\n"
                  "z.close()\n",
                  folder.path() / "a.zip", folder.path() / "bytes"});
  ASSERT_EQ(made.status, 0) << made.errors;
  const auto reader = ZipReader::open(folder.read("a.zip"), "a.zip", {});
  ASSERT_TRUE(reader) << reader.error().describe();
  EXPECT_EQ(reader->names(), std::vector<std::string>{"folder/bytes"});
  EXPECT_EQ(reader->content("folder/bytes").value(), someBytes());
}

TEST(ZipArchive, BelievesNothing) {
  const std::string whole = zipArchive(someEntries(), day);
  ASSERT_EQ(whyNotRead(whole), "");
  for (std::size_t size = 0; size < whole.size(); ++size)
    EXPECT_NE(whyNotRead(whole.substr(0, size)), "") << size;
  // Of one byte that is changed: times and attributes are nobody's, all else is noticed or read as
  // another name; nothing is read beyond the archive.
  std::size_t noticed = 0;
  for (std::size_t place = 0; place < whole.size(); ++place) {
    std::string changed = whole;
    changed[place] = static_cast<char>(changed[place] ^ 0x41);
    noticed += whyNotRead(changed).empty() ? 0U : 1U;
  }
  EXPECT_GT(noticed, whole.size() / 2);

  EXPECT_THAT(whyNotRead(whole, {.entries = 4}), HasSubstr("at most 4 files"));
  EXPECT_THAT(whyNotRead(whole, {.size = 99'999}), HasSubstr("long.txt (100000)"));
  for (const char* name : {"../a", "a/../../b", "/etc/a", "C:a", "a\\b", ""}) {
    const std::vector<ZipEntry> entries = {{name, "x"}};
    EXPECT_THAT(whyNotRead(zipArchive(entries, day)), HasSubstr("within it")) << name;
  }
  const std::vector<ZipEntry> twice = {{"a", "x"}, {"a", "y"}};
  EXPECT_THAT(whyNotRead(zipArchive(twice, day)), HasSubstr("each file once"));
}

TEST(Sha256, IsThatOfOthers) {
  EXPECT_EQ(sha256("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_EQ(sha256(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
}

}  // namespace
}  // namespace touch::test
