#include "console/main/frmHeader.h"

#include <QBuffer>
#include <QHBoxLayout>
#include <QIcon>
#include <QImageReader>
#include <QLabel>

#include "console/working_folder/picture_file.h"
#include "ui/controls/graphic.h"
#include "ui/style/colours.h"
#include "ui/text.h"

namespace touch {

namespace {

constexpr int pictureHeight = 56;
constexpr int widestPicture = 200;

/// They stay where they are: a picture may be large.
QByteArray bytesOf(const PictureFile& picture) {
  return QByteArray::fromRawData(picture.content.data(),
                                 static_cast<qsizetype>(picture.content.size()));
}

// Pictures come from a file that anybody may have put there: a larger one is not worth its memory.
constexpr int largestPictureMegabytes = 80;

}  // namespace

frmHeader::frmHeader(bool simulated) : picture_(new QLabel) {
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  picture_->setObjectName("lblPicture");
  presentAsGraphic(*picture_, tr("Picture"), tr("The picture \"pic01.jpg\" of the working folder"));
  picture_->hide();
  row->addWidget(picture_);
  if (simulated) {
    auto* const notice = new QLabel(tr("Simulation: use the mouse as your finger"));
    notice->setObjectName("simulationNotice");
    notice->setWordWrap(true);
    // Not by a style sheet: its machinery is a fair part of the time to the first picture.
    const Colours& colours = coloursOf(notice->palette());
    QPalette own = notice->palette();
    own.setColor(notice->backgroundRole(), colours.remarkSoft);
    own.setColor(notice->foregroundRole(), colours.remark);
    notice->setPalette(own);
    notice->setAutoFillBackground(true);
    notice->setContentsMargins(8, 2, 8, 2);
    row->addWidget(notice, 1);
  } else {
    row->addStretch(1);
  }
  auto* const version = new QLabel(shownText(versionText));
  version->setObjectName("lblVersion");
  row->addWidget(version);
}

Pictures frmHeader::pictures() {
  return {[this](const std::filesystem::path& file) { return showPicture(file); },
          [this](const std::filesystem::path& file) { return showIcon(file); }};
}

Result<void, std::string> frmHeader::showPicture(const std::filesystem::path& file) {
  const auto read = readPicture(file);
  if (!read) {
    return tl::unexpected(tr("The picture %1 cannot be shown: expected %2, found %3")
                              .arg(shownText(file.string()), shownText(read.error().expected),
                                   shownText(read.error().found))
                              .toStdString());
  }
  QImageReader::setAllocationLimit(largestPictureMegabytes);
  QByteArray content = bytesOf(*read);
  QBuffer buffer(&content);
  QImageReader reader(&buffer, QByteArray::fromStdString(std::string(read->format)));
  const qreal ratio = devicePixelRatioF();
  const QSizeF room = QSizeF(widestPicture, pictureHeight) * ratio;
  const QSize size = reader.size();
  // Some decoders take a fraction of the memory and time for a small picture.
  if (size.isValid()) reader.setScaledSize(size.scaled(room.toSize(), Qt::KeepAspectRatio));
  const QImage image = reader.read();
  if (image.isNull()) {
    return tl::unexpected(tr("The picture %1 cannot be shown: %2")
                              .arg(shownText(file.string()), reader.errorString())
                              .toStdString());
  }
  QPixmap pixmap = QPixmap::fromImage(
      image.scaled(room.toSize(), Qt::KeepAspectRatio, Qt::SmoothTransformation));
  pixmap.setDevicePixelRatio(ratio);
  picture_->setPixmap(pixmap);
  picture_->show();
  return {};
}

Result<void, std::string> frmHeader::showIcon(const std::filesystem::path& file) {
  const auto read = readPicture(file);
  if (!read) {
    return tl::unexpected(tr("The icon %1 cannot be shown: expected %2, found %3")
                              .arg(shownText(file.string()), shownText(read.error().expected),
                                   shownText(read.error().found))
                              .toStdString());
  }
  QByteArray content = bytesOf(*read);
  QBuffer buffer(&content);
  QImageReader reader(&buffer, QByteArray::fromStdString(std::string(read->format)));
  QIcon icon;
  do {
    const QImage image = reader.read();
    if (!image.isNull()) icon.addPixmap(QPixmap::fromImage(image));
  } while (reader.jumpToNextImage());
  if (icon.availableSizes().isEmpty()) {
    return tl::unexpected(tr("The icon %1 cannot be shown: it holds no picture")
                              .arg(shownText(file.string()))
                              .toStdString());
  }
  window()->setWindowIcon(icon);
  return {};
}

}  // namespace touch
