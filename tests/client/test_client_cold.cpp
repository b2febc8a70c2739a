// The client at a server that is away when it starts.
#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include "TarnHost/store_care.h"
#include "client_run.h"
#include "faulty_line.h"
#include "store_fixture.h"

using TarnTest::CClientRun;

namespace {

constexpr int kStartMs = 30000, kAwayMs = 10000;
const char kGate[] = "Gate A", kWord[] = "ann's word";

}  // namespace

class ClientColdTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void init();
  void StartsFromItsCopy();
  void GoesOverWhenTheServerAnswers();
  void AsksForThePasswordOfTheLastLogIn();
  void KeepsNoCopyWhereNoneMayBe();

 private:
  QString Copies() const { return home_->filePath("desk/copies"); }
  QStringList Files() const { return QDir(Copies()).entryList({"*.copy"}, QDir::Files); }
  QStringList Arguments(const QStringList& more) const {
    return QStringList{"--store", line_->Url(), "--user", "ann", "--offline-copy", Copies()} + more;
  }
  /// Works at the server until there is a copy, then takes the server away.
  void Leave(const QMap<QString, QString>& environment = {}) {
    CClientRun run(home_->path(), Arguments({}), environment);
    QTRY_VERIFY2_WITH_TIMEOUT(!Files().isEmpty(), qPrintable(run.Log()), kStartMs);
    run.Terminate();
    QVERIFY(run.WaitForEnd());
    line_->Cut();
  }
  static int RowsIn(const CClientRun& run) { return run.State()["rows"].toObject()["public"].toInt(); }

  std::unique_ptr<QTemporaryDir> home_;
  std::unique_ptr<StoreTest::CStoreFixture> fixture_;
  std::unique_ptr<StoreTest::CFaultyLine> line_;
  StoreTest::CClient ann_{nullptr};
};

void ClientColdTest::init() {
  home_ = std::make_unique<QTemporaryDir>();
  fixture_ = std::make_unique<StoreTest::CStoreFixture>();
  ann_ = StoreTest::CClient(fixture_.get(), "ann");
  QCOMPARE(ann_.SetDefaultView(ann_.Plan(kGate), StoreTest::kPlanType), QString());
  line_ = std::make_unique<StoreTest::CFaultyLine>(QUrl(fixture_->Url()));
}

void ClientColdTest::StartsFromItsCopy() {
  Leave();
  QElapsedTimer clock;
  clock.start();
  CClientRun run(home_->path(), Arguments({"--quit-after", "4", "--set", "load_all=1"}));
  QVERIFY(run.WaitForEnd());
  QVERIFY2(clock.elapsed() < kAwayMs, qPrintable(QString::number(clock.elapsed())));
  QCOMPARE(run.Errors(), QString());
  QCOMPARE(run.ExitCode(), 0);
  QCOMPARE(run.State()["playing"].toString(), QString(kGate));
  QVERIFY(RowsIn(run) > 0);
  // Without one there is nothing to start from.
  QVERIFY(QDir(Copies()).removeRecursively());
  CClientRun refused(home_->path(), Arguments({"--quit-after", "4"}));
  QVERIFY(refused.WaitForEnd());
  QCOMPARE(refused.ExitCode(), 2);
  QCOMPARE(refused.Errors().count('\n'), 1);
}

void ClientColdTest::GoesOverWhenTheServerAnswers() {
  Leave();
  CClientRun run(home_->path(), Arguments({"--quit-after", "8", "--set", "load_all=1"}));
  QTRY_VERIFY_WITH_TIMEOUT(run.Log().contains("InitRootItem"), kStartMs);
  QCOMPARE(ann_.AddPlan("-1", "Made meanwhile"), QString());
  line_->Mend();
  QVERIFY(run.WaitForEnd());
  QCOMPARE(run.State()["playing"].toString(), QString(kGate));
  const int rows = RowsIn(run);
  line_->Cut();
  QVERIFY(QDir(Copies()).removeRecursively());
  line_->Mend();
  CClientRun warm(home_->path(), Arguments({"--quit-after", "4", "--set", "load_all=1"}));
  QVERIFY(warm.WaitForEnd());
  QCOMPARE(rows, RowsIn(warm));
}

void ClientColdTest::AsksForThePasswordOfTheLastLogIn() {
  TarnHost::SiteUsers users;
  QString error;
  QVERIFY(TarnHost::StoreCare::ReadUsers(fixture_->Url(), &users, &error));
  TarnHost::SiteUserChanges changes;
  changes.users.emplace_back();
  changes.users.back().before = changes.users.back().after = users.users.front();
  changes.users.back().password = TarnHost::CSecret(kWord);
  QVERIFY2(TarnHost::StoreCare::ChangeUsers(fixture_->Url(), changes, &error), qPrintable(error));
  Leave({{"TARN_PASSWORD", kWord}});
  const auto start = [this](const QString& password) {
    auto run = std::make_unique<CClientRun>(home_->path(), Arguments({"--quit-after", "2"}),
                                            QMap<QString, QString>{{"TARN_PASSWORD", password}});
    return run->WaitForEnd() ? std::move(run) : nullptr;
  };
  const auto let_in = start(kWord), refused = start("wrong"), unsaid = start("");
  QVERIFY(let_in && refused && unsaid);
  QCOMPARE(let_in->ExitCode(), 0);
  QCOMPARE(refused->Errors(), QString("tarn-client: The name or the password is wrong.\n"));
  QVERIFY(refused->ExitCode() == 2 && unsaid->ExitCode() == 2);
  QVERIFY2(unsaid->Errors().contains("a password is needed"), qPrintable(unsaid->Errors()));
}

void ClientColdTest::KeepsNoCopyWhereNoneMayBe() {
  Leave();
  line_->Mend();
  CClientRun run(home_->path(), Arguments({"--no-offline-copy", "--quit-after", "1"}));
  QVERIFY(run.WaitForEnd());
  QCOMPARE(run.ExitCode(), 0);
  QCOMPARE(Files(), QStringList());
}

QTEST_GUILESS_MAIN(ClientColdTest)
#include "test_client_cold.moc"
