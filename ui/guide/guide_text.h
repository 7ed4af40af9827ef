#pragma once

#include <QString>
#include <vector>

namespace touch {

/// A chapter of a document: from a heading of level 2 to the next. The first one has none: it is
/// what stands before.
struct GuideChapter {
  QString heading;
  QString markdown;
  std::vector<QString> anchors;  ///< of all its headings
};

/// As the web makes it: lower case, no punctuation, a dash for each space.
QString anchorOf(const QString& heading);

/// In their order; at least one.
std::vector<GuideChapter> chaptersOf(const QString& markdown);

}  // namespace touch
