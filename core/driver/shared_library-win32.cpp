#include <windows.h>

#include <array>
#include <bit>

#include "core/driver/nexapi.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

// The program's own folder and the system's, and nothing else: not the current folder, not PATH.
constexpr DWORD trustedFolders = LOAD_LIBRARY_SEARCH_APPLICATION_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32;
constexpr DWORD ownFolderAndSystem =
    LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32;

std::string loaderError() {
  std::array<wchar_t, 512> wide{};
  const DWORD length =
      FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                     GetLastError(), 0, wide.data(), static_cast<DWORD>(wide.size()), nullptr);
  std::array<char, 1536> text{};
  const int bytes =
      WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(length), text.data(),
                          static_cast<int>(text.size()), nullptr, nullptr);
  std::string words(text.data(), static_cast<std::size_t>(bytes));
  while (!words.empty() && (words.back() == '\n' || words.back() == '\r' || words.back() == '.'))
    words.pop_back();
  return words;
}

std::filesystem::path moduleFile(HMODULE module) {
  std::array<wchar_t, 32768> path{};
  const DWORD length = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
  return std::wstring(path.data(), length);
}

}  // namespace

void trustOwnFoldersAlone() {
  // For every library that anybody in this program loads by name from here on: Qt its plugins', the
  // system its own.
  SetDefaultDllDirectories(trustedFolders);
}

std::string librarySearchPlaces() {
  return filled(say("driver", "%1 and the system folder"), {programFolder().string()});
}

std::optional<std::filesystem::path> ownLibrary(const std::string& name) {
  std::error_code ignored;
  auto file = programFolder() / libraryFileName(name);
  if (!std::filesystem::exists(file, ignored)) return std::nullopt;
  return file;
}

std::filesystem::path programFolder() {
  return moduleFile(nullptr).parent_path();
}

std::string libraryFileName(const std::string& name) {
  return name + ".dll";
}

Result<SharedLibrary, std::string> SharedLibrary::loadPath(const std::filesystem::path& path) {
  const HMODULE library = LoadLibraryExW(path.c_str(), nullptr, ownFolderAndSystem);
  if (library == nullptr) return tl::unexpected(loaderError());
  return SharedLibrary(library, path);
}

Result<SharedLibrary, std::string> SharedLibrary::loadNamed(const std::string& name) {
  const std::filesystem::path file = libraryFileName(name);
  const HMODULE library = LoadLibraryExW(file.c_str(), nullptr, trustedFolders);
  if (library == nullptr) return tl::unexpected(loaderError());
  return SharedLibrary(library, moduleFile(library));
}

void* SharedLibrary::symbol(const char* name) const {
  return std::bit_cast<void*>(GetProcAddress(static_cast<HMODULE>(library_.get()), name));
}

void SharedLibrary::Unload::operator()(void* library) const {
  FreeLibrary(static_cast<HMODULE>(library));
}

}  // namespace touch
