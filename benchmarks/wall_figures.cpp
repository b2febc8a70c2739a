#include <sys/resource.h>

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>

#include "bare_streams.h"
#include "camera_server.h"
#include "figures.h"
#include "pictures/stream_supply.h"
#include "wall/live_wall.h"
#include "watched_pictures.h"

namespace {

using TarnClient::CameraStreams;
using TarnClient::CameraStreamsByCode;
using TarnClient::CLiveWall;
using TarnClient::CStreamSupply;
using TarnClient::StreamAccess;
using TarnClient::StreamKind;
using TarnDemo::CCameraServer;
using view_plugin_protocol::GetPlanDetailResponse;
using view_plugin_protocol::PlanPage;

QString CoresText(const Sides& sides) {
  return QStringLiteral("%1 of a core against %2").arg(sides.ours, 0, 'f', 3).arg(sides.plain, 0, 'f', 3);
}

constexpr int kWindows = 16, kSplit16 = 8, kCameras = 64, kRate = 15;
constexpr int kWarmUpMs = 3000, kMeasureMs = 8000, kTurns = 20, kRounds = 2;
constexpr int kPreparedRounds = 4;  // the wall varies by more than what they cost
constexpr QSize kWall(1600, 900);

/// Seconds of all cores that this process has used.
double CpuSeconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const auto seconds = [](const timeval& time) { return double(time.tv_sec) + double(time.tv_usec) / 1e6; };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

void Wait(int ms) {
  QEventLoop loop;
  QTimer::singleShot(ms, Qt::PreciseTimer, &loop, &QEventLoop::quit);
  loop.exec();
}

/// Cores that are busy while `ms` pass.
double CoresDuring(int ms) {
  QElapsedTimer timer;
  timer.start();
  const double before = CpuSeconds();
  Wait(ms);
  return (CpuSeconds() - before) * 1000 / static_cast<double>(timer.elapsed());
}

/// A page of 16 cameras from this one on.
PlanPage PageFrom(int number, int camera) {
  PlanPage page;
  page.page_no = number;
  page.split_type = kSplit16;
  page.dwell_seconds = 3600;
  for (int window = 0; window < kWindows; ++window) {
    view_plugin_protocol::PlanWindow content;
    content.window_no = window + 1;
    content.content_kind = 1;
    content.resource_code = std::to_string(camera + window);
    content.resource_name = "CAM " + content.resource_code;
    page.windows.push_back(content);
  }
  return page;
}

GetPlanDetailResponse PlanOf(const std::list<PlanPage>& pages) {
  GetPlanDetailResponse plan;
  plan.index_code = "1";
  plan.name = "Bench";
  plan.pages = pages;
  return plan;
}

/// The longest time that the GUI thread did not return to its events.
class HoldWatch {
 public:
  HoldWatch() {
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] {
      longest_ = std::max(longest_, since_.nsecsElapsed());
      since_.start();
    });
    since_.start();
    timer_.start(0);
  }
  double LongestMs() const { return static_cast<double>(longest_) / 1e6; }

 private:
  QTimer timer_;
  QElapsedTimer since_;
  qint64 longest_ = 0;
};

double Quantile(QVector<double> values, double part) {
  if (values.isEmpty()) {
    qFatal("nothing was painted");
  }
  std::sort(values.begin(), values.end());
  return values.at(static_cast<int>(part * (values.size() - 1)));
}

/// The demo cameras with their pictures of 320x240, and walls that show them.
class CWallBench {
 public:
  CWallBench() : server_({QStringLiteral("--cameras"), QString::number(kCameras)}) {
    if (!server_.IsRunning()) {
      qFatal("the demo cameras do not start; see packages.txt for what they need");
    }
    Renew();
  }

  Figure CpuAgainstBareLoop();
  Figures ManyWindows();
  Figures PageTurns();
  Figures Delay();
  Figure Prepared();

 private:
  /// A new supply: no stream of the last measurement goes on.
  void Renew() {
    walls_.clear();
    watched_.reset();
    CStreamSupply::Setup setup;
    setup.addresses = [this](const std::vector<std::string>& cameras) { return Addresses(cameras); };
    watched_ = std::make_shared<WatchedPictures>(std::make_shared<CStreamSupply>(std::move(setup)));
  }
  CameraStreamsByCode Addresses(const std::vector<std::string>& cameras) const {
    CameraStreamsByCode addresses;
    for (const std::string& camera : cameras) {
      CameraStreams& streams = addresses[camera];
      streams.state = CameraStreams::Known;
      streams.Of(StreamKind::Main) = StreamAccess{server_.Url(std::stoi(camera), "sub"), {}, {}, {}};
    }
    return addresses;
  }
  CLiveWall& AddWall(const std::list<PlanPage>& pages) {
    walls_.push_back(std::make_unique<CLiveWall>(watched_));
    walls_.back()->resize(kWall);
    walls_.back()->show();
    walls_.back()->Play(PlanOf(pages));
    return *walls_.back();
  }
  void WaitForPictures() {
    QElapsedTimer timer;
    timer.start();
    const auto is_live = [this] {
      return std::all_of(walls_.begin(), walls_.end(), [](const auto& wall) {
        const auto windows = wall->Windows();
        return std::all_of(windows.begin(), windows.end(), [](const auto& window) { return window.state == "live"; });
      });
    };
    while (!is_live()) {
      if (timer.elapsed() > 30000) {
        qFatal("the cameras of the bench are not live");
      }
      Wait(50);
    }
    Wait(kWarmUpMs);
  }
  qint64 Frames() const {
    qint64 frames = 0;
    for (const auto& wall : walls_) {
      for (const auto& window : wall->Windows()) {
        frames += window.frames;
      }
    }
    return frames;
  }
  int Plays(int camera) {
    const QJsonObject totals = server_.Tell(QStringLiteral("connections"))[QStringLiteral("totals")].toObject();
    return totals[QStringLiteral("/%1/sub").arg(camera)].toObject()[QStringLiteral("play")].toInt();
  }
  double CoresOfBareLoop();
  double CoresOfWall();

  CCameraServer server_;
  std::shared_ptr<WatchedPictures> watched_;
  std::vector<std::unique_ptr<CLiveWall>> walls_;
};

double CWallBench::CoresOfBareLoop() {
  QStringList urls;
  for (int camera = 1; camera <= kWindows; ++camera) {
    urls << server_.Url(camera, "sub");
  }
  const BareStreams bare(urls, QSize(kWall.width() / 4, kWall.height() / 4));
  Wait(kWarmUpMs);
  const int before = bare.Drawn();
  const double cores = CoresDuring(kMeasureMs);
  if (bare.Drawn() - before < kWindows * kRate * kMeasureMs / 1000 * 9 / 10) {
    qFatal("the bare loop does not keep up");
  }
  return cores;
}

double CWallBench::CoresOfWall() {
  Renew();
  AddWall({PageFrom(1, 1)});
  WaitForPictures();
  const double cores = CoresDuring(kMeasureMs);
  Renew();
  return cores;
}

Figure CWallBench::CpuAgainstBareLoop() {
  const Sides sides = MeasureByTurns(
      kRounds, [this] { return CoresOfWall(); }, [this] { return CoresOfBareLoop(); });
  return {QStringLiteral("wall_cpu"),
          QStringLiteral("CPU of 16 live windows against a bare loop of libav over the same streams"),
          sides.Ratio(),
          1.3,
          Figure::AtMost,
          CoresText(sides)};
}

Figures CWallBench::ManyWindows() {
  Renew();
  for (int wall = 0; wall < kCameras / kWindows; ++wall) {
    AddWall({PageFrom(1, 1 + wall * kWindows)});
  }
  WaitForPictures();
  QElapsedTimer timer;
  timer.start();
  const qint64 before = Frames();
  const double cores = CoresDuring(kMeasureMs);
  const double sent = static_cast<double>(timer.elapsed()) / 1000 * kRate * kCameras;
  const double shown = static_cast<double>(Frames() - before);
  Renew();
  return {{QStringLiteral("wall_64_shown"), QStringLiteral("pictures shown in 64 windows against those sent"),
           shown / sent, 0.99, Figure::AtLeast, QStringLiteral("%1 of %2").arg(shown).arg(sent, 0, 'f', 0)},
          {QStringLiteral("wall_64_cpu"), QStringLiteral("cores that 64 windows take"), cores, 1, Figure::AtMost,
           QStringLiteral("four walls of 16, 320x240 at 15 pictures a second")}};
}

Figures CWallBench::PageTurns() {
  Renew();
  constexpr int kStay = kWindows / 2;
  CLiveWall& wall = AddWall({PageFrom(1, 1), PageFrom(2, 1 + kWindows)});
  PlanPage second = PageFrom(2, 1);
  int number = 0;
  for (auto& window : second.windows) {
    if (number++ >= kStay) {
      window.resource_code = std::to_string(kWindows + number);
      window.resource_name = "CAM " + window.resource_code;
    }
  }
  std::list<PlanPage> pages{PageFrom(1, 1), second};
  for (PlanPage& page : pages) {
    page.dwell_seconds = 5;
  }
  wall.Play(PlanOf(pages));
  WaitForPictures();
  watched_->Seen().reads_blocks = true;
  const int plays_before = Plays(1);
  QVector<double> holds;
  for (int turn = 0; turn < kTurns; ++turn) {
    const int page = wall.PageNumber();
    HoldWatch watch;
    while (wall.PageNumber() == page) {
      Wait(100);
    }
    Wait(300);
    holds.append(watch.LongestMs());
  }
  const int without = watched_->Seen().without_picture;
  const int reconnects = Plays(1) - plays_before;
  Renew();
  const QString what = QStringLiteral("%1 turns of 16 windows with 8 cameras that stay").arg(kTurns);
  return {{QStringLiteral("turn_without_picture"), QStringLiteral("windows painted without a picture: ") + what,
           double(without), 0, Figure::AtMost, QStringLiteral("pages turn by their time")},
          {QStringLiteral("turn_reconnects"), QStringLiteral("connections of a camera that stays: ") + what,
           double(reconnects), 0, Figure::AtMost, QString()},
          {QStringLiteral("turn_hold"), QStringLiteral("longest hold of the GUI thread in ms, the median of ") + what,
           Quantile(holds, 0.5), 16, Figure::AtMost, QString()},
          {QStringLiteral("turn_hold_worst"), QStringLiteral("the worst of them"), Quantile(holds, 1), 50,
           Figure::AtMost, QString()}};
}

Figures CWallBench::Delay() {
  Renew();
  AddWall({PageFrom(1, 1)});
  WaitForPictures();
  watched_->Seen().ages_ms.clear();
  watched_->Seen().reads_blocks = true;
  Wait(kMeasureMs);
  const QVector<double> ages = watched_->Seen().ages_ms;
  Renew();
  const QString note = QStringLiteral("%1 pictures").arg(ages.size());
  return {{QStringLiteral("delay_median"), QStringLiteral("from sending to painting on loopback, in ms"),
           Quantile(ages, 0.5), 120, Figure::AtMost, note},
          {QStringLiteral("delay_95"), QStringLiteral("of 95 in 100 pictures"), Quantile(ages, 0.95), 200,
           Figure::AtMost, note}};
}

Figure CWallBench::Prepared() {
  Renew();
  const PlanPage next = PageFrom(2, 1 + kWindows);
  AddWall({PageFrom(1, 1)});
  WaitForPictures();
  const Sides sides = MeasureByTurns(
      kPreparedRounds,
      [&] {
        watched_->Prepare(this, {next.windows.begin(), next.windows.end()});
        Wait(kWarmUpMs);
        return CoresDuring(kMeasureMs);
      },
      [&] {
        watched_->Prepare(this, {});
        Wait(static_cast<int>(TarnClient::StreamTimings().linger) + kWarmUpMs);
        return CoresDuring(kMeasureMs);
      });
  Renew();
  return {QStringLiteral("prepared_cpu"),
          QStringLiteral("CPU of 16 windows and 16 cameras connected beside them against the windows alone"),
          sides.Ratio(),
          1.3,
          Figure::AtMost,
          CoresText(sides)};
}

}  // namespace

Figures MeasureWall() {
  CWallBench bench;
  Figures figures{bench.CpuAgainstBareLoop()};
  for (const Figures& more : {bench.ManyWindows(), bench.Delay(), Figures{bench.Prepared()}, bench.PageTurns()}) {
    figures.insert(figures.end(), more.begin(), more.end());
  }
  return figures;
}
