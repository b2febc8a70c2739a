#include <poll.h>
#include <unistd.h>

#include <QtTest>
#include <array>
#include <atomic>
#include <future>
#include <memory>

#include "store/database_thread.h"

using TarnHost::Store::CAnswering;
using TarnHost::Store::CDatabaseThread;
using TarnHost::Store::CStoreError;

namespace {

constexpr int kGuiMs = 3000, kAtOnceMs = 500, kLongMs = 30000;
const QString kNoAnswer = "The service does not answer";

/// Keeps a task of a database thread busy until it is opened.
class CGate {
 public:
  /// What the task does.
  void Pass() {
    begun_.set_value();
    open_.get_future().wait();
  }
  void WaitUntilBegun() { begun_.get_future().wait(); }
  void Open() { open_.set_value(); }

 private:
  std::promise<void> begun_, open_;
};

template <class Call>
QString TextOf(const Call& call) {
  try {
    call();
    return {};
  } catch (const CStoreError& error) {
    return error.Text().Shown();
  }
}

}  // namespace

class DatabaseThreadTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void AbandonsACallAndGoesOn();
  void KeepsWhoWasClaimedWaiting();
  void OutlivesItsOwner();
  void BeatsAtOnceWhenThereIsNews();
  void WaitsShortlyForAShortRead();
};

void DatabaseThreadTest::AbandonsACallAndGoesOn() {
  const auto answering = std::make_shared<CAnswering>();
  std::atomic<int> news{0}, beats{0};
  answering->SetNews([&news] { ++news; });
  CDatabaseThread thread(answering), sibling(answering);
  const auto look = [&beats](bool is_stuck) {
    beats += int(is_stuck);
    return false;  // as long as the database is not there
  };
  thread.SetBeat(std::chrono::milliseconds(1), look);
  std::atomic<bool> never{false};
  CGate gate;
  const auto lose = [&gate] {
    gate.Pass();
    throw CStoreError::NotAnswering(CStoreError::kOutcomeUnknown);
  };
  auto begun = std::async(std::launch::async, [&] { return TextOf([&] { thread.Call(lose); }); });
  gate.WaitUntilBegun();
  QElapsedTimer clock;
  clock.start();
  QCOMPARE(TextOf([&] { thread.Call([&never] { never = true; }); }), kNoAnswer);
  QVERIFY(clock.elapsed() < kGuiMs);
  clock.restart();
  for (CDatabaseThread* any : {&thread, &sibling}) {
    QCOMPARE(TextOf([&] { any->Call([&never] { never = true; }); }), kNoAnswer);
  }
  QVERIFY(clock.elapsed() < kAtOnceMs);
  QCOMPARE(beats, 0);
  QVERIFY(answering->IsLost());
  QCOMPARE(news, 1);

  gate.Open();
  QCOMPARE(begun.get(), kNoAnswer);
  const auto is_lost = [&answering] { return answering->IsLost(); };
  QVERIFY(std::async(std::launch::async, [&] { return thread.Call(is_lost); }).get());
  QTRY_VERIFY(!answering->IsLost());
  QTRY_COMPARE(news, 2);
  QCOMPARE(thread.Call([] { return 8; }), 8);
  QVERIFY(!never);
}

// What was committed and is about to be answered must not be abandoned: no one would learn of it.
void DatabaseThreadTest::KeepsWhoWasClaimedWaiting() {
  CDatabaseThread thread(std::make_shared<CAnswering>());
  bool awaited = false;
  QCOMPARE(thread.Call([&thread, &awaited] {
    awaited = thread.Claim();
    std::promise<void>().get_future().wait_for(std::chrono::milliseconds(kGuiMs));
    return 9;
  }),
           9);
  QVERIFY(awaited);

  CGate gate;
  std::atomic<int> claimed{-1};
  const auto work = [&] {
    gate.Pass();
    claimed = thread.Claim();
  };
  QCOMPARE(TextOf([&] { thread.Call(work); }), kNoAnswer);
  gate.Open();
  QTRY_COMPARE(claimed, 0);
}

void DatabaseThreadTest::OutlivesItsOwner() {
  auto thread = std::make_unique<CDatabaseThread>(std::make_shared<CAnswering>());
  const auto gate = std::make_shared<CGate>();
  auto used = std::make_shared<int>(1);
  const std::weak_ptr<int> left = used;
  auto waiting =
      std::async(std::launch::async, [&] { return TextOf([&] { thread->Call([gate] { gate->Pass(); }); }); });
  gate->WaitUntilBegun();
  thread->BeginStop([used] { ++*used; });
  used.reset();
  QVERIFY(!thread->WaitUntilEnded(CDatabaseThread::Clock::now()));
  QVERIFY(!TextOf([&] { thread->Call([] {}); }).isEmpty());
  thread->LeaveBehind();
  QVERIFY(!waiting.get().isEmpty());
  thread.reset();
  QVERIFY(!left.expired());
  gate->Open();
  QTRY_VERIFY_WITH_TIMEOUT(left.expired(), kLongMs);  // its last act was done
}

void DatabaseThreadTest::BeatsAtOnceWhenThereIsNews() {
  int ends[2] = {-1, -1};
  QCOMPARE(::pipe(ends), 0);
  std::atomic<int> beats{0};
  std::atomic<bool> has_news{false};
  CDatabaseThread thread(std::make_shared<CAnswering>());
  const auto beat = [&](bool) {
    char byte = 0;
    has_news = false;
    beats += int(::poll(std::array{pollfd{ends[0], POLLIN, 0}}.data(), 1, 0) == 0 || ::read(ends[0], &byte, 1) == 1);
    return true;
  };
  thread.SetBeat(std::chrono::hours(1), beat, [&] { return CDatabaseThread::Rest{ends[0], has_news}; });
  QCOMPARE(::write(ends[1], "x", 1), ssize_t(1));
  QTRY_COMPARE(beats, 1);
  // What came along with the answer of a task shows in no socket.
  thread.Call([&has_news] { has_news = true; });
  QTRY_COMPARE(beats, 2);
  thread.Call([] {});
  QCOMPARE(beats, 2);
  thread.BeginStop([] {});
  QVERIFY(thread.WaitUntilEnded(CDatabaseThread::Clock::now() + std::chrono::milliseconds(kLongMs)));
  ::close(ends[0]);
  ::close(ends[1]);
}

// That says nothing of the database, which may only have much to do.
void DatabaseThreadTest::WaitsShortlyForAShortRead() {
  const auto answering = std::make_shared<CAnswering>();
  CDatabaseThread thread(answering);
  CGate gate;
  thread.Post([&gate] {
    gate.Pass();
    return true;
  });
  gate.WaitUntilBegun();
  QElapsedTimer clock;
  clock.start();
  QCOMPARE(TextOf([&] { thread.Call([] {}, CDatabaseThread::kShort); }), kNoAnswer);
  QVERIFY(clock.elapsed() < kAtOnceMs);
  clock.restart();
  for (int more = 0; more < 10; ++more) {  // they do not add up
    QCOMPARE(TextOf([&] { thread.Call([] {}, CDatabaseThread::kShort); }), kNoAnswer);
  }
  QVERIFY(clock.elapsed() < kAtOnceMs);
  QVERIFY(!answering->IsLost());
  gate.Open();
  QCOMPARE(thread.Call([] { return 10; }), 10);
  QCOMPARE(thread.Call([] { return 11; }, CDatabaseThread::kShort), 11);
}

QTEST_GUILESS_MAIN(DatabaseThreadTest)
#include "database_thread_test.moc"
