#include "host/desks/tenant_import_codes.h"

#include <fmt/format.h>

#include <utility>

#include "frame/convert.h"
#include "frame/text.h"
#include "host/desks/desk_error.h"
#include "host/desks/import_run.h"
#include "host/desks/list_entries.h"
#include "host/desks/listed_rows.h"
#include "host/desks/row_names.h"
#include "host/desks/tenant_file.h"
#include "host/desks/typed_input.h"

namespace qorhost {

namespace {

namespace code_field = dir_code_field;
namespace code_column = dir_code_column;

constexpr std::size_t kFirst = tenant_file_column::kCode;

/// What the line says of a code besides its number and phone number.
std::string RestOf(const ImportLine& line) {
  std::string rest;
  for (std::size_t at = code_column::kPhone + 1; at < code_column::kCount; ++at) {
    const std::string_view cell = line.Trimmed(kFirst + at);
    rest += cell.empty() ? "" : fmt::format("{}:{}\n", at, cell);
  }
  return rest;
}

}  // namespace

TenantImportCodes::TenantImportCodes(DeskSession& session, std::int32_t unitKey,
                                     const ImportFile& file, const ImportRules& rules)
    : session_(session),
      unitKey_(unitKey),
      rules_(rules),
      desk_(session, unitKey),
      lines_(desk_, kFirst, rules),
      fresh_(desk_.screen().Snapshot()) {
  std::vector<ColumnField> fields = DirCodeFields(kFirst);
  if (!file.HasColumn(kFirst) && file.HasColumn(tenant_file_column::kApartment)) {
    fields.insert(fields.begin(), {code_field::kCode, tenant_file_column::kApartment});
  }
  words_ = WordsOf(file, fields);
  byNumber_.reserve(file.lineCount());
  ReadCodes();
}

void TenantImportCodes::ReadCodes() {
  const QueryResult stored = session_.sql().Select(
      fmt::format("SELECT RID, DIRECTORYCODE, PHONENUMBER, MODIFIED FROM DIRECTORYCODE WHERE "
                  "UNITKEY={}",
                  unitKey_));
  for (const ResultRow row : stored.rows()) {
    if (!IsListedCode(row[1], row[3])) {
      continue;
    }
    const auto [place, isNew] = byNumber_.try_emplace(
        qorcred::NumericValue(row[1]),
        Code{qorcred::ToLong(row[0]), qorcred::TextOrEmpty(row[2]), 0, {}, true});
    place->second.isOnlyOne = isNew;
  }
}

std::string_view TenantImportCodes::CodeIn(const ImportLine& line) {
  const std::string_view code = line.Trimmed(kFirst + code_column::kCode);
  return code.empty() ? line.Trimmed(tenant_file_column::kApartment) : code;
}

void TenantImportCodes::RequireNumber(const ImportLine& line) const {
  const std::string_view given = CodeIn(line);
  if (given.empty() || SaysNone(given)) {
    return;
  }
  try {
    RequireNoSeparators(code_field::kCode, given);
    RequireCodeNumber(std::string(given));
  } catch (const InputFault& fault) {
    throw RefusedCell(InWords(fault, words_), WordOf(fault, words_));
  }
}

/// Where the cell stands that the screen has sent the focus to.
std::size_t TenantImportCodes::ColumnOfRefusal(const ImportLine& line) {
  const std::size_t found = ColumnOfDirCodeControl(desk_.screen().focused(), kFirst);
  const bool isApartment =
      found == kFirst + code_column::kCode && line.Trimmed(kFirst + code_column::kCode).empty();
  return isApartment ? static_cast<std::size_t>(tenant_file_column::kApartment) : found;
}

void TenantImportCodes::Begin(const ImportLine& line) {
  added_.reset();
  if (dialled_) {
    refused_.insert_or_assign(dialled_->first, dialled_->second);
  }
  dialled_.reset();
  const TakenNumber code = NumberTaken(CodeIn(line));
  if (code.isAll && !line.Trimmed(kFirst + code_column::kPhone).empty()) {
    dialled_ = {*code.value, line.number()};
  }
}

void TenantImportCodes::Keep() {
  dialled_.reset();
  if (added_) {
    byNumber_.insert(std::move(*added_));
  }
  added_.reset();
}

std::int32_t TenantImportCodes::Take(const ImportLine& line, const std::string& displayName,
                                     StoredAlready stored, ImportNotes& notes) {
  try {
    return TakeIn(line, displayName, stored, notes);
  } catch (const InputFault& fault) {
    throw RefusedCell(InWords(fault, words_), WordOf(fault, words_));
  }
}

std::int32_t TenantImportCodes::TakeIn(const ImportLine& line, const std::string& displayName,
                                       StoredAlready stored, ImportNotes& notes) {
  const std::string_view given = CodeIn(line);
  if (given.empty()) {
    const std::string_view phone = line.Trimmed(kFirst + code_column::kPhone);
    if (!phone.empty()) {
      throw InputFault(code_field::kPhone, phone,
                       "{field} '{value}' has nobody who could dial it: {code} is empty");
    }
    return 0;
  }
  if (SaysNone(given)) {
    return 0;
  }
  RequireNoSeparators(code_field::kCode, given);
  const auto known = IsWholeNumber(given) ? byNumber_.find(qorcred::Val(given)) : byNumber_.end();
  return known == byNumber_.end() ? Add(line, displayName, notes)
                                  : TakeStored(line, known->second, stored, notes);
}

std::int32_t TenantImportCodes::TakeStored(const ImportLine& line, Code& code, StoredAlready stored,
                                           ImportNotes& notes) {
  const std::string_view given = CodeIn(line);
  if (!code.isOnlyOne) {
    throw InputFault(code_field::kCode, given,
                     "{field}: several rows have the directory code '{value}'");
  }
  const bool wasThere = code.line == 0;
  if (stored == StoredAlready::kRefused) {
    throw InputFault(code_field::kCode, given, "{field} '{value}' is stored already");
  }
  if (stored == StoredAlready::kChanged && wasThere) {
    Change(line, code);
    return code.rid;
  }
  const std::string_view phone = line.Trimmed(kFirst + code_column::kPhone);
  if (!phone.empty() && phone != qorcred::Trim(code.phone)) {
    throw InputFault(
        code_field::kPhone, phone,
        fmt::format("{{field}} '{{value}}' is not what the directory code {} dials{}: "
                    "that is '{}'",
                    InReason(given), wasThere ? "" : fmt::format(" by line {}", code.line),
                    InReason(code.phone)));
  }
  if (const std::string rest = RestOf(line); !rest.empty() && rest != code.rest) {
    notes.push_back(
        fmt::format("the directory code {} stays as {}", given,
                    wasThere ? "it is stored" : fmt::format("line {} says", code.line)));
  }
  return code.rid;
}

/// What stands in the cells; the rest of the code stays.
void TenantImportCodes::Change(const ImportLine& line, Code& code) {
  const auto cell = [&line](std::size_t at) {
    const std::string_view given = line.Trimmed(kFirst + at);
    return given.empty() ? std::nullopt : std::optional<std::string>(given);
  };
  DirCodeEntry entry;
  entry.phone = cell(code_column::kPhone);
  entry.extension = cell(code_column::kExtension);
  entry.displayName = cell(code_column::kDisplayName);
  if (entry.displayName) {
    entry.displayName = StorableName(*entry.displayName, rules_);
  }
  if (entry.IsEmpty()) {
    return;
  }
  (void)desk_.Select(RowName(code.rid));
  (void)EnterDirCodeChange(desk_, entry);
  const Outcome saved = desk_.SaveEdited();
  if (!saved.done()) {
    throw RefusedLine(saved, ColumnOfRefusal(line));
  }
}

/// Of lines with one code the first has the phone number: when that one is refused, the others lack
/// it.
std::string TenantImportCodes::WhyWithoutPhone(const ImportLine& line) const {
  const std::string_view given = CodeIn(line);
  const auto found = refused_.find(qorcred::Val(given));
  if (!line.Trimmed(kFirst + code_column::kPhone).empty() || found == refused_.end()) {
    return {};
  }
  return fmt::format("Line {} has that of {}, and is refused.", found->second, given);
}

std::int32_t TenantImportCodes::Add(const ImportLine& line, const std::string& displayName,
                                    ImportNotes& notes) {
  const std::string given(CodeIn(line));
  desk_.screen().Restore(fresh_);
  DirCodeEntry entry = lines_.Read(line, notes);
  if (!line.Cell(kFirst + code_column::kDisplayName)) {
    entry.displayName = StorableName(displayName, rules_);
  }
  EnterNewCode(desk_, given, entry);
  const SavedDirCode saved = desk_.SaveNew();
  if (!saved.isStored()) {
    throw RefusedLine(WithoutFacts(saved), ColumnOfRefusal(line), WhyWithoutPhone(line));
  }
  added_ = {qorcred::Val(given),
            Code{saved.rid, std::string(line.Trimmed(kFirst + code_column::kPhone)), line.number(),
                 RestOf(line), true}};
  return saved.rid;
}

}  // namespace qorhost
