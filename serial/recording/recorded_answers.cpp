#include "serial/recording/recorded_answers.h"

#include <algorithm>

#include "support/text/language.h"

namespace touch {

namespace {

constexpr std::uint8_t frameStart = 0x01;
constexpr std::uint8_t frameEnd = 0x0D;

}  // namespace

Result<std::unique_ptr<RecordedAnswers>> RecordedAnswers::read(
    std::unique_ptr<TransferSource> recording, const std::string& name) {
  auto answers = std::make_unique<RecordedAnswers>(std::move(recording));
  TransferSource& source = *answers->recording_;
  Bytes sent;
  Time time{};
  std::size_t ofThisTime = 0;
  Exchange exchange;
  while (const auto transfer = source.next()) {
    ofThisTime = transfer->time == std::exchange(time, transfer->time) ? ofThisTime + 1 : 1;
    if (transfer->direction == Direction::toController) {
      // Keys may have been sent one by one.
      sent.insert(sent.end(), transfer->bytes.begin(), transfer->bytes.end());
      exchange = {time, ofThisTime};
    } else if (!sent.empty()) {
      answers->addCommands(std::exchange(sent, {}), exchange);
    }
  }
  if (!sent.empty()) answers->addCommands(sent, exchange);
  if (const auto failed = source.error()) return tl::unexpected(*failed);
  if (answers->exchanges_.empty())
    return tl::unexpected(
        FileError{name, 0, say("recording", "commands that were sent"), say("recording", "none")});
  return answers;
}

/// One exchange for each frame that was sent in a row; all but the last got no answer.
void RecordedAnswers::addCommands(std::span<const std::uint8_t> sent, Exchange exchange) {
  while (!sent.empty()) {
    const auto end = std::ranges::find(sent, frameEnd);
    const std::size_t length = sent.front() == frameStart && end != sent.end()
                                   ? static_cast<std::size_t>(end - sent.begin()) + 1
                                   : sent.size();
    const auto command = sent.first(length);
    sent = sent.subspan(length);
    commands_[Bytes(command.begin(), command.end())].push_back(exchanges_.size());
    lengths_.insert(length);
    exchanges_.push_back({exchange.sentAt, sent.empty() ? exchange.before : 0});
  }
}

std::optional<RecordedAnswers::Time> RecordedAnswers::take(std::span<const std::uint8_t> bytes) {
  std::optional<Time> place;
  for (const std::uint8_t byte : bytes) {
    heard_.push_back(byte);
    if (heard_.size() > *lengths_.rbegin()) heard_.erase(heard_.begin());
    const auto heard = commandHeard();
    if (!heard) continue;
    heard_.clear();
    named_ = heard;
    next_ = *heard + 1;
    place = exchanges_[*heard].sentAt;
  }
  return place;
}

/// The exchange whose command ends here, in the order of the recording.
std::optional<std::size_t> RecordedAnswers::commandHeard() const {
  std::optional<std::size_t> nearest;
  // Behind the end the recording begins again.
  const auto distance = [this](std::size_t place) {
    return place >= next_ ? place - next_ : place + exchanges_.size() - next_;
  };
  for (const std::size_t length : lengths_) {
    if (length > heard_.size()) break;
    const auto found =
        commands_.find(Bytes(heard_.end() - static_cast<std::ptrdiff_t>(length), heard_.end()));
    if (found == commands_.end()) continue;
    const auto& places = found->second;
    const auto later = std::ranges::lower_bound(places, next_);
    const std::size_t place = later == places.end() ? places.front() : *later;
    if (!nearest || distance(place) < distance(*nearest)) nearest = place;
  }
  return nearest;
}

RecordedAnswers::Time RecordedAnswers::endOfAnswer() const {
  const Time here = answering_ ? exchanges_[*answering_].sentAt : Time(-1);
  const auto later = std::ranges::upper_bound(exchanges_, here, {}, &Exchange::sentAt);
  return later == exchanges_.end() ? length() : later->sentAt;
}

void RecordedAnswers::rewind() {
  named_.reset();
  answering_.reset();
  ended_ = true;
  next_ = 0;
}

void RecordedAnswers::seek(Time time) {
  if (named_ && exchanges_[*named_].sentAt == time) {
    answering_ = std::exchange(named_, std::nullopt);
  } else {
    rewind();
    const auto later = std::ranges::upper_bound(exchanges_, time, {}, &Exchange::sentAt);
    next_ = static_cast<std::size_t>(later - exchanges_.begin());
    if (next_ > 0) answering_ = next_ - 1;
  }
  ended_ = !answering_ || exchanges_[*answering_].before == 0;
  if (ended_) return;
  recording_->seek(time);
  if (const auto& [sentAt, before] = exchanges_[*answering_]; sentAt == time)
    for (std::size_t i = 0; i < before; ++i)
      recording_->next();
}

std::optional<Transfer> RecordedAnswers::next() {
  if (ended_) return std::nullopt;
  auto transfer = recording_->next();
  ended_ = !transfer || transfer->direction == Direction::toController;
  return ended_ ? std::nullopt : std::move(transfer);
}

}  // namespace touch
