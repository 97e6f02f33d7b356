#include "host/desktop/shell/moving_dialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QSignalBlocker>
#include <algorithm>
#include <array>
#include <utility>

#include "frame/convert.h"
#include "host/desks/moving_in/moving_report.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/running/file_choice.h"
#include "host/desktop/running/messages.h"
#include "host/desktop/screens/fitted_table.h"
#include "host/desktop/words/desk_words.h"
#include "host/desktop/words/shown_word.h"
#include "host/files/whole_file.h"

namespace qorhost {

namespace {

constexpr QSize kUsualDialog(1060, 560);
constexpr int kWidestColumn = 140;  // pixels, of all but the last

const StagedTable& TableOf(const MovingPlan& plan, std::string_view name) {
  return *std::find_if(plan.tables().begin(), plan.tables().end(),
                       [name](const StagedTable& table) { return table.known().name == name; });
}

/// The refused rows stand first: they are what has to be decided.
Table RefusedFirst(Table table) {
  std::stable_partition(table.rows.begin(), table.rows.end(), [](const auto& row) {
    return qorcred::TextOrEmpty(row.front()) == WordFor(Settlement::kRefused);
  });
  return table;
}

/// Yes, No and Null are words of this program; texts of the file stand in quotes.
qorcred::Value InWords(std::string_view field, const qorcred::Value& cell) {
  const std::string text = qorcred::TextOrEmpty(cell);
  const bool isValue = field == "value" || field == "instead";
  const bool isWord = text == "Yes" || text == "No" || text == "Null";
  return isValue && isWord ? qorcred::Value(ShownWord(ToQt(text)).toStdString()) : cell;
}

/// What a person looks at; the report has the rest of it.
Table Shown(const MovingPlan& plan) {
  static constexpr std::array<std::string_view, 7> kFields{
      "settlement", "table", "row", "column", "value", "instead", "reason"};
  const Table all = RefusedFirst(OddTable(plan));
  Table shown;
  shown.rows.resize(all.rows.size());
  for (const std::string_view field : kFields) {
    for (std::size_t column = 0; column < all.columns.size(); ++column) {
      if (all.columns[column].key != field) {
        continue;
      }
      shown.columns.push_back(all.columns[column]);
      for (std::size_t row = 0; row < all.rows.size(); ++row) {
        shown.rows[row].push_back(InWords(field, all.rows[row][column]));
      }
    }
  }
  return shown;
}

std::size_t BroughtIn(const MovingPlan& plan, std::string_view name) {
  for (const MovedTable& table : plan.numbers()) {
    if (table.name == name) {
      return table.broughtIn;
    }
  }
  return 0;
}

}  // namespace

MovingDialog::MovingDialog(QWidget* parent, MovingOrder order, MovingPlan plan, Planning planning,
                           std::vector<std::filesystem::path> never)
    : QDialog(parent),
      order_(std::move(order)),
      plan_(std::move(plan)),
      planning_(std::move(planning)),
      never_(std::move(never)),
      units_(new QComboBox(this)),
      codePages_(new QComboBox(this)),
      summary_(new QLabel(this)),
      table_(new QTableView(this)),
      skips_(new QCheckBox(this)) {
  setWindowTitle(tr("New from existing building"));
  resize(kUsualDialog);
  units_->setObjectName(QStringLiteral("movedUnits"));
  codePages_->setObjectName(QStringLiteral("movedCodePage"));
  summary_->setObjectName(QStringLiteral("movedSummary"));
  summary_->setTextFormat(Qt::PlainText);
  summary_->setWordWrap(true);
  table_->setObjectName(QStringLiteral("movedCells"));
  table_->setAccessibleName(tr("What is odd in the file"));
  skips_->setObjectName(QStringLiteral("skipBadRows"));
  auto* form = new QFormLayout(this);
  form->addRow(tr("&Units:"), units_);
  if (plan_.codePage()) {
    form->addRow(tr("&Code page of the texts:"), codePages_);
  } else {
    codePages_->hide();
  }
  form->addRow(summary_);
  form->addRow(table_);
  form->addRow(skips_);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  QPushButton* report = buttons->addButton(tr("Save &report…"), QDialogButtonBox::ActionRole);
  report->setObjectName(QStringLiteral("saveMovingReport"));
  makeOnServer_ = buttons->addButton(tr("Make it on a &server…"), QDialogButtonBox::ActionRole);
  makeOnServer_->setObjectName(QStringLiteral("goOnServerButton"));
  make_ = buttons->addButton(tr("&Make the store…"), QDialogButtonBox::AcceptRole);
  make_->setObjectName(QStringLiteral("goButton"));
  form->addRow(buttons);
  SetUp(*table_, cells_);
  TellCutTexts(*table_);
  FillUnits();
  FillCodePages();
  Show();
  connect(units_, &QComboBox::activated, this, [this] { Choose(); });
  connect(codePages_, &QComboBox::activated, this, [this] { Choose(); });
  connect(skips_, &QCheckBox::toggled, this, [this] { Show(); });
  connect(report, &QPushButton::clicked, this, [this] { SaveReport(); });
  connect(makeOnServer_, &QPushButton::clicked, this, [this] { Make(MovingTarget::kServer); });
  connect(buttons, &QDialogButtonBox::accepted, this, [this] { Make(MovingTarget::kFile); });
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void MovingDialog::FillUnits() {
  units_->addItem(tr("All units"));
  const StagedTable& units = TableOf(plan_, "Units");
  for (const StagedRow& row : units.rows()) {
    const auto key = LongIn(row.cells[units.At("UnitKey")]);
    if (key && !row.isRefused) {
      const QString name = ToQt(std::string(TextIn(row.cells[units.At("UnitName")])));
      units_->addItem(name.isEmpty() ? tr("Unit %1").arg(*key) : tr("%1 (%2)").arg(name).arg(*key),
                      *key);
    }
  }
}

void MovingDialog::FillCodePages() {
  static constexpr std::array<unsigned, 10> kUsual{437,  850,  852,  1250, 1251,
                                                   1252, 1253, 1254, 1257, 1258};
  const auto [own, isGuessed] = plan_.codePage().value_or(DesktopCodePage{});
  codePages_->addItem(isGuessed ? tr("%1, for the file says none that is known").arg(own)
                                : tr("%1, as the file says").arg(own),
                      0U);
  for (const unsigned page : kUsual) {
    if (page != own) {
      codePages_->addItem(QString::number(page), page);
    }
  }
}

void MovingDialog::Choose() {
  const QVariant key = units_->currentData();
  order_.unit = key.isValid() ? std::optional(key.toInt()) : std::nullopt;
  order_.reading.codePage = codePages_->currentData().toUInt();
  if (auto plan = planning_(order_)) {
    plan_ = std::move(*plan);
    skips_->setChecked(false);
    Show();
  }
}

void MovingDialog::Show() {
  const auto refused = static_cast<int>(plan_.refusedRows());
  QString summary =
      tr("%1: %2 units, %3 tenants, %4 credentials, %5 directory codes to bring in; %6 rows "
         "refused, %7 cells adjusted, %8 kept as odd.")
          .arg(ToQt(order_.file.filename().string()))
          .arg(BroughtIn(plan_, "Units"))
          .arg(BroughtIn(plan_, "Tenants"))
          .arg(BroughtIn(plan_, "CredentialBank"))
          .arg(BroughtIn(plan_, "DirectoryCode"))
          .arg(refused)
          .arg(plan_.CountOf(Settlement::kAdjusted))
          .arg(plan_.CountOf(Settlement::kKept));
  if (const auto lock = LockBeside(order_.file)) {
    summary += u'\n' + tr("The file seems to be open elsewhere, for %1 stands beside it: what has "
                          "not been written yet is not in it.")
                           .arg(ToQt(lock->filename().string()));
  }
  summary_->setText(summary);
  cells_.Show(Shown(plan_));
  FitColumns(*table_);
  // A long value would push the reason out of sight.
  for (int column = 0; column + 1 < cells_.columnCount(); ++column) {
    table_->setColumnWidth(column, std::min(table_->columnWidth(column), kWidestColumn));
  }
  skips_->setText(tr("&Leave out the refused rows (%1)").arg(refused));
  skips_->setVisible(refused > 0);
  const bool mayBeMade = refused == 0 || skips_->isChecked();
  for (QPushButton* button : {make_, makeOnServer_}) {
    button->setEnabled(mayBeMade);
    button->setToolTip(mayBeMade ? QString()
                                 : tr("Some rows cannot be brought in: mend them in the other "
                                      "application, or leave them out."));
  }
}

void MovingDialog::Make(MovingTarget target) {
  target_ = target;
  accept();
}

void MovingDialog::SaveReport() {
  // The dialog asks before it names a file that exists.
  const QString file =
      AskWhereTo(this, tr("Save what is odd"), QStringLiteral("odd.csv"), tr("Tables (*.csv)"));
  if (file.isEmpty()) {
    return;
  }
  try {
    std::vector<std::filesystem::path> never = never_;
    never.push_back(order_.file);
    WriteWholeFile(std::filesystem::path(FromQt(file)), {Standing::kReplaced, std::move(never)},
                   [this](std::ostream& out) { PrintOddCsv(out, plan_); });
  } catch (const std::exception& failure) {
    TellFailure(this, tr("The report is not saved."), Told(failure.what()));
  }
}

}  // namespace qorhost
