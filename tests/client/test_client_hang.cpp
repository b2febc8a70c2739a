// The client over a PostgreSQL server that is stopped: it goes when it is asked to.
#include <QTemporaryDir>
#include <QtTest>

#include "client_run.h"
#include "server_pause.h"
#include "store_fixture.h"

using TarnTest::CClientRun;

namespace {

constexpr int kStartMs = 30000, kEndMs = 3000, kGuiCallMs = 2000, kAtOnceMs = 1000, kSignalMs = 150;
constexpr int kEndedByTerminate = 128 + SIGTERM;

}  // namespace

class ClientHangTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void EndsInTime_data();
  void EndsInTime();
};

void ClientHangTest::EndsInTime_data() {
  QTest::addColumn<QString>("timed_play");
  QTest::addColumn<bool>("asked_twice");
  QTest::addColumn<int>("limit");
  const QString rests = "timed_play=0", asks = "timed_play=1";
  QTest::newRow("at rest") << rests << false << kEndMs;
  QTest::newRow("asking for timed plans") << asks << false << kGuiCallMs + kEndMs;  // a call comes to its end first
  QTest::newRow("at rest, asked twice") << rests << true << kAtOnceMs;
  QTest::newRow("asking for timed plans, asked twice") << asks << true << kAtOnceMs;
}

void ClientHangTest::EndsInTime() {
  QFETCH(QString, timed_play);
  QFETCH(bool, asked_twice);
  QFETCH(int, limit);
  const QTemporaryDir home;
  const StoreTest::CStoreFixture fixture;
  fixture.Open().reset();
  CClientRun run(home.path(), {"--store", fixture.Url(), "--set", timed_play});
  QTRY_VERIFY_WITH_TIMEOUT(run.Log().contains("InitRootItem"), kStartMs);
  const StoreTest::CServerPause pause;
  QTRY_VERIFY(pause.KeepsSomebodyWaiting());
  QElapsedTimer clock;
  clock.start();
  run.Terminate();
  while (asked_twice && !run.HasEnded(kSignalMs)) {
    run.Terminate();
  }
  QVERIFY(run.WaitForEnd());
  QVERIFY2(clock.elapsed() < limit, qPrintable(QString::number(clock.elapsed())));
  QCOMPARE(run.ExitCode(), asked_twice ? kEndedByTerminate : 0);
  QVERIFY2(asked_twice || run.Log().trimmed().endsWith("The client has ended"), qPrintable(run.Log()));
}

QTEST_GUILESS_MAIN(ClientHangTest)
#include "test_client_hang.moc"
