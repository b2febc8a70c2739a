#include <QtTest>

#include "pictures/rtsp_message.h"
#include "pictures/rtsp_sign_in.h"
#include "pictures/unit_builder.h"

using namespace TarnClient;
using TarnHost::CSecret;

Q_DECLARE_METATYPE(TarnClient::CRtspSignIn::Answer)

namespace {

using Answer = CRtspSignIn::Answer;

QByteArray Media(int channel, const QByteArray& bytes) {
  return QByteArray("$") + char(channel) + char(bytes.size() >> 8) + char(bytes.size() & 0xff) + bytes;
}

RtpPacket Packet(quint16 sequence, quint32 stamp, bool marker, const QByteArray& payload) {
  RtpPacket packet;
  packet.sequence = sequence;
  packet.stamp = stamp;
  packet.marker = marker;
  packet.payload = payload;
  return packet;
}

QByteArray Hex(const char* text) {
  return QByteArray::fromHex(text);
}

struct Built {
  explicit Built(VideoCodec codec, QVector<QByteArray> sets = {}) {
    VideoTrack track;
    track.codec = codec;
    track.parameter_sets = std::move(sets);
    builder = IUnitBuilder::For(track, [this](const AccessUnit& unit) { units.append(unit); });
  }
  void Add(const char* payload, bool marker = false) { builder->Add(Packet(sequence++, stamp, marker, Hex(payload))); }

  QVector<AccessUnit> units;
  std::unique_ptr<IUnitBuilder> builder;
  quint16 sequence = 65534;
  quint32 stamp = 0;
};

}  // namespace

// What cameras send, read from texts and packets.
class RtspReadingTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void MessagesAndMediaInPieces();
  void GarbageIsKnown_data();
  void GarbageIsKnown();
  void ManyMessagesAreReadInTime();
  void DigestsAreAnswered();
  void WaysToSignIn_data();
  void WaysToSignIn();
  void DescriptionsAreRead();
  void TracksAreAskedForAsWritten_data();
  void TracksAreAskedForAsWritten();
  void H264IsPutTogether();
  void H265IsPutTogether();
  void WhatIsLostIsLeftOut();
  void WhatIsTooLargeIsLeftOut();
  void TablesOfPicturesAreKept();
  void DamagedPacketsDoNoHarm();
};

void RtspReadingTest::MessagesAndMediaInPieces() {
  const QByteArray all =
      "RTSP/1.0 200 OK\r\nCSeq: 1\r\ncontent-length: 5\r\nWWW-Authenticate: a\r\n"
      "www-authenticate: b\r\n\r\nhello" +
      Media(2, "$ here too") + "\r\nOPTIONS * RTSP/1.0\nCSeq: 7\n\n" + Media(0, "");
  for (int size = 1; size <= all.size(); ++size) {
    CRtspReader reader;
    QStringList seen;
    for (int at = 0; at < all.size(); at += size) {
      reader.Add(all.mid(at, size));
      for (RtspPiece piece = reader.Next(); piece.kind != RtspPiece::Incomplete; piece = reader.Next()) {
        if (piece.kind == RtspPiece::Media) {
          seen << QString("%1:%2").arg(piece.channel).arg(QString(piece.media));
        } else {
          seen << QString("%1%2/%3/%4/%5")
                      .arg(piece.message.status)
                      .arg(QString(piece.message.method), QString(piece.message.Header("CSEQ")),
                           QString::number(piece.message.Headers("WWW-Authenticate").size()),
                           QString(piece.message.body));
        }
      }
    }
    QCOMPARE(seen, (QStringList{"200/1/2/hello", "2:$ here too", "0OPTIONS/7/0/", "0:"}));
  }
}

void RtspReadingTest::GarbageIsKnown_data() {
  QTest::addColumn<QByteArray>("bytes");
  QTest::newRow("another protocol") << QByteArray("HTTP/1.1 200 OK\r\n\r\n");
  QTest::newRow("bytes") << QByteArray("\x16\x03\x01\x02");
  QTest::newRow("no number") << QByteArray("RTSP/1.0 fine\r\n\r\n");
  QTest::newRow("a line without end") << "RTSP/1.0 200 OK\r\nX: " + QByteArray(20000, 'x');
  QTest::newRow("headers without end") << "RTSP/1.0 200 OK\r\n" + QByteArray("A: b\r\n").repeated(4000);
  QTest::newRow("a large body") << QByteArray("RTSP/1.0 200 OK\r\nContent-Length: 99999999\r\n\r\n");
  QTest::newRow("a negative body") << QByteArray("RTSP/1.0 200 OK\r\nContent-Length: -1\r\n\r\n");
}

void RtspReadingTest::GarbageIsKnown() {
  QFETCH(QByteArray, bytes);
  CRtspReader reader;
  reader.Add(bytes);
  QVERIFY(reader.Next().kind == RtspPiece::Garbage);
}

// One thread reads what all cameras send.
void RtspReadingTest::ManyMessagesAreReadInTime() {
  constexpr int kMessages = 60000;
  for (const char* message : {"A B RTSP/1.0\r\n\r\n", "A B RTSP/1.0\n\n"}) {
    CRtspReader reader;
    reader.Add(QByteArray(message).repeated(kMessages));
    QElapsedTimer timer;
    timer.start();
    int read = 0;
    while (timer.elapsed() < 5000 && reader.Next().kind == RtspPiece::Message) {
      ++read;
    }
    QCOMPARE(read, kMessages);
  }
}

// The example of RFC 2069 and 2617, with a protection and without.
void RtspReadingTest::DigestsAreAnswered() {
  CRtspSignIn plain("Mufasa", CSecret("CircleOfLife"));
  QVERIFY(plain.Take({"Digest realm=\"testrealm@host.com\", nonce=\"dcd98b7102dd2f0e8b11d0f600bfb0c093\", "
                      "opaque=\"5ccc069c403ebaf9f0171e9517f40e41\""},
                     false) == Answer::CanAnswer);
  const QByteArray header = plain.Header("GET", "/dir/index.html");
  QVERIFY2(header.contains("response=\"1949323746fe6a43ef61f9606e7febea\""), header);
  QVERIFY(header.contains("opaque=\"5ccc069c403ebaf9f0171e9517f40e41\"") && !header.contains("qop"));

  CRtspSignIn with_count("a \"b\"", CSecret("x:y"));
  QVERIFY(with_count.Take({"Digest realm=\"r, s\", nonce=n, qop=\"auth-int,auth\", algorithm=MD5"}, false) ==
          Answer::CanAnswer);
  QVERIFY(with_count.Header("PLAY", "u").contains("nc=00000001"));
  const QByteArray second = with_count.Header("PLAY", "u");
  QVERIFY2(second.contains("nc=00000002") && second.contains("realm=\"r, s\"") &&
               second.contains("username=\"a \\\"b\\\"\""),
           second);
}

void RtspReadingTest::WaysToSignIn_data() {
  QTest::addColumn<QVector<QByteArray>>("offered");
  QTest::addColumn<Answer>("answer");
  QTest::addColumn<QByteArray>("scheme");
  const QByteArray md5 = "Digest realm=\"r\", nonce=\"n\"", sha = md5 + ", algorithm=SHA-256",
                   basic = "Basic realm=\"r\"";
  QTest::newRow("basic") << QVector<QByteArray>{basic} << Answer::CanAnswer << QByteArray("Basic w6Q6OkAv");
  QTest::newRow("digest first") << QVector<QByteArray>{basic, md5} << Answer::CanAnswer << QByteArray("Digest ");
  QTest::newRow("one that is known") << QVector<QByteArray>{sha, md5} << Answer::CanAnswer << QByteArray("Digest ");
  QTest::newRow("all in one line")
      << QVector<QByteArray>{basic + ", " + sha + ", " + md5} << Answer::CanAnswer
      << QByteArray("Digest username=\"\xc3\xa4\", realm=\"r\", nonce=\"n\", uri=\"u\", response=");
  QTest::newRow("with quotes in quotes") << QVector<QByteArray>{"Digest realm=\"a \\\"b\\\", Basic\", nonce=\"n\""}
                                         << Answer::CanAnswer
                                         << QByteArray("Digest username=\"\xc3\xa4\", realm=\"a \\\"b\\\", Basic\"");
  QTest::newRow("SHA-256 only") << QVector<QByteArray>{sha} << Answer::UnknownWay << QByteArray();
  QTest::newRow("the whole message") << QVector<QByteArray>{md5 + ", qop=\"auth-int\""} << Answer::UnknownWay
                                     << QByteArray();
  QTest::newRow("something else") << QVector<QByteArray>{"Negotiate"} << Answer::UnknownWay << QByteArray();
  QTest::newRow("nothing") << QVector<QByteArray>{} << Answer::UnknownWay << QByteArray();
}

void RtspReadingTest::WaysToSignIn() {
  QFETCH(QVector<QByteArray>, offered);
  QFETCH(Answer, answer);
  QFETCH(QByteArray, scheme);
  CRtspSignIn sign_in(QString::fromUtf8("ä"), CSecret(":@/"));
  QVERIFY(sign_in.Header("DESCRIBE", "u").isEmpty());
  QVERIFY(sign_in.Take(offered, false) == answer);
  QVERIFY2(sign_in.Header("DESCRIBE", "u").startsWith(scheme), sign_in.Header("DESCRIBE", "u"));
  if (answer == Answer::CanAnswer) {
    QVERIFY(sign_in.Take(offered, true) == Answer::Refused);
    QVERIFY(CRtspSignIn(QString(), CSecret()).Take(offered, false) == Answer::Refused);
  }
}

void RtspReadingTest::DescriptionsAreRead() {
  const auto track = ReadDescription(
      "v=0\r\na=control:rtsp://h/all\r\nm=audio 0 RTP/AVP 0\r\na=control:sound\r\nm=video 0 RTP/AVP 95\r\n"
      "a=rtpmap:95 MP4V-ES/90000\r\nm=video 0 RTP/AVP 96\r\na=rtpmap:97 H265/1\r\na=rtpmap:96 h264/90001\r\n"
      "a=fmtp:96 packetization-mode=1; sprop-parameter-sets=Z0I=,aM4=;x=y\r\na=control:pictures\r\n");
  QVERIFY(track && track->codec == VideoCodec::H264);
  QCOMPARE(track->payload_type, 96);
  QCOMPARE(track->clock_rate, 90001);
  QCOMPARE(track->control, QByteArray("pictures"));
  QCOMPARE(track->parameter_sets, (QVector<QByteArray>{Hex("6742"), Hex("68ce")}));
  QVERIFY(ReadDescription("m=video 0 RTP/AVP 26")->codec == VideoCodec::Jpeg);
  QVERIFY(ReadDescription("m=video 0 RTP/AVP 99\na=rtpmap:99 VP8/90000")->codec == VideoCodec::Unknown);
  QVERIFY(ReadDescription("m=video 0 RTP/AVP 26\na=x-dimensions:65500,65500")->size.isEmpty());
  QVERIFY(!ReadDescription("m=audio 0 RTP/AVP 0") && !ReadDescription("<html>"));
}

void RtspReadingTest::TracksAreAskedForAsWritten_data() {
  QTest::addColumn<QByteArray>("base");
  QTest::addColumn<QByteArray>("control");
  QTest::addColumn<QByteArray>("url");
  QTest::newRow("below") << QByteArray("rtsp://h/a") << QByteArray("t=0") << QByteArray("rtsp://h/a/t=0");
  QTest::newRow("slash") << QByteArray("rtsp://h/a/") << QByteArray("t=0") << QByteArray("rtsp://h/a/t=0");
  QTest::newRow("query") << QByteArray("rtsp://h/a?c=1") << QByteArray("t=0") << QByteArray("rtsp://h/a?c=1/t=0");
  QTest::newRow("whole") << QByteArray("rtsp://h/a") << QByteArray("rtsp://h/b") << QByteArray("rtsp://h/b");
  QTest::newRow("all") << QByteArray("rtsp://h/a") << QByteArray("*") << QByteArray("rtsp://h/a");
}

void RtspReadingTest::TracksAreAskedForAsWritten() {
  QFETCH(QByteArray, base);
  QFETCH(QByteArray, control);
  QTEST(TrackUrl(base, control), "url");
}

void RtspReadingTest::H264IsPutTogether() {
  Built built(VideoCodec::H264, {Hex("6742"), Hex("68ce")});
  built.Add("65aabb", true);  // a key frame without its parameters
  built.stamp += 10;
  built.Add("180003674200000268ce");  // two that share a packet
  built.Add("7c85a1a2");              // one in three packets
  built.Add("7c05a3");
  built.Add("7c45a4", true);
  built.stamp += 10;
  built.Add("4101");
  built.stamp += 10;
  built.Add("4102", true);  // the end of the one before was not marked
  QCOMPARE(built.units.size(), 4);
  QCOMPARE(built.units[0].bytes.toHex(), QByteArray("0000000167420000000168ce0000000165aabb"));
  QCOMPARE(built.units[1].bytes.toHex(), QByteArray("000000016742000000000168ce0000000165a1a2a3a4"));
  QVERIFY(built.units[0].is_key && built.units[1].is_key && !built.units[2].is_key);
  QCOMPARE(built.units[2].bytes.toHex(), QByteArray("000000014101"));
  QCOMPARE(built.units[3].stamp, 30U);
}

void RtspReadingTest::H265IsPutTogether() {
  Built built(VideoCodec::H265, {Hex("4001"), Hex("4201")});
  built.Add("620193aa");  // type 19 in two packets
  built.Add("620153bb", true);
  built.stamp += 10;
  built.Add("0201cc", true);
  QCOMPARE(built.units.size(), 2);
  QCOMPARE(built.units[0].bytes.toHex(), QByteArray("000000014001000000014201000000012601aabb"));
  QVERIFY(built.units[0].is_key && !built.units[1].is_key);
  QCOMPARE(built.units[1].bytes.toHex(), QByteArray("000000010201cc"));
}

void RtspReadingTest::WhatIsLostIsLeftOut() {
  Built built(VideoCodec::H264);
  built.Add("67424200");
  built.Add("7c85a1");
  ++built.sequence;  // one is missing
  built.Add("7c45a3", true);
  built.stamp += 10;
  built.Add("7c45a3", true);  // only the end of one
  QCOMPARE(built.units.size(), 1);
  QCOMPARE(built.units[0].bytes.toHex(), QByteArray("0000000167424200"));
}

// A picture that does not end, whole parts in each packet, and then one that is as it should be.
void RtspReadingTest::WhatIsTooLargeIsLeftOut() {
  Built built(VideoCodec::H264);
  const QByteArray part = QByteArray(1, 0x41) + QByteArray(60000, 'x');
  const QByteArray several = QByteArray("\x18\xea\x61", 3) + part;
  for (const QByteArray& payload : {part, several}) {
    for (int sent = 0; sent < 2 * kLargestUnit; sent += payload.size()) {
      built.builder->Add(Packet(built.sequence++, built.stamp, false, payload));
    }
    ++built.stamp;
  }
  built.Add("4101", true);
  QCOMPARE(built.units.size(), 1);
  QCOMPARE(built.units[0].bytes.toHex(), QByteArray("000000014101"));
}

// Cameras send the tables of a quality with its first picture only.
void RtspReadingTest::TablesOfPicturesAreKept() {
  Built built(VideoCodec::Jpeg);
  const auto send = [&built](const char* quality, const QByteArray& tables) {
    const QByteArray payload =
        Hex("0000000001") + Hex(quality) + Hex("0a080000") + Hex(tables.isEmpty() ? "0000" : "0080") + tables + "scan";
    built.builder->Add(Packet(built.sequence++, built.stamp++, true, payload));
    return built.units.size();
  };
  const QByteArray tables(128, 'q'), others(128, 'r');
  QCOMPARE(send("80", QByteArray()), 0);
  QCOMPARE(send("80", tables), 1);
  QCOMPARE(send("81", others), 2);
  QCOMPARE(send("80", QByteArray()), 3);
  QCOMPARE(built.units[2].bytes, built.units[0].bytes);
  QCOMPARE(send("80", others), 4);  // they have changed
  QCOMPARE(send("80", QByteArray()), 5);
  QCOMPARE(built.units[4].bytes, built.units[1].bytes);
  QCOMPARE(send("ff", tables), 6);
  QCOMPARE(send("ff", QByteArray()), 6);  // of this one they come each time
}

// All packets cut off at every length: nothing is read past their ends.
void RtspReadingTest::DamagedPacketsDoNoHarm() {
  const QByteArray jpeg = Hex("00000000 41ff0a08 0010ffff 00000080") + QByteArray(140, 'q');
  const QByteArray payloads[] = {Hex("1800036742000002"), Hex("7c85a1a2"), Hex("620193aa"), Hex("6001000340010100"),
                                 jpeg};
  for (const auto codec : {VideoCodec::H264, VideoCodec::H265, VideoCodec::Jpeg}) {
    Built built(codec);
    for (const QByteArray& payload : payloads) {
      for (int size = 0; size <= payload.size(); ++size) {
        built.builder->Add(Packet(built.sequence++, built.stamp++, size % 2 == 0, payload.left(size)));
      }
    }
    for (const AccessUnit& unit : qAsConst(built.units)) {
      QVERIFY(unit.bytes.size() < 2000);
    }
  }
  const QByteArray packet = Hex("b1e0000100000000000000000000000000010001ffffffff99");
  for (int size = 0; size <= packet.size(); ++size) {
    const auto read = ReadRtp(packet.left(size));
    QVERIFY(!read || read->payload.size() < size);
  }
}

QTEST_APPLESS_MAIN(RtspReadingTest)
#include "test_rtsp_reading.moc"
