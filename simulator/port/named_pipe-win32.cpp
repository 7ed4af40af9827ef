#include "simulator/port/named_pipe-win32.h"

#include <sddl.h>

#include <array>
#include <cstddef>

namespace touch::simulator {

namespace {

struct FreeIt {
  void operator()(void* memory) const { LocalFree(memory); }
};
using SystemMemory = std::unique_ptr<void, FreeIt>;

/// Lets this user in and nobody else; null when the system does not tell who that is.
SystemMemory onlyThisUser() {
  HANDLE opened = nullptr;
  if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened) == 0) return nullptr;
  const Handle token = owned(opened);
  alignas(TOKEN_USER) std::array<std::byte, sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE> user{};
  DWORD size = 0;
  if (GetTokenInformation(token.get(), TokenUser, user.data(), static_cast<DWORD>(user.size()),
                          &size) == 0) {
    return nullptr;
  }
  char* name = nullptr;
  if (ConvertSidToStringSidA(reinterpret_cast<const TOKEN_USER*>(user.data())->User.Sid, &name) ==
      0) {
    return nullptr;
  }
  const SystemMemory named(name);
  void* descriptor = nullptr;
  const std::string rule = "D:P(A;;GA;;;" + std::string(name) + ')';
  ConvertStringSecurityDescriptorToSecurityDescriptorA(rule.c_str(), SDDL_REVISION_1, &descriptor,
                                                       nullptr);
  return SystemMemory(descriptor);
}

}  // namespace

Handle createOwnPipe(const std::string& name, PipeEnd end) {
  constexpr DWORD room = 65536;
  const SystemMemory rule = onlyThisUser();
  if (!rule) return nullptr;
  SECURITY_ATTRIBUTES security{sizeof(SECURITY_ATTRIBUTES), rule.get(), FALSE};
  const DWORD first = end == PipeEnd::further ? 0 : FILE_FLAG_FIRST_PIPE_INSTANCE;
  const DWORD most = end == PipeEnd::only ? 1 : PIPE_UNLIMITED_INSTANCES;
  return owned(CreateNamedPipeA(name.c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED | first,
                                PIPE_TYPE_BYTE | PIPE_REJECT_REMOTE_CLIENTS, most, room, room, 0,
                                &security));
}

}  // namespace touch::simulator
