#include "host/desktop/shell/screens_table.h"

#include <QCoreApplication>
#include <array>

#include "host/desktop/screens/building_page.h"
#include "host/desktop/screens/credential_page.h"
#include "host/desktop/screens/dir_code_page.h"
#include "host/desktop/screens/history_page.h"
#include "host/desktop/screens/import_page.h"
#include "host/desktop/screens/merge_page.h"
#include "host/desktop/screens/overview_page.h"
#include "host/desktop/screens/report_pages.h"
#include "host/desktop/screens/steps_page.h"
#include "host/desktop/screens/tenant_creating_page.h"
#include "host/desktop/screens/tenants_page.h"
#include "host/desktop/screens/units_page.h"

namespace qorhost {

namespace {

template <typename Page>
std::unique_ptr<ScreenPage> Make(Workplace& place) {
  return std::make_unique<Page>(place);
}

constexpr std::array kScreens{
    ScreenEntry{"overview", QT_TRANSLATE_NOOP("Screens", "Overview"), "Ctrl+1", false,
                Make<OverviewPage>},
    ScreenEntry{"tenants", QT_TRANSLATE_NOOP("Screens", "Tenants"), "Ctrl+2", true,
                Make<TenantsPage>},
    ScreenEntry{"credentials", QT_TRANSLATE_NOOP("Screens", "Credentials"), "Ctrl+3", true,
                Make<CredentialPage>},
    ScreenEntry{"tenant_creating", QT_TRANSLATE_NOOP("Screens", "New tenants"), "Ctrl+4", true,
                Make<TenantCreatingPage>},
    ScreenEntry{"dir_codes", QT_TRANSLATE_NOOP("Screens", "Directory codes"), "Ctrl+5", true,
                Make<DirCodePage>},
    ScreenEntry{"credential_report", QT_TRANSLATE_NOOP("Screens", "Credential report"), "Ctrl+6",
                true, Make<CredentialReportPage>},
    ScreenEntry{"dir_code_report", QT_TRANSLATE_NOOP("Screens", "Directory-code report"), "Ctrl+7",
                true, Make<DirCodeReportPage>},
    ScreenEntry{"steps", QT_TRANSLATE_NOOP("Screens", "Programming steps"), "Ctrl+8", true,
                Make<StepsPage>},
    ScreenEntry{"history", QT_TRANSLATE_NOOP("Screens", "History"), "Ctrl+9", true,
                Make<HistoryPage>},
    ScreenEntry{"import", QT_TRANSLATE_NOOP("Screens", "Import"), "Ctrl+I", true, Make<ImportPage>},
    ScreenEntry{"merge", QT_TRANSLATE_NOOP("Screens", "Merge with the unit"), "Ctrl+M", true,
                Make<MergePage>},
    ScreenEntry{"building", QT_TRANSLATE_NOOP("Screens", "Doors and schedules"), "Ctrl+D", true,
                Make<BuildingPage>},
    ScreenEntry{"units", QT_TRANSLATE_NOOP("Screens", "Units"), "Ctrl+0", false, Make<UnitsPage>},
};

}  // namespace

std::span<const ScreenEntry> Screens() {
  return kScreens;
}

QString TitleOf(const ScreenEntry& screen) {
  return QCoreApplication::translate("Screens", screen.title);
}

}  // namespace qorhost
