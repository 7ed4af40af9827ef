#include "serial/recording/recorded_answers.h"

#include <algorithm>
#include <utility>

#include "support/text/language.h"

namespace touch {

namespace {

constexpr std::uint8_t frameStart = 0x01;
constexpr std::uint8_t frameEnd = 0x0D;
// Ten hours of an endless stream.
constexpr std::size_t mostBytes = std::size_t{32} << 20U;

}  // namespace

Result<RecordedAnswers> RecordedAnswers::read(TransferSource& recording, const std::string& name) {
  RecordedAnswers answers;
  std::vector<std::uint8_t> sent;
  std::chrono::microseconds sentAt{};
  std::size_t total = 0;
  while (auto transfer = recording.next()) {
    total += transfer->bytes.size();
    if (total > mostBytes) {
      return tl::unexpected(FileError{
          name, 0, filled(say("recording", "at most %1 bytes"), {std::to_string(mostBytes)}),
          say("recording", "more")});
    }
    if (transfer->direction == Direction::toController) {
      // Keys may have been sent one by one.
      sent.insert(sent.end(), transfer->bytes.begin(), transfer->bytes.end());
      sentAt = transfer->time;
      continue;
    }
    if (!sent.empty()) answers.addCommand(std::exchange(sent, {}));
    if (!answers.exchanges_.empty())
      answers.exchanges_.back().answer.push_back(
          {transfer->time - sentAt, std::move(transfer->bytes)});
  }
  if (!sent.empty()) answers.addCommand(sent);
  if (const auto failed = recording.error()) return tl::unexpected(*failed);
  if (answers.exchanges_.empty())
    return tl::unexpected(
        FileError{name, 0, say("recording", "commands that were sent"), say("recording", "none")});
  return answers;
}

/// One exchange for each frame that was sent in a row; all but the last got no answer.
void RecordedAnswers::addCommand(std::span<const std::uint8_t> rest) {
  while (!rest.empty()) {
    const auto end = std::ranges::find(rest, frameEnd);
    const std::size_t length = rest.front() == frameStart && end != rest.end()
                                   ? static_cast<std::size_t>(end - rest.begin()) + 1
                                   : rest.size();
    exchanges_.push_back({{rest.begin(), rest.begin() + static_cast<std::ptrdiff_t>(length)}, {}});
    longest_ = std::max(longest_, length);
    rest = rest.subspan(length);
  }
}

void RecordedAnswers::take(std::span<const std::uint8_t> bytes, Clock::TimePoint now) {
  for (const std::uint8_t byte : bytes) {
    heard_.push_back(byte);
    if (heard_.size() > longest_) heard_.erase(heard_.begin());
    const auto heard = commandHeard();
    if (!heard) continue;
    heard_.clear();
    answering_ = heard;
    next_ = *heard + 1;
    said_ = 0;
    asked_ = now;
  }
}

/// The exchange whose command ends here, in the order of the recording.
std::optional<std::size_t> RecordedAnswers::commandHeard() const {
  for (std::size_t step = 0; step < exchanges_.size(); ++step) {
    const std::size_t place = (next_ + step) % exchanges_.size();
    const auto& command = exchanges_[place].command;
    if (heard_.size() >= command.size() &&
        std::equal(command.rbegin(), command.rend(), heard_.rbegin()))
      return place;
  }
  return std::nullopt;
}

std::vector<std::uint8_t> RecordedAnswers::due(Clock::TimePoint now) {
  std::vector<std::uint8_t> bytes;
  if (!answering_) return bytes;
  const auto& answer = exchanges_[*answering_].answer;
  for (; said_ < answer.size() && now - asked_ >= answer[said_].after; ++said_)
    bytes.insert(bytes.end(), answer[said_].bytes.begin(), answer[said_].bytes.end());
  return bytes;
}

}  // namespace touch
