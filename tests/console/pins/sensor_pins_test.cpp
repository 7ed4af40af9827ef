#include "console/pins/sensor_pins.h"

#include "console/pins/pin_editor.h"
#include "tests/console/parameters/parameter_controller.h"

namespace touch::test {
namespace {

const PinDefinition fourInOrder{SensorType::fourWire, {{0, 0}, {1, 1}, {2, 2}, {3, 3}}};
const PinDefinition fiveInOrder{SensorType::fiveWire, {{7, 0}, {6, 1}, {5, 2}, {4, 3}, {3, 4}}};

class SensorPins : public ParameterDesk {
 protected:
  SensorPins() {
    memory[0x80] = {0, 4};
    for (std::uint8_t i = 0; i < 4; ++i)
      memory[static_cast<std::uint8_t>(0x81 + i)] = {i, i};
    memory[0x85] = {0xFF, 0xFF};
  }
};

TEST(PinDefinitions, AreCheckedNumberByNumber) {
  const std::tuple<std::size_t, PinAssignment, const char*> cases[] = {
      {0, {8, 0}, "X+, channel: expected 0 to 7, found 8"},
      {1, {1, -1}, "X\u2212, bit: expected 0 to 7, found -1"},
      {2, {128, 2}, "Value must < 128 !!"},
      {2, {2, 1}, "X\u2212, bit: 1 is used by Y+ too"},
  };
  for (const auto& [wire, pins, told] : cases) {
    PinDefinition definition = fourInOrder;
    definition.wires[wire] = pins;
    EXPECT_EQ(checkPins(MessageTable(), definition).at(0).text, told);
  }
}

TEST_F(SensorPins, AreReadAsTheyAre) {
  EXPECT_EQ(*readPins(access()), fourInOrder);
  memory[0x83] = {0xFF, 0x80};
  EXPECT_EQ(readPins(access())->wires[2], (PinAssignment{255, 128})) << "in order or not";
  memory.erase(0x84);
  EXPECT_EQ(readPins(access()).error().reason,
            "Word 84: the controller's answer holds no parameter word");
  for (const ParameterWord& type : {ParameterWord{0, 3}, {0, 6}, {4, 4}}) {
    memory[0x80] = type;
    EXPECT_EQ(readPins(access()).error().reason, "Read Sensor Type Error!!") << wordText(type);
  }
}

TEST_F(SensorPins, AreUpdatedWithTheSensorDisconnectedAndCanBePutBack) {
  const auto before = memory;
  const auto result = updatePins(access(), prompt, backup, fiveInOrder);
  EXPECT_EQ(result.end, PinsEnd::done);
  EXPECT_EQ(said(), (Lines{"confirm Update the pin definition ??",
                           "message Disconnect the connector of touch sensor ",
                           "message Update OK ! Re-Connect the the Touch Sensor"}));
  EXPECT_EQ(written(),
            (Lines{"WriteBuffer SP810700", "WriteBuffer SP820601", "WriteBuffer SP830502",
                   "WriteBuffer SP840403", "WriteBuffer SP850304", "WriteBuffer SP800005"}));
  EXPECT_EQ(*readPins(access()), fiveInOrder);
  EXPECT_EQ(putBackPins(access(), prompt, backup, result.report.oldWords()).end, PinsEnd::done);
  EXPECT_EQ(memory, before);
}

TEST_F(SensorPins, OfTheEditorHaveTheirWayBackAfterAnyNumberOfUpdates) {
  PinEditor editor(access(), prompt, backup);
  editor.read();
  EXPECT_EQ(said(), Lines{}) << "nothing is typed that could be lost";
  editor.assign(0, {7, 7});
  prompt.answerYes = false;
  editor.read();
  EXPECT_EQ(editor.definition().wires[0], (PinAssignment{7, 7}));
  prompt.answerYes = true;
  for (const int pin : {7, 6, 7}) {
    editor.assign(0, {pin, pin});
    editor.update();
  }
  ASSERT_TRUE(editor.canPutBack());
  EXPECT_EQ(editor.putBack().text, "The pin definition is written.");
  EXPECT_EQ(*readPins(access()), fourInOrder);
  EXPECT_FALSE(editor.canPutBack());

  // The power goes in the middle of an update and stays away while the old mapping is put back;
  // then it returns.
  editor.assign(0, {7, 7});
  editor.assign(1, {6, 6});
  callsUntilPowerLoss = 9;
  editor.update();
  callsUntilPowerLoss = -1;
  ASSERT_TRUE(editor.canPutBack());
  editor.putBack();
  EXPECT_EQ(*readPins(access()), fourInOrder);

  editor.assign(0, {7, 7});
  editor.update();
  ASSERT_TRUE(editor.canPutBack());
  session.controllerName = "USB DEVICE 2";
  EXPECT_TRUE(editor.update().text.starts_with("Nothing was written: these are not the pins of"));
  // Blank memory: the first definition is the user's.
  memory[0x80] = {0xFF, 0xFF};
  editor.read();
  EXPECT_FALSE(editor.canPutBack()) << "the other controller's wiring is none of this one's";
  EXPECT_EQ(said().back(), "message Read Sensor Type Error!!");
  EXPECT_EQ(editor.update().text, "The pin definition is written.");
}

TEST_F(SensorPins, AreLeftAloneWhenTheyCannotBeUpdated) {
  const auto endOf = [this](const PinDefinition& pins) {
    journal.clear();
    return updatePins(access(), prompt, backup, pins).end;
  };
  EXPECT_EQ(endOf({SensorType::fourWire, {}}), PinsEnd::invalid);
  EXPECT_EQ(journal, Lines{"message expected 4 wires, found 0"});
  callsUntilPowerLoss = 0;
  EXPECT_EQ(endOf(fiveInOrder), PinsEnd::typeUnreadable);
  EXPECT_EQ(journal.back(), "message Read Sensor Type Error!!");
  prompt.answerYes = false;
  EXPECT_EQ(endOf(fiveInOrder), PinsEnd::declined);
  EXPECT_EQ(journal, Lines{"confirm Update the pin definition ??"});
  prompt.answerYes = true;
  // The program is ended while the sensor is still connected.
  prompt.onMessage = [this] { prompt.answers = false; };
  EXPECT_EQ(endOf(fiveInOrder), PinsEnd::declined);
  EXPECT_EQ(journal.back(), "message Disconnect the connector of touch sensor ");
}

TEST_F(SensorPins, GoBackToTheOldMappingWhenAWriteFails) {
  stuck[0x83] = {2, 2};
  const auto result = updatePins(access(), prompt, backup, fiveInOrder);
  EXPECT_EQ(result.end, PinsEnd::brokenOff);
  EXPECT_EQ(result.reason, "Written: 81, 82. Word 83: 0502 was written, 0202 was read back");
  EXPECT_EQ(said().back(), "message Update Error");
  EXPECT_EQ(*readPins(access()), fourInOrder);

  stuck[0x81] = {6, 6};
  updatePins(access(), prompt, backup, fiveInOrder);
  EXPECT_EQ(said().back(),
            "message The old pin definition is not wholly back. Written: none. "
            "Word 81: 0000 was written, 0606 was read back.");
}

}  // namespace
}  // namespace touch::test
