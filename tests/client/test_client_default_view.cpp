#include <QAbstractButton>
#include <QLabel>
#include <QTemporaryDir>
#include <QtTest>

#include "MarUIControl/tree_view.h"
#include "WidgetKit/new_location_combo_box.h"
#include "client_desk.h"
#include "default_load_view_display.h"
#include "history/play_history.h"
#include "settings/settings_dialog.h"

using TarnTest::CPlanFixture;

// What the client opens by itself, from the settings to the next start.
class ClientDefaultViewTest : public TarnTest::CClientDesk {
  Q_OBJECT

 private Q_SLOTS:
  void OpensAfterARestart_data();
  void OpensAfterARestart();
  void GivesWayToWhatTheUserDoes();
  void FailuresSayWhy();
  void SettingsReadAgainWhenPlansCome();
  void GroupsFollowTheirSwitch();
  void SettingsCloseWithTheirUser();

 private:
  TarnPlanView::CDefaultLoadViewDisplay* Chooser() { return window_->Settings()->DefaultView(); }
  QModelIndex Choice(const QString& name);
  void SaveInSettings(const QString& name);
  void Store(int type, const std::string& code) { QCOMPARE(fixture_.InStore().SetDefaultView(code, type), QString()); }
  QString Progress() const { return window_->findChild<QLabel*>("wall_cycle")->accessibleName(); }
};

QModelIndex ClientDefaultViewTest::Choice(const QString& name) {
  const QAbstractItemModel* rows = Chooser()->GetLocationComboBox()->LocationModel();
  const auto exactly = Qt::MatchExactly | Qt::MatchRecursive;
  return rows->rowCount() > 0 ? rows->match(rows->index(0, 0), Qt::DisplayRole, name, 1, exactly).value(0)
                              : QModelIndex();
}

void ClientDefaultViewTest::SaveInSettings(const QString& name) {
  QTest::keyClick(window_.get(), Qt::Key_Comma, Qt::ControlModifier);
  QVERIFY(window_->Settings());
  auto* save = window_->Settings()->findChild<QAbstractButton*>("settings_save_btn");
  QVERIFY(!save->isEnabled());
  auto* box = Chooser()->GetLocationComboBox();
  QTRY_VERIFY2(Choice(name).isValid(), qPrintable(name));
  QTest::keyClick(box, Qt::Key_Space);
  auto* rows = box->LocationTree();
  rows->setCurrentIndex(Choice(name));
  rows->scrollTo(Choice(name));
  QTest::mouseClick(rows->viewport(), Qt::LeftButton, {}, rows->visualRect(Choice(name)).center());
  QCOMPARE(box->CurrentText(), name);
  QVERIFY(save->isEnabled());
  save->click();
  QTRY_VERIFY(!window_->Settings());
}

void ClientDefaultViewTest::OpensAfterARestart_data() {
  QTest::addColumn<QString>("choice");
  QTest::addColumn<QString>("playing");
  QTest::addColumn<QString>("cycle");
  const auto add = [](const char* row, const char* choice, const char* playing, const char* cycle) {
    QTest::newRow(row) << choice << playing << cycle;
  };
  add("public plan", "Public root plan", "Public root plan", "");
  add("own plan", "Own root plan", "Own root plan", "");
  add("public group", "Public A", "A1 plan 2", "1 of 4");
  add("own group", "Own C", "C1 plan 2", "1 of 4");
  add("none", "No default view", "", "");
  add("deleted", "Public root plan", "", "");
}

void ClientDefaultViewTest::OpensAfterARestart() {
  QFETCH(QString, choice);
  QFETCH(QString, playing);
  QFETCH(QString, cycle);
  QTemporaryDir folder;
  const QString url = "sqlite:" + folder.filePath("site.sqlite");
  Open({{"create_under_root", 1}}, "operator", url);
  Store(16000, Code("Public B plan 2"));  // what was chosen before
  SaveInSettings(choice);
  if (QTest::currentDataTag() == QLatin1String("deleted")) {
    QCOMPARE(fixture_.InStore().DeletePlan(Code(choice)), QString());
  }
  CloseDesk();

  Open({{"create_under_root", 1}}, "operator", url);
  window_->Player().OpenDefaultView();
  QTRY_COMPARE(Wall().PlanName(), playing);
  CPlanFixture::Drain();
  QCOMPARE(Wall().PlanName(), playing);
  QTRY_VERIFY2(Progress().contains(cycle) && Progress().isEmpty() == cycle.isEmpty(), qPrintable(Progress()));
  QCOMPARE(window_->History().rowCount() == 1, cycle.isEmpty() && !playing.isEmpty());
  QVERIFY2(Tip().isEmpty(), qPrintable(Tip()));
}

// Also while what it is, and then the plan itself, is still on its way.
void ClientDefaultViewTest::GivesWayToWhatTheUserDoes() {
  Open();
  Store(16000, Code("Public B plan 2"));
  for (const char* call : {"GetClientViewConfig", "GetPlanDetail"}) {
    fixture_.Services().Hold(call);
    window_->Player().OpenDefaultView();
    QVERIFY(fixture_.Services().WaitUntilHeld(call));
    QTest::keyClick(&Wall(), Qt::Key_Escape);
    fixture_.Services().ReleaseAll();
    TarnTest::CPlanFixture::Drain();
    QVERIFY(!Wall().IsPlaying());
  }
}

void ClientDefaultViewTest::FailuresSayWhy() {
  Open();
  fixture_.Services().Fail("GetClientViewConfig", "The line is down");
  window_->Player().OpenDefaultView();
  QTRY_COMPARE(Tip(), QString("The line is down"));
  ForgetTips();
  window_->OpenSettings();
  QCOMPARE(Tip(), QString("The line is down"));
  QVERIFY(!window_->Settings()->findChild<QAbstractButton*>("settings_save_btn")->isEnabled());
  fixture_.Services().Mend("GetClientViewConfig");

  ForgetTips();
  Store(16001, Code("Public A"));
  fixture_.Services().Fail("GetPlansInGroup", "No such group any more");
  window_->Player().OpenDefaultView();
  QTRY_COMPARE(Tip(), QString("No such group any more"));
  QVERIFY(!Wall().IsPlaying());
  fixture_.Services().Mend("GetPlansInGroup");

  // A failed save keeps the dialog and the choice.
  ForgetTips();
  fixture_.Services().Fail("SetClientViewConfig", "The disk is full");
  QTRY_VERIFY(Choice("Public B").isValid());
  Q_EMIT Chooser()->GetLocationComboBox()->LocationTree()->clicked(Choice("Public B"));
  window_->Settings()->findChild<QAbstractButton*>("settings_save_btn")->click();
  QCOMPARE(Tip(), QString("The disk is full"));
  QVERIFY(window_->Settings() && window_->Settings()->isVisible());
  QCOMPARE(Chooser()->GetLocationComboBox()->CurrentText(), QString("Public B"));
}

void ClientDefaultViewTest::SettingsReadAgainWhenPlansCome() {
  Open();
  Store(16001, Code("Public B"));
  fixture_.Services().Fail("GetClientViewConfig", "The plans have not been downloaded yet.");
  window_->OpenSettings();
  CPlanFixture::Drain();
  fixture_.Services().Mend("GetClientViewConfig");
  QVERIFY(fixture_.Store().LogIn({"operator"}).IsDone());  // all plans come again
  QTRY_COMPARE(Chooser()->GetLocationComboBox()->CurrentText(), QString("Public B"));
  QVERIFY(!window_->Settings()->findChild<QAbstractButton*>("settings_save_btn")->isEnabled());
}

// The choice stays for the day when groups play again.
void ClientDefaultViewTest::GroupsFollowTheirSwitch() {
  Open({{"load_all", 1}, {"group_cycle", 0}});
  Store(16001, Code("Public B"));
  window_->Player().OpenDefaultView();
  QTRY_VERIFY2(Tip().contains("switched off"), qPrintable(Tip()));
  CPlanFixture::Drain();
  QVERIFY(!Wall().IsPlaying() && Progress().isEmpty());
  QCOMPARE(fixture_.InStore().DefaultView(), Code("Public B"));
}

void ClientDefaultViewTest::SettingsCloseWithTheirUser() {
  Open();
  window_->OpenSettings();
  const auto* first = window_->Settings();
  window_->OpenSettings();
  QCOMPARE(window_->Settings(), first);
  SwitchUser("viewer");
  QTRY_VERIFY(!window_->Settings());
  WaitForPlans();
  window_->OpenSettings();
  QTRY_VERIFY(Choice("Public A").isValid());
  // The window may go with them open.
}

QTEST_MAIN(ClientDefaultViewTest)
#include "test_client_default_view.moc"
