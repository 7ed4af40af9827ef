#include <windows.h>

#include <array>
#include <cstdio>
#include <cwchar>
#include <memory>
#include <system_error>
#include <utility>
#include <vector>

#include "core/driver/host/host_link.h"
#include "support/handle-win32.h"
#include "support/text/language.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

std::string numbered(DWORD number) {
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "0x%08lX", number);
  return text.data();
}

std::string described(DWORD status) {
  struct Exception {
    DWORD code;
    const char* name;
  };
  constexpr std::array exceptions = {
      Exception{EXCEPTION_ACCESS_VIOLATION, "access violation"},
      Exception{EXCEPTION_ILLEGAL_INSTRUCTION, "illegal instruction"},
      Exception{EXCEPTION_INT_DIVIDE_BY_ZERO, "division by zero"},
      Exception{EXCEPTION_IN_PAGE_ERROR, "page that cannot be read"},
      Exception{EXCEPTION_STACK_OVERFLOW, "stack overflow"},
      Exception{0xC0000374, "damaged heap"},
      Exception{0xC0000409, "damaged stack"},
  };
  for (const auto& [code, name] : exceptions)
    if (code == status) return std::string(name) + " (" + numbered(status) + ')';
  constexpr DWORD firstException = 0xC0000000;
  if (status >= firstException) return filled(say("driver", "exception %1"), {numbered(status)});
  return filled(say("driver", "it ended by itself, with status %1"), {std::to_string(status)});
}

class HostProcess final : public HostLink {
 public:
  HostProcess(std::string name, Handle job, Handle process, Handle pipe)
      : name_(std::move(name)),
        job_(std::move(job)),
        process_(std::move(process)),
        pipe_(std::move(pipe)) {}
  ~HostProcess() override {
    end();
    if (reading_) {
      DWORD count = 0;
      CancelIo(pipe_.get());
      GetOverlappedResult(pipe_.get(), read_.state(), &count, TRUE);
    }
  }

  bool send(std::string_view bytes) override {
    OverlappedTransfer transfer;
    DWORD count = 0;
    if (WriteFile(pipe_.get(), bytes.data(), static_cast<DWORD>(bytes.size()), nullptr,
                  transfer.state()) == 0 &&
        GetLastError() != ERROR_IO_PENDING)
      return false;
    // The pipe has room for every message: only a host that is gone takes none.
    constexpr DWORD longest = 1000;  // milliseconds
    if (WaitForSingleObject(transfer.event(), longest) != WAIT_OBJECT_0) CancelIo(pipe_.get());
    return GetOverlappedResult(pipe_.get(), transfer.state(), &count, TRUE) != 0 &&
           count == bytes.size();
  }

  Arrival receive(std::string& bytes, std::chrono::milliseconds longest) override {
    if (!reading_ && !begin()) return Arrival::end;
    if (WaitForSingleObject(read_.event(), static_cast<DWORD>(longest.count())) != WAIT_OBJECT_0)
      return Arrival::nothing;
    reading_ = false;
    DWORD count = 0;
    if (GetOverlappedResult(pipe_.get(), read_.state(), &count, FALSE) == 0 || count == 0)
      return Arrival::end;
    bytes.append(buffer_.data(), count);
    return Arrival::bytes;
  }

  std::string end() override {
    if (!ended_.empty()) return ended_;
    // One that has closed its end is on its way out, and what it dies of is to be told.
    constexpr DWORD ownEnd = 50;  // milliseconds
    if (WaitForSingleObject(process_.get(), ownEnd) == WAIT_OBJECT_0) {
      DWORD status = 0;
      GetExitCodeProcess(process_.get(), &status);
      return ended_ = described(status);
    }
    TerminateJobObject(job_.get(), 1);
    return ended_ = say("driver", "it was ended");
  }

  std::string name() const override { return name_; }

 private:
  bool begin() {
    ResetEvent(read_.event());
    const bool begun = ReadFile(pipe_.get(), buffer_.data(), static_cast<DWORD>(buffer_.size()),
                                nullptr, read_.state()) != 0 ||
                       GetLastError() == ERROR_IO_PENDING;
    reading_ = begun;
    return begun;
  }

  std::string name_;
  Handle job_;
  Handle process_;
  Handle pipe_;
  OverlappedTransfer read_;
  std::array<char, 4096> buffer_{};
  bool reading_ = false;
  std::string ended_;
};

struct Ends {
  Handle ours;
  Handle theirs;
};

/// A pipe within this machine whose far end a child inherits.
Ends makePipe() {
  constexpr DWORD room = 65536;
  LARGE_INTEGER now{};
  QueryPerformanceCounter(&now);
  const std::wstring name = LR"(\\.\pipe\touchdriver-)" + std::to_wstring(GetCurrentProcessId()) +
                            L'-' + std::to_wstring(now.QuadPart);
  Ends ends;
  ends.ours = owned(CreateNamedPipeW(
      name.c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_FIRST_PIPE_INSTANCE | FILE_FLAG_OVERLAPPED,
      PIPE_TYPE_BYTE | PIPE_REJECT_REMOTE_CLIENTS, 1, room, room, 0, nullptr));
  if (!ends.ours) return ends;
  SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  ends.theirs = owned(CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, &inherited,
                                  OPEN_EXISTING, 0, nullptr));
  return ends;
}

Handle makeJob() {
  Handle job = owned(CreateJobObjectW(nullptr, nullptr));
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
  SetInformationJobObject(job.get(), JobObjectExtendedLimitInformation, &limits, sizeof limits);
  return job;
}

/// What a child inherits: this handle, and nothing else that is open.
class Inheritance {
 public:
  explicit Inheritance(HANDLE handle) : handle_(handle) {
    SIZE_T size = 0;
    InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
    memory_.resize(size);
    InitializeProcThreadAttributeList(list(), 1, 0, &size);
    UpdateProcThreadAttribute(list(), 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, &handle_,
                              sizeof handle_, nullptr, nullptr);
  }
  ~Inheritance() { DeleteProcThreadAttributeList(list()); }
  Inheritance(const Inheritance&) = delete;
  Inheritance& operator=(const Inheritance&) = delete;

  LPPROC_THREAD_ATTRIBUTE_LIST list() {
    return reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(memory_.data());
  }

 private:
  HANDLE handle_;
  std::vector<char> memory_;
};

}  // namespace

std::string hostProgramName(int bits) {
  return bits == 32 ? "touchdriver32.exe" : "touchdriver64.exe";
}

Result<std::unique_ptr<HostLink>, std::string> startHostProcess(
    const std::filesystem::path& program) {
  const auto cannot = [&program] {
    return tl::unexpected(filled(
        say("driver", "its driver host %1 cannot be started: %2"),
        {utf8Of(program), std::system_category().message(static_cast<int>(GetLastError()))}));
  };
  Ends ends = makePipe();
  Handle job = makeJob();
  if (!ends.theirs || !job) return cannot();
  Inheritance inheritance(ends.theirs.get());
  STARTUPINFOEXW startup{};
  startup.StartupInfo.cb = sizeof startup;
  startup.lpAttributeList = inheritance.list();
  std::wstring line = L'"' + program.wstring() + L"\" " +
                      std::to_wstring(reinterpret_cast<std::uintptr_t>(ends.theirs.get()));
  PROCESS_INFORMATION made{};
  // Without a window, and so without the Ctrl+C of this program's console; and not before it is in
  // the job, by which it ends with this program.
  if (CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE,
                     CREATE_NO_WINDOW | CREATE_SUSPENDED | EXTENDED_STARTUPINFO_PRESENT, nullptr,
                     nullptr, &startup.StartupInfo, &made) == 0)
    return cannot();
  Handle process = owned(made.hProcess);
  const Handle thread = owned(made.hThread);
  if (AssignProcessToJobObject(job.get(), process.get()) == 0) {
    auto why = cannot();
    TerminateProcess(process.get(), 1);
    return why;
  }
  ResumeThread(thread.get());
  return std::unique_ptr<HostLink>(new HostProcess(utf8Of(program.filename()), std::move(job),
                                                   std::move(process), std::move(ends.ours)));
}

}  // namespace touch
