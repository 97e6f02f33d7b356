#include "host/desktop/shell/screens_table.h"

#include <QCoreApplication>
#include <array>

#include "host/desktop/screens/credential_page.h"
#include "host/desktop/screens/dir_code_page.h"
#include "host/desktop/screens/history_page.h"
#include "host/desktop/screens/overview_page.h"
#include "host/desktop/screens/report_pages.h"
#include "host/desktop/screens/steps_page.h"
#include "host/desktop/screens/tenant_creating_page.h"
#include "host/desktop/screens/tenants_page.h"

namespace qorhost {

namespace {

template <typename Page>
std::unique_ptr<ScreenPage> Make(Workplace& place) {
  return std::make_unique<Page>(place);
}

constexpr std::array kScreens{
    ScreenEntry{"overview", QT_TRANSLATE_NOOP("Screens", "Overview"), false, Make<OverviewPage>},
    ScreenEntry{"tenants", QT_TRANSLATE_NOOP("Screens", "Tenants"), true, Make<TenantsPage>},
    ScreenEntry{"credentials", QT_TRANSLATE_NOOP("Screens", "Credentials"), true,
                Make<CredentialPage>},
    ScreenEntry{"tenant_creating", QT_TRANSLATE_NOOP("Screens", "New tenants"), true,
                Make<TenantCreatingPage>},
    ScreenEntry{"dir_codes", QT_TRANSLATE_NOOP("Screens", "Directory codes"), true,
                Make<DirCodePage>},
    ScreenEntry{"credential_report", QT_TRANSLATE_NOOP("Screens", "Credential report"), true,
                Make<CredentialReportPage>},
    ScreenEntry{"dir_code_report", QT_TRANSLATE_NOOP("Screens", "Directory-code report"), true,
                Make<DirCodeReportPage>},
    ScreenEntry{"steps", QT_TRANSLATE_NOOP("Screens", "Programming steps"), true, Make<StepsPage>},
    ScreenEntry{"history", QT_TRANSLATE_NOOP("Screens", "History"), true, Make<HistoryPage>},
};

}  // namespace

std::span<const ScreenEntry> Screens() {
  return kScreens;
}

QString TitleOf(const ScreenEntry& screen) {
  return QCoreApplication::translate("Screens", screen.title);
}

}  // namespace qorhost
