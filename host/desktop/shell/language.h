// The language of the program's own texts, and of what desks say as far as it is known. The
// controllers' own texts are as they are.
#pragma once

#include <QString>
#include <QTranslator>
#include <array>

namespace qorhost {

struct LanguageName {
  const char* key;   ///< as the settings keep it
  const char* name;  ///< in the language itself
};

/// English first, which needs no translation.
inline constexpr std::array kLanguages{LanguageName{"en", "English"},
                                       LanguageName{"de", "Deutsch"}};

/// The one of kLanguages that the program speaks under a key: its own, for "" the system's where it
/// is one of them, else English.
[[nodiscard]] QString LanguageFor(const QString& key);

/// Translates windows that are made while it lives. Where the build has no translations, all is
/// English.
class Language {
 public:
  /// A key of kLanguages; "" is the system's language.
  explicit Language(const QString& key);
  ~Language();
  Language(const Language&) = delete;
  Language& operator=(const Language&) = delete;

  [[nodiscard]] bool isTranslated() const { return !own_.isEmpty(); }

 private:
  QTranslator own_;
  QTranslator ofQt_;
};

}  // namespace qorhost
