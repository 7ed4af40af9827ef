#pragma once

#include "console/parameters/backup.h"
#include "console/parameters/parameter_words.h"
#include "support/text/hex.h"
#include "tests/doubles/desk.h"
#include "tests/doubles/temporary_folder.h"

namespace touch::test {

/// A desk whose controller has a parameter memory, which can break in the ways that such memories
/// do.
class ParameterDesk : public Desk {
 protected:
  ParameterDesk() {
    for (std::uint8_t address = 0; address < 8; ++address)
      memory[address] = {0x10, address};
    script.onCall = [this](const std::string& line) { serve(line); };
  }

  std::map<std::uint8_t, ParameterWord> memory;
  int callsUntilPowerLoss = -1;                 ///< then nothing is answered or stored any more
  bool storesWhatItDoesNotAcknowledge = false;  ///< the power goes between storing and answering
  std::map<std::uint8_t, ParameterWord> stuck;  ///< words that acknowledge but keep this value
  TemporaryFolder folder;
  const Backup backup{folder.path(), [] { return Backup::TimePoint{}; }};

  /// The writes of the journal.
  Lines written() const { return matching(journal, "^WriteBuffer SP"); }
  /// What the user was told and asked.
  Lines said() const { return matching(journal, "^(message|confirm|proceed) "); }

 private:
  static std::uint8_t byteAt(const std::string& text, std::size_t place) {
    return static_cast<std::uint8_t>(std::stoi(text.substr(place, 2), nullptr, 16));
  }

  void serve(const std::string& line) {
    if (!line.starts_with("WriteBuffer ")) return;
    const std::string command = line.substr(12);
    const bool reads = command.starts_with("GP");
    const bool writes = command.starts_with("SP");
    if (!reads && !writes && command != "RD") return;
    auto& replies = script.replies[command] = {Bytes{}};
    if (callsUntilPowerLoss == 0) return;
    const bool last = --callsUntilPowerLoss == 0;
    const std::uint8_t address = command == "RD" ? 0 : byteAt(command, 2);
    if (reads) {
      replies = {memory.contains(address) ? replyOf("0" + wordText(memory[address])) : refusal};
      return;
    }
    if (!writes) {
      for (auto& [each, word] : memory)
        word = {0x33, each};
    } else {
      memory[address] = stuck.contains(address)
                            ? stuck[address]
                            : ParameterWord{byteAt(command, 4), byteAt(command, 6)};
    }
    if (!(last && storesWhatItDoesNotAcknowledge)) replies = {acknowledgement};
  }
};

}  // namespace touch::test
