#include "tests/serial/debugger/serial_desk.h"

namespace touch::test {
namespace {

class BytesWindow : public SerialDesk {
 protected:
  QLineEdit& line() { return *find<QLineEdit>("typedBytes"); }
};

TEST_F(BytesWindow, ShowsWhatItSendsAndKeepsIt) {
  open();
  QTest::keyClicks(&line(), "\\x0");
  EXPECT_THAT(text("lblBytes"), HasSubstr("expected text with"));
  EXPECT_FALSE(find<QWidget>("cmdSendBytes")->isEnabled());
  QTest::keyClick(&line(), Qt::Key_Return);
  QTest::keyClicks(&line(), "1OI\\r");
  EXPECT_EQ(text("lblBytes"), "01 4F 49 0D\n.OI.\nBytes: 4");
  expected = 4;
  answers = {replyOf("M0130100")};
  QTest::keyClick(&line(), Qt::Key_Return);
  EXPECT_EQ(text("lblBytesReplyText"), "M0130100");
  EXPECT_EQ(text("statusLine"), "Bytes sent: 4, received: 10.");

  find<QComboBox>("comboTypedAs")->setCurrentIndex(1);
  line().setText("55 AA");
  expected = 2;
  answers = {Bytes{}};
  click("cmdSendBytes");
  EXPECT_EQ(text("lblBytesReplyHex"), "") << "no answer is no error here";
  EXPECT_EQ(wire, (Lines{"01 4F 49 0D", "55 AA"}));
  EXPECT_EQ(count("message"), 0);

  window.reset();
  open();
  QTest::keyClick(&line(), Qt::Key_Up);
  QTest::keyClick(&line(), Qt::Key_Up);
  EXPECT_EQ(text("lblBytes"), "01 4F 49 0D\n.OI.\nBytes: 4");
  QTest::keyClick(&line(), Qt::Key_Down);
  EXPECT_EQ(line().text(), "55 AA");
}

TEST_F(BytesWindow, AsksForACommandsDigit) {
  open();
  auto* const listed = find<QComboBox>("comboListed");
  auto* const digit = find<QComboBox>("comboDigit");
  listed->setCurrentIndex(listed->findText("iE=Sensitivity Set[l]"));
  emit listed->activated(listed->currentIndex());
  EXPECT_EQ(text("lblBytes"), "Choose the digit first.");
  EXPECT_FALSE(digit->isHidden());
  digit->setCurrentIndex(2);
  emit digit->activated(2);
  EXPECT_EQ(line().text(), "\\x01iE2\\r");
  find<QRadioButton>("Option2")->click();
  EXPECT_TRUE(digit->isHidden());
  EXPECT_EQ(listed->findText("iE=Sensitivity Set[l]"), -1);
}

}  // namespace
}  // namespace touch::test
