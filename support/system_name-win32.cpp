#include <windows.h>

#include <bit>

#include "support/system_name.h"

namespace touch {

std::string systemName() {
  // What the documented function tells depends on the program's manifest; this one tells the truth.
  using GetVersion = LONG(WINAPI*)(OSVERSIONINFOW*);
  const HMODULE library = GetModuleHandleW(L"ntdll.dll");
  const auto address = library == nullptr ? nullptr : GetProcAddress(library, "RtlGetVersion");
  OSVERSIONINFOW version{};
  version.dwOSVersionInfoSize = sizeof version;
  if (address == nullptr || std::bit_cast<GetVersion>(address)(&version) != 0) return "Windows";
  return "Windows " + std::to_string(version.dwMajorVersion) + '.' +
         std::to_string(version.dwMinorVersion) + '.' + std::to_string(version.dwBuildNumber);
}

}  // namespace touch
