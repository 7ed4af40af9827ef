#pragma once

#include <array>
#include <cstring>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>

#include "console/parameters/parameter_words.h"
#include "fuzz/target.h"
#include "serial/commands/h2d.h"
#include "tests/doubles/drivers.h"

namespace touch::fuzz {

/// A driver whose every answer comes from an input: counts, names without a closing zero, handles,
/// results, replies, and buffers filled up to their size and beyond it, as far as the contract's
/// margin goes. To get beyond the first question it can also answer as a controller would, with a
/// parameter memory behind it. When the input is used up it answers 0 and says nothing.
class FuzzedDriver final : public test::UniformDriver {
 public:
  explicit FuzzedDriver(Input& input) : input_(input) {
    constexpr std::size_t wireCount = 0x80;
    memory_[wireCount] = {0, 4};
  }

  /// Run before each answer: time may pass, and the user may do something.
  std::function<void()> onCall;

  /// Controllers that were opened with a usable handle and not closed as often.
  bool anyOpen() const { return !open_.empty(); }

  std::int32_t GetControllerName(std::int32_t, char* name, std::int32_t size) override {
    constexpr std::array<std::string_view, 6> names = {
        "RS232 DEVICE 1",        "USB   DEVICE 2",        "USB   DEVICE 3 OF 20 LONG",
        "../../RS232 DEVICE %n", "\xFFUSB\xE4\tDEVICE\n", "PS2 DEVICE"};
    const std::size_t choice = input_.byte();
    const bool known = choice < names.size();
    fill(name, known ? bytesOf(names[choice]) : input_.take(choice),
         static_cast<std::size_t>(size) + margin);
    return known ? 1 : result();
  }
  std::int32_t OpenController(const char* name) override {
    require(name != nullptr && std::strlen(name) <= 20, "a controller is opened by its name");
    if (onCall) onCall();
    const std::uint8_t choice = input_.byte();
    const std::int32_t handle = choice < 16 ? ++lastHandle_ : result();
    if (handle > 1) ++open_[handle];
    return handle;
  }
  std::int32_t CloseController(std::int32_t handle) override {
    if (const auto open = open_.find(handle); open != open_.end()) {
      if (--open->second == 0) open_.erase(open);
    } else {
      require(handle <= 1, "only what is open is closed");
    }
    return result();
  }
  std::int32_t WriteBuffer(std::int32_t handle, const std::uint8_t* bytes,
                           std::int32_t count) override {
    require(handle <= 1 || open_.contains(handle), "only to what is open is written");
    require(count >= 2 && bytes[0] == 0x01 && bytes[count - 1] == '\r', "commands are framed");
    asked_.assign(bytes + 1, bytes + count - 1);
    return result();
  }
  std::int32_t ReadBuffer(std::int32_t, std::uint8_t* bytes, std::int32_t count) override {
    const std::uint8_t kind = input_.byte();
    const auto answer = reply(kind);
    fill(bytes, answer, static_cast<std::size_t>(count) + margin);
    return kind == lie ? result() : static_cast<std::int32_t>(answer.size());
  }
  std::int32_t CalCurrentPointReady(std::int32_t, std::int32_t* raw) override {
    const std::int32_t ready = result();
    if (ready == 0) return ready;
    const std::uint8_t choice = input_.byte();
    // A finger that touches another place each time.
    if (choice == 1) raw[0] = raw[1] = ++touches_ * 1000;
    if (choice != 1) fill(raw, input_.take(choice), rawReadingRoom);
    return ready;
  }

 private:
  // What the system keeps free behind the buffers that it gives a driver, and the whole buffer of a
  // raw reading.
  static constexpr std::size_t margin = 256;
  static constexpr std::size_t rawReadingRoom = 256;
  // The kind of reply whose count is not that of its bytes.
  static constexpr std::uint8_t lie = 5;

  std::int32_t perform(const std::string&, const Numbers&) override { return result(); }

  static std::span<const std::uint8_t> bytesOf(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
  }
  static void fill(void* buffer, std::span<const std::uint8_t> bytes, std::size_t room) {
    if (!bytes.empty()) std::memcpy(buffer, bytes.data(), std::min(bytes.size(), room));
  }
  /// Of the last command, the byte that the digits from `place` on make.
  std::uint8_t askedByte(std::size_t place) const {
    return static_cast<std::uint8_t>(
        h2d(std::string_view(asked_).substr(std::min(place, asked_.size()), 2)).value_or(0));
  }

  std::int32_t result() {
    if (onCall) onCall();
    constexpr std::array<std::int32_t, 8> usual = {0, 1, 2, 3, -1, 300, INT32_MAX, INT32_MIN};
    constexpr std::uint8_t anyNumber = 8;
    const std::uint8_t choice = input_.byte();
    if (choice < usual.size()) return usual[choice];
    return choice == anyNumber ? input_.number() : choice;
  }

  /// What a controller says, as reply number `kind` of the known ones or as the input's own bytes.
  std::span<const std::uint8_t> reply(std::uint8_t kind) {
    constexpr std::array<std::string_view, 6> texts = {"QMRV0301",   "QRMV1000",    "OI 30100",
                                                       "UIQRMV0302", "\xE4%s\x1B[", "2"};
    if (kind >= lie) return input_.take(kind == lie ? input_.byte() : kind);
    if (kind == 0) return {};
    std::string text = kind == 3 ? "1" : "0";
    if (kind == 4) text = texts[input_.below(texts.size())];
    if (kind == 1) {
      // An honest controller, which stores what it acknowledges.
      if (asked_.starts_with("GP")) text += wordText(memory_[askedByte(2)]);
      if (asked_.starts_with("SP")) memory_[askedByte(2)] = {askedByte(4), askedByte(6)};
      if (asked_ == "UT" || asked_ == "OI") text = texts[0];
    }
    answer_ = '\x01' + text + '\r';
    return bytesOf(answer_);
  }

  Input& input_;
  std::map<std::int32_t, int> open_;  ///< how often, by handle
  std::int32_t lastHandle_ = 1;
  std::int32_t touches_ = 0;
  std::array<ParameterWord, 256> memory_{};
  std::string asked_;  ///< the text of the last command
  std::string answer_;
};

}  // namespace touch::fuzz
