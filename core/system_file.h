#pragma once

#include <cstdio>
#include <filesystem>
#include <memory>

namespace touch {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
/// What the standard library offers on some platforms only. Null, with the reason in `errno`, when it cannot be opened.
using File = std::unique_ptr<std::FILE, CloseFile>;

/// A new file; one that is there already is left alone and refused with EEXIST.
File createFile(const std::filesystem::path& path);
/// Made when missing.
File openForAppending(const std::filesystem::path& path);

/// Made when missing, and this one's alone until it is closed. Null when another program, or another part of this one,
/// has it, or when it cannot be made.
File holdFile(const std::filesystem::path& path);

/// Waits until what was written has reached the disk; false, with the reason in `errno`, when it has not.
bool reachDisk(std::FILE* file);

}  // namespace touch
