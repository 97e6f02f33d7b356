// A picture of every screen, light, dark and with large text, for people to look at; and what can
// be checked of it without them: that no label is cut.
#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QDir>
#include <QLabel>

#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

class Screenshots : public DesktopTest {
 protected:
  void Take(const QString& name, const QString& look) {
    const QDir folder(QStringLiteral(QORDESK_PICTURES));
    ASSERT_TRUE(folder.mkpath(QStringLiteral(".")));
    const QString file = folder.filePath(QStringLiteral("%1-%2.png").arg(name, look));
    // As small as they get: documents show some of the files as they are.
    EXPECT_TRUE(window().grab().save(file, "PNG", 0)) << file.toStdString();
  }
  void ExpectNothingCut(const std::string& where) {
    for (const auto* label : window().findChildren<QLabel*>()) {
      if (label->isVisible() && !label->wordWrap()) {
        EXPECT_GE(label->width(), label->sizeHint().width())
            << where << ": " << label->text().toStdString();
        EXPECT_GE(label->height(), label->fontMetrics().height())
            << where << ": " << label->text().toStdString();
      }
    }
    for (const auto* button : window().findChildren<QAbstractButton*>()) {
      if (button->isVisible() && !button->text().isEmpty()) {
        const QString text = button->text().remove(QLatin1Char('&'));
        EXPECT_GE(button->width(), button->fontMetrics().horizontalAdvance(text))
            << where << ": " << button->text().toStdString();
      }
    }
  }
};

struct Look {
  const char* name;
  Appearance appearance;
};

const Look kLooks[] = {{"light", {Theme::kLight, 100}},
                       {"dark", {Theme::kDark, 100}},
                       {"large", {Theme::kLight, 150}}};

TEST_F(Screenshots, OfEveryScreenInEveryLook) {
  for (const Look& look : kLooks) {
    window().SetAppearance(look.appearance);
    (void)window().CloseStore();
    Take(QStringLiteral("start"), QString::fromLatin1(look.name));
    if (std::filesystem::exists(File("building.db"))) {
      ASSERT_TRUE(window().OpenStore(File("building.db")));
      window().ShowUnit(kUnit);
    } else {
      OpenDemoAt(QStringLiteral("overview"));
    }
    for (const ScreenEntry& screen : Screens()) {
      window().ShowScreen(QString::fromLatin1(screen.key));
      Settle();
      Take(QString::fromLatin1(screen.key), QString::fromLatin1(look.name));
      ExpectNothingCut(std::string(screen.key) + ", " + look.name);
    }
    window().ShowScreen(QStringLiteral("dir_codes"));
    ClickEntry("cbodirectorycode", "0101");
    Take(QStringLiteral("dir_code"), QString::fromLatin1(look.name));
    ExpectNothingCut(std::string("directory code, ") + look.name);
    window().ShowScreen(QStringLiteral("credentials"));
    answers_->Click(QMessageBox::Ok);
    Click("saveButton");
    Take(QStringLiteral("refusal"), QString::fromLatin1(look.name));
    auto& list = Find<QListView>("cboCredentials");
    ClickEntry("cboCredentials", list.model()->index(3, 0).data().toString().toUtf8().constData());
    Take(QStringLiteral("credential"), QString::fromLatin1(look.name));
    ExpectNothingCut(std::string("credential, ") + look.name);
  }
  window().SetAppearance({});
}

}  // namespace
}  // namespace qorhost::test
