#include "serial/debugger/console_view.h"

#include <algorithm>
#include <utility>

namespace touch {

void ConsoleView::choose(ConsoleFilter filter) {
  if (filter == filter_) return;
  filter_ = std::move(filter);
  beginAnew(following_ ? log_.kept().end() : place_);
}

void ConsoleView::beginAnew(std::uint64_t number) {
  const KeptLines& kept = log_.kept();
  version_ = log_.version();
  from_ = to_ = std::clamp(number, kept.begin(), kept.end());
  reachesEnd_ = false;
  if (!lines_.empty()) change_.anew = true;
  lines_.clear();
  numbers_.clear();
}

void ConsoleView::renew() {
  if (version_ != log_.version()) {
    following_ = true;
    beginAnew(log_.kept().end());
  }
  if (!following_) return lookAround();
  if (log_.kept().end() - std::min(to_, log_.kept().end()) > mostInFlood) {
    calm_ = 0;
    beginAnew(log_.kept().end());
    lookBack(mostInFlood);
    return;
  }
  calm_ = std::min(calm_ + 1, ebb);
  lookForward();
  lookBack(calm_ == ebb ? most : mostInFlood);
}

void ConsoleView::standAt(std::uint64_t number) {
  // What it follows is the end as the user sees it.
  if (std::exchange(following_, false)) reachesEnd_ = true;
  place_ = number;
}

void ConsoleView::slide() {
  if (following_) return;
  const KeptLines& kept = log_.kept();
  const bool isElsewhere = place_ < from_ || place_ >= to_;
  const std::size_t before = indexOf(place_);
  const bool nearFront = before < margin && from_ > kept.begin();
  const bool nearBack = numbers_.size() - before < margin && !reachesEnd_;
  if (!isElsewhere && !nearFront && !nearBack) return;
  if (isElsewhere) {
    beginAnew(place_);
  } else {
    trim();
  }
  change_.anew = true;
  lookAround();
}

void ConsoleView::trim() {
  const auto drop = [this](std::size_t begin, std::size_t end) {
    const auto first = static_cast<std::ptrdiff_t>(begin);
    const auto last = static_cast<std::ptrdiff_t>(end);
    lines_.erase(lines_.begin() + first, lines_.begin() + last);
    numbers_.erase(numbers_.begin() + first, numbers_.begin() + last);
  };
  if (const std::size_t before = indexOf(place_); before > half) {
    drop(0, before - half);
    from_ = numbers_.front();
  }
  if (const std::size_t kept = indexOf(place_) + half; numbers_.size() > kept) {
    drop(kept, numbers_.size());
    to_ = numbers_.back() + 1;
  }
  reachesEnd_ = false;
}

std::size_t ConsoleView::indexOf(std::uint64_t number) const {
  return static_cast<std::size_t>(std::ranges::lower_bound(numbers_, number) - numbers_.begin());
}

bool ConsoleView::wantsBefore() const {
  return from_ > log_.kept().begin() && lines_.size() < most && indexOf(place_) < half;
}

bool ConsoleView::wantsBehind() const {
  return !reachesEnd_ && lines_.size() < most && numbers_.size() - indexOf(place_) < half;
}

bool ConsoleView::isLooking() const {
  if (!following_) return wantsBefore() || wantsBehind();
  return (from_ > log_.kept().begin() && lines_.size() < most) || to_ < log_.kept().end();
}

void ConsoleView::takeNext() {
  const KeptLines& kept = log_.kept();
  const std::uint64_t number = to_++;
  if (!passes(kept, number, filter_)) return;
  lines_.push_back(kept.at(number));
  numbers_.push_back(number);
  ++change_.added;
  if (lines_.size() <= most) return;
  lines_.pop_front();
  numbers_.pop_front();
  from_ = numbers_.front();
}

void ConsoleView::takePrevious() {
  const KeptLines& kept = log_.kept();
  --from_;
  if (!passes(kept, from_, filter_)) return;
  lines_.push_front(kept.at(from_));
  numbers_.push_front(from_);
  change_.anew = true;
}

void ConsoleView::lookForward() {
  const KeptLines& kept = log_.kept();
  for (to_ = std::max(to_, kept.begin()); to_ < kept.end();)
    takeNext();
}

void ConsoleView::lookBack(std::size_t wanted) {
  const KeptLines& kept = log_.kept();
  const bool reads = !filter_.containing.empty();
  for (std::size_t looked = 0; from_ > kept.begin() && lines_.size() < wanted; ++looked) {
    if (reads && looked == mostSearched) return;
    takePrevious();
  }
}

void ConsoleView::lookAround() {
  const KeptLines& kept = log_.kept();
  const std::size_t limit = filter_.containing.empty() ? kept.size() : mostSearched;
  for (std::size_t looked = 0; wantsBehind() && looked < limit; ++looked) {
    to_ = std::max(to_, kept.begin());
    if (to_ < kept.end()) takeNext();
    reachesEnd_ = to_ >= kept.end();
  }
  for (std::size_t looked = 0; wantsBefore() && looked < limit; ++looked)
    takePrevious();
}

void ConsoleSearch::look() {
  const KeptLines& kept = log_.kept();
  for (std::size_t looked = 0; isLooking() && looked < ConsoleView::mostSearched; ++looked) {
    --left_;
    if (next_ < kept.begin() || next_ >= kept.end()) next_ = kept.begin();
    if (next_ < kept.end() && passes(kept, next_, wanted_)) found_ = next_;
    ++next_;
  }
}

}  // namespace touch
