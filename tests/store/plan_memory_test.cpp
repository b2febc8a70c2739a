// What of plans stands in memory, and what gives way when there are too many; when their copy on disk is written.
#include <QtTest>

#include "copies/copy_pace.h"
#include "store/plan_memory.h"

using TarnHost::Store::CopyPace;
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
  void WritesTheCopyInItsTime_data();
  void WritesTheCopyInItsTime();
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

// Seconds; -1: never. After a change it is calm for 5, and between two writings there are 60.
void PlanMemoryTest::WritesTheCopyInItsTime_data() {
  QTest::addColumn<int>("changed");
  QTest::addColumn<int>("written");
  QTest::addColumn<int>("confirmed");
  QTest::addColumn<int>("now");
  QTest::addColumn<bool>("is_due");
  QTest::addColumn<bool>("is_moment_due");
  QTest::newRow("nothing was ever written") << -1 << -1 << -1 << 1000 << false << true;
  QTest::newRow("first change, not calm yet") << 1000 << -1 << -1 << 1004 << false << false;
  QTest::newRow("first change, calm") << 1000 << -1 << -1 << 1005 << true << false;
  QTest::newRow("change long after a writing") << 1000 << 100 << -1 << 1005 << true << false;
  QTest::newRow("change soon after a writing") << 1000 << 990 << -1 << 1005 << false << false;
  QTest::newRow("change when the pause ends") << 1000 << 990 << -1 << 1050 << true << false;
  QTest::newRow("moments do not hold up changes") << 1000 << 100 << 999 << 1005 << true << false;
  QTest::newRow("quiet, soon after a writing") << -1 << 990 << -1 << 1049 << false << false;
  QTest::newRow("quiet, the pause is over") << -1 << 990 << -1 << 1050 << false << true;
  QTest::newRow("quiet, a moment soon before") << -1 << 100 << 990 << 1049 << false << false;
  QTest::newRow("quiet, a moment long before") << -1 << 100 << 990 << 1050 << false << true;
  QTest::newRow("quiet, written after the moment") << -1 << 995 << 990 << 1050 << false << false;
}

void PlanMemoryTest::WritesTheCopyInItsTime() {
  QFETCH(int, changed);
  QFETCH(int, written);
  QFETCH(int, confirmed);
  QFETCH(int, now);
  using Moment = CopyPace::Clock::time_point;
  const auto at = [](int second) {
    return second < 0 ? std::nullopt : std::make_optional(Moment(std::chrono::seconds(second)));
  };
  CopyPace pace;
  pace.changed = at(changed);
  pace.written = at(written);
  pace.confirmed = at(confirmed);
  QTEST(pace.IsDue(*at(now)), "is_due");
  QTEST(pace.IsMomentDue(*at(now)), "is_moment_due");
}

QTEST_GUILESS_MAIN(PlanMemoryTest)
#include "plan_memory_test.moc"
