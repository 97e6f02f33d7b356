// The library of its own that knows Qt's printers.
#include <QPrintDialog>
#include <QPrinter>

#include "host/desktop/printing/paper.h"

namespace qorhost {

namespace {

class PrinterPaper final : public Paper {
 public:
  QPagedPaintDevice& device() override { return printer_; }
  bool Choose(QWidget& above) override {
    QPrintDialog dialog(&printer_, &above);
    return dialog.exec() == QDialog::Accepted;
  }
  [[nodiscard]] QString file() const override { return printer_.outputFileName(); }
  void SetFile(const QString& file) override { printer_.setOutputFileName(file); }

 private:
  QPrinter printer_;
};

}  // namespace

}  // namespace qorhost

/// Found by this name. The caller owns what it makes.
extern "C" qorhost::Paper* qordesk_make_paper();  // NOLINT(readability-identifier-naming)

qorhost::Paper* qordesk_make_paper() {
  return new qorhost::PrinterPaper;
}
