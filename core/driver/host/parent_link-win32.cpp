#include <windows.h>

#include <array>
#include <charconv>
#include <cstring>

#include "core/driver/host/parent_link.h"

namespace touch {

namespace {

HANDLE handleOf(std::size_t number) {
  return reinterpret_cast<HANDLE>(number);
}

}  // namespace

std::optional<ParentLink> ParentLink::take(int argc, char** argv) {
  if (argc != 2) return std::nullopt;
  const char* const end = argv[1] + std::strlen(argv[1]);
  std::size_t pipe = 0;
  const auto [rest, error] = std::from_chars(argv[1], end, pipe);
  if (error != std::errc{} || rest != end || GetFileType(handleOf(pipe)) != FILE_TYPE_PIPE)
    return std::nullopt;
  // A driver that crashes is told of by the parent; a box of the system's would only hold it up.
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
  return ParentLink(pipe);
}

bool ParentLink::receive(std::string& bytes) const {
  std::array<char, 4096> buffer{};
  DWORD count = 0;
  if (ReadFile(handleOf(pipe_), buffer.data(), static_cast<DWORD>(buffer.size()), &count,
               nullptr) == 0)
    return false;
  bytes.append(buffer.data(), count);
  return count > 0;
}

bool ParentLink::send(std::string_view bytes) const {
  DWORD count = 0;
  return WriteFile(handleOf(pipe_), bytes.data(), static_cast<DWORD>(bytes.size()), &count,
                   nullptr) != 0 &&
         count == bytes.size();
}

}  // namespace touch
