#include <QImage>
#include <QPainter>
#include <QSemaphore>
#include <QThreadPool>
#include <QtTest>
#include <memory>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "host_calls/ask.h"
#include "host_calls/call_pool.h"
#include "plan_test.h"

using HostCalls::Ask;
using HostCalls::CCallOrder;
using HostCalls::CCallScope;
using LyraPluginManager::CViewBusinessInterfaceMgr;
using view_plugin_protocol::AddPlanGroupRequest;

/// Questions to the host: who is answered, in which order and on whose behalf.
class HostCallsTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void AnswersLaterAndOnlyTheLiving();
  void ScopeKeepsOrDropsAnswers();
  void OrderHoldsForOneKey();
  void WindowsPaintWhileCallsWait();
  void NextUserIsNeverAskedFor_data();
  void NextUserIsNeverAskedFor();

 private:
  QStringList answers_;
};

void HostCallsTest::AnswersLaterAndOnlyTheLiving() {
  QObject alive;
  auto dead = std::make_unique<QObject>();
  QSemaphore ran, begin;
  int answers = 0;
  Ask([&] { return ran.release(), 0; }).Then(dead.get(), [&](int) { answers = 100; });
  dead.reset();
  QThread* answered_on = nullptr;
  Ask([&] { return begin.acquire(), QThread::currentThread(); }).Then(&alive, [&](QThread* asked_on) {
    answered_on = QThread::currentThread();
    answers += asked_on == answered_on ? 10 : 1;
  });
  QVERIFY(ran.tryAcquire(1, 5000));  // a task runs although its context is gone
  QCOMPARE(answers, 0);
  begin.release();
  QTRY_COMPARE(answers, 1);
  QCOMPARE(answered_on, thread());
}

void HostCallsTest::ScopeKeepsOrDropsAnswers() {
  QObject context;
  QStringList answered;
  auto scope = std::make_unique<CCallScope>();
  QSemaphore begin;
  const auto ask = [&](const QString& name) { return Ask([&begin, name] { return begin.acquire(), name; }); };
  const auto note = [&](const QString& name) { answered << name; };
  const CCallScope::Ticket before = scope->Current();
  ask("first").Within(*scope).Then(&context, note);
  ask("second").Within(*scope).Then(&context, note);
  QVERIFY(scope->IsUnderWay());
  begin.release(2);
  QTRY_COMPARE(QSet<QString>(answered.begin(), answered.end()), QSet<QString>({"first", "second"}));
  QVERIFY(!scope->IsUnderWay() && !before.IsDropped());
  answered.clear();
  ask("older").Within(*scope).Then(&context, note);
  ask("newest").Replacing(*scope).Then(&context, note);
  QVERIFY(before.IsDropped());
  begin.release(2);
  QTRY_COMPARE(answered, QStringList{"newest"});
  ask("dropped").Within(*scope).Then(&context, note);
  scope->Drop();
  QVERIFY(!scope->IsUnderWay());
  ask("orphan").Within(*scope).Then(&context, note);
  scope.reset();
  ask("last").Then(&context, note);
  begin.release(3);
  QTRY_VERIFY(answered.contains("last"));
  TarnTest::CPlanFixture::Drain();
  QCOMPARE(answered, QStringList({"newest", "last"}));
}

void HostCallsTest::OrderHoldsForOneKey() {
  QObject context;
  CCallOrder order;
  QSemaphore first_may_end, other_ran;
  QStringList begun, answered;
  QMutex mutex;
  const auto ask = [&](const std::string& key, const QString& name, QSemaphore* wait) {
    Ask([&mutex, &begun, name, wait] {
      QMutexLocker lock(&mutex);
      begun << name;
      lock.unlock();
      if (wait) {
        wait->acquire();
      }
      return name;
    })
        .InOrder(order, key)
        .Then(&context, [&](const QString& done) { answered << done; });
  };
  ask("gate", "gate 1", &first_may_end);
  ask("gate", "gate 2", nullptr);
  ask("gate", "gate 3", nullptr);
  ask("roof", "roof 1", nullptr);
  QTRY_COMPARE(answered, QStringList{"roof 1"});  // another key does not wait
  first_may_end.release();
  QTRY_COMPARE(answered, QStringList({"roof 1", "gate 1", "gate 2", "gate 3"}));
  begun.removeOne("roof 1");
  QCOMPARE(begun, QStringList({"gate 1", "gate 2", "gate 3"}));
  QVERIFY(!order.IsBusy("gate"));
}

// Qt shares out large fills and scaled pictures to its global pool, and waits for it.
void HostCallsTest::WindowsPaintWhileCallsWait() {
  QObject context;
  QSemaphore painted;
  const int calls = 2 * qMax(HostCalls::CallPool().maxThreadCount(), QThreadPool::globalInstance()->maxThreadCount());
  int waited_for_the_painting = 0;
  for (int call = 0; call < calls; ++call) {
    Ask([&] { return painted.tryAcquire(1, 5000); }).Then(&context, [&](bool was) { waited_for_the_painting += was; });
  }
  QImage large(1920, 1080, QImage::Format_ARGB32_Premultiplied);
  QPainter painter(&large);
  painter.fillRect(large.rect(), QColor(1, 2, 3, 100));
  painter.end();
  QVERIFY(!large.scaled(640, 360, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).isNull());
  painted.release(calls);
  HostCalls::AwaitCalls();
  QTRY_COMPARE(waited_for_the_painting, calls);
}

void HostCallsTest::NextUserIsNeverAskedFor_data() {
  QTest::addColumn<QString>("meanwhile");
  QTest::addColumn<bool>("made");
  QTest::addColumn<QString>("text");
  const QString switched = "Not done: the user was switched before this change had its turn.";
  QTest::newRow("same user") << "nothing" << true << "";
  QTest::newRow("other user") << "switch" << false << switched;
  QTest::newRow("user unknown") << "fail" << false << "no answer";
}

void HostCallsTest::NextUserIsNeverAskedFor() {
  QFETCH(QString, meanwhile);
  Open({}, false);
  QObject context;
  QThreadPool pool;
  pool.setMaxThreadCount(1);
  QSemaphore thread_is_free;
  pool.start([&] { thread_is_free.acquire(); });
  AddPlanGroupRequest request;
  request.name = "Late";
  request.parent_index_code = "-1";
  std::optional<HostCalls::Result<view_plugin_protocol::AddPlanGroupResponse>> answer;
  Ask(&CViewBusinessInterfaceMgr::AddPlanGroup, request)
      .On(pool)
      .AsCurrentUser()
      .Then(&context, [&](const auto& result) { answer = result; });
  if (meanwhile == "switch") {
    QVERIFY(fixture_.Store().LogIn({"viewer"}).IsDone());
  } else if (meanwhile == "fail") {
    Services().Fail("GetCurrentUser", "no answer");
  }
  thread_is_free.release();
  QTRY_VERIFY(answer.has_value());
  QTEST(answer->ok, "made");
  QTEST(Services().Count("AddPlanGroup") == 1, "made");
  QTEST(QString::fromStdString(answer->response.error_info), "text");
}

QTEST_MAIN(HostCallsTest)
#include "test_host_calls.moc"
