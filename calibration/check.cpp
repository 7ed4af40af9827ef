#include "calibration/check.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

#include "support/gate.h"
#include "support/text/language.h"

namespace touch {

namespace {

using namespace std::chrono_literals;

constexpr auto barTick = 100ms;
constexpr std::chrono::milliseconds longestSilence = 20s;
// For a look at the last figure.
constexpr std::chrono::milliseconds beforeKept = 2s;
constexpr int missesAllowed = 3;

constexpr float armLength = 250;  // twips: the radius of a calibration's target
constexpr float ringRadius = 100;
constexpr int lineWidth = 2;
constexpr int dotWidth = 7;
constexpr Colour waiting = palette[8];
constexpr Colour good = palette[10];
constexpr Colour off = palette[12];

DiagonalPercent distance(TwipsPoint a, TwipsPoint b, TwipsSize screen) {
  const auto apart = std::hypot(double{a.x} - double{b.x}, double{a.y} - double{b.y});
  return {100 * apart / std::hypot(double{screen.width}, double{screen.height})};
}

void drawCross(Surface& surface, TwipsPoint at, Colour colour) {
  surface.line({at.x - armLength, at.y}, {at.x + armLength, at.y}, colour, lineWidth);
  surface.line({at.x, at.y - armLength}, {at.x, at.y + armLength}, colour, lineWidth);
}

std::string sentences(const std::string& first, const std::string& second) {
  return first.empty() || second.empty() ? first + second : first + ' ' + second;
}

}  // namespace

std::array<TwipsPoint, 5> checkCrosses(TwipsSize screen) {
  const auto at = [screen](float x, float y) {
    return TwipsPoint{x * screen.width, y * screen.height};
  };
  return {at(0.25F, 0.25F), at(0.75F, 0.25F), at(0.375F, 0.5F), at(0.25F, 0.75F), at(0.75F, 0.75F)};
}

Check::Check(Clock& clock, CheckScreen& screen, TwipsSize size, DiagonalPercent limit,
             WayBack& wayBack)
    : clock_(clock),
      screen_(screen),
      size_(size),
      limit_(limit),
      wayBack_(wayBack),
      crosses_(checkCrosses(size)),
      timer_(clock.makeTimer([this] { tick(); })) {}

void Check::begin() {
  screen_.surface().clear();
  enter(Stage::touching, say("calibration", "Touch the centre of the bright cross."));
  timer_->start(barTick);
}

void Check::enter(Stage stage, const std::string& text) {
  stage_ = stage;
  lastTouch_ = clock_.now();
  showCrosses();
  screen_.showTimeBar(0);
  screen_.allow(stage != Stage::touching, true);
  screen_.tell(text);
}

void Check::showCrosses() {
  for (std::size_t i = residuals_.size(); i < crosses_.size(); ++i) {
    const bool isNext = i == residuals_.size();
    drawCross(screen_.surface(), crosses_[i], isNext ? white : waiting);
    if (isNext) screen_.surface().circle(crosses_[i], ringRadius, yellow, lineWidth);
  }
}

std::optional<TwipsPoint> Check::awaited() const {
  if (stage_ != Stage::touching) return std::nullopt;
  return crosses_[residuals_.size()];
}

void Check::touch(TwipsPoint at) {
  if (stage_ == Stage::ended || stage_ == Stage::passed) return;
  lastTouch_ = clock_.now();
  const auto cross = awaited();
  // Where there is no cross the user means a button, and misses it.
  if (!cross) return miss(at);
  const DiagonalPercent apart = distance(at, *cross, size_);
  // No order with a place that is no number.
  if (!(apart <= nowhereNear)) return miss(at);
  const Residual residual{*cross, at, apart, apart <= limit_};
  const Colour colour = residual.good ? good : off;
  drawCross(screen_.surface(), *cross, colour);
  screen_.surface().circle(*cross, ringRadius, colour, lineWidth);
  screen_.surface().point(at, colour, dotWidth);
  residuals_.push_back(residual);
  screen_.showResidual(residual);
  if (residuals_.size() == crosses_.size()) return finishCrosses();
  enter(Stage::touching, say("calibration", "Touch the centre of the bright cross."));
}

void Check::miss(TwipsPoint at) {
  screen_.surface().point(at, off, dotWidth);
  if (++misses_ == missesAllowed) {
    return putBackBecause(say("calibration", "Three touches landed nowhere near."));
  }
  screen_.showTimeBar(0);
  screen_.tell(stage_ == Stage::deciding
                   ? say("calibration", "That touch landed beside the buttons.")
                   : say("calibration",
                         "That touch landed nowhere near. Touch the centre of the bright cross."));
}

void Check::finishCrosses() {
  if (std::ranges::all_of(residuals_, &Residual::good)) {
    enter(Stage::passed, say("calibration", "The calibration is good."));
  } else {
    enter(Stage::deciding,
          say("calibration", "Some touches landed too far off. Keep this calibration?"));
  }
}

std::chrono::milliseconds Check::patience() const {
  return stage_ == Stage::passed ? beforeKept : longestSilence;
}

void Check::tick() {
  if (stage_ == Stage::ended) return;
  const auto waited = clock_.now() - lastTouch_;
  if (waited < patience()) {
    const std::chrono::duration<float> used = waited;
    const std::chrono::duration<float> whole = patience();
    return screen_.showTimeBar(size_.width * (used / whole));
  }
  if (stage_ == Stage::passed) return keep();
  putBackBecause(say("calibration", "No touch came for 20 seconds."));
}

void Check::keep() {
  if (stage_ != Stage::passed && stage_ != Stage::deciding) return;
  end(say("calibration", "The calibration is kept."), [this] { return settled(); });
}

void Check::putBack() {
  putBackBecause("");
}

void Check::putBackBecause(const std::string& reason) {
  end(say("calibration", "Putting back the calibration from before …"),
      [this, &reason] { return wentBack(reason); });
}

CheckResult Check::settled() {
  const bool isGood = std::ranges::all_of(residuals_, &Residual::good);
  const std::string text =
      isGood ? say("calibration", "The calibration is good: all five touches landed near enough.")
             : say("calibration", "The calibration is kept, although not all touches landed near.");
  const auto tidied = wayBack_.settle();
  const Notice notice(isGood ? NoticeKind::success : NoticeKind::remark,
                      sentences(text, tidied ? "" : tidied.error().describe() + '.'));
  return {CheckOutcome::kept, notice};
}

CheckResult Check::wentBack(const std::string& reason) {
  const std::string why = wayBack_.whyNone();
  if (!why.empty()) {
    const auto left = reason.empty() ? say("calibration", "The check was left.") : reason;
    return {CheckOutcome::bad,
            Notice(reason.empty() ? NoticeKind::remark : NoticeKind::error, sentences(left, why))};
  }
  const Notice back = wayBack_.putBack();
  const bool isBack = back.kind != NoticeKind::error;
  return {isBack ? CheckOutcome::putBack : CheckOutcome::bad,
          Notice(back.kind, sentences(reason, back.text))};
}

void Check::end(const std::string& text, const std::function<CheckResult()>& work) {
  if (std::exchange(stage_, Stage::ended) == Stage::ended) return;
  timer_->stop();
  screen_.allow(false, false);
  if (wayBack_.whyNone().empty()) screen_.tell(text);
  CheckResult result;
  result.notice = Notice::error(say("calibration", "The check broke off."));
  runThen([&] { result = work(); }, [&] { screen_.ended(result); });
}

}  // namespace touch
