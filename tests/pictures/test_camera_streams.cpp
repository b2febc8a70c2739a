#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>
#include <algorithm>
#include <iterator>
#include <map>
#include <set>

#include "stream_stage.h"

using TarnClient::CameraStreams;
using TarnClient::IPictureSource;
using TarnClient::PictureLoss;
using TarnClient::PictureState;
using TarnDemo::CCameraServer;
using TarnTest::CameraIn;
using TarnTest::CStreamStage;
using TarnTest::Shown;

Q_DECLARE_METATYPE(TarnClient::PictureLoss)

namespace {

PictureState StateOf(const std::unique_ptr<IPictureSource>& source) {
  return source->Status().state;
}

int Total(CCameraServer& server, const QString& path, const QString& what) {
  return server.Tell("connections")["totals"].toObject()[path].toObject()[what].toInt();
}

int Open(CCameraServer& server) {
  int open = 0;
  for (const QJsonValue& count : server.Tell("connections")["open"].toObject()) {
    open += count.toInt();
  }
  return open;
}

// In the list of processes, which everyone may read.
bool ProcessesSay(const QString& text) {
  const QStringList processes = QDir("/proc").entryList(QDir::Dirs);
  return std::any_of(processes.begin(), processes.end(), [&text](const QString& process) {
    QFile file("/proc/" + process + "/cmdline");
    return file.open(QIODevice::ReadOnly) && file.readAll().contains(text.toUtf8());
  });
}

}  // namespace

// The demo cameras as they are shown, lost and found again.
class CameraStreamsTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void initTestCase();
  void init();
  void cleanup();
  void cleanupTestCase() { server_.reset(); }
  void PicturesAreThoseOfTheCamera();
  void OneConnectionServesAllWindows();
  void TheStreamFollowsTheWindowWithoutAGap();
  void APreparedCameraHasAPictureAtOnce();
  void ASilentCameraIsLateAndThenLost();
  void ACameraThatRepeatsItselfIsMarked();
  void AKilledCameraIsFoundAgain();
  void SixtyFourLostCamerasComeBackOneByOne();
  void AFrozenCameraIsNotLive();
  void EveryCodecAndSize_data();
  void EveryCodecAndSize();
  void AnotherSizeInMidStream();
  void PasswordsAreAsked_data();
  void PasswordsAreAsked();
  void CertificatesAreChecked();
  void OfflineCamerasAreNotConnected();
  void ARemovedCameraSaysSo();
  void AnotherAddressShowsNothingOfTheOldOne();
  void PicturesAreDrawnForAPretendedSiteOnly();

 private:
  std::unique_ptr<CCameraServer> server_;
  std::unique_ptr<CStreamStage> stage_;
};

void CameraStreamsTest::initTestCase() {
  server_ = std::make_unique<CCameraServer>(QStringList{"--cameras", "8"});
  QVERIFY2(server_->IsRunning(), "the demo cameras do not start");
}

void CameraStreamsTest::init() {
  stage_ = std::make_unique<CStreamStage>();
  for (int camera = 1; camera <= 8; ++camera) {
    stage_->SetAddress(camera, server_->Url(camera), server_->Url(camera, "sub"));
  }
}

// Every camera was said goodbye to.
void CameraStreamsTest::cleanup() {
  stage_.reset();
  QTRY_COMPARE(Open(*server_), 0);
}

void CameraStreamsTest::PicturesAreThoseOfTheCamera() {
  const auto source = stage_->Show(3);
  QVERIFY(StateOf(source) == PictureState::Opening);
  QTRY_VERIFY(StateOf(source) == PictureState::Live);
  std::set<int> numbers;
  std::set<qint64> counts;
  QTRY_VERIFY((numbers.insert(Shown(*source)->number), counts.insert(source->LatestNumber()), numbers.size() > 10));
  QCOMPARE(CameraIn(*source), 3);
  QCOMPARE(counts.size(), numbers.size());
  QCOMPARE(source->Status().size, QSize(640, 480));
  QCOMPARE(source->Status().kind, QString("rtsp"));
  source->Stop();
  QVERIFY(source->LatestPicture(QSize(640, 480)).isNull());
}

void CameraStreamsTest::OneConnectionServesAllWindows() {
  std::vector<std::unique_ptr<IPictureSource>> windows;
  for (int number = 0; number < 4; ++number) {
    windows.push_back(stage_->Show(1));
  }
  for (const auto& window : windows) {
    QTRY_COMPARE(CameraIn(*window), 1);
  }
  QCOMPARE(Total(*server_, "/1/main", "play"), 1);
  windows.clear();
  const auto again = stage_->Show(1);  // before the stream was let go
  QTRY_COMPARE(CameraIn(*again), 1);
  QCOMPARE(Total(*server_, "/1/main", "play"), 1);
}

// At no time is there no picture, or one of another camera.
void CameraStreamsTest::TheStreamFollowsTheWindowWithoutAGap() {
  const auto source = stage_->Show(2);
  QTRY_COMPARE(CameraIn(*source), 2);
  qint64 number = source->LatestNumber();
  bool small = false;
  while (!small) {
    const auto shown = Shown(*source, CStreamStage::kSmall);
    QVERIFY(shown && shown->camera == 2);
    QVERIFY(source->LatestNumber() >= number);
    number = source->LatestNumber();
    small = shown->is_sub;
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  QCOMPARE(source->Status().size, QSize(320, 240));
  QTRY_COMPARE(server_->Tell("connections")["open"].toObject(), (QJsonObject{{"/2/sub", 1}}));
}

void CameraStreamsTest::APreparedCameraHasAPictureAtOnce() {
  const auto next = TarnTest::CameraWindow(4);
  stage_->Supply().Prepare(this, {next});
  QTRY_COMPARE(Total(*server_, "/4/main", "play"), 1);
  QTRY_VERIFY(stage_->Supply().KeyFrameMs(next).has_value());
  const qint64 interval = *stage_->Supply().KeyFrameMs(next);
  QVERIFY2(interval > 700 && interval < 1500, "a key frame comes every second");
  const auto source = stage_->Show(4);
  QCOMPARE(CameraIn(*source), 4);
  QElapsedTimer timer;
  timer.start();
  QTRY_VERIFY(TarnDemo::AgeMs(*Shown(*source), double(QDateTime::currentMSecsSinceEpoch())) < 200);
  QVERIFY2(timer.elapsed() < 500, "it does not wait for the next key frame");
  stage_->Supply().Prepare(this, {});
  QCOMPARE(Total(*server_, "/4/main", "play"), 1);
  source->Stop();
  QTRY_COMPARE(Open(*server_), 0);
  QVERIFY(stage_->Supply().KeyFrameMs(next));  // for the next time
}

void CameraStreamsTest::ASilentCameraIsLateAndThenLost() {
  const auto source = stage_->Show(5);
  QTRY_VERIFY(StateOf(source) == PictureState::Live);
  server_->Tell("silence 5");
  QTRY_VERIFY(StateOf(source) == PictureState::Late);
  QVERIFY(source->Status().age_ms >= 700);
  QTRY_VERIFY(StateOf(source) == PictureState::Lost);
  QCOMPARE(source->Status().loss, PictureLoss::NoAnswer);
  QCOMPARE(CameraIn(*source), 5);  // the last picture stays
  server_->Tell("speak 5");
  QTRY_VERIFY(StateOf(source) == PictureState::Live);
}

void CameraStreamsTest::ACameraThatRepeatsItselfIsMarked() {
  auto timings = CStreamStage::Quick();
  timings.repeats = 1500;
  CStreamStage stage(timings);
  stage.SetAddress(6, server_->Url(6));
  const auto source = stage.Show(6);
  QTRY_VERIFY(StateOf(source) == PictureState::Live);
  QElapsedTimer moving;
  moving.start();
  QTRY_VERIFY(moving.hasExpired(1800));
  QVERIFY(!source->Status().repeats);
  server_->Tell("repeat 6");
  QTRY_VERIFY(source->Status().repeats);
  QVERIFY(StateOf(source) == PictureState::Live);
  server_->Tell("move 6");
  QTRY_VERIFY(!source->Status().repeats);
}

void CameraStreamsTest::AKilledCameraIsFoundAgain() {
  auto server = std::make_unique<CCameraServer>(QStringList{"--cameras", "1"});
  const QString port = QString::number(server->Port());
  stage_->SetAddress(20, server->Url(1));
  const auto source = stage_->Show(20);
  QTRY_VERIFY(StateOf(source) == PictureState::Live);
  server->Kill();
  QTRY_VERIFY(StateOf(source) == PictureState::Lost);
  QTRY_COMPARE(source->Status().loss, PictureLoss::NotReachable);
  QVERIFY(!source->LatestPicture(QSize(640, 480)).isNull());
  server = std::make_unique<CCameraServer>(QStringList{"--cameras", "1", "--port", port});
  QTRY_VERIFY(StateOf(source) == PictureState::Live);
}

void CameraStreamsTest::SixtyFourLostCamerasComeBackOneByOne() {
  auto timings = CStreamStage::Quick();
  timings.spread = 5000;
  CStreamStage stage(timings);
  std::vector<std::unique_ptr<IPictureSource>> windows;
  for (int camera = 0; camera < 64; ++camera) {
    stage.SetAddress(100 + camera, server_->Url(camera % 8 + 1, "sub"));
    windows.push_back(stage.Show(100 + camera, CStreamStage::kSmall));
  }
  QTRY_COMPARE_WITH_TIMEOUT(Open(*server_), 64, 10000);
  const auto connects = [this] { return server_->Tell("connections")["connects"].toInt(); };
  const int before = connects();
  for (int camera = 1; camera <= 8; ++camera) {
    server_->Tell(QString("drop %1").arg(camera));
  }
  QElapsedTimer lost;
  lost.start();
  std::map<qint64, int> come_back{{0, 0}};  // how many have, by the time
  QTRY_VERIFY_WITH_TIMEOUT((come_back[lost.elapsed()] = connects() - before) >= 64, 10000);
  for (const auto& [time, count] : come_back) {
    const int second_before = std::prev(come_back.upper_bound(std::max<qint64>(0, time - 1000)))->second;
    QVERIFY2(count - second_before <= 20, qPrintable(QString("%1 in a second").arg(count - second_before)));
  }
  QVERIFY2(lost.elapsed() > 4000, qPrintable(QString::number(lost.elapsed())));
  QTRY_COMPARE(Open(*server_), 64);
}

void CameraStreamsTest::AFrozenCameraIsNotLive() {
  CCameraServer server({"--cameras", "1"});
  stage_->SetAddress(21, server.Url(1));
  const auto source = stage_->Show(21);
  QTRY_VERIFY(StateOf(source) == PictureState::Live);
  server.Freeze(true);
  QTRY_VERIFY(StateOf(source) == PictureState::Lost);
  QCOMPARE(source->Status().loss, PictureLoss::NoAnswer);
  server.Freeze(false);
  QTRY_VERIFY(StateOf(source) == PictureState::Live);
  QTRY_COMPARE(Open(server), 1);  // the one that hung was ended, too
}

void CameraStreamsTest::EveryCodecAndSize_data() {
  QTest::addColumn<QStringList>("options");
  QTest::addColumn<QSize>("size");
  QTest::newRow("H.265") << QStringList{"--codec", "h265"} << QSize(640, 480);
  QTest::newRow("JPEG") << QStringList{"--codec", "mjpeg"} << QSize(640, 480);
  QTest::newRow("4K") << QStringList{"--main-size", "3840x2160"} << QSize(3840, 2160);
}

void CameraStreamsTest::EveryCodecAndSize() {
  QFETCH(QStringList, options);
  QFETCH(QSize, size);
  CCameraServer server(options + QStringList{"--cameras", "1"});
  stage_->SetAddress(1, server.Url(1));
  stage_->Supply().RenewAddresses();
  const auto source = stage_->Show(1);
  QTRY_COMPARE_WITH_TIMEOUT(CameraIn(*source), 1, 15000);  // 4K takes its time to be encoded
  QCOMPARE(source->Status().size, size);
  const QImage picture = source->LatestPicture(QSize(640, 480));
  QVERIFY(picture.width() <= 704 && picture.width() >= 640);
  server.Tell("codec 1 h264");
  QTRY_VERIFY(StateOf(source) == PictureState::Lost);
  QTRY_VERIFY_WITH_TIMEOUT(StateOf(source) == PictureState::Live, 15000);
  QCOMPARE(CameraIn(*source), 1);
}

void CameraStreamsTest::AnotherSizeInMidStream() {
  const auto source = stage_->Show(7);
  QTRY_COMPARE(CameraIn(*source), 7);
  server_->Tell("size 7 main 800x448");
  QTRY_COMPARE(source->Status().size, QSize(800, 448));
  QTRY_COMPARE(CameraIn(*source), 7);
  QCOMPARE(Total(*server_, "/7/main", "play"), 1);
}

void CameraStreamsTest::PasswordsAreAsked_data() {
  QTest::addColumn<QStringList>("way");
  QTest::newRow("basic") << QStringList{};
  QTest::newRow("digest") << QStringList{"--digest"};
}

void CameraStreamsTest::PasswordsAreAsked() {
  QFETCH(QStringList, way);
  const QString secret = QString::fromUtf8("p@ss:w/o?r#d %41");
  CCameraServer server(way + QStringList{"--cameras", "1", "--user", "viewer"}, secret);
  stage_->SetAddress(20, server.Url(1), {}, "viewer", secret.toStdString());
  stage_->SetAddress(21, server.Url(1), {}, "viewer", "wrong");
  stage_->SetAddress(22, server.Url(1));
  const auto right = stage_->Show(20), wrong = stage_->Show(21), none = stage_->Show(22);
  QTRY_COMPARE(CameraIn(*right), 1);
  QVERIFY(!ProcessesSay(secret));
  QVERIFY(ProcessesSay("viewer"));  // it does look
  for (const auto& source : {&wrong, &none}) {
    QTRY_VERIFY(StateOf(*source) == PictureState::Lost);
    QCOMPARE((*source)->Status().loss, PictureLoss::WrongPassword);
    QVERIFY((*source)->LatestPicture(QSize(640, 480)).isNull());
  }
}

void CameraStreamsTest::CertificatesAreChecked() {
  QTemporaryDir folder;
  const auto make = [&folder](const QString& name, const QString& host) {
    const QString certificate = folder.filePath(name + ".pem"), key = folder.filePath(name + ".key");
    const QStringList request{"req", "-x509", "-newkey",    "rsa:2048", "-nodes", "-batch", "-days",
                              "2",   "-subj", "/CN=camera", "-keyout",  key,      "-out",   certificate};
    QProcess openssl;
    openssl.start("openssl", request + QStringList{"-addext", "subjectAltName=" + host});
    openssl.waitForFinished();
    return QStringList{certificate, key};
  };
  const auto content = [](const QString& path) {
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    return file.readAll();
  };
  const QStringList own = make("own", "IP:127.0.0.1"), elsewhere = make("elsewhere", "DNS:elsewhere.example");
  CCameraServer server(QStringList{"--cameras", "1", "--tls"} + own);
  CCameraServer impostor(QStringList{"--cameras", "1", "--tls"} + elsewhere);
  stage_->SetAddress(20, server.Url(1, "main", "rtsps"), {}, {}, {}, content(own[0]));
  stage_->SetAddress(21, server.Url(1, "main", "rtsps"), {}, {}, {}, content(elsewhere[0]));
  stage_->SetAddress(22, server.Url(1, "main", "rtsps"));
  stage_->SetAddress(23, impostor.Url(1, "main", "rtsps"), {}, {}, {}, content(elsewhere[0]));
  const auto good = stage_->Show(20);
  QTRY_COMPARE(CameraIn(*good), 1);
  for (const int camera : {21, 22, 23}) {  // another authority, none that knows it, the name of another host
    const auto bad = stage_->Show(camera);
    QTRY_VERIFY(StateOf(bad) == PictureState::Lost);
    QCOMPARE(bad->Status().loss, PictureLoss::Certificate);
  }
}

void CameraStreamsTest::OfflineCamerasAreNotConnected() {
  stage_->SetOffline(8, true);
  const auto source = stage_->Show(8);
  QElapsedTimer dark;
  dark.start();
  QTRY_VERIFY(dark.hasExpired(500));
  QVERIFY(StateOf(source) == PictureState::Offline);
  QCOMPARE(Total(*server_, "/8/main", "describe"), 0);
  stage_->SetOffline(8, false);
  QTRY_COMPARE(CameraIn(*source), 8);
  stage_->SetOffline(8, true);
  QTRY_VERIFY(StateOf(source) == PictureState::Offline && source->LatestPicture(QSize(64, 48)).isNull());
}

void CameraStreamsTest::ARemovedCameraSaysSo() {
  const auto source = stage_->Show(1);
  QTRY_COMPARE(CameraIn(*source), 1);
  stage_->Remove(1);
  stage_->Supply().RenewAddresses();
  QTRY_VERIFY(StateOf(source) == PictureState::Lost);
  QCOMPARE(source->Status().loss, PictureLoss::Removed);
  QTRY_COMPARE(Open(*server_), 0);
}

void CameraStreamsTest::AnotherAddressShowsNothingOfTheOldOne() {
  const auto source = stage_->Show(1);
  QTRY_COMPARE(CameraIn(*source), 1);
  stage_->SetAddress(1, server_->Url(2));
  stage_->Supply().RenewAddresses();
  QTRY_VERIFY(CameraIn(*source) != 1);
  while (CameraIn(*source) != 2) {
    QVERIFY(source->LatestPicture(QSize(640, 480)).isNull());
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
}

void CameraStreamsTest::PicturesAreDrawnForAPretendedSiteOnly() {
  stage_->SetState(30, CameraStreams::Drawn);
  stage_->SetState(31, CameraStreams::NoAddress);
  const auto pretended = stage_->Show(30), blank = stage_->Show(31), unknown = stage_->Show(32);
  QTRY_COMPARE(pretended->Status().kind, QString("drawn"));
  QVERIFY(!pretended->LatestPicture(QSize(640, 480)).isNull());
  QTRY_VERIFY(StateOf(blank) == PictureState::Lost && StateOf(unknown) == PictureState::Lost);
  QCOMPARE(blank->Status().loss, PictureLoss::NoAddress);
  QCOMPARE(unknown->Status().loss, PictureLoss::Removed);
  for (const auto& source : {&blank, &unknown}) {
    QVERIFY((*source)->LatestPicture(QSize(640, 480)).isNull());
  }
  stage_->SetAddress(30, server_->Url(3));
  stage_->Supply().RenewAddresses();
  QTRY_COMPARE(CameraIn(*pretended), 3);
}

QTEST_MAIN(CameraStreamsTest)
#include "test_camera_streams.moc"
