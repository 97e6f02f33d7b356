// An editor of a date and time that may also say that none is chosen.
#pragma once

#include <QCheckBox>
#include <QDateTimeEdit>
#include <QWidget>
#include <functional>
#include <optional>

#include "frame/value.h"

namespace qorhost {

/// A check box says whether a date is chosen; beside it stands the date that is shown. A person who
/// checks it chooses what is shown. Times are calendar times without a zone.
class DateField final : public QWidget {
  Q_OBJECT
  Q_PROPERTY(bool endOfDay READ endOfDay WRITE SetEndOfDay)
  Q_PROPERTY(bool wholeDays READ wholeDays WRITE SetWholeDays)

 public:
  using ChoiceHandler = std::function<void(std::optional<qorcred::Date> date)>;

  explicit DateField(QWidget* parent = nullptr);

  /// Whether a date that is chosen anew is the last second of its day.
  [[nodiscard]] bool endOfDay() const { return endOfDay_; }
  void SetEndOfDay(bool end) { endOfDay_ = end; }
  /// Whether days are shown without a time.
  [[nodiscard]] bool wholeDays() const { return wholeDays_; }
  void SetWholeDays(bool whole);
  /// Told of what a person chooses.
  void OnChoice(ChoiceHandler handler) { onChoice_ = std::move(handler); }

  /// The day that is chosen, as it is shown; empty without one.
  [[nodiscard]] QString DayText() const;

  // Show what is so; nobody is told.

  void ShowChosen(bool chosen);
  void ShowDate(qorcred::Date date);
  void ShowLimits(qorcred::Date first, qorcred::Date last);

  /// The two parts, for tests and for whoever puts them into a tab order.
  [[nodiscard]] QCheckBox& check() { return *check_; }
  [[nodiscard]] QDateTimeEdit& edit() { return *edit_; }

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void Name();
  void Choose();

  QCheckBox* check_;
  QDateTimeEdit* edit_;
  ChoiceHandler onChoice_;
  bool endOfDay_ = false;
  bool wholeDays_ = false;
};

}  // namespace qorhost
