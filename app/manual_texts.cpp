#include <array>

#include "app/manual.h"

namespace touch {

namespace {

using Entry = Manual::Entry;

constexpr Entry messageTexts{"errmsg.txt", "Message texts in place of the built-in ones."};
constexpr Entry reportForms{"zevrik.fmt", "Further forms of touch reports."};
constexpr Entry backups{
    "backup/", "The parameter blocks from before each change, and a journal of every word."};
constexpr std::array shellFiles{messageTexts, reportForms, backups};
constexpr std::array windowFiles{
    messageTexts,
    reportForms,
    backups,
    Entry{"pic01.jpg", "A picture in the main window."},
    Entry{"Zevrik.ico", "The main window's icon."},
    Entry{"cursoroff.txt", "What the user is told about hiding the cursor."},
};

constexpr std::array<std::string_view, 2> windowDescription{
    "The program works on the touch driver library that is installed on the machine. With "
    "--simulate it works on simulated controllers, where you use the mouse as your finger.",
    "Files are looked for, and kept, in the folder that --work-dir names."};
constexpr std::array windowStatus{
    Entry{"0", "done"},
    Entry{"1", "the trace, the message texts or a commissioning cannot be used"},
    Entry{"2", "wrong use"},
    Entry{"3", "no driver"},
};
constexpr std::array windowExamples{
    Entry{"touchutility --simulate", "Look around without a controller."},
    Entry{"touchutility --simulate-from A-17-2026-11-27",
          "Have the controller and the panel of this commissioning before you."},
    Entry{"touchutility --com 3=/dev/ttyUSB0", "COM3 is an adapter on the USB."},
};

constexpr std::array<std::string_view, 2> shellDescription{
    "Every command works on the touch driver library that is installed on the machine, or with "
    "--simulate on simulated controllers, which are new in every run. Results go to the standard "
    "output, messages and questions to the error output. Without a terminal questions are answered "
    "no, unless --yes is given.",
    "The options of the program hold for every command and may stand before or after its name."};
constexpr std::array shellStatus{
    Entry{"0", "done"},          Entry{"1", "refused or failed"},
    Entry{"2", "wrong use"},     Entry{"3", "no driver, or it hung or crashed"},
    Entry{"4", "no controller"}, Entry{"5", "a measurement is incomplete"},
};
constexpr std::array shellExamples{
    Entry{"touchctl --simulate demo", "The main job in one go, without a controller."},
    Entry{"touchctl info --json", "Who the controller is and how it is set, for a script."},
    Entry{"touchctl set right-click-time 800", "Change a setting."},
    Entry{"touchctl params diff good.vrq || touchctl --yes params load good.vrq",
          "Put a kept calibration back when it has changed."},
    Entry{"touchctl measure lines --panel-size 344.5x193.5 lines.fdw",
          "Judge saved lines; status 1 when one fails, 5 when one is missing."},
};

constexpr std::array simulatorFiles{Entry{"XDG_RUNTIME_DIR/touchsim-pts-5",
                                          "The socket by which 'touchsim touch', 'pause' and the "
                                          "like reach the controller on /dev/pts/5. Only its user "
                                          "may use it."}};
constexpr std::array<std::string_view, 1> simulatorDescription{
    "The device behaves like a serial port with a controller on it, for any program that talks to "
    "one. It goes when the program ends. A second touchsim is the finger: 'touchsim touch X Y'. It "
    "also holds, steps and moves a recording that is played."};
constexpr std::array simulatorStatus{
    Entry{"0", "ended by Ctrl+C, or what was asked of another is done"},
    Entry{"1",
          "no port to be at, a file that cannot be read, a script that failed, or no "
          "simulated controller to be reached"},
    Entry{"2", "wrong use"},
};
constexpr std::array simulatorExamples{
    Entry{"touchsim --strokes circles", "A controller on which a finger draws circles."},
    Entry{"touchsim --replay customer.txt",
          "Answer as the customer's controller did when it was recorded."},
    Entry{"touchsim --simulate-from A-17-2026-11-27",
          "Be the controller of this commissioning, with its panel."},
    Entry{"touchsim touch 0.5 0.5", "Tap the middle of its panel, from another terminal."},
    Entry{"touchsim --play customer.txt --replay-speed 10",
          "Send what it sent then, ten times as fast."},
    Entry{"touchsim seek 3600", "Go on an hour from its beginning, from another terminal."},
    Entry{"touchctl --com 2=/dev/pts/5 serial monitor --port 2 --no-driver",
          "Show what it reports, where it has printed /dev/pts/5."},
};

}  // namespace

constexpr Manual touchutilityManual{windowDescription, windowStatus, windowFiles, windowExamples,
                                    "touchctl(1), touchsim(1)"};
constexpr Manual touchctlManual{shellDescription, shellStatus, shellFiles, shellExamples,
                                "touchutility(1), touchsim(1)"};
constexpr Manual touchsimManual{simulatorDescription, simulatorStatus, simulatorFiles,
                                simulatorExamples, "touchctl(1), touchutility(1)"};

}  // namespace touch
