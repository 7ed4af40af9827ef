#pragma once

#include "tests/doubles/drivers.h"
#include "tests/doubles/test.h"

namespace touch::test {

/// What a driver answers as the test says, and what it was asked. Calls are written to the journal
/// as they come: the operation's name and its arguments without the handle ("WriteBuffer UT",
/// "SetCalPoint 0 60 3").
class RecordingDriver final : public UniformDriver {
 public:
  explicit RecordingDriver(Lines& journal) : journal_(journal) {}

  Lines names;                                  ///< by controller number, from 1
  std::map<std::string, std::int32_t> results;  ///< by operation; 1 where nothing is said
  /// By operation: results that are used up one by one first.
  std::map<std::string, std::deque<std::int32_t>> sequences;
  /// By command; the last of each is given for ever.
  std::map<std::string, std::deque<Bytes>> replies;
  /// What CalCurrentPointReady reports, one a call: a raw reading, or nothing yet.
  std::deque<std::optional<std::pair<std::int32_t, std::int32_t>>> touches;
  std::function<void(const std::string& line)> onCall;  ///< run before a call is answered
  Bytes pending;  ///< what the controller has sent and nobody has read
  std::set<std::int32_t> openHandles;
  bool lies = false;  ///< counts and names are what no driver should return

  std::int32_t GetExistControllers() override {
    note("GetExistControllers");
    return results.contains("GetExistControllers") ? resultOf("GetExistControllers")
                                                   : static_cast<std::int32_t>(names.size());
  }
  std::int32_t GetControllerName(std::int32_t number, char* name, std::int32_t size) override {
    note("GetControllerName " + std::to_string(number) + ' ' + std::to_string(size));
    if (number < 1 || static_cast<std::size_t>(number) > names.size()) return 0;
    // A lying driver fills the buffer without a closing zero.
    std::fill_n(name, size, lies ? 'X' : '\0');
    names[static_cast<std::size_t>(number) - 1].copy(name, static_cast<std::size_t>(size));
    return resultOf("GetControllerName");
  }
  std::int32_t OpenController(const char* name) override {
    note("OpenController " + std::string(name));
    const std::int32_t handle =
        results.contains("OpenController") ? resultOf("OpenController") : ++lastHandle_;
    if (handle > 1) openHandles.insert(handle);
    return handle;
  }
  std::int32_t CloseController(std::int32_t handle) override {
    note("CloseController", handle);
    openHandles.erase(handle);
    return resultOf("CloseController");
  }
  std::int32_t FlushReadBuffer(std::int32_t handle) override {
    note("FlushReadBuffer", handle);
    pending.clear();
    return resultOf("FlushReadBuffer");
  }
  std::int32_t WriteBuffer(std::int32_t handle, const std::uint8_t* bytes,
                           std::int32_t count) override {
    std::string text(bytes, bytes + count);
    const bool framed = text.size() >= 2 && text.front() == '\x01' && text.back() == '\r';
    text = framed ? text.substr(1, text.size() - 2) : "unframed " + text;
    note("WriteBuffer " + text, handle);
    pending.clear();
    if (auto& queue = replies[text]; !queue.empty()) {
      pending = queue.front();
      if (queue.size() > 1) queue.pop_front();
    }
    return resultOf("WriteBuffer");
  }
  std::int32_t ReadBuffer(std::int32_t handle, std::uint8_t* bytes, std::int32_t limit) override {
    note("ReadBuffer " + std::to_string(limit), handle);
    const auto count = std::min<std::ptrdiff_t>(limit + (lies ? 5 : 0), std::ssize(pending));
    std::copy_n(pending.begin(), count, bytes);
    pending.erase(pending.begin(), pending.begin() + count);
    return lies ? INT32_MAX : static_cast<std::int32_t>(count);
  }
  std::int32_t ReadLength(std::int32_t handle) override {
    note("ReadLength", handle);
    return static_cast<std::int32_t>(pending.size());
  }
  std::int32_t CalCurrentPointReady(std::int32_t handle, std::int32_t* raw) override {
    note("CalCurrentPointReady", handle);
    if (touches.empty()) return 0;
    const auto touch = touches.front();
    touches.pop_front();
    if (touch) std::tie(raw[0], raw[1]) = *touch;
    return touch ? 1 : 0;
  }

 private:
  std::int32_t perform(const std::string& operation, const Numbers& numbers) override {
    std::string line = operation;
    for (std::size_t i = 1; i < numbers.size(); ++i)
      line += ' ' + std::to_string(numbers[i]);
    note(line, numbers.empty() ? 0 : numbers.front());
    return resultOf(operation);
  }

  void note(std::string line, std::int32_t handle = 0) {
    if (handle > 1 && !openHandles.contains(handle)) line += " (with a handle that is not open)";
    journal_.push_back(line);
    if (onCall) onCall(line);
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

  Lines& journal_;
  std::int32_t lastHandle_ = 1;
};

}  // namespace touch::test
