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
  void EachShowStartsAnew();
  void Names_data();
  void Names();
  void RootIsNoGroup();
  void RootIsAGroupWhereSwitchedOn();
  void Times();
  void WritesWhatIsThere();
  void GroupOfThePlayingPlan();
  void DefaultOnceTheTreeCame();
  void GroupVanishesWhileOpen();
  void ChosenGroupOutlastsAReload();
  void WorksWithoutATree();
  void ClosesWithTheActivation();
  void Keys();

 private:
  void Begin(const QMap<QString, int>& switches = {}, const QString& theme = "0") {
    QMap<QString, int> all{{"load_all", 1}, {"timed_play", 1}};
    for (auto it = switches.begin(); it != switches.end(); ++it) {
      all[it.key()] = it.value();
    }
    Open(all);
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
  template <class T>
  T* Part(const char* name) {
    return dialog_->findChild<T*>(name);
  }
  QLineEdit* Name() { return Part<QLineEdit>("name_line_edit_"); }
  MarUIControl::CMultilevelComboBox* Groups() { return Part<MarUIControl::CMultilevelComboBox>("node_combox_"); }
  MarUIControl::CSwitchControl* Switch() { return Part<MarUIControl::CSwitchControl>("auto_run_switch_"); }
  MarUIControl::CRangeTimeEdit* Times_() { return Part<MarUIControl::CRangeTimeEdit>("auto_run_duration_"); }
  QString Group() { return Groups()->GetCurrentIndex().data().toString(); }
  void Choose(const QString& name) {
    const QModelIndex root = Groups()->LocationModel()->index(0, 0);
    Groups()->SetCurrentIndex(
        name.isEmpty() ? root
                       : Groups()->LocationModel()->match(root, Qt::DisplayRole, name, 1, Qt::MatchRecursive)[0]);
  }
  /// What a click on Save leads to.
  QString Save() {
    QTest::mouseClick(Part<QPushButton>("save_button_"), Qt::LeftButton);
    const QString outcome = saved_->isEmpty() ? dialog_->isVisible() ? "refused" : "hidden" : "saved";
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
  QCOMPARE(dialog_->height(), 328);
  QVERIFY(!Times_()->isVisible());
  QTest::mouseClick(Switch(), Qt::LeftButton);
  QCOMPARE(dialog_->height(), 360);
  QVERIFY(Times_()->isVisible());
  const QMap<QString, QSize> sizes{{"name_line_edit_", {240, 32}}, {"node_combox_", {240, 32}},
                                   {"auto_run_switch_", {48, 24}}, {"auto_run_duration_", {240, 32}},
                                   {"save_button_", {96, 32}},     {"auto_run_widget", {240, 96}}};
  for (auto it = sizes.begin(); it != sizes.end(); ++it) {
    QVERIFY2(Part<QWidget>(qPrintable(it.key()))->size() == it.value(), qPrintable(it.key()));
  }
  QTest::mouseClick(Switch(), Qt::LeftButton);
  QCOMPARE(dialog_->height(), 328);
  QVERIFY(!Times_()->isVisible());
  cleanup();
  Begin({{"timed_play", 0}});
  Show();
  QCOMPARE(dialog_->height(), 264);
  for (const char* name : {"auto_run_label_", "auto_run_duration_", "auto_run_switch_", "auto_run_widget"}) {
    QVERIFY2(!Part<QWidget>(name)->isVisible(), name);
  }
  QVERIFY(
      dialog_->rect().contains(QRect(Part<QWidget>("save_button_")->mapTo(dialog_.get(), QPoint()), QSize(96, 32))));
}

void SaveAsTest::EachShowStartsAnew() {
  Begin();
  for (int round = 0; round < 2; ++round) {
    Show();
    QVERIFY2(QRegularExpression("^(Plan|View)\\d{14}$").match(Name()->text()).hasMatch(), qPrintable(Name()->text()));
    QTRY_VERIFY(Name()->hasFocus());
    QVERIFY(!Switch()->isToggled());
    QCOMPARE(Times_()->GetBeginTime(), QTime(0, 0));
    QCOMPARE(Times_()->GetEndTime(), QTime(0, 0));
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
  QTest::newRow("blanks") << "   "
                          << "refused NameCanNotBeEmpty 1";
  QTest::newRow("blanks around") << "  Gate  "
                                 << "saved";
  QTest::newRow("apostrophe and percent") << "50% o'clock"
                                          << "saved";
  for (const char* one : {"\\", "/", ":", "*", "?", "\"", "<", ">", "|"}) {
    QTest::newRow(one) << "a" + QString(one) + "b" << forbidden;
  }
  QTest::newRow("longest") << QString(256, 'x') << "saved";
  QTest::newRow("too long") << QString(257, 'x') << "refused NoMoreThan256CharactersCanBeInput 1";
  QTest::newRow("long by its blanks") << QString(256, 'x') + "   "
                                      << "saved";
}

void SaveAsTest::Names() {
  QFETCH(QString, name);
  QFETCH(QString, outcome);
  Begin();
  Show();
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
  Begin();
  Show();
  Choose(QString());
  QCOMPARE(Save(), QString("refused XZeAMVRefJrzdBvsJW 1"));
  Groups()->SetCurrentIndex(QModelIndex());
  QCOMPARE(Save(), QString("refused"));
  QCOMPARE(dialog_->focusWidget(), Groups());
  Choose("C1");
  QCOMPARE(Save(), QString("saved"));
}

void SaveAsTest::RootIsAGroupWhereSwitchedOn() {
  Begin({{"create_under_root", 1}});
  dialog_->SetCurIndexByPlayItem();
  Show();
  QCOMPARE(Groups()->GetCurrentIndex(), Groups()->LocationModel()->index(0, 0));
  QCOMPARE(Save(), QString("saved"));
  view_plugin_protocol::AddPlanRequest request;
  dialog_->GetPlanParam(request);
  QCOMPARE(request.parent_index_code, std::string("-2"));
  // Without any choice there is nothing to save under, and nothing to say either.
  Show();
  Groups()->SetCurrentIndex(QModelIndex());
  QCOMPARE(Save(), QString("hidden"));
}

void SaveAsTest::Times() {
  Begin();
  Show();
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
  Begin();
  Show();
  Choose("C1");
  Name()->setText("  Night round ");
  Times_()->SetBeginTime(QTime(22, 5, 9));
  Times_()->SetEndTime(QTime(6, 0));
  view_plugin_protocol::AddPlanRequest request;
  request.thumbnail = "kept";
  dialog_->GetPlanParam(request);
  QCOMPARE(request.plan_name, std::string("  Night round "));
  QCOMPARE(request.index_type, 1);
  QCOMPARE(QString::fromStdString(request.parent_index_code), fixture_.Code("C1"));
  QVERIFY(!request.auto_play);
  QCOMPARE(request.begin_time + ' ' + request.end_time, std::string("22:05:09 06:00:00"));
  QCOMPARE(request.thumbnail, std::string("kept"));
  Switch()->setToggle(true);
  dialog_->GetPlanParam(request);
  QVERIFY(request.auto_play);
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
  Choose(QString());
  dialog_->OnSetDefaultIndex();
  QCOMPARE(Groups()->GetCurrentIndex(), Groups()->LocationModel()->index(0, 0));
}

void SaveAsTest::GroupVanishesWhileOpen() {
  Begin();
  Show();
  Choose("C1");
  CStandardViewController controller(fixture_.Own());
  controller.DeletePlanGroupByIndex(fixture_.Own()->FindIndexByIndexCode(fixture_.Code("Own C"), true));
  QTRY_VERIFY(!Groups()->GetCurrentIndex().isValid());
  QCOMPARE(Groups()->CurrentText(), QString());
  QCOMPARE(Save(), QString("refused"));
}

void SaveAsTest::ChosenGroupOutlastsAReload() {
  for (const int load_all : {1, 0}) {
    Begin({{"load_all", load_all}});
    auto controller = std::make_unique<CStandardViewController>(fixture_.Own());
    dialog_->SetViewController(controller.get());
    Show();
    const auto rows = [this] { return Groups()->LocationModel(); };
    const auto row = [&](const QString& name) {
      return rows()->match(rows()->index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchRecursive).value(0);
    };
    auto* tree = qobject_cast<CPlanViewTree*>(Groups()->LocationView());
    for (const char* name : {"Plans", "Own C"}) {
      QTRY_VERIFY(row(name).isValid());
      tree->ExpandAsync(row(name));
    }
    QTRY_VERIFY(row("C1").isValid());
    Choose("C1");
    CViewModelDataManager::Instance().OnUpdateViewModelData();
    QCOMPARE(Group(), QString());
    QTRY_COMPARE(Group(), QString("C1"));
    CPlanFixture::Drain();
    QCOMPARE(Group(), QString("C1"));
    QCOMPARE(Save(), QString("saved"));
    dialog_.reset();
    ground_.reset();
    controller.reset();
    Shut();
  }
}

void SaveAsTest::WorksWithoutATree() {
  Begin({}, "no such monitor");
  dialog_->SetCurIndexByPlayItem();
  dialog_->ExpandDefaultIndex();
  dialog_->OnSetDefaultIndex();
  CStandardViewController controller(fixture_.Own());
  dialog_->SetViewController(&controller);
  Show();
  QCOMPARE(Save(), QString("refused"));
}

void SaveAsTest::ClosesWithTheActivation() {
  Begin();
  Show();
  CDialogGround::PutCursor(dialog_->geometry().topLeft());
  ground_->ActivateAnother();
  QVERIFY(dialog_->isVisible());
  CDialogGround::Activate(dialog_.get());
  CDialogGround::PutCursor(dialog_->geometry().bottomRight() + QPoint(1, 1));
  ground_->ActivateAnother();
  QVERIFY(!dialog_->isVisible());
}

void SaveAsTest::Keys() {
  Begin();
  Show();
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
