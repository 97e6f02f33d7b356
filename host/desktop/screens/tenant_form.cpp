#include "host/desktop/screens/tenant_form.h"

#include <screens/ui_tenants_page.h>

#include <QCompleter>
#include <QCoreApplication>
#include <QSignalBlocker>
#include <QStringListModel>
#include <algorithm>
#include <unordered_set>

#include "host/desks/list_entries.h"
#include "host/desks/shown_value.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/binding/wheel_guard.h"

namespace qorhost {

namespace {

constexpr int kMostSuggestions = 12;

struct TenantTexts {
  Q_DECLARE_TR_FUNCTIONS(TenantForm)
};

/// What all of them have; nothing where they differ, or for nobody.
template <typename Get>
auto Common(const std::vector<TenantRow>& tenants, Get get)
    -> std::optional<std::decay_t<decltype(get(tenants.front()))>> {
  if (tenants.empty()) {
    return std::nullopt;
  }
  const auto first = get(tenants.front());
  const bool same = std::all_of(tenants.begin(), tenants.end(),
                                [&](const TenantRow& tenant) { return get(tenant) == first; });
  return same ? std::optional(first) : std::nullopt;
}

/// What stands where there is nothing in common.
QString Placeholder(const std::vector<TenantRow>& tenants) {
  return tenants.empty() ? TenantTexts::tr("as usual") : TenantTexts::tr("as it is for each");
}

void ShowIn(QComboBox& combo, std::optional<std::int32_t> id, const QString& name,
            const QString& placeholder) {
  combo.setPlaceholderText(placeholder);
  if (id && combo.findData(*id) < 0) {
    combo.addItem(name, *id);  // one that is not offered any more
  }
  combo.setCurrentIndex(id ? combo.findData(*id) : -1);
}

void ShowIn(QCheckBox& box, std::optional<bool> checked, bool isNew) {
  box.setTristate(!checked && !isNew);
  box.setCheckState(checked ? (*checked ? Qt::Checked : Qt::Unchecked)
                            : (isNew ? Qt::Unchecked : Qt::PartiallyChecked));
}

std::string YesNoOf(const QCheckBox& box) {
  return box.isChecked() ? "yes" : "no";
}

std::string DateEntry(std::optional<qorcred::Date> date) {
  return date ? qorcred::DateText(*date) : std::string(kNoneWord);
}

/// Typing offers the texts that have what is typed anywhere.
void Suggest(QLineEdit& line, const QStringList& texts) {
  auto* completer = new QCompleter(texts, &line);
  completer->setCaseSensitivity(Qt::CaseInsensitive);
  completer->setFilterMode(Qt::MatchContains);
  completer->setMaxVisibleItems(kMostSuggestions);
  delete line.completer();
  line.setCompleter(completer);
}

}  // namespace

TenantForm::TenantForm(Ui::TenantsPage& ui, std::function<void(QWidget& widget)> onEdit)
    : ui_(ui), onEdit_(std::move(onEdit)) {
  ui_.lastName->setMaxLength(static_cast<int>(tenant_bound::kName));
  ui_.firstName->setMaxLength(static_cast<int>(tenant_bound::kName));
  ui_.nameAtUnit->setMaxLength(static_cast<int>(tenant_bound::kName));
  ui_.initial->setMaxLength(static_cast<int>(tenant_bound::kInitial));
  Connect();
  ConnectDates();
}

std::vector<TenantForm::TextField> TenantForm::TextFields() const {
  return {{ui_.lastName, &TenantRow::lastName, &TenantEntry::lastName},
          {ui_.firstName, &TenantRow::firstName, &TenantEntry::firstName},
          {ui_.initial, &TenantRow::initial, &TenantEntry::initial},
          {ui_.nameAtUnit, &TenantRow::nameAtUnit, &TenantEntry::nameAtUnit}};
}

std::vector<QComboBox*> TenantForm::Schedules() const {
  return {ui_.schedule1, ui_.schedule2, ui_.schedule3, ui_.schedule4};
}

void TenantForm::Connect() {
  for (QLineEdit* line :
       {ui_.lastName, ui_.firstName, ui_.initial, ui_.nameAtUnit, ui_.card1, ui_.card2, ui_.code}) {
    // Nothing but a person, or what a person takes of the suggestions, changes it unblocked.
    QObject::connect(line, &QLineEdit::textChanged, line, [this, line] { Note(*line); });
  }
  std::vector<QComboBox*> combos = Schedules();
  combos.push_back(ui_.group);
  for (QComboBox* combo : combos) {
    WheelGuard::Watch(*combo);
    QObject::connect(combo, &QComboBox::currentIndexChanged, combo,
                     [this, combo] { Note(*combo); });
  }
  for (QCheckBox* box : {ui_.active, ui_.resident}) {
    QObject::connect(box, &QCheckBox::clicked, box, [this, box] {
      box->setTristate(false);
      Note(*box);
    });
  }
}

void TenantForm::ConnectDates() {
  ui_.start->OnChoice([this](std::optional<qorcred::Date> date) {
    start_ = date;
    Note(*ui_.start);
  });
  ui_.end->OnChoice([this](std::optional<qorcred::Date> date) {
    end_ = date;
    Note(*ui_.end);
  });
}

void TenantForm::Note(QWidget& widget) {
  changed_.insert(&widget);
  onEdit_(widget);
}

void TenantForm::Offer(const TenantLinks& links, const std::vector<TenantGroup>& groups,
                       const std::vector<TenantRow>& holders) {
  for (QComboBox* combo : Schedules()) {
    const QSignalBlocker quiet(combo);
    combo->clear();
    for (const auto& [id, name] : links.schedules) {
      if (links.offered.contains(std::to_string(id))) {
        combo->addItem(ToQt(name), id);
      }
    }
  }
  const QSignalBlocker quiet(ui_.group);
  ui_.group->clear();
  for (const TenantGroup& group : groups) {
    ui_.group->addItem(
        group.isZero ? TenantTexts::tr("%1 (zero)").arg(group.rid) : QString::number(group.rid),
        group.rid);
  }
  std::unordered_set<std::int32_t> held;
  for (const TenantRow& holder : holders) {
    held.insert(holder.cards.begin(), holder.cards.end());
  }
  QStringList cards;
  for (const auto& [rid, card] : links.cards) {
    if (!held.contains(rid)) {
      cards.append(ToQt(card.entry));
    }
  }
  cards.sort();
  Suggest(*ui_.card1, cards);
  Suggest(*ui_.card2, cards);
  QStringList codes;
  for (const auto& [rid, code] : links.codes) {
    if (code.listed) {
      codes.append(QString::number(code.number));
    }
  }
  codes.sort();
  Suggest(*ui_.code, codes);
}

void TenantForm::Show(const std::vector<TenantRow>& tenants, const TenantLinks& links,
                      qorcred::Date today) {
  ShowNames(tenants);
  ShowPeriod(tenants, today);
  ShowAccess(tenants, links);
  ShowHeld(tenants, links);
}

void TenantForm::ShowNames(const std::vector<TenantRow>& tenants) {
  for (const TextField& field : TextFields()) {
    if (IsChanged(field.line)) {
      continue;
    }
    const auto common = Common(tenants, [&](const TenantRow& row) { return row.*field.shown; });
    const QSignalBlocker quiet(field.line);
    field.line->setText(ToQt(common.value_or("")));
    field.line->setPlaceholderText(!common && !tenants.empty() ? Placeholder(tenants) : QString());
  }
}

void TenantForm::ShowPeriod(const std::vector<TenantRow>& tenants, qorcred::Date today) {
  if (!IsChanged(ui_.active)) {
    ShowIn(*ui_.active, Common(tenants, [](const TenantRow& row) { return row.active; }),
           tenants.empty());
  }
  const auto show = [&](DateField& field, std::optional<qorcred::Date> TenantRow::*date) {
    if (IsChanged(&field)) {
      return;
    }
    // By their seconds: that is what a person sees of them.
    const auto common = Common(tenants, [&](const TenantRow& row) {
      return row.*date ? qorcred::DateText(*(row.*date)) : std::string();
    });
    const bool chosen = common && !common->empty();
    field.ShowDate(chosen ? *(tenants.front().*date) : today);
    field.ShowChosen(chosen);
  };
  show(*ui_.start, &TenantRow::start);
  show(*ui_.end, &TenantRow::end);
}

void TenantForm::ShowAccess(const std::vector<TenantRow>& tenants, const TenantLinks& links) {
  std::size_t door = 0;
  for (QComboBox* combo : Schedules()) {
    if (!IsChanged(combo)) {
      const auto id = Common(tenants, [door](const TenantRow& row) { return row.schedules[door]; });
      const QSignalBlocker quiet(combo);
      ShowIn(*combo, id, id ? ToQt(links.Schedule(*id)) : QString(), Placeholder(tenants));
    }
    ++door;
  }
  if (!IsChanged(ui_.group)) {
    const auto id = Common(tenants, [](const TenantRow& row) { return row.group; });
    const QSignalBlocker quiet(ui_.group);
    ShowIn(*ui_.group, id, id ? QString::number(*id) : QString(), Placeholder(tenants));
  }
}

void TenantForm::ShowHeld(const std::vector<TenantRow>& tenants, const TenantLinks& links) {
  // One is given to one: to several none can be.
  ui_.card1->setEnabled(tenants.size() < 2);
  ui_.card2->setEnabled(tenants.size() < 2);
  if (!IsChanged(ui_.card1) && !IsChanged(ui_.card2)) {
    const QSignalBlocker first(ui_.card1);
    const QSignalBlocker second(ui_.card2);
    const auto held = tenants.size() == 1 ? links.Cards(tenants.front()) : qorcred::StringArray();
    ui_.card1->setText(held.empty() ? QString() : ToQt(held.front()));
    ui_.card2->setText(held.size() < 2 ? QString() : ToQt(held.at(1)));
  }
  if (!IsChanged(ui_.code)) {
    const auto code = Common(tenants, [](const TenantRow& row) { return row.code; });
    const QSignalBlocker quiet(ui_.code);
    ui_.code->setText(code ? ToQt(ShownText(links.Code(*code))) : QString());
    ui_.code->setPlaceholderText(!code && !tenants.empty() ? Placeholder(tenants) : QString());
  }
  if (!IsChanged(ui_.resident)) {
    ShowIn(*ui_.resident, Common(tenants, [](const TenantRow& row) { return row.resident; }),
           tenants.empty());
  }
}

TenantEntry TenantForm::Entry() const {
  TenantEntry entry;
  for (const TextField& field : TextFields()) {
    if (IsChanged(field.line)) {
      entry.*field.entered = FromQt(field.line->text());
    }
  }
  if (IsChanged(ui_.active)) {
    entry.active = YesNoOf(*ui_.active);
  }
  if (IsChanged(ui_.start)) {
    entry.from = DateEntry(start_);
  }
  if (IsChanged(ui_.end)) {
    entry.to = DateEntry(end_);
  }
  std::size_t door = 0;
  for (const QComboBox* combo : Schedules()) {
    if (IsChanged(combo) && combo->currentIndex() >= 0) {
      entry.schedules[door] = std::to_string(combo->currentData().toInt());
    }
    ++door;
  }
  if (IsChanged(ui_.group) && ui_.group->currentIndex() >= 0) {
    entry.group = std::to_string(ui_.group->currentData().toInt());
  }
  if (IsChanged(ui_.card1) || IsChanged(ui_.card2)) {
    for (const QLineEdit* card : {ui_.card1, ui_.card2}) {
      if (!card->text().trimmed().isEmpty()) {
        entry.cards.push_back(FromQt(card->text().trimmed()));
      }
    }
    if (entry.cards.empty()) {
      entry.cards.emplace_back(kNoneWord);
    }
  }
  if (IsChanged(ui_.code)) {
    const QString code = ui_.code->text().trimmed();
    entry.code = code.isEmpty() ? std::string(kNoneWord) : FromQt(code);
  }
  if (IsChanged(ui_.resident)) {
    entry.resident = YesNoOf(*ui_.resident);
  }
  return entry;
}

}  // namespace qorhost
