#include "console/parameters/vrq_file.h"

#include "console/parameters/backup.h"
#include "tests/doubles/temporary_folder.h"

namespace touch::test {
namespace {

constexpr ParameterBlock sample = {
    {{0x00, 0x01}, {0x1A, 0xFF}, {0, 0}, {0xFF, 0xFF}, {4, 4}, {5, 5}, {6, 6}, {0x7F, 0x80}}};
constexpr const char* sampleText =
    "0001\r\n1AFF\r\n0000\r\nFFFF\r\n0404\r\n0505\r\n0606\r\n7F80\r\n";

TEST(VrqFile, IsEightLinesOfFourDigits) {
  TemporaryFolder folder;
  ASSERT_EQ(whyNot(saveVrq(folder.path() / "a.vrq", sample)), "");
  EXPECT_EQ(folder.read("a.vrq"), sampleText);
  // Other line ends, none at the end, small letters, and the mark that editors put before UTF-8.
  for (const char* text : {"0001\n1aff\r\n0000\nffff\n0404\n0505\n0606\n7F80",
                           "\uFEFF0001\n1AFF\n0000\nFFFF\n0404\n0505\n0606\n7F80\n"}) {
    folder.write("b.vrq", text);
    EXPECT_EQ(*loadVrq(folder.path() / "b.vrq"), sample);
  }
}

TEST(VrqFile, SaysWhichLineIsWrongAndWhatWasExpected) {
  const std::string two = "0001\n0001\n";
  const std::string seven = two + two + two + "0001\n";
  const std::pair<std::string, const char*> cases[] = {
      {seven, ", line 8: expected eight lines of four hexadecimal digits, found 7 lines"},
      {seven + two, ", line 9: expected the end of the file after eight lines, found \"0001\""},
      {two + "12G4\n" + two, ", line 3: expected four hexadecimal digits, found \"12G4\""},
      {seven + "12345\n", ", line 8: expected four hexadecimal digits, found \"12345\""},
      {"-123\n", ", line 1: expected four hexadecimal digits, found \"-123\""},
      {{'\x7F', 'E', '\0', '\2'},
       ", line 1: expected four hexadecimal digits, found \"\\x7FE\\x00\\x02\""},
      {std::string(5000, '0'), ": expected at most 4096 bytes, found more"},
  };
  TemporaryFolder folder;
  const auto file = folder.path() / "bad.vrq";
  for (const auto& [content, error] : cases) {
    folder.write("bad.vrq", content);
    EXPECT_EQ(whyNot(loadVrq(file)), file.string() + error);
  }
  EXPECT_THAT(whyNot(loadVrq(folder.path())), HasSubstr("expected a file"));
}

TEST(BackupFolder, NamesItsFilesAfterTimeAndController) {
  using namespace std::chrono;
  const Backup::TimePoint time = sys_days(year(2026) / 3 / 9) + 5h + 7min + 8s + 999ms;
  TemporaryFolder folder;
  const Backup backup(folder.path(), [time] { return time; });
  const std::pair<std::string, std::string> cases[] = {
      {"RS232 DEVICE 1", "20260309-050708-RS232_DEVICE_1.vrq"},
      {"RS232 DEVICE 1", "20260309-050708-RS232_DEVICE_1-2.vrq"},
      {"../../etc/passwd", "20260309-050708-______etc_passwd.vrq"},
      {"a\\b:c\n\xE9" + std::string(500, 'x'),
       "20260309-050708-a_b_c__" + std::string(25, 'x') + ".vrq"},
  };
  for (const auto& [controller, file] : cases) {
    const auto kept = backup.keep(controller, sample);
    ASSERT_EQ(whyNot(kept), "");
    EXPECT_EQ(*kept, folder.path() / "backup" / file);
    EXPECT_EQ(*loadVrq(*kept), sample);
  }
  EXPECT_EQ(
      whyNot(backup.note("USB\tDEVICE\n2", {3, {0x1A, 0x2B}, {0, 0xC}}, Backup::Stage::written)),
      "");
  EXPECT_EQ(folder.read("backup/journal.txt"),
            "2026-03-09T05:07:08Z\tUSB\\x09DEVICE\\x0A2\t03\t1A2B\t000C\twritten\n");
}

}  // namespace
}  // namespace touch::test
