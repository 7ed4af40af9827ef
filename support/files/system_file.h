#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

namespace touch {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
/// What the standard library offers on some platforms only. Null, with the reason in `errno`, when
/// it cannot be opened.
using File = std::unique_ptr<std::FILE, CloseFile>;

/// A new file; one that is there already, also as a link that leads nowhere, is left alone and
/// refused with EEXIST.
File createFile(const std::filesystem::path& path);
/// Links are followed. Nothing is waited for: a pipe opens at once, and is none that `isRegular`.
File openForReading(const std::filesystem::path& path);
/// The same for writing, in place of what the file holds. A pipe that nobody reads is refused, and
/// one that is full takes no more.
File openForWriting(const std::filesystem::path& path);

bool isRegular(std::FILE* file);
std::uintmax_t sizeOf(std::FILE* file);
/// The mode of the file that is open, whatever has its name by now.
void setMode(std::FILE* file, std::filesystem::perms mode);
/// Takes off what was written behind the first `size` bytes, and all that waits to be.
bool cutTo(std::FILE* file, std::uintmax_t size);

/// Has the file for this program alone, among those that ask, until it is closed. Waits a second at
/// most: who only reads a file can lock it too, and must not hold anybody up. False after that.
bool lockAlone(std::FILE* file);

/// Gives `file`, which was created as `from`, the name `to`, in place of what has it. Refused when
/// another file has the name `from` by now. The file is closed.
std::error_code renameOpen(File& file, const std::filesystem::path& from,
                           const std::filesystem::path& to);

/// Waits until what was written has reached the disk; false, with the reason in `errno`, when it
/// has not.
bool reachDisk(std::FILE* file);

}  // namespace touch
