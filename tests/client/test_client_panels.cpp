#include <TarnPlanView/plan_clock.h>

#include <QAbstractButton>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QTemporaryDir>
#include <QToolButton>
#include <QTranslator>
#include <QtTest>

#include "TarnHost/plan_store.h"
#include "app/client_session.h"
#include "client_desk.h"
#include "history/play_history.h"
#include "wall/wall_hint.h"

using TarnTest::CPlanFixture;

// What plays, who asked for it, and what is left of it when users or trees change.
class ClientPanelsTest : public TarnTest::CClientDesk {
  Q_OBJECT

 private Q_SLOTS:
  void PlaysByDoubleClickAndReturnAndStopsByEscape();
  void LastRequestWinsAndCanBeTakenBack();
  void SaysWhatIsLongOnItsWay_data();
  void SaysWhatIsLongOnItsWay();
  void TriesAgainWhatFailedOnTheEmptyWall();
  void MarkSurvivesUpdatesAndReloads();
  void ShowsPlansInTheirTrees();
  void HistoryKeepsTheLastPlansOnce();
  void HistoryPlaysAndSaysWhatIsGone();
  void SwitchesTheUser();
  void UserMenuListsTheUsers();
  void ShowsTroubleOfTheStoreWhileItLasts();
  void ShowsThatTheStoreItOpensCanOnlyBeRead();
  void ShowsRefusalsOfTheStoreInChinese();

 private:
  QStringList HistoryNames() const;
  QListView* HistoryList() const { return window_->findChild<QListView*>("history_list"); }
};

void ClientPanelsTest::PlaysByDoubleClickAndReturnAndStopsByEscape() {
  Open();
  Tree()->scrollTo(Row("Public A plan 10"));
  const QPoint place = Tree()->visualRect(Row("Public A plan 10")).center();
  QTest::mouseClick(Tree()->viewport(), Qt::LeftButton, Qt::NoModifier, place);
  QVERIFY(!Wall().IsPlaying());
  QTest::mouseDClick(Tree()->viewport(), Qt::LeftButton, Qt::NoModifier, place);
  QTRY_COMPARE(Wall().PlanName(), QString("Public A plan 10"));
  QCOMPARE(MarkedRows(), QString("Public A plan 10"));
  Tree()->setCurrentIndex(Row("Public A plan 2"));
  QTest::keyClick(Tree(), Qt::Key_Return);
  QTRY_COMPARE(Wall().PlanName(), QString("Public A plan 2"));

  // The plan's row becomes current, but the focus stays where it is.
  Wall().setFocus();
  Play("Public B plan 2");
  QCOMPARE(Tree()->currentIndex(), Row("Public B plan 2"));
  QVERIFY(Wall().hasFocus());
  QTest::keyClick(Tree(), Qt::Key_Escape);
  QVERIFY(!Wall().IsPlaying());
  QCOMPARE(MarkedRows(), QString());
}

void ClientPanelsTest::LastRequestWinsAndCanBeTakenBack() {
  Open();
  auto& services = fixture_.Services();
  services.Hold("GetPlanDetail");
  window_->Player().Play(Code("Public A plan 2"));
  window_->Player().Play(Code("Public A plan 10"));
  QVERIFY(services.WaitUntilHeld("GetPlanDetail", 2));
  services.ReleaseAll();
  CPlanFixture::Drain();
  QTRY_COMPARE(Wall().PlanName(), QString("Public A plan 10"));

  services.Hold("GetPlanDetail");
  Tree()->setCurrentIndex(Row("Public A plan 2"));
  QTest::keyClick(Tree(), Qt::Key_Return);
  QVERIFY(services.WaitUntilHeld("GetPlanDetail"));
  QTest::keyClick(window_.get(), Qt::Key_Escape);
  services.ReleaseAll();
  CPlanFixture::Drain();
  QVERIFY(!Wall().IsPlaying());
}

void ClientPanelsTest::SaysWhatIsLongOnItsWay_data() {
  QTest::addColumn<QString>("plays");
  QTest::newRow("arrives") << QString("Public B plan 2");
  QTest::newRow("fails") << QString("Public A plan 10");
  QTest::newRow("is taken back") << QString();
}

void ClientPanelsTest::SaysWhatIsLongOnItsWay() {
  const QString end = QTest::currentDataTag();
  Open();
  auto* sign = window_->findChild<QLabel*>("wall_fetch_sign");
  Play("Public A plan 10");
  fixture_.Services().Hold("GetPlanDetail");
  if (end == "fails") {
    fixture_.Services().Fail("GetPlanDetail", "The line is down");
  }
  QElapsedTimer clock;
  clock.start();
  Tree()->setCurrentIndex(Row("Public A plan 2"));
  QTest::keyClick(Tree(), Qt::Key_Return);
  QTRY_VERIFY(sign->isVisible());
  QVERIFY(clock.elapsed() >= 900);  // what comes soon needs no sign
  QVERIFY2(sign->accessibleName().contains("Public A plan 2"), qPrintable(sign->accessibleName()));
  QVERIFY(Wall().rect().contains(sign->geometry()));
  QCOMPARE(Wall().PlanName(), QString("Public A plan 10"));
  // Of two, the one that is wanted.
  window_->Player().Play(Code("Public B plan 2"));
  QVERIFY(!sign->isVisible());
  QTRY_VERIFY(sign->isVisible() && sign->accessibleName().contains("Public B plan 2"));
  if (end == "is taken back") {
    QTest::keyClick(window_.get(), Qt::Key_Escape);
    QVERIFY(!sign->isVisible());
  }
  fixture_.Services().ReleaseAll();
  QTRY_VERIFY(!sign->isVisible());
  CPlanFixture::Drain();
  QTEST(Wall().PlanName(), "plays");
}

void ClientPanelsTest::TriesAgainWhatFailedOnTheEmptyWall() {
  Open();
  fixture_.Services().Fail("GetPlanDetail", "The line is down");
  Tree()->setCurrentIndex(Row("Public A plan 2"));
  QTest::keyClick(Tree(), Qt::Key_Return);
  auto* again = window_->findChild<QAbstractButton*>("wall_try_again");
  QTRY_VERIFY(again->isVisible());
  QCOMPARE(window_->findChild<QLabel*>("wall_failure_reason")->text(), QString("The line is down"));
  QVERIFY(window_->findChild<QLabel*>("live_wall_hint")->text().contains("Public A plan 2"));
  auto* hint = window_->findChild<TarnClient::CWallHint*>();
  QVERIFY(hint->accessibleName().contains("The line is down"));
  fixture_.Services().Mend("GetPlanDetail");
  again->setFocus();
  QTest::keyClick(again, Qt::Key_Space);
  QCOMPARE(window_->focusWidget(), &Wall());
  QTRY_COMPARE(Wall().PlanName(), QString("Public A plan 2"));
  QTest::keyClick(&Wall(), Qt::Key_Escape);
  QVERIFY(!again->isVisible());  // nor what it was about
  QVERIFY(!hint->accessibleName().contains("The line is down"));
  // A plan that has gone does not come back.
  window_->Player().Play("987654");
  QTRY_VERIFY(window_->findChild<QLabel*>("wall_failure_reason")->isVisible());
  QVERIFY(!again->isVisible());
}

void ClientPanelsTest::MarkSurvivesUpdatesAndReloads() {
  Open({});
  Tree()->ExpandAsync(Row("Public A"));
  QTRY_VERIFY(Row("Public A plan 2").isValid());
  Play("Public A plan 2");
  QCOMPARE(MarkedRows(), QString("Public A plan 2"));

  // Rows that come in elsewhere leave the user's place in the tree alone.
  Tree()->setCurrentIndex(Row("Public B"));
  Tree()->ExpandAsync(Row("Public B"));
  QTRY_VERIFY(Row("Public B plan 2").isValid());
  CPlanFixture::Drain();
  QCOMPARE(Tree()->currentIndex(), Row("Public B"));

  window_->Family(0).Controller()->UpdatePlanParam(
      TarnTest::ChangedPlan(Code("Public A plan 2"), "Public A renamed", "", Wall().Plan().pages), "Public A plan 2");
  QTRY_COMPARE(MarkedRows(), QString("Public A renamed"));
  QCOMPARE(Tree()->currentIndex(), Row("Public B"));

  QSignalSpy removed(Tree()->model(), &QAbstractItemModel::rowsRemoved);
  QVERIFY(fixture_.Store().LogIn({"operator"}).IsDone());
  QTRY_VERIFY(!removed.isEmpty());
  QTRY_COMPARE(MarkedRows(), QString("Public A renamed"));
  // What the user plays once more becomes current, also when it is on the wall already.
  window_->Player().Play(Code("Public A renamed"), TarnClient::PlayOrigin::History);
  QTRY_COMPARE(Tree()->currentIndex(), Row("Public A renamed"));
}

QStringList ClientPanelsTest::HistoryNames() const {
  QStringList names;
  for (int row = 0; row < window_->History().rowCount(); ++row) {
    names << window_->History().At(row).name;
  }
  return names;
}

// Of the plan on the wall, and of a hit of the other family.
void ClientPanelsTest::ShowsPlansInTheirTrees() {
  Open({});
  auto* button = window_->findChild<QToolButton*>("wall_show_in_tree_btn");
  QVERIFY(!button->isVisible());
  QTest::keyClick(window_.get(), Qt::Key_T, Qt::ControlModifier);
  QCOMPARE(Tip(), QString("No plan plays."));
  QVERIFY(!Row("Own C", 1).isValid() || !Row("C1 plan 10", 1).isValid());
  Play("C1 plan 10");
  QVERIFY(button->isVisible() && button->isEnabled());
  QTest::keyClick(window_.get(), Qt::Key_T, Qt::ControlModifier);
  QTRY_COMPARE(Tree(1)->currentIndex().data().toString(), QString("C1 plan 10"));
  QCOMPARE(&window_->CurrentFamily(), &window_->Family(1));

  auto* field = qobject_cast<QLineEdit*>(window_->Family(1).Panel()->GetLocateViewWidget());
  auto* hits = window_->Family(1).Panel()->findChild<QListView*>("search_list_view");
  field->setFocus();
  QTest::keyClicks(field, "A1 plan 2");
  QTRY_COMPARE(hits->model()->rowCount(), 1);
  QTest::keyClick(hits, Qt::Key_Return, Qt::ControlModifier);
  QTRY_COMPARE(Tree()->currentIndex().data().toString(), QString("A1 plan 2"));
  QCOMPARE(&window_->CurrentFamily(), &window_->Family(0));
  QCOMPARE(Wall().PlanName(), QString("C1 plan 10"));
}

void ClientPanelsTest::HistoryKeepsTheLastPlansOnce() {
  Open();
  Play("Public A plan 2");
  Play("C1 plan 10");
  Play("Public A plan 2");
  QCOMPARE(HistoryNames(), (QStringList{"Public A plan 2", "C1 plan 10"}));
  QVERIFY2(window_->History().At(1).place.endsWith(" / Own C / C1"), qPrintable(window_->History().At(1).place));

  TarnClient::CPlayHistory history;
  for (int plan = 0; plan < 25; ++plan) {
    history.Add({QString::number(plan), QString::number(plan), {}, {}});
  }
  QCOMPARE(history.rowCount(), 20);
  history.Add({"5", "5", {}, {}});
  QCOMPARE(history.rowCount(), 20);
  QCOMPARE(history.At(0).code, QString("5"));
  QCOMPARE(history.At(19).code, QString("6"));
}

void ClientPanelsTest::HistoryPlaysAndSaysWhatIsGone() {
  Open();
  QTest::keyClick(window_.get(), Qt::Key_H, Qt::ControlModifier);
  QVERIFY(HistoryList()->window()->isVisible() && !HistoryList()->isVisible());  // its empty state
  HistoryList()->window()->hide();
  Play("Public A plan 2");
  Play("Public B plan 2");
  CPlanFixture::Drain();
  fixture_.Services().ForgetCalls();
  const QSignalSpy by_panel(window_->Family(0).Panel(), &TarnPlanView::CViewExternWidget::SignalPlayPlanToMonitor);
  window_->OpenHistory();
  QTest::keyClick(HistoryList(), Qt::Key_Down);
  QTest::keyClick(HistoryList(), Qt::Key_Return);
  QTRY_COMPARE(Wall().PlanName(), QString("Public A plan 2"));
  CPlanFixture::Drain();
  const auto logged = fixture_.Services().Requests<view_plugin_protocol::AddPlanLogRequestParam>();
  QVERIFY(logged.size() == 1 && logged[0].from_history && !logged[0].automatic);
  QCOMPARE(by_panel.count(), 1);

  const QModelIndex other = HistoryList()->model()->index(1, 0);
  fixture_.Services().Fail("GetPlanDetail", "the line is down");
  window_->OpenHistory();
  CPlanFixture::Drain();
  QVERIFY(other.flags() & Qt::ItemIsEnabled);  // nothing is known of it
  fixture_.Services().Mend("GetPlanDetail");
  QCOMPARE(fixture_.InStore().DeletePlan(Code("Public B plan 2")), QString());
  window_->OpenHistory();
  QTRY_VERIFY(!(other.flags() & Qt::ItemIsEnabled));
  const QString below = other.data(TarnClient::CPlayHistory::PlaceRole).toString();
  QVERIFY2(below.contains("deleted"), qPrintable(below));
  QTest::mouseClick(HistoryList()->viewport(), Qt::LeftButton, {}, HistoryList()->visualRect(other).center());
  QVERIFY(HistoryList()->isVisible());
  HistoryList()->window()->close();
  QCOMPARE(Wall().PlanName(), QString("Public A plan 2"));
}

void ClientPanelsTest::SwitchesTheUser() {
  Open();
  Play("Own C plan 2");
  auto* save = window_->findChild<QToolButton*>("wall_save_btn");
  QVERIFY(save->isEnabled());
  window_->SwitchUser("stranger");
  QTRY_VERIFY(Tip().contains("stranger"));
  QCOMPARE(window_->User(), QString("operator"));
  QCOMPARE(Wall().PlanName(), QString("Own C plan 2"));

  QSignalSpy removed(Tree()->model(), &QAbstractItemModel::rowsRemoved);
  SwitchUser("viewer");
  QCOMPARE(window_->User(), QString("viewer"));
  QVERIFY(!Wall().IsPlaying() && HistoryNames().isEmpty());
  QTRY_VERIFY(!removed.isEmpty());
  WaitForPlans();
  QTRY_VERIFY(Row("Public A plan 2").isValid());
  QVERIFY(Row("Plans", 1).isValid() && !Row("Own C", 1).isValid());
  Play("Public A plan 2");
  QVERIFY(!save->isEnabled() && save->toolTip().contains("right"));
}

void ClientPanelsTest::UserMenuListsTheUsers() {
  Open();
  auto* menu = window_->findChild<QMenu*>("user_menu");
  fixture_.Services().Fail("GetAllUserInfo", "The directory is closed");
  QTest::keyClick(window_.get(), Qt::Key_U, Qt::ControlModifier);
  QTRY_COMPARE(Tip(), QString("The directory is closed"));
  QVERIFY(!menu->isVisible());
  fixture_.Services().Mend("GetAllUserInfo");
  QTest::keyClick(window_.get(), Qt::Key_U, Qt::ControlModifier);
  QTRY_VERIFY(menu->isVisible());
  QCOMPARE(menu->actions().size(), 2);
  QVERIFY(menu->activeAction() && menu->activeAction()->isChecked());
  QTest::keyClick(menu, Qt::Key_Down);
  QTest::keyClick(menu, Qt::Key_Return);
  QTRY_COMPARE(window_->User(), QString("viewer"));
  WaitForPlans();
}

void ClientPanelsTest::ShowsTroubleOfTheStoreWhileItLasts() {
  using TarnHost::StoreTrouble;
  Open();
  auto* state = window_->findChild<QFrame*>("store_state");
  auto* text = state->findChild<QLabel*>("store_state_text");
  const QString before = text->text();
  QSet<QString> sentences{before};
  QDateTime time(QDate(2026, 3, 1), QTime(3, 14));
  TarnPlanView::CPlanClock::SetSource([&time] { return time; });
  for (const auto trouble : {StoreTrouble::kConnectionLost, StoreTrouble::kLocked, StoreTrouble::kNotAnswering,
                             StoreTrouble::kReadOnly, StoreTrouble::kNoRoom, StoreTrouble::kNoAnswerYet,
                             StoreTrouble::kPasswordRefused, StoreTrouble::kOtherSite, StoreTrouble::kOther}) {
    time = time.addSecs(3600);
    window_->ShowStoreTrouble(trouble, "the server's words");
    QVERIFY2(text->text().contains(time.toString("HH:mm")), qPrintable(text->text()));
    QVERIFY(text->isVisible() && state->property("trouble").toBool());
    QVERIFY(!text->text().isEmpty() && !sentences.contains(text->text()));
    sentences.insert(text->text());
    QCOMPARE(state->accessibleName(), text->text());
    QVERIFY(state->toolTip().contains("the server's words") && state->accessibleDescription() == "the server's words");
    for (size_t number = 0; number < window_->FamilyCount(); ++number) {
      QCOMPARE(window_->Family(number).Panel()->findChild<QLabel*>("wait_trouble")->text(), text->text());
    }
  }
  // Also where a wall takes the whole screen; and the time stays while only the words become others.
  const QString last = text->text();
  time = time.addSecs(60);
  window_->ShowWallAlone(true);
  window_->ShowStoreTrouble(StoreTrouble::kOther, "other words");
  QVERIFY(text->isVisible() && text->text() == last);
  // The same of a server that first keeps silent and then refuses.
  window_->ShowStoreTrouble(StoreTrouble::kNotAnswering, "silent");
  const QString silent_since = time.toString("HH:mm");
  time = time.addSecs(60);
  window_->ShowStoreTrouble(StoreTrouble::kConnectionLost, "refused");
  QVERIFY(text->text().contains(silent_since));
  window_->ShowStoreTrouble(StoreTrouble::kNone, QString());
  QVERIFY(!text->isVisible());
  window_->ShowWallAlone(false);
  window_->ShowStoreTrouble(StoreTrouble::kNoAnswerYet, "words", QDateTime(QDate(2026, 2, 27), QTime(14, 3)));
  QVERIFY(text->text().startsWith("Plans as of 2026-02-27 14:03;"));  // what is shown, not since when
  window_->ShowStoreTrouble(StoreTrouble::kNone, QString());
  TarnPlanView::CPlanClock::SetSource({});
  QVERIFY(text->text() == before && !state->property("trouble").toBool() && state->accessibleDescription().isEmpty());
  QCOMPARE(window_->Family(0).Panel()->findChild<QLabel*>("wait_trouble")->text(), QString());
}

// The whole way from the store to the status line, before anything was changed.
void ClientPanelsTest::ShowsThatTheStoreItOpensCanOnlyBeRead() {
  const QTemporaryDir home;
  const QString file = home.filePath("plans.sqlite");
  QString error;
  TarnHost::PlanStoreOptions fresh;
  fresh.url = "sqlite:" + file;
  TarnHost::CPlanStore::Open(fresh, &error).reset();
  QVERIFY(QFile::setPermissions(file, QFile::ReadOwner));
  const auto options = TarnClient::ClientOptions::Parse(
      {"tarn-client", "--store", fresh.url, "--log", home.filePath("client.log")}, &error);
  TarnClient::CClientSession session(*options);
  QVERIFY2(session.Start(&error), qPrintable(error));
  QList<QFrame*> found;
  for (const QWidget* window : QApplication::topLevelWidgets()) {
    found << window->findChildren<QFrame*>("store_state");
  }
  const QFrame* state = found.value(0);
  QVERIFY(state && !state->property("trouble").toBool());
  QTRY_VERIFY(state->property("trouble").toBool());
  QVERIFY2(state->accessibleName().startsWith("The view store has been read-only since "),
           qPrintable(state->accessibleName()));
  QVERIFY2(state->accessibleDescription().contains(file), qPrintable(state->accessibleDescription()));
  QVERIFY(session.End());
}

// The store says so on a thread of its own, with what it names in the middle of the text.
void ClientPanelsTest::ShowsRefusalsOfTheStoreInChinese() {
  QTranslator texts;
  QVERIFY(texts.load(":/TarnClient/translations/tarn_zh_CN.qm"));
  QCoreApplication::installTranslator(&texts);
  Open({{"load_all", 1}}, "viewer");
  window_->Family(0).Controller()->AddPlanGroupByIndexName(Row("Plans"), "New");
  QTRY_COMPARE(Tip(), QString::fromUtf8("您没有添加公共预案和分组的权限。"));
  ForgetTips();
  window_->Family(0).Controller()->AddPlanGroupByIndexName(Row("Plans"), QString(257, 'x'));
  QTRY_COMPARE(Tip(), QString::fromUtf8("名称超过 256 个字符。"));
}

QTEST_MAIN(ClientPanelsTest)
#include "test_client_panels.moc"
