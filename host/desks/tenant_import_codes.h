// The directory codes in the lines of a file of tenants: those that the unit has, and new ones.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/desks/dir_code_desk.h"
#include "host/desks/dir_code_line.h"
#include "host/desks/import_words.h"
#include "host/desks/tenant_import_cards.h"

namespace qorhost {

/// Reads the unit's codes once, and keeps up with the lines as TenantImportCards does.
class TenantImportCodes {
 public:
  /// The session, the file and the rules must live as long; the unit is written by nobody else.
  TenantImportCodes(DeskSession& session, std::int32_t unitKey, const ImportFile& file,
                    const ImportRules& rules);

  /// What a line means by its directory code, or by its apartment where it has none; "" for none.
  [[nodiscard]] static std::string_view CodeIn(const ImportLine& line);

  /// The row of the line's directory code, 0 for none. One that is not stored is saved through the
  /// controller, with `displayName` where the file has no column for it. Raises RefusedError, and
  /// RefusedLine where the controller says no.
  [[nodiscard]] std::int32_t Take(const ImportLine& line, const std::string& displayName,
                                  StoredAlready stored, ImportNotes& notes);

  /// Raises RefusedError for a cell that is no number to be dialled.
  void RequireNumber(const ImportLine& line) const;

  /// The next line; the one before it leaves nothing behind unless it was kept.
  void Begin(const ImportLine& line);
  void Keep();

 private:
  struct Code {
    std::int32_t rid = 0;
    std::string phone;
    std::size_t line = 0;  // that added it; 0 for one that was there
    std::string rest;      // what else that line said
    bool isOnlyOne = true;
  };

  void ReadCodes();
  [[nodiscard]] std::size_t ColumnOfRefusal(const ImportLine& line);
  [[nodiscard]] std::int32_t TakeIn(const ImportLine& line, const std::string& displayName,
                                    StoredAlready stored, ImportNotes& notes);
  [[nodiscard]] std::int32_t TakeStored(const ImportLine& line, Code& code, StoredAlready stored,
                                        ImportNotes& notes);
  void Change(const ImportLine& line, Code& code);
  [[nodiscard]] std::string WhyWithoutPhone(const ImportLine& line) const;
  [[nodiscard]] std::int32_t Add(const ImportLine& line, const std::string& displayName,
                                 ImportNotes& notes);

  DeskSession& session_;
  std::int32_t unitKey_;
  const ImportRules& rules_;
  DirCodeDesk desk_;
  DirCodeLines lines_;
  ScreenSnapshot fresh_;  // the screen as every line finds it
  std::vector<FieldWord> words_;
  std::unordered_map<double, Code> byNumber_;
  std::optional<std::pair<double, Code>> added_;           // by this line
  std::optional<std::pair<double, std::size_t>> dialled_;  // code with a phone number, and line
  std::unordered_map<double, std::size_t> refused_;        // the same of lines that were not kept
};

}  // namespace qorhost
