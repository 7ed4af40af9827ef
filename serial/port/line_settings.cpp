#include "serial/port/line_settings.h"

#include <optional>
#include <span>
#include <vector>

#include "support/text/decimal.h"
#include "support/text/language.h"

namespace touch {

namespace {

constexpr int greatestBaud = 4'000'000;

constexpr int usualBaud = LineSettings{}.baud;
constexpr std::array otherSpeeds = {19200, 38400, 57600, 115200, 4800, 2400, 1200};
static_assert(otherSpeeds.size() + 1 == usualSpeeds.size());
constexpr std::array<LineSettings, 6> usualForms{{
    {usualBaud, Parity::none, 8, 1},
    {usualBaud, Parity::none, 7, 2},
    {usualBaud, Parity::even, 7, 1},
    {usualBaud, Parity::even, 8, 1},
    {usualBaud, Parity::odd, 8, 1},
    {usualBaud, Parity::odd, 7, 1},
}};
constexpr std::array<LineSettings, 6> rareForms{{
    {usualBaud, Parity::none, 8, 2},
    {usualBaud, Parity::none, 7, 1},
    {usualBaud, Parity::even, 7, 2},
    {usualBaud, Parity::odd, 7, 2},
    {usualBaud, Parity::even, 8, 2},
    {usualBaud, Parity::odd, 8, 2},
}};

void addEach(std::vector<LineSettings>& settings, std::span<const int> speeds,
             std::span<const LineSettings> forms) {
  for (const int baud : speeds) {
    for (LineSettings form : forms) {
      form.baud = baud;
      settings.push_back(form);
    }
  }
}

std::vector<std::string_view> fieldsOf(std::string_view text) {
  std::vector<std::string_view> fields;
  for (auto comma = text.find(','); comma != text.npos; comma = text.find(',')) {
    fields.push_back(text.substr(0, comma));
    text.remove_prefix(comma + 1);
  }
  fields.push_back(text);
  return fields;
}

std::optional<Parity> parseParity(std::string_view text) {
  if (text == "n" || text == "N") return Parity::none;
  if (text == "e" || text == "E") return Parity::even;
  if (text == "o" || text == "O") return Parity::odd;
  return std::nullopt;
}

}  // namespace

SearchedSettings searchedSettings() {
  const std::array usualSpeed = {usualBaud};
  const std::span forms = usualForms;
  SearchedSettings searched;
  addEach(searched.likely, usualSpeed, forms);
  addEach(searched.likely, otherSpeeds, forms.first(1));
  addEach(searched.likely, otherSpeeds, forms.subspan(1));
  addEach(searched.others, usualSpeed, rareForms);
  addEach(searched.others, highSpeeds, forms);
  addEach(searched.others, otherSpeeds, rareForms);
  addEach(searched.others, highSpeeds, rareForms);
  return searched;
}

Result<LineSettings, std::string> parseLineSettings(std::string_view text) {
  const auto refuse = [text](std::string_view expected, std::string_view found) {
    return tl::unexpected(
        filled(say("ports", "The line settings \"%1\" are wrong: expected %2, found \"%3\""),
               {text, expected, found}));
  };
  const auto fields = fieldsOf(text);
  if (fields.size() != 4) {
    return refuse(say("ports", "baud rate, parity, data bits and stop bits, e.g. 9600,n,8,1"),
                  text);
  }
  const auto baud = parseDecimal(fields[0], 1, greatestBaud);
  if (!baud) return refuse(say("ports", "a baud rate of 1 to 4000000"), fields[0]);
  const auto parity = parseParity(fields[1]);
  if (!parity) return refuse(say("ports", "n, e or o as the parity"), fields[1]);
  const auto dataBits = parseDecimal(fields[2], 5, 8);
  if (!dataBits) return refuse(say("ports", "5 to 8 data bits"), fields[2]);
  const auto stopBits = parseDecimal(fields[3], 1, 2);
  if (!stopBits) return refuse(say("ports", "1 or 2 stop bits"), fields[3]);
  return LineSettings{*baud, *parity, *dataBits, *stopBits};
}

int bitsPerByte(const LineSettings& settings) {
  constexpr int startBits = 1;
  return startBits + settings.dataBits + (settings.parity == Parity::none ? 0 : 1) +
         settings.stopBits;
}

std::chrono::nanoseconds byteTime(const LineSettings& settings) {
  return std::chrono::nanoseconds(std::chrono::seconds(1)) * bitsPerByte(settings) / settings.baud;
}

std::string describe(const LineSettings& settings) {
  return std::to_string(settings.baud) + ',' + static_cast<char>(settings.parity) + ',' +
         std::to_string(settings.dataBits) + ',' + std::to_string(settings.stopBits);
}

}  // namespace touch
