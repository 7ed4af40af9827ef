#include "drawing/picture.h"

#include <algorithm>
#include <chrono>
#include <span>
#include <utility>

namespace touch {

void Picture::clear() {
  marks_.clear();
  next_ = 0;
  timer_->stop();
  shown_.clear();
}

void Picture::line(TwipsPoint from, TwipsPoint to, Colour colour, int width) {
  add(Shape::line, from, to, colour, width);
}

void Picture::circle(TwipsPoint centre, float radius, Colour colour, int width) {
  add(Shape::circle, centre, {radius, 0}, colour, width);
}

void Picture::point(TwipsPoint at, Colour colour, int width) {
  add(Shape::point, at, at, colour, width);
}

void Picture::add(Shape shape, TwipsPoint from, TwipsPoint to, Colour colour, int width) {
  if (marks_.size() == mostMarks) {
    marks_.erase(marks_.begin(), marks_.begin() + static_cast<std::ptrdiff_t>(mostMarks / 2));
    next_ -= std::min(next_, mostMarks / 2);
  }
  // Where older marks are still to be shown it comes once more after them, to lie on top.
  if (next_ == marks_.size()) ++next_;
  marks_.push_back({from, to, colour, static_cast<std::int8_t>(width), shape, layer_});
  draw(marks_.back(), shown_);
}

bool Picture::forgetLayer(Layer layer) {
  return std::erase_if(marks_, [layer](const Mark& mark) { return mark.layer == layer; }) > 0;
}

void Picture::removeLayer(Layer layer) {
  if (forgetLayer(layer)) showAnew();
}

void Picture::show(Marks marks) {
  marks_ = std::move(marks);
  showAnew();
}

void Picture::showAnew() {
  shown_.clear();
  next_ = 0;
  showOn();
}

void Picture::showOn() {
  constexpr std::chrono::milliseconds betweenPieces{1};
  const auto rest = std::span(marks_).subspan(std::min(next_, marks_.size()));
  const auto piece = rest.first(std::min(marksAtATime, rest.size()));
  for (const Mark& mark : piece)
    draw(mark, shown_);
  next_ += piece.size();
  next_ < marks_.size() ? timer_->start(betweenPieces) : timer_->stop();
}

void Picture::drawOn(Surface& surface) const {
  for (const Mark& mark : marks_)
    draw(mark, surface);
}

void Picture::draw(const Mark& mark, Surface& surface) {
  switch (mark.shape) {
    case Shape::line:
      surface.line(mark.from, mark.to, mark.colour, mark.width);
      break;
    case Shape::circle:
      surface.circle(mark.from, mark.to.x, mark.colour, mark.width);
      break;
    case Shape::point:
      surface.point(mark.from, mark.colour, mark.width);
      break;
  }
}

}  // namespace touch
