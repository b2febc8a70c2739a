#include <QSemaphore>
#include <QThreadPool>
#include <QtTest>
#include <atomic>
#include <cmath>
#include <functional>

#include "TarnUIDataController/skin_loader.h"
#include "hand_clock.h"
#include "hand_pictures.h"
#include "plan_records.h"
#include "qt/stretched_image.h"
#include "screen_reader.h"
#include "wall/live_wall.h"
#include "wall/picture_memory.h"
#include "wall/wall_window.h"
#include "wall/window_grid.h"
#include "wall/window_truth.h"
#include "wall/zoom.h"

using namespace TarnClient;
using TarnTest::CHandSupply;
using view_plugin_protocol::PlanPage;
using view_plugin_protocol::PlanWindow;
using Look = WindowTruth::Look;
using Sign = WindowTruth::Sign;

Q_DECLARE_METATYPE(TarnClient::PictureState)
Q_DECLARE_METATYPE(TarnClient::WindowTruth::Look)
Q_DECLARE_METATYPE(TarnClient::WindowTruth::Sign)

namespace {

const QDateTime kTaken(QDate(2026, 3, 2), QTime(14, 3, 7));

PlanWindow Camera(int window_no, const char* code, int stream = 0, int preset = 0) {
  PlanWindow window = TarnTest::Window(window_no, code);
  window.resource_name = code;
  window.stream_type = stream;
  window.preset_no = preset;
  return window;
}

PlanPage PageOf(int split, const std::list<PlanWindow>& windows) {
  PlanPage page = TarnTest::Page(1, split, {}, {}, 60);
  page.windows = windows;
  return page;
}

/// A picture in which no two neighbours are alike.
QImage Noise(const QSize& size) {
  QImage noise(size, QImage::Format_RGB32);
  for (int y = 0; y < size.height(); ++y) {
    for (int x = 0; x < size.width(); ++x) {
      noise.setPixel(x, y, qRgb(x * y % 251, (x ^ y) % 239, (x * 7 + y * 13) % 241));
    }
  }
  return noise;
}

/// What `draw` makes of it in several rooms, whole and in part, where only a part is to be drawn.
QList<QImage> DrawnStretched(const std::function<void(QPainter*, const QRect&, const QImage&, const QRectF&)>& draw) {
  const QImage noise = Noise({320, 240});
  QList<QImage> drawn;
  for (const QRect& room : {QRect(3, 5, 397, 301), QRect(-20, -40, 980, 790), QRect(10, 10, 100, 60)}) {
    for (const QRectF& part : {QRectF(0, 0, 320, 240), QRectF(40.3, 30.7, 161.2, 121.9)}) {
      QImage image(960, 720, QImage::Format_RGB32);
      image.fill(Qt::black);
      QPainter painter(&image);
      painter.setRenderHint(QPainter::SmoothPixmapTransform);
      painter.setClipRect(QRect(20, 30, 800, 600));
      draw(&painter, room, noise, part);
      painter.fillRect(QRect(0, 0, 960, 2), Qt::white);  // outside, if the clip is as it was
      painter.end();
      drawn << image;
    }
  }
  return drawn;
}

}  // namespace

class WallWindowsTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init();
  void SaysWhatIsTrue_data();
  void SaysWhatIsTrue();
  void EveryLossHasItsWords();
  void NamesTheTimeOfOldPictures();
  void APictureThatStandsStillIsNotLive();
  void AlsoOneThatIsNotPainted();
  void LooksDifferentInEachState();
  void SpeaksOnceOfAState();
  void ACameraThatStaysKeepsItsSource();
  void AnOldPictureStandsInForItsOwnCameraOnly();
  void PreparesTheNextPage();
  void PreparesAsEarlyAsTheSlowestCameraNeeds();
  void PreparesNothingForAPageThatIsHeld();
  void CallsPresetsOfWhatComesIntoSight();
  void ZoomsAroundTheCursor();
  void DrawsPicturesWithoutSeamsAndThreads();

 private:
  QImage Picture(int window_no = 1) const { return grid_->Windows()[window_no - 1]->grab().toImage(); }
  QColor ColourOf(int window_no = 1) const {
    const QImage picture = Picture(window_no);
    return picture.pixelColor(picture.width() / 2, picture.height() - 30);
  }

  std::shared_ptr<CHandSupply> supply_;
  std::unique_ptr<CWindowGrid> grid_;
};

void WallWindowsTest::init() {
  tarn_ui_data_controller::CSkinLoader::Instance().LoadSkin("redblack");
  supply_ = std::make_shared<CHandSupply>();
  grid_ = std::make_unique<CWindowGrid>(supply_, nullptr);
  grid_->resize(640, 480);
  grid_->show();
}

void WallWindowsTest::SaysWhatIsTrue_data() {
  QTest::addColumn<PictureState>("state");
  QTest::addColumn<bool>("has_picture");
  QTest::addColumn<bool>("has_older");
  QTest::addColumn<Look>("look");
  QTest::addColumn<Sign>("sign");
  QTest::addColumn<QString>("headline");
  QTest::addColumn<bool>("says_age");
  using State = PictureState;
  QTest::newRow("first connection") << State::Opening << false << false << Look::Bare << Sign::Waiting
                                    << "Connecting..." << false;
  QTest::newRow("back on its page") << State::Opening << false << true << Look::Dimmed << Sign::Waiting
                                    << "Connecting..." << true;
  QTest::newRow("connected, no picture yet")
      << State::Live << false << true << Look::Dimmed << Sign::Waiting << "Connecting..." << true;
  QTest::newRow("live") << State::Live << true << false << Look::Clear << Sign::None << "" << false;
  QTest::newRow("late") << State::Late << true << false << Look::Grey << Sign::Late << "No new picture" << true;
  QTest::newRow("lost") << State::Lost << true << false << Look::Grey << Sign::Lost << "No answer" << true;
  QTest::newRow("never there") << State::Lost << false << false << Look::Bare << Sign::Lost << "No answer" << false;
  QTest::newRow("lost, connecting again")
      << State::Opening << true << false << Look::Dimmed << Sign::Waiting << "Connecting..." << true;
  QTest::newRow("offline") << State::Offline << false << false << Look::Bare << Sign::Offline << "Camera offline"
                           << false;
  QTest::newRow("offline meanwhile") << State::Offline << false << true << Look::Grey << Sign::Offline
                                     << "Camera offline" << true;
}

void WallWindowsTest::SaysWhatIsTrue() {
  QFETCH(PictureState, state);
  QFETCH(bool, has_picture);
  QFETCH(bool, has_older);
  PictureStatus status;
  status.state = state;
  status.loss = PictureLoss::NoAnswer;
  status.taken = has_picture ? kTaken : QDateTime();
  const WindowTruth truth = TruthOf(status, has_older ? kTaken : QDateTime(), kTaken.date());
  QTEST(truth.look, "look");
  QTEST(truth.sign, "sign");
  QTEST(truth.headline, "headline");
  QTEST(!truth.age.isEmpty(), "says_age");
  QVERIFY(!truth.spoken.isEmpty() && !truth.spoken.contains("14:03"));
  QVERIFY(truth.notes.isEmpty());
}

void WallWindowsTest::EveryLossHasItsWords() {
  QStringList words;
  for (int loss = 0; loss <= static_cast<int>(PictureLoss::Removed); ++loss) {
    words << TextOf(static_cast<PictureLoss>(loss));
  }
  QCOMPARE(words.removeDuplicates(), 0);
  QVERIFY(!words.contains(QString()));
  PictureStatus live;
  live.state = PictureState::Live;
  live.taken = kTaken;
  live.repeats = live.key_frames_only = true;
  const WindowTruth truth = TruthOf(live, {}, kTaken.date());
  QVERIFY(truth.look == Look::Clear && truth.notes.size() == 2);
  QVERIFY(truth.spoken.startsWith("live, ") && truth.spoken.count(',') >= 2);
}

void WallWindowsTest::NamesTheTimeOfOldPictures() {
  QCOMPARE(AgeText(kTaken, kTaken.date()), QString("picture of 14:03:07"));
  const QString yesterday = AgeText(kTaken, kTaken.date().addDays(1));
  QVERIFY2(yesterday.contains("14:03:07") && yesterday.size() > 20, qPrintable(yesterday));
}

void WallWindowsTest::APictureThatStandsStillIsNotLive() {
  PictureStatus status;
  status.state = PictureState::Live;
  QCOMPARE(WithoutFrozen(status, 4000).state, PictureState::Live);
  QCOMPARE(WithoutFrozen(status, 6000).state, PictureState::Late);
  status.key_frames_only = true;
  QCOMPARE(WithoutFrozen(status, 6000).state, PictureState::Live);
  status.state = PictureState::Offline;
  QCOMPARE(WithoutFrozen(status, 6000).state, PictureState::Offline);
}

void WallWindowsTest::AlsoOneThatIsNotPainted() {
  supply_->Camera("a").status.state = PictureState::Live;  // says so, and never has a picture
  supply_->SetLive("b", Qt::red);
  grid_->ShowPage(PageOf(2, {Camera(1, "a"), Camera(2, "b")}));
  grid_->Enlarge(1);  // b is out of sight
  const auto states = [this] {
    grid_->Tick();
    return grid_->WindowAt(1)->StateName() + ' ' + grid_->WindowAt(2)->StateName();
  };
  QCOMPARE(states(), QString("live live"));
  QTRY_COMPARE_WITH_TIMEOUT(states(), QString("late late"), 9000);
}

// Also without colours: what differs is more than the shade of one and the same picture.
void WallWindowsTest::LooksDifferentInEachState() {
  grid_->ShowPage(PageOf(1, {}));
  QVector<QImage> pictures{Picture().convertToFormat(QImage::Format_Grayscale8)};
  grid_->ShowPage(PageOf(1, {Camera(1, "a")}));
  supply_->SetLive("a", Qt::darkRed);
  for (const PictureState state :
       {PictureState::Live, PictureState::Opening, PictureState::Late, PictureState::Lost, PictureState::Offline}) {
    supply_->Camera("a").status.state = state;
    pictures << Picture().convertToFormat(QImage::Format_Grayscale8);
  }
  for (int one = 0; one < pictures.size(); ++one) {
    for (int other = 0; other < one; ++other) {
      QVERIFY2(pictures[one] != pictures[other], qPrintable(QString("%1 and %2").arg(one).arg(other)));
    }
  }
  supply_->Camera("a").status.state = PictureState::Late;
  QVERIFY(ColourOf().hsvSaturation() < 40);
}

void WallWindowsTest::SpeaksOnceOfAState() {
  grid_->ShowPage(PageOf(1, {Camera(1, "a")}));
  supply_->SetLive("a", Qt::red);
  grid_->Tick();
  const TarnTest::CScreenReader reader;
  supply_->Camera("a").status.state = PictureState::Late;
  for (int tick = 0; tick < 3; ++tick) {
    supply_->Camera("a").status.taken = kTaken.addSecs(tick);
    grid_->Tick();
  }
  QCOMPARE(reader.Heard(QAccessible::DescriptionChanged), QStringList{"Window 1: a"});
  QCOMPARE(grid_->Windows().front()->accessibleDescription(), QString("no new picture"));
}

void WallWindowsTest::ACameraThatStaysKeepsItsSource() {
  grid_->ShowPage(PageOf(2, {Camera(1, "a"), Camera(2, "b"), Camera(4, "c", 1)}));
  QCOMPARE(supply_->Started(), QStringList({"a", "b", "c"}));
  supply_->Started().clear();
  grid_->ShowPage(PageOf(4, {Camera(1, "a"), Camera(2, "b", 1), Camera(4, "c", 1), Camera(5, "d")}));
  QCOMPARE(supply_->Started(), QStringList({"b", "d"}));  // another stream is another connection
  QCOMPARE(supply_->Running(), 4);
  supply_->Started().clear();
  grid_->ShowPage(PageOf(1, {Camera(1, "a"), Camera(4, "c", 1)}));
  QVERIFY(supply_->Started().isEmpty() && supply_->Running() == 1);
  grid_->Clear();
  QCOMPARE(supply_->Running(), 0);
}

void WallWindowsTest::AnOldPictureStandsInForItsOwnCameraOnly() {
  const auto is_reddish = [](const QColor& colour) { return colour.red() > colour.green() + 20; };
  supply_->SetLive("a", QColor(200, 0, 0));
  grid_->ShowPage(PageOf(1, {Camera(1, "a")}));
  QVERIFY(is_reddish(ColourOf()));
  const int clear = ColourOf().red();
  grid_->ShowPage(PageOf(1, {Camera(1, "b")}));  // which has no picture yet
  QVERIFY(!is_reddish(ColourOf()));
  supply_->Camera("a") = {};
  grid_->ShowPage(PageOf(1, {Camera(1, "a")}));
  QVERIFY(is_reddish(ColourOf()) && ColourOf().red() < clear);
  QVERIFY(grid_->Windows().front()->Frames() == 0);
  grid_->Clear();
  grid_->ShowPage(PageOf(1, {Camera(1, "a")}));
  QVERIFY(!is_reddish(ColourOf()));

  CPictureMemory memory;
  memory.Keep("large", {QImage(1920, 1080, QImage::Format_RGB32), kTaken});
  QVERIFY(memory.Of("large").picture.width() <= CPictureMemory::kMostWidth && memory.Of("other").IsNull());
}

void WallWindowsTest::PreparesTheNextPage() {
  CLiveWall wall(supply_);
  wall.show();
  view_plugin_protocol::GetPlanDetailResponse plan;
  plan.index_code = "p";
  plan.pages = {PageOf(2, {Camera(1, "a")}), PageOf(2, {Camera(1, "a"), Camera(2, "b"), Camera(7, "out of sight")})};
  plan.pages.front().dwell_seconds = 4;
  plan.pages.back().page_no = 2;
  wall.Play(plan);
  QVERIFY(supply_->Prepared().isEmpty());
  QTRY_COMPARE(supply_->Prepared(), QStringList({"a", "b"}));
  QCOMPARE(wall.PageNumber(), 1);
  QTRY_COMPARE(wall.PageNumber(), 2);
  QVERIFY(supply_->Prepared().isEmpty());
  QCOMPARE(supply_->Started(), QStringList({"a", "b"}));

  // The end of a turn of a cycle: only the player knows what comes.
  auto* turn = new TarnTest::CHandClock;
  CLiveWall cycle(supply_, nullptr, std::unique_ptr<TarnTest::CHandClock>(turn));
  const QSignalSpy ends(&cycle, &CLiveWall::SignalTurnEnds);
  cycle.show();
  plan.pages.front().dwell_seconds = 2;
  cycle.Play(plan);
  cycle.BeginTurn(20);
  QTRY_COMPARE(supply_->Prepared(), QStringList({"a", "b"}));
  QVERIFY(ends.isEmpty());
  cycle.GoTo(2);
  cycle.GoTo(1);
  turn->SetMsLeft(2500);
  QTRY_COMPARE(ends.size(), 1);
  cycle.Prepare(plan);
  QCOMPARE(supply_->Prepared(), QStringList({"a"}));
  cycle.EndTurns();
  cycle.Stop();
  cycle.Prepare(plan);
  QVERIFY(supply_->Prepared().isEmpty());
}

void WallWindowsTest::PreparesAsEarlyAsTheSlowestCameraNeeds() {
  const PlanPage page = PageOf(2, {Camera(1, "a"), Camera(2, "b")});
  QCOMPARE(grid_->LeadSeconds(page), 3);  // not known yet
  supply_->SetKeyFrameMs("a", 400);
  supply_->SetKeyFrameMs("b", 500);
  QCOMPARE(grid_->LeadSeconds(page), 1);
  supply_->SetKeyFrameMs("b", 5200);
  QCOMPARE(grid_->LeadSeconds(page), 6);
  CLiveWall wall(supply_);
  wall.show();
  view_plugin_protocol::GetPlanDetailResponse plan;
  plan.pages = {PageOf(1, {Camera(1, "c")}), page};
  plan.pages.front().dwell_seconds = 6;
  wall.Play(plan);
  QTRY_COMPARE_WITH_TIMEOUT(supply_->Prepared(), QStringList({"a", "b"}), 1000);
}

void WallWindowsTest::PreparesNothingForAPageThatIsHeld() {
  CLiveWall wall(supply_);
  wall.show();
  view_plugin_protocol::GetPlanDetailResponse plan;
  plan.index_code = "p";
  plan.pages = {PageOf(1, {Camera(1, "a")}), PageOf(1, {Camera(1, "b")})};
  plan.pages.front().dwell_seconds = 3;
  plan.pages.back().page_no = 2;
  wall.Play(plan);
  QTRY_COMPARE(supply_->Prepared(), QStringList{"b"});
  wall.ToggleHold();
  QVERIFY(supply_->Prepared().isEmpty());
  wall.ToggleHold();
  QTRY_COMPARE(supply_->Prepared(), QStringList{"b"});
  plan.pages.back() = PageOf(1, {Camera(1, "c")});
  plan.pages.back().page_no = 2;
  wall.Renew(plan);
  QTRY_COMPARE(supply_->Prepared(), QStringList{"c"});
}

void WallWindowsTest::CallsPresetsOfWhatComesIntoSight() {
  CLiveWall wall(supply_);
  QSignalSpy presets(&wall, &CLiveWall::SignalPresetWanted);
  view_plugin_protocol::GetPlanDetailResponse plan;
  plan.pages = {PageOf(2, {Camera(1, "a", 0, 3), Camera(2, "b")}), PageOf(2, {Camera(1, "a", 0, 3)}),
                PageOf(2, {Camera(1, "a", 0, 4)})};
  wall.Play(plan);
  QCOMPARE(presets, (QList<QVariantList>{{"a", 3}}));
  wall.GoTo(2);
  QCOMPARE(presets.size(), 1);
  wall.GoTo(3);
  QCOMPARE(presets.last(), (QVariantList{"a", 4}));
  QCOMPARE(supply_->Started().count("a"), 1);
  // Someone may have moved by hand what has been in sight all the time.
  presets.clear();
  wall.Change([](CArrangement* all) { return all->SetStream(2, 1, 1); });
  wall.Change([](CArrangement* all) { return all->Swap(2, 1, 4); });
  QVERIFY(presets.isEmpty());
  wall.Change([](CArrangement* all) { return all->SetPreset(2, 4, 6); });
  QCOMPARE(presets, (QList<QVariantList>{{"a", 6}}));
}

void WallWindowsTest::ZoomsAroundTheCursor() {
  CZoom zoom;
  zoom.Drag({0.5, 0.5});
  QVERIFY(!zoom.IsOn() && zoom.Part() == QRectF(0, 0, 1, 1));
  zoom.By(2, {0.25, 0.5});
  QCOMPARE(zoom.Part(), QRectF(0.125, 0.25, 0.5, 0.5));
  zoom.Drag({0.1, 0});
  QCOMPARE(zoom.Part().topLeft(), QPointF(0.075, 0.25));
  zoom.Drag({9, -9});
  QCOMPARE(zoom.Part().topLeft(), QPointF(0, 0.5));
  zoom.By(1000, {1, 1});
  QCOMPARE(zoom.Factor(), CZoom::kMost);
  QVERIFY(zoom.Part().right() <= 1.0 && zoom.Part().bottom() <= 1.0);
  zoom.By(0.001, {0, 0});
  QVERIFY(!zoom.IsOn() && zoom.Part() == QRectF(0, 0, 1, 1));
}

// Qt's pool stands for processors that decode: who shares the drawing out waits for it.
void WallWindowsTest::DrawsPicturesWithoutSeamsAndThreads() {
  const QList<QImage> in_one_piece = DrawnStretched([](QPainter* painter, const QRect& room, const QImage& image,
                                                       const QRectF& part) { painter->drawImage(room, image, part); });
  QThreadPool& pool = *QThreadPool::globalInstance();
  QSemaphore over;
  std::atomic<int> ended_in_time{0};
  for (int task = 0; task < pool.maxThreadCount(); ++task) {
    pool.start([&] { ended_in_time += over.tryAcquire(1, 5000); });
  }
  const QList<QImage> drawn = DrawnStretched(&TarnQt::DrawStretched);
  over.release(pool.maxThreadCount());
  QVERIFY(pool.waitForDone(10000));
  QCOMPARE(int(ended_in_time), pool.maxThreadCount());
  QVERIFY(drawn == in_one_piece);
}

QTEST_MAIN(WallWindowsTest)
#include "test_wall_windows.moc"
