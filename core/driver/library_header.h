#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace touch {

/// Reads `count` bytes at `offset` of a file; fewer where it ends.
using FileBytes = std::function<std::string(std::size_t offset, std::size_t count)>;

/// How many bits a library has that stands in these bytes, an ELF or a PE file: 32 or 64. Nothing
/// when they are neither.
std::optional<int> libraryBits(const FileBytes& bytes);
/// The version that a PE file says it has, "1.2.3.4"; empty when it says none.
std::string libraryVersion(const FileBytes& bytes);

/// The same of a file; one that cannot be read says nothing.
std::optional<int> libraryBits(const std::filesystem::path& file);
std::string libraryVersion(const std::filesystem::path& file);

}  // namespace touch
