#include <QApplication>
#include <QFile>
#include <QtTest>

#include "stream_stage.h"
#include "wall/live_wall.h"

namespace {

constexpr int kPages = 8, kWindows = 16, kCameras = 40, kDwellSeconds = 4;

double ResidentMib() {
  QFile file(QStringLiteral("/proc/self/status"));
  if (file.open(QIODevice::ReadOnly)) {
    for (const QByteArray& line : file.readAll().split('\n')) {
      if (line.startsWith("VmRSS:")) {
        return line.mid(6).simplified().split(' ').first().toDouble() / 1024;
      }
    }
  }
  return 0;
}

void PassMinute() {
  QEventLoop loop;
  QTimer::singleShot(60 * 1000, &loop, &QEventLoop::quit);
  loop.exec();
}

int Minutes() {
  const int minutes = qEnvironmentVariableIntValue("TARN_SOAK_MINUTES");
  if (minutes > 1) {
    return minutes;
  }
  return 10;
}

// Neighbouring pages share cameras, in the same windows and in others.
view_plugin_protocol::GetPlanDetailResponse Tour() {
  view_plugin_protocol::GetPlanDetailResponse plan;
  plan.index_code = "1";
  plan.name = "Tour";
  for (int number = 0; number < kPages; ++number) {
    view_plugin_protocol::PlanPage page;
    page.page_no = number + 1;
    page.split_type = 8;
    page.dwell_seconds = kDwellSeconds;
    for (int window = 0; window < kWindows; ++window) {
      auto content = TarnTest::CameraWindow((number * 9 + window) % kCameras + 1, window % 2);
      content.window_no = window + 1;
      page.windows.push_back(content);
    }
    plan.pages.push_back(page);
  }
  return plan;
}

}  // namespace

// A tour that no one touches for long: what it needs after a minute is what it needs for ever.
class SoakTour : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void MemoryStays();
};

void SoakTour::MemoryStays() {
  const TarnDemo::CCameraServer server({"--cameras", QString::number(kCameras)});
  QVERIFY(server.IsRunning());
  const auto stage = std::make_shared<TarnTest::CStreamStage>(TarnClient::StreamTimings());
  for (int camera = 1; camera <= kCameras; ++camera) {
    stage->SetAddress(camera, server.Url(camera), server.Url(camera, "sub"));
  }
  TarnClient::CLiveWall wall(std::shared_ptr<TarnClient::IPictureSupply>(stage, &stage->Supply()));
  wall.resize(1600, 900);
  wall.show();
  wall.Play(Tour());
  PassMinute();
  const double first = ResidentMib();
  double last = first;
  for (int minute = 2; minute <= Minutes(); ++minute) {
    PassMinute();
    last = ResidentMib();
    qInfo("after %d minutes: %.1f MiB, in the first %.1f", minute, last, first);
  }
  QVERIFY2(last <= 1.1 * first, qPrintable(QStringLiteral("%1 MiB against %2").arg(last).arg(first)));
  const auto windows = wall.Windows();
  QVERIFY(std::all_of(windows.begin(), windows.end(), [](const auto& window) { return window.state == "live"; }));
}

QTEST_MAIN(SoakTour)
#include "soak_tour.moc"
