// How long the GUI thread is held by what has to be asked there, whatever becomes of the server meanwhile, and that the
// user learns of it in time.
#include <QtTest>

#include "gui_holds.h"

using namespace StoreTest;

namespace {

constexpr double kReadMs = 100, kWriteMs = 2100;  // with the time that the machine needs itself
constexpr int kKnownMs = 2000, kFaultMs = 6000, kAgainMs = 20000;

}  // namespace

class StoreHoldTest : public CStoreTest {
  Q_OBJECT
 private Q_SLOTS:
  void HoldsTheGuiThreadShortly_data();
  void HoldsTheGuiThreadShortly();
};

void StoreHoldTest::HoldsTheGuiThreadShortly_data() {
  QTest::addColumn<int>("fault");
  QTest::addColumn<bool>("shows_in_idleness");
  QTest::newRow("hangs") << int(CServerFault::kHangs) << true;
  QTest::newRow("line is cut") << int(CServerFault::kLineIsCut) << true;
  QTest::newRow("line is silent") << int(CServerFault::kLineIsSilent) << true;
  QTest::newRow("is locked") << int(CServerFault::kIsLocked) << false;
}

void StoreHoldTest::HoldsTheGuiThreadShortly() {
  QFETCH(int, fault);
  QFETCH(bool, shows_in_idleness);
  QVERIFY(!bob_.Plan("Gate A").empty());
  CFaultyLine line{QUrl(fixture_->Url())};
  fixture_->options.url = line.Url();
  QElapsedTimer clock;
  qint64 known_after = -1;
  fixture_->options.on_trouble = [&](TarnHost::StoreTrouble trouble, const QString&) {
    if (trouble == TarnHost::StoreTrouble::kNone) {
      known_after = -1;
    } else if (known_after < 0) {
      known_after = clock.elapsed();
    }
  };
  CGuiHolds desk(ann_, bob_);
  {
    const CServerFault present(static_cast<CServerFault::Kind>(fault), *fixture_, &line);
    clock.start();
    if (shows_in_idleness) {
      QTRY_VERIFY_WITH_TIMEOUT(known_after >= 0, kFaultMs);
      QVERIFY2(known_after < kKnownMs, qPrintable(QString::number(known_after)));
    }
    desk.Ask(kFaultMs, [&] { return known_after >= 0; });
  }
  QCOMPARE(desk.Wrong(), QStringList());
  const CGuiHolds::Longest held = desk.Holds();
  qInfo("read %.1f ms, write %.1f ms, write when it was known %.1f ms", held.read, held.write, held.write_when_known);
  QVERIFY2(held.read <= kReadMs, qPrintable(QString::number(held.read)));
  QVERIFY2(held.write <= kWriteMs, qPrintable(QString::number(held.write)));
  QVERIFY2(!shows_in_idleness || held.write_when_known <= kReadMs, qPrintable(QString::number(held.write_when_known)));
  QTRY_COMPARE_WITH_TIMEOUT(ann_.AddPlan("-1", "Works again"), QString(), kAgainMs);
  QTRY_COMPARE_WITH_TIMEOUT(ann_.Plans("-1"), bob_.Plans("-1"), kAgainMs);
  QTRY_VERIFY(known_after < 0);
}

QTEST_GUILESS_MAIN(StoreHoldTest)
#include "store_hold_test.moc"
