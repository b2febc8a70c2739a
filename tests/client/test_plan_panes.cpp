#include <QLabel>
#include <QtTest>
#include <memory>

#include "TarnUIDataController/message_tip_manager.h"
#include "TarnUIDataController/skin_loader.h"
#include "auto_plan_helper.h"
#include "plan_fixture.h"
#include "plan_item_role.h"
#include "plans/plan_pane.h"
#include "plans/plan_player.h"
#include "plans/plan_tree.h"
#include "standard_plan_model.h"
#include "view_model_data_manager_export.h"
#include "wall/live_wall.h"
#include "wall/test_picture_source.h"

using namespace TarnClient;

// The two trees and the wall over a real store.
class PlanPanesTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init();
  void cleanup();
  void RootIsExpandedAndGroupsLoadWhenAsked();
  void DoubleClickAndReturnPlay();
  void LastWishWins();
  void AutomaticPlanYieldsToTheUser();
  void MarkAndExpansionSurviveAReload();
  void FailedLoadShowsATipAndCanBeTriedAgain();

 private:
  void MakePanes(const QMap<QString, int>& switches = {});
  QModelIndex Row(const QString& name) const;
  QString PlayingRow() const;

  TarnTest::CPlanFixture fixture_;
  std::unique_ptr<CLiveWall> wall_;
  std::unique_ptr<CPlanPlayer> player_;
  std::unique_ptr<CPlanPane> public_, own_;
};

void PlanPanesTest::init() {
  tarn_ui_data_controller::CSkinLoader::Instance().LoadSkin("redblack");
}

void PlanPanesTest::cleanup() {
  own_.reset();
  public_.reset();
  player_.reset();
  wall_.reset();
  tarn_ui_data_controller::CMessageTipManager::Release();
  QCOMPARE(fixture_.Close(), QStringList());
}

void PlanPanesTest::MakePanes(const QMap<QString, int>& switches) {
  TarnTest::PlanFixtureOptions options;
  options.switches = switches;
  QString error;
  QVERIFY2(fixture_.Open(options, &error), qPrintable(error));
  fixture_.Start();
  fixture_.Messages().Expect("propagateSizeHints");
  QTRY_VERIFY(TarnPlanView::CViewModelDataManagerExport::Instance().IsViewModelInitFinish());
  wall_ = std::make_unique<CLiveWall>(&CTestPictureSource::Make);
  player_ = std::make_unique<CPlanPlayer>(wall_.get());
  public_ = std::make_unique<CPlanPane>(TarnPlanView::PublicTheme, "none");
  own_ = std::make_unique<CPlanPane>(TarnPlanView::OwnTheme, "none");
  player_->Attach(public_.get());
  player_->Attach(own_.get());
  public_->resize(300, 500);
  public_->show();
  QVERIFY(QTest::qWaitForWindowExposed(public_.get()));
  QTRY_VERIFY(Row("Public A").isValid());
}

QModelIndex PlanPanesTest::Row(const QString& name) const {
  const QAbstractItemModel* model = public_->Tree()->model();
  if (model->rowCount() == 0) {
    return QModelIndex();
  }
  return model->match(model->index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchExactly | Qt::MatchRecursive).value(0);
}

QString PlanPanesTest::PlayingRow() const {
  const QAbstractItemModel* model = public_->Tree()->model();
  const QModelIndexList rows =
      model->match(model->index(0, 0), TarnPlanView::PlayingRole, true, -1, Qt::MatchExactly | Qt::MatchRecursive);
  QStringList names;
  for (const QModelIndex& row : rows) {
    names << row.data().toString();
  }
  return names.join(',');
}

void PlanPanesTest::RootIsExpandedAndGroupsLoadWhenAsked() {
  MakePanes();
  CPlanTree* tree = public_->Tree();
  QTRY_VERIFY(tree->isExpanded(tree->model()->index(0, 0)));
  QVERIFY(!Row("A1").isValid());
  tree->setCurrentIndex(Row("Public A"));
  QTest::keyClick(tree, Qt::Key_Return);
  QTRY_VERIFY(tree->isExpanded(Row("Public A")));
  QVERIFY(Row("A1").isValid() && !tree->IsWaiting(Row("Public A")));
  QTRY_VERIFY(own_->Tree()->isExpanded(own_->Tree()->model()->index(0, 0)));
  QVERIFY(public_->findChild<QLabel*>("plan_pane_empty")->isHidden());
}

void PlanPanesTest::DoubleClickAndReturnPlay() {
  MakePanes({{"load_all", 1}});
  CPlanTree* tree = public_->Tree();
  QTRY_VERIFY(Row("Public A plan 10").isValid());
  tree->scrollTo(Row("Public A plan 10"));
  const QPoint place = tree->visualRect(Row("Public A plan 10")).center();
  QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, place);
  QVERIFY(!wall_->IsPlaying());
  QTest::mouseDClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, place);
  QTRY_COMPARE(wall_->PlanName(), QString("Public A plan 10"));
  QCOMPARE(PlayingRow(), QString("Public A plan 10"));
  tree->setCurrentIndex(Row("Public A plan 2"));
  QTest::keyClick(tree, Qt::Key_Return);
  QTRY_COMPARE(wall_->PlanName(), QString("Public A plan 2"));
  QCOMPARE(PlayingRow(), QString("Public A plan 2"));
  player_->Stop();
  QCOMPARE(PlayingRow(), QString());
}

void PlanPanesTest::LastWishWins() {
  MakePanes();
  const auto code = [this](const char* name) { return fixture_.Code(name).toStdString(); };
  fixture_.Services().Hold("GetPlanDetail");
  player_->Play(code("Public A plan 2"));
  player_->Play(code("Public A plan 10"));
  QVERIFY(fixture_.Services().WaitUntilHeld("GetPlanDetail", 2));
  QVERIFY(!wall_->IsPlaying());
  fixture_.Services().ReleaseAll();
  QTRY_VERIFY(wall_->IsPlaying());
  TarnTest::CPlanFixture::Drain();
  QCOMPARE(wall_->PlanName(), QString("Public A plan 10"));
}

void PlanPanesTest::AutomaticPlanYieldsToTheUser() {
  MakePanes();
  auto& helper = TarnPlanView::CAutoPlanHelper::Instance();
  view_plugin_protocol::GetPlanDetailResponse plan;
  plan.index_code = fixture_.Code("Public B plan 2").toStdString();
  plan.name = "Public B plan 2";
  plan.pages.emplace_back();
  Q_EMIT helper.signalStartPlanAutoRun(plan);
  QCOMPARE(wall_->PlanName(), QString("Public B plan 2"));
  Q_EMIT helper.signalStopPlanAutoRun();
  QVERIFY(!wall_->IsPlaying());

  // The user's own plan stays, whatever the clock says.
  Q_EMIT helper.signalStartPlanAutoRun(plan);
  player_->Play(fixture_.Code("Public A plan 2").toStdString());
  QTRY_COMPARE(wall_->PlanName(), QString("Public A plan 2"));
  Q_EMIT helper.signalStopPlanAutoRun();
  Q_EMIT helper.signalStartPlanAutoRun(plan);
  QCOMPARE(wall_->PlanName(), QString("Public A plan 2"));
  player_->Stop();

  // No stop comes for a plan that vanished: it ends at the time that its start carried.
  plan.end_time = QTime::currentTime().addSecs(2).toString("HH:mm:ss").toStdString();
  Q_EMIT helper.signalStartPlanAutoRun(plan);
  QVERIFY(wall_->IsPlaying());
  QTRY_VERIFY(!wall_->IsPlaying());
}

void PlanPanesTest::MarkAndExpansionSurviveAReload() {
  MakePanes();
  CPlanTree* tree = public_->Tree();
  tree->ExpandAsync(Row("Public A"));
  QTRY_VERIFY(Row("Public A plan 2").isValid());
  player_->Play(fixture_.Code("Public A plan 2").toStdString());
  QTRY_COMPARE(PlayingRow(), QString("Public A plan 2"));
  QString error;
  QSignalSpy removed(tree->model(), &QAbstractItemModel::rowsRemoved);
  QVERIFY(fixture_.Store().LogIn("operator", &error));
  QTRY_VERIFY(!removed.isEmpty());
  QTRY_VERIFY(Row("Public A plan 2").isValid());
  QTRY_COMPARE(PlayingRow(), QString("Public A plan 2"));
  QTRY_VERIFY(tree->isExpanded(Row("Public A")));
  QVERIFY(!tree->isExpanded(Row("Public B")));
}

void PlanPanesTest::FailedLoadShowsATipAndCanBeTriedAgain() {
  MakePanes();
  CPlanTree* tree = public_->Tree();
  fixture_.Services().Fail("GetPlansInGroup", "The service has no answer");
  tree->ExpandAsync(Row("Public A"));
  auto& tips = tarn_ui_data_controller::CMessageTipManager::Instance();
  QTRY_COMPARE(tips.CurrentText(), QString("The service has no answer"));
  QVERIFY(!tree->IsWaiting(Row("Public A")) && !tree->isExpanded(Row("Public A")));
  fixture_.Services().Mend("GetPlansInGroup");
  tree->ExpandAsync(Row("Public A"));
  QTRY_VERIFY(tree->isExpanded(Row("Public A")));
}

QTEST_MAIN(PlanPanesTest)
#include "test_plan_panes.moc"
