#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

#include "core/driver/host/host_message.h"

namespace touch {

/// How the arguments of an operation travel, made from their types alone: integers as they are,
/// text up to its zero, and a buffer as its bytes. The size of a buffer is the argument behind it;
/// one for raw readings has two numbers. A buffer that the driver may write to comes back.
namespace operation_codec {

inline constexpr std::size_t readingBytes = 2 * sizeof(std::int32_t);
// A driver that writes past the size it was given damages this margin and not the host's memory.
inline constexpr std::size_t overrunMargin = 256;

template <typename T>
inline constexpr bool isNumber = std::is_same_v<T, std::int32_t>;
template <typename T>
inline constexpr bool isText = std::is_same_v<T, const char*>;
template <typename T>
inline constexpr bool isReading = std::is_same_v<T, std::int32_t*>;
/// The driver may write to what it points at.
template <typename T>
inline constexpr bool isWritten =
    std::is_pointer_v<T> && !std::is_const_v<std::remove_pointer_t<T>>;

template <std::size_t I, typename... Arguments>
std::size_t bufferSize(const std::tuple<Arguments...>& arguments) {
  using T = std::tuple_element_t<I, std::tuple<Arguments...>>;
  if constexpr (isReading<T>) {
    return readingBytes;
  } else {
    return static_cast<std::size_t>(std::max(std::get<I + 1>(arguments), 0));
  }
}

template <std::size_t I, typename... Arguments>
HostValue valueOf(const std::tuple<Arguments...>& arguments) {
  using T = std::tuple_element_t<I, std::tuple<Arguments...>>;
  const T argument = std::get<I>(arguments);
  if constexpr (isNumber<T>) {
    return argument;
  } else if constexpr (isText<T>) {
    return std::string(argument);
  } else {
    return std::string(reinterpret_cast<const char*>(argument), bufferSize<I>(arguments));
  }
}

/// What is sent for these arguments.
template <typename... Arguments>
std::vector<HostValue> valuesOf(const std::tuple<Arguments...>& arguments) {
  return [&]<std::size_t... I>(std::index_sequence<I...>) {
    return std::vector<HostValue>{valueOf<I>(arguments)...};
  }
  (std::index_sequence_for<Arguments...>());
}

/// Whether argument I has a buffer that comes back, and the value at `next` is it.
template <std::size_t I, typename... Arguments>
bool cameBack([[maybe_unused]] const HostMessage& result, [[maybe_unused]] std::size_t& next,
              [[maybe_unused]] const std::tuple<Arguments...>& arguments) {
  if constexpr (isWritten<std::tuple_element_t<I, std::tuple<Arguments...>>>) {
    const auto* const bytes = result.at<std::string>(next++);
    return bytes != nullptr && bytes->size() == bufferSize<I>(arguments);
  }
  return true;
}

template <std::size_t I, typename... Arguments>
void putBack([[maybe_unused]] const HostMessage& result, [[maybe_unused]] std::size_t& next,
             [[maybe_unused]] const std::tuple<Arguments...>& arguments) {
  if constexpr (isWritten<std::tuple_element_t<I, std::tuple<Arguments...>>>) {
    const auto& bytes = *result.at<std::string>(next++);
    std::memcpy(std::get<I>(arguments), bytes.data(), bytes.size());
  }
}

/// Puts the buffers that came back behind the result where the arguments point. False, and nothing
/// is touched, when they are not those that were sent.
template <typename... Arguments>
bool takeBuffers(const HostMessage& result, const std::tuple<Arguments...>& arguments) {
  return [&]<std::size_t... I>(std::index_sequence<I...>) {
    std::size_t next = 1;
    if (!(cameBack<I>(result, next, arguments) && ...) || next != result.values.size())
      return false;
    next = 1;
    (putBack<I>(result, next, arguments), ...);
    return true;
  }
  (std::index_sequence_for<Arguments...>());
}

/// The arguments of a call as they came in a message, and the memory that they point to. Nothing
/// when the message has others.
template <typename... Arguments>
class Received {
 public:
  static std::optional<Received> from(const HostMessage& message) {
    if (message.values.size() != sizeof...(Arguments)) return std::nullopt;
    Received received;
    const bool sound = [&]<std::size_t... I>(std::index_sequence<I...>) {
      return (received.template take<I>(message) && ...);
    }
    (std::index_sequence_for<Arguments...>());
    if (!sound) return std::nullopt;
    return received;
  }

  template <typename Call>
  std::int32_t perform(const Call& call) {
    return [&]<std::size_t... I>(std::index_sequence<I...>) {
      return call(this->template argument<I>()...);
    }
    (std::index_sequence_for<Arguments...>());
  }

  /// The result of the call, and the buffers as they are after it.
  HostMessage result(std::int32_t value) const {
    HostMessage message{"result", {value}};
    [&]<std::size_t... I>(std::index_sequence<I...>) {
      (this->template give<I>(message), ...);
    }
    (std::index_sequence_for<Arguments...>());
    return message;
  }

 private:
  template <std::size_t I>
  using Type = std::tuple_element_t<I, std::tuple<Arguments...>>;

  template <std::size_t I>
  bool take(const HostMessage& message) {
    if constexpr (isNumber<Type<I>>) {
      const auto* const number = message.at<std::int32_t>(I);
      if (number != nullptr) numbers_[I] = *number;
      return number != nullptr;
    } else {
      const auto* const bytes = message.at<std::string>(I);
      if (bytes == nullptr) return false;
      sizes_[I] = bytes->size();
      memory_[I] = *bytes + std::string(overrunMargin, '\0');
      if constexpr (isReading<Type<I>>) {
        return bytes->size() == readingBytes;
      } else if constexpr (!isText<Type<I>>) {
        const auto* const size = message.at<std::int32_t>(I + 1);
        return size != nullptr && *size >= 0 && bytes->size() == static_cast<std::size_t>(*size);
      }
      return true;
    }
  }

  template <std::size_t I>
  Type<I> argument() {
    if constexpr (isNumber<Type<I>>) {
      return numbers_[I];
    } else {
      return reinterpret_cast<Type<I>>(memory_[I].data());
    }
  }

  template <std::size_t I>
  void give(HostMessage& message) const {
    if constexpr (isWritten<Type<I>>) message.values.emplace_back(memory_[I].substr(0, sizes_[I]));
  }

  static constexpr std::size_t room = std::max<std::size_t>(sizeof...(Arguments), 1);
  std::array<std::int32_t, room> numbers_{};
  std::array<std::string, room> memory_;
  std::array<std::size_t, room> sizes_{};
};

}  // namespace operation_codec
}  // namespace touch
