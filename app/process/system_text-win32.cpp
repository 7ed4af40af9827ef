#include <windows.h>

#include <shellapi.h>

#include <iostream>
#include <optional>
#include <span>
#include <streambuf>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/process/system_text.h"

namespace touch {

namespace {

std::string utf8(std::wstring_view wide) {
  const auto convert = [wide](char* text, int size) {
    return WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()), text, size,
                               nullptr, nullptr);
  };
  std::string text(static_cast<std::size_t>(convert(nullptr, 0)), '\0');
  convert(text.data(), static_cast<int>(text.size()));
  return text;
}

std::wstring utf16(std::string_view text) {
  const auto convert = [text](wchar_t* wide, int size) {
    return MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), wide, size);
  };
  std::wstring wide(static_cast<std::size_t>(convert(nullptr, 0)), L'\0');
  convert(wide.data(), static_cast<int>(wide.size()));
  return wide;
}

struct LocalMemory {
  void operator()(void* memory) const { LocalFree(memory); }
};

std::vector<std::string> commandLine() {
  // The arguments of main() have lost every character that the system's old character set lacks.
  int count = 0;
  const std::unique_ptr<LPWSTR, LocalMemory> wide(CommandLineToArgvW(GetCommandLineW(), &count));
  std::vector<std::string> arguments;
  if (wide == nullptr) return arguments;
  for (const wchar_t* const argument : std::span(wide.get(), static_cast<std::size_t>(count)))
    arguments.push_back(utf8(argument));
  return arguments;
}

bool isConsole(HANDLE stream) {
  DWORD mode = 0;
  return GetConsoleMode(stream, &mode) != 0;
}

bool isConnected(HANDLE stream) {
  return stream != nullptr && stream != INVALID_HANDLE_VALUE;
}

/// Collects text and hands it to a console as a whole, whatever character set the console is set
/// to.
class ConsoleBuffer final : public std::streambuf {
 public:
  explicit ConsoleBuffer(HANDLE console) : console_(console) {}

 protected:
  int_type overflow(int_type character) override {
    if (!traits_type::eq_int_type(character, traits_type::eof()))
      text_ += traits_type::to_char_type(character);
    return traits_type::not_eof(character);
  }
  std::streamsize xsputn(const char* text, std::streamsize size) override {
    text_.append(text, static_cast<std::size_t>(size));
    return size;
  }
  int sync() override {
    const std::wstring wide = utf16(std::exchange(text_, {}));
    DWORD written = 0;
    return WriteConsoleW(console_, wide.data(), static_cast<DWORD>(wide.size()), &written,
                         nullptr) != 0
               ? 0
               : -1;
  }

 private:
  HANDLE console_;
  std::string text_;
};

/// A stream that writes on a console for as long as this lives.
class OnConsole {
 public:
  OnConsole(std::ostream& stream, HANDLE console)
      : stream_(stream), buffer_(console), before_(stream.rdbuf(&buffer_)) {}
  OnConsole(const OnConsole&) = delete;
  OnConsole& operator=(const OnConsole&) = delete;
  ~OnConsole() {
    stream_.flush();
    stream_.rdbuf(before_);
  }

 private:
  std::ostream& stream_;
  ConsoleBuffer buffer_;
  std::streambuf* before_;
};

}  // namespace

class SystemText::Translation {
 public:
  Translation() : arguments_(commandLine()) {
    for (std::string& argument : arguments_)
      pointers_.push_back(argument.data());
    pointers_.push_back(nullptr);

    HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    HANDLE errors = GetStdHandle(STD_ERROR_HANDLE);
    // A program with windows has no console of its own; what it says about a wrong option goes to
    // the one that it was started from.
    if (!isConnected(output) && !isConnected(errors) && AttachConsole(ATTACH_PARENT_PROCESS) != 0) {
      output = errors = CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_WRITE,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
    }
    if (isConsole(output)) output_.emplace(std::cout, output);
    if (isConsole(errors)) errors_.emplace(std::cerr, errors);
  }

  void replace(int& argc, char**& argv) {
    if (arguments_.empty()) return;
    argc = static_cast<int>(arguments_.size());
    argv = pointers_.data();
  }

 private:
  std::vector<std::string> arguments_;
  std::vector<char*> pointers_;
  std::optional<OnConsole> output_;
  std::optional<OnConsole> errors_;
};

SystemText::SystemText(int& argc, char**& argv) : translation_(std::make_unique<Translation>()) {
  translation_->replace(argc, argv);
}

SystemText::~SystemText() = default;

}  // namespace touch
