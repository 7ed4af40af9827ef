#include "core/driver/host/host_message.h"

#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <string_view>
#include <utility>

namespace touch {

namespace {

using nlohmann::json;

constexpr std::size_t lengthBytes = 4;

/// Takes the elements of one array and nothing else; where anything else comes, reading ends.
class MessageParts final : public json::json_sax_t {
 public:
  HostMessage message;

  bool null() override { return false; }
  bool boolean(bool) override { return false; }
  bool number_integer(number_integer_t value) override {
    return value >= std::numeric_limits<std::int32_t>::min() &&
           add(static_cast<std::int32_t>(value));
  }
  bool number_unsigned(number_unsigned_t value) override {
    return value <= std::numeric_limits<std::int32_t>::max() &&
           add(static_cast<std::int32_t>(value));
  }
  bool number_float(number_float_t, const string_t&) override { return false; }
  bool string(string_t& text) override {
    if (!inArray_ || named_) return false;
    named_ = true;
    message.name = std::move(text);
    return true;
  }
  bool binary(binary_t& bytes) override { return add(std::string(bytes.begin(), bytes.end())); }
  bool start_object(std::size_t) override { return false; }
  bool key(string_t&) override { return false; }
  bool end_object() override { return false; }
  bool start_array(std::size_t) override { return !std::exchange(inArray_, true); }
  bool end_array() override { return named_; }
  bool parse_error(std::size_t, const std::string&, const json::exception&) override {
    return false;
  }

 private:
  bool add(HostValue value) {
    if (named_) message.values.push_back(std::move(value));
    return named_;
  }

  bool inArray_ = false;
  bool named_ = false;
};

/// Takes an item's head off `bytes`: its kind, and the number in it. Only heads of a known length.
std::optional<std::pair<unsigned, std::uint32_t>> takeHead(std::string_view& bytes) {
  if (bytes.empty()) return std::nullopt;
  const auto first = static_cast<unsigned char>(bytes.front());
  bytes.remove_prefix(1);
  const unsigned kind = first >> 5U;
  const unsigned small = first & 0x1FU;
  if (small < 24) return std::pair(kind, std::uint32_t{small});
  if (small > 26) return std::nullopt;
  const std::size_t size = std::size_t{1} << (small - 24);
  if (bytes.size() < size) return std::nullopt;
  std::uint32_t number = 0;
  for (const char byte : bytes.substr(0, size))
    number = number << 8U | static_cast<unsigned char>(byte);
  bytes.remove_prefix(size);
  return std::pair(kind, number);
}

/// Whether it is one array of numbers, bytes and text. What is nested deeply would overflow the
/// stack of whoever reads it.
bool isFlatArray(std::string_view bytes) {
  enum : unsigned { positive, negative, byteString, text, array };
  const auto outer = takeHead(bytes);
  if (!outer || outer->first != array) return false;
  for (std::uint32_t left = outer->second; left > 0; --left) {
    const auto item = takeHead(bytes);
    if (!item || item->first > text) return false;
    if (item->first < byteString) continue;
    if (item->second > bytes.size()) return false;
    bytes.remove_prefix(item->second);
  }
  return bytes.empty();
}

}  // namespace

std::optional<std::string> encoded(const HostMessage& message) {
  json array = json::array({message.name});
  for (const HostValue& value : message.values) {
    if (const auto* const number = std::get_if<std::int32_t>(&value)) {
      array.push_back(*number);
    } else {
      const auto& bytes = std::get<std::string>(value);
      array.push_back(json::binary({bytes.begin(), bytes.end()}));
    }
  }
  std::string text(lengthBytes, '\0');
  json::to_cbor(array, text);
  const std::size_t length = text.size() - lengthBytes;
  if (length > longestHostMessage) return std::nullopt;
  for (std::size_t i = 0; i < lengthBytes; ++i)
    text[i] = static_cast<char>(length >> 8 * i & 0xFF);
  return text;
}

Result<std::optional<HostMessage>, std::string> HostMessageReader::next() {
  using Next = std::optional<HostMessage>;
  if (bytes_.size() < lengthBytes) return Next();
  std::size_t length = 0;
  for (std::size_t i = 0; i < lengthBytes; ++i)
    length |= static_cast<std::size_t>(static_cast<unsigned char>(bytes_[i])) << 8 * i;
  if (length > longestHostMessage)
    return tl::unexpected("a message of at most " + std::to_string(longestHostMessage) +
                          " bytes, found one of " + std::to_string(length));
  if (bytes_.size() < lengthBytes + length) return Next();
  const std::string body = bytes_.substr(lengthBytes, length);
  bytes_.erase(0, lengthBytes + length);
  MessageParts parts;
  if (!isFlatArray(body) || !json::sax_parse(body, &parts, json::input_format_t::cbor))
    return tl::unexpected(std::string("a message of a name, numbers and bytes"));
  return Next(std::move(parts.message));
}

}  // namespace touch
