#include <QLabel>
#include <QLayout>
#include <QTextDocument>
#include <QToolButton>
#include <QtTest>
#include <memory>

#include "MarUIControl/label.h"
#include "TarnUIDataController/skin_loader.h"
#include "hand_clock.h"
#include "pictures/test_picture_source.h"
#include "plan_records.h"
#include "screen_reader.h"
#include "wall/bar_overflow.h"
#include "wall/live_wall.h"
#include "wall/same_pages.h"
#include "wall/steady_width.h"
#include "wall/turn_time.h"
#include "wall/wall_bar.h"
#include "wall/wall_clock.h"
#include "wall/wall_window.h"

using TarnClient::CLiveWall;
using TarnClient::CReadyPictureSupply;
using TarnClient::CTestPictureSource;
using TarnClient::CTurnTime;
using TarnClient::CWallClock;
using TarnClient::CWallWindow;
using TarnClient::PictureState;
using TarnClient::PictureStatus;
using TarnTest::CHandClock;
using view_plugin_protocol::GetPlanDetailResponse;
using view_plugin_protocol::PlanPage;
using view_plugin_protocol::PlanWindow;

namespace {

int g_running = 0, g_started = 0;

// Counts the sources that run, so that one that was forgotten shows.
class CountedSource : public CTestPictureSource {
 public:
  using CTestPictureSource::CTestPictureSource;
  ~CountedSource() override { SetRunning(false); }
  void Start() override {
    SetRunning(true);
    ++g_started;
    CTestPictureSource::Start();
  }
  void Stop() override {
    SetRunning(false);
    CTestPictureSource::Stop();
  }

 private:
  void SetRunning(bool running) {
    g_running += (running ? 1 : 0) - (running_ ? 1 : 0);
    running_ = running;
  }
  bool running_ = false;
};

PlanPage Page(int number, int split, int dwell, const QStringList& cameras, int first_window = 1) {
  PlanPage page = TarnTest::Page(number, split, {}, {}, dwell);
  for (const QString& camera : cameras) {
    page.windows.push_back(TarnTest::Window(first_window++, camera.toStdString(), camera.isEmpty() ? 0 : 1));
    page.windows.back().resource_name = camera.toStdString();
  }
  return page;
}

GetPlanDetailResponse Plan(const char* name, const std::list<PlanPage>& pages) {
  GetPlanDetailResponse plan;
  plan.index_code = plan.name = name;
  plan.pages = pages;
  return plan;
}

/// A wall's clock whose times are moved by hand: it shows the first of two pages of 15 s, in a turn of 20 s.
struct Clocks {
  Clocks() {
    clock.BeginPlan({15, 15});
    clock.BeginPage(0);
    clock.BeginTurn(20);
  }
  CHandClock* page = new CHandClock;
  CHandClock* turn = new CHandClock;
  CWallClock clock{std::unique_ptr<CHandClock>(page), std::unique_ptr<CHandClock>(turn)};
};

}  // namespace

class LiveWallTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init();
  void cleanup();
  void PlaysAndStops();
  void TurnsByDwellAndLeavesNothingBehind();
  void NumbersStayWhereTheyAre();
  void LongTitlesFit();
  void ButtonsGiveWayToTheTitle();
  void KeysTurnHoldAndStop();
  void SpeaksOnlyOfWhatChanges();
  void FindsThePageAfterAChange_data();
  void FindsThePageAfterAChange();
  void GoesOnWithTheChangedPlan();
  void TurnsOfACycle_data();
  void TurnsOfACycle();
  void NoPageBeginsJustBeforeTheNextPlan();
  void AChangedPlanKeepsItsTurn();
  void HoldStopsTheTurn();
  void OddPlansAreHarmless();
  void PicturesMoveAndRestWhenHidden();
  void ACameraThatIsOfflineHasNoPictures();
  void NamesInToolTipsAreNoMarkup();

 private:
  QStringList Cameras() const {
    QStringList cameras;
    for (const CLiveWall::WindowState& window : wall_->Windows()) {
      cameras << window.camera;
    }
    return cameras;
  }
  int VisibleWindows() const {
    const auto windows = wall_->findChildren<TarnClient::CWallWindow*>();
    return std::count_if(windows.begin(), windows.end(), std::mem_fn(&QWidget::isVisible));
  }

  std::unique_ptr<CLiveWall> wall_;
};

void LiveWallTest::init() {
  tarn_ui_data_controller::CSkinLoader::Instance().LoadSkin("redblack");
  wall_ = std::make_unique<CLiveWall>(std::make_shared<CReadyPictureSupply>(
      [](const PlanWindow& window) { return std::make_unique<CountedSource>(window); }));
  wall_->resize(800, 600);
  wall_->show();
  QVERIFY(QTest::qWaitForWindowExposed(wall_.get()));
}

void LiveWallTest::cleanup() {
  wall_.reset();
  QCOMPARE(g_running, 0);
}

void LiveWallTest::PlaysAndStops() {
  QSignalSpy changed(wall_.get(), &CLiveWall::SignalPlanChanged);
  wall_->Play(Plan("p", {Page(1, 2, 5, {"a"}, 4)}));
  QCOMPARE(VisibleWindows(), 4);
  QCOMPARE(Cameras(), QStringList{"a"});
  QCOMPARE(g_running, 1);
  QCOMPARE(changed.size(), 1);
  QCOMPARE(wall_->PageNumber(), 1);
  wall_->Stop();
  wall_->Stop();
  QCOMPARE(changed.size(), 2);
  QCOMPARE(VisibleWindows(), 0);
  QVERIFY(wall_->PlanName().isEmpty() && wall_->PlanCode().isEmpty() && wall_->PageNumber() == 0);
}

void LiveWallTest::TurnsByDwellAndLeavesNothingBehind() {
  QElapsedTimer clock;
  clock.start();
  wall_->Play(Plan("p", {Page(2, 2, 0, {"", "c"}), Page(1, 2, 1, {"a", "b", "d", "e"})}));
  QCOMPARE(Cameras(), QStringList({"a", "b", "d", "e"}));
  QTRY_COMPARE(wall_->PageNumber(), 2);
  QVERIFY(clock.elapsed() >= 900);
  QCOMPARE(Cameras(), QStringList{"c"});
  QCOMPARE(g_running, 1);
  QTRY_COMPARE(wall_->PageNumber(), 1);
  QVERIFY(clock.elapsed() >= 1900);
}

void LiveWallTest::NumbersStayWhereTheyAre() {
  const auto place = [this](const char* name) { return wall_->findChild<QWidget*>(name)->geometry(); };
  wall_->Play(Plan("tour", {Page(1, 1, 100, {"a"}), Page(2, 1, 1, {"b"})}));
  wall_->Bar()->layout()->activate();
  const QRect page = place("wall_page"), time = place("page_time"), stop = place("wall_stop_btn");
  wall_->GoTo(2);
  QTest::keyClick(wall_.get(), Qt::Key_Space);
  wall_->Bar()->layout()->activate();
  QCOMPARE(wall_->PageNumber(), 2);
  QVERIFY(wall_->IsHeld() && place("wall_page") == page && place("page_time") == time &&
          place("wall_stop_btn") == stop);
  QCOMPARE(TarnClient::SteadyWidth(wall_->fontMetrics(), "7 of 11"),
           TarnClient::SteadyWidth(wall_->fontMetrics(), "1 of 99"));
}

// The long name gives way, and nothing else.
void LiveWallTest::LongTitlesFit() {
  const auto* title = wall_->findChild<MarUIControl::CLabel*>("wall_title");
  const auto* note = wall_->findChild<MarUIControl::CLabel*>("wall_bar_note");
  wall_->Play(Plan(std::string(200, 'W').c_str(), {Page(1, 1, 5, {"a"}), Page(2, 1, 5, {"b"})}));
  wall_->ShowNote("automatic until 21:05");
  QTRY_VERIFY(title->width() < 500 && title->width() > 100);
  QVERIFY(note->width() >= note->sizeHint().width());
  QVERIFY(title->text().size() == 200 && title->accessibleName() == title->text());
}

// What is wanted least often goes first, "stop" never; each button that went is in the menu of one more.
void LiveWallTest::ButtonsGiveWayToTheTitle() {
  QCOMPARE(TarnClient::GroupsWithoutRoom(100, 40, {30, 30}, 10), 0);
  QCOMPARE(TarnClient::GroupsWithoutRoom(99, 40, {30, 30}, 10), 1);
  QCOMPARE(TarnClient::GroupsWithoutRoom(79, 40, {30, 30}, 10), 2);
  QCOMPARE(TarnClient::GroupsWithoutRoom(10, 40, {30, 30}, 10), 2);

  const auto shown = [this](const char* name) { return wall_->findChild<QToolButton*>(name)->isVisible(); };
  const auto* title = wall_->findChild<MarUIControl::CLabel*>("wall_title");
  wall_->Play(Plan("Night patrol", {Page(1, 1, 5, {"a"}), Page(2, 1, 5, {"b"})}));
  QTRY_VERIFY(shown("wall_save_btn") && shown("wall_next_btn") && !shown("wall_more_btn"));
  const int entries = wall_->Bar()->Commands().size();
  wall_->resize(320, 480);
  QTRY_VERIFY(shown("wall_more_btn") && !shown("wall_save_btn") && !shown("wall_next_btn") && shown("wall_stop_btn"));
  QTRY_VERIFY(title->width() >= title->fontMetrics().horizontalAdvance("Night patrol"));
  QCOMPARE(wall_->Bar()->Commands().size(), entries);
  wall_->findChild<QToolButton*>("wall_more_btn")->click();
  QWidget* menu = QApplication::activePopupWidget();
  QVERIFY(menu && menu->actions().contains(wall_->findChild<QToolButton*>("wall_next_btn")->defaultAction()));
  menu->close();
  wall_->Stop();
  QTRY_VERIFY(shown("wall_save_btn") && !shown("wall_next_btn") && !shown("wall_more_btn"));
}

void LiveWallTest::KeysTurnHoldAndStop() {
  wall_->Play(Plan("p", {Page(1, 1, 1, {"a"}), Page(2, 1, 60, {"b"}), Page(3, 1, 60, {"c"})}));
  auto* pause = wall_->findChild<QToolButton*>("wall_pause_btn");
  QTest::keyClick(wall_.get(), Qt::Key_Space);
  const QString name = pause->accessibleName();
  QVERIFY(pause->isChecked());
  QTest::keyClick(wall_.get(), Qt::Key_Left);
  QCOMPARE(wall_->PageNumber(), 3);
  QTest::keyClick(wall_.get(), Qt::Key_Right);
  QCOMPARE(wall_->PageNumber(), 1);
  const QString to_go_on = pause->toolTip();
  const qint64 picture = pause->icon().cacheKey();
  QTest::mouseClick(pause, Qt::LeftButton);
  QVERIFY(!pause->isChecked() && pause->accessibleName() == name);
  QVERIFY2(pause->toolTip() != to_go_on && pause->toolTip().contains(name), qPrintable(pause->toolTip()));
  QVERIFY(pause->icon().cacheKey() != picture);
  QTRY_COMPARE(wall_->PageNumber(), 2);
  const QSignalSpy stops(wall_.get(), &CLiveWall::SignalStopWanted);
  QTest::keyClick(wall_.get(), Qt::Key_Escape);
  QTest::mouseClick(wall_->findChild<QToolButton*>("wall_stop_btn"), Qt::LeftButton);
  QCOMPARE(stops.count(), 2);
}

// What stays is not read out again and again, while time runs and pictures come.
void LiveWallTest::SpeaksOnlyOfWhatChanges() {
  wall_->Play(Plan("p", {Page(1, 1, 60, {"Gate"}), Page(2, 1, 60, {"b"})}));
  auto* window = wall_->findChild<CWallWindow*>();
  QTRY_COMPARE(window->StateName(), QString("live"));
  QTRY_COMPARE(window->accessibleDescription(), QString("live"));
  const TarnTest::CScreenReader reader;
  auto* time = wall_->findChild<QLabel*>("page_time");
  for (int second = 0; second < 2; ++second) {
    const QString before = time->text();
    QTRY_VERIFY(time->text() != before);
  }
  QCOMPARE(reader.Heard(QAccessible::NameChanged), QStringList());
  QCOMPARE(reader.Heard(QAccessible::DescriptionChanged), QStringList());
  const QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(time);
  QCOMPARE(heard->text(QAccessible::Description), time->text());
  QTest::keyClick(wall_.get(), Qt::Key_Space);
  auto* hold = QAccessible::queryAccessibleInterface(wall_->findChild<QToolButton*>("wall_pause_btn"));
  QVERIFY(hold->state().checkable && hold->state().checked);
  QCOMPARE(reader.Heard(QAccessible::NameChanged, hold->role()), QStringList());
  const QAccessibleInterface* picture = QAccessible::queryAccessibleInterface(window);
  QCOMPARE(picture->role(), QAccessible::Graphic);
  QCOMPARE(picture->text(QAccessible::Name), QString("Window 1: Gate"));
}

void LiveWallTest::FindsThePageAfterAChange_data() {
  QTest::addColumn<QString>("before");
  QTest::addColumn<int>("page");
  QTest::addColumn<QString>("now");
  QTest::addColumn<int>("expected");
  QTest::newRow("nothing changed") << "a b c" << 1 << "a b c" << 1;
  QTest::newRow("a page before it has gone") << "a b c" << 1 << "b c" << 0;
  QTest::newRow("pages in another order") << "a b c" << 0 << "c b a" << 2;
  QTest::newRow("it was changed itself") << "a b c" << 1 << "a x c" << 1;
  QTest::newRow("of two alike, the one in its place") << "a b b" << 2 << "b b b" << 2;
  QTest::newRow("it has gone") << "a b c" << 1 << "a c" << 1;
  QTest::newRow("it has gone, and its place too") << "a b c" << 2 << "a b" << 0;
}

void LiveWallTest::FindsThePageAfterAChange() {
  QFETCH(QString, before);
  QFETCH(int, page);
  QFETCH(QString, now);
  // Numbers, names and times are not what a page shows.
  const auto pages = [](const QString& cameras, int dwell) {
    QVector<PlanPage> made;
    for (const QString& camera : cameras.split(' ')) {
      made.append(Page(made.size() + 1, 1, dwell, {camera}));
      made.last().name = "Page " + std::to_string(made.size());
    }
    return made;
  };
  QTEST(TarnClient::PageAfterChange(pages(before, 5), page, pages(now, 7)), "expected");
}

void LiveWallTest::GoesOnWithTheChangedPlan() {
  const auto bar = [this](const char* name) { return wall_->findChild<QLabel*>(name)->text(); };
  wall_->Play(Plan("p", {Page(1, 1, 60, {"a"}), Page(2, 1, 60, {"b"}), Page(3, 1, 60, {"c"})}));
  wall_->Turn(1);
  QTest::keyClick(wall_.get(), Qt::Key_Space);
  const QString held = bar("page_time");
  QSignalSpy changed(wall_.get(), &CLiveWall::SignalPlanChanged);
  g_started = 0;
  GetPlanDetailResponse renewed = Plan("p", {Page(1, 1, 60, {"b"}), Page(2, 1, 60, {"c"})});
  renewed.name = "Renamed";
  wall_->Renew(renewed);
  QCOMPARE(wall_->PlanName(), QString("Renamed"));
  QCOMPARE(wall_->PageNumber(), 1);
  QCOMPARE(Cameras(), QStringList{"b"});
  QCOMPARE(g_started, 0);  // what is on is not interrupted
  QCOMPARE(bar("page_time"), held);
  renewed.pages.front() = Page(1, 2, 90, {"b", "d"});
  wall_->Renew(renewed);
  QCOMPARE(Cameras(), QStringList({"b", "d"}));
  QCOMPARE(VisibleWindows(), 4);
  QCOMPARE(bar("page_time"), held);
  QTest::keyClick(wall_.get(), Qt::Key_Space);
  QCOMPARE(bar("page_time"), QString("90 s"));
  renewed.pages.pop_back();
  wall_->Renew(renewed);
  QVERIFY(!wall_->findChild<QToolButton*>("wall_pause_btn")->isVisible());
  wall_->Turn(1);
  QCOMPARE(wall_->PageNumber(), 1);
  renewed.index_code = "another plan";
  renewed.pages.clear();
  wall_->Renew(renewed);
  QCOMPARE(Cameras(), QStringList({"b", "d"}));
  QCOMPARE(changed.size(), 0);
}

void LiveWallTest::TurnsOfACycle_data() {
  QTest::addColumn<QVector<int>>("pages");
  QTest::addColumn<int>("turn");
  QTest::addColumn<int>("page");  // where the user goes
  QTest::addColumn<int>("before");
  QTest::addColumn<int>("after");
  using Pages = QVector<int>;
  QTest::newRow("one short page") << Pages{10} << 20 << 0 << 7 << 10;
  QTest::newRow("tour beyond the turn, on") << Pages{15, 15, 5} << 35 << 2 << 30 << 5;
  QTest::newRow("tour beyond the turn, back") << Pages{15, 15, 5} << 35 << 0 << 6 << 35;
  QTest::newRow("tour as long as the turn") << Pages{10, 10} << 20 << 1 << 19 << 10;
  QTest::newRow("short tour goes around, on") << Pages{5, 5} << 20 << 1 << 18 << 18;
  QTest::newRow("short tour goes around, back") << Pages{5, 5} << 20 << 0 << 3 << 10;
  QTest::newRow("times out of bounds") << Pages{-5, 0, 25} << 27 << 1 << 27 << 26;
  QTest::newRow("days of pages") << Pages{2147483647, 2147483647} << 86400 << 1 << 86400 << 86400;
}

void LiveWallTest::TurnsOfACycle() {
  QFETCH(QVector<int>, pages);
  QFETCH(int, page);
  QFETCH(int, before);
  const CTurnTime time(20, pages);
  QTEST(time.Seconds(), "turn");
  QTEST(time.SecondsLeftFrom(page, before), "after");
}

// Otherwise a tour's first page would flash up while its next plan is being fetched.
void LiveWallTest::NoPageBeginsJustBeforeTheNextPlan() {
  Clocks clocks;
  auto& [page, turn, clock] = clocks;
  QSignalSpy pages(&clock, &CWallClock::SignalPageOver), turns(&clock, &CWallClock::SignalTurnOver);
  QCOMPARE(turn->Seconds(), 30);
  turn->SetMsLeft(15004);
  page->EndTurn();
  QCOMPARE(pages.size(), 1);
  clock.BeginPage(1);
  turn->SetMsLeft(4);
  page->EndTurn();
  QVERIFY(pages.size() == 1 && page->Seconds() == 1);
  turn->EndTurn();
  QCOMPARE(turns.size(), 1);
  page->EndTurn();  // the next plan is long in coming
  QCOMPARE(pages.size(), 2);

  // The other way round: the turn is over a moment before the page.
  clock.BeginPage(1);
  clock.BeginTurn(20);
  page->SetMsLeft(4);
  turn->EndTurn();
  QVERIFY(pages.size() == 2 && page->Seconds() == 1);
}

// A save of the plan that is on does not take its turn away.
void LiveWallTest::AChangedPlanKeepsItsTurn() {
  Clocks clocks;
  auto& [page, turn, clock] = clocks;
  page->SetMsLeft(10000);
  turn->SetMsLeft(25000);
  clock.SetHeld(true);
  QVERIFY(page->IsPaused() && turn->IsPaused());
  clock.ChangePlan({15, 15}, 0, 0);
  QVERIFY(page->Seconds() == 10 && turn->Seconds() == 25);
  clock.ChangePlan({15, 15, 20}, 0, 0);  // a page more
  QVERIFY(page->Seconds() == 10 && turn->Seconds() == 45);
  clock.ChangePlan({30, 15, 20}, 0, 0);  // it begins again
  QVERIFY(page->Seconds() == 30 && turn->Seconds() == 65);
  clock.ChangePlan({5}, 0, 0);
  QVERIFY(clock.IsHeld() && turn->IsPaused() && page->Seconds() == 0 && turn->Seconds() == 20);
  clock.EndTurns();
  clock.ChangePlan({5, 5}, 0, 1);
  QVERIFY(!clock.IsInTurn() && page->Seconds() == 5 && turn->Seconds() == 0);
}

void LiveWallTest::HoldStopsTheTurn() {
  auto* turn = new CHandClock;
  CLiveWall wall(std::make_shared<CReadyPictureSupply>(&CTestPictureSource::Make), nullptr,
                 std::unique_ptr<CHandClock>(turn));
  wall.resize(640, 480);  // room for the whole bar
  wall.show();
  const auto text = [&wall](const char* name) { return wall.findChild<QLabel*>(name)->text(); };
  const auto shown = [&wall](const char* name) { return wall.findChild<QWidget*>(name)->isVisible(); };
  wall.Play(Plan("one page", {Page(1, 1, 5, {"a"})}));
  QVERIFY(!shown("wall_pause_btn") && !shown("turn_time"));
  QTest::keyClick(&wall, Qt::Key_Space);
  QVERIFY(!wall.IsHeld());
  wall.BeginTurn(20);
  QVERIFY(shown("wall_pause_btn") && shown("wall_next_btn") && shown("turn_time") && !shown("page_time"));
  QCOMPARE(text("turn_time"), QString("20 s"));
  QTest::keyClick(&wall, Qt::Key_Space);
  QVERIFY(turn->IsPaused());
  QCOMPARE(text("turn_time"), QString("held"));
  QTest::mouseClick(wall.findChild<QToolButton*>("wall_pause_btn"), Qt::LeftButton);
  QVERIFY(!turn->IsPaused());

  QSignalSpy steps(&wall, &CLiveWall::SignalStepWanted);
  QTest::keyClick(&wall, Qt::Key_Right);
  QTest::keyClick(&wall, Qt::Key_Left);
  QCOMPARE(steps, (QList<QVariantList>{{1}, {-1}}));

  wall.Play(Plan("tour", {Page(1, 1, 15, {"a"}), Page(2, 1, 10, {"b"})}));
  QVERIFY(!turn->IsPaused() && turn->Seconds() == 0);
  wall.BeginTurn(20);
  QTest::keyClick(&wall, Qt::Key_Space);
  QVERIFY(text("turn_time") == "held" && text("page_time") == "held");
  wall.EndTurns();
  QVERIFY(wall.IsHeld() && !shown("turn_time") && shown("page_time"));
}

void LiveWallTest::OddPlansAreHarmless() {
  wall_->Play(Plan("no pages", {}));
  QVERIFY(wall_->IsPlaying() && Cameras().isEmpty());
  QCOMPARE(VisibleWindows(), 1);
  wall_->Play(Plan("beyond", {Page(1, 1, -5, {"a", "b"}), Page(1, 77, 2147483647, {"z"}, 0)}));
  QCOMPARE(Cameras(), QStringList{"a"});
  wall_->Turn(1);
  QVERIFY(Cameras().isEmpty());
  wall_->Turn(-1001);
  QCOMPARE(wall_->PageNumber(), 1);
  const std::string long_name(256, 'W');
  wall_->Play(Plan(long_name.c_str(), {Page(1, 8, 5, {QString(256, 'W')})}));
  // Nothing a plan holds makes the window grow; the bar of the plan before had more buttons until it was laid out
  // again.
  QTRY_VERIFY((wall_->resize(400, 300), wall_->width() == 400));
}

void LiveWallTest::PicturesMoveAndRestWhenHidden() {
  wall_->Play(Plan("p", {Page(1, 1, 5, {"a"})}));
  const auto frames = [this] { return wall_->Windows().constFirst().frames; };
  QTRY_VERIFY(frames() >= 5);
  wall_->hide();
  const qint64 at_hiding = frames();
  CLiveWall other(std::make_shared<CReadyPictureSupply>(&CTestPictureSource::Make));
  other.resize(300, 200);
  other.show();
  other.Play(Plan("q", {Page(1, 1, 5, {"b"})}));
  QTRY_VERIFY(other.Windows().constFirst().frames >= 5);
  QCOMPARE(frames(), at_hiding);
  wall_->show();
  QTRY_VERIFY(frames() > at_hiding);
}

void LiveWallTest::ACameraThatIsOfflineHasNoPictures() {
  bool online = false;
  CLiveWall wall(std::make_shared<CReadyPictureSupply>([&online](const auto& window) {
    return std::make_unique<CTestPictureSource>(window, [&online] { return online; });
  }));
  wall.resize(wall_->size());
  wall.show();
  wall.Play(Plan("p", {Page(1, 1, 5, {"Gate"})}));
  const auto picture = [&wall] { return wall.findChild<TarnClient::CWallWindow*>()->grab().toImage(); };
  QTRY_COMPARE(wall.Windows().value(0).state, QString("offline"));
  QVERIFY(!picture().isNull());
  QCOMPARE(wall.Windows().value(0).frames, qint64(0));
  online = true;
  QTRY_VERIFY(wall.Windows().value(0).state == "live" && wall.Windows().value(0).frames > 0);
  online = false;
  QCOMPARE(wall.Windows().value(0).state, QString("offline"));
}

void LiveWallTest::NamesInToolTipsAreNoMarkup() {
  wall_->Play(Plan("p", {Page(1, 1, 5, {"Gate A & B"}), Page(2, 1, 5, {"<b>x"})}));
  const auto* window = wall_->findChild<TarnClient::CWallWindow*>();
  QTRY_COMPARE(window->toolTip(), QString("Gate A & B"));
  QTest::keyClick(wall_.get(), Qt::Key_Right);
  QTRY_VERIFY(window->toolTip().contains("&lt;b&gt;x") && Qt::mightBeRichText(window->toolTip()));
}

QTEST_MAIN(LiveWallTest)
#include "test_live_wall.moc"
