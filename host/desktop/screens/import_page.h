// A spreadsheet, looked at and checked before it is imported, and mended where it is wrong.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

#include "host/desks/heading_proposal.h"
#include "host/desks/import_sheet.h"
#include "host/desktop/screens/entry_page.h"
#include "host/desktop/screens/import_kinds.h"
#include "host/desktop/screens/import_table_model.h"
#include "host/files/file_error.h"

namespace Ui {
class ImportPage;
}

namespace qorhost {

class ImportPage final : public EntryPage {
  Q_OBJECT

 public:
  explicit ImportPage(Workplace& place);
  ~ImportPage() override;

  /// The store has changed: what was checked is to be checked again.
  void Refresh() override;
  /// Reads a file; what is wrong with it is told in a box.
  void Open(const std::filesystem::path& file);

 private:
  void FillChoices();
  void ConnectWidgets();
  void ConnectTable();
  void ChooseFile();
  void ReadAgain();
  [[nodiscard]] ImportForm FormOf(const std::string& text);
  void TakeSheet(std::unique_ptr<ImportSheet> sheet);
  void FillColumns();
  void ShowMeaning();
  void TakeMeaning();
  [[nodiscard]] std::vector<SheetProposal> Proposals() const;
  void ShowProposals();
  void TakeProposals();
  void NoteChange();
  void ShowRows();
  void ShowState();
  void ShowReason();
  void GoToNextWrong();
  void LeaveOut();
  void Check();
  void Import();
  /// False when it was not done: what speaks against it is shown.
  bool RunImport(const QString& what, bool dryRun);
  void TellHeadings(const FileError& fault);
  [[nodiscard]] ImportKind kind() const;
  [[nodiscard]] TenantImportRules Rules(bool dryRun) const;

  std::unique_ptr<Ui::ImportPage> ui_;
  std::filesystem::path file_;
  std::unique_ptr<ImportSheet> sheet_;
  ImportTableModel rows_;
  ImportReport last_;
  bool checked_ = false;  // the rows as they stand, by the rules as they are
};

}  // namespace qorhost
