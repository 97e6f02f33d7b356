#include "host/desktop/words/list_words.h"

#include <QStringList>
#include <algorithm>
#include <array>
#include <span>
#include <string_view>

#include "host/desks/shown_value.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/words/desk_words.h"
#include "host/desktop/words/shown_word.h"

namespace qorhost {

namespace {

/// Fields whose cells are words of the desks.
constexpr std::array<std::string_view, 5> kWordFields{"kind", "change", "field", "differs",
                                                      "settlement"};
/// What was done, what is wrong and how to mend it, and why something is odd, in a sentence.
constexpr std::array<std::string_view, 4> kSentenceFields{"what", "fault", "advice", "reason"};
/// "Tenants: 1 changed; CredentialBank: 40 new".
constexpr std::string_view kSummaryField = "rows";

/// Reports say "Active" and "Inactive" in fields that are yes or no.
bool IsYesNo(const ListField& field, const qorcred::Value& cell) {
  return cell.As<bool>() != nullptr || field.kind == FieldKind::kYesNo ||
         field.kind == FieldKind::kYesNoText;
}

QString ShownSummary(const QString& summary) {
  QStringList parts = summary.split(QStringLiteral("; "));
  for (QString& part : parts) {
    const qsizetype blank = part.lastIndexOf(QLatin1Char(' '));
    part = part.left(blank + 1) + ShownWord(part.mid(blank + 1));
  }
  return parts.join(QStringLiteral("; "));
}

bool IsAmong(std::span<const std::string_view> keys, const std::string& key) {
  return std::find(keys.begin(), keys.end(), key) != keys.end();
}

}  // namespace

QString ShownInList(const ListField& field, const qorcred::Value& cell) {
  const QString text = ToQt(ShownText(cell));
  if (IsYesNo(field, cell) || IsAmong(kWordFields, field.key)) {
    return ShownWord(text);
  }
  if (IsAmong(kSentenceFields, field.key)) {
    return Told(FromQt(text));
  }
  return field.key == kSummaryField ? ShownSummary(text) : text;
}

QString ShownDifferences(const std::string& what) {
  const QStringList parts = ToQt(what).split(QStringLiteral(", "));
  QStringList shown;
  bool areNames = false;
  for (const QString& part : parts) {
    const QString told = Told(FromQt(part));
    shown.append(told == part && !areNames ? ShownWord(part) : told);
    areNames = areNames || part.startsWith(QLatin1String("taken from "));
  }
  return shown.join(QStringLiteral(", "));
}

Table ShownTable(const List& list) {
  Table table = ForPeople(list);
  for (TableColumn& column : table.columns) {
    column.title = FromQt(ShownTitle(column.title));
  }
  for (std::size_t row = 0; row < table.rows.size(); ++row) {
    for (std::size_t at = 0; at < table.columns.size(); ++at) {
      if (IsYesNo(list.fields[at], list.rows[row][at])) {
        table.rows[row][at] = FromQt(ShownInList(list.fields[at], list.rows[row][at]));
      }
    }
  }
  return table;
}

}  // namespace qorhost
