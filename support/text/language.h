#pragma once

#include <initializer_list>
#include <locale>
#include <string>
#include <string_view>

namespace touch {

/// The user's language, for texts that are made where there is no window: a facet of the global
/// locale, which a program with windows sets when it starts. A program that sets none speaks
/// English.
class Language : public std::locale::facet {
 public:
  static std::locale::id id;

  /// `source` in this language, as UTF-8; `source` itself when it is not translated. `context` is
  /// the feature whose text it is: the same English words may need others in another place.
  virtual std::string translate(const std::string& context, const std::string& source) const = 0;
};

/// The text in the user's language. Of both arguments the translators' tool reads the literals, so
/// they stand in the call, or in a `marked`.
std::string say(std::string_view context, std::string_view source);

/// `pattern` with the values in the places of %1 to %9, in whatever order the language has them.
std::string filled(std::string_view pattern, std::initializer_list<std::string_view> values);

/// `source` as it stands, for a table whose texts are said later.
constexpr const char* marked(const char* /*context*/, const char* source) {
  return source;
}

}  // namespace touch
