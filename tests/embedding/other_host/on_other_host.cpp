#include <TarnPlanView/plan_item_role.h>
#include <TarnPlanView/plan_view_tree.h>
#include <TarnPlanView/plugin_shutdown.h>
#include <TarnPlanView/save_plan_as_dlg.h>
#include <TarnPlanView/standard_plan_model.h>
#include <TarnPlanView/standard_plan_model_export.h>
#include <TarnPlanView/standard_view_controller.h>
#include <TarnPlanView/view_extern_widget.h>
#include <TarnPlanView/view_model_data_manager_export.h>

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "ResourceTreeKit/camera_tree.h"
#include "TarnUIDataController/popup_menu.h"
#include "other_host.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;

/// A day with plans that are kept in a directory of files, by a host that has nothing of this repository's.
class OnOtherHost : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void initTestCase();
  void cleanupTestCase();
  void browsesAndAdds();
  void plays();
  void renamesAndMoves();
  void searches();
  void opensItsPopups();
  void saysWhyNot();
  void followsTheFiles();
  void keepsWhatCannotBeRemoved();
  void opensNoBrokenSite();
  void deletes();

 private:
  QModelIndex Row(const QString& name) const;
  QString CodeOf(const QString& name) const;
  /// Once the plan is there, changed by `change`.
  void Update(const QString& name, const std::function<void(UpdatePlanRequest&)>& change);
  void Put(const QString& name, const QByteArray& content) const;
  /// Whether the plan is in the tree; opens its group, which a new look at the files may have closed.
  bool ShowsTheWall() const;
  int Files() const { return QDir(directory_.path()).entryList({"1*.json"}).size(); }

  QTemporaryDir directory_;
  std::unique_ptr<CViewExternWidget> panel_;
  CStandardPlanModel* model_ = nullptr;
  CStandardViewController* controller_ = nullptr;
};

void OnOtherHost::initTestCase() {
  QVERIFY(OtherHost::Open(directory_.path()));
  auto& plans = CViewModelDataManagerExport::Instance();
  plans.InitManager();
  plans.InitViewConfigInterfacePointer();
  plans.AnalysisResourceInitViewGroup();
  plans.AnalysisResourceInitView();
  plans.LoadAllViewManagerModelData();
  model_ = qobject_cast<CStandardPlanModel*>(plans.GetViewManagerByTheme("0", PublicTheme)->GetPlanViewModel());
  QVERIFY(model_);
  controller_ = new CStandardViewController(model_);
  panel_ = std::make_unique<CViewExternWidget>(nullptr);
  panel_->SetModel(model_);
  panel_->SetStandardViewControl(controller_);
  panel_->SetMonitorPointer(panel_.get());
  panel_->resize(800, 600);
  panel_->show();
  QTRY_VERIFY(plans.IsViewModelInitFinish());
}

void OnOtherHost::cleanupTestCase() {
  panel_.reset();
  CViewModelDataManagerExport::Instance().UninitManager();
  OtherHost::Close();
  GetPlanGroupsResponse closed;
  QVERIFY(!LyraPluginManager::CViewBusinessInterfaceMgr::Instance().GetPlanGroups({"-1", 0}, closed));
  QCOMPARE(closed.error_kind, int32_t(Unavailable));
  ReleasePlugin();
}

QModelIndex OnOtherHost::Row(const QString& name) const {
  const auto rows = model_->match(model_->index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchExactly | Qt::MatchRecursive);
  return rows.isEmpty() ? QModelIndex() : QModelIndex(rows.first());
}

QString OnOtherHost::CodeOf(const QString& name) const {
  const QModelIndex row = Row(name);
  return row.data(row.data(IsGroupRole).toBool() ? GroupIndexCodeRole : PlanIndexCodeRole).toString();
}

bool OnOtherHost::ShowsTheWall() const {
  if (!Row("North wall").isValid() && Row("Docks").isValid()) {
    panel_->GetPlanViewTree()->ExpandAsync(panel_->GetPlanViewTree()->RowOf(CodeOf("Docks"), true));
  }
  return Row("North wall").isValid();
}

void OnOtherHost::browsesAndAdds() {
  QTRY_COMPARE(Row("Plans").data(GroupIndexCodeRole).toString(), QString(kPublicRootCode));
  QTRY_VERIFY(model_->AreChildrenFetched(Row("Plans")));  // panels open their root by themselves
  for (const char* group : {"Gate 10", "Gate 9"}) {
    controller_->AddPlanGroupByIndexName(Row("Plans"), group);
    QTRY_VERIFY(Row(group).isValid());
  }
  const QModelIndex root = panel_->GetPlanViewTree()->RowOf(kPublicRootCode, true);
  QTRY_COMPARE(root.model()->index(0, 0, root).data().toString(), QString("Gate 9"));  // as people order numbers

  panel_->GetPlanViewTree()->ExpandAsync(panel_->GetPlanViewTree()->RowOf(CodeOf("Gate 9"), true));
  QTRY_VERIFY(model_->AreChildrenFetched(Row("Gate 9")));
  AddPlanRequest request;
  request.plan_name = "North";
  request.parent_index_code = CodeOf("Gate 9").toStdString();
  request.pages.push_back({1, "Day", 2, 10, {{1, 1, "1", "Gate", 0, 0, "{\"later\":1}"}, {4, 1, "2", "Yard"}}, ""});
  request.pages.push_back({2, "Night", 1, 30, {{1, 1, "3", "Hall"}}, ""});
  controller_->AddPlanParam(request);
  QTRY_VERIFY(Row("North").isValid());
  QCOMPARE(Row("North").parent().data().toString(), QString("Gate 9"));
  QVERIFY(QFile::exists(directory_.filePath(CodeOf("North") + ".json")));
}

void OnOtherHost::plays() {
  QSignalSpy played(controller_, &CStandardViewController::SignalPlayPlanView);
  panel_->PlayPlanByIndex(Row("North"));
  QTRY_COMPARE(played.count(), 1);
  const auto plan = played[0][0].value<GetPlanDetailResponse>();
  QCOMPARE(plan.name, std::string("North"));
  QCOMPARE(plan.pages.size(), size_t(2));
  QCOMPARE(plan.pages.back().dwell_seconds, 30);
  QCOMPARE(plan.pages.front().windows.size(), size_t(2));
  QCOMPARE(plan.pages.front().windows.front().extra, std::string("{\"later\":1}"));
  panel_->SetCurPlayItemByIndexCode(CodeOf("North"));
  QVERIFY(Row("North").data(PlayingRole).toBool());
}

void OnOtherHost::Update(const QString& name, const std::function<void(UpdatePlanRequest&)>& change) {
  QSignalSpy fetched(controller_, &CStandardViewController::SignalGetPlanInfo);
  controller_->GetPlanInfoByIndexCode(CodeOf(name).toStdString());
  QTRY_COMPARE(fetched.count(), 1);
  const auto plan = fetched[0][0].value<GetPlanDetailResponse>();
  UpdatePlanRequest request;
  request.plan_index_code = plan.index_code;
  request.plan_name = plan.name;
  request.index_type = plan.type;
  request.parent_index_code = plan.group_index_code;
  request.pages = plan.pages;
  request.revision = plan.revision;
  change(request);
  QSignalSpy updated(controller_, &CStandardViewController::SignalUpdatePlanSucc);
  controller_->UpdatePlanParam(request, name);
  QTRY_COMPARE(updated.count(), 1);
}

void OnOtherHost::renamesAndMoves() {
  controller_->UpdatePlanGroupName(Row("Gate 10"), "Docks");
  QTRY_VERIFY(Row("Docks").isValid());
  const QString code = CodeOf("North");
  Update("North", [](UpdatePlanRequest& request) { request.plan_name = "North wall"; });
  QCOMPARE(CodeOf("North wall"), code);
  panel_->GetPlanViewTree()->ExpandAsync(panel_->GetPlanViewTree()->RowOf(CodeOf("Docks"), true));
  QTRY_VERIFY(model_->AreChildrenFetched(Row("Docks")));
  Update("North wall", [this](auto& request) { request.parent_index_code = CodeOf("Docks").toStdString(); });
  QCOMPARE(Row("North wall").parent().data().toString(), QString("Docks"));
  QCOMPARE(CodeOf("North wall"), code);
}

void OnOtherHost::searches() {
  QSignalSpy found(panel_.get(), &CViewExternWidget::signalGetSearchedResult);
  auto* field = qobject_cast<QLineEdit*>(panel_->GetLocateViewWidget());
  field->setText("NORTH");
  panel_->OnFuzzySearchPlan();
  QTRY_COMPARE(found.count(), 1);
  const auto hits = found[0][0].value<std::list<SearchedPlan>>();
  QCOMPARE(hits.size(), size_t(1));
  QCOMPARE(hits.front().group_name, std::string("Docks"));
  field->clear();
}

void OnOtherHost::opensItsPopups() {
  auto* tree = panel_->GetPlanViewTree();
  tree->OnRightMoreBtnClicked(tree->RowOf(CodeOf("North wall"), false), QPoint(50, 50));
  QTRY_VERIFY(tree->GetViewMoreMenu()->isVisible());
  QVERIFY(tree->GetViewMoreMenu()->MenuItem(tarn_ui_data_controller::Edit)->isEnabled());
  tree->GetViewMoreMenu()->close();

  panel_->OnPopupSavePlanAsDlg(QPoint(50, 50));
  auto dialogs = [] { return QApplication::topLevelWidgets(); };
  const auto save_as = [&]() -> CSavePlanAsDlg* {
    for (QWidget* one : dialogs()) {
      if (one->isVisible() && qobject_cast<CSavePlanAsDlg*>(one)) {
        return qobject_cast<CSavePlanAsDlg*>(one);
      }
    }
    return nullptr;
  };
  QTRY_VERIFY(save_as());
  save_as()->close();

  panel_->EditPlanByIndex(Row("North wall"));
  QTRY_VERIFY(panel_->IsEditorOpen());
  auto* cameras = panel_->window()->findChild<ResourceTreeKit::CCameraTree*>();
  QVERIFY(cameras);
  QTRY_COMPARE(cameras->model()->rowCount(), 4);
  QVERIFY(panel_->MayLeave());
  QTRY_VERIFY(!panel_->IsEditorOpen());
}

void OnOtherHost::saysWhyNot() {
  QSignalSpy said(panel_.get(), &CViewExternWidget::SignalMessageTipNeeded);
  controller_->AddPlanGroupByIndexName(Row("Plans"), "Gate/9");
  QTRY_COMPARE(said.count(), 1);
  QCOMPARE(said[0][1].toInt(), 1);
  QVERIFY(said[0][0].toString().startsWith("A name has"));
}

void OnOtherHost::Put(const QString& name, const QByteArray& content) const {
  QFile file(directory_.filePath(name));
  QVERIFY(file.open(QIODevice::WriteOnly));
  file.write(content);
}

void OnOtherHost::followsTheFiles() {
  Put("300000.json", R"({"kind": "group", "name": "Cut o)");
  Put("200000.json", QJsonDocument(QJsonObject{{"kind", "group"}, {"name", "By hand"}, {"parent", "-1"}}).toJson());
  QTRY_VERIFY(Row("By hand").isValid());
  QTRY_VERIFY(Row("Docks").isValid());  // the trees were loaded again
  QVERIFY(QFile::remove(directory_.filePath("300000.json")));
}

void OnOtherHost::keepsWhatCannotBeRemoved() {
  QTRY_VERIFY(ShowsTheWall());
  const std::string code = CodeOf("North wall").toStdString();
  const QString path = directory_.filePath(CodeOf("North wall") + ".json");
  QVERIFY(QFile::rename(path, path + ".aside") && QDir().mkdir(path));  // no file any more
  DeletePlanResponse answer;
  QVERIFY(!LyraPluginManager::CViewBusinessInterfaceMgr::Instance().DeletePlan({code}, answer));
  QCOMPARE(answer.error_kind, int32_t(Unavailable));
  QVERIFY(QDir().rmdir(path) && QFile::rename(path + ".aside", path));
  GetPlanDetailResponse plan;
  QVERIFY(LyraPluginManager::CViewBusinessInterfaceMgr::Instance().GetPlanDetail({code}, plan));
}

void OnOtherHost::opensNoBrokenSite() {
  const QTemporaryDir broken;
  QFile file(broken.filePath("site.json"));
  QVERIFY(file.open(QIODevice::WriteOnly));
  file.close();
  QVERIFY(!OtherHost::Open(broken.path()));
}

void OnOtherHost::deletes() {
  QTRY_VERIFY(ShowsTheWall());
  QVERIFY(controller_->IsHaveChilds(Row("Docks")));
  const int before = Files();
  panel_->DelPlanByIndex(Row("North wall"));
  QTRY_VERIFY(!Row("North wall").isValid());
  QCOMPARE(Files(), before - 1);
  controller_->DeletePlanGroupByIndex(Row("Docks"));
  QTRY_VERIFY(!Row("Docks").isValid());
  QCOMPARE(Files(), before - 2);
}

QTEST_MAIN(OnOtherHost)
#include "on_other_host.moc"
