#include "host/desktop/printing/paper.h"

#include <dlfcn.h>
#include <fmt/format.h>

#include <QCoreApplication>

#include "host/desks/desk_error.h"
#include "host/desktop/binding/qt_text.h"

namespace qorhost {

std::filesystem::path PrintingLibrary() {
  return std::filesystem::path(FromQt(QCoreApplication::applicationDirPath())) /
         "libqordesk_printing.so";
}

std::unique_ptr<Paper> MakePaper(const std::filesystem::path& library) {
  // Stays loaded until the process ends: Qt's library leaves things behind that cannot be taken
  // out.
  void* const loaded = dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL);
  void* const make = loaded == nullptr ? nullptr : dlsym(loaded, "qordesk_make_paper");
  if (make == nullptr) {
    throw FailureError(fmt::format(
        "Printing needs '{}' and Qt's library for printers (Debian: libqt6printsupport6), "
        "which cannot be loaded; a report can be saved as PDF",
        library.string()));
  }
  return std::unique_ptr<Paper>(reinterpret_cast<Paper* (*)()>(make)());
}

}  // namespace qorhost
