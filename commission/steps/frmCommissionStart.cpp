#include "commission/steps/frmCommissionStart.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "measure/windows/frmFields.h"
#include "support/text/text_encoding.h"
#include "ui/controls/finger_style.h"
#include "ui/controls/scrollable.h"
#include "ui/style/face_style.h"
#include "ui/text.h"

namespace touch::commission {

namespace {

QPushButton* makeButton(const char* name, const QString& caption) {
  auto* const button = new QPushButton(caption);
  button->setObjectName(name);
  button->setAutoDefault(true);
  button->setMinimumWidth(3 * fingerSize());
  makeFingerSized(*button);
  return button;
}

}  // namespace

frmCommissionStart::frmCommissionStart(QWidget* parent)
    : QWidget(parent), profile_(new QComboBox), use_(new QComboBox), folder_(new QLabel) {
  setObjectName("commissionStart");
  auto* const content = new QWidget;
  rows_ = new QVBoxLayout(content);
  auto* const title = new QLabel(tr("Commission a panel"));
  title->setFont(resized(title->font(), 1.5));
  auto* const told = new QLabel(
      tr("Leads you from the plugged cable to the sheet that you hand over. You can stop at any "
         "time: everything is kept, and the run goes on where it was."));
  told->setWordWrap(true);
  rows_->addWidget(title);
  rows_->addWidget(told);
  rows_->addWidget(makeChoices());
  rows_->addStretch();
  auto* const page = new ScrolledPage;
  page->put(content, makeButtons());
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(page);
}

QWidget* frmCommissionStart::makeChoices() {
  auto* const group = new QGroupBox(tr("A new run"));
  auto* const form = new QFormLayout(group);
  profile_->setObjectName("commissionProfile");
  const auto minutes = [](Profile profile) { return QString::number(durationOf(profile).count()); };
  profile_->addItem(tr("quick: ten lines, nine taps, coverage (about %1 minutes in all)")
                        .arg(minutes(Profile::quick)));
  profile_->addItem(tr("full: all lines, 25 targets, resting finger, coverage (about %1 minutes)")
                        .arg(minutes(Profile::full)));
  use_->setObjectName("commissionUse");
  for (const measure::Profile& profile : measure::profiles())
    use_->addItem(spokenText("measure", profile.words), shownText(profile.name));
  for (QComboBox* const box : {profile_, use_}) {
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(20);
    makeFingerSized(*box);
  }
  measure::addField(*form, tr("&Measurement:"), profile_, profile_);
  measure::addField(*form, tr("The panel is &for:"), use_, use_);
  measure::addField(*form, tr("Saved in:"), makeFolderRow(), nullptr);
  return group;
}

QWidget* frmCommissionStart::makeFolderRow() {
  auto* const row = new QWidget;
  auto* const columns = new QHBoxLayout(row);
  columns->setContentsMargins(0, 0, 0, 0);
  folder_->setObjectName("commissionFolder");
  folder_->setWordWrap(true);
  auto* const choose = makeButton("cmdStartFolder", tr("C&hoose …"));
  choose->setAccessibleDescription(tr("Chooses the folder that runs are saved in"));
  connect(choose, &QPushButton::clicked, this, &frmCommissionStart::folderRequested);
  columns->addWidget(folder_, 1);
  columns->addWidget(choose);
  return row;
}

QWidget* frmCommissionStart::makeButtons() {
  auto* const row = new QWidget;
  auto* const buttons = new QHBoxLayout(row);
  auto* const begin = makeButton("cmdBegin", tr("&Begin"));
  setKind(*begin, ButtonKind::primary);
  connect(begin, &QPushButton::clicked, this, &frmCommissionStart::beginRequested);
  auto* const leave = makeButton("cmdLeaveCommissionStart", tr("Lea&ve"));
  connect(leave, &QPushButton::clicked, this, &frmCommissionStart::leaveRequested);
  // Far from where the main window has "Exit", which a second tap would meet.
  buttons->addWidget(leave);
  buttons->addStretch();
  buttons->addWidget(begin);
  setTabOrder(begin, leave);
  return row;
}

void frmCommissionStart::offer(std::vector<UnfinishedRun> unfinished,
                               const std::filesystem::path& folder) {
  folder_->setText(shownText(utf8Of(folder)));
  delete unfinished_;
  unfinished_ = nullptr;
  if (unfinished.empty()) return;
  constexpr std::size_t mostOffered = 3;
  if (unfinished.size() > mostOffered) unfinished.resize(mostOffered);
  auto* const group = new QGroupBox(tr("Not finished yet"));
  auto* const column = new QVBoxLayout(group);
  for (const UnfinishedRun& one : unfinished) {
    const QString serial = shownText(one.run.panel.serialNumber);
    const QString caption =
        tr("Go on with %1, begun %2, %3 % done")
            .arg(serial.isEmpty() ? tr("a panel without a serial number") : serial,
                 shownText(one.run.began.substr(0, 10)))
            .arg(static_cast<int>(100 * progress(one.run)));
    auto* const button = makeButton("cmdGoOn", QString(caption).replace('&', "&&"));
    // No letter of the caption would do: it has a serial number in it, and others are like it.
    const QKeySequence key(Qt::ALT | static_cast<Qt::Key>(Qt::Key_1 + column->count()));
    button->setShortcut(key);
    button->setToolTip(key.toString(QKeySequence::NativeText));
    connect(button, &QPushButton::clicked, this, [this, one] { emit goOnRequested(one); });
    column->addWidget(button);
  }
  rows_->insertWidget(2, group);
  unfinished_ = group;
}

Profile frmCommissionStart::profile() const {
  return profile_->currentIndex() == 0 ? Profile::quick : Profile::full;
}

std::string frmCommissionStart::use() const {
  return use_->currentData().toString().toStdString();
}

void frmCommissionStart::takeFocus() {
  auto* const goOn = findChild<QPushButton*>("cmdGoOn");
  (goOn != nullptr ? goOn : findChild<QPushButton*>("cmdBegin"))->setFocus();
}

}  // namespace touch::commission
