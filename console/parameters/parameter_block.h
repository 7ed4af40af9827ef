#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "console/parameters/parameter_words.h"

namespace touch {

class Backup;
class Prompt;

/// Reads the eight words; stops at the first that cannot be read.
Result<ParameterBlock, WordError> readBlock(const Access& access);

/// The block as single words with their addresses.
std::vector<WordValue> wordsOf(const ParameterBlock& block);

/// What a write came to. A word is among the written ones only when it was read back.
struct WriteReport {
  std::vector<WordChange> written;
  std::optional<WordChange>
      brokenOffAt;  ///< the controller may hold its old word, its new one, or neither
  std::optional<WordError> error;         ///< why it broke off
  std::optional<FileError> journalError;  ///< the first line that could not be added to the journal

  bool complete() const { return !error; }
  /// The words as they were before, the one at which the write broke off included.
  std::vector<WordValue> oldWords() const;
  /// "Written: 00, 01. Word 02: the controller does not answer".
  std::string describe() const;
};

/// The changes that make the controller hold `wanted`: reads each of these words and leaves out
/// those that are so already.
Result<std::vector<WordChange>, WordError> changesTo(const Access& access,
                                                     std::span<const WordValue> wanted);

/// Writes the words in their order, each read back and noted in the journal before the next. Stops
/// at the first failure.
WriteReport writeChanges(const Access& access, const Backup& backup,
                         std::span<const WordChange> changes);

/// Tells the user when the journal does not hold everything that was written.
void tellOfJournal(Prompt& prompt, const WriteReport& report);

/// Puts words back, as far as the controller does not hold them already. Says and asks nothing.
WriteReport putBack(const Access& access, const Backup& backup, std::span<const WordValue> old);

/// Why a block is not kept.
struct NotKept {
  std::string why;
};
/// Keeps `block` if it was read; returns in which file.
Result<std::filesystem::path, NotKept> keep(const Access& access, const Backup& backup,
                                            const Result<ParameterBlock, WordError>& block);

/// Whether an action that changes the block may go on, and where the block before it is kept.
struct KeptBlock {
  bool goOn = false;
  std::filesystem::path file;  ///< empty when it could not be kept and the user went on without
};

/// Keeps `block`. When there is none, or it cannot be kept, the user is told why and asked whether
/// to go on anyway.
KeptBlock keepBlock(const Access& access, Prompt& prompt, const Backup& backup,
                    const Result<ParameterBlock, WordError>& block);

/// How writing to the block ended.
enum class WriteEnd { done, nothingToWrite, declined, unreadable, brokenOff };

struct BlockWrite {
  WriteEnd end = WriteEnd::declined;
  WriteReport report;
  std::optional<WriteReport>
      putBack;                 ///< when the write broke off and the user wanted the old words back
  std::filesystem::path kept;  ///< the block before the write
};

/// Writes the words of `wanted`, addresses 00 to 07, that the controller does not hold already.
/// Asks message 4 first, keeps the block, ends with message 5. When the write breaks off, the user
/// is told which words are written and offered the old ones back.
BlockWrite writeBlock(const Access& access, Prompt& prompt, const Backup& backup,
                      std::span<const WordValue> wanted);

/// The same without the question: takes back what a write or "Defaults" has done.
BlockWrite undoBlock(const Access& access, Prompt& prompt, const Backup& backup,
                     std::span<const WordValue> old);

}  // namespace touch
