#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "MarUIControl/multilevel_combo_box.h"
#include "MarUIControl/range_time_edit.h"
#include "MarUIControl/switch_control.h"
#include "dialog_test.h"
#include "plan_item_role.h"
#include "plan_test.h"
#include "plan_view_tree.h"
#include "save_plan_as_dlg.h"
#include "standard_plan_model.h"
#include "standard_view_controller.h"
#include "view_model_data_manager.h"

using namespace TarnPlanView;
using TarnTest::CDialogGround;
using TarnTest::CPlanFixture;

class SaveAsTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void cleanup();
  void HeightsFollowTimedPlay();
  void EachShowStartsAgain();
  void Names_data();
  void Names();
  void RootIsNoGroup();
  void Times();
  void WritesWhatIsThere();
  void GroupOfThePlayingPlan();
  void DefaultOnceTheTreeCame();
  void GroupVanishesWhileOpen();
  void ChosenGroupOutlastsAReload_data();
  void ChosenGroupOutlastsAReload();
  void ClosesWithTheActivation();
  void Keys();

 private:
  void Begin(const QMap<QString, int>& switches = {{"load_all", 1}, {"timed_play", 1}}, const QString& theme = "0") {
    Open(switches);
    CPlanFixture::Drain();
    ground_ = std::make_unique<CDialogGround>();
    dialog_ = std::make_unique<CSavePlanAsDlg>(theme, ground_->Window());
    saved_ = std::make_unique<QSignalSpy>(dialog_.get(), &CSavePlanAsDlg::signalSavePlanAs);
  }
  void Show() {
    CDialogGround::Activate(ground_->Window());
    dialog_->show();
    QVERIFY(QTest::qWaitForWindowActive(dialog_.get()));
  }
  void BeginShown() {
    Begin();
    Show();
  }
  template <class T>
  T* Part(const char* name) {
    return dialog_->findChild<T*>(name);
  }
  QLineEdit* Name() { return Part<QLineEdit>("name_line_edit_"); }
  MarUIControl::CMultilevelComboBox* Groups() { return Part<MarUIControl::CMultilevelComboBox>("node_combox_"); }
  MarUIControl::CSwitchControl* Switch() { return Part<MarUIControl::CSwitchControl>("auto_run_switch_"); }
  MarUIControl::CRangeTimeEdit* Times_() { return Part<MarUIControl::CRangeTimeEdit>("auto_run_duration_"); }
  QModelIndex RowNamed(const QString& name) {
    const QAbstractItemModel* rows = Groups()->LocationModel();
    return rows->match(rows->index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchRecursive).value(0);
  }
  view_plugin_protocol::AddPlanRequest Written() {
    view_plugin_protocol::AddPlanRequest request;
    request.thumbnail = "kept";
    dialog_->GetPlanParam(request);
    return request;
  }
  QString Group() { return Groups()->GetCurrentIndex().data().toString(); }
  void Choose(const QString& name) { Groups()->SetCurrentIndex(RowNamed(name)); }
  QString Save() {
    QTest::mouseClick(Part<QPushButton>("save_button_"), Qt::LeftButton);
    QString outcome = dialog_->isVisible() ? "refused" : "hidden";
    if (!saved_->isEmpty()) {
      outcome = "saved";
    }
    saved_->clear();
    return QString(outcome + ' ' + ground_->TakeMessage()).trimmed();
  }

  std::unique_ptr<CDialogGround> ground_;
  std::unique_ptr<CSavePlanAsDlg> dialog_;
  std::unique_ptr<QSignalSpy> saved_;
};

void SaveAsTest::cleanup() {
  saved_.reset();
  dialog_.reset();
  ground_.reset();
  Shut();
}

void SaveAsTest::HeightsFollowTimedPlay() {
  Begin();
  QCOMPARE(dialog_->size(), QSize(288, 360));
  Show();
  for (const int height : {328, 360, 328}) {
    QCOMPARE(dialog_->height(), height);
    QCOMPARE(Times_()->isVisible(), height == 360);
    QTest::mouseClick(Switch(), Qt::LeftButton);
  }
  cleanup();
  Begin({{"load_all", 1}, {"timed_play", 0}});
  Show();
  QCOMPARE(dialog_->height(), 264);
  QVERIFY(!Part<QWidget>("auto_run_label_")->isVisible() && !Switch()->isVisible() && !Times_()->isVisible());
  QVERIFY(
      dialog_->rect().contains(QRect(Part<QWidget>("save_button_")->mapTo(dialog_.get(), QPoint()), QSize(96, 32))));
}

void SaveAsTest::EachShowStartsAgain() {
  Begin();
  for (int round = 0; round < 2; ++round) {
    Show();
    QVERIFY2(QRegularExpression("^(Plan|View)\\d{14}$").match(Name()->text()).hasMatch(), qPrintable(Name()->text()));
    QTRY_VERIFY(Name()->hasFocus());
    QVERIFY(!Switch()->isToggled() && Times_()->GetBeginTime() == QTime(0, 0) && Times_()->GetEndTime() == QTime(0, 0));
    Name()->setText("Changed");
    Switch()->setToggle(true);
    Times_()->SetBeginTime(QTime(8, 0));
    Times_()->SetEndTime(QTime(9, 0));
    dialog_->hide();
  }
}

void SaveAsTest::Names_data() {
  const QString forbidden = R"(refused TheInputCannotContainAnyOfTheFollowingCharacters/ \ : * ? " < > | 1)";
  QTest::addColumn<QString>("name");
  QTest::addColumn<QString>("outcome");
  const auto row = [](const QString& name, const QString& outcome) {
    QTest::newRow(qPrintable(name.left(20) + QString::number(name.size()))) << name << outcome;
  };
  row("   ", "refused NameCanNotBeEmpty 1");
  row("  Gate  ", "saved");
  row("50% o'clock", "saved");
  for (const QChar one : QString(R"(\/:*?"<>|)")) {
    row(QString("a%1b").arg(one), forbidden);
  }
  row(QString(256, 'x'), "saved");
  row(QString(257, 'x'), "refused NoMoreThan256CharactersCanBeInput 1");
  row(QString(256, 'x') + "   ", "saved");
}

void SaveAsTest::Names() {
  QFETCH(QString, name);
  QFETCH(QString, outcome);
  BeginShown();
  Choose("Own C");
  Name()->clear();
  QTest::keyClicks(Name(), R"(\/:*?"<|'%>)");
  QCOMPARE(Name()->text(), QString());
  Name()->setMaxLength(1000);
  Name()->setText(name);
  QCOMPARE(Save(), outcome);
  QCOMPARE(Name()->text(), name);
}

void SaveAsTest::RootIsNoGroup() {
  BeginShown();
  Choose("Plans");
  QCOMPARE(Save(), QString("refused XZeAMVRefJrzdBvsJW 1"));
  Groups()->SetCurrentIndex(QModelIndex());
  QCOMPARE(Save(), QString("refused"));
  QCOMPARE(dialog_->focusWidget(), Groups());
  Choose("C1");
  QCOMPARE(Save(), QString("saved"));
  cleanup();
  Begin({{"load_all", 1}, {"create_under_root", 1}});
  dialog_->SetCurIndexByPlayItem();
  Show();
  QCOMPARE(Save(), QString("saved"));
  QCOMPARE(Written().parent_index_code, std::string("-2"));
  Show();
  Groups()->SetCurrentIndex(QModelIndex());
  QCOMPARE(Save(), QString("hidden"));
}

void SaveAsTest::Times() {
  BeginShown();
  Choose("Own C");
  Switch()->setToggle(true);
  QCOMPARE(Save(), QString("refused TheBeginningTimeCannotEqualTheEndTime 1"));
  const auto* note = Part<QLabel>("over_midnight_note_");
  QVERIFY(!note->isVisible());
  Times_()->SetBeginTime(QTime(10, 0));
  Times_()->SetEndTime(QTime(9, 0));
  QVERIFY(note->isVisible());
  QVERIFY(!note->geometry().intersects(Part<QWidget>("save_button_")->geometry()));
  QVERIFY(note->heightForWidth(note->width()) <= note->height());
  Times_()->SetEndTime(QTime(11, 0));
  QVERIFY(!note->isVisible());
  Times_()->SetEndTime(QTime(9, 0));
  Switch()->setToggle(false);
  QVERIFY(!note->isVisible());
  Switch()->setToggle(true);
  QCOMPARE(Save(), QString("saved"));
}

void SaveAsTest::WritesWhatIsThere() {
  BeginShown();
  Choose("C1");
  Name()->setText("  Night round ");
  Times_()->SetBeginTime(QTime(22, 5, 9));
  Times_()->SetEndTime(QTime(6, 0));
  const auto request = Written();
  QCOMPARE(request.plan_name + ' ' + request.begin_time + ' ' + request.end_time + ' ' + request.thumbnail,
           std::string("  Night round  22:05:09 06:00:00 kept"));
  QCOMPARE(QString::fromStdString(request.parent_index_code), fixture_.Code("C1"));
  QVERIFY(request.index_type == 1 && !request.auto_play);
  Switch()->setToggle(true);
  QVERIFY(Written().auto_play);
}

void SaveAsTest::GroupOfThePlayingPlan() {
  Begin();
  dialog_->SetCurIndexByPlayItem();
  QCOMPARE(Group(), QString("Own C"));  // nothing plays: the first group
  CViewModelDataManager::Instance().SetPlanPlayStateByIndexCode("0", fixture_.Code("C1 plan 2"), true);
  dialog_->SetCurIndexByPlayItem();
  QCOMPARE(Group(), QString("C1"));
  CViewModelDataManager::Instance().SetPlanPlayStateByIndexCode("0", fixture_.Code("C1 plan 2"), false);
}

void SaveAsTest::DefaultOnceTheTreeCame() {
  Begin({{"load_all", 0}});
  CStandardViewController controller(fixture_.Own());
  dialog_->SetViewController(nullptr);
  dialog_->SetViewController(&controller);
  dialog_->SetViewController(&controller);
  QVERIFY(!Groups()->GetCurrentIndex().isValid());
  Services().ForgetCalls();
  dialog_->ExpandDefaultIndex();
  QTRY_COMPARE(Group(), QString("Own C"));
  CPlanFixture::Drain();
  QCOMPARE(Services().Count("GetPlanGroups"), 1);
  // Only once: a later choice of the user's stays.
  Choose("Plans");
  dialog_->OnSetDefaultIndex();
  QCOMPARE(Groups()->GetCurrentIndex(), Groups()->LocationModel()->index(0, 0));
}

void SaveAsTest::GroupVanishesWhileOpen() {
  BeginShown();
  Choose("C1");
  CStandardViewController controller(fixture_.Own());
  controller.DeletePlanGroupByIndex(fixture_.Own()->FindIndexByIndexCode(fixture_.Code("Own C"), true));
  QTRY_VERIFY(!Groups()->GetCurrentIndex().isValid());
  QCOMPARE(Save(), QString("refused"));
}

void SaveAsTest::ChosenGroupOutlastsAReload_data() {
  QTest::addColumn<int>("load_all");
  QTest::newRow("all loaded") << 1;
  QTest::newRow("as opened") << 0;
}

void SaveAsTest::ChosenGroupOutlastsAReload() {
  QFETCH(int, load_all);
  Begin({{"load_all", load_all}});
  CStandardViewController controller(fixture_.Own());
  controller.setParent(nullptr);
  dialog_->SetViewController(&controller);
  Show();
  auto* tree = qobject_cast<CPlanViewTree*>(Groups()->LocationView());
  for (const char* name : {"Plans", "Own C"}) {
    QTRY_VERIFY(RowNamed(name).isValid());
    tree->ExpandAsync(RowNamed(name));
  }
  QTRY_VERIFY(RowNamed("C1").isValid());
  Choose("C1");
  CViewModelDataManager::Instance().OnUpdateViewModelData();
  QCOMPARE(Group(), QString());
  QTRY_COMPARE(Group(), QString("C1"));
  CPlanFixture::Drain();
  QCOMPARE(Group(), QString("C1"));
  QCOMPARE(Save(), QString("saved"));
}

void SaveAsTest::ClosesWithTheActivation() {
  BeginShown();
  CDialogGround::PutCursor(dialog_->geometry().topLeft());
  ground_->ActivateAnother();
  QVERIFY(dialog_->isVisible());
  CDialogGround::Activate(dialog_.get());
  CDialogGround::PutCursor(dialog_->geometry().bottomRight() + QPoint(1, 1));
  ground_->ActivateAnother();
  QVERIFY(!dialog_->isVisible());
}

void SaveAsTest::Keys() {
  BeginShown();
  Choose("Own C");
  CDialogGround::PutCursor(dialog_->geometry().bottomRight() + QPoint(50, 50));
  // Opening the drop-down is no loss of the activation, wherever the cursor is.
  Groups()->setFocus();
  QTest::keyClick(Groups(), Qt::Key_F4);
  QTRY_VERIFY(Groups()->IsPopupVisible());
  Groups()->HidePopup();
  QVERIFY(dialog_->isVisible());
  QTest::keyClick(Name(), Qt::Key_Return);
  QCOMPARE(saved_->size(), 1);
  QVERIFY(!dialog_->isVisible());
  Show();
  QTest::keyClick(Switch(), Qt::Key_Space);
  QVERIFY(Switch()->isToggled());
  QTest::keyClick(Name(), Qt::Key_Escape);
  QVERIFY(!dialog_->isVisible());
  QCOMPARE(saved_->size(), 1);
}

QTEST_MAIN(SaveAsTest)
#include "test_save_as.moc"
