#include "core/messages.h"

#include <gtest/gtest.h>

#include <fstream>

#include "core/text_encoding.h"
#include "tests/support/temporary_folder.h"

namespace touch {
namespace {

std::string numberedLines(int count, const char* end) {
  std::string text;
  for (int i = 0; i < count; ++i)
    text += "text " + std::to_string(i) + end;
  return text;
}

class Messages : public testing::Test {
 protected:
  auto load(std::string_view content) {
    folder.write("errmsg.txt", content);
    return loadMessages(folder.path());
  }
  test::TemporaryFolder folder;
};

TEST_F(Messages, AreBuiltInWithoutAFile) {
  const auto table = loadMessages(folder.path());
  ASSERT_TRUE(table);
  const std::pair<std::size_t, const char*> cases[] = {
      {0, "No device was found"},
      {28, "Disconnect the connector of touch sensor "},
      {50, "Width"},
      {51, ""},
      {100, ""},
  };
  for (const auto& [number, text] : cases)
    EXPECT_EQ(table->at(number), text);
}

TEST_F(Messages, OfTheFileReplaceTheWholeTable) {
  const auto table = load("\r\n  second \r\n" + numberedLines(118, "\r\n"));
  ASSERT_TRUE(table);
  EXPECT_EQ(table->at(0), "");
  EXPECT_EQ(table->at(1), "  second ");
  EXPECT_EQ(table->at(2), "text 0");
  EXPECT_EQ(table->at(99), "text 97");
  EXPECT_EQ(table->at(100), "");
}

TEST_F(Messages, MayLackTheLastLineEndAndAreReadInEitherEncoding) {
  std::string lines = numberedLines(99, "\n");
  lines.pop_back();
  for (const char* first : {"\xEF\xBB\xBFGer\xC3\xA4t\n", "Ger\xE4t\n"}) {
    const auto table = load(first + lines);
    ASSERT_TRUE(table);
    EXPECT_EQ(table->at(0), "Ger\xC3\xA4t");
    EXPECT_EQ(table->at(99), "text 98");
  }
}

TEST_F(Messages, OfADamagedFileAreRefused) {
  const struct {
    std::string content;
    std::string complaint;
  } cases[] = {
      {"", ": expected 100 lines, one for each message, found 0 lines"},
      {numberedLines(99, "\n"), ": expected 100 lines, one for each message, found 99 lines"},
      {"ok\n" + std::string(100000, 'x'), ", line 2: expected at most 4096 characters, found more"},
  };
  const std::string file = (folder.path() / "errmsg.txt").string();
  for (const auto& [content, complaint] : cases) {
    const auto table = load(content);
    ASSERT_FALSE(table);
    EXPECT_EQ(table.error().describe(), file + complaint);
  }
}

TEST_F(Messages, OfSomethingThatIsNoFileAreRefused) {
  const auto path = folder.path() / "errmsg.txt";
  std::filesystem::create_directory(path);
  EXPECT_FALSE(loadMessages(folder.path()));
  std::filesystem::remove(path);
  std::filesystem::create_symlink("nowhere", path);
  EXPECT_FALSE(loadMessages(folder.path()));
}

TEST(TextEncoding, KnowsValidUtf8) {
  for (const char* text : {"", "plain", "\xC3\xA4 \xE2\x82\xAC \xF0\x9F\x98\x80"})
    EXPECT_TRUE(isUtf8(text)) << text;
  // A lone byte, a character cut short, two overlong ones, a surrogate, one beyond the last.
  for (const char* text :
       {"\xE4", "\xC3", "\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFF"})
    EXPECT_FALSE(isUtf8(text)) << text;
}

}  // namespace
}  // namespace touch
