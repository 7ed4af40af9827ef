#include "serial/debugger/panels/frmLinePanel.h"

#include "tests/serial/debugger/serial_desk.h"

namespace touch::test {
namespace {

TEST_F(SerialDesk, SetsTheLineAndCountsWhatPassesIt) {
  open();
  const auto choose = [this](const char* combo, const char* item) {
    find<QComboBox>(combo)->setCurrentText(item);
  };
  choose("comboSpeed", "19200");
  choose("comboStopBits", "2");
  live(1s);
  click("cmdUseLine");
  EXPECT_EQ(text("lblPort"), "COM1 is open, 19200,n,8,2.");
  const termios line = terminal->settings();
  EXPECT_EQ(cfgetospeed(&line), speed_t{B19200});
  EXPECT_EQ(text("lblWires"), "This port does not tell of its other wires.");
  EXPECT_FALSE(find<QWidget>("checkDtr")->isEnabled());
  choose("Combo1", "Uu=Query Format[o]");
  expected = 10;
  answers = {replyOf("UIQRMV030")};
  click("Command2_0");
  EXPECT_EQ(text("lblCounters"), "Bytes sent: 10, received: 11, damaged: 0.");
}

TEST(LinePanel, ShowsTheWiresAndWhatWentWrong) {
  frmLinePanel panel;
  panel.show(
      {.settings = {.baud = 4'000'000},
       .wires = {.dtr = false},
       .state =
           LineState{.cts = true,
                     .faults = LineFaults{.framing = 1, .parity = 2, .overruns = 3, .breaks = 4}}},
      true);
  const auto text = [&panel](const char* name) {
    return panel.findChild<QLabel*>(name)->text().toStdString();
  };
  EXPECT_EQ(text("lblWires"), "● CTS   ○ DSR   ○ DCD   ○ RI");
  EXPECT_THAT(text("lblCounters"),
              HasSubstr("Stop bit missing: 1, wrong parity: 2, overruns: 3, breaks: 4."));
  EXPECT_EQ(panel.findChild<QComboBox*>("comboSpeed")->currentText(), "4000000");
  EXPECT_FALSE(panel.findChild<QCheckBox*>("checkDtr")->isChecked()) << "as the user left it";
  std::optional<std::pair<LineSwitch, bool>> switched;
  QObject::connect(&panel, &frmLinePanel::switched, [&](LineSwitch which, bool on) {
    switched = {which, on};
  });
  panel.findChild<QCheckBox*>("checkRts")->click();
  EXPECT_EQ(switched, std::pair(LineSwitch::rts, false));
}

}  // namespace
}  // namespace touch::test
