#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <QTranslator>
#include <QtTest>

#include "TarnHost/modal_answer.h"
#include "client_desk.h"
#include "plan_records.h"
#include "window/window_size.h"

namespace {

enum Answer { KeepEditing = 0, SaveFirst = 1, ThrowAway = 2 };  // as the question's buttons stand

}  // namespace

// The plan editor in the client's own window: its keys, and leaving with changes that are not saved.
class ClientPlanEditorTest : public TarnTest::CClientDesk {
  Q_OBJECT

 private Q_SLOTS:
  void KeysMeanThePlanThatIsEdited();
  void WallSavesAndPlaysWhatTheEditorLeaves();
  void ClosingAsksAndSavesFirst();
  void ClosingAsksAboutThePlayedPlanFirst();
  void FailedSaveKeepsTheWindow();
  void CancelledCloseLeavesWhatWaits();
  void SwitchOfUserAsks();
  void EditsOutlastARefusedSwitch();
  void DeskStaysLockedWhileItAsks();
  void WallTakesTheNewestVersion();
  void FitsTheLeastWindow_data();
  void FitsTheLeastWindow();

 private:
  void Edit(const QString& plan);
  view_plugin_protocol::UpdatePlanRequest UpdateOf(const QString& plan) { return TarnTest::Unchanged(Stored(plan)); }
  /// The buttons of the window that are not wholly in it.
  QString ButtonsOutside() const;
  QWidget* Editor() const { return window_->findChild<QWidget*>("add_edit_plan_widget"); }
  QLineEdit* Name() const { return window_->findChild<QLineEdit*>("plan_name_edit"); }
  bool IsEditing() const { return Editor() && Editor()->isVisible(); }
  void Answer(int answer) {
    questions_ = 0;
    TarnHost::SetModalAnswer([this, answer](const TarnHost::ModalQuestion&) {
      ++questions_;
      was_locked_ = window_->IsDeskLocked();
      return answer;
    });
  }
  static void PressCtrl(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key, Qt::ControlModifier); }

  int questions_ = 0;
  bool was_locked_ = false;  // at the last of them
};

void ClientPlanEditorTest::Edit(const QString& plan) {
  const size_t family = Row(plan).isValid() ? 0 : 1;
  window_->activateWindow();
  QVERIFY(QTest::qWaitForWindowActive(window_.get()));
  window_->ShowFamily(family);
  window_->Family(family).Panel()->EditPlanByIndex(Row(plan, family));
  QTRY_VERIFY(IsEditing() && Name()->text() == plan);
  QTRY_VERIFY(Name()->hasFocus());
}

QString ClientPlanEditorTest::ButtonsOutside() const {
  QStringList outside;
  for (const auto* button : window_->findChildren<QAbstractButton*>()) {
    const QRect place(button->mapTo(button->window(), QPoint()), button->size());
    if (button->isVisible() && button->window() == window_.get() && !window_->rect().contains(place)) {
      outside << QString("%1 ends at %2, %3").arg(button->objectName()).arg(place.right()).arg(place.bottom());
    }
  }
  return outside.join("; ");
}

void ClientPlanEditorTest::KeysMeanThePlanThatIsEdited() {
  Open();
  Edit("Public A plan 10");
  PressCtrl(Qt::Key_F);
  QCOMPARE(QApplication::focusWidget()->objectName(), QString("camera_search"));
  Name()->setFocus();
  Name()->selectAll();
  QTest::keyClicks(Name(), "Renamed here");
  PressCtrl(Qt::Key_Z);  // the plan's undo, not the field's
  QCOMPARE(Name()->text(), QString("Public A plan 10"));
}

// Two ways to save one plan at a time would make the user's own save a conflict with itself.
void ClientPlanEditorTest::WallSavesAndPlaysWhatTheEditorLeaves() {
  Open();
  auto pages = UpdateOf("Public A plan 2");
  pages.pages.push_back(TarnTest::CameraPage(2, 1, {}));
  QCOMPARE(fixture_.InStore().Update(pages), QString());
  Play("Public A plan 2");
  Wall().Turn(1);
  QTest::keyClick(&Wall(), Qt::Key_Space);
  const QString held = Wall().findChild<QLabel*>("page_time")->text();

  const auto* save = window_->findChild<QToolButton*>("wall_save_btn");
  QVERIFY(save->isEnabled());
  Edit("Public A plan 2");
  QVERIFY(!save->isEnabled());
  QVERIFY(save->toolTip().contains("editor") && save->accessibleDescription().contains("editor"));
  Name()->setText("Renamed here");
  Wall().setFocus();
  PressCtrl(Qt::Key_S);  // the editor's, wherever the focus is
  QTRY_VERIFY(!IsEditing());
  QTRY_COMPARE(Wall().PlanName(), QString("Renamed here"));
  QCOMPARE(Wall().PageNumber(), 2);
  QCOMPARE(Wall().findChild<QLabel*>("page_time")->text(), held);

  QVERIFY(save->isEnabled());
  const auto revision = Stored("Renamed here").revision;
  ForgetTips();
  window_->Save();  // over the editor's version, which is on the wall now
  QTRY_COMPARE(Stored("Renamed here").revision, revision + 1);
  TarnTest::CPlanFixture::Drain();

  // Opened while a save of the wall's was looking at the plan.
  fixture_.Services().Hold("GetPlanDetail");
  window_->Save();
  QVERIFY(fixture_.Services().WaitUntilHeld("GetPlanDetail"));
  window_->Family(0).Panel()->EditPlanByIndex(Row("Renamed here"));
  fixture_.Services().ReleaseAll();
  QTRY_VERIFY(Tip().contains("editor"));
  TarnTest::CPlanFixture::Drain();
  QCOMPARE(Stored("Renamed here").revision, revision + 1);
}

void ClientPlanEditorTest::ClosingAsksAndSavesFirst() {
  Open();
  Edit("Public A plan 10");
  Name()->setText("Not yet");
  Answer(KeepEditing);
  QVERIFY(!window_->close());
  QCOMPARE(questions_, 1);
  QVERIFY(IsEditing());
  QCOMPARE(Name()->text(), QString("Not yet"));

  Answer(SaveFirst);
  QVERIFY(!window_->close());
  QTRY_VERIFY(!window_->isVisible());
  QCOMPARE(questions_, 1);
  QVERIFY(Row("Not yet").isValid());
}

// What plays asks first, and once: no edits are thrown away, and no editor is closed, for a close that is cancelled.
void ClientPlanEditorTest::ClosingAsksAboutThePlayedPlanFirst() {
  Open();
  Play("Public A plan 2");
  Edit("Public A plan 10");
  Answer(KeepEditing);
  QVERIFY(!window_->close());
  QVERIFY(IsEditing() && questions_ == 1);
  Name()->setText("Not yet");
  QVERIFY(!window_->close());
  QVERIFY(IsEditing() && questions_ == 2);
  Answer(SaveFirst);  // which confirms the first question, too
  QVERIFY(!window_->close());
  QTRY_VERIFY(!window_->isVisible());
  QCOMPARE(questions_, 2);
  QVERIFY(Row("Not yet").isValid());
}

void ClientPlanEditorTest::FailedSaveKeepsTheWindow() {
  Open();
  Edit("Public A plan 10");
  Name()->setText("Not yet");
  fixture_.Services().Fail("UpdatePlan", "The store is away");
  Answer(SaveFirst);
  QVERIFY(!window_->close());
  QTRY_COMPARE(Tip(), QString("The store is away"));
  QTRY_VERIFY(Editor()->findChild<QWidget*>("save_plan_btn")->isEnabled());
  QVERIFY(window_->isVisible() && IsEditing());
  QCOMPARE(Name()->text(), QString("Not yet"));

  // Saved later for its own sake it leaves the window open.
  fixture_.Services().Mend("UpdatePlan");
  PressCtrl(Qt::Key_S);
  QTRY_VERIFY(Row("Not yet").isValid());
  QTRY_VERIFY(!IsEditing());
  TarnTest::CPlanFixture::Drain();
  QVERIFY(window_->isVisible());
}

// A switch of user waits for the save; a close that the user takes back must not take its turn.
void ClientPlanEditorTest::CancelledCloseLeavesWhatWaits() {
  Open();
  Play("Public A plan 2");
  Edit("Public A plan 10");
  Name()->setText("Not yet");
  fixture_.Services().Hold("UpdatePlan");
  Answer(SaveFirst);
  window_->SwitchUser("viewer");
  QTRY_COMPARE(questions_, 1);
  QVERIFY(fixture_.Services().WaitUntilHeld("UpdatePlan"));
  Answer(KeepEditing);  // Cancel, of the question about what plays
  QVERIFY(!window_->close());
  QCOMPARE(questions_, 1);
  fixture_.Services().ReleaseAll();
  QTRY_COMPARE(window_->User(), QString("viewer"));
  TarnTest::CPlanFixture::Drain();
  QVERIFY(window_->isVisible());
}

void ClientPlanEditorTest::SwitchOfUserAsks() {
  Open();
  Edit("Own C plan 2");
  Name()->setText("Mine");
  Answer(KeepEditing);
  window_->SwitchUser("viewer");
  QTRY_COMPARE(questions_, 1);
  QCOMPARE(window_->User(), QString("operator"));
  QVERIFY(IsEditing());

  Answer(SaveFirst);
  window_->SwitchUser("viewer");
  QTRY_COMPARE(window_->User(), QString("viewer"));
  QCOMPARE(questions_, 1);
  QVERIFY(!IsEditing());
  QTRY_VERIFY(Row("Plans").isValid());
  QVERIFY(fixture_.Store().LogIn({"operator"}).IsDone());
  QTRY_VERIFY(Row("Mine", 1).isValid());
}

// The password comes first: what is edited is asked about when that was right, and goes for nothing else.
void ClientPlanEditorTest::EditsOutlastARefusedSwitch() {
  Open();
  SetPassword("viewer", "gate 7");
  Edit("Own C plan 2");
  Name()->setText("Mine");
  Answer(KeepEditing);
  const auto is_as_it_was = [this] { return IsEditing() && Name()->text() == "Mine" && window_->User() == "operator"; };
  window_->SwitchUser("viewer");
  TypeLogIn("viewer", "gate 8");
  QTRY_VERIFY(!LogInFault().isEmpty());
  LogInDialog()->reject();
  QTRY_VERIFY(!LogInDialog());
  QVERIFY(questions_ == 0 && is_as_it_was());
  window_->SwitchUser("viewer");
  TypeLogIn("viewer", "gate 7");
  QTRY_COMPARE(questions_, 1);
  QTRY_VERIFY(!LogInDialog());
  QVERIFY(is_as_it_was());
  Answer(ThrowAway);
  window_->SwitchUser("viewer");
  TypeLogIn("viewer", "gate 7");
  QTRY_COMPARE(window_->User(), QString("viewer"));
  QVERIFY(questions_ == 1 && !IsEditing());
  WaitForPlans();
}

void ClientPlanEditorTest::DeskStaysLockedWhileItAsks() {
  Open();
  Edit("Own C plan 2");
  Name()->setText("Mine");
  window_->LockDesk();
  window_->UnlockDesk();
  Answer(KeepEditing);
  TypeLogIn("viewer", QString());
  QTRY_COMPARE(questions_, 1);
  QTRY_VERIFY(!LogInDialog());
  QVERIFY(was_locked_ && window_->IsDeskLocked() && IsEditing() && !Editor()->isEnabled());
  QCOMPARE(window_->User(), QString("operator"));
  window_->UnlockDesk();
  TypeLogIn("operator", QString());
  QTRY_VERIFY(!window_->IsDeskLocked());
  QVERIFY(Editor()->isEnabled());
  QCOMPARE(Name()->text(), QString("Mine"));
  Answer(ThrowAway);
}

// What was saved comes onto the wall, also when it cannot be read at once, but never after what was saved later.
void ClientPlanEditorTest::WallTakesTheNewestVersion() {
  Open();
  Play("Public A plan 2");
  const auto revision = Stored("Public A plan 2").revision;
  auto& services = fixture_.Services();
  services.Fail("GetPlanDetail", "The disk is tired");
  window_->Family(0).Controller()->UpdatePlanParam(UpdateOf("Public A plan 2"), "Public A plan 2");
  QTRY_COMPARE(Stored("Public A plan 2").revision, revision + 1);
  TarnTest::CPlanFixture::Drain();
  services.Mend("GetPlanDetail");
  QTRY_COMPARE_WITH_TIMEOUT(Wall().Plan().revision, revision + 1, 20000);

  services.Hold("GetPlanDetail", TarnTest::CRecordingServices::AfterCall);
  window_->Family(0).Controller()->UpdatePlanParam(UpdateOf("Public A plan 2"), "Public A plan 2");
  QVERIFY(services.WaitUntilHeld("GetPlanDetail"));
  QCOMPARE(fixture_.InStore().Update(UpdateOf("Public A plan 2")), QString());
  Wall().Play(Stored("Public A plan 2"));
  services.ReleaseAll();
  TarnTest::CPlanFixture::Drain();
  QCOMPARE(Wall().Plan().revision, revision + 3);
}

void ClientPlanEditorTest::FitsTheLeastWindow_data() {
  QTest::addColumn<QString>("language");
  QTest::newRow("English") << "en";
  QTest::newRow("Chinese") << "zh_CN";
}

// With all that asks for room: many windows and pages, long names, a cycle, the editor.
void ClientPlanEditorTest::FitsTheLeastWindow() {
  QFETCH(QString, language);
  QTranslator texts;
  QVERIFY(texts.load(QString(":/TarnClient/translations/tarn_%1.qm").arg(language)));
  QCoreApplication::installTranslator(&texts);
  Open();
  view_plugin_protocol::UpdatePlanRequest large = UpdateOf("Public B plan 2");
  large.pages.clear();
  large.plan_name = "Gates, yards and all the ways between them as they are seen at night";
  for (int page = 1; page <= 8; ++page) {
    large.pages.push_back(TarnTest::FullPage(page));
    large.pages.back().name = large.plan_name;
    large.pages.back().dwell_seconds = 3600;
    for (auto& window : large.pages.back().windows) {
      window.resource_name = large.plan_name;
    }
  }
  window_->Family(0).Controller()->UpdatePlanParam(large, "Public B plan 2");
  const QString name = QString::fromStdString(large.plan_name);
  QTRY_VERIFY(Row(name).isValid());
  Q_EMIT window_->Family(0).Panel()->SignalPlanGroupCycle(fixture_.Code("Public B"), 20);
  QTRY_COMPARE(Wall().PlanName(), name);
  Edit(name);
  const QSize least = TarnClient::WindowSizeFor({0, 0});
  window_->resize(least);
  QTRY_COMPARE(window_->size(), least);
  const QSize needed = window_->minimumSizeHint();
  QVERIFY2(needed.width() <= least.width() && needed.height() <= least.height(),
           qPrintable(QString("%1 x %2").arg(needed.width()).arg(needed.height())));
  QTRY_COMPARE(ButtonsOutside(), QString());  // once the editor stands
}

QTEST_MAIN(ClientPlanEditorTest)
#include "test_client_plan_editor.moc"
