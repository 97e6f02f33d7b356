#include "host/desktop/binding/date_field.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QSignalBlocker>

#include "frame/date.h"
#include "host/desktop/binding/qt_text.h"

namespace qorhost {

namespace {

const QTime kLastSecond(23, 59, 59);

/// In UTC, where every time of a day is there once.
QDateTime ToDateTime(qorcred::Date date) {
  const qorcred::CivilTime civil = qorcred::ToCivil(date);
  return {ToQtDay(date), QTime(civil.hour, civil.minute, civil.second), Qt::UTC};
}

qorcred::Date ToDate(const QDateTime& shown) {
  const QDate day = shown.date();
  const QTime time = shown.time();
  return qorcred::FromCivil(
      {day.year(), day.month(), day.day(), time.hour(), time.minute(), time.second()});
}

}  // namespace

DateField::DateField(QWidget* parent)
    : QWidget(parent), check_(new QCheckBox(this)), edit_(new QDateTimeEdit(this)) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(check_);
  row->addWidget(edit_, 1);
  edit_->setTimeSpec(Qt::UTC);
  edit_->setCalendarPopup(true);
  SetWholeDays(false);
  edit_->setEnabled(false);
  setFocusProxy(check_);
  setFocusPolicy(Qt::StrongFocus);
  Name();
  connect(check_, &QCheckBox::clicked, this, [this](bool chosen) {
    edit_->setEnabled(chosen);
    if (chosen && endOfDay_) {
      const QSignalBlocker quiet(edit_);
      edit_->setTime(kLastSecond);
    }
    Choose();
    if (chosen) {
      edit_->setFocus();
    }
  });
  connect(edit_, &QDateTimeEdit::dateTimeChanged, this, [this] { Choose(); });
}

void DateField::SetWholeDays(bool whole) {
  wholeDays_ = whole;
  edit_->setDisplayFormat(whole ? QStringLiteral("yyyy-MM-dd")
                                : QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

void DateField::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::LanguageChange) {
    Name();
  }
}

void DateField::Name() {
  check_->setText(tr("set"));
  check_->setAccessibleName(tr("date is set"));
  edit_->setAccessibleName(tr("date and time"));
}

void DateField::Choose() {
  if (onChoice_) {
    onChoice_(check_->isChecked() ? std::optional(ToDate(edit_->dateTime())) : std::nullopt);
  }
}

QString DateField::DayText() const {
  return check_->isChecked() ? edit_->date().toString(Qt::ISODate) : QString();
}

void DateField::ShowChosen(bool chosen) {
  const QSignalBlocker quiet(check_);
  check_->setChecked(chosen);
  edit_->setEnabled(chosen);
}

void DateField::ShowDate(qorcred::Date date) {
  const QSignalBlocker quiet(edit_);
  edit_->setDateTime(ToDateTime(date));
}

void DateField::ShowLimits(qorcred::Date first, qorcred::Date last) {
  const QSignalBlocker quiet(edit_);
  edit_->setDateRange(ToDateTime(first).date(), ToDateTime(last).date());
}

}  // namespace qorhost
