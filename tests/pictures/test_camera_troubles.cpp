#include <QBuffer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

#include "pictures/picture_decoder.h"
#include "pictures/rtsp_session.h"
#include "pictures/stream_decoder.h"
#include "stream_stage.h"

using namespace TarnClient;
using TarnTest::CStreamStage;

Q_DECLARE_METATYPE(TarnClient::PictureLoss)
Q_DECLARE_METATYPE(TarnClient::VideoTrack)

namespace {

constexpr char kDescription[] = "v=0\r\nm=video 0 RTP/AVP 96\r\na=rtpmap:96 H264/90000\r\na=control:t\r\n";

QByteArray Answer(const QByteArray& status, const QByteArray& headers = {}, const QByteArray& body = {}) {
  return "RTSP/1.0 " + status + "\r\n" + headers + "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" +
         body;
}

constexpr char kEnd[] = "\r\n\r\n";  // of a request: none has a body

/// A camera that answers each request as a script says, and keeps what it was asked.
class CScriptedCamera : public QTcpServer {
 public:
  using Script = std::function<QByteArray(const QByteArray& method, const QByteArray& request)>;

  explicit CScriptedCamera(Script script) {
    listen(QHostAddress::LocalHost);
    connect(this, &QTcpServer::newConnection, this, [this, script = std::move(script)] {
      ++connects;
      QTcpSocket* socket = nextPendingConnection();
      // On a busy machine several requests come at once.
      connect(socket, &QTcpSocket::readyRead, this, [this, socket, script, rest = QByteArray()]() mutable {
        rest += socket->readAll();
        for (int end = rest.indexOf(kEnd); end >= 0; end = rest.indexOf(kEnd)) {
          const QByteArray request = rest.left(end + static_cast<int>(strlen(kEnd)));
          rest.remove(0, request.size());
          requests << request;
          socket->write(script(request.left(request.indexOf(' ')), request));
        }
      });
    });
  }
  QString Url(const QString& path = "cam") const {
    return QString("rtsp://127.0.0.1:%1/%2").arg(serverPort()).arg(path);
  }
  int Asked(const QByteArray& method) const {
    return static_cast<int>(std::count_if(requests.begin(), requests.end(), [&method](const QByteArray& request) {
      return request.startsWith(method + ' ');
    }));
  }

  QByteArrayList requests;
  int connects = 0;
};

// A camera without faults, up to what `script` answers otherwise.
QByteArray Usual(const QByteArray& method) {
  if (method == "DESCRIBE") {
    return Answer("200 OK", {}, kDescription);
  }
  return Answer("200 OK", "Session: 12;timeout=20\r\nTransport: RTP/AVP/TCP;unicast;interleaved=0-1\r\n");
}

// A packet with the last part of a picture, as it goes between the messages.
QByteArray Media(int type, quint16 sequence, const QByteArray& payload) {
  QByteArray packet = QByteArray("\x80", 1) + static_cast<char>(0x80 | type) + static_cast<char>(sequence >> 8) +
                      static_cast<char>(sequence) + QByteArray(8, '\0') + payload;
  return QByteArray("$\0\0", 3) + static_cast<char>(packet.size()) + packet;
}

AccessUnit JpegUnit(const QSize& size) {
  QImage picture(size, QImage::Format_Grayscale8);
  picture.fill(Qt::gray);
  AccessUnit unit;
  unit.codec = VideoCodec::Jpeg;
  unit.is_key = true;
  QBuffer buffer(&unit.bytes);
  buffer.open(QIODevice::WriteOnly);
  picture.save(&buffer, "JPG");
  return unit;
}

}  // namespace

// Cameras that are not as they should be, and what the window says of them.
class CameraTroublesTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void initTestCase() { qRegisterMetaType<VideoTrack>("TarnClient::VideoTrack"); }
  void EachTroubleHasItsReason_data();
  void EachTroubleHasItsReason();
  void AddressesThatAreNone_data();
  void AddressesThatAreNone();
  void RedirectsAreFollowedWithCare();
  void EverySecretIsAnsweredAsItIs();
  void ASessionIsAlwaysEnded_data();
  void ASessionIsAlwaysEnded();
  void ACameraHasOneConnectionAtATime_data();
  void ACameraHasOneConnectionAtATime();
  void HostileAnswersCostLittle();
  void PicturesLargerThanAnyAreNotDecoded();
  void PicturesAreShownWhateverWaits();
  void PacketsAreNoPictures_data();
  void PacketsAreNoPictures();
  void AProgramDoesNotWaitForCamerasThatHang();
};

void CameraTroublesTest::EachTroubleHasItsReason_data() {
  QTest::addColumn<QByteArray>("at");  // the request that is answered
  QTest::addColumn<QByteArray>("answer");
  QTest::addColumn<PictureLoss>("loss");
  const QByteArray describe = "DESCRIBE", sign_in = "WWW-Authenticate: ";
  QTest::newRow("hangs after connect") << describe << QByteArray() << PictureLoss::NoAnswer;
  QTest::newRow("speaks another protocol") << describe << QByteArray("HTTP/1.1 200\r\n\r\n") << PictureLoss::NoAnswer;
  QTest::newRow("garbage") << describe << QByteArray(5000, '\x80') << PictureLoss::NoAnswer;
  QTest::newRow("headers without end") << describe << "RTSP/1.0 200 OK\r\n" + QByteArray("A: b\r\n").repeated(9000)
                                       << PictureLoss::NoAnswer;
  QTest::newRow("unknown path") << describe << Answer("404 Not Found") << PictureLoss::NoSuchStream;
  QTest::newRow("full") << describe << Answer("453 Not Enough Bandwidth") << PictureLoss::Refused;
  QTest::newRow("full, later") << QByteArray("SETUP") << Answer("503 Busy") << PictureLoss::Refused;
  QTest::newRow("no pictures") << describe << Answer("200 OK", {}, "m=audio 0 RTP/AVP 0") << PictureLoss::NoSuchStream;
  QTest::newRow("unknown codec") << describe << Answer("200 OK", {}, "m=video 0 RTP/AVP 99\na=rtpmap:99 VP9/90000")
                                 << PictureLoss::UnknownCodec;
  QTest::newRow("wrong password") << describe << Answer("401 Unauthorized", sign_in + "Basic realm=\"r\"\r\n")
                                  << PictureLoss::WrongPassword;
  QTest::newRow("SHA-256 only") << describe
                                << Answer("401 Unauthorized",
                                          sign_in + "Digest realm=\"r\", nonce=\"n\", algorithm=SHA-256\r\n")
                                << PictureLoss::UnknownDigest;
  QTest::newRow("only UDP") << QByteArray("SETUP") << Answer("461 Unsupported Transport") << PictureLoss::Refused;
  QTest::newRow("plays nothing") << QByteArray("none") << QByteArray() << PictureLoss::NoAnswer;
}

void CameraTroublesTest::EachTroubleHasItsReason() {
  QFETCH(QByteArray, at);
  QFETCH(QByteArray, answer);
  CScriptedCamera camera(
      [&](const QByteArray& method, const QByteArray&) { return method == at ? answer : Usual(method); });
  CStreamStage stage;
  stage.SetAddress(1, camera.Url(), {}, "user", "secret");
  const auto source = stage.Show(1);
  QTRY_VERIFY(source->Status().state == PictureState::Lost);
  QTEST(source->Status().loss, "loss");
  QTRY_VERIFY(camera.connects > 1 || source->Status().loss == PictureLoss::WrongPassword ||
              source->Status().loss == PictureLoss::UnknownDigest ||
              source->Status().loss == PictureLoss::NoSuchStream || source->Status().loss == PictureLoss::UnknownCodec);
}

void CameraTroublesTest::AddressesThatAreNone_data() {
  QTest::addColumn<QString>("url");
  QTest::addColumn<PictureLoss>("loss");
  QTest::newRow("no address") << "camera in the yard" << PictureLoss::BadAddress;
  QTest::newRow("another scheme") << "http://127.0.0.1/" << PictureLoss::BadAddress;
  QTest::newRow("no host") << "rtsp:///1/main" << PictureLoss::BadAddress;
  QTest::newRow("no one there") << "rtsp://127.0.0.1:1/" << PictureLoss::NotReachable;
  QTest::newRow("unknown name") << "rtsp://camera.invalid/" << PictureLoss::NotReachable;
}

void CameraTroublesTest::AddressesThatAreNone() {
  QFETCH(QString, url);
  CStreamStage stage;
  stage.SetAddress(1, url);
  const auto source = stage.Show(1);
  QTRY_VERIFY(source->Status().state == PictureState::Lost);
  QTEST(source->Status().loss, "loss");
}

void CameraTroublesTest::RedirectsAreFollowedWithCare() {
  CScriptedCamera other([](const QByteArray& method, const QByteArray&) { return Usual(method); });
  QString location = QString("rtsp://localhost:%1/b").arg(other.serverPort());
  CScriptedCamera camera([&location](const QByteArray&, const QByteArray& request) {
    if (!request.contains("Authorization")) {
      return Answer("401 Unauthorized", "WWW-Authenticate: Basic realm=\"r\"\r\n");
    }
    return Answer("302 Found", "Location: " + location.toUtf8() + "\r\n");
  });
  StreamAccess access{camera.Url(), "user", TarnHost::CSecret("secret"), {}};
  const auto lost_by = [&] {
    auto session = std::make_unique<CRtspSession>(access, CStreamStage::Quick(), nullptr);
    QVector<int> ends;  // -1: it plays
    connect(session.get(), &CRtspSession::SignalPlaying, this, [&] { ends << -1; });
    connect(session.get(), &CRtspSession::SignalLost, this, [&](PictureLoss loss) { ends << int(loss); });
    session->Open();
    [&] { QTRY_VERIFY(!ends.isEmpty()); }();
    return ends.value(0);
  };
  QCOMPARE(lost_by(), -1);
  QVERIFY(!other.requests.join().contains("Authorization"));  // it is another host
  location = QString("rtsp://127.0.0.1:%1/b").arg(other.serverPort());
  QCOMPARE(lost_by(), -1);
  QVERIFY(!other.requests.join().contains("Authorization"));  // another port may be another camera
  location = camera.Url();
  QCOMPARE(lost_by(), int(PictureLoss::BadAddress));  // round and round
  location = "http://127.0.0.1/";
  QCOMPARE(lost_by(), int(PictureLoss::BadAddress));
}

void CameraTroublesTest::EverySecretIsAnsweredAsItIs() {
  QByteArray secret;
  for (int code = 32; code < 127; ++code) {
    secret += char(code);
  }
  secret += QString::fromUtf8("äß漢").toUtf8();
  CScriptedCamera camera([&](const QByteArray& method, const QByteArray& request) {
    if (request.contains("Authorization: Basic " + ("us er:" + secret).toBase64() + "\r\n")) {
      return Usual(method);
    }
    return Answer("401 Unauthorized", "WWW-Authenticate: Basic realm=\"r\"\r\n");
  });
  CStreamStage stage;
  stage.SetAddress(1, camera.Url("a b?c=d&e=%20"), {}, "us er", secret.toStdString());
  const auto source = stage.Show(1);
  QTRY_COMPARE(camera.Asked("PLAY"), 1);
  QVERIFY2(camera.requests.value(0).startsWith("DESCRIBE rtsp://127.0.0.1:"), camera.requests.value(0));
  QVERIFY(camera.requests.value(0).contains("/a%20b?c=d&e=%20 RTSP/1.0\r\n"));
}

void CameraTroublesTest::ASessionIsAlwaysEnded_data() {
  QTest::addColumn<QByteArray>("hangs_at");
  QTest::addColumn<bool>("lost_first");
  QTest::newRow("before it is known") << QByteArray("SETUP") << false;
  QTest::newRow("the camera is too slow to make one") << QByteArray("SETUP") << true;
  QTest::newRow("in the middle") << QByteArray("PLAY") << false;
  QTest::newRow("the goodbye has to be signed again") << QByteArray("none") << false;
}

void CameraTroublesTest::ASessionIsAlwaysEnded() {
  QFETCH(QByteArray, hangs_at);
  QFETCH(bool, lost_first);
  CScriptedCamera camera([&](const QByteArray& method, const QByteArray& request) {
    if (method == "TEARDOWN" && !request.contains("nonce=\"for the end\"")) {
      return Answer("401 Unauthorized", "WWW-Authenticate: Digest realm=\"r\", nonce=\"for the end\"\r\n");
    }
    return method == hangs_at ? QByteArray() : Usual(method);
  });
  auto timings = CStreamStage::Quick();
  timings.goodbye = timings.open = 5000;  // not over before it is cancelled, on a busy machine either
  if (lost_first) {
    timings.open = 300;
  }
  CRtspSession session({camera.Url(), "user", TarnHost::CSecret("secret"), {}}, timings, nullptr);
  QSignalSpy playing(&session, &CRtspSession::SignalPlaying), lost(&session, &CRtspSession::SignalLost),
      closed(&session, &CRtspSession::SignalClosed);
  session.Open();
  QTRY_VERIFY(camera.Asked(hangs_at) == 1 || !playing.isEmpty());
  QTRY_COMPARE(lost.size(), int(lost_first));
  session.Close();
  if (hangs_at == "SETUP") {
    camera.findChild<QTcpSocket*>()->write(Usual("SETUP"));
  }
  QTRY_COMPARE(closed.size(), 1);
  QVERIFY2(camera.Asked("TEARDOWN") == 2, camera.requests.join('|'));
  QVERIFY(camera.requests.last().contains("Session: 12\r\n"));
}

void CameraTroublesTest::ACameraHasOneConnectionAtATime_data() {
  QTest::addColumn<int>("changes");  // of its address
  QTest::newRow("lost") << 0;
  QTest::newRow("another address") << 1;
  QTest::newRow("and another one before the goodbye is over") << 2;
}

void CameraTroublesTest::ACameraHasOneConnectionAtATime() {
  QFETCH(int, changes);
  QElapsedTimer goodbye;
  qint64 back_after = -1;
  CScriptedCamera camera([&](const QByteArray& method, const QByteArray&) {
    if (method == "TEARDOWN") {
      goodbye.start();
      return QByteArray();
    }
    if (method == "DESCRIBE" && goodbye.isValid()) {
      back_after = goodbye.elapsed();
    }
    return Usual(method);
  });
  auto timings = CStreamStage::Quick();
  if (changes == 0) {
    timings.read = 200;
  }
  timings.retry = 20;
  timings.goodbye = 600;
  CStreamStage stage(timings);
  stage.SetAddress(1, camera.Url());
  const auto source = stage.Show(1);
  QTRY_COMPARE(camera.Asked("PLAY"), 1);
  for (int change = 1; change <= changes; ++change) {
    stage.SetAddress(1, camera.Url(), {}, QString("user %1").arg(change));
    stage.Supply().RenewAddresses();
    QTRY_COMPARE(camera.Asked("TEARDOWN"), 1);
  }
  QTRY_VERIFY(back_after >= 0);
  QVERIFY2(back_after > 500, qPrintable(QString::number(back_after)));
}

void CameraTroublesTest::HostileAnswersCostLittle() {
  CScriptedCamera camera([](const QByteArray& method, const QByteArray&) {
    return Usual(method).replace("timeout=20", "timeout=536870912");
  });
  CRtspSession session({camera.Url(), {}, {}, {}}, StreamTimings(), nullptr);
  QSignalSpy playing(&session, &CRtspSession::SignalPlaying), lost(&session, &CRtspSession::SignalLost);
  session.Open();
  QTRY_COMPARE(playing.size(), 1);
  QVERIFY(!QTest::qWaitFor([&camera] { return camera.Asked("GET_PARAMETER") > 0; }, 100));

  // It asks and asks, and reads none of the answers.
  auto* const socket = camera.findChild<QTcpSocket*>();
  socket->setReadBufferSize(1);
  const QByteArray asks = QByteArray("OPTIONS * RTSP/1.0\r\nCSeq: " + QByteArray(10000, '1') + "\r\n\r\n").repeated(10);
  QElapsedTimer timer;
  timer.start();
  while (lost.isEmpty() && timer.elapsed() < 10000) {
    if (socket->bytesToWrite() < asks.size()) {
      socket->write(asks);
    }
    QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
  }
  QCOMPARE(lost.size(), 1);
}

void CameraTroublesTest::PicturesLargerThanAnyAreNotDecoded() {
  for (const QSize& size : {QSize(7680, 4320), QSize(16000, 2400)}) {
    int decoded = 0;
    CPictureDecoder().Decode(JpegUnit(size), [&decoded](const AVFrame&, qint64) { ++decoded; });
    QCOMPARE(decoded, int(size.width() == 7680));
  }
}

// A camera whose pictures are decoded more slowly than they come: some are shown long before all are done.
void CameraTroublesTest::PicturesAreShownWhateverWaits() {
  constexpr int kUnits = 40;
  const auto pool = std::make_shared<CDecodingPool>(1);
  const auto board = std::make_shared<CStreamBoard>(StreamTimings(), -1);
  const auto decoder = std::make_shared<CStreamDecoder>(pool, board, StreamTimings());
  decoder->SetMode(DecodingMode::All);
  AccessUnit unit = JpegUnit(QSize(4000, 3000));
  unit.arrived_ms = SteadyMs();
  for (unit.taken_ms = 0; unit.taken_ms < kUnits; ++unit.taken_ms) {
    decoder->Push(unit);
  }
  QTRY_VERIFY(board->Number() >= 1);
  const qint64 shown = kUnits - board->Status(kUnits).age_ms;
  QVERIFY2(shown < kUnits - 5, qPrintable(QString::number(shown)));
}

void CameraTroublesTest::PacketsAreNoPictures_data() {
  QTest::addColumn<int>("type");
  QTest::addColumn<QByteArray>("payload");
  QTest::addColumn<PictureLoss>("loss");
  QTest::newRow("of something else") << 97 << QByteArray("\x65\x11", 2) << PictureLoss::NoAnswer;
  QTest::newRow("empty") << 96 << QByteArray() << PictureLoss::NoAnswer;
  QTest::newRow("remarks only") << 96 << QByteArray("\x06\x11\x22", 3) << PictureLoss::NoAnswer;
  QTest::newRow("nothing that can be decoded") << 96 << QByteArray("\x65\x11\x22", 3) << PictureLoss::UnknownCodec;
}

// They go on and on: that is said, and the camera is connected again.
void CameraTroublesTest::PacketsAreNoPictures() {
  QFETCH(int, type);
  QFETCH(QByteArray, payload);
  QFETCH(PictureLoss, loss);
  CScriptedCamera camera([](const QByteArray& method, const QByteArray&) { return Usual(method); });
  QTimer sender;
  quint16 sequence = 0;
  connect(&sender, &QTimer::timeout, &camera, [&] {
    for (QTcpSocket* socket : camera.findChildren<QTcpSocket*>()) {
      socket->write(Media(type, ++sequence, payload));
    }
  });
  sender.start(20);
  auto timings = CStreamStage::Quick();
  timings.open = 1000;
  timings.read = 700;
  timings.retry = 150;
  CStreamStage stage(timings);
  stage.SetAddress(1, camera.Url());
  const auto source = stage.Show(1);
  QTRY_COMPARE(source->Status().loss, loss);
  QVERIFY(source->Status().state == PictureState::Lost);
  QTRY_COMPARE(camera.Asked("DESCRIBE"), 2);
}

void CameraTroublesTest::AProgramDoesNotWaitForCamerasThatHang() {
  CScriptedCamera camera(
      [](const QByteArray& method, const QByteArray&) { return method == "TEARDOWN" ? QByteArray() : Usual(method); });
  auto stage = std::make_unique<CStreamStage>();
  stage->SetAddress(1, camera.Url());
  const auto source = stage->Show(1);
  QTRY_COMPARE(camera.Asked("PLAY"), 1);
  QElapsedTimer timer;
  timer.start();
  stage->End();
  QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
  QVERIFY(source->LatestPicture(QSize(100, 100)).isNull());
  QTRY_COMPARE(camera.Asked("TEARDOWN"), 1);
}

QTEST_MAIN(CameraTroublesTest)
#include "test_camera_troubles.moc"
