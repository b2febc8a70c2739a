#include <TarnPlanView/auto_plan_helper.h>

#include <QAction>
#include <QDragEnterEvent>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QSplitter>
#include <QTemporaryDir>
#include <QToolButton>
#include <algorithm>

#include "TarnHost/modal_answer.h"
#include "TarnUIDataController/popup_menu.h"
#include "app/state_report.h"
#include "client_desk.h"
#include "commands/play_on_menu.h"
#include "commands/row_commands.h"
#include "commands/row_menu.h"
#include "standard_plan_model.h"
#include "window/closing_question.h"
#include "window/extra_wall.h"
#include "window/walls.h"
#include "window/window_actions.h"
#include "window/window_place.h"

using namespace TarnClient;
using TarnTest::CPlanFixture;

Q_DECLARE_METATYPE(TarnClient::ScreenPlace)
Q_DECLARE_METATYPE(TarnClient::IWallChoice::Wall)

// Several walls at one desk: what is apart, what is shared, and what comes back.
class WallsTest : public TarnTest::CClientDesk {
  Q_OBJECT

 private Q_SLOTS:
  void AWindowFollowsItsScreen_data();
  void AWindowFollowsItsScreen();
  void NewWallTakesAFreeScreen_data();
  void NewWallTakesAFreeScreen();
  void ClosingNamesWhatPlays_data();
  void ClosingNamesWhatPlays();
  void EachMarksWhatItPlays();
  void FourAtTheMost();
  void RowsAreSentToAWall();
  void DropsPlayWhereTheyFall();
  void TimedPlansPlayOnTheFirstAlone();
  void AnEditorCountsForAllWalls();
  void ClosingOneAsksForItAlone();
  void ClosingAllAsksOnce();
  void AnotherUserStopsThemAll();
  void ComeBackAsTheyWereLeft();
  void cleanup() {
    TarnHost::SetModalAnswer({});
    CloseDesk();
  }

 private:
  CExtraWall* NewWall() {
    const QVector<CExtraWall*> before = window_->Walls().Extra();
    window_->OpenNewWall();
    const QVector<CExtraWall*> now = window_->Walls().Extra();
    CExtraWall* wall = *std::find_if(now.begin(), now.end(), [&before](auto* one) { return !before.contains(one); });
    [wall] { QVERIFY(QTest::qWaitForWindowExposed(wall)); }();
    return wall;
  }
  void PlayOn(const CDeskWindow& wall, const QString& plan) {
    wall.Player().Play(Code(plan));
    QTRY_COMPARE(wall.Wall().PlanName(), plan);
  }
  /// Names of the rows that are marked as playing in the models of this wall.
  QString Marked(int number) const {
    QStringList names;
    for (const auto theme : {TarnPlanView::PublicTheme, TarnPlanView::OwnTheme}) {
      const TarnPlanView::CStandardPlanModel* rows = fixture_.Model(QString::number(number), theme);
      const auto exactly = Qt::MatchExactly | Qt::MatchRecursive;
      for (const QModelIndex& row : rows->match(rows->index(0, 0), TarnPlanView::PlayingRole, true, -1, exactly)) {
        names << row.data().toString();
      }
    }
    return names.join(',');
  }
  QString PlayingOn(int number) const {
    const QVector<IWallChoice::Wall> walls = window_->Walls().OpenWalls();
    return number < walls.size() ? walls.at(number).playing : "closed";
  }
  void Answer(int answer) {
    questions_.clear();
    TarnHost::SetModalAnswer([this, answer](const TarnHost::ModalQuestion& question) {
      questions_ << question.text;
      return answer;
    });
  }
  void GoTo(const QString& row) {
    window_->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    Tree()->setCurrentIndex(Row(row));
    Tree()->setFocus();
  }
  CPlayOnMenu* WallMenu() const { return window_->Family(0).Panel()->findChild<CPlayOnMenu*>(); }
  void OpenAgain();

  QStringList questions_;
  QTemporaryDir folder_;
  std::unique_ptr<CUserSettings> kept_;
};

void WallsTest::OpenAgain() {
  if (window_) {
    CloseDesk();
  }
  kept_ = std::make_unique<CUserSettings>(folder_.filePath("settings.json"));
  settings_ = kept_.get();
  Open({{"load_all", 1}}, "operator", "sqlite:" + folder_.filePath("site.sqlite"));
  window_->OpenLeftWalls();
}

void WallsTest::AWindowFollowsItsScreen_data() {
  QTest::addColumn<QVector<ScreenPlace>>("screens");
  QTest::addColumn<ScreenPlace>("was");
  QTest::addColumn<QRect>("opened");
  const ScreenPlace main{"A", {0, 0, 1920, 1080}}, right{"B", {1920, 0, 1920, 1080}}, left{"B", {-1920, 0, 1920, 1080}};
  const ScreenPlace twin{"A", {1920, 0, 1920, 1080}}, unnamed{"", {1920, 0, 1920, 1080}};
  const QRect window(2000, 100, 1200, 800);
  QTest::newRow("as it was") << QVector<ScreenPlace>{main, right} << right << window;
  QTest::newRow("at the other side now") << QVector<ScreenPlace>{main, left} << right << window.translated(-3840, 0);
  QTest::newRow("gone") << QVector<ScreenPlace>{main} << right << window;
  QTest::newRow("two of one name") << QVector<ScreenPlace>{main, twin} << twin << window;
  QTest::newRow("without a name") << QVector<ScreenPlace>{unnamed, main} << ScreenPlace{"", {0, 0, 9, 9}} << window;
  QTest::newRow("place not known") << QVector<ScreenPlace>{main, right} << ScreenPlace{"B", {}} << window;
}

void WallsTest::AWindowFollowsItsScreen() {
  QFETCH(QVector<ScreenPlace>, screens);
  QFETCH(ScreenPlace, was);
  QTEST(FollowScreen(screens, QRect(2000, 100, 1200, 800), was), "opened");
}

void WallsTest::NewWallTakesAFreeScreen_data() {
  QTest::addColumn<QVector<ScreenPlace>>("screens");
  QTest::addColumn<QVector<QRect>>("windows");
  QTest::addColumn<QRect>("opened");
  QTest::addColumn<bool>("maximized");
  const QRect here(0, 0, 1920, 1080), there(1920, 0, 1920, 1080);
  const ScreenPlace main{"A", here, here}, right{"B", there, there.adjusted(0, 0, 0, -40)};
  const QRect first(100, 100, 1200, 800), second = first.translated(1920, 0);
  QTest::newRow("second screen") << QVector<ScreenPlace>{main, right} << QVector<QRect>{first}
                                 << QRect(2240, 120, 1280, 800) << true;
  QTest::newRow("main screen") << QVector<ScreenPlace>{main, right} << QVector<QRect>{second}
                               << QRect(320, 140, 1280, 800) << true;
  QTest::newRow("none is free") << QVector<ScreenPlace>{main, right} << QVector<QRect>{first, second}
                                << second.translated(48, 48) << false;
  QTest::newRow("at the edge") << QVector<ScreenPlace>{main} << QVector<QRect>{QRect(700, 250, 1200, 800)}
                               << QRect(712, 272, 1200, 800) << false;
}

void WallsTest::NewWallTakesAFreeScreen() {
  QFETCH(QVector<ScreenPlace>, screens);
  QFETCH(QVector<QRect>, windows);
  const WindowSpot spot = SpotForWall(screens, windows);
  QTEST(spot.window, "opened");
  QTEST(spot.is_maximized, "maximized");
}

void WallsTest::ClosingNamesWhatPlays_data() {
  QTest::addColumn<QVector<IWallChoice::Wall>>("walls");
  QTest::addColumn<QString>("question");
  using Walls = QVector<IWallChoice::Wall>;
  QTest::newRow("nothing plays") << Walls{{0, ""}, {1, ""}} << "";
  QTest::newRow("one wall") << Walls{{2, "Gate"}} << "\"Gate\" is playing. Close all the same?";
  QTest::newRow("one of two") << Walls{{0, ""}, {1, "Gate"}}
                              << "All walls close. These are playing:\nWall 2: \"Gate\"\nClose all the same?";
  QTest::newRow("names with places") << Walls{{0, "%1 %2"}, {3, "Gate"}}
                                     << "All walls close. These are playing:\nWall 1: \"%1 %2\"\nWall 4: \"Gate\"\n"
                                        "Close all the same?";
}

void WallsTest::ClosingNamesWhatPlays() {
  QFETCH(QVector<IWallChoice::Wall>, walls);
  QTEST(ClosingQuestion(walls), "question");
}

void WallsTest::EachMarksWhatItPlays() {
  Open();
  const auto* name = window_->findChild<QLabel*>("wall_name");
  QVERIFY(!name->isVisible());
  const CExtraWall* second = NewWall();
  QVERIFY(name->isVisible() && name->text() == "Wall 1");
  QCOMPARE(second->windowTitle(), QString("Wall 2"));
  QVERIFY(second->CurrentFamily().Panel()->GetPlanViewTree()->hasFocus() || !second->isActiveWindow());
  Play("Public A plan 2");
  PlayOn(*second, "Own root plan");
  QCOMPARE(Marked(0), QString("Public A plan 2"));
  QCOMPARE(Marked(1), QString("Own root plan"));
  QCOMPARE(second->windowTitle(), QString("Wall 2 - Own root plan"));
  QVERIFY(!window_->windowTitle().contains("Own root plan"));
  QCOMPARE(window_->History().rowCount(), 2);  // one list for all

  const QJsonObject report = QJsonDocument::fromJson(MakeStateReport(window_->Walls().Desks())).object();
  QCOMPARE(report["playing"].toString(), QString("Public A plan 2"));
  const QJsonObject other = report["walls"].toArray().at(0).toObject();
  QCOMPARE(other["monitor"].toString() + ": " + other["playing"].toString(), QString("1: Own root plan"));

  QTest::keyClick(&second->Wall(), Qt::Key_Escape);
  QCOMPARE(Marked(1), QString());
  QCOMPARE(Marked(0), QString("Public A plan 2"));
  QTest::keyClick(second->focusWidget(), Qt::Key_R, Qt::ControlModifier);
  QTRY_COMPARE(second->Wall().PlanName(), QString("Own root plan"));
}

void WallsTest::FourAtTheMost() {
  Open();
  const QAction* one_more = window_->Actions().Of(WindowCommand::NewWall);
  QVector<QPointer<CExtraWall>> walls;
  for (int number = 1; number < CWalls::kMost; ++number) {
    QVERIFY(one_more->isEnabled());
    walls << NewWall();
    QCOMPARE(walls.last()->Desk().Number(), number);
  }
  QVERIFY(!one_more->isEnabled() && one_more->toolTip().contains("four"));
  QTest::keyClick(walls.last()->focusWidget(), Qt::Key_W, Qt::ControlModifier | Qt::ShiftModifier);
  QVERIFY2(Tip().contains("four"), qPrintable(Tip()));
  QCOMPARE(window_->Walls().Extra().size(), 3);

  PlayOn(*walls[1], "Public A plan 2");
  Answer(1);
  walls[1]->Actions().Of(WindowCommand::CloseWall)->trigger();
  QTRY_VERIFY(!walls[1]);
  QCOMPARE(Marked(2), QString());
  QVERIFY(one_more->isEnabled());
  const CExtraWall* again = NewWall();
  QCOMPARE(window_->Walls().Extra().at(1), again);
  QCOMPARE(again->windowTitle(), QString("Wall 3"));
  PlayOn(*again, "Public A plan 10");
  QCOMPARE(Marked(2), QString("Public A plan 10"));
}

// By the menu of a row and by its key; a group plays in turn there.
void WallsTest::RowsAreSentToAWall() {
  Open();
  NewWall();
  GoTo("Public A plan 2");
  QTest::keyClick(Tree(), Qt::Key_Menu);
  auto* menu = window_->Family(0).Panel()->GetViewMoreMenu();
  menu->setActiveAction(window_->RowMenu(0).Of(RowCommand::PlayOn));
  QTest::keyClick(menu, Qt::Key_Right);
  QTRY_VERIFY(WallMenu()->isVisible());
  GoTo("Public B plan 2");  // what becomes current meanwhile is not meant
  QTest::keyClick(WallMenu(), Qt::Key_2);
  QTRY_COMPARE(PlayingOn(1), QString("Public A plan 2"));
  QCOMPARE(PlayingOn(0), QString());
  QVERIFY(!menu->isVisible());

  GoTo("Public B");
  QTest::keyClick(Tree(), Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
  QVERIFY(WallMenu()->isVisible());
  const QAction* other = WallMenu()->actions().at(1);
  QVERIFY(WallMenu()->activeAction() == other && other->text().contains("Public A plan 2"));
  QTest::keyClick(WallMenu(), Qt::Key_N);
  QTRY_COMPARE(PlayingOn(2), QString("Public B plan 2"));
  QVERIFY(window_->Walls().Desks().at(2)->Player().State().cycle);
  QCOMPARE(PlayingOn(0), QString());

  // A root is nothing to play.
  GoTo("Plans");
  QTest::keyClick(Tree(), Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
  QVERIFY(!WallMenu()->isVisible());
  QVERIFY2(Tip().contains("Choose a plan or a group"), qPrintable(Tip()));
}

void WallsTest::DropsPlayWhereTheyFall() {
  Open();
  CLiveWall& second = NewWall()->Wall();
  QMimeData dragged;
  const QString plan = fixture_.Code("Public A plan 2"), site = QString::fromStdString(fixture_.Store().StationId());
  dragged.setData("_drag_json_data_", QString(R"([{"_source_id_":"%1","_station_id_":"%2",)"
                                              R"("_source_type_":"_type_view_","_view_index_code_":"%1"}])")
                                          .arg(plan, site)
                                          .toUtf8());
  const QPoint middle = second.rect().center();
  QDragEnterEvent enter(middle, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&second, &enter);
  QDropEvent drop(middle, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&second, &drop);
  QTRY_COMPARE(PlayingOn(1), QString("Public A plan 2"));
  QCOMPARE(PlayingOn(0), QString());
}

void WallsTest::TimedPlansPlayOnTheFirstAlone() {
  Open();
  const CExtraWall* second = NewWall();
  PlayOn(*second, "Public A plan 2");
  auto& helper = TarnPlanView::CAutoPlanHelper::Instance();
  Q_EMIT helper.signalStartPlanAutoRun(Stored("Public B plan 2"));
  QTRY_COMPARE(PlayingOn(0), QString("Public B plan 2"));
  helper.SetPlanDisplayState(true);
  QTest::keyClick(&second->Wall(), Qt::Key_Escape);
  CPlanFixture::Drain();
  QVERIFY(helper.GetPlanDisplayState());
  QCOMPARE(PlayingOn(1), QString());
  QCOMPARE(PlayingOn(0), QString("Public B plan 2"));
  Q_EMIT helper.signalStopPlanAutoRun();
  QTRY_COMPARE(PlayingOn(0), QString());
}

// What is open in one wall's editor is not saved from another, and what is saved there is played here.
void WallsTest::AnEditorCountsForAllWalls() {
  Open();
  CExtraWall* second = NewWall();
  Play("Public A plan 2");
  const auto* save = window_->findChild<QToolButton*>("wall_save_btn");
  QVERIFY(save->isEnabled());
  TarnPlanView::CViewExternWidget* panel = second->Family(0).Panel();
  panel->SetCurPlanByIndexCode(fixture_.Code("Public A plan 2"));
  panel->EditPlanByIndex(panel->GetPlanViewTree()->currentIndex());
  QLineEdit* name = nullptr;
  QTRY_VERIFY((name = second->findChild<QLineEdit*>("plan_name_edit")) && name->text() == "Public A plan 2");
  QVERIFY(panel->IsEditorOpen() && !window_->Family(0).Panel()->IsEditorOpen());
  QVERIFY2(!save->isEnabled() && save->toolTip().contains("another wall"), qPrintable(save->toolTip()));
  name->setText("Renamed there");
  second->Desk().Save();
  QTRY_COMPARE(PlayingOn(0), QString("Renamed there"));
  QCOMPARE(window_->History().At(0).name, QString("Renamed there"));
  QTRY_VERIFY(save->isEnabled());
}

void WallsTest::ClosingOneAsksForItAlone() {
  Open();
  QPointer<CExtraWall> second = NewWall();
  Play("Public A plan 2");
  Answer(0);
  QVERIFY(second->close());  // nothing plays there
  QCOMPARE(questions_, QStringList());
  QTRY_VERIFY(!second);
  second = NewWall();
  PlayOn(*second, "Public A plan 10");
  QVERIFY(!second->close() && second->isVisible());
  QCOMPARE(questions_.join(';'), QString("\"Public A plan 10\" is playing. Close all the same?"));
  Answer(1);
  QVERIFY(second->close());
  QTRY_VERIFY(!second);
  QCOMPARE(PlayingOn(0), QString("Public A plan 2"));
  QVERIFY(window_->isVisible());
}

void WallsTest::ClosingAllAsksOnce() {
  Open();
  const CExtraWall* second = NewWall();
  PlayOn(*second, "Public A plan 10");
  Answer(0);
  QVERIFY(!window_->close() && second->isVisible());
  QCOMPARE(questions_.size(), 1);
  QVERIFY2(questions_.first().contains("Wall 2: \"Public A plan 10\""), qPrintable(questions_.first()));
  Answer(1);
  QVERIFY(window_->close() && !second->isVisible());
  QCOMPARE(questions_.size(), 1);
}

void WallsTest::AnotherUserStopsThemAll() {
  Open();
  const CExtraWall* second = NewWall();
  Play("Public A plan 2");
  PlayOn(*second, "Own root plan");
  SwitchUser("viewer");
  WaitForPlans();
  QCOMPARE(PlayingOn(0) + PlayingOn(1) + Marked(0) + Marked(1), QString());
  QVERIFY(!second->Desk().Player().State().stopped);  // is not offered to another user
  PlayOn(*second, "Public A plan 2");
  QCOMPARE(Marked(1), QString("Public A plan 2"));
  const QAction* save = second->Actions().Of(WindowCommand::Save);
  QVERIFY2(!save->isEnabled(), "without the right to edit");
}

void WallsTest::ComeBackAsTheyWereLeft() {
  OpenAgain();
  QCOMPARE(window_->Walls().Extra().size(), 0);
  NewWall();
  CExtraWall* third = NewWall();
  Answer(1);
  window_->Walls().Extra().first()->close();  // is not wanted any more
  const QRect place(70, 60, 1100, 700);
  third->setWindowState(Qt::WindowNoState);
  third->setGeometry(place);
  third->ShowFamily(1);
  auto* parts = third->Desk().Parts();
  parts->setSizes({400, parts->width() - 400});
  const int side = parts->sizes().first();
  PlayOn(*third, "Public A plan 2");
  ChosenSettings chosen = kept_->Chosen();
  chosen.opens_first = OpensFirst::LastPlayed;
  QString error;
  QVERIFY(kept_->Choose(kept_->Chosen(), chosen, &error));
  QVERIFY(window_->close());

  OpenAgain();
  QCOMPARE(window_->Walls().Extra().size(), 1);
  third = window_->Walls().Extra().first();
  QCOMPARE(third->windowTitle(), QString("Wall 3"));
  QCOMPARE(third->geometry(), WindowPlaceOn(RoomsOf(ScreensNow()), place));
  QCOMPARE(third->Desk().Parts()->sizes().first(), side);
  QCOMPARE(third->Desk().Tabs()->currentIndex(), 1);
  window_->OpenFirst();
  QTRY_COMPARE(third->Wall().PlanName(), QString("Public A plan 2"));
  QCOMPARE(PlayingOn(0), QString());
  Answer(1);
  QVERIFY(third->close());
  QVERIFY(window_->close());
  OpenAgain();
  QCOMPARE(window_->Walls().Extra().size(), 0);
}

QTEST_MAIN(WallsTest)
#include "test_walls.moc"
