#include "serial/debugger/panels/frmScriptPanel.h"

#include <QCoreApplication>
#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBlock>
#include <QVBoxLayout>

#include "serial/debugger/script_player.h"
#include "ui/controls/finger_style.h"
#include "ui/text.h"
#include "ui/text_file_dialogs.h"

namespace touch {

namespace {

/// Where scripts are: the user's own, those that came with the program, or anywhere.
std::filesystem::path scriptFolder(const std::filesystem::path& workFolder) {
  const auto program = pathOf(QCoreApplication::applicationDirPath());
  for (const auto& folder : {workFolder / "scripts", program / "scripts",
                             program.parent_path() / "share/doc/touchutility/scripts"}) {
    std::error_code ignored;
    if (std::filesystem::is_directory(folder, ignored)) return folder;
  }
  return workFolder;
}

}  // namespace

frmScriptPanel::frmScriptPanel(ScriptPlayer& player, const std::filesystem::path& workFolder,
                               int columns, QWidget* parent)
    : QWidget(parent),
      player_(player),
      folder_(scriptFolder(workFolder)),
      name_(new QLabel(tr("No script is chosen."))),
      text_(new QPlainTextEdit),
      choose_(makeButton("cmdChooseScript", tr("&Choose …"))),
      run_(makeButton("cmdRunScript", tr("Run &script"))),
      pause_(makeButton("cmdPauseScript", tr("P&ause"))),
      stop_(makeButton("cmdStopScript", tr("Stop runnin&g"))) {
  name_->setObjectName("lblScript");
  name_->setWordWrap(true);
  text_->setObjectName("scriptText");
  text_->setAccessibleName(tr("Lines of the script"));
  text_->setReadOnly(true);
  text_->setTabChangesFocus(true);
  text_->setLineWrapMode(QPlainTextEdit::NoWrap);
  text_->setFont(resized(QFontDatabase::systemFont(QFontDatabase::FixedFont), 0.9));
  text_->setMinimumHeight((isSmallScreen() ? 1 : 3) * fingerSize());
  stop_->setToolTip(tr("Nothing is sent any more; the port gets its usual line settings"));

  auto* const grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setSpacing(isSmallScreen() ? 2 : 6);
  int place = 0;
  for (QPushButton* const button : {choose_, run_, pause_, stop_}) {
    grid->addWidget(button, place / columns, place % columns);
    ++place;
  }
  const int below = grid->rowCount();
  grid->addWidget(name_, below, 0, 1, columns);
  grid->addWidget(text_, below + 1, 0, 1, columns);
  grid->setRowStretch(below + 1, 1);

  connect(choose_, &QPushButton::clicked, this, &frmScriptPanel::choose);
  connect(run_, &QPushButton::clicked, this, &frmScriptPanel::runRequested);
  connect(pause_, &QPushButton::clicked, this, [this] {
    player_.pause(!player_.isPaused());
    renew(false);
  });
  connect(stop_, &QPushButton::clicked, this, [this] { player_.stop(); });
  renew(false);
}

QPushButton* frmScriptPanel::makeButton(const char* name, const QString& caption) {
  auto* const button = new QPushButton(caption);
  button->setObjectName(name);
  return button;
}

void frmScriptPanel::choose() {
  const auto file =
      askTextFileToOpen(this, tr("Choose a script"), folder_, tr("Scripts (*.tus);;All files (*)"));
  if (!file || player_.isRunning()) return;
  folder_ = file->parent_path();
  const auto chosen = player_.choose(*file);
  emit statusChanged(chosen ? QString() : shownText(chosen.error().describe()));
}

void frmScriptPanel::renew(bool possible) {
  const bool runs = player_.isRunning();
  choose_->setEnabled(!runs);
  run_->setEnabled(possible && !runs && player_.script() != nullptr);
  pause_->setEnabled(runs);
  pause_->setText(player_.isPaused() ? tr("Resu&me") : tr("P&ause"));
  stop_->setEnabled(runs);
  showLines();
  markLine();
}

void frmScriptPanel::showLines() {
  const Script* const script = player_.script();
  if (script == nullptr || script->lines == shown_) return;
  shown_ = script->lines;
  marked_ = 0;
  text_->setExtraSelections({});
  QStringList lines;
  int number = 0;
  for (const std::string& line : shown_)
    lines.append(QString("%1  %2").arg(++number, 3).arg(shownText(line)));
  text_->setPlainText(lines.join('\n'));
}

void frmScriptPanel::markLine() {
  if (const Script* const script = player_.script()) {
    const QString name = shownText(script->name);
    const QString line = QString::number(player_.line());
    name_->setText(player_.line() == 0    ? name
                   : !player_.isRunning() ? tr("%1: ended in line %2").arg(name, line)
                   : player_.isPaused()   ? tr("%1: paused in line %2").arg(name, line)
                                          : tr("%1: running, line %2").arg(name, line));
  }
  if (marked_ == player_.line()) return;
  marked_ = player_.line();
  if (marked_ == 0) return text_->setExtraSelections({});
  QTextEdit::ExtraSelection mark;
  mark.cursor = QTextCursor(text_->document()->findBlockByNumber(marked_ - 1));
  mark.format.setBackground(palette().color(QPalette::Highlight));
  mark.format.setForeground(palette().color(QPalette::HighlightedText));
  mark.format.setProperty(QTextFormat::FullWidthSelection, true);
  text_->setExtraSelections({mark});
  text_->setTextCursor(mark.cursor);
}

}  // namespace touch
