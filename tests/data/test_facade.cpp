#include <QApplication>
#include <QPointer>
#include <QProcess>
#include <QtTest>

#include "MarUIControl/standard_item_model.h"
#include "auto_plan_helper.h"
#include "plan_test.h"
#include "plugin_shutdown.h"
#include "standard_plan_model.h"
#include "standard_plan_model_export.h"
#include "standard_view_controller.h"
#include "view_config_manager.h"
#include "view_model_data_manager_export.h"
#include "view_public_def.h"
#include "view_sort_filter_proxy_model_export.h"

using namespace TarnPlanView;
using TarnTest::CPlanFixture;
using TarnTest::CPlanTest;
using TarnTest::Outline;

namespace {

const char kCareless[] = "--end-carelessly";
constexpr int kEndMs = 20000;  // a process that has not ended by then never will

/// A host that only ever loads: it enters no event loop of its own and ends without a word to the plug-in. The name of
/// what is left behind says how far it gets. Its store goes after everything else, as that of a static object would.
int EndCarelessly(int argc, char** argv, const QString& left_behind) {
  QString error;
  std::shared_ptr<TarnHost::CPlanStore> store;
  {
    QApplication app(argc, argv);
    if (left_behind == "icons") {
      return CViewPublicDef::GetPlanGroupIcon(true).isNull() ? 3 : 0;
    }
    TarnHost::PlanStoreOptions options;
    options.url = "sqlite::memory:";
    options.first_content = TarnTest::SmallSite;
    options.switch_overrides = {{"load_all", 1}};
    store = TarnHost::CPlanStore::Open(options, &error);
    if (!store || !store->LogIn({"operator"}).IsDone()) {
      return 3;
    }
    auto services = std::make_shared<TarnTest::CRecordingServices>(store);
    TarnHost::InstallHostServices(services);
    if (left_behind == "wait") {
      services->Fail("IsViewResourceDownFinish");
    }
    auto& facade = CViewModelDataManagerExport::Instance();
    facade.InitManager();
    facade.LoadAllViewManagerModelData();
    const auto loaded = [&] {
      return left_behind == "wait" ? services->Count("IsViewResourceDownFinish") > 2 : facade.IsViewModelInitFinish();
    };
    if (!QTest::qWaitFor(loaded, kEndMs)) {
      return 4;
    }
    if (left_behind == "question") {
      auto* model =
          qobject_cast<CStandardPlanModel*>(facade.GetViewManagerByTheme("0", PublicTheme)->GetPlanViewModel());
      auto* controller = new CStandardViewController(model);
      controller->UpdatePlanGroupName(model->index(0, 0, model->index(0, 0)), "renamed");
    }
  }
  // The plug-in has let go of everything that needs the application or the host.
  const bool clean = !CViewModelDataManagerExport::IsCreated() && !CViewConfigManager::IsCreated();
  TarnHost::InstallHostServices(nullptr);
  store->Close();
  return clean ? 0 : 5;
}

}  // namespace

// A host on the finished shared library.
class FacadeTest : public CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void StartUpAndHandles();
  void UnknownModelsGiveEmptyHandles();
  void ReadinessFailuresAreLogged();
  void HandleOutlivesItsModel();
  void SingletonsAreSharedWithTheLibrary();
  void EndsWithTheApplication_data();
  void EndsWithTheApplication();

 private:
  CViewModelDataManagerExport& Facade() { return CViewModelDataManagerExport::Instance(); }
};

void FacadeTest::StartUpAndHandles() {
  Open({}, false);
  QVERIFY(!Facade().IsViewModelInitFinish());  // may be asked before anything was loaded
  fixture_.Start();
  QVERIFY(Facade().IsViewResourceDownLoadFinish() && Facade().IsViewModelInitFinish());
  CStandardPlanModelExport* first = Facade().GetViewManagerByTheme("0", PublicTheme);
  CStandardPlanModelExport* second = Facade().GetViewManagerByTheme("0", PublicTheme);
  QVERIFY(first != second);
  QCOMPARE(first->GetPlanViewModel(), second->GetPlanViewModel());
  QCOMPARE(first->parent(), &Facade());
  QCOMPARE(first->rowCount(), 0);  // the rows are in the wrapped model
  auto* model = qobject_cast<CStandardPlanModel*>(first->GetPlanViewModel());
  QVERIFY(model);
  QCOMPARE(Outline(model), QString("Plans"));
  first->SetViewGroupSeleted(true);
  QVERIFY(model->IsGroupCanSelected());
  delete first;
  delete second;
  QVERIFY(model == fixture_.Public());  // untouched
  CStandardViewController controller(model);
  controller.OnExpandViewTreeItem(model->index(0, 0));
  CPlanFixture::Drain();
  CViewSortFilterProxyModelExport proxy(nullptr, false);
  proxy.SetQSortFilterModel(model);
  QCOMPARE(Outline(proxy.GetQSortFilterModel()), QString("Plans(Public A,Public B)"));
  controller.OnExpandViewTreeItem(model->index(0, 0, model->index(0, 0)));
  CPlanFixture::Drain();
  Facade().SetPlanPlayStateByIndexCode("0", fixture_.Code("Public A plan 2"), true);
  QCOMPARE(model->FindItemPlanPlaying()->text(), QString("Public A plan 2"));
}

void FacadeTest::UnknownModelsGiveEmptyHandles() {
  Open();
  const std::pair<const char*, ThemeNodeType> unknown[] = {
      {"9", PublicTheme}, {"0", ReceivedTheme}, {"system_config", PublicTheme}};
  for (const auto& [id, theme] : unknown) {
    CStandardPlanModelExport* handle = Facade().GetViewManagerByTheme(id, theme);
    QVERIFY(handle && !handle->GetPlanViewModel());
    handle->SetViewGroupSeleted(true);
  }
  std::shared_ptr<CViewManagerParam> none;
  CStandardPlanModelExport empty(none, nullptr);
  QVERIFY(!empty.GetPlanViewModel());
}

void FacadeTest::ReadinessFailuresAreLogged() {
  Open({}, false);
  Facade().AnalysisResourceInitViewGroup();
  Facade().AnalysisResourceInitView();
  QCOMPARE(fixture_.Log().Lines(), QStringList());
  Services().Fail("IsInitViewGroupFinish");
  Services().Fail("IsInitViewFinish");
  Facade().AnalysisResourceInitViewGroup();
  Facade().AnalysisResourceInitView();
  const QString line =
      "LyraClientError 3 [TarnPlanView::CViewModelDataManagerExport::%1(#)] [0x00000000] - %1 is Failed";
  QCOMPARE(fixture_.Log().Lines(),
           QStringList({line.arg("AnalysisResourceInitViewGroup"), line.arg("AnalysisResourceInitView")}));
}

void FacadeTest::HandleOutlivesItsModel() {
  Open();
  CStandardPlanModelExport* handle = Facade().GetViewManagerByTheme("1", OwnTheme);
  handle->setParent(nullptr);
  const std::unique_ptr<CStandardPlanModelExport> keeper(handle);
  const QPointer<QAbstractItemModel> model = handle->GetPlanViewModel();
  Facade().UninitManager();
  QVERIFY(model);  // panels still show it
  CPlanFixture::Drain();
  ReleasePlugin();
  QVERIFY(!model && !handle->GetPlanViewModel());
  handle->SetViewGroupSeleted(true);
}

void FacadeTest::SingletonsAreSharedWithTheLibrary() {
  Open({{"create_under_root", 1}}, false);
  QVERIFY(!CViewConfigManager::IsCreated());
  Facade().InitManager();                    // the library makes its configuration
  QVERIFY(CViewConfigManager::IsCreated());  // and this program sees the same one
  QVERIFY(CViewConfigManager::Instance().CreatePlanUnderRootNode());
  QCOMPARE(Services().Count("GetPlanConfig"), 1);
  const CAutoPlanHelper* const helper = &CAutoPlanHelper::Instance();
  QCOMPARE(&CAutoPlanHelper::Instance(), helper);
  Facade().UninitManager();
  ReleasePlugin();
  QVERIFY(!CViewConfigManager::IsCreated() && !CAutoPlanHelper::IsCreated());
}

void FacadeTest::EndsWithTheApplication_data() {
  QTest::addColumn<QString>("left_behind");
  for (const char* left_behind : {"rows", "wait", "question", "icons"}) {
    QTest::newRow(left_behind) << left_behind;
  }
}

void FacadeTest::EndsWithTheApplication() {
  QFETCH(QString, left_behind);
  QProcess host;
  host.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  host.start(QCoreApplication::applicationFilePath(), {kCareless, left_behind});
  const bool ended = host.waitForFinished(kEndMs);
  if (!ended) {
    host.kill();
    host.waitForFinished();
  }
  QVERIFY2(ended, "It hangs at its end");
  QCOMPARE(host.exitStatus(), QProcess::NormalExit);
  QCOMPARE(host.exitCode(), 0);
}

int main(int argc, char** argv) {
  if (argc == 3 && QString(argv[1]) == kCareless) {
    return EndCarelessly(argc, argv, argv[2]);
  }
  QApplication app(argc, argv);
  FacadeTest test;
  return QTest::qExec(&test, argc, argv);
}
#include "test_facade.moc"
