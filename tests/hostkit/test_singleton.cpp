#include <QtTest>
#include <thread>
#include <vector>

#include "probed_singleton.h"

class SingletonTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void OneInstanceForAllSharedObjectsAndThreads() {
    QVERIFY(!ProbedSingleton::IsCreated());
    std::vector<ProbedSingleton*> seen(16, nullptr);
    std::vector<std::thread> threads;
    for (size_t i = 0; i < seen.size(); ++i) {
      threads.emplace_back([&seen, i] { seen[i] = i % 2 ? InstanceSeenByProbe() : &ProbedSingleton::Instance(); });
    }
    for (std::thread& thread : threads) {
      thread.join();
    }
    for (ProbedSingleton* instance : seen) {
      QCOMPARE(instance, seen.front());
    }
    QCOMPARE(ProbedSingleton::Made().load(), 1);

    ProbedSingleton::Release();
    QVERIFY(!IsCreatedSeenByProbe());
    QCOMPARE(ProbedSingleton::Gone().load(), 1);
    ProbedSingleton::Release();
    QCOMPARE(ProbedSingleton::Gone().load(), 1);
    QCOMPARE(InstanceSeenByProbe(), &ProbedSingleton::Instance());
    QCOMPARE(ProbedSingleton::Made().load(), 2);
  }
};

QTEST_GUILESS_MAIN(SingletonTest)
#include "test_singleton.moc"
