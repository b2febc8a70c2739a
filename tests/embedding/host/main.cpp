#include <TarnPlanView/plugin_shutdown.h>
#include <TarnPlanView/standard_plan_model.h>
#include <TarnPlanView/standard_plan_model_export.h>
#include <TarnPlanView/standard_view_controller.h>
#include <TarnPlanView/view_model_data_manager_export.h>
#include <TarnPlanView/view_sort_filter_proxy_model_export.h>

#include <QApplication>
#include <QThreadPool>
#include <QTreeView>
#include <cstdio>

#include "TarnHost/plan_site.h"
#include "TarnHost/plan_store.h"

namespace {

void RunUntil(const std::function<bool()>& done) {
  while (!done()) {
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
}

// Embeds the tree of the public plans, expands its root and gives the number of groups found below it.
int CountPublicGroups() {
  auto& plans = TarnPlanView::CViewModelDataManagerExport::Instance();
  plans.InitManager();
  plans.InitViewConfigInterfacePointer();
  plans.AnalysisResourceInitViewGroup();
  plans.AnalysisResourceInitView();
  plans.LoadAllViewManagerModelData();
  RunUntil([&plans] { return plans.IsViewResourceDownLoadFinish() && plans.IsViewModelInitFinish(); });

  auto* handle = plans.GetViewManagerByTheme(QStringLiteral("0"), TarnPlanView::PublicTheme);
  auto* tree = qobject_cast<TarnPlanView::CStandardPlanModel*>(handle->GetPlanViewModel());
  auto* controller = new TarnPlanView::CStandardViewController(tree);
  TarnPlanView::CViewSortFilterProxyModelExport sorted(nullptr, false);
  sorted.SetQSortFilterModel(tree);
  QTreeView view;
  view.setModel(sorted.GetQSortFilterModel());
  view.show();

  controller->OnExpandViewTreeItem(view.model()->index(0, 0));
  RunUntil([tree] { return tree->rowCount(tree->index(0, 0)) > 0; });
  const int groups = view.model()->rowCount(view.model()->index(0, 0));
  view.setModel(nullptr);
  return groups;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  TarnHost::PlanStoreOptions options;
  options.url = QStringLiteral("sqlite::memory:");
  options.first_content = &TarnHost::MakeDemoSite;
  QString error;
  const auto store = TarnHost::CPlanStore::Open(options, &error);
  if (!store || !store->LogIn(store->DefaultUser(), &error)) {
    std::fprintf(stderr, "%s\n", qPrintable(error));
    return 2;
  }
  TarnHost::InstallHostServices(store);
  const int groups = CountPublicGroups();
  TarnPlanView::CViewModelDataManagerExport::Instance().UninitManager();
  TarnHost::InstallHostServices(nullptr);
  store->Close();
  QThreadPool::globalInstance()->waitForDone();
  TarnPlanView::ReleasePlugin();
  std::printf("groups: %d\n", groups);
  return groups > 0 ? 0 : 1;
}
