#include "ui/controls/status_line.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>

#include "ui/text.h"

namespace touch {

namespace {

constexpr int iconSide = 16;

/// How a kind is said and drawn: never by colour alone.
struct KindLook {
  QString word;
  QString line;
  QStyle::StandardPixmap icon;
};

KindLook lookOf(NoticeKind kind) {
  switch (kind) {
    case NoticeKind::success:
      return {StatusLine::tr("OK"), StatusLine::tr("OK: %1"), QStyle::SP_DialogApplyButton};
    case NoticeKind::error:
      return {StatusLine::tr("Error"), StatusLine::tr("Error: %1"), QStyle::SP_MessageBoxCritical};
    case NoticeKind::remark:
      break;
  }
  return {StatusLine::tr("Note"), StatusLine::tr("Note: %1"), QStyle::SP_MessageBoxInformation};
}

}  // namespace

StatusLine::StatusLine(QWidget* parent) : QWidget(parent), icon_(new QLabel), text_(new QLabel) {
  icon_->setObjectName("statusIcon");
  text_->setObjectName("statusLine");
  text_->setWordWrap(true);
  icon_->setFixedSize(iconSide, iconSide);
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(icon_);
  row->addWidget(text_, 1);
}

void StatusLine::show(const Notice& status) {
  const KindLook look = lookOf(status.kind);
  if (status.text.empty()) {
    showWait({});
    return;
  }
  icon_->setAccessibleName(look.word);
  icon_->setAccessibleDescription(look.word);
  icon_->setPixmap(style()->standardIcon(look.icon).pixmap(iconSide));
  text_->setText(look.line.arg(shownText(status.text)));
}

void StatusLine::showWait(const QString& what) {
  icon_->clear();
  text_->setText(what);
}

}  // namespace touch
