// Against a PostgreSQL server that is stopped: no call waits longer than it may, and nothing is lost by it.
#include <QtTest>
#include <future>

#include "server_pause.h"
#include "store_fixture.h"

using namespace StoreTest;

namespace {

constexpr int kReadMs = 200, kGuiMs = 3000, kPoolMs = 13000, kAtOnceMs = 300, kCloseMs = 3000;
constexpr int kKnownMs = 2000;
constexpr double kIdleSeconds = 5;

/// What `call` answers, and how long it took when that was too long.
template <class Call>
QString InTime(int most_ms, const Call& call) {
  QElapsedTimer clock;
  clock.start();
  const QString text = call();
  if (clock.elapsed() < most_ms) {
    return text;
  }
  return text + QString(" after %1 ms").arg(clock.elapsed());
}

/// Reads a plan whenever a notice says that it has changed, as a tree does.
struct CPlanFollower : ResourceData::IResourceObserver {
  CPlanFollower(CClient client_to_ask, std::string plan_code) : client(std::move(client_to_ask)), plan(plan_code) {
    client->ViewRegisterResourceUpdate(this, {ResourceData::RT_VIEW, plan, 1});
  }
  ~CPlanFollower() override { client->ViewRegisterResourceUpdate(this, {ResourceData::RT_VIEW, plan, 0}); }
  void OnResourceUpdate(const Param&) override {
    const view::GetPlanDetailResponse detail = client.DetailAtOnce(plan);
    seen.append(QString::fromStdString(detail.error_info.empty() ? detail.name : detail.error_info));
  }

  const CClient client;
  const std::string plan;
  QStringList seen;
};

}  // namespace

class StoreHangTest : public CStoreTest {
  Q_OBJECT
 private Q_SLOTS:
  void HasTheSystemWatchIdleConnections();
  void AnswersInTimeAndWorksAgain();
  void ReportsTheHangAndWhatCouldNotBeRead();
  void ReportsTheHangOfAnIdleDesk();
  void ClosesInTime_data();
  void ClosesInTime();
  void WaitsOnceForWhatItLeavesBehind();
};

// At both ends: the one that is left behind by the other's machine has to notice.
void StoreHangTest::HasTheSystemWatchIdleConnections() {
  QCOMPARE(ann_.Detail(ann_.Plan("Gate A")).error_info, std::string());  // the second connection
  const auto is_watched = [](const ServerSocket& socket) {
    return socket.alive_seconds >= 0 && socket.alive_seconds <= kIdleSeconds;
  };
  QTRY_VERIFY2(ServerSockets().size() == 4, qPrintable(QString::number(ServerSockets().size())));
  const auto all_are = [&] {
    const auto sockets = ServerSockets();
    return std::all_of(sockets.begin(), sockets.end(), is_watched);
  };
  // Once it was so: at a second look a line may carry something.
  QVERIFY(QTest::qWaitFor(all_are, kPoolMs));
}

// The whole time that the watch needs to cut a connection passes, so that everything is connected again afterwards.
void StoreHangTest::AnswersInTimeAndWorksAgain() {
  const std::string plan = ann_.Plan("Gate A"), gates = bob_.Group("-1", "Gates");
  const auto read = [&] { return QString::fromStdString(ann_.DetailAtOnce(plan).error_info); };
  const auto write = [&] { return ann_.AddPlan(gates, "Asked for in vain"); };
  QCOMPARE(QString::fromStdString(ann_.Detail(plan).error_info), QString());

  CServerPause pause;
  auto pool_read = std::async(std::launch::async, [&] { return InTime(kPoolMs, read); });
  auto pool_write = std::async(std::launch::async, [&] { return InTime(kPoolMs, write); });
  QCOMPARE(InTime(kReadMs, read), kNoAnswer);
  QCOMPARE(InTime(kGuiMs, write), kNoAnswer);
  for (const auto& call : std::vector<std::function<QString()>>{read, write, [&] { return ann_.Share(plan, "2"); },
                                                                [&] { return ann_.SetDefaultView(plan, 16000); }}) {
    QCOMPARE(InTime(kAtOnceMs, call), kNoAnswer);
  }
  QCOMPARE(InTime(kAtOnceMs, [&] { return QString::fromStdString(ann_.DefaultView()); }), QString("-3"));
  QCOMPARE(ann_.Groups("-1"), QStringList{"Gates@-1"});  // what is in memory needs no server
  for (auto* waiting : {&pool_read, &pool_write}) {
    QCOMPARE(waiting->get(), kNoAnswer);
  }
  QCOMPARE(read(), kNoAnswer);

  pause.GoOn();
  const auto becomes_possible = [](const auto& call) {
    return QTest::qWaitFor([&] { return call().isEmpty(); }, 20000);
  };
  QVERIFY(becomes_possible(read));
  QVERIFY(becomes_possible([&] { return ann_.AddPlan(gates, "Works again"); }));
  QVERIFY(becomes_possible([&] { return bob_.AddGroup("-1", "Bob's, too"); }));
  QTRY_COMPARE(ann_.Groups("-1"), bob_.Groups("-1"));
  QTRY_COMPARE(ann_.Plans(gates), bob_.Plans(gates));  // whether or not the write that was abandoned came through
  QVERIFY(ann_.Plans(gates).contains(QString::fromStdString("Works again@" + gates)));
}

void StoreHangTest::ReportsTheHangAndWhatCouldNotBeRead() {
  const auto update = TarnTest::ChangedPlan(bob_.Plan("Gate A"), "Gate A renamed");
  const std::string unread = bob_.Plan("Gate B");
  FollowTroubles({TarnHost::StoreTrouble::kNotAnswering});
  CPlanFollower follower(ann_, update.plan_index_code), other(ann_, unread);
  QCOMPARE(bob_.Update(update), QString());
  QElapsedTimer clock;
  clock.start();
  while (ann_.Plan("Gate A renamed").empty() && !clock.hasExpired(kPoolMs)) {
    QThread::yieldCurrentThread();  // no events: the notice waits
  }
  CServerPause pause;
  clock.restart();
  QTRY_COMPARE(follower.seen, QStringList{"Gate A renamed"});  // it came with the notice
  QCOMPARE(InTime(kReadMs, [&] { return QString::fromStdString(ann_.DetailAtOnce(unread).error_info); }), kNoAnswer);
  QTRY_COMPARE(troubles_, QStringList{kNoAnswer});
  QVERIFY2(clock.elapsed() < kKnownMs, qPrintable(QString::number(clock.elapsed())));
  pause.GoOn();
  QTRY_COMPARE(other.seen, QStringList{"Gate B"});
  QTRY_COMPARE(troubles_, (QStringList{kNoAnswer, QString()}));
}

// No call is under way, and yet the user is to know.
void StoreHangTest::ReportsTheHangOfAnIdleDesk() {
  const std::string gates = bob_.Group("-1", "Gates");
  FollowTroubles({TarnHost::StoreTrouble::kNotAnswering});
  QCOMPARE(ann_.Groups("-1").size(), 1);
  CServerPause pause;
  QElapsedTimer clock;
  clock.start();
  QTRY_COMPARE(troubles_, QStringList{kNoAnswer});
  QVERIFY2(clock.elapsed() < kKnownMs, qPrintable(QString::number(clock.elapsed())));
  QCOMPARE(InTime(kAtOnceMs, [&] { return ann_.Share(ann_.Plan("Gate A"), "2"); }), kNoAnswer);
  pause.GoOn();
  QTRY_COMPARE(troubles_, (QStringList{kNoAnswer, QString()}));
  QTRY_COMPARE(bob_.AddPlan(gates, "New"), QString());  // his desk finds out by itself
  QTRY_VERIFY(!ann_.Plan("New").empty());
}

void StoreHangTest::ClosesInTime_data() {
  QTest::addColumn<bool>("known");
  QTest::newRow("before it was noticed") << false;
  QTest::newRow("after a call was abandoned") << true;
}

void StoreHangTest::ClosesInTime() {
  QFETCH(bool, known);
  const std::string plan = ann_.Plan("Gate A");
  QCOMPARE(ann_.Detail(plan).error_info, std::string());
  CServerPause pause;
  auto late = std::async(std::launch::async, [&] { return ann_.AddPlan("-1", "Late"); });
  QTRY_VERIFY(pause.KeepsSomebodyWaiting());
  if (known) {
    QCOMPARE(ann_.Share(plan, "2"), kNoAnswer);
  }
  QCOMPARE(InTime(kCloseMs, [&] { return ann_->Close() ? "in order" : "left behind"; }), QString("in order"));
  QVERIFY(!late.get().isEmpty());
  pause.GoOn();
  QCOMPARE(CClient(fixture_->Open()).Groups("-1"), QStringList{"Gates@-1"});
}

// What hangs is no server, so that no cut helps.
void StoreHangTest::WaitsOnceForWhatItLeavesBehind() {
  std::promise<void> asked, open;
  auto clock = std::make_shared<std::function<QDateTime()>>([] { return QDateTime::currentDateTime(); });
  const std::weak_ptr<void> alive = clock;
  fixture_->options.now = [clock] { return (*clock)(); };
  QCOMPARE(ann_.Groups("-1").size(), 1);
  *clock = [&] {
    asked.set_value();
    open.get_future().wait();
    return QDateTime::currentDateTime();
  };
  auto write = std::async(std::launch::async, [&] { return ann_.AddPlan("-1", "Late"); });
  asked.get_future().wait();
  const auto close = [&] { return ann_->Close() ? "in order" : "left behind"; };
  const QString first = InTime(kCloseMs, close), second = InTime(kAtOnceMs, close);
  open.set_value();
  QVERIFY(!write.get().isEmpty());
  QCOMPARE(first, QString("left behind"));
  QCOMPARE(second, QString("left behind"));
  clock.reset();
  ann_.Leave();
  fixture_->options.now = nullptr;
  QTRY_VERIFY(alive.expired());
}

QTEST_GUILESS_MAIN(StoreHangTest)
#include "store_hang_test.moc"
