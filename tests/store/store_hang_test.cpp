// Against a PostgreSQL server that is stopped: no one waits for it longer than he may, and nothing is lost by it.
#include <QtTest>
#include <future>
#include <optional>

#include "server_pause.h"
#include "store_fixture.h"

using namespace StoreTest;

namespace {

const QString kNoAnswer = "The service does not answer";
constexpr int kGuiMs = 3000, kPoolMs = 13000, kAtOnceMs = 300, kCloseMs = 3000;
constexpr double kIdleSeconds = 5;

struct Answer {
  QString text;
  qint64 ms;
};

/// Runs `call` and says what it answered and how long it took.
template <class Call>
Answer Timed(const Call& call) {
  QElapsedTimer clock;
  clock.start();
  const QString text = call();
  return {text, clock.elapsed()};
}

/// Reads a plan whenever a notice says that it has changed, as a tree does.
struct CPlanFollower : ResourceData::IResourceObserver {
  CPlanFollower(CClient client_to_ask, std::string plan_code) : client(std::move(client_to_ask)), plan(plan_code) {
    client->ViewRegisterResourceUpdate(this, {ResourceData::RT_VIEW, plan, 1});
  }
  ~CPlanFollower() override { client->ViewRegisterResourceUpdate(this, {ResourceData::RT_VIEW, plan, 0}); }
  void OnResourceUpdate(const Param&) override {
    const view::GetPlanDetailResponse detail = client.Detail(plan);
    seen.append(QString::fromStdString(detail.error_info.empty() ? detail.name : detail.error_info));
  }

  const CClient client;
  const std::string plan;
  QStringList seen;
};

}  // namespace

class StoreHangTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void HasTheSystemWatchIdleConnections();
  void AnswersInTimeAndWorksAgain();
  void ReportsTheHangAndWhatCouldNotBeRead();
  void ClosesInTime_data();
  void ClosesInTime();
  void WaitsOnceForWhatItLeavesBehind();
};

// At both ends: the one that is left behind by the other's machine has to notice.
void StoreHangTest::HasTheSystemWatchIdleConnections() {
  CStoreFixture fixture;
  const CClient ann(fixture.Open());
  QCOMPARE(ann.Detail(ann.Plan("Gate A")).error_info, std::string());  // the second connection
  const auto is_watched = [](const ServerSocket& socket) {
    return socket.alive_seconds >= 0 && socket.alive_seconds <= kIdleSeconds;
  };
  QTRY_VERIFY(ServerSockets().size() == 4);
  QTRY_VERIFY([&] {
    const auto sockets = ServerSockets();
    return std::all_of(sockets.begin(), sockets.end(), is_watched);
  }());
}

// The whole time that the watch needs to cut a connection passes, so that everything is connected again afterwards.
void StoreHangTest::AnswersInTimeAndWorksAgain() {
  CStoreFixture fixture;
  const CClient ann(fixture.Open());
  const CClient bob(fixture.Open("bob"));
  const std::string plan = ann.Plan("Gate A"), gates = ann.Group("-1", "Gates");
  const auto read = [&] { return QString::fromStdString(ann.Detail(plan).error_info); };
  const auto write = [&] { return ann.AddPlan(gates, "Asked for in vain"); };
  QCOMPARE(read(), QString());

  CServerPause pause;
  auto pool_read = std::async(std::launch::async, [&] { return Timed(read); });
  auto pool_write = std::async(std::launch::async, [&] { return Timed(write); });
  const Answer first = Timed(read);
  QCOMPARE(first.text, kNoAnswer);
  QVERIFY2(first.ms < kGuiMs, qPrintable(QString::number(first.ms)));
  for (const auto& call : std::vector<std::function<QString()>>{
           read, write, [&] { return QString::fromStdString(ann.DefaultView()).mid(1); },
           [&] { return ann.Share(plan, "2"); }, [&] { return ann.SetDefaultView(plan, 16000); }}) {
    const Answer answer = Timed(call);
    QCOMPARE(answer.text, kNoAnswer);
    QVERIFY2(answer.ms < kAtOnceMs, qPrintable(QString::number(answer.ms)));
  }
  QCOMPARE(ann.Groups("-1"), QStringList{"Gates@-1"});  // what is in memory needs no server
  for (auto* waiting : {&pool_read, &pool_write}) {
    const Answer answer = waiting->get();
    QCOMPARE(answer.text, kNoAnswer);
    QVERIFY2(answer.ms < kPoolMs, qPrintable(QString::number(answer.ms)));
  }
  QCOMPARE(read(), kNoAnswer);

  pause.GoOn();
  const auto becomes_possible = [](const auto& call) {
    return QTest::qWaitFor([&] { return call().isEmpty(); }, 20000);
  };
  QVERIFY(becomes_possible(read));
  QVERIFY(becomes_possible([&] { return ann.AddPlan(gates, "Works again"); }));
  QVERIFY(becomes_possible([&] { return bob.AddGroup("-1", "Bob's, too"); }));
  QTRY_COMPARE(ann.Groups("-1"), bob.Groups("-1"));
  QTRY_COMPARE(ann.Plans(gates), bob.Plans(gates));  // whether or not the write that was abandoned came through
  QVERIFY(ann.Plans(gates).contains(QString::fromStdString("Works again@" + gates)));
}

void StoreHangTest::ReportsTheHangAndWhatCouldNotBeRead() {
  CStoreFixture fixture;
  const CClient bob(fixture.Open("bob"));
  QStringList troubles;
  fixture.options.on_trouble = [&](TarnHost::StoreTrouble trouble, const QString& line) {
    QVERIFY(trouble == (line.isEmpty() ? TarnHost::StoreTrouble::kNone : TarnHost::StoreTrouble::kConnectionLost));
    troubles.append(line);
  };
  const CClient ann(fixture.Open());
  CPlanFollower follower(ann, ann.Plan("Gate A"));
  auto update = bob.Unchanged(follower.plan);
  update.plan_name = "Gate A renamed";
  QCOMPARE(bob.Update(update), QString());
  QElapsedTimer clock;
  clock.start();
  while (ann.Plan("Gate A renamed").empty() && !clock.hasExpired(kPoolMs)) {
    QThread::yieldCurrentThread();  // no events: the notice waits
  }
  CServerPause pause;
  clock.restart();
  QTRY_COMPARE(follower.seen, QStringList{kNoAnswer});
  QTRY_COMPARE(troubles, QStringList{kNoAnswer});
  QVERIFY2(clock.elapsed() < kGuiMs, qPrintable(QString::number(clock.elapsed())));
  pause.GoOn();
  QTRY_COMPARE(follower.seen, (QStringList{kNoAnswer, "Gate A renamed"}));
  QTRY_COMPARE(troubles, (QStringList{kNoAnswer, QString()}));
}

void StoreHangTest::ClosesInTime_data() {
  QTest::addColumn<bool>("known");
  QTest::newRow("before anybody noticed") << false;
  QTest::newRow("after a call was abandoned") << true;
}

void StoreHangTest::ClosesInTime() {
  QFETCH(bool, known);
  CStoreFixture fixture;
  const CClient ann(fixture.Open());
  const std::string plan = ann.Plan("Gate A");
  QCOMPARE(ann.Detail(plan).error_info, std::string());
  CServerPause pause;
  auto pool_read = std::async(std::launch::async, [&] { return Timed([&] { return ann.AddPlan("-1", "Late"); }); });
  QTRY_VERIFY(pause.KeepsSomebodyWaiting());
  if (known) {
    QCOMPARE(QString::fromStdString(ann.Detail(plan).error_info), kNoAnswer);
  }
  const Answer closing = Timed([&] { return ann->Close() ? "in order" : "left behind"; });
  QCOMPARE(closing.text, QString("in order"));
  QVERIFY2(closing.ms < kCloseMs, qPrintable(QString::number(closing.ms)));
  QVERIFY(!pool_read.get().text.isEmpty());
  pause.GoOn();
  QCOMPARE(CClient(fixture.Open()).Groups("-1"), QStringList{"Gates@-1"});
}

// What hangs is no server, so that no cut helps.
void StoreHangTest::WaitsOnceForWhatItLeavesBehind() {
  CStoreFixture fixture;
  std::promise<void> asked, open;
  auto clock = std::make_shared<std::function<QDateTime()>>([] { return QDateTime::currentDateTime(); });
  const std::weak_ptr<void> alive = clock;
  fixture.options.now = [clock] { return (*clock)(); };
  std::optional<CClient> ann(fixture.Open());
  *clock = [&] {
    asked.set_value();
    open.get_future().wait();
    return QDateTime::currentDateTime();
  };
  auto write = std::async(std::launch::async, [&] { return ann->AddPlan("-1", "Late"); });
  asked.get_future().wait();
  const auto close = [&] { return (*ann)->Close() ? "in order" : "left behind"; };
  const Answer first = Timed(close), second = Timed(close);
  open.set_value();
  QVERIFY(!write.get().isEmpty());
  QCOMPARE(first.text, QString("left behind"));
  QVERIFY2(first.ms < kCloseMs, qPrintable(QString::number(first.ms)));
  QCOMPARE(second.text, QString("left behind"));
  QVERIFY2(second.ms < kAtOnceMs, qPrintable(QString::number(second.ms)));
  clock.reset();
  ann.reset();
  fixture.options.now = nullptr;
  QTRY_VERIFY(alive.expired());
}

QTEST_GUILESS_MAIN(StoreHangTest)
#include "store_hang_test.moc"
