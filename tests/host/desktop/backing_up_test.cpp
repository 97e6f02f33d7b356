// Backing up from the window.
#include <gmock/gmock.h>

#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class Backups : public DesktopTest {};

TEST_F(Backups, AreStoresThatCanBeOpened) {
  OpenDemoAt(QStringLiteral("overview"));
  answers_->Type(QString::fromStdString(File("monday.db").string()));
  ChooseInMenu("Back up…");
  EXPECT_THAT(Told(), StartsWith("Backed up to " + File("monday.db").string()));
  EXPECT_TRUE(window().OpenStore(File("monday.db")));
  EXPECT_EQ(Cell("SELECT Count(*) FROM Units"), "3");
}

TEST_F(Backups, NeverReplaceTheStoreItself) {
  OpenDemoAt(QStringLiteral("overview"));
  answers_->Type(QString::fromStdString(File("building.db").string()));
  answers_->Click(QMessageBox::Yes);  // the dialog's own question
  answers_->Click(QMessageBox::Ok);
  ChooseInMenu("Back up…");
  EXPECT_EQ(answers_->seen().back().icon, QMessageBox::Critical);
  EXPECT_EQ(Cell("SELECT Count(*) FROM Units"), "3");
}

TEST_F(Backups, OfAStoreInMemoryThereAreNone) {
  Click("demoButton");
  answers_->Click(QMessageBox::Ok);
  ChooseInMenu("Back up…");
  EXPECT_THAT(answers_->LastText(), HasSubstr("in memory"));
}

}  // namespace
}  // namespace qorhost::test
