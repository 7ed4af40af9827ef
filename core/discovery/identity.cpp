#include "core/discovery/identity.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "core/exchange/exchange.h"
#include "support/clock.h"
#include "support/text/language.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

bool contains(std::string_view text, std::string_view part) {
  return text.find(part) != text.npos;
}

}  // namespace

Identity readfw(const Access& access) {
  Connection connection(access);
  Identity identity;
  identity.unitType =
      ask(connection, access.clock, commandFrame("UT"), {.wait = enquiryWait}).text();
  identity.firmware =
      ask(connection, access.clock, commandFrame("OI"), {.wait = enquiryWait}).text();
  return identity;
}

ModelProbe conMT(const Access& access) {
  Connection connection(access);
  connection.flush();
  const Reply reply = ask(connection, access.clock, commandFrame("Uu"), {.wait = enquiryWait});
  const bool newer = reply.size() == 10 && reply.bytes[9] == '2';
  return newer ? ModelProbe::newerModel : ModelProbe::other;
}

std::string modelName(const std::string& unitType) {
  constexpr std::array<std::string_view, 4> variants = {"01", "03", "04", "05"};
  if (unitType == "QMRV1000") return say("discovery", "first model");
  if (!contains(unitType, "QRMV") && !contains(unitType, "QMRV")) return {};
  const std::string selector = unitType.substr(std::max<std::size_t>(unitType.size(), 2) - 2);
  const bool known = std::find(variants.begin(), variants.end(), selector) != variants.end();
  return known ? filled(say("discovery", "model variant %1"), {selector}) : std::string();
}

bool wantsClosingParameter(const std::string& firmware) {
  return firmware.ends_with("30100");
}

bool isSerialController(const std::string& name) {
  return contains(name, "RS");
}

std::vector<std::string> controllerInformation(const Access& access) {
  std::vector<std::string> lines;
  if (isSerialController(access.session.controllerName)) {
    lines = {"RS232", "- Baudrate : 9600, N, 8, 1"};
  } else {
    lines = {"USB", "- Version : 1.1"};
  }
  Connection connection(access);
  const Frame outputIdentity = commandFrame("OI");
  // The first write only wakes the controller; what it answers to that is thrown away.
  connection.write(outputIdentity);
  access.clock.delay(enquiryWait);
  connection.flush();
  const Reply identity = ask(connection, access.clock, outputIdentity, {.wait = enquiryWait});
  const Reply unitType = ask(connection, access.clock, commandFrame("UT"), {.wait = enquiryWait});

  lines.push_back("Output Identity : " + toUtf8(identity.text()));
  const std::string type = unitType.text();
  if (contains(type, "QMRV") || contains(type, "QRMV")) {
    lines.push_back("Unit Type : " + toUtf8(type));
  }
  return lines;
}

}  // namespace touch
