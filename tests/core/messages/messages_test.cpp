#include "core/messages/messages.h"

#include "support/text/text_encoding.h"
#include "tests/doubles/temporary_folder.h"

namespace touch::test {
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
  TemporaryFolder folder;
};

TEST_F(Messages, OfTheFileReplaceTheWholeTable) {
  EXPECT_EQ(loadMessages(folder.path())->at(50), "Width") << "built in, without a file";
  const std::string longest(1U << 20U, 'x');
  std::string nine;
  for (int line = 0; line < 9; ++line)
    nine += longest + "\r\n";
  EXPECT_EQ(load(nine + numberedLines(91, "\n"))->at(8), longest);
  const auto table = load("\r\n  second \r\n" + numberedLines(118, "\r\n"));
  ASSERT_TRUE(table);
  EXPECT_EQ(table->at(0), "");
  EXPECT_EQ(table->at(1), "  second ");
  EXPECT_EQ(table->at(99), "text 97");
  EXPECT_EQ(table->at(100), "");
  // Without the last line end, in either encoding.
  std::string lines = numberedLines(99, "\n");
  lines.pop_back();
  for (const char* first : {"\xEF\xBB\xBFGer\xC3\xA4t\n", "Ger\xE4t\n"}) {
    const auto read = load(first + lines);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->at(0), "Ger\xC3\xA4t");
    EXPECT_EQ(read->at(99), "text 98");
  }
}

TEST_F(Messages, OfADamagedFileAreRefused) {
  std::string many;
  for (int line = 0; line < 25; ++line)
    many += std::string(1U << 20U, 'x') + "\n";
  const std::pair<std::string, std::string> cases[] = {
      {many, ", line 25: expected at most 25165824 bytes in all lines, found more"},
      {numberedLines(99, "\n"), ": expected 100 lines, one for each message, found 99 lines"},
      {"ok\n" + std::string((1U << 20U) + 1, 'x'),
       ", line 2: expected at most 1048576 bytes, found more"},
  };
  const auto file = folder.path() / "errmsg.txt";
  for (const auto& [content, complaint] : cases) {
    EXPECT_EQ(whyNot(load(content)), file.string() + complaint);
  }
  fs::remove(file);
  fs::create_symlink("nowhere", file);
  EXPECT_FALSE(loadMessages(folder.path())) << "a link that leads nowhere";

  const auto loop = folder.path() / "loop";
  fs::create_directory_symlink("loop", loop);
  folder.write("file", "");
  for (const auto& none : {loop, folder.path() / "none", folder.path() / "file"}) {
    EXPECT_THAT(whyNot(loadMessages(none)),
                StartsWith(none.string() + ": expected a working folder that can be read, "));
  }
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
}  // namespace touch::test
