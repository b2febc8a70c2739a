#include <QAction>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>

#include "MarUIControl/offer_strip.h"
#include "TarnHost/modal_answer.h"
#include "TarnUIDataController/popup_menu.h"
#include "WidgetKit/new_location_view_widget.h"
#include "client_desk.h"
#include "commands/plan_copier.h"
#include "commands/row_commands.h"
#include "commands/row_menu.h"
#include "plan_rules/families.h"

using namespace TarnClient;
using TarnTest::CPlanFixture;

// The client's own entries of the row menu: which there are, what they do, and why they do not.
class RowMenuTest : public TarnTest::CClientDesk {
  Q_OBJECT

 private Q_SLOTS:
  void EntriesStandBehindThePanels();
  void EntriesFollowTheRow();
  void CopiesAPlanWithAllItHas();
  void ACopyOfTheLastUserIsNotHeardOf();
  void CopiesHitsAndSaysWhyNot();
  void RenamesAHitOfAGroupThatIsNotLoaded();
  void RenamesPlansAndGroups();
  void MovesAPlanToAChosenGroup();
  void EqualOffersAreKeptApartByMoreThanWords();
  void LooksForGroupsOnlyWhenAsked();
  void ReturnWaitsForAGroupThatIsFetched();
  void HitsOfTheOtherListStayThere();
  void AMenuMeansItsRow();
  void StopsAndOpensAtTheStart();
  void KeysSayWhyTheyDoNothing();

 private:
  QAction* Entry(RowCommand command, size_t family = 0) const {
    return window_->findChildren<CRowMenu*>().at(static_cast<int>(family))->Of(command);
  }
  // As after a click: a pop-up may have had the keys.
  void GoTo(const QString& row) {
    window_->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    Tree()->setCurrentIndex(Row(row));
    Tree()->setFocus();
  }
  void ShowHit(const char* plan, const char* group) {
    view_plugin_protocol::SearchedPlan hit;
    hit.index_code = Code(plan);
    hit.name = plan;
    hit.group_index_code = Code(group);
    Q_EMIT window_->Family(0).Panel()->signalGetSearchedResult({hit});
  }
  void OpenMenu(const QString& row) {
    GoTo(row);
    QTest::keyClick(Tree(), Qt::Key_Menu);
    QVERIFY(Menu()->isVisible());
  }
  tarn_ui_data_controller::CPopupMenu* Menu() { return window_->Family(0).Panel()->GetViewMoreMenu(); }
  void Choose(RowCommand command) {
    Menu()->setActiveAction(Entry(command));
    QTest::keyClick(Menu(), Qt::Key_Return);
    QVERIFY(!Menu()->isVisible());
  }
  // n p new plan and group, d duplicate, m move, r rename, w on a wall, s stop, o opens at the start; capitals are off.
  QString Letters() const {
    QString letters;
    for (int command = 0; command < kRowCommands; ++command) {
      const QAction* entry = Entry(static_cast<RowCommand>(command));
      const QChar letter = QStringLiteral("npdmrwso").at(command);
      if (entry->isVisible()) {
        letters += entry->isEnabled() ? letter : letter.toUpper();
      }
    }
    return letters;
  }
  void TypeName(const QString& name) {
    auto* editor = window_->Family(0).Panel()->findChild<QFrame*>("CViewNameEdit");
    QVERIFY(editor && editor->isVisible());
    editor->findChild<QLineEdit*>()->setText(name);
    editor->findChild<QPushButton*>("ptr_save_btn")->click();
    CPlanFixture::Drain();
  }
};

void RowMenuTest::EntriesStandBehindThePanels() {
  Open();
  OpenMenu("Public A plan 2");
  const QList<QAction*> all = Menu()->actions();
  const int first = all.indexOf(Entry(RowCommand::NewPlan));
  QVERIFY(first > all.indexOf(Menu()->MenuItem(tarn_ui_data_controller::Share)) && all.at(first - 1)->isSeparator());
  QCOMPARE(all.mid(first), window_->findChildren<CRowMenu*>().first()->Actions());
}

void RowMenuTest::EntriesFollowTheRow() {
  Open();
  Play("Public A plan 2");
  OpenMenu("Public A plan 2");
  QCOMPARE(Letters(), QString("npdmrwso"));
  Menu()->hide();
  OpenMenu("Public A");
  QCOMPARE(Letters(), QString("nprwSo"));
  Menu()->hide();
  OpenMenu("Plans");
  QCOMPARE(Letters(), QString("Np"));
  Menu()->hide();
  QTRY_COMPARE(Letters(), QString("npdmrwso"));  // for the keys
  SwitchUser("viewer");
  WaitForPlans();
  OpenMenu("Public A plan 2");
  QCOMPARE(Letters(), QString("NPDMRwSo"));
  for (const RowCommand command : {RowCommand::NewPlan, RowCommand::Rename, RowCommand::Stop}) {
    QVERIFY(!Entry(command)->toolTip().isEmpty());
  }
}

void RowMenuTest::CopiesAPlanWithAllItHas() {
  Open({{"load_all", 1}, {"timed_play", 1}});
  const auto before = Stored("Public A plan 2");
  view_plugin_protocol::UpdatePlanRequest timed;
  timed.plan_index_code = before.index_code;
  timed.plan_name = before.name;
  timed.parent_index_code = before.group_index_code;
  timed.auto_play = true;
  timed.begin_time = "01:00:00";
  timed.end_time = "01:00:01";
  timed.pages = {TarnTest::CameraPage(1, 2, {"#0"}, 7), TarnTest::CameraPage(2, 1, {"#0"}, 9)};
  timed.thumbnail = before.thumbnail;
  QCOMPARE(fixture_.InStore().Update(timed), QString());
  GoTo("Public A plan 2");
  QTest::keyClick(Tree(), Qt::Key_D, Qt::ControlModifier);
  ForgetTips();
  QTest::keyClick(Tree(), Qt::Key_D, Qt::ControlModifier);
  QCOMPARE(Tip(), QString("A copy is still being made. Try again in a moment."));
  CPlanFixture::Drain();
  QTRY_VERIFY(Row("Public A plan 2 (2)").isValid());
  QTRY_COMPARE(Tree()->currentIndex(), Row("Public A plan 2 (2)"));
  QCOMPARE(Row("Public A plan 2 (2)").parent(), Row("Public A"));
  const auto copy = Stored("Public A plan 2 (2)");
  QVERIFY(copy.pages.size() == 2 && copy.pages.back().dwell_seconds == 9 && copy.pages.front().windows.size() == 1);
  QVERIFY(!copy.auto_run && copy.index_code != before.index_code);
}

// It neither becomes current in the next user's tree nor keeps him from his own.
void RowMenuTest::ACopyOfTheLastUserIsNotHeardOf() {
  Open();
  auto* copier = window_->RowMenu(0).findChild<TarnClient::CPlanCopier*>();
  QSignalSpy copied(copier, &TarnClient::CPlanCopier::SignalCopied);
  QSignalSpy failed(copier, &TarnClient::CPlanCopier::SignalFailed);
  fixture_.Services().Hold("AddPlan", TarnTest::CRecordingServices::AfterCall);
  copier->Copy(Code("Public A plan 2"));
  QVERIFY(fixture_.Services().WaitUntilHeld("AddPlan"));
  SwitchUser("operator");
  WaitForRows();  // until they come, the store refuses every call
  copier->Copy(Code("Public A plan 2"));
  QCOMPARE(failed.size(), 0);
  fixture_.Services().ReleaseAll();
  QTRY_COMPARE(copied.size() + failed.size(), 1);
  QCOMPARE(failed.value(0).value(0).toString(), QString());
  WaitForPlans();
  QCOMPARE(copied.size(), 1);
  QCOMPARE(copied.first().first().toString(), QString::fromStdString(Code("Public A plan 2 (3)")));
}

void RowMenuTest::CopiesHitsAndSaysWhyNot() {
  Open();
  auto* panel = window_->Family(0).Panel();
  ShowHit("A1 plan 2", "A1");
  auto* hits = panel->findChild<QListView*>("search_list_view");
  QVERIFY(hits->isVisible());
  hits->setFocus();
  QTest::keyClick(hits, Qt::Key_D, Qt::ControlModifier);
  CPlanFixture::Drain();
  QTRY_VERIFY(Row("A1 plan 2 (2)").isValid());
  fixture_.Services().Fail("GetPlanDetail", "no answer");
  QTest::keyClick(hits, Qt::Key_D, Qt::ControlModifier);
  CPlanFixture::Drain();
  QTRY_COMPARE(Tip(), QString("no answer"));
  QVERIFY(!Row("A1 plan 2 (3)").isValid());
}

// No row of it tells what it was called before.
void RowMenuTest::RenamesAHitOfAGroupThatIsNotLoaded() {
  Open({});
  ShowHit("A1 plan 2", "A1");
  auto* hits = window_->Family(0).Panel()->findChild<QListView*>("search_list_view");
  hits->setFocus();
  QTest::keyClick(hits, Qt::Key_F2, Qt::ShiftModifier);
  TypeName("Evening");
  QTRY_COMPARE(Tip(), QString("Renamed to Evening"));
}

void RowMenuTest::RenamesPlansAndGroups() {
  Open();
  OpenMenu("Public A plan 2");
  Choose(RowCommand::Rename);
  TypeName("Morning");
  QTRY_VERIFY(Row("Morning").isValid());
  QTRY_COMPARE(Tree()->currentIndex(), Row("Morning"));
  QCOMPARE(Stored("Morning").pages.size(), size_t(1));
  OpenMenu("Public B");
  Choose(RowCommand::Rename);
  TypeName("Backyard");
  QTRY_VERIFY(Row("Backyard").isValid() && !Row("Public B").isValid());
}

void RowMenuTest::MovesAPlanToAChosenGroup() {
  Open();
  GoTo("Public A plan 2");
  QTest::keyClick(Tree(), Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
  auto* dialog = window_->findChild<QDialog*>("move_to_dlg");
  QVERIFY(dialog && dialog->isVisible());
  auto* move = dialog->findChild<QPushButton*>("move_to_btn");
  QVERIFY(!move->isEnabled() && !move->toolTip().isEmpty());  // it stands there
  auto* field = dialog->findChild<QLineEdit*>();
  QTRY_VERIFY(field->hasFocus());
  QTest::keyClicks(field, "no such group");
  QTest::keyClick(field, Qt::Key_Return);
  QTRY_COMPARE(qobject_cast<WidgetKit::CNewLocationViewWidget*>(field)->IsLocating(), false);
  QVERIFY(dialog->isVisible());
  field->clear();
  QTest::keyClicks(field, "public b");
  QTest::keyClick(field, Qt::Key_Return);  // before that was looked for
  CPlanFixture::Drain();
  QTRY_COMPARE(Row("Public A plan 2").parent(), Row("Public B"));
  QTRY_COMPARE(Tree()->currentIndex(), Row("Public A plan 2"));
  ForgetTips();
  window_->Family(0).Panel()->findChild<MarUIControl::COfferStrip*>()->Take();
  CPlanFixture::Drain();
  QTRY_COMPARE(Tip(), QString("Moved Public A plan 2 back to Public A."));
  // Esc is the dialog's even where the field holds text.
  GoTo("Public A plan 2");
  QTest::keyClick(Tree(), Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
  dialog = window_->findChild<QDialog*>("move_to_dlg");
  field = dialog->findChild<QLineEdit*>();
  QTRY_VERIFY(field->hasFocus());
  QTest::keyClicks(field, "b");
  QTest::keyClick(field, Qt::Key_Escape);
  QVERIFY(!dialog->isVisible());
}

// Of two deletions that are offered in the same words, neither is said by a tip besides.
void RowMenuTest::EqualOffersAreKeptApartByMoreThanWords() {
  Open();
  for (const char* group : {"Public A", "Public B"}) {
    OpenMenu(QString::fromLatin1(group) + " plan 2");
    Choose(RowCommand::Rename);
    TypeName("Twin");
    QTRY_VERIFY(Row(QString::fromLatin1(group) + " plan 2") == QModelIndex());
    CPlanFixture::Drain();
  }
  for (int round = 0; round < 2; ++round) {
    GoTo("Twin");
    ForgetTips();
    TarnHost::SetModalAnswer([](const auto&) { return 1; });
    QTest::keyClick(Tree(), Qt::Key_Delete);
    CPlanFixture::Drain();
    const auto* strip = window_->Family(0).Panel()->findChild<MarUIControl::COfferStrip*>();
    QTRY_COMPARE(strip->OfferCount(), round + 1);
    QTRY_COMPARE(strip->Text(), QString("Deleted Twin."));
    QCoreApplication::processEvents();
    QCOMPARE(Tip(), QString());
  }
  TarnHost::SetModalAnswer({});
}

// Groups that are not loaded are fetched by a search, one after the other, and the panel's own tree stays as it was.
void RowMenuTest::LooksForGroupsOnlyWhenAsked() {
  Open({{"load_all", 0}});
  QTRY_VERIFY(Row("Public B").isValid());
  Tree()->ExpandAsync(Row("Public B"));
  QTRY_VERIFY(Row("Public B plan 2").isValid() && Tree()->isExpanded(Row("Public B")));
  const int asked = fixture_.Services().Count("GetPlanGroups");
  GoTo("Public B plan 2");
  QTest::keyClick(Tree(), Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
  auto* field = window_->findChild<QDialog*>("move_to_dlg")->findChild<QLineEdit*>();
  QTRY_VERIFY(field->hasFocus());
  CPlanFixture::Drain();
  QCOMPARE(fixture_.Services().Count("GetPlanGroups"), asked);
  QTest::keyClicks(field, "a1");  // which stands in one that is not loaded
  auto* move = window_->findChild<QPushButton*>("move_to_btn");
  QVERIFY(!Row("A1").isValid() && !move->isEnabled());
  QTRY_VERIFY(move->isEnabled());
  QTRY_VERIFY(Row("A1 plan 2").isValid());
  CPlanFixture::Drain();
  QCOMPARE(fixture_.Services().Count("GetPlanGroups"), asked + 2);
  QVERIFY(!Tree()->isExpanded(Row("Public A")) && !Tree()->isExpanded(Row("A1")));
}

void RowMenuTest::ReturnWaitsForAGroupThatIsFetched() {
  Open({{"load_all", 0}});
  QTRY_VERIFY(Row("Public B").isValid());
  Tree()->ExpandAsync(Row("Public B"));
  QTRY_VERIFY(Row("Public B plan 2").isValid());
  GoTo("Public B plan 2");
  QTest::keyClick(Tree(), Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
  auto* dialog = window_->findChild<QDialog*>("move_to_dlg");
  auto* field = dialog->findChild<QLineEdit*>();
  QTRY_VERIFY(field->hasFocus());
  fixture_.Services().Fail("GetPlanGroups", "busy");
  QTest::keyClicks(field, "a1");
  QTRY_VERIFY(dialog->findChild<QLabel*>("settings_note")->text().startsWith("Not all groups"));
  fixture_.Services().Mend("GetPlanGroups");
  fixture_.Services().Hold("GetPlanGroups");
  field->clear();
  QTest::keyClicks(field, "a1");
  QVERIFY(fixture_.Services().WaitUntilHeld("GetPlanGroups"));
  QTRY_VERIFY(!qobject_cast<WidgetKit::CNewLocationViewWidget*>(field)->IsLocating());
  QTest::keyClick(field, Qt::Key_Return);
  QVERIFY(dialog->isVisible());
  fixture_.Services().ReleaseAll();
  QTRY_COMPARE(Stored("Public B plan 2").group_index_code, Code("A1"));
}

void RowMenuTest::HitsOfTheOtherListStayThere() {
  Open();
  auto* panel = window_->Family(0).Panel();
  view_plugin_protocol::SearchedPlan hit;
  hit.index_code = Code("Own C plan 2");
  hit.name = "Own C plan 2";
  hit.type = view_plugin_protocol::OwnFamily;
  hit.group_index_code = Code("Own C");
  hit.groups_above = {"Own C"};
  Q_EMIT panel->signalGetSearchedResult({hit});
  panel->findChild<QListView*>("search_list_view")->setFocus();
  for (const RowCommand command : {RowCommand::MoveTo, RowCommand::NewGroup}) {
    ForgetTips();
    Entry(command)->trigger();
    QTRY_VERIFY(Tip().contains("My plans"));
  }
  QVERIFY(!window_->findChild<QDialog*>("move_to_dlg"));
  const int before = fixture_.InStore().Plans(Code("Own C")).size();
  Entry(RowCommand::NewPlan)->trigger();
  QPushButton* save = nullptr;
  QTRY_VERIFY((save = window_->findChild<QPushButton*>("save_plan_btn")) && save->isEnabled());
  save->click();
  CPlanFixture::Drain();
  QTRY_COMPARE(fixture_.InStore().Plans(Code("Own C")).size(), before + 1);
  const auto requests = fixture_.Services().Requests<view_plugin_protocol::AddPlanRequest>();
  QCOMPARE(requests.back().index_type, int32_t(view_plugin_protocol::OwnFamily));
}

// Whatever becomes current while the menu is open, and nothing when its row has gone.
void RowMenuTest::AMenuMeansItsRow() {
  Open();
  OpenMenu("Public A plan 2");
  Tree()->setCurrentIndex(Row("Public B plan 2"));
  Choose(RowCommand::Duplicate);
  CPlanFixture::Drain();
  QTRY_VERIFY(Row("Public A plan 2 (2)").isValid() && !Row("Public B plan 2 (2)").isValid());
  OpenMenu("Public A plan 10");
  window_->Family(0).Controller()->DeletePlanByIndex(Row("Public A plan 10"));
  QTRY_VERIFY(!Row("Public A plan 10").isValid());
  ForgetTips();
  Choose(RowCommand::Duplicate);
  CPlanFixture::Drain();
  QCOMPARE(Tip(), QString("This row is no longer there."));
}

void RowMenuTest::StopsAndOpensAtTheStart() {
  Open();
  Play("Public A plan 2");
  OpenMenu("Public A plan 2");
  Choose(RowCommand::Stop);
  QVERIFY(!Wall().IsPlaying());
  OpenMenu("Public B");
  Choose(RowCommand::OpenAtStart);
  CPlanFixture::Drain();
  QTRY_COMPARE(fixture_.InStore().DefaultView(), Code("Public B"));
  QTRY_VERIFY(Tip().contains("Public B"));
}

void RowMenuTest::KeysSayWhyTheyDoNothing() {
  Open({{"load_all", 1}}, "viewer");
  GoTo("Public A plan 2");
  using Keys = std::pair<Qt::Key, Qt::KeyboardModifiers>;
  const Keys all[] = {{Qt::Key_D, Qt::ControlModifier},
                      {Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier},
                      {Qt::Key_F2, Qt::ShiftModifier},
                      {Qt::Key_N, Qt::ControlModifier}};
  for (const auto& [key, modifier] : all) {
    ForgetTips();
    QTest::keyClick(Tree(), key, modifier);
    QTRY_VERIFY2(Tip().contains("You lack the right"), qPrintable(QKeySequence(key | int(modifier)).toString()));
  }
  // Someone who types means the letter after the cursor.
  ForgetTips();
  auto* field = window_->Family(0).Panel()->GetLocateViewWidget();
  field->setFocus();
  QTest::keyClick(field, Qt::Key_D, Qt::ControlModifier);
  QCOMPARE(Tip(), QString());
  QCOMPARE(fixture_.InStore().Plans(Code("Public A")).size(), 2);
}

QTEST_MAIN(RowMenuTest)
#include "test_row_menu.moc"
