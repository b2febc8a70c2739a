#include <QtTest>

#include "pictures/connect_gate.h"
#include "pictures/load_shedding.h"
#include "pictures/picture_size.h"
#include "pictures/reconnect_pause.h"
#include "pictures/repeat_watch.h"
#include "pictures/stream_choice.h"
#include "pictures/stream_clock.h"
#include "pictures/stream_facts.h"
#include "pictures/unit_queue.h"

using namespace TarnClient;

Q_DECLARE_METATYPE(std::function<QByteArray(int)>)
Q_DECLARE_METATYPE(std::function<int(int)>)
Q_DECLARE_METATYPE(TarnClient::StreamFacts)
Q_DECLARE_METATYPE(TarnClient::PictureState)
Q_DECLARE_METATYPE(TarnClient::PictureLoss)
Q_DECLARE_METATYPE(TarnClient::StreamKind)

namespace {

constexpr qint64 kNow = 100000;

AccessUnit Unit(int number, bool is_key, qint64 arrived_ms, int connection = 1) {
  AccessUnit unit;
  unit.bytes = QByteArray::number(number);
  unit.is_key = is_key;
  unit.arrived_ms = arrived_ms;
  unit.connection = connection;
  return unit;
}

// The numbers of all units that are to be decoded now.
QByteArrayList Taken(CUnitQueue& queue, DecodingMode mode, qint64 now_ms) {
  QByteArrayList taken;
  while (const auto unit = queue.Take(mode, now_ms)) {
    taken << unit->bytes;
  }
  return taken;
}

// When each camera may connect, where those below `dead` never answer.
QHash<int, qint64> BegunAt(CConnectGate& gate, int dead, qint64 until_ms) {
  QHash<int, qint64> begun;
  qint64 now = 0;
  while (now < until_ms) {
    for (const int id : gate.Admit(now)) {
      begun[id] = now;
      if (id >= dead) {
        gate.Leave(id);
      }
    }
    now = qMax(now + 1, gate.NextLook().value_or(until_ms));
  }
  return begun;
}

}  // namespace

// What is decided about streams, apart from sockets and threads.
class StreamRulesTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void PausesGrowAndStayApart();
  void ReturningCamerasComeOneByOne();
  void DeadCamerasHoldUpNoOthers();
  void TheStreamFollowsTheHeight_data();
  void TheStreamFollowsTheHeight();
  void AStreamChangesOnceInFiveSeconds();
  void StreamsAreShedAndRestored();
  void PicturesAreHandedAboutAsLargeAsWanted_data();
  void PicturesAreHandedAboutAsLargeAsWanted();
  void AgeIsThatOfTheStreamsClock();
  void AgeOfStreamsWhoseClockIsWrong_data();
  void AgeOfStreamsWhoseClockIsWrong();
  void RepeatedPicturesAreSeen_data();
  void RepeatedPicturesAreSeen();
  void StatusTellsTheTruth_data();
  void StatusTellsTheTruth();
  void UnitsSinceTheKeyFrameAreKept();
  void WhatIsTooMuchIsSkipped();
};

void StreamRulesTest::PausesGrowAndStayApart() {
  const auto pause = [](int failed, PictureLoss loss, double chance) {
    return ReconnectPause(failed, loss, chance, 1000);
  };
  const qint64 seconds[] = {1, 2, 4, 8, 15, 15, 15};
  for (int failed = 1; failed <= 7; ++failed) {
    QCOMPARE(pause(failed, PictureLoss::NotReachable, 0.5), seconds[failed - 1] * 1000);
  }
  QCOMPARE(pause(1, PictureLoss::Ended, 0), qint64(750));
  QCOMPARE(pause(5, PictureLoss::NoAnswer, 1), qint64(18750));
  QCOMPARE(pause(1, PictureLoss::WrongPassword, 0.5), qint64(15000));  // or the camera locks the account
}

void StreamRulesTest::ReturningCamerasComeOneByOne() {
  CConnectGate gate(5000);
  for (int id = 0; id < 64; ++id) {
    gate.Ask(id, ConnectRank::JustLost);
  }
  QVector<qint64> begun;
  qint64 now = 0;
  while (begun.size() < 64) {
    const QVector<int> admitted = gate.Admit(now);
    QVERIFY(admitted.size() <= 1);
    for (const int id : admitted) {
      begun.append(now);
      gate.Leave(id);
    }
    now = qMax(now + 1, gate.NextLook().value_or(now + 1));
  }
  QVERIFY2(begun.last() > 4500 && begun.last() < 5500, qPrintable(QString::number(begun.last())));
}

void StreamRulesTest::DeadCamerasHoldUpNoOthers() {
  CConnectGate shown(5000);
  for (int id = 0; id < 64; ++id) {
    shown.Ask(id, ConnectRank::First);
  }
  QHash<int, qint64> begun = BegunAt(shown, 30, 10000);
  QCOMPARE(begun.size(), 64);
  QVERIFY(begun[63] <= 2000);

  CConnectGate lost(5000);
  for (int id = 0; id < 60; ++id) {
    lost.Ask(id, ConnectRank::Failing);
  }
  lost.Ask(60, ConnectRank::JustLost);
  lost.Ask(61, ConnectRank::First);
  begun = BegunAt(lost, 60, 30000);
  QCOMPARE(begun.size(), 62);
  QCOMPARE(begun[60], qint64(0));
  QCOMPARE(begun[61], qint64(0));
  QVERIFY(begun[59] <= 6000);

  // Who asks while all places are taken waits for the next one.
  CConnectGate full(5000);
  for (int id = 0; id < 24; ++id) {
    full.Ask(id, ConnectRank::First);
  }
  QCOMPARE(full.Admit(0).size(), 24);
  full.Ask(30, ConnectRank::First);
  QVERIFY(full.Admit(10).isEmpty());
  QCOMPARE(full.NextLook().value_or(0), CConnectGate::kHoldMs);
  full.Leave(3);
  QCOMPARE(full.Admit(20), QVector<int>{30});
}

void StreamRulesTest::TheStreamFollowsTheHeight_data() {
  QTest::addColumn<StreamKind>("bound");
  QTest::addColumn<StreamKind>("now");
  QTest::addColumn<int>("height");
  QTest::addColumn<StreamKind>("expected");
  const auto main = StreamKind::Main, sub = StreamKind::Sub;
  QTest::newRow("small") << main << main << 199 << sub;
  QTest::newRow("not small any more") << main << main << 200 << main;
  QTest::newRow("between, from below") << main << sub << 267 << sub;
  QTest::newRow("between, from above") << main << main << 267 << main;
  QTest::newRow("large again") << main << sub << 268 << main;
  QTest::newRow("the plan wants no more") << sub << sub << 1080 << sub;
}

void StreamRulesTest::TheStreamFollowsTheHeight() {
  QFETCH(StreamKind, bound);
  QFETCH(StreamKind, now);
  QFETCH(int, height);
  QTEST(KindForHeight(bound, now, height), "expected");
}

void StreamRulesTest::AStreamChangesOnceInFiveSeconds() {
  CStreamChoice choice(StreamKind::Main);
  QCOMPARE(choice.Take(100, 0), StreamKind::Sub);
  QCOMPARE(choice.Take(400, 1), StreamKind::Main);  // the first one was no change
  QCOMPARE(choice.Take(100, 5000), StreamKind::Main);
  QCOMPARE(choice.Take(100, 5001), StreamKind::Sub);
}

void StreamRulesTest::StreamsAreShedAndRestored() {
  CLoadShedding shedding;
  qint64 now = 0;
  const auto after = [&](qint64 ms, bool behind, double load) {
    int shed = 0;
    for (const qint64 end = now + ms; now < end; now += 500) {
      shed = shedding.Take(now, behind, load, 16);
    }
    return shed;
  };
  QCOMPARE(after(3500, true, 1), 0);
  QCOMPARE(after(500, false, 1), 0);  // a moment in time, and it begins again
  QCOMPARE(after(4000, true, 1), 0);
  QCOMPARE(after(1000, true, 1), 4);
  QCOMPARE(after(4000, true, 1), 7);
  QCOMPARE(after(60000, false, 0.7), 7);
  QCOMPARE(after(20000, false, 0.5), 7);
  QCOMPARE(after(1000, false, 0.5), 6);
  QCOMPARE(after(200000, false, 0.5), 0);
  QCOMPARE(after(600000, true, 1), 16);
  QCOMPARE(shedding.Take(now, true, 1, 3), 3);
}

void StreamRulesTest::PicturesAreHandedAboutAsLargeAsWanted_data() {
  QTest::addColumn<QSize>("coded");
  QTest::addColumn<QSize>("wanted");
  QTest::addColumn<QSize>("expected");
  QTest::newRow("never larger") << QSize(320, 240) << QSize(1000, 800) << QSize(320, 240);
  QTest::newRow("a little smaller") << QSize(640, 480) << QSize(600, 450) << QSize(640, 480);
  QTest::newRow("4K in a small window") << QSize(3840, 2160) << QSize(400, 300) << QSize(416, 234);
  QTest::newRow("and in one that is 10 pixels wider") << QSize(3840, 2160) << QSize(410, 300) << QSize(416, 234);
  QTest::newRow("upright") << QSize(1080, 1920) << QSize(400, 300) << QSize(192, 342);
  QTest::newRow("no window yet") << QSize(1920, 1080) << QSize() << QSize(640, 360);
}

void StreamRulesTest::PicturesAreHandedAboutAsLargeAsWanted() {
  QFETCH(QSize, coded);
  QFETCH(QSize, wanted);
  QTEST(HandedSize(coded, wanted), "expected");
}

void StreamRulesTest::AgeIsThatOfTheStreamsClock() {
  CStreamClock clock(90000);
  qint64 now = 1000000;
  quint32 stamp = 0xffff0000;  // about to begin again at 0
  const auto age_after = [&](qint64 stream_ms, qint64 real_ms) {
    stamp += static_cast<quint32>(stream_ms * 90);
    now += real_ms;
    return now - clock.TakenAt(stamp, now);
  };
  QCOMPARE(age_after(0, 0), qint64(0));
  for (int picture = 0; picture < 100; ++picture) {
    QVERIFY(age_after(40, 40) <= 1);
  }
  const qint64 behind = age_after(40, 540);  // the line was busy, and it stays behind
  QVERIFY2(qAbs(behind - 490) <= 12, qPrintable(QString::number(behind)));
  QVERIFY(age_after(40, 40) > 450);
  QVERIFY(age_after(540, 40) <= 1);                    // it has caught up
  QVERIFY(age_after(-5000, 40) <= 1);                  // the camera's clock was set
  QVERIFY(age_after(60LL * 60 * 1000 * 5, 40) <= 1);   // likewise
  for (int picture = 0; picture < 20000; ++picture) {  // a camera whose clock goes 1 % slow
    QVERIFY(age_after(99, 100) <= 2);
  }
}

void StreamRulesTest::AgeOfStreamsWhoseClockIsWrong_data() {
  // Of each picture, by its number: how much the stream says has passed, and how much has.
  using Passed = std::function<int(int number)>;
  QTest::addColumn<Passed>("stream_ms");
  QTest::addColumn<Passed>("real_ms");
  QTest::addColumn<bool>("is_old");
  const auto each = [](int ms) { return Passed([ms](int) { return ms; }); };
  const Passed restless = [](int number) { return 100 + number * 7 % 61 - 30; };
  QTest::newRow("fewer pictures than it says") << each(66) << each(100) << false;
  QTest::newRow("and not quite evenly") << each(66) << restless << false;
  QTest::newRow("one picture a second, called 25") << each(40) << each(1000) << false;
  QTest::newRow("no clock") << each(0) << each(66) << false;
  QTest::newRow("a little slow") << each(97) << each(100) << false;
  QTest::newRow("much too fast") << each(200) << each(100) << false;
  QTest::newRow("shown in another order than sent")
      << Passed([](int number) { return number % 3 == 0 ? 160 : -20; }) << each(40) << false;
  QTest::newRow("goes back now and then")
      << Passed([](int number) { return number % 50 == 0 ? -900 : 66; }) << each(66) << false;
  // Key frames take their time, and the camera has more and more waiting.
  QTest::newRow("a line that is too slow")
      << each(66) << Passed([](int number) { return number % 15 == 0 ? 600 : 60; }) << true;
}

void StreamRulesTest::AgeOfStreamsWhoseClockIsWrong() {
  using Passed = std::function<int(int number)>;
  QFETCH(Passed, stream_ms);
  QFETCH(Passed, real_ms);
  QFETCH(bool, is_old);
  CStreamClock clock(90000);
  qint64 now = 1000000, age = 0, oldest = 0;
  quint32 stamp = 1000;
  for (int picture = 0; picture < 2000; ++picture) {
    stamp += static_cast<quint32>(stream_ms(picture) * 90);
    now += real_ms(picture);
    age = now - clock.TakenAt(stamp, now);
    oldest = std::max(oldest, age);
  }
  QCOMPARE(oldest >= 3000, is_old);
  QCOMPARE(age >= 3000, is_old);
}

void StreamRulesTest::RepeatedPicturesAreSeen_data() {
  // What is coded of the second `s` at key frames and at the pictures between.
  using Coded = std::function<QByteArray(int s)>;
  QTest::addColumn<Coded>("key");
  QTest::addColumn<Coded>("between");
  QTest::addColumn<bool>("expected");
  const auto same = [](int size) { return Coded([size](int) { return QByteArray(size, 'a'); }); };
  const auto other = [](int size) {
    return Coded([size](int s) { return QByteArray(size, 'a') + QByteArray::number(s); });
  };
  const Coded by_turns = [](int s) { return QByteArray(1000, char('a' + s % 2)); };
  // The number of the picture in the head of its slice, whose length it changes, and the time beside it.
  const auto numbered = [](const QByteArray& picture) {
    return Coded([picture](int s) {
      const QByteArray start("\0\0\0\1", 4);
      return start + '\6' + QByteArray::number(1000 + s) + start + '\x65' + QByteArray(1 + s / 20, char(s)) + picture;
    });
  };
  QByteArray picture;
  for (int place = 0; place < 1000; ++place) {
    picture += char(place % 251 + 1);
  }
  QTest::newRow("one picture that is counted") << numbered(picture) << other(10) << true;
  QTest::newRow("another picture each time") << Coded([numbered, picture](int s) {
    return numbered(QByteArray(picture).replace(500, 1, QByteArray(1, char(s))))(0);
  }) << other(10) << false;
  QTest::newRow("one picture") << same(1000) << same(1000) << true;
  QTest::newRow("coded again by an encoder without news") << by_turns << other(10) << true;
  QTest::newRow("a scene that moves") << other(1000) << other(200) << false;
  QTest::newRow("a scene at rest, with the camera's noise") << other(1000) << other(10) << false;
  QTest::newRow("a key frame for ever") << same(1000) << other(200) << false;
}

void StreamRulesTest::RepeatedPicturesAreSeen() {
  using Coded = std::function<QByteArray(int s)>;
  QFETCH(Coded, key);
  QFETCH(Coded, between);
  QFETCH(bool, expected);
  CRepeatWatch watch(60000);
  const auto take = [&watch](const QByteArray& coded, bool is_key, qint64 now_ms) {
    AccessUnit unit = Unit(0, is_key, now_ms);
    unit.codec = coded.startsWith('\0') ? VideoCodec::H264 : VideoCodec::Jpeg;
    unit.bytes = coded;
    watch.Take(unit);
  };
  take(QByteArray(1000, 'x'), true, 0);
  for (int second = 1; second <= 64; ++second) {
    QVERIFY(second > 60 || !watch.Repeats());
    take(key(second), true, second * 1000);
    take(between(second), false, second * 1000 + 500);
  }
  QCOMPARE(watch.Repeats(), expected);
  take("news", true, 70000);
  QVERIFY(!watch.Repeats());
}

void StreamRulesTest::StatusTellsTheTruth_data() {
  QTest::addColumn<StreamFacts>("facts");
  QTest::addColumn<PictureState>("state");
  QTest::addColumn<PictureLoss>("loss");
  qint64 key_frame_ms = 0;   // of streams of which no other frames are decoded
  qint64 tried_for = 20000;  // without success
  const auto row = [&](const char* name, bool playing, PictureLoss loss, int tries, qint64 taken_ago,
                       PictureState state, PictureLoss expected) {
    StreamFacts facts;
    facts.playing = playing;
    facts.loss = loss;
    facts.tries = tries;
    facts.first_try_ms = kNow - tried_for;
    if (taken_ago >= 0) {
      facts.taken_ms = kNow - taken_ago;
    }
    facts.decodes_key_frames = key_frame_ms > 0;
    facts.key_frames.Take(-90000);
    facts.key_frames.Take(0);  // the first time is not measured
    facts.key_frames.Take(key_frame_ms);
    facts.key_frames.Take(key_frame_ms + 100);
    QTest::newRow(name) << facts << state << expected;
  };
  const auto none = PictureLoss::None, unknown = PictureLoss::UnknownCodec;
  row("connecting", false, none, 0, -1, PictureState::Opening, none);
  row("connected, no picture yet", true, none, 0, -1, PictureState::Opening, none);
  row("live", true, none, 0, 2999, PictureState::Live, none);
  row("late", true, none, 0, 3000, PictureState::Late, none);
  row("lost", false, PictureLoss::NoAnswer, 0, 100, PictureState::Lost, PictureLoss::NoAnswer);
  row("connected again, with the old picture", true, none, 0, 9000, PictureState::Late, none);
  row("what comes cannot be decoded", true, none, 100, -1, PictureState::Lost, unknown);
  row("nor what comes after a picture", true, none, 100, 20000, PictureState::Lost, unknown);
  row("connected again, and nothing is decoded yet", true, unknown, 1, -1, PictureState::Lost, unknown);
  row("a few are held back", true, none, 10, -1, PictureState::Opening, none);
  tried_for = 2000;
  row("joined before a key frame", true, none, 100, -1, PictureState::Opening, none);
  key_frame_ms = 6000;
  row("not shown, and the next key frame is still to come", true, none, 0, 6000, PictureState::Live, none);
  row("not shown, and the next key frame does not come", true, none, 0, 7500, PictureState::Late, none);
  key_frame_ms = 500;
  row("not shown, with many key frames", true, none, 0, 2999, PictureState::Live, none);
}

void StreamRulesTest::StatusTellsTheTruth() {
  QFETCH(StreamFacts, facts);
  const PictureStatus status = StatusOf(facts, kNow, StreamTimings());
  QTEST(status.state, "state");
  QTEST(status.loss, "loss");
  QCOMPARE(status.taken.isValid(), facts.taken_ms.has_value());
}

void StreamRulesTest::UnitsSinceTheKeyFrameAreKept() {
  CUnitQueue queue(6000);
  queue.Add(Unit(0, false, 0));  // no one can begin with it
  for (int number = 1; number <= 5; ++number) {
    queue.Add(Unit(number, number == 1, number));
  }
  QCOMPARE(Taken(queue, DecodingMode::KeyFrames, 10), QByteArrayList{"1"});
  QCOMPARE(Taken(queue, DecodingMode::All, 10), (QByteArrayList{"2", "3", "4", "5"}));  // now it is looked at
  queue.Add(Unit(6, false, 11));
  QCOMPARE(Taken(queue, DecodingMode::KeyFrames, 12), QByteArrayList{});  // not any more
  queue.Add(Unit(7, false, 13));
  QCOMPARE(Taken(queue, DecodingMode::All, 14), (QByteArrayList{"6", "7"}));  // and again
  queue.Add(Unit(8, true, 1000));
  queue.Add(Unit(9, false, 1001));
  queue.Add(Unit(10, true, 1100));  // every picture is one: not all are taken
  QCOMPARE(Taken(queue, DecodingMode::KeyFrames, 1200), QByteArrayList{"10"});
  queue.Add(Unit(11, true, 1300));
  QCOMPARE(Taken(queue, DecodingMode::KeyFrames, 1300), QByteArrayList{});
}

void StreamRulesTest::WhatIsTooMuchIsSkipped() {
  CUnitQueue queue(6000);
  queue.Add(Unit(1, true, 0));
  queue.Add(Unit(2, false, 1000));
  queue.Add(Unit(3, true, 2500));
  queue.Add(Unit(4, false, 2600));
  QCOMPARE(queue.WaitMs(DecodingMode::All, 1500), qint64(1500));
  QCOMPARE(Taken(queue, DecodingMode::All, 2700), (QByteArrayList{"3", "4"}));

  AccessUnit large = Unit(5, false, 2700);
  large.bytes.resize(9 * 1024 * 1024);
  queue.Add(large);
  queue.Add(Unit(6, false, 2800));
  QCOMPARE(Taken(queue, DecodingMode::All, 2800), QByteArrayList{});  // without the one before
  queue.Add(Unit(7, false, 2800 + 6000));
  QCOMPARE(Taken(queue, DecodingMode::All, 8800), QByteArrayList{"7"});  // there may be no key frame ever
  queue.Add(Unit(8, false, 8900, 2));
  QCOMPARE(Taken(queue, DecodingMode::All, 8900), QByteArrayList{});  // of another connection
}

QTEST_APPLESS_MAIN(StreamRulesTest)
#include "test_stream_rules.moc"
