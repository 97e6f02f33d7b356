// Printers that a person chooses. Qt's library for them is loaded with the first print: it would be
// a thirtieth of the program's start.
#pragma once

#include <QPagedPaintDevice>
#include <QString>
#include <QWidget>
#include <filesystem>
#include <memory>

namespace qorhost {

/// What is printed on: a printer, or a file in its stead.
class Paper {
 public:
  Paper() = default;
  Paper(const Paper&) = delete;
  Paper& operator=(const Paper&) = delete;
  virtual ~Paper() = default;

  /// Owned by this object.
  [[nodiscard]] virtual QPagedPaintDevice& device() = 0;
  /// Asks which printer, and how, in a dialog above the widget; false when nothing is to be
  /// printed.
  [[nodiscard]] virtual bool Choose(QWidget& above) = 0;
  /// The file that was chosen; empty for a printer.
  [[nodiscard]] virtual QString file() const = 0;
  virtual void SetFile(const QString& file) = 0;
};

/// The library that stands beside the program.
[[nodiscard]] std::filesystem::path PrintingLibrary();

/// Raises FailureError where the library, or what it needs, cannot be loaded.
[[nodiscard]] std::unique_ptr<Paper> MakePaper(const std::filesystem::path& library);

}  // namespace qorhost
