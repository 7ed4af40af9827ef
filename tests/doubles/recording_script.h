#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <vector>

#include "core/driver/driver_operations.h"

namespace touch::test {

using Bytes = std::vector<std::uint8_t>;

inline Bytes bytesOf(std::string_view text) {
  return {text.begin(), text.end()};
}
/// A reply as controllers make them: 0x01, the text, 0x0D.
inline Bytes replyOf(std::string_view text) {
  return bytesOf("\x01" + std::string(text) + "\r");
}
inline const Bytes acknowledgement = replyOf("0");
inline const Bytes refusal = replyOf("1");

/// What the recording driver library answers, and what it was asked. Calls are written to the
/// journal as they come: the operation's name and its arguments without the handle ("WriteBuffer
/// UT", "SetCalPoint 0 60 3").
class RecordingScript {
 public:
  explicit RecordingScript(std::vector<std::string>& journal) : journal_(journal) {}

  std::vector<std::string> names;               ///< by controller number, from 1
  std::map<std::string, std::int32_t> results;  ///< by operation; 1 where nothing is said
  std::map<std::string, std::deque<Bytes>>
      replies;  ///< by command; the last of each is given for ever
  /// What CalCurrentPointReady reports, one a call: a raw reading, or nothing yet.
  std::deque<std::optional<std::pair<std::int32_t, std::int32_t>>> touches;
  std::map<std::string, std::deque<std::int32_t>>
      sequences;  ///< by operation: results used up one by one first
  std::function<void(const std::string& line)> onCall;  ///< run before a call is answered
  Bytes pending;  ///< what the controller has sent and nobody has read
  std::set<std::int32_t> openHandles;
  bool lies = false;  ///< counts and names are what no driver should return

  template <typename... Arguments>
  std::int32_t perform(const char* operation, const std::tuple<Arguments...>& arguments) {
    std::string line = operation;
    note(line, arguments);
    journal_.push_back(line);
    if (onCall) onCall(line);
    return answer(operation, arguments);
  }

 private:
  void checkHandle(std::string& line, std::int32_t handle) const {
    if (handle > 1 && !openHandles.contains(handle)) line += " (with a handle that is not open)";
  }

  void note(std::string&, const std::tuple<>&) {}
  void note(std::string& line, const std::tuple<const char*>& open) {
    line += ' ' + std::string(std::get<0>(open));
  }
  void note(std::string& line, const std::tuple<std::int32_t, char*, std::int32_t>& name) {
    line += ' ' + std::to_string(std::get<0>(name)) + ' ' + std::to_string(std::get<2>(name));
  }
  void note(std::string& line,
            const std::tuple<std::int32_t, const std::uint8_t*, std::int32_t>& written) {
    checkHandle(line, std::get<0>(written));
    line += ' ' + frameText(written);
  }
  void note(std::string& line, const std::tuple<std::int32_t, std::uint8_t*, std::int32_t>& read) {
    checkHandle(line, std::get<0>(read));
    line += ' ' + std::to_string(std::get<2>(read));
  }
  void note(std::string& line, const std::tuple<std::int32_t, std::int32_t*>& ready) {
    checkHandle(line, std::get<0>(ready));
  }
  template <typename... Rest>
  void note(std::string& line, const std::tuple<std::int32_t, Rest...>& arguments) {
    checkHandle(line, std::get<0>(arguments));
    std::apply([&line](std::int32_t, auto... rest) { ((line += ' ' + std::to_string(rest)), ...); },
               arguments);
  }

  /// A frame's text; other bytes than those of a frame in hexadecimal would show as they are.
  static std::string frameText(
      const std::tuple<std::int32_t, const std::uint8_t*, std::int32_t>& written) {
    const auto [handle, bytes, count] = written;
    std::string text(bytes, bytes + count);
    const bool framed = text.size() >= 2 && text.front() == '\x01' && text.back() == '\r';
    return framed ? text.substr(1, text.size() - 2) : "unframed " + text;
  }

  std::int32_t resultOf(const std::string& operation) {
    if (auto& sequence = sequences[operation]; !sequence.empty()) {
      const std::int32_t result = sequence.front();
      sequence.pop_front();
      return result;
    }
    const auto fixed = results.find(operation);
    return fixed == results.end() ? 1 : fixed->second;
  }

  std::int32_t answer(const std::string& operation, const std::tuple<>&) {
    if (operation == "GetExistControllers" && !results.contains(operation)) {
      return static_cast<std::int32_t>(names.size());
    }
    return resultOf(operation);
  }
  std::int32_t answer(const std::string& operation, const std::tuple<const char*>&) {
    const std::int32_t handle = results.contains(operation) ? resultOf(operation) : ++lastHandle_;
    if (handle > 1) openHandles.insert(handle);
    return handle;
  }
  std::int32_t answer(const std::string& operation,
                      const std::tuple<std::int32_t, char*, std::int32_t>& name) {
    const auto [number, buffer, size] = name;
    if (number < 1 || static_cast<std::size_t>(number) > names.size()) return 0;
    const std::string& text = names[static_cast<std::size_t>(number) - 1];
    // A lying driver fills the buffer without a closing zero.
    std::memset(buffer, lies ? 'X' : 0, static_cast<std::size_t>(size));
    std::memcpy(buffer, text.data(), std::min(text.size(), static_cast<std::size_t>(size)));
    return resultOf(operation);
  }
  std::int32_t answer(const std::string& operation,
                      const std::tuple<std::int32_t, const std::uint8_t*, std::int32_t>& written) {
    pending.clear();
    if (auto& queue = replies[frameText(written)]; !queue.empty()) {
      pending = queue.front();
      if (queue.size() > 1) queue.pop_front();
    }
    return resultOf(operation);
  }
  std::int32_t answer(const std::string&,
                      const std::tuple<std::int32_t, std::uint8_t*, std::int32_t>& read) {
    const auto [handle, bytes, limit] = read;
    const auto room = static_cast<std::size_t>(limit) + (lies ? 5 : 0);
    const std::size_t count = std::min(room, pending.size());
    std::copy_n(pending.begin(), count, bytes);
    pending.erase(pending.begin(), pending.begin() + static_cast<std::ptrdiff_t>(count));
    return lies ? INT32_MAX : static_cast<std::int32_t>(count);
  }
  std::int32_t answer(const std::string&, const std::tuple<std::int32_t, std::int32_t*>& ready) {
    if (touches.empty()) return 0;
    const auto touch = touches.front();
    touches.pop_front();
    if (!touch) return 0;
    std::get<1>(ready)[0] = touch->first;
    std::get<1>(ready)[1] = touch->second;
    return 1;
  }
  template <typename... Rest>
  std::int32_t answer(const std::string& operation, const std::tuple<std::int32_t, Rest...>& rest) {
    if (operation == "CloseController") openHandles.erase(std::get<0>(rest));
    if (operation == "FlushReadBuffer") pending.clear();
    if (operation == "ReadLength") return static_cast<std::int32_t>(pending.size());
    return resultOf(operation);
  }

  std::vector<std::string>& journal_;
  std::int32_t lastHandle_ = 1;
};

}  // namespace touch::test
