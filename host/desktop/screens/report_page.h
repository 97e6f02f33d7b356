// What both report screens have in common: five conditions, the rows that meet them, and the ways
// out of the program.
#pragma once

#include <QPagedPaintDevice>
#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "host/desks/credential_report.h"
#include "host/desks/list.h"
#include "host/desks/outcome.h"
#include "host/desks/report_filter.h"
#include "host/desktop/screens/list_table_model.h"
#include "host/desktop/screens/screen_page.h"
#include "host/files/whole_file.h"

namespace Ui {
class ReportPage;
}

namespace qorhost {

class Paper;

/// The desk of a report.
class ReportSource {
 public:
  virtual ~ReportSource() = default;
  ReportSource(const ReportSource&) = delete;
  ReportSource& operator=(const ReportSource&) = delete;

  [[nodiscard]] virtual ReportFilter& filter() = 0;
  [[nodiscard]] virtual std::vector<ReportField> fields() const = 0;
  /// Runs the report with the conditions as they are.
  virtual Outcome Run() = 0;
  /// The rows of the last run, without what the screen does not show.
  [[nodiscard]] virtual List Rows() const = 0;
  /// Deletes rows by their RIDs; only where the page offers it.
  virtual DeletedCredentials Delete(const GivenRids& rids);

 protected:
  ReportSource() = default;
};

/// Each report has a class derived from it, which hands its source to Open().
class ReportPage : public ScreenPage {
  Q_OBJECT

 public:
  ~ReportPage() override;

  void Begin() override;
  void Refresh() override;

 protected:
  enum class Deleting : bool { kNotOffered, kOffered };

  ReportPage(Workplace& place, const QString& title, Deleting deleting);
  void Open(std::unique_ptr<ReportSource> source);

  [[nodiscard]] std::span<const FieldWidget> Fields() const override;
  void ShowChanges() override { binding_->Flush(); }
  void ShowOvertaken() override { ShowRows(); }

 private:
  /// Whether it is shown for its own sake or behind an operation, which is told already.
  enum class Showing : bool { kAsked, kBehind };

  void ConnectWidgets();
  void ShowRows(Showing showing = Showing::kAsked);
  [[nodiscard]] bool RunReport(Showing showing);
  void TakeConditions();
  [[nodiscard]] QString ShownCondition(std::size_t row) const;
  void ShowState();
  [[nodiscard]] QString Totals() const;
  [[nodiscard]] QString PaperTitle();
  void Save(const QString& question, const QString& name,
            const std::function<void(std::ostream& out)>& write);
  void SaveCsv();
  void SavePdf();
  void PrintRows(QPagedPaintDevice& device);
  void PrintInto(Paper& paper, const std::filesystem::path& file);
  [[nodiscard]] Writing Replacing();
  void Print();
  void Delete();
  [[nodiscard]] std::string ChosenRids() const;

  std::unique_ptr<Ui::ReportPage> ui_;
  std::unique_ptr<ReportSource> source_;
  std::optional<ScreenBinding> binding_;
  ListTableModel rows_;
};

}  // namespace qorhost
