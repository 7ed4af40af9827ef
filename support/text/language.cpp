#include "support/text/language.h"

namespace touch {

std::locale::id Language::id;

std::string say(std::string_view context, std::string_view source) {
  const std::locale locale;
  if (!std::has_facet<Language>(locale)) return std::string(source);
  return std::use_facet<Language>(locale).translate(std::string(context), std::string(source));
}

std::string filled(std::string_view pattern, std::initializer_list<std::string_view> values) {
  std::string text;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    const bool isPlace = pattern[i] == '%' && i + 1 < pattern.size() && pattern[i + 1] >= '1' &&
                         pattern[i + 1] <= '9';
    const auto place = isPlace ? static_cast<std::size_t>(pattern[i + 1] - '1') : values.size();
    if (place < values.size()) {
      text += values.begin()[place];
      ++i;
    } else {
      text += pattern[i];
    }
  }
  return text;
}

}  // namespace touch
