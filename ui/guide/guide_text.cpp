#include "ui/guide/guide_text.h"

#include <QRegularExpression>

namespace touch {

QString anchorOf(const QString& heading) {
  static const QRegularExpression dropped("[^\\w\\s-]",
                                          QRegularExpression::UseUnicodePropertiesOption);
  return heading.toLower().remove(dropped).replace(' ', '-');
}

std::vector<GuideChapter> chaptersOf(const QString& markdown) {
  static const QRegularExpression headingLine("^(#+) +(.*)$");
  std::vector<GuideChapter> chapters(1);
  bool isCode = false;
  for (const QString& line : markdown.split('\n')) {
    if (line.trimmed().startsWith("```")) isCode = !isCode;
    if (const auto found = headingLine.match(line); !isCode && found.hasMatch()) {
      const QString heading = found.captured(2);
      if (found.capturedLength(1) == 2) chapters.push_back({heading, {}, {}});
      chapters.back().anchors.push_back(anchorOf(heading));
    }
    chapters.back().markdown += line + '\n';
  }
  return chapters;
}

}  // namespace touch
