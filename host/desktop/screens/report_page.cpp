#include "host/desktop/screens/report_page.h"

#include <fmt/format.h>
#include <screens/ui_report_page.h>

#include <QBuffer>
#include <QComboBox>
#include <QLineEdit>
#include <QPageLayout>
#include <QPdfWriter>
#include <QTemporaryDir>
#include <QToolButton>
#include <algorithm>
#include <array>
#include <fstream>
#include <map>

#include "host/desks/report_captions.h"
#include "host/desks/report_title.h"
#include "host/desks/shown_value.h"
#include "host/desks/store_file.h"
#include "host/desktop/binding/date_field.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/printing/paper.h"
#include "host/desktop/printing/table_printer.h"
#include "host/desktop/running/file_choice.h"
#include "host/desktop/running/messages.h"
#include "host/desktop/screens/empty_hint.h"
#include "host/desktop/screens/fitted_table.h"
#include "host/desktop/screens/table_finder.h"
#include "host/desktop/words/list_words.h"
#include "host/desktop/words/shown_word.h"
#include "host/files/csv_writer.h"

namespace qorhost {

namespace {

constexpr int kConditions = static_cast<int>(kConditionRows.size());
constexpr std::size_t kMostSums = 6;
constexpr int kPaperResolution = 300;  // dots an inch

/// A condition that is wrong is shown at the first of these that is visible.
constexpr std::array kFields{
    FieldWidget{kConditionRows[0], "txtFrom_0"}, FieldWidget{kConditionRows[0], "dtpDateFrom_0"},
    FieldWidget{kConditionRows[1], "txtFrom_1"}, FieldWidget{kConditionRows[1], "dtpDateFrom_1"},
    FieldWidget{kConditionRows[2], "txtFrom_2"}, FieldWidget{kConditionRows[2], "dtpDateFrom_2"},
    FieldWidget{kConditionRows[3], "txtFrom_3"}, FieldWidget{kConditionRows[3], "dtpDateFrom_3"},
    FieldWidget{kConditionRows[4], "txtFrom_4"}, FieldWidget{kConditionRows[4], "dtpDateFrom_4"}};

QString Rows(std::size_t count) {
  return count == 1 ? ReportPage::tr("1 row")
                    : ReportPage::tr("%1 rows").arg(static_cast<qulonglong>(count));
}

void LayOut(QPagedPaintDevice& device) {
  constexpr double kMargin = 15;  // millimetres
  device.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape,
                                   QMarginsF(kMargin, kMargin, kMargin, kMargin),
                                   QPageLayout::Millimeter));
}

}  // namespace

DeletedCredentials ReportSource::Delete(const GivenRids& /*rids*/) {
  throw std::logic_error("this report deletes nothing");
}

ReportPage::ReportPage(Workplace& place, const QString& title, Deleting deleting)
    : ScreenPage(place), ui_(std::make_unique<Ui::ReportPage>()) {
  ui_->setupUi(this);
  ui_->title->setText(title);
  ui_->deleteButton->setVisible(deleting == Deleting::kOffered);
  SetUp(*ui_->rows, rows_);
  EmptyHint::Show(*ui_->rows, [] { return tr("No row meets the conditions."); });
  ConnectWidgets();
}

ReportPage::~ReportPage() = default;

std::span<const FieldWidget> ReportPage::Fields() const {
  return kFields;
}

void ReportPage::Open(std::unique_ptr<ReportSource> source) {
  source_ = std::move(source);
  source_->filter().Follow(source_->fields());
  binding_.emplace(source_->filter().model(), *this, std::vector<std::string_view>{});
  binding_->OnEdit([this](const QWidget& widget) {
    if (mark().marked() == &widget) {
      mark().Clear();
    }
    ShowState();
  });
  for (int row = 0; row < kConditions; ++row) {
    for (const std::string_view list : {"cboField", "cboFilter"}) {
      binding_->ShowTextsBy(fmt::format("{}({})", list, row), ShownWord);
    }
  }
}

void ReportPage::Begin() {
  ShowRows();
}

void ReportPage::ConnectWidgets() {
  connect(ui_->runButton, &QPushButton::clicked, this, [this] { ShowRows(); });
  connect(ui_->csvButton, &QPushButton::clicked, this, [this] { SaveCsv(); });
  connect(ui_->pdfButton, &QPushButton::clicked, this, [this] { SavePdf(); });
  connect(ui_->printButton, &QPushButton::clicked, this, [this] { Print(); });
  connect(ui_->deleteButton, &QPushButton::clicked, this, [this] { Delete(); });
  for (int row = 0; row < kConditions; ++row) {
    auto* clear = findChild<QToolButton*>(QStringLiteral("clear_%1").arg(row));
    connect(clear, &QToolButton::clicked, this, [this, row] {
      source_->filter().Clear(static_cast<std::size_t>(row));
      mark().Clear();
      ShowState();
    });
    for (const char* box : {"txtFrom_%1", "txtTo_%1"}) {
      auto* line = findChild<QLineEdit*>(QString::fromLatin1(box).arg(row));
      connect(line, &QLineEdit::returnPressed, this, [this] { ShowRows(); });
    }
  }
  FindRowsBy(*ui_->findRow, *ui_->rows);
  connect(ui_->rows->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          [this] { ShowState(); });
}

void ReportPage::Refresh() {
  ShowRows();
}

/// A condition that is not taken is told in the words that the screen shows.
void ReportPage::TakeConditions() {
  try {
    source_->filter().TakeEntered();
  } catch (const InputFault& fault) {
    const auto row = static_cast<std::size_t>(
        std::find(kConditionRows.begin(), kConditionRows.end(), fault.field()) -
        kConditionRows.begin());
    const ReportField* field =
        row < kConditionRows.size() ? source_->filter().FieldIn(row) : nullptr;
    const bool isWhole = field != nullptr && fault.value().starts_with(field->name);
    throw InputFault(fault.field(), isWhole ? FromQt(ShownCondition(row)) : fault.value(),
                     fault.reason(), fault.kind());
  }
}

/// A condition in words, without the values that are missing.
QString ReportPage::ShownCondition(std::size_t row) const {
  const auto name = [row](const char* widget) {
    return QString::fromLatin1(widget).arg(static_cast<qulonglong>(row));
  };
  const auto value = [&](const char* text, const char* date) {
    const auto* line = findChild<QLineEdit*>(name(text));
    const auto* field = findChild<DateField*>(name(date));
    return line->isVisible()    ? line->text().trimmed()
           : field->isVisible() ? field->DayText()
                                : QString();
  };
  const auto* range = findChild<QWidget*>(name("txtTo_%1"));
  const auto* days = findChild<QWidget*>(name("dtpDateTo_%1"));
  QStringList words{findChild<QComboBox*>(name("cboField_%1"))->currentText(),
                    findChild<QComboBox*>(name("cboFilter_%1"))->currentText(),
                    value("txtFrom_%1", "dtpDateFrom_%1")};
  if (range->isVisible() || days->isVisible()) {
    words.append({tr("and"), value("txtTo_%1", "dtpDateTo_%1")});
  }
  words.removeAll(QString());
  return words.join(QLatin1Char(' '));
}

/// Whether it was run; what went wrong is told.
bool ReportPage::RunReport(Showing showing) {
  Outcome outcome;
  const auto run = [&] {
    TakeConditions();
    outcome = source_->Run();
  };
  const QString what = tr("The report cannot be shown.");
  if (!(showing == Showing::kBehind ? RunBehind(what, run) : Run(what, run))) {
    return false;
  }
  if (outcome.ending == Ending::kFailed) {
    outcome.failures.push_back(
        FromQt(tr("Values go into the statement as they are: write a quote in one twice, and ask "
                  "for a name and for none in two reports.")));
  }
  return Tell(outcome, "unit");
}

void ReportPage::ShowRows(Showing showing) {
  if (!RunReport(showing)) {
    return;
  }
  rows_.Show(source_->Rows());
  FitColumns(*ui_->rows);
  ui_->totals->setText(Totals());
  ShowState();
}

void ReportPage::ShowState() {
  const bool any = rows_.rowCount() > 0;
  for (QPushButton* button : {ui_->csvButton, ui_->pdfButton, ui_->printButton}) {
    button->setEnabled(any);
  }
  ui_->deleteButton->setEnabled(ui_->rows->selectionModel()->hasSelection());
  for (int row = 0; row < kConditions; ++row) {
    auto* clear = findChild<QToolButton*>(QStringLiteral("clear_%1").arg(row));
    clear->setVisible(source_->filter().FieldIn(static_cast<std::size_t>(row)) != nullptr);
  }
}

/// How many rows are shown, and of a report with credential types how many of each, where these are
/// few: "75 rows: 50 Corvin 30-Bit Card, 25 Transmitter".
QString ReportPage::Totals() const {
  const List& shown = rows_.shown();
  QString told = Rows(shown.rows.size());
  for (std::size_t at = 0; at < shown.fields.size(); ++at) {
    if (shown.fields[at].kind != FieldKind::kCredentialType) {
      continue;
    }
    std::map<std::string, std::size_t> counts;
    for (const auto& row : shown.rows) {
      ++counts[ShownText(row.at(at))];
    }
    QStringList sums;
    for (const auto& [text, count] : counts) {
      sums.append(QStringLiteral("%1 %2").arg(static_cast<qulonglong>(count)).arg(ToQt(text)));
    }
    if (!sums.isEmpty() && counts.size() <= kMostSums) {
      told += QStringLiteral(": ") + sums.join(QStringLiteral(", "));
    }
  }
  return told;
}

QString ReportPage::PaperTitle() {
  return tr("%1 – %2").arg(ToQt(ReportTitle(session(), place().unitKey())), ui_->title->text());
}

/// The store's own files are never replaced.
Writing ReportPage::Replacing() {
  return {Standing::kReplaced, FilesOfStore(place().file())};
}

/// Asks for a file's name and has it written.
void ReportPage::Save(const QString& question, const QString& name,
                      const std::function<void(std::ostream& out)>& write) {
  // The dialog asks before it names a file that exists.
  const QString file = AskWhereTo(this, question, name);
  if (file.isEmpty()) {
    return;
  }
  const bool ran = Run(tr("Writing the report"), [&] {
    WriteWholeFile(std::filesystem::path(FromQt(file)), Replacing(), write);
  });
  if (ran) {
    place().Tell(tr("Wrote %1 to %2.").arg(Rows(rows_.shown().rows.size()), file));
  }
}

void ReportPage::SaveCsv() {
  Save(tr("Write the rows to a file"), QStringLiteral("report.csv"),
       [this](std::ostream& out) { PrintCsv(out, ForPeople(rows_.shown())); });
}

void ReportPage::SavePdf() {
  Save(tr("Write the report as PDF"), QStringLiteral("report.pdf"), [this](std::ostream& out) {
    QBuffer bytes;
    bytes.open(QIODevice::WriteOnly);
    QPdfWriter writer(&bytes);
    writer.setResolution(kPaperResolution);
    writer.setTitle(PaperTitle());
    LayOut(writer);
    PrintRows(writer);
    out.write(bytes.data().constData(), bytes.data().size());
  });
}

void ReportPage::PrintRows(QPagedPaintDevice& device) {
  PrintTable(device, PaperTitle(), ShownTable(rows_.shown()), place().runner().progress());
}

/// A printer that writes a file would write it over whatever has that name, piece by piece.
void ReportPage::PrintInto(Paper& paper, const std::filesystem::path& file) {
  const QTemporaryDir folder;
  const QString printed = folder.filePath(QStringLiteral("report.pdf"));
  paper.SetFile(printed);
  WriteWholeFile(file, Replacing(), [&](std::ostream& out) {
    PrintRows(paper.device());
    out << std::ifstream(FromQt(printed), std::ios::binary).rdbuf();
  });
}

void ReportPage::Print() {
  std::unique_ptr<Paper> paper;
  const bool made = Run(tr("Printing the report"), [&] {
    paper = MakePaper(PrintingLibrary());
    LayOut(paper->device());
  });
  if (!made || !paper->Choose(*this)) {
    return;
  }
  const bool ran = Run(tr("Printing the report"), [&] {
    const QString file = paper->file();
    file.isEmpty() ? PrintRows(paper->device()) : PrintInto(*paper, FromQt(file));
  });
  if (ran) {
    place().Tell(tr("Printed %1.").arg(Rows(rows_.shown().rows.size())));
  }
}

std::string ReportPage::ChosenRids() const {
  const List& shown = rows_.shown();
  const auto field =
      std::find_if(shown.fields.begin(), shown.fields.end(),
                   [](const ListField& one) { return one.key == credential_caption::kRid; });
  std::vector<std::string> rids;
  for (const QModelIndex& row : ui_->rows->selectionModel()->selectedRows()) {
    rids.push_back(
        ShownText(rows_.Row(row.row()).at(static_cast<std::size_t>(field - shown.fields.begin()))));
  }
  return fmt::format("{}", fmt::join(rids, ","));
}

void ReportPage::Delete() {
  const auto count = ui_->rows->selectionModel()->selectedRows().size();
  if (!AskToGoOn(this, count == 1 ? tr("Delete the chosen credential?")
                                  : tr("Delete the %1 chosen credentials?").arg(count))) {
    return;
  }
  DeletedCredentials deleted;
  const bool done = RunTold(tr("Deleting credentials"), "credential", [&] {
    deleted = source_->Delete(GivenRids(ChosenRids()));
    return WithoutFacts(deleted);
  });
  if (!done) {
    return;
  }
  place().Tell(tr("Deleted %1 of %2 credentials.")
                   .arg(deleted.rows)
                   .arg(static_cast<qulonglong>(deleted.given)));
  ShowRows(Showing::kBehind);
  place().TellChanged();
}

}  // namespace qorhost
