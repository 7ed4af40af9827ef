#include "measure/windows/frmLimitsBox.h"

#include <QSignalBlocker>
#include <algorithm>
#include <utility>

#include "measure/files/measurement_file.h"
#include "ui/text.h"
#include "ui/text_file_dialogs.h"

namespace touch::measure {

namespace {

/// What stands for the limits of a measurement.
constexpr QLatin1String keepThem("/");  // no file and no profile has this name

}  // namespace

frmLimitsBox::frmLimitsBox(Prompt& prompt, MeasureSetup& setup, std::filesystem::path folder)
    : prompt_(prompt), setup_(setup), folder_(std::move(folder)) {
  setObjectName("limits");
  setAccessibleName(tr("Limits"));
  // A long explanation must not make the page wider than the screen.
  setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  constexpr int shortest = 12;
  setMinimumContentsLength(shortest);
  refresh();
  connect(this, &QComboBox::activated, this, &frmLimitsBox::choose);
}

void frmLimitsBox::refresh() {
  const QSignalBlocker quiet(this);
  clear();
  for (const Profile& profile : profiles())
    addItem(tr("%1: %2").arg(shownText(profile.name), spokenText("measure", profile.words)),
            shownText(profile.name));
  if (findProfile(setup_.limitsName) == nullptr)
    addItem(shownText(setup_.limitsName), shownText(setup_.limitsName));
  addItem(tr("From a file …"));
  setCurrentIndex(findData(shownText(setup_.limitsName)));
}

void frmLimitsBox::showLimits(const Limits& limits) {
  refresh();
  if (limits == setup_.limits) return;
  const QSignalBlocker quiet(this);
  const auto known = std::ranges::find(profiles(), limits, &Profile::limits);
  if (known == profiles().end()) insertItem(0, tr("those of the measurement"), keepThem);
  setCurrentIndex(known == profiles().end() ? 0 : findData(shownText(known->name)));
}

void frmLimitsBox::choose(int index) {
  if (itemData(index).toString() == keepThem) return;
  if (const QVariant name = itemData(index); name.isValid()) {
    if (const Profile* profile = findProfile(name.toString().toStdString())) {
      setup_.limits = profile->limits;
      setup_.limitsName = profile->name;
    }
  } else if (const auto file =
                 askFileToOpen(window(), tr("Open limits"), folder_, "JSON (*.json)")) {
    const auto read = readLimits(*file);
    if (read) {
      setup_.limits = *read;
      setup_.limitsName = file->filename().string();
    } else {
      prompt_.message(read.error().describe());
    }
  }
  refresh();
  emit limitsChanged();
}

}  // namespace touch::measure
