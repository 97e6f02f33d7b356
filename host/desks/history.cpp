#include "host/desks/history.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>

#include "frame/base64.h"
#include "frame/convert.h"
#include "frame/date.h"
#include "frame/runtime_error.h"
#include "host/desks/input_fault.h"
#include "host/desks/name_words.h"
#include "host/desks/typed_input.h"
#include "host/desks/whole_number.h"
#include "host/desks/words.h"
#include "host/dialect/canonical_date.h"

namespace qorhost {

namespace {

using qorcred::Null;
using qorcred::Value;

constexpr std::size_t kHashLength = 64;

/// Whether the text holds a part, which is folded already.
bool Holds(std::string_view text, const std::u32string& part) {
  return part.empty() || FoldedText(text).find(part) != std::u32string::npos;
}

std::optional<std::int64_t> EntryNumber(std::string_view text) {
  return WholeNumberIn(text, {0, std::numeric_limits<std::int64_t>::max()});
}

/// The first moment that is asked for, as the entries carry it.
std::string FirstMoment(DeskSession& session, std::string_view since) {
  if (since.empty()) {
    return {};
  }
  if (since.back() == 'd') {
    static constexpr NumberRange kDaysBack{0, 99'999};
    const auto days = WholeNumberIn(since.substr(0, since.size() - 1), kDaysBack);
    if (!days) {
      throw InputFault(history_input::kSince, since,
                       fmt::format("{{field}} '{{value}}' is no number of days: write 0d to {}d",
                                   kDaysBack.highest));
    }
    return dialect::CanonicalDate(qorcred::AddDays(session.Today(), -static_cast<double>(*days)));
  }
  try {
    return dialect::CanonicalDate(ReadMoment(history_input::kSince, since, TimeOf::kUtc).date);
  } catch (const InputFault& fault) {
    throw InputFault(fault.field(), since,
                     fault.reason() + "; or how many days ago: 7d is from a week ago on");
  }
}

bool IsAbout(const RowChange& change, const std::u32string& subject) {
  const auto holds = [&subject](const StoredCell& cell) {
    return Holds(qorcred::TextOrEmpty(cell.value), subject);
  };
  return std::any_of(change.before.begin(), change.before.end(), holds) ||
         std::any_of(change.after.begin(), change.after.end(), holds);
}

bool IsAbout(const WorkEntry& entry, const std::vector<RowChange>& rows,
             const std::u32string& subject) {
  return Holds(entry.what, subject) ||
         std::any_of(rows.begin(), rows.end(),
                     [&subject](const RowChange& change) { return IsAbout(change, subject); });
}

std::string_view WordOf(RowChangeKind kind) {
  switch (kind) {
    case RowChangeKind::kInserted:
      return "new";
    case RowChangeKind::kUpdated:
      return "changed";
    case RowChangeKind::kDeleted:
      break;
  }
  return "deleted";
}

/// "Tenants: 1 changed; CredentialBank: 40 new", the tables in the order of their first changes.
std::string Summary(const std::vector<RowChange>& rows) {
  struct Count {
    std::string_view table;
    RowChangeKind kind;
    std::int64_t rows;
  };
  std::vector<Count> counts;
  for (const RowChange& change : rows) {
    const auto same = std::find_if(counts.begin(), counts.end(), [&change](const Count& count) {
      return count.table == change.table && count.kind == change.kind;
    });
    const std::int64_t more = change.lastRid - change.rid + 1;
    if (same == counts.end()) {
      counts.push_back({change.table, change.kind, more});
    } else {
      same->rows += more;
    }
  }
  std::string text;
  for (const Count& count : counts) {
    text += fmt::format("{}{}: {} {}", text.empty() ? "" : "; ", count.table, count.rows,
                        WordOf(count.kind));
  }
  return text;
}

/// When it was made; the text that is there where that is no date.
Value MomentOf(const WorkEntry& entry) {
  const auto moment = dialect::FromCanonicalDate(entry.at);
  return moment ? Value(*moment) : Value(entry.at);
}

Value CellOf(const std::vector<StoredCell>& cells, std::string_view column) {
  const auto found = std::find_if(cells.begin(), cells.end(), [column](const StoredCell& cell) {
    return cell.column == column;
  });
  return found == cells.end() ? Value(Null{}) : found->value;
}

}  // namespace

List HistoryList(DeskSession& session, const HistoryQuery& query) {
  const std::string since = FirstMoment(session, query.since);
  const std::u32string who = FoldedText(query.who);
  const std::u32string subject = FoldedText(query.subject);
  AuditLog& audit = session.sql().audit();
  List list;
  list.title = "What was done";
  list.fields = {{"Entry", "entry", FieldKind::kNumber},
                 {"Time", "time", FieldKind::kDate, TimeOf::kUtc},
                 {"Who", "who"},
                 {"Unit", "unit", FieldKind::kNumber},
                 {"What", "what"},
                 {"Rows", "rows"},
                 {"From", "from"}};
  list.fields.back().isExtra = true;
  list.latestLast = true;
  std::vector<WorkEntry> entries = audit.After(0, query.unitKey);
  std::reverse(entries.begin(), entries.end());
  for (const WorkEntry& entry : entries) {
    if (entry.at < since || !Holds(entry.who, who)) {
      continue;
    }
    const std::vector<RowChange> rows = audit.RowsOf(entry.entry);
    if (!IsAbout(entry, rows, subject)) {
      continue;
    }
    list.rows.push_back({static_cast<double>(entry.entry), MomentOf(entry), entry.who,
                         entry.unitKey ? Value(*entry.unitKey) : Value(Null{}), entry.what,
                         Summary(rows), entry.origin});
    if (list.rows.size() == query.latest) {
      break;
    }
  }
  std::reverse(list.rows.begin(), list.rows.end());
  return list;
}

WorkEntry EntryOf(DeskSession& session, std::string_view number) {
  if (const auto entry = EntryNumber(number)) {
    if (auto found = session.sql().audit().Find(*entry)) {
      return std::move(*found);
    }
  }
  throw InputFault(history_input::kEntry, number, "there is no entry '{value}' in the history",
                   InputFault::Kind::kSeeList);
}

namespace {

/// The columns of which a change tells.
const std::vector<StoredCell>& CellsOf(const RowChange& change) {
  return change.kind == RowChangeKind::kDeleted ? change.before : change.after;
}

/// As it is stored, but the capacity of a type as the number that it stands for.
class ReadableCells {
 public:
  explicit ReadableCells(DeskSession& session) : session_(session) {}

  Value Of(const std::string& table, const std::string& column, Value stored) {
    const auto* text = stored.As<std::string>();
    if (table != "UNITTYPES" || column != "TOTAL" || text == nullptr) {
      return stored;
    }
    try {
      return qorcred::ToInteger(decoder_.Decode(session_.ownHost(), *text));
    } catch (const qorcred::RuntimeError&) {
      return stored;
    }
  }

 private:
  DeskSession& session_;
  qorcred::Base64Decoder decoder_;
};

Table ChangeTable(DeskSession& session, const std::vector<RowChange>& changes, NamedFor reader) {
  ReadableCells readable(session);
  Table table;
  table.columns = {{"Table", "table"},   {"RID", "rid"},     {"Last RID", "last_rid"},
                   {"Change", "change"}, {"Field", "field"}, {"Before", "before"},
                   {"After", "after"}};
  for (const RowChange& change : changes) {
    const Value last =
        change.rid == change.lastRid ? Value(Null{}) : Value(static_cast<double>(change.lastRid));
    for (const StoredCell& cell : CellsOf(change)) {
      const auto shown = [&](const std::vector<StoredCell>& cells) {
        return readable.Of(change.table, cell.column, CellOf(cells, cell.column));
      };
      table.rows.push_back({change.table, static_cast<double>(change.rid), last,
                            std::string(WordOf(change.kind)),
                            std::string(NameOfColumn(change.table, cell.column, reader)),
                            shown(change.before), shown(change.after)});
    }
  }
  return table;
}

}  // namespace

Table EntryTable(DeskSession& session, std::int64_t entry, NamedFor reader) {
  return ChangeTable(session, session.sql().audit().RowsOf(entry), reader);
}

std::vector<TouchedRow> RowsTouched(DeskSession& session, std::int64_t entry) {
  std::vector<TouchedRow> rows;
  for (const RowChange& change : session.sql().audit().RowsOf(entry)) {
    const bool isSameRow =
        !rows.empty() && rows.back().table == change.table && rows.back().rid == change.rid;
    if (!isSameRow && !CellsOf(change).empty()) {
      rows.push_back({change.kind, change.table, change.rid});
    }
  }
  return rows;
}

TriedChanges ChangesTried(DeskSession& session, NamedFor reader) {
  const std::vector<RowChange>& tried = session.sql().work().tried();
  TriedChanges changes{ChangeTable(session, tried, reader), Summary(tried), 0,
                       session.sql().work().stepsQueued()};
  for (const RowChange& change : tried) {
    changes.rows += change.lastRid - change.rid + 1;
  }
  return changes;
}

std::string DescriptionOf(const WorkEntry& entry) {
  return fmt::format("entry {} ({}, by {}, {} UTC)", entry.entry, entry.what,
                     entry.who.empty() ? "somebody" : entry.who, entry.at);
}

Table HeadTable(DeskSession& session) {
  Table table;
  table.columns = {{"Unit", "unit"}, {"Last entry", "entry"}, {"Head", "head"}};
  for (const ChainHead& head : session.sql().audit().Heads()) {
    table.rows.push_back({head.unitKey, static_cast<double>(head.entry), TextOf(head)});
  }
  return table;
}

std::string TextOf(const ChainHead& head) {
  return fmt::format("{}:{}:{}", head.unitKey, head.entry, head.hash);
}

ChainHead ReadHead(std::string_view given) {
  const std::size_t first = given.find(':');
  const std::size_t second = first == std::string_view::npos ? first : given.find(':', first + 1);
  if (second != std::string_view::npos) {
    const auto unit = WholeNumber(given.substr(0, first));
    const auto entry = EntryNumber(given.substr(first + 1, second - first - 1));
    const std::string_view hash = given.substr(second + 1);
    if (unit && entry && hash.size() == kHashLength) {
      return {*unit, *entry, std::string(hash)};
    }
  }
  throw InputFault(history_input::kHead, given,
                   "{field} '{value}' is no head, which is UNIT:ENTRY:HASH",
                   InputFault::Kind::kSeeList);
}

std::vector<std::string> FaultsOfHistory(DeskSession& session,
                                         const std::vector<ChainHead>& noted) {
  const Undoable oneState = session.OneState();
  AuditLog& audit = session.sql().audit();
  std::vector<std::string> faults;
  for (const ChainFault& fault : audit.Check()) {
    switch (fault.kind) {
      case ChainFault::Kind::kAltered:
        faults.push_back(fmt::format(
            "entry {} is not as it was written, or one that it follows is not", fault.entry));
        break;
      case ChainFault::Kind::kMissing:
        faults.push_back(fmt::format("entry {} is missing", fault.entry));
        break;
      case ChainFault::Kind::kUnreadable:
        faults.push_back(fmt::format("the rows of entry {} cannot be read", fault.entry));
        break;
    }
  }
  for (const ChainHead& head : noted) {
    if (audit.HashOf(head.entry) != head.hash) {
      faults.push_back(fmt::format("entry {} of unit {} is not the one that was noted", head.entry,
                                   head.unitKey));
    }
  }
  return faults;
}

}  // namespace qorhost
