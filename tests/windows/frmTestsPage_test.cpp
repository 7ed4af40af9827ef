#include "console/frmTestsPage.h"

#include <QCheckBox>
#include <QPushButton>

#include "console/simulated_faults.h"
#include "tests/windows/drawing_desk.h"
#include "tests/windows/main_window_desk.h"

namespace touch {
namespace {

using namespace std::chrono_literals;

class TestsPage : public test::MainWindowDesk {
 protected:
  static QWidget* openWindow(const char* name) {
    for (QWidget* const top : QApplication::topLevelWidgets())
      if (top->objectName() == name && top->isVisible()) return top;
    return nullptr;
  }
};

TEST_F(TestsPage, OpensTheTestsOneAtATimeAndComesBack) {
  open();
  showPage("Tests");
  for (const auto& [button, name] :
       {std::pair("cmdDraw", "frmDraw"), std::pair("cmdLinearity", "frmLinearity")}) {
    QTest::mouseClick(find<QPushButton>(*window, button), Qt::LeftButton);
    QWidget* const opened = openWindow(name);
    ASSERT_NE(opened, nullptr) << name;
    EXPECT_FALSE(find<QPushButton>(*window, button)->isEnabled());
    EXPECT_EQ(status(), "A test is open.");
    QTest::keyClick(opened, Qt::Key_Escape);
    live(0ms);
    EXPECT_EQ(openWindow(name), nullptr);
    EXPECT_TRUE(find<QPushButton>(*window, button)->isEnabled());
    EXPECT_EQ(status(), "RS232 DEVICE 1 is ready.");
  }
  EXPECT_EQ(window->findChild<QCheckBox*>("fault_bow"), nullptr)
      << "only simulated panels have faults to switch";
}

TEST_F(TestsPage, ClosingTheMainWindowEndsTheTestFirst) {
  open();
  showPage("Tests");
  QTest::mouseClick(find<QPushButton>(*window, "cmdDraw"), Qt::LeftButton);
  window->close();
  live(0ms);
  EXPECT_EQ(openWindow("frmDraw"), nullptr);
  EXPECT_TRUE(window->isHidden());
}

class SimulatedFaults : public test::DrawingDesk {};

TEST_F(SimulatedFaults, AreSwitchedOnAndOffForEveryController) {
  const std::vector<std::string> controllers = {"RS232 DEVICE 1", "USB DEVICE 2"};
  frmTestsPage page(true);
  QObject::connect(&page, &frmTestsPage::faultSwitched, [&](const SimulatedFault* fault, bool on) {
    switchFault(*simulation, *fault, on, controllers);
  });
  const auto felt = [&](const std::string& name) {
    // Near the left edge and below the strip's upper edge: every fault but noise tells here.
    const auto report = simulation->report(0.03, 0.34, name);
    return report ? std::pair(report->x, report->y) : std::pair(-1.0, -1.0);
  };
  for (const SimulatedFault& fault : simulatedFaults) {
    auto* const box = find<QCheckBox>(page, ("fault_" + std::string(fault.trait)).c_str());
    for (const std::string& name : controllers) {
      for (const std::string& quiet : controllers)
        simulation->changePanel("noise", "0", quiet);
      const auto before = felt(name);
      box->setChecked(true);
      if (fault.trait == "noise") {
        EXPECT_NE(felt(name), felt(name));
      } else {
        EXPECT_NE(felt(name), before) << fault.trait;
      }
      box->setChecked(false);
      if (fault.trait != "noise") {
        EXPECT_EQ(felt(name), before) << fault.trait;
      }
    }
  }
  simulation->request("reset");
}

}  // namespace
}  // namespace touch
