#include "host/desktop/screens/wanted_text.h"

#include <algorithm>

#include "host/desktop/binding/qt_text.h"

namespace qorhost {

WantedText::WantedText(const QString& text)
    : text_(text), plain_(Plain(FromQt(text))), words_(WordsOf(FromQt(text))) {}

bool WantedText::IsIn(const QString& cell) const {
  return cell.contains(text_, Qt::CaseInsensitive) || HasWords(FromQt(cell));
}

bool WantedText::IsIn(const QStringList& cells) const {
  return std::any_of(
             cells.begin(), cells.end(),
             [this](const QString& cell) { return cell.contains(text_, Qt::CaseInsensitive); }) ||
         HasWords(FromQt(cells.join(QLatin1Char('\n'))));
}

bool WantedText::HasWords(const std::string& row) const {
  if (words_.words().empty()) {
    return false;  // signs alone, which are no words
  }
  if (Plain(row).find(plain_) != std::string::npos) {
    return true;
  }
  static NameReader reader;
  return words_.MatchOf(reader.Read({row})) != NameMatch::kNone;
}

}  // namespace qorhost
