#include <windows.h>

#include <array>
#include <filesystem>

#include "support/text/personal_names.h"

namespace touch {

namespace {

std::string variableOf(const wchar_t* name) {
  std::array<wchar_t, 1024> value{};
  const DWORD length =
      GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size()));
  if (length == 0 || length >= value.size()) return {};
  return std::filesystem::path(std::wstring(value.data(), length)).string();
}

}  // namespace

PersonalNames personalNames() {
  PersonalNames names;
  if (auto home = variableOf(L"USERPROFILE"); !home.empty()) {
    // A home that is a link goes by both names.
    std::error_code ignored;
    std::string real = std::filesystem::weakly_canonical(home, ignored).string();
    if (!real.empty() && real != home) names.homeFolders.push_back(std::move(real));
    names.homeFolders.push_back(std::move(home));
  }
  names.host = variableOf(L"COMPUTERNAME");
  return names;
}

}  // namespace touch
