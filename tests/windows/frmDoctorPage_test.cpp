#include "console/frmDoctorPage.h"

#include <gmock/gmock.h>

#include <QListWidget>
#include <QPushButton>

#include "tests/windows/main_window_desk.h"

namespace touch {
namespace {

using namespace std::chrono_literals;

class DoctorPage : public test::MainWindowDesk {
 protected:
  DoctorPage() {
    open();
    showPage("Doctor");
    live(0ms);
  }
  QString finding(int row) { return find<QListWidget>(*window, "findingsList")->item(row)->text(); }
};

TEST_F(DoctorPage, LooksWhenItIsFirstSeenAndOnRefresh) {
  auto* const tabs = find<QTabWidget>(*window, "tabs");
  EXPECT_EQ(tabs->currentIndex(), tabs->count() - 1);
  auto* const list = find<QListWidget>(*window, "findingsList");
  ASSERT_GT(list->count(), 3);
  EXPECT_EQ(find<QLabel>(*window, "lblDoctorSummary")->text() + ".", status());
  EXPECT_TRUE(tabs->isEnabled());
  EXPECT_EQ(std::count(journal.begin(), journal.end(), "OpenController USB DEVICE 2"), 1);

  showPage("Tests");
  showPage("Doctor");
  live(0ms);
  EXPECT_EQ(std::count(journal.begin(), journal.end(), "OpenController USB DEVICE 2"), 1)
      << "what was found stays until it is asked for again";
  script.names.clear();
  QTest::mouseClick(find<QPushButton>(*window, "cmdDoctorRefresh"), Qt::LeftButton);
  EXPECT_TRUE(finding(0).startsWith("Problem: The driver knows of no controller.\n"))
      << finding(0).toStdString();
  EXPECT_TRUE(finding(0).contains("\nNext: ")) << finding(0).toStdString();
  EXPECT_EQ(session.controllerName, "RS232 DEVICE 1") << "the current controller stays";
}

TEST_F(DoctorPage, SavesTheDiagnosticsFile) {
  const auto file = folder.path() / "d.zip";
  emit window->findChild<frmDoctorPage*>()->saveRequested(QString::fromStdString(file.string()));
  EXPECT_TRUE(status().startsWith("The diagnostics are saved in ")) << status().toStdString();
  EXPECT_TRUE(folder.read("d.zip").starts_with("PK"));
}

}  // namespace
}  // namespace touch
