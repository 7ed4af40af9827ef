#include "ui/language.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <locale>
#include <memory>

#include "support/text/language.h"

namespace touch {

namespace {

/// What the logic says, looked up where the windows' own texts are.
class WindowsLanguage final : public Language {
 public:
  std::string translate(const std::string& context, const std::string& source) const override {
    return QCoreApplication::translate(context.c_str(), source.c_str()).toStdString();
  }
};

bool install(const QString& file, const QString& folder) {
  auto translator = std::make_unique<QTranslator>(QCoreApplication::instance());
  if (!translator->load(file, folder)) return false;
  return QCoreApplication::installTranslator(translator.release());  // the application owns it
}

}  // namespace

QString systemLanguage(const QStringList& available) {
  for (const QString& wanted : QLocale::system().uiLanguages()) {
    QString language = wanted.section('-', 0, 0);
    if (available.contains(language)) return language;
  }
  return available.front();
}

bool speak(const QString& language) {
  std::locale::global(std::locale(std::locale(), new WindowsLanguage));  // the locale owns it
  if (language == "en") return true;
  if (!install("touchutility_" + language, ":/translations")) return false;
  if (!install("qtbase_" + language, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    install("qtbase_" + language, QCoreApplication::applicationDirPath() + "/translations");
  }
  return true;
}

}  // namespace touch
