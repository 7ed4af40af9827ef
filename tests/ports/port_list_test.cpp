#include "ports/port_list.h"

#include "tests/doubles/test.h"

namespace touch::test {
namespace {

PortFacts at(const std::string& device, const std::string& hindrance = {}) {
  return {{.number = 17, .device = device}, "ftdi_sio", "FTDI FT232R", hindrance, {}};
}

TEST(PluggedIn, AreTheDevicesThatWereNotThere) {
  const PortFacts one = at("/dev/ttyUSB0");
  const PortFacts other = at("/dev/ttyUSB1");
  const std::tuple<const char*, std::vector<PortFacts>, std::vector<PortFacts>,
                   std::vector<std::string>>
      cases[] = {
          {"nothing", {}, {}, {}},
          {"the first", {}, {one}, {"/dev/ttyUSB0"}},
          {"another, listed in front", {other}, {one, other}, {"/dev/ttyUSB0"}},
          {"two at once", {}, {one, other}, {"/dev/ttyUSB0", "/dev/ttyUSB1"}},
          {"one went", {one, other}, {other}, {}},
          {"one in place of another", {one}, {other}, {"/dev/ttyUSB1"}},
          {"in use now", {one}, {at("/dev/ttyUSB0", "in use")}, {}},
      };
  for (const auto& [what, before, now, plugged] : cases)
    EXPECT_EQ(pluggedIn(before, now), plugged) << what;
}

TEST(CameBackAs, TheOnlyNewPortWithTheSameHardware) {
  const auto named = [](int number, const char* hardware) {
    return KnownHardware{{.number = number, .device = "/dev/ttyUSB" + std::to_string(number - 17)},
                         hardware};
  };
  using Known = std::vector<KnownHardware>;
  const std::tuple<const char*, Known, Known, int> cases[] = {
      {"under another name", {named(17, "A1")}, {named(18, "A1")}, 18},
      {"not yet", {named(17, "A1")}, {}, 0},
      {"other hardware", {named(17, "A1")}, {named(18, "B2")}, 0},
      {"its twin was there", {named(17, "A1"), named(18, "A1")}, {named(18, "A1")}, 0},
      {"beside its twin",
       {named(17, "A1"), named(18, "A1")},
       {named(18, "A1"), named(19, "A1")},
       19},
      {"two new ones", {named(17, "A1")}, {named(18, "A1"), named(19, "A1")}, 0},
  };
  for (const auto& [what, before, now, number] : cases)
    EXPECT_EQ(cameBackAs("A1", before, now).value_or(ListedPort{}).number, number) << what;
}

}  // namespace
}  // namespace touch::test
