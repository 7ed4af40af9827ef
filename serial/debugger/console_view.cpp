#include "serial/debugger/console_view.h"

#include <algorithm>
#include <utility>

namespace touch {

void ConsoleView::choose(ConsoleFilter filter) {
  if (filter == filter_) return;
  filter_ = std::move(filter);
  beginAnew();
}

void ConsoleView::beginAnew() {
  const KeptLines& kept = log_.kept();
  version_ = log_.version();
  from_ = to_ = kept.end();
  if (!lines_.empty()) change_.anew = true;
  lines_.clear();
}

void ConsoleView::renew() {
  if (version_ != log_.version()) beginAnew();
  if (log_.kept().end() - to_ > mostInFlood) {
    calm_ = 0;
    beginAnew();
    lookBack(mostInFlood);
    return;
  }
  calm_ = std::min(calm_ + 1, ebb);
  lookForward();
  lookBack(calm_ == ebb ? most : mostInFlood);
}

bool ConsoleView::isLooking() const {
  return from_ > log_.kept().begin() && lines_.size() < most;
}

void ConsoleView::lookForward() {
  const KeptLines& kept = log_.kept();
  for (to_ = std::max(to_, kept.begin()); to_ < kept.end(); ++to_) {
    if (!passes(kept, to_, filter_)) continue;
    lines_.push_back(kept.at(to_));
    ++change_.added;
    if (lines_.size() > most) lines_.pop_front();
  }
}

void ConsoleView::lookBack(std::size_t wanted) {
  const KeptLines& kept = log_.kept();
  const bool reads = !filter_.containing.empty();
  for (std::size_t looked = 0; from_ > kept.begin() && lines_.size() < wanted; ++looked) {
    if (reads && looked == mostSearched) return;
    --from_;
    if (!passes(kept, from_, filter_)) continue;
    lines_.push_front(kept.at(from_));
    change_.anew = true;
  }
}

}  // namespace touch
