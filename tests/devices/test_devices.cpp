#include <QSignalSpy>
#include <QtTest>

#include "TarnHost/host_services.h"
#include "camera_tool.h"
#include "devices/camera_presets.h"
#include "devices/device_finder.h"
#include "devices/device_question.h"
#include "devices/preset_caller.h"
#include "plan_test.h"

using TarnClient::CCameraPresets;
using TarnClient::CDeviceFinder;
using TarnClient::CDeviceQuestion;
using TarnClient::CPresetCaller;
using TarnClient::DeviceAnswer;
using TarnClient::DeviceFailure;
using TarnClient::DeviceFound;
using TarnClient::PresetOrder;
using TarnTest::CCameraTool;

Q_DECLARE_METATYPE(std::optional<TarnClient::DeviceFailure>)

// Finding and asking a device that runs beside the test.
class DevicesTest : public TarnTest::CPlanTest {
  Q_OBJECT

 private Q_SLOTS:
  void ADeviceIsFoundOnce();
  void ASearchWithoutAnAnswerEnds();
  void ADeviceTellsWhatItHas_data();
  void ADeviceTellsWhatItHas();
  void SeveralLenses();
  void Failures_data();
  void Failures();
  void ADeviceThatIsGone();
  void ACameraTurnsToItsPreset_data();
  void ACameraTurnsToItsPreset();
  void APageOfPresetsAsksTheDeviceOnce();
  void ADeviceThatTakesItsTimeWithEachCallIsLeft();
  void ASitesCameraTurns();
  void ACancelledQuestionIsNotAnswered();
};

namespace {

QUrl ServiceOf(const CCameraTool& device) {
  return TarnClient::DeviceAddress(QStringLiteral("127.0.0.1:%1").arg(device.Port()));
}

/// What came of a question.
struct Outcome {
  std::optional<DeviceAnswer> answer;
  std::optional<DeviceFailure> failure;
};

Outcome Asked(const QUrl& address, const QString& user = {}, const QString& password = {}, int patience_ms = 3000) {
  CDeviceQuestion question;
  question.SetPatience(patience_ms);
  Outcome outcome;
  QObject::connect(&question, &CDeviceQuestion::SignalAnswered, &question,
                   [&](const DeviceAnswer& answer) { outcome.answer = answer; });
  QObject::connect(&question, &CDeviceQuestion::SignalFailed, &question,
                   [&](DeviceFailure failure, const QString&) { outcome.failure = failure; });
  question.Ask(address, user, password);
  const bool is_over = QTest::qWaitFor([&] { return !question.IsAsking(); }, 20000);
  return is_over ? outcome : Outcome();
}

}  // namespace

void DevicesTest::ADeviceIsFoundOnce() {
  const CCameraTool device("onvif_device.py");
  CDeviceFinder finder;
  finder.SetPatience(1500);
  QSignalSpy found(&finder, &CDeviceFinder::SignalFound);
  QSignalSpy finished(&finder, &CDeviceFinder::SignalFinished);
  QVERIFY(finder.FindAt(QHostAddress(QHostAddress::LocalHost),
                        static_cast<quint16>(device.Start().value(QStringLiteral("search_port")).toInt())));
  QVERIFY(finished.wait());
  QCOMPARE(found.size(), 1);
  const auto first = found.first().first().value<DeviceFound>();
  QCOMPARE(first.service, ServiceOf(device));
  QCOMPARE(first.name, QStringLiteral("Gate & <yard>"));
  QCOMPARE(first.place, QStringLiteral("North gate"));
  QVERIFY(!finder.IsFinding());
}

void DevicesTest::ASearchWithoutAnAnswerEnds() {
  CDeviceFinder finder;
  finder.SetPatience(300);
  QSignalSpy finished(&finder, &CDeviceFinder::SignalFinished);
  QVERIFY(finder.FindAt(QHostAddress(QHostAddress::LocalHost), 9));
  QVERIFY(finder.FindAt(QHostAddress(QHostAddress::LocalHost), 9));  // begins again
  QVERIFY(finished.wait());
  QVERIFY(!finished.wait(600));
  QCOMPARE(finished.size(), 1);
}

void DevicesTest::ADeviceTellsWhatItHas_data() {
  QTest::addColumn<QStringList>("arguments");
  const QStringList user = {QStringLiteral("--user"), QStringLiteral("admin")};
  QTest::newRow("open to all") << QStringList{};
  QTest::newRow("password") << user;
  QTest::newRow("its clock is ahead") << user + QStringList{QStringLiteral("--clock"), QStringLiteral("7200")};
  QTest::newRow("its clock is behind") << user + QStringList{QStringLiteral("--clock=-86400")};
  QTest::newRow("asks by HTTP") << user + QStringList{QStringLiteral("--http-login")};
  QTest::newRow("older media") << user + QStringList{QStringLiteral("--media1")};
  QTest::newRow("older still") << user + QStringList{QStringLiteral("--media1"), QStringLiteral("--without"),
                                                     QStringLiteral("GetServices")};
  QTest::newRow("does not say who it is")
      << QStringList{QStringLiteral("--without"), QStringLiteral("GetScopes"), QStringLiteral("GetDeviceInformation")};
  QTest::newRow("thinks it is elsewhere")
      << user + QStringList{QStringLiteral("--names-itself"), QStringLiteral("198.51.100.7")};
}

void DevicesTest::ADeviceTellsWhatItHas() {
  QFETCH(QStringList, arguments);
  const QString secret = QStringLiteral("p<ä&ss\"wörd");
  const CCameraTool device(
      "onvif_device.py",
      arguments + QStringList{QStringLiteral("--rtsp"), QStringLiteral("rtsp://user:x@127.0.0.1:8554")}, secret);
  const Outcome outcome = Asked(ServiceOf(device), QStringLiteral("admin"), secret);
  QVERIFY(!outcome.failure);
  const bool is_named = !arguments.contains(QStringLiteral("GetScopes"));
  QCOMPARE(outcome.answer->name == QStringLiteral("Gate & <yard>"), is_named);
  QCOMPARE(outcome.answer->model == QStringLiteral("Test camera"), is_named);
  QCOMPARE(outcome.answer->cameras.size(), size_t(1));
  const TarnClient::DeviceCamera& camera = outcome.answer->cameras.front();
  QCOMPARE(camera.streams.size(), size_t(2));
  QCOMPARE(camera.streams[0].address, QUrl(QStringLiteral("rtsp://127.0.0.1:8554/1/main")));
  QCOMPARE(camera.streams[0].size, QSize(640, 480));
  QCOMPARE(camera.streams[1].kind, 1);
  QCOMPARE(camera.streams[1].address, QUrl(QStringLiteral("rtsp://127.0.0.1:8554/1/sub")));
  QCOMPARE(camera.presets.size(), size_t(2));
  QCOMPARE(camera.presets[1].name, QStringLiteral("Close up"));
}

void DevicesTest::SeveralLenses() {
  const CCameraTool device("onvif_device.py", {QStringLiteral("--lenses"), QStringLiteral("4"),
                                               QStringLiteral("--without"), QStringLiteral("GetPresets")});
  const Outcome outcome = Asked(ServiceOf(device));
  QVERIFY(outcome.answer);
  QCOMPARE(outcome.answer->cameras.size(), size_t(4));
  QCOMPARE(outcome.answer->cameras[3].streams[0].address.path(), QStringLiteral("/4/main"));
  QVERIFY(outcome.answer->cameras[3].presets.empty());
}

void DevicesTest::Failures_data() {
  QTest::addColumn<QStringList>("arguments");
  QTest::addColumn<std::optional<DeviceFailure>>("failure");
  const auto row = [](const char* name, const QStringList& arguments, DeviceFailure failure) {
    QTest::newRow(name) << arguments << std::make_optional(failure);
  };
  const QStringList user = {QStringLiteral("--user"), QStringLiteral("admin")};
  const auto mode = [](const char* name) { return QStringList{QStringLiteral("--mode"), QString::fromLatin1(name)}; };
  row("wrong password", user, DeviceFailure::WrongPassword);
  row("wrong password by HTTP", user + QStringList{QStringLiteral("--http-login")}, DeviceFailure::WrongPassword);
  row("would give the password away", mode("basic"), DeviceFailure::WrongPassword);
  row("no video", {QStringLiteral("--no-video")}, DeviceFailure::NoVideoProfile);
  row("no streams", {QStringLiteral("--without"), QStringLiteral("GetStreamUri")}, DeviceFailure::NoVideoProfile);
  row("no profiles", {QStringLiteral("--without"), QStringLiteral("GetProfiles")}, DeviceFailure::Refused);
  row("hangs", mode("hang"), DeviceFailure::NoAnswer);
  row("another program", mode("garbage"), DeviceFailure::NotUnderstood);
  row("an answer without end", mode("endless"), DeviceFailure::NotUnderstood);
  row("sends us away", mode("redirect"), DeviceFailure::NotUnderstood);
}

void DevicesTest::Failures() {
  QFETCH(QStringList, arguments);
  QFETCH(std::optional<DeviceFailure>, failure);
  const CCameraTool device("onvif_device.py", arguments, QStringLiteral("other"));
  const Outcome outcome = Asked(ServiceOf(device), QStringLiteral("admin"), QStringLiteral("secret"));
  QVERIFY(!outcome.answer);
  QVERIFY(outcome.failure == failure);
}

void DevicesTest::ADeviceThatIsGone() {
  QUrl service;
  {
    const CCameraTool device("onvif_device.py");
    service = ServiceOf(device);
  }
  QVERIFY(Asked(service).failure == DeviceFailure::NoAnswer);
}

void DevicesTest::ACameraTurnsToItsPreset_data() {
  QTest::addColumn<QString>("stream");
  QTest::addColumn<int>("number");
  QTest::addColumn<QString>("name");
  QTest::addColumn<int>("turned");  // the device's number of the preset; 0: it stays
  QTest::newRow("by its name") << "rtsp://elsewhere/2/sub" << 7 << "Close up" << 2;
  QTest::newRow("by its number") << "rtsp://elsewhere/2/main" << 1 << "renamed" << 1;
  QTest::newRow("name before number") << "rtsp://elsewhere/2/main" << 1 << "Close up" << 2;
  QTest::newRow("no such preset") << "rtsp://elsewhere/2/main" << 9 << "Left" << 0;
  QTest::newRow("no such camera") << "rtsp://elsewhere/9/main" << 1 << "Wide" << 0;
}

void DevicesTest::ACameraTurnsToItsPreset() {
  QFETCH(QString, stream);
  QFETCH(int, number);
  QFETCH(QString, name);
  QFETCH(int, turned);
  CCameraTool device("onvif_device.py",
                     {QStringLiteral("--lenses"), QStringLiteral("2"), QStringLiteral("--user"),
                      QStringLiteral("admin"), QStringLiteral("--clock=-3600")},
                     QStringLiteral("x"));
  CPresetCaller caller;
  int done = 0, failed = 0;
  const PresetOrder order{ServiceOf(device), QStringLiteral("admin"), QStringLiteral("x"), QUrl(stream), number, name};
  for (int times = 1; times <= 2; ++times) {  // the second time the device is known
    caller.Call(order, [&](std::optional<DeviceFailure> failure, const QString&) { ++(failure ? failed : done); });
    QTRY_COMPARE(done + failed, times);
  }
  QCOMPARE(done > 0, turned > 0);
  if (turned > 0) {
    const QJsonObject said = device.NextLine();
    QCOMPARE(said.value(QStringLiteral("preset")).toInt(), turned);
    QVERIFY(said.value(QStringLiteral("profile")).toString().startsWith(QLatin1String("2/")));
  }
}

// Of two orders for one camera the later one counts, also where the earlier one is not done yet.
void DevicesTest::APageOfPresetsAsksTheDeviceOnce() {
  CCameraTool device("onvif_device.py",
                     {QStringLiteral("--lenses"), QStringLiteral("4"), QStringLiteral("--mode"), QStringLiteral("slow"),
                      QStringLiteral("--say"), QStringLiteral("GetProfiles")});
  CPresetCaller caller;
  int done = 0, failed = 0;
  const auto call = [&](int lens, int preset) {
    caller.Call({ServiceOf(device), {}, {}, QUrl(QStringLiteral("rtsp://elsewhere/%1/main").arg(lens)), preset, {}},
                [&](std::optional<DeviceFailure> failure, const QString&) { ++(failure ? failed : done); });
  };
  call(1, 1);
  for (int lens = 1; lens <= 4; ++lens) {
    call(lens, 2);
  }
  call(4, 9);  // there is none, which is no reason to ask again
  QTRY_COMPARE_WITH_TIMEOUT(done + failed, 6, 20000);
  QCOMPARE(failed, 1);
  call(3, 1);
  call(3, 2);
  call(3, 1);
  QTRY_COMPARE(done + failed, 9);
  QCOMPARE(device.NextLine(), (QJsonObject{{QStringLiteral("asked"), QStringLiteral("GetProfiles")}}));
  QStringList turned;
  for (int line = 0; line < 5; ++line) {
    const QJsonObject said = device.NextLine();
    turned << said.value(QStringLiteral("profile")).toString().left(1) +
                  QString::number(said.value(QStringLiteral("preset")).toInt());
  }
  std::sort(turned.begin(), turned.begin() + 3);
  QCOMPARE(turned.join(QLatin1Char(' ')), QStringLiteral("12 22 32 31 31"));
}

void DevicesTest::ADeviceThatTakesItsTimeWithEachCallIsLeft() {
  const CCameraTool device("onvif_device.py", {QStringLiteral("--lenses"), QStringLiteral("30"),
                                               QStringLiteral("--mode"), QStringLiteral("slow")});
  QElapsedTimer timer;
  timer.start();
  QVERIFY(Asked(ServiceOf(device), {}, {}, 400).failure == DeviceFailure::NoAnswer);
  QVERIFY2(timer.elapsed() < 10000, qPrintable(QString::number(timer.elapsed())));
}

void DevicesTest::ASitesCameraTurns() {
  CCameraTool device("onvif_device.py", {QStringLiteral("--user"), QStringLiteral("admin")}, QStringLiteral("secret"));
  Open({}, false, [] {
    TarnHost::PlanSite site = TarnTest::SmallSite();
    site.cameras = {{"Gate", 0, true, {"Wide", "Close up"}, {0}}, {"Door", 0, true, {"Wide"}, {0}}};
    return site;
  });
  const QString gate = QStringLiteral("1001"), door = QStringLiteral("1002");
  TarnHost::CameraChanges::Camera change;
  change.index_code = gate.toStdString();
  change.user = "admin";
  change.secret = TarnHost::CSecret("secret");
  change.device_url = ServiceOf(device).toString().toStdString();
  TarnHost::CameraChanges changes;
  changes.cameras = {change};
  TarnHost::CameraChangesMade made;
  std::string error;
  QVERIFY2(TarnHost::InstalledHostServices()->ChangeCameras(changes, made, &error), error.c_str());

  CCameraPresets presets;
  std::optional<QString> fault;
  const auto turn = [&](const QString& camera, int preset_no) {
    fault.reset();
    presets.Turn(camera, preset_no, [&](const QString& text) { fault = text; });
  };
  turn(gate, 2);
  QTRY_VERIFY(fault);
  QCOMPARE(*fault, QString());
  QCOMPARE(device.NextLine().value(QStringLiteral("preset")).toInt(), 2);
  turn(gate, 9);
  QTRY_VERIFY(fault);
  QVERIFY(!fault->isEmpty());
  turn(door, 1);  // belongs to no device
  QTRY_VERIFY(fault);
  QCOMPARE(*fault, QString());
}

void DevicesTest::ACancelledQuestionIsNotAnswered() {
  const CCameraTool device("onvif_device.py");
  CDeviceQuestion question;
  QSignalSpy answered(&question, &CDeviceQuestion::SignalAnswered);
  QSignalSpy failed(&question, &CDeviceQuestion::SignalFailed);
  question.Ask(ServiceOf(device), {}, {});
  question.Cancel();
  QVERIFY(!question.IsAsking());
  question.Ask(QUrl(QStringLiteral("http://127.0.0.1:9/")), {}, {});
  question.Ask(ServiceOf(device), {}, {});
  QVERIFY(answered.wait());
  QCOMPARE(answered.size(), 1);
  QCOMPARE(failed.size(), 0);
}

QTEST_MAIN(DevicesTest)
#include "test_devices.moc"
