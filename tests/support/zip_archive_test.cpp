#include "support/files/zip_archive.h"

#include "tests/app/child_process.h"

namespace touch::test {
namespace {

TEST(ZipArchive, IsReadByOthersByteForByte) {
  std::string bytes;
  for (int i = 0; i < 3000; ++i)
    bytes += static_cast<char>(i * 7);
  const std::vector<ZipEntry> entries = {
      {"text.txt", "first line\n"}, {"empty", ""}, {"folder/bytes", bytes}, {"\u00fcber.txt", "x"}};
  const TemporaryFolder folder;
  const std::string file = folder.path() / "a.zip";
  const std::chrono::sys_days day = std::chrono::year(2026) / 2 / 28;
  folder.write("a.zip", zipArchive(entries, day + 23h + 59min + 58s));

  const auto unzip = [&file](const char* option) {
    return runProgram("/usr/bin/unzip", {option, file});
  };
  EXPECT_EQ(unzip("-tq").status, 0) << "the check sums";
  for (const ZipEntry& entry : entries) {
    const auto read =
        runProgram("/usr/bin/env", {"LC_ALL=C.UTF-8", "/usr/bin/unzip", "-p", file, entry.name});
    EXPECT_EQ(read.output, entry.content) << entry.name;
  }
  EXPECT_NE(unzip("-lv").output.find("2026-02-28 23:59"), std::string::npos);
}

}  // namespace
}  // namespace touch::test
