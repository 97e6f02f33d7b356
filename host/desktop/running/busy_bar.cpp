#include "host/desktop/running/busy_bar.h"

#include <QHBoxLayout>

namespace qorhost {

namespace {
constexpr int kParts = 1000;  // a bar counts in 32 bits
}

BusyBar::BusyBar(QWidget* parent)
    : QWidget(parent),
      what_(new QLabel(this)),
      bar_(new QProgressBar(this)),
      cancel_(new QPushButton(tr("Cancel"), this)) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(what_);
  row->addWidget(bar_, 1);
  row->addWidget(cancel_);
  cancel_->setObjectName(QStringLiteral("cancelOperation"));
  cancel_->setFocusPolicy(Qt::NoFocus);  // whatever has the focus keeps it
  bar_->setAccessibleName(tr("Progress"));
  hide();
}

void BusyBar::Tell(const QString& what, std::int64_t done, std::int64_t total) {
  what_->setText(what);
  if (total > 0) {
    bar_->setRange(0, kParts);
    bar_->setValue(static_cast<int>(static_cast<double>(done) / static_cast<double>(total) *
                                    static_cast<double>(kParts)));
    bar_->setFormat(tr("%1 of %2").arg(done).arg(total));
  } else {
    bar_->setRange(0, 0);
  }
  show();
}

void BusyBar::TellWaiting() {
  what_->setText(tr("Another program is writing to the store; waiting for it"));
  bar_->setRange(0, 0);
  show();
}

void BusyBar::Finish() {
  hide();
}

}  // namespace qorhost
