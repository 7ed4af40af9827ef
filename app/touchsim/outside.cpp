#include "app/touchsim/outside.h"

#include <algorithm>
#include <array>
#include <asio/buffer.hpp>
#include <asio/io_context.hpp>
#include <asio/read_until.hpp>
#include <asio/write.hpp>
#include <charconv>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace touch::simulator {

namespace {

constexpr std::size_t longestLine = 256;
constexpr std::string_view done = "ok";

constexpr std::pair<std::string_view, ReplayRequest::Action> replayActions[] = {
    {"pause", ReplayRequest::Action::pause},
    {"go", ReplayRequest::Action::go},
    {"step", ReplayRequest::Action::step},
    {"seek", ReplayRequest::Action::seek},
    {"progress", ReplayRequest::Action::progress}};

std::string_view takeWord(std::string_view& text) {
  const auto begin = std::min(text.find_first_not_of(' '), text.size());
  text.remove_prefix(begin);
  const auto word = text.substr(0, text.find(' '));
  text.remove_prefix(word.size());
  return word;
}

std::optional<double> numberUpTo(double greatest, std::string_view text) {
  double value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end || !(value >= 0 && value <= greatest))
    return std::nullopt;
  return value;
}

}  // namespace

std::optional<FingerRequest> parseFingerRequest(std::string_view line) {
  const auto word = takeWord(line);
  FingerRequest request{.down = word == "touch"};
  if (!request.down && word != "lift") return std::nullopt;
  if (request.down) {
    const auto x = numberUpTo(1, takeWord(line));
    const auto y = numberUpTo(1, takeWord(line));
    if (!x || !y) return std::nullopt;
    request.x = *x;
    request.y = *y;
  }
  if (!takeWord(line).empty()) return std::nullopt;
  return request;
}

std::optional<ReplayRequest> parseReplayRequest(std::string_view line) {
  const auto word = takeWord(line);
  const auto* const found = std::ranges::find(
      replayActions, word, &std::pair<std::string_view, ReplayRequest::Action>::first);
  if (found == std::end(replayActions)) return std::nullopt;
  ReplayRequest request{.action = found->second};
  if (request.action == ReplayRequest::Action::seek) {
    const auto seconds = numberUpTo(longestSeek, takeWord(line));
    if (!seconds) return std::nullopt;
    request.seconds = *seconds;
  }
  if (!takeWord(line).empty()) return std::nullopt;
  return request;
}

/// Whoever has called, until they have been answered and hang up.
class OutsideFinger::Caller : public std::enable_shared_from_this<Caller> {
 public:
  /// `answer` is what they are told.
  Caller(Call call, std::function<std::string(std::string_view)> answer)
      : call_(std::move(call)), answer_(std::move(answer)) {}

  void serve() {
    asio::async_read_until(call_, asio::dynamic_buffer(line_, longestLine), '\n',
                           [self = shared_from_this()](const std::error_code& error, std::size_t) {
                             if (!error) self->answer();
                           });
  }

 private:
  void answer() {
    reply_ = answer_(std::string_view(line_).substr(0, line_.find('\n'))) + '\n';
    asio::async_write(call_, asio::buffer(reply_),
                      [self = shared_from_this()](const std::error_code& error, std::size_t) {
                        if (!error) self->awaitHangUp();
                      });
  }

  // On Windows what has not been read may go with the end that hangs up first.
  void awaitHangUp() {
    call_.async_read_some(asio::buffer(rest_),
                          [self = shared_from_this()](const std::error_code&, std::size_t) {});
  }

  Call call_;
  std::function<std::string(std::string_view)> answer_;
  std::string line_;
  std::string reply_;
  std::array<char, 1> rest_{};
};

std::unique_ptr<OutsideFinger> OutsideFinger::open(asio::io_context& context,
                                                   const std::string& device, OnFinger onFinger,
                                                   OnReplay onReplay) {
  auto finger = std::make_unique<OutsideFinger>(std::move(onFinger), std::move(onReplay));
  finger->door_ = Door::open(context, device, [finger = finger.get()](Call call) {
    std::make_shared<Caller>(std::move(call), [finger](std::string_view line) {
      return finger->carryOut(line);
    })->serve();
  });
  return finger->door_ ? std::move(finger) : nullptr;
}

OutsideFinger::OutsideFinger(OnFinger onFinger, OnReplay onReplay)
    : onFinger_(std::move(onFinger)), onReplay_(std::move(onReplay)) {}

std::string OutsideFinger::carryOut(std::string_view line) const {
  if (const auto finger = parseFingerRequest(line)) {
    onFinger_(*finger);
    return std::string(done);
  }
  const auto replay = parseReplayRequest(line);
  if (!replay) {
    return "expected \"touch X Y\" with X and Y from 0 to 1, \"lift\", \"pause\", \"go\", "
           "\"step\", \"seek SECONDS\" or \"progress\"";
  }
  if (!onReplay_) return "it plays no recording: start it with --play or --replay";
  const std::string told = onReplay_(*replay);
  return told.empty() ? std::string(done) : std::string(done) + ' ' + told;
}

Result<std::string, std::string> sendRequest(const std::string& request,
                                             const std::optional<std::string>& device) {
  if (!hasDoors()) return tl::unexpected(std::string(doorNeeds));
  const auto doors = device ? std::vector{doorOf(*device)} : doorsThere();
  if (doors.empty()) return tl::unexpected(std::string("no simulated controller is running"));
  if (doors.size() > 1) {
    return tl::unexpected(std::to_string(doors.size()) +
                          " simulated controllers are running. Say which with --device");
  }
  const auto failed = [&door = doors.front()](const std::string& why) {
    return tl::unexpected(door + ": " + why);
  };
  asio::io_context context;
  auto call = callAt(context, doors.front());
  if (!call) return failed(call.error());
  std::error_code error;
  asio::write(*call, asio::buffer(request + '\n'), error);
  std::string answer;
  if (!error) asio::read_until(*call, asio::dynamic_buffer(answer, longestLine), '\n', error);
  if (error) return failed(error.message());
  answer.resize(answer.find('\n'));
  if (answer == done) return std::string();
  if (!answer.starts_with(std::string(done) + ' ')) return failed(answer);
  return answer.substr(done.size() + 1);
}

}  // namespace touch::simulator
