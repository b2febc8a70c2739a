// Against two PostgreSQL servers of which one follows the other: the desks follow a standby that takes the place of the
// first, and nothing is lost of what they were answered.
#include <QMap>
#include <QProcess>
#include <QSet>
#include <QtTest>
#include <atomic>
#include <future>
#include <mutex>

#include "store_fixture.h"

using namespace StoreTest;

namespace {

constexpr int kRounds = 10, kDesks = 4;
constexpr int kGoesOnMs = 30000, kFailOverMs = 120000;

/// A desk that adds one plan after the other, each under a name of its own.
class CWriter {
 public:
  CWriter(int number, CClient client) : number_(number), client_(std::move(client)) {
    client_->DefaultUser();  // opened on this thread
    work_ = std::async(std::launch::async, [this] { AddPlans(); });
  }
  void Stop() {
    stopping_ = true;
    work_.wait();
  }
  const CClient& Client() const { return client_; }
  int Count() const { return count_; }
  QStringList Saved() const { return saved_; }
  /// Of which the desk was answered that they are not there.
  QStringList Refused() const { return refused_; }

 private:
  void AddPlans() {
    for (int next = 0; !stopping_; ++next) {
      const QString name = QString("Desk %1 plan %2").arg(number_).arg(next);
      const QString error = client_.AddPlan("-1", name.toStdString());
      if (error.isEmpty()) {
        saved_.append(name);
        ++count_;
      } else if (error.endsWith("is lost.")) {
        refused_.append(name);
      }
    }
  }

  const int number_;
  const CClient client_;
  std::atomic<bool> stopping_{false};
  std::atomic<int> count_{0};
  QStringList saved_, refused_;
  std::future<void> work_;
};

QString FailOver() {
  const QStringList command = qEnvironmentVariable("TARN_TEST_FAIL_OVER").split(' ');
  QProcess process;
  process.start(command.first(), command.mid(1));
  const bool ended = QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, kFailOverMs);
  return ended && process.exitCode() == 0 ? QString() : QString::fromLocal8Bit(process.readAllStandardError());
}

}  // namespace

class StoreStandbyTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void LosesNothingThatWasAnswered();
};

void StoreStandbyTest::LosesNothingThatWasAnswered() {
  CStoreFixture fixture;
  fixture.options.url = QString("postgresql://tarn@%1/site").arg(qEnvironmentVariable("TARN_TEST_PAIR"));
  const QString first = qEnvironmentVariable("TARN_TEST_PAIR").section(',', 0, 0);
  CDirectAccess(QString("postgresql://tarn@%1/postgres").arg(first)).Run("CREATE DATABASE site");
  std::vector<std::unique_ptr<CWriter>> desks;
  for (int number = 0; number < kDesks; ++number) {
    desks.push_back(std::make_unique<CWriter>(number, CClient(fixture.Open())));
  }
  for (int round = 0; round < kRounds; ++round) {
    for (const auto& desk : desks) {
      const int before = desk->Count();
      QTRY_VERIFY2_WITH_TIMEOUT(desk->Count() > before, qPrintable(QString("round %1").arg(round)), kGoesOnMs);
    }
    const QString error = FailOver();
    QVERIFY2(error.isEmpty(), qPrintable(error));
  }
  for (const auto& desk : desks) {
    const int before = desk->Count();
    QTRY_VERIFY_WITH_TIMEOUT(desk->Count() > before, kGoesOnMs);
    desk->Stop();
  }
  const QStringList plans = CClient(fixture.Open()).Plans("-1");
  QCOMPARE(QSet<QString>(plans.begin(), plans.end()).size(), plans.size());
  int saved = 0;
  for (const auto& desk : desks) {
    for (const QString& name : desk->Saved()) {
      QVERIFY2(plans.contains(name + "@-1"), qPrintable(name + " is lost"));
    }
    for (const QString& name : desk->Refused()) {
      QVERIFY2(!plans.contains(name + "@-1"), qPrintable(name + " is there"));
    }
    saved += desk->Saved().size();
    QTRY_COMPARE_WITH_TIMEOUT(desk->Client().Plans("-1"), plans, kGoesOnMs);
  }
  qInfo("%d plans were saved over %d changes of server", saved, kRounds);
}

QTEST_GUILESS_MAIN(StoreStandbyTest)
#include "store_standby_test.moc"
