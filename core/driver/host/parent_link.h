#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace touch {

/// The host's end of the way to the program that has started it.
class ParentLink {
 public:
  /// The descriptor of the channel where a process has such.
  static constexpr int channel = 3;

  /// From the command line that a program starts its host with; nothing when it is another. From
  /// then on this process ends with its parent, has nothing else of it open, and leaves Ctrl+C and
  /// the like to it.
  static std::optional<ParentLink> take(int argc, char** argv);

  /// Adds to `bytes` what has come; false when nothing will come any more.
  bool receive(std::string& bytes) const;
  bool send(std::string_view bytes) const;

 private:
  explicit ParentLink(std::size_t pipe) : pipe_(pipe) {}

  std::size_t pipe_;  ///< a descriptor, or a handle where the system has those
};

}  // namespace touch
