#include "serial/debugger/kept_lines.h"

#include <cstring>
#include <string_view>

namespace touch {

namespace {

/// What stands before the bytes and the text of a packed line.
struct PackedHead {
  std::int64_t time = 0;
  std::uint32_t bytes = 0;
  std::uint32_t text = 0;
  ConsoleLineKind kind{};
  bool sevenBits = false;
};

PackedHead headAt(const std::uint8_t* place) {
  PackedHead head;
  std::memcpy(&head, place, sizeof head);
  return head;
}

}  // namespace

std::size_t KeptLines::Block::bytes() const {
  return packed.capacity() + places.capacity() * sizeof(std::uint32_t);
}

std::size_t KeptLines::bytes() const {
  return fullBytes_ + (blocks_.empty() ? 0 : blocks_.back()->bytes());
}

KeptLines::Block& KeptLines::blockForOneMore() {
  if (blocks_.empty() || blocks_.back()->places.size() == linesInBlock) {
    if (!blocks_.empty()) {
      blocks_.back()->packed.shrink_to_fit();
      fullBytes_ += blocks_.back()->bytes();
    }
    blocks_.push_back(std::make_shared<Block>());
    blocks_.back()->places.reserve(linesInBlock);
  } else if (blocks_.back().use_count() > 1) {
    // A copy has it as well, and is to stay as it is.
    blocks_.back() = std::make_shared<Block>(*blocks_.back());
  }
  return *blocks_.back();
}

void KeptLines::add(const ConsoleLine& line) {
  Block& block = blockForOneMore();
  const std::string_view text = std::string_view(line.text).substr(0, mostText);
  const PackedHead head{line.time.count(), static_cast<std::uint32_t>(line.bytes.size()),
                        static_cast<std::uint32_t>(text.size()), line.kind, line.sevenBits};
  const std::size_t place = block.packed.size();
  block.places.push_back(static_cast<std::uint32_t>(place));
  block.packed.resize(place + sizeof head + line.bytes.size() + text.size());
  std::uint8_t* to = block.packed.data() + place;
  std::memcpy(to, &head, sizeof head);
  to += sizeof head;
  if (!line.bytes.empty()) std::memcpy(to, line.bytes.data(), line.bytes.size());
  to += line.bytes.size();
  if (!text.empty()) std::memcpy(to, text.data(), text.size());
  ++end_;
  while (blocks_.size() > 1 && (size() >= most + linesInBlock || bytes() > mostBytes)) {
    fullBytes_ -= blocks_.front()->bytes();
    begin_ += blocks_.front()->places.size();
    blocks_.pop_front();
  }
}

void KeptLines::clear() {
  blocks_.clear();
  fullBytes_ = 0;
  begin_ = end_;
}

const std::uint8_t* KeptLines::placeOf(std::uint64_t number) const {
  const auto index = static_cast<std::size_t>(number - begin_);
  const Block& block = *blocks_[index / linesInBlock];
  return block.packed.data() + block.places[index % linesInBlock];
}

ConsoleLineKind KeptLines::kindOf(std::uint64_t number) const {
  return headAt(placeOf(number)).kind;
}

ConsoleLine KeptLines::at(std::uint64_t number) const {
  const std::uint8_t* const place = placeOf(number);
  const PackedHead head = headAt(place);
  const std::uint8_t* const bytes = place + sizeof head;
  const char* const text = reinterpret_cast<const char*>(bytes + head.bytes);
  return {head.kind,
          std::chrono::microseconds(head.time),
          {bytes, bytes + head.bytes},
          {text, head.text},
          head.sevenBits};
}

}  // namespace touch
