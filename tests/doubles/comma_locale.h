#pragma once

#include <clocale>
#include <cstdlib>
#include <locale>
#include "tests/doubles/test.h"

namespace touch::test {

/// As long as it lives, the decimal separator is a comma and thousands are grouped: for C, as a
/// program has it that was started in Germany, and for streams.
class CommaLocale {
 public:
  CommaLocale() : before_(std::setlocale(LC_ALL, nullptr)), streams_(std::locale()) {
    std::locale::global(std::locale(std::locale(), std::make_unique<Comma>().release()));
#if !defined(_WIN32)
    setenv("LOCPATH", LOCALES, 1);
#endif
    if (!std::setlocale(LC_ALL, "de_DE.UTF-8")) throw std::runtime_error("no German locale");
  }
  CommaLocale(const CommaLocale&) = delete;
  CommaLocale& operator=(const CommaLocale&) = delete;
  ~CommaLocale() {
    std::locale::global(streams_);
    std::setlocale(LC_ALL, before_.c_str());
  }

 private:
  struct Comma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };
  std::string before_;
  std::locale streams_;
};

}  // namespace touch::test
