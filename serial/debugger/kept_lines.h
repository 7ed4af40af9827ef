#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

#include "serial/debugger/console_line.h"

namespace touch {

/// The last lines of a console, packed: a million of them, or as many as need 80 MB. A longer text
/// than anybody reads in a line is cut. A copy costs next to nothing, because both share what they
/// hold.
class KeptLines {
 public:
  static constexpr std::size_t most = 1'000'000;
  static constexpr std::size_t mostBytes = std::size_t{80} << 20U;

  static constexpr std::size_t mostText = 4096;

  void add(const ConsoleLine& line);
  void clear();

  /// Lines are counted from 0 on, also those that were dropped.
  std::uint64_t begin() const { return begin_; }
  std::uint64_t end() const { return end_; }
  std::size_t size() const { return static_cast<std::size_t>(end_ - begin_); }
  /// Of a line that is kept.
  ConsoleLineKind kindOf(std::uint64_t number) const;
  ConsoleLine at(std::uint64_t number) const;
  /// What they take in memory.
  std::size_t bytes() const;

 private:
  /// So many lines one behind the other.
  static constexpr std::size_t linesInBlock = 1024;
  struct Block {
    std::vector<std::uint8_t> packed;
    std::vector<std::uint32_t> places;  ///< where each line begins in them
    std::size_t bytes() const;
  };

  const std::uint8_t* placeOf(std::uint64_t number) const;
  Block& blockForOneMore();

  std::deque<std::shared_ptr<Block>> blocks_;  ///< all full but for the last
  std::size_t fullBytes_ = 0;                  ///< of those that are full
  std::uint64_t begin_ = 0;
  std::uint64_t end_ = 0;
};

}  // namespace touch
