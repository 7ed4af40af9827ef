#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace touch {

/// Text from files and from the driver has no declared encoding: it is taken as UTF-8 when it is
/// valid UTF-8 (no overlong forms, no surrogates), else as Latin-1, in which every byte is a
/// character.
bool isUtf8(std::string_view text);
std::string utf8FromLatin1(std::string_view text);

/// `text` as UTF-8, whichever of the two it was.
std::string toUtf8(std::string_view text);

/// Characters that are obeyed and not shown: those below a blank, DEL, the upper control characters
/// 80 to 9F, and the marks that turn lines or the direction of writing.
constexpr bool isObeyed(char32_t character) {
  return character < 0x20 || (character >= 0x7F && character < 0xA0) || character == 0x061C ||
         character == 0x200E || character == 0x200F ||
         (character >= 0x2028 && character <= 0x202E) ||
         (character >= 0x2066 && character <= 0x2069);
}

/// `text` as UTF-8 that a terminal shows and does not obey: such characters stand as "\x1B" or
/// "\u202E", line ends too.
std::string printable(std::string_view text);
/// The same with its line ends.
std::string printableLines(std::string_view text);
/// `text` as UTF-8 in the quotes of JSON, such characters as "\u001B".
std::string jsonText(std::string_view text);

/// The file or folder of this name. A path made of the text itself would take it for another
/// encoding on Windows.
std::filesystem::path pathNamed(std::string_view utf8);

/// The same from the root on, so that it means the same whatever the current folder is later.
/// Without a current folder it stays as it was given.
std::filesystem::path absolutePathNamed(std::string_view utf8);

/// The other way round: a path as UTF-8.
std::string utf8Of(const std::filesystem::path& path);

/// `text` without the three bytes that some editors put in front of UTF-8.
std::string_view withoutByteOrderMark(std::string_view text);

}  // namespace touch
