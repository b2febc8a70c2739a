// What of plans stands in memory, and what gives way when there are too many.
#include <QtTest>

#include "store/plan_memory.h"

using TarnHost::Store::CPlanMemory;
using TarnHost::Store::CStoreText;
using TarnHost::Store::StoredPlan;

namespace {

constexpr int kLarge = 12 << 20;  // two have room, three do not

StoredPlan Plan(int32_t code, int bytes = 0, const char* name = "") {
  StoredPlan plan;
  plan.row.code = code;
  plan.name = name;
  plan.thumbnail = QByteArray(bytes, 'x');
  return plan;
}

QList<int> Held(const CPlanMemory& memory) {
  QList<int> codes;
  for (int code = 1; code < 10; ++code) {
    if (memory.Has(code)) {
      codes.append(code);
    }
  }
  return codes;
}

}  // namespace

class PlanMemoryTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void HasWhatWasPutInLast();
  void GoesOnToWhatWasRead();
  void LetsTheOldestGoButWhatIsKept();
};

void PlanMemoryTest::HasWhatWasPutInLast() {
  CPlanMemory memory;
  memory.Put(Plan(1, 0, "Old"));
  const auto old = memory.Find(1);
  memory.Put(Plan(1, 0, "New"));
  QCOMPARE(old->name, QString("Old"));  // who has it, has it
  QCOMPARE(memory.Find(1)->name, QString("New"));
  auto damaged = Plan(1);
  damaged.damage = CStoreText(QString("cannot be read"));
  memory.Put(damaged);  // nor does the sound one of before count any more
  QCOMPARE(Held(memory), QList<int>());
  memory.Put(Plan(2));
  memory.Remove(2);
  memory.Remove(3);
  QCOMPARE(Held(memory), QList<int>());
  memory.SetDefaultViews({{7, {1, 16000}}});
  memory.Clear();  // of plans
  QCOMPARE(memory.DefaultViewOf(7), CPlanMemory::DefaultView(1, 16000));
  QCOMPARE(memory.DefaultViewOf(8), CPlanMemory::DefaultView());
}

void PlanMemoryTest::GoesOnToWhatWasRead() {
  CPlanMemory memory;
  const auto at = [](int64_t revision, int bytes = 0) {
    StoredPlan plan = Plan(1, bytes);
    plan.revision = revision;
    return plan;
  };
  memory.Renew(at(3));  // it is not asked for at once
  QCOMPARE(Held(memory), QList<int>());
  memory.Put(at(3));
  memory.Renew(at(5, kLarge));
  memory.Renew(at(4));
  QCOMPARE(memory.Find(1)->revision, int64_t(5));
  memory.Put(Plan(2, kLarge));
  memory.Put(Plan(3, kLarge));  // it counts as large as it has become
  QCOMPARE(Held(memory), (QList<int>{2, 3}));
}

void PlanMemoryTest::LetsTheOldestGoButWhatIsKept() {
  CPlanMemory memory;
  for (int round = 0; round < 5; ++round) {
    memory.Put(Plan(1, kLarge));  // the same again takes no more room
  }
  memory.Put(Plan(2, kLarge));
  QCOMPARE(Held(memory), (QList<int>{1, 2}));
  memory.Put(Plan(3, kLarge));
  QCOMPARE(Held(memory), (QList<int>{2, 3}));
  memory.Keep({2});
  memory.Put(Plan(4, kLarge));
  QCOMPARE(Held(memory), (QList<int>{2, 4}));
  memory.Keep({});
  memory.Put(Plan(5, kLarge));
  QCOMPARE(Held(memory), (QList<int>{4, 5}));
}

QTEST_GUILESS_MAIN(PlanMemoryTest)
#include "plan_memory_test.moc"
