#include "host/desktop/screens/import_page.h"

#include <screens/ui_import_page.h>

#include <QShortcut>
#include <QStyledItemDelegate>
#include <algorithm>

#include "host/desks/credential_types.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/running/file_choice.h"
#include "host/desktop/running/messages.h"
#include "host/desktop/screens/empty_hint.h"
#include "host/desktop/screens/fitted_table.h"
#include "host/desktop/screens/typing_pause.h"
#include "host/desktop/words/desk_words.h"
#include "host/files/file_error.h"
#include "host/files/input_file.h"

namespace qorhost {

namespace {

constexpr int kWidestCells = 24;  // letters that a column shows at first

/// What is wrong stays marked in a row that is chosen.
class MarkingDelegate final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    if (index.data(Qt::BackgroundRole).isValid()) {
      option->state &= ~QStyle::State_Selected;
    }
  }
};

enum EncodingChoice : int { kFoundEncoding, kUtf8, kCp1252, kUtf16 };

}  // namespace

ImportPage::ImportPage(Workplace& place)
    : EntryPage(place), ui_(std::make_unique<Ui::ImportPage>()) {
  ui_->setupUi(this);
  FillChoices();
  SetUp(*ui_->preview, rows_);
  ui_->preview->horizontalHeader()->setStretchLastSection(false);
  EmptyHint::Show(*ui_->preview, [this] {
    return sheet_ == nullptr || sheet_->rowCount() == 0
               ? ImportPage::tr(
                     "Choose a file whose first line has headings, such as Name, Code and Phone.")
               : ImportPage::tr("No row has what is looked for.");
  });
  ui_->preview->setItemDelegate(new MarkingDelegate(ui_->preview));
  ConnectWidgets();
  ConnectTable();
  ShowProposals();
  ShowState();
}

ImportPage::~ImportPage() = default;

void ImportPage::FillChoices() {
  for (const ImportKind kind : kImportKinds) {
    ui_->kind->addItem(NameOf(kind), static_cast<int>(kind));
  }
  ui_->encoding->addItems({ImportPage::tr("as found"), QStringLiteral("UTF-8"),
                           ImportPage::tr("Windows (1252)"), QStringLiteral("UTF-16")});
  ui_->delimiter->addItem(ImportPage::tr("as found"), QChar());
  ui_->delimiter->addItem(ImportPage::tr("comma"), QChar(','));
  ui_->delimiter->addItem(ImportPage::tr("semicolon"), QChar(';'));
  ui_->delimiter->addItem(ImportPage::tr("tab"), QChar('\t'));
  ui_->storedTenants->addItem(ImportPage::tr("are refused"),
                              static_cast<int>(StoredTenants::kRefused));
  ui_->storedTenants->addItem(ImportPage::tr("are passed over"),
                              static_cast<int>(StoredTenants::kSkipped));
  ui_->storedTenants->addItem(ImportPage::tr("are changed"),
                              static_cast<int>(StoredTenants::kUpdated));
  ui_->dates->addItem(ImportPage::tr("are refused"), static_cast<int>(DateOrder::kUnsaid));
  ui_->dates->addItem(ImportPage::tr("begin with the day"), static_cast<int>(DateOrder::kDayFirst));
  ui_->dates->addItem(ImportPage::tr("begin with the month"),
                      static_cast<int>(DateOrder::kMonthFirst));
  ui_->dates->addItem(ImportPage::tr("begin with the year"),
                      static_cast<int>(DateOrder::kYearFirst));
  ui_->cardType->addItem(ImportPage::tr("are refused"));
  for (QComboBox* filledLater : {ui_->column, ui_->standsFor}) {
    filledLater->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    filledLater->setPlaceholderText(QStringLiteral("?"));
  }
  for (const CredentialTypeWords& type : EnteredTypes()) {
    ui_->cardType->addItem(ToQt(TypeNameOf(type.type)), ToQt(type.word));
  }
}

void ImportPage::ConnectWidgets() {
  connect(ui_->chooseButton, &QPushButton::clicked, this, [this] { ChooseFile(); });
  connect(ui_->encoding, &QComboBox::activated, this, [this] { ReadAgain(); });
  connect(ui_->delimiter, &QComboBox::activated, this, [this] { ReadAgain(); });
  connect(ui_->kind, &QComboBox::activated, this, [this] {
    if (sheet_ != nullptr) {
      sheet_->ForgetMeanings();
    }
    FillColumns();
    NoteChange();
  });
  connect(ui_->column, &QComboBox::activated, this, [this] { ShowMeaning(); });
  connect(ui_->standsFor, &QComboBox::activated, this, [this] { TakeMeaning(); });
  connect(ui_->takeProposals, &QPushButton::clicked, this, [this] { TakeProposals(); });
  for (QComboBox* rule : {ui_->storedTenants, ui_->cardType, ui_->dates}) {
    connect(rule, &QComboBox::activated, this, [this] { NoteChange(); });
  }
  connect(ui_->facility, &QLineEdit::textEdited, this, [this] { NoteChange(); });
  for (QCheckBox* rule : {ui_->replaceQuotes, ui_->answerYes}) {
    connect(rule, &QCheckBox::clicked, this, [this] { NoteChange(); });
  }
  connect(ui_->leaveOutButton, &QPushButton::clicked, this, [this] { LeaveOut(); });
  connect(ui_->checkButton, &QPushButton::clicked, this, [this] { Check(); });
  connect(ui_->importButton, &QPushButton::clicked, this, [this] { Import(); });
}

void ImportPage::ConnectTable() {
  const auto narrow = [this] {
    rows_.Narrow(ui_->findRow->text(), ui_->wrongOnly->isChecked());
    ShowReason();
  };
  NarrowBy(*ui_->findRow, [narrow](const QString& /*text*/) { narrow(); });
  connect(ui_->wrongOnly, &QCheckBox::toggled, this, narrow);
  connect(ui_->nextButton, &QPushButton::clicked, this, [this] { GoToNextWrong(); });
  auto* next = new QShortcut(QKeySequence(Qt::Key_F8), this);
  next->setContext(Qt::WidgetWithChildrenShortcut);
  connect(next, &QShortcut::activated, this, [this] { GoToNextWrong(); });
  connect(ui_->preview->selectionModel(), &QItemSelectionModel::currentChanged, this,
          [this] { ShowReason(); });
  rows_.OnMend([this] {
    SetEntered(true);
    checked_ = false;
    ShowState();
    ShowReason();
  });
}

ImportKind ImportPage::kind() const {
  return static_cast<ImportKind>(ui_->kind->currentData().toInt());
}

void ImportPage::Refresh() {
  checked_ = false;
  ShowState();
}

void ImportPage::ChooseFile() {
  if (!MayLeaveEntry()) {
    return;
  }
  const QString file = AskForFile(this, tr("Choose a spreadsheet"),
                                  tr("Spreadsheets as text (*.csv *.txt *.tsv);;All files (*)"));
  if (!file.isEmpty()) {
    Open(std::filesystem::path(FromQt(file)));
  }
}

void ImportPage::Open(const std::filesystem::path& file) {
  (void)Run(tr("The file cannot be read."), [&] {
    const std::string text = ReadWholeFile(file);
    auto sheet = std::make_unique<ImportSheet>(text, FormOf(text));
    file_ = file;
    TakeSheet(std::move(sheet));
  });
}

void ImportPage::ReadAgain() {
  if (sheet_ != nullptr && MayLeaveEntry()) {
    Open(file_);
  }
}

/// The encoding of a file that is not UTF-8 is shown, so that another one can be tried.
ImportForm ImportPage::FormOf(const std::string& text) {
  ImportForm form;
  if (const QChar delimiter = ui_->delimiter->currentData().toChar(); !delimiter.isNull()) {
    form.delimiter = delimiter.toLatin1();
  }
  if (ui_->encoding->currentIndex() == kFoundEncoding) {
    const EncodingDoubt doubt = DoubtAbout(text);
    ui_->encoding->setCurrentIndex(doubt.isLikeUtf16   ? kUtf16
                                   : doubt.badLine > 0 ? kCp1252
                                                       : kFoundEncoding);
  }
  switch (ui_->encoding->currentIndex()) {
    case kCp1252:
      form.encoding = TextEncoding::kCp1252;
      break;
    case kUtf16:
      form.encoding = TextEncoding::kUtf16;
      break;
    default:
      break;
  }
  return form;
}

void ImportPage::TakeSheet(std::unique_ptr<ImportSheet> sheet) {
  rows_.Show(nullptr, {});
  sheet_ = std::move(sheet);
  last_ = {};
  checked_ = false;
  SetEntered(false);
  ShowFile(*ui_->fileName, file_);
  FillColumns();
  FitColumns(*ui_->preview);
  const int widest = fontMetrics().averageCharWidth() * kWidestCells;
  for (int column = 0; column < rows_.columnCount(); ++column) {
    ui_->preview->setColumnWidth(column, std::min(ui_->preview->columnWidth(column), widest));
  }
  ShowState();
  ShowReason();
}

void ImportPage::FillColumns() {
  ui_->column->clear();
  ui_->standsFor->clear();
  ui_->standsFor->addItem(tr("(nothing: left out)"), QString());
  for (const ImportColumn& column : ColumnsOf(kind())) {
    ui_->standsFor->addItem(ToQt(column.heading), ToQt(column.heading));
  }
  if (sheet_ != nullptr) {
    int number = 0;
    for (const std::string& heading : sheet_->headings()) {
      ++number;
      ui_->column->addItem(heading.empty() ? tr("(column %1)").arg(number) : ToQt(heading));
    }
  }
  rows_.Show(sheet_.get(), ColumnsOf(kind()));
  ShowMeaning();
}

void ImportPage::ShowMeaning() {
  const int column = ui_->column->currentIndex();
  const auto place = static_cast<std::size_t>(std::max(column, 0));
  const bool isKnown = column >= 0 && sheet_->IsMeaningKnown(place, ColumnsOf(kind()));
  ui_->standsFor->setCurrentIndex(
      isKnown
          ? std::max(ui_->standsFor->findData(ToQt(sheet_->MeaningOf(place, ColumnsOf(kind())))), 0)
          : -1);
  ShowProposals();
}

void ImportPage::TakeMeaning() {
  const int place = ui_->column->currentIndex();
  if (place >= 0) {
    sheet_->SetMeaning(static_cast<std::size_t>(place),
                       FromQt(ui_->standsFor->currentData().toString()));
    rows_.ShowMeanings();
    ui_->preview->resizeColumnToContents(ImportTableModel::kFirstCell + place);
    SetEntered(true);
    ShowProposals();
    NoteChange();
  }
}

/// What headings that nobody knows may stand for; nothing without a file.
std::vector<SheetProposal> ImportPage::Proposals() const {
  return sheet_ == nullptr ? std::vector<SheetProposal>()
                           : ProposalsFor(*sheet_, ColumnsOf(kind()));
}

void ImportPage::ShowProposals() {
  QStringList proposed;
  for (const SheetProposal& one : Proposals()) {
    const QString heading = ui_->column->itemText(static_cast<int>(one.place));
    proposed.append(one.column.empty() ? tr("“%1” left out").arg(heading)
                                       : tr("“%1” as %2").arg(heading, ToQt(one.column)));
  }
  ui_->proposal->setText(
      tr("Read headings as they seem to be meant: %1?").arg(proposed.join(QStringLiteral(", "))));
  ui_->proposal->setVisible(!proposed.isEmpty());
  ui_->takeProposals->setVisible(!proposed.isEmpty());
}

void ImportPage::TakeProposals() {
  for (const SheetProposal& one : Proposals()) {
    sheet_->SetMeaning(one.place, one.column);
    rows_.ShowMeanings();
    ui_->preview->resizeColumnToContents(ImportTableModel::kFirstCell +
                                         static_cast<int>(one.place));
  }
  SetEntered(true);
  ShowMeaning();
  NoteChange();
  ui_->checkButton->setFocus(Qt::OtherFocusReason);
}

/// What was said of the rows was said by other rules.
void ImportPage::NoteChange() {
  mark().Clear();
  checked_ = false;
  if (sheet_ != nullptr) {
    sheet_->ForgetRemarks();
    ShowRows();
  }
  ShowState();
}

/// Shows the rows again, at the same place.
void ImportPage::ShowRows() {
  const QModelIndex before = ui_->preview->currentIndex();
  const int row = before.row();
  const int column = before.column();
  rows_.ShowAgain();
  if (row >= 0) {
    ui_->preview->setCurrentIndex(rows_.index(std::min(row, rows_.rowCount() - 1), column));
  }
  ShowReason();
}

void ImportPage::ShowState() {
  const bool ofTenants = kind() == ImportKind::kTenants;
  for (QWidget* widget : std::initializer_list<QWidget*>{
           ui_->storedTenantsLabel, ui_->storedTenants, ui_->cardTypeLabel, ui_->cardType,
           ui_->facilityLabel, ui_->facility}) {
    widget->setVisible(ofTenants);
  }
  ui_->replaceQuotes->setVisible(kind() != ImportKind::kCredentials);
  const auto count = static_cast<qulonglong>(sheet_ == nullptr ? 0 : sheet_->rowCount());
  const auto refused = static_cast<qulonglong>(sheet_ == nullptr ? 0 : sheet_->RefusedCount());
  for (QWidget* widget :
       std::initializer_list<QWidget*>{ui_->checkButton, ui_->importButton, ui_->leaveOutButton,
                                       ui_->column, ui_->standsFor, ui_->wrongOnly}) {
    widget->setEnabled(count > 0);
  }
  ui_->nextButton->setEnabled(refused > 0);
  QString told;
  if (count > 0) {
    told = tr("Rows: %1.").arg(count);
    if (checked_ && refused == 0) {
      told = tr("Rows: %1. None is refused.").arg(count);
    } else if (refused > 0) {
      told = tr("Rows: %1, refused: %2.").arg(count).arg(refused);
    }
    if (!checked_) {
      told += QLatin1Char(' ') + tr("They are to be checked.");
    }
  }
  ui_->summary->setText(told);
}

void ImportPage::ShowReason() {
  ui_->reason->setText(rows_.ReasonAt(ui_->preview->currentIndex()));
}

void ImportPage::GoToNextWrong() {
  const QModelIndex next = rows_.NextWrong(ui_->preview->currentIndex());
  if (next.isValid()) {
    ui_->preview->setFocus(Qt::OtherFocusReason);
    ui_->preview->setCurrentIndex(next);
    ui_->preview->scrollTo(next);
  }
}

void ImportPage::LeaveOut() {
  std::vector<std::size_t> rows;
  for (const QModelIndex& row : ui_->preview->selectionModel()->selectedRows()) {
    rows.push_back(rows_.RowAt(row.row()));
  }
  if (rows.empty() ||
      !AskToGoOn(this, tr("Leave out the chosen rows (%1)? The file stays as it is.")
                           .arg(static_cast<int>(rows.size())))) {
    return;
  }
  sheet_->Remove(std::move(rows));
  SetEntered(sheet_->rowCount() > 0);
  ShowRows();
  ShowState();
}

TenantImportRules ImportPage::Rules(bool dryRun) const {
  TenantImportRules rules;
  rules.dryRun = dryRun;
  rules.answerYes = ui_->answerYes->isChecked();
  rules.apostrophes =
      ui_->replaceQuotes->isChecked() ? Apostrophes::kReplaced : Apostrophes::kRefused;
  rules.stored = static_cast<StoredTenants>(ui_->storedTenants->currentData().toInt());
  rules.dates = {static_cast<DateOrder>(ui_->dates->currentData().toInt()),
                 FromQt(ImportPage::tr("above the rows stands how such dates are read"))};
  if (const QString type = ui_->cardType->currentData().toString(); !type.isEmpty()) {
    rules.cards.type = FromQt(type);
  }
  if (const QString facility = ui_->facility->text().trimmed(); !facility.isEmpty()) {
    rules.cards.facility = FromQt(facility);
  }
  return rules;
}

bool ImportPage::RunImport(const QString& what, bool dryRun) {
  ImportReport report;
  std::optional<FileError> headings;
  const bool ran = Run(what, [&] {
    try {
      report = sheet_->Run(ColumnsOf(kind()), [&](ImportFile& file) {
        return ImportAs(kind(), session(), place().unitKey(), file, Rules(dryRun),
                        place().runner().progress());
      });
    } catch (const FileError& error) {
      headings = error;
    }
  });
  if (headings) {
    TellHeadings(*headings);
    return false;
  }
  if (!ran) {
    return false;
  }
  if (report.ending == Ending::kCancelled) {
    place().Tell(tr("Cancelled. Nothing was changed."));
    return false;
  }
  last_ = std::move(report);
  checked_ = true;
  ShowRows();
  ui_->preview->resizeColumnToContents(ImportTableModel::kState);
  ShowState();
  return true;
}

void ImportPage::TellHeadings(const FileError& fault) {
  QString told = Told(fault.what());
  for (int column = 0; column < ui_->column->count(); ++column) {
    if (!sheet_->IsMeaningKnown(static_cast<std::size_t>(column), ColumnsOf(kind()))) {
      ui_->column->setCurrentIndex(column);
      told = tr("No column of the import is called “%1”: say what it stands for, or leave it out.")
                 .arg(ui_->column->currentText());
      break;
    }
  }
  ShowMeaning();
  ui_->standsFor->setFocus(Qt::OtherFocusReason);
  mark().Show(*ui_->standsFor, told);
}

void ImportPage::Check() {
  if (RunImport(tr("The rows cannot be checked."), true)) {
    place().Tell(tr("Checked: %1 would be stored, %2 refused. Nothing was stored.")
                     .arg(static_cast<qulonglong>(last_.done))
                     .arg(static_cast<qulonglong>(last_.refused)));
    GoToNextWrong();
  }
}

void ImportPage::Import() {
  if (!checked_ && !RunImport(tr("The rows cannot be checked."), true)) {
    return;
  }
  const std::size_t refused = sheet_->RefusedCount();
  if (refused == sheet_->rowCount()) {
    place().Tell(tr("Nothing was stored: every row is refused."));
    GoToNextWrong();
    return;
  }
  if (refused > 0 &&
      !AskToGoOn(this, tr("Rows that are refused: %1. They stay here to be mended. "
                          "Import the others (%2)?")
                           .arg(static_cast<qulonglong>(refused))
                           .arg(static_cast<qulonglong>(sheet_->rowCount() - refused)))) {
    GoToNextWrong();
    return;
  }
  if (!RunImport(tr("The rows cannot be imported."), false)) {
    return;
  }
  SetEntered(sheet_->rowCount() > 0);
  place().Tell(tr("Imported: %1. Stored already: %2. Refused: %3.")
                   .arg(static_cast<qulonglong>(last_.done))
                   .arg(static_cast<qulonglong>(last_.unchanged))
                   .arg(static_cast<qulonglong>(last_.refused)));
  place().TellChanged();
}

}  // namespace qorhost
