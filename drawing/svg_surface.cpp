#include "drawing/svg_surface.h"

#include <initializer_list>

#include "support/text/hex.h"
#include "support/text/markup.h"
#include "support/text/number_layout.h"

namespace touch {

namespace {

std::string colourText(Colour colour) {
  return '#' + hexByte(colour.red) + hexByte(colour.green) + hexByte(colour.blue);
}

struct Attribute {
  std::string_view name;
  float value;
};

std::string attributes(std::initializer_list<Attribute> list) {
  std::string text;
  for (const Attribute& attribute : list)
    text.append(" ").append(attribute.name) +=
        "=\"" + fixedText(static_cast<double>(attribute.value), 1) + '"';
  return text;
}

std::string stroke(Colour colour, int width) {
  return " fill=\"none\" stroke=\"" + colourText(colour) + '"' +
         attributes({{"stroke-width", static_cast<float>(width) * twipsPerPixel}}) +
         " stroke-linecap=\"round\"/>\n";
}

std::string_view anchorText(TextAnchor anchor) {
  switch (anchor) {
    case TextAnchor::start:
      return "start";
    case TextAnchor::middle:
      return "middle";
    case TextAnchor::end:
      return "end";
  }
  return "start";
}

}  // namespace

void SvgSurface::line(TwipsPoint from, TwipsPoint to, Colour colour, int width) {
  shapes_ += "<line" + attributes({{"x1", from.x}, {"y1", from.y}, {"x2", to.x}, {"y2", to.y}}) +
             stroke(colour, width);
}

void SvgSurface::circle(TwipsPoint centre, float radius, Colour colour, int width) {
  shapes_ += "<circle" + attributes({{"cx", centre.x}, {"cy", centre.y}, {"r", radius}}) +
             stroke(colour, width);
}

void SvgSurface::text(TwipsPoint at, std::string_view text, Colour colour, float height,
                      TextAnchor anchor) {
  shapes_ += "<text" + attributes({{"x", at.x}, {"y", at.y}, {"font-size", height}}) + " fill=\"" +
             colourText(colour) + "\" text-anchor=\"" + std::string(anchorText(anchor)) + "\">" +
             markupText(text) + "</text>\n";
}

void SvgSurface::area(TwipsPoint corner, TwipsSize size, Colour colour) {
  shapes_ +=
      "<rect" +
      attributes(
          {{"x", corner.x}, {"y", corner.y}, {"width", size.width}, {"height", size.height}}) +
      " fill=\"" + colourText(colour) + "\"/>\n";
}

std::string SvgSurface::document() const {
  const std::string size = attributes(
      {{"width", page_.width / twipsPerPixel}, {"height", page_.height / twipsPerPixel}});
  const std::string extent = fixedText(static_cast<double>(page_.width), 1) + ' ' +
                             fixedText(static_cast<double>(page_.height), 1);
  return "<svg xmlns=\"http://www.w3.org/2000/svg\"" + size + " viewBox=\"0 0 " + extent +
         "\" font-family=\"sans-serif\">\n" + shapes_ + "</svg>\n";
}

}  // namespace touch
