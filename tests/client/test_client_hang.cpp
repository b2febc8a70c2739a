// The client over a PostgreSQL server that is stopped: it goes when it is asked to.
#include <QTemporaryDir>
#include <QtTest>

#include "client_run.h"
#include "server_pause.h"
#include "store_fixture.h"

using TarnTest::CClientRun;

namespace {

constexpr int kStartMs = 30000, kEndMs = 4000, kSignalMs = 50;
constexpr int kEndedByTerminate = 128 + SIGTERM;

}  // namespace

class ClientHangTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void EndsInTime_data();
  void EndsInTime();
  void EndsAtOnceWhenAskedTwice();
};

void ClientHangTest::EndsInTime_data() {
  QTest::addColumn<QStringList>("arguments");
  QTest::newRow("at rest") << QStringList{"--set", "timed_play=0"};
  QTest::newRow("asking for timed plans") << QStringList{"--set", "timed_play=1"};
}

void ClientHangTest::EndsInTime() {
  QFETCH(QStringList, arguments);
  const QTemporaryDir home;
  const StoreTest::CStoreFixture fixture;
  fixture.Open().reset();
  CClientRun run(home.path(), QStringList{"--store", fixture.Url()} + arguments);
  QTRY_VERIFY_WITH_TIMEOUT(run.Log().contains("InitRootItem"), kStartMs);
  const StoreTest::CServerPause pause;
  QTRY_VERIFY(pause.KeepsSomebodyWaiting());
  QElapsedTimer clock;
  clock.start();
  run.Terminate();
  QVERIFY(run.WaitForEnd());
  QVERIFY2(clock.elapsed() < kEndMs, qPrintable(QString::number(clock.elapsed())));
  QCOMPARE(run.ExitCode(), 0);
  QVERIFY2(run.Log().trimmed().endsWith("The client has ended"), qPrintable(run.Log()));
}

void ClientHangTest::EndsAtOnceWhenAskedTwice() {
  const QTemporaryDir home;
  const StoreTest::CStoreFixture fixture;
  fixture.Open().reset();
  CClientRun run(home.path(), {"--store", fixture.Url(), "--set", "timed_play=0"});
  QTRY_VERIFY_WITH_TIMEOUT(run.Log().contains("InitRootItem"), kStartMs);
  const StoreTest::CServerPause pause;
  QTRY_VERIFY(pause.KeepsSomebodyWaiting());
  while (!run.HasEnded(kSignalMs)) {
    run.Terminate();
  }
  QVERIFY(run.WaitForEnd());
  QCOMPARE(run.ExitCode(), kEndedByTerminate);
}

QTEST_GUILESS_MAIN(ClientHangTest)
#include "test_client_hang.moc"
