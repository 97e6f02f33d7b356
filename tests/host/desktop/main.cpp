#include <gtest/gtest.h>

#include <QApplication>
#include <iostream>

namespace {

// Fontconfig keeps what it has read of the system's fonts until the process ends, and Qt's platform
// plugins what they have asked it for, and the message bus its connection: none is let go of, and
// none grows.
constexpr const char* kSuppressed = "leak:libfontconfig\nleak:libdbus\n";

/// Leaves out what the platform without a screen has to say of every window.
void WriteMessage(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& text) {
  if (!text.contains(QLatin1String("propagateSizeHints"))) {
    std::cerr << text.toStdString() << '\n';
  }
}

}  // namespace

// The name is the sanitizer's.
// NOLINTNEXTLINE(readability-identifier-naming, bugprone-reserved-identifier)
extern "C" const char* __lsan_default_suppressions() {
  return kSuppressed;
}

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
  }
  qInstallMessageHandler(WriteMessage);
  const QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("qordesk"));
  return RUN_ALL_TESTS();
}
