#include <QtTest>
#include <atomic>

#include "LyraPluginManager/error_kind.h"
#include "TarnHost/store_care.h"
#include "store_fixture.h"

using namespace StoreTest;

namespace {

const int kLater = 700;  // seconds: whatever a deletion kept is due to be forgotten

/// What comes to and goes from the top of a client's trees: "+code" and "-code".
class CTopWatch : public ResourceData::IResourceObserver {
 public:
  explicit CTopWatch(const CClient& client) : client_(client) {
    client_->ViewRegisterResourceUpdate(this, {kGroupType, "root", 1});
  }
  ~CTopWatch() override { client_->ViewRegisterResourceUpdate(this, {kGroupType, "root", 0}); }
  void OnResourceUpdate(const Param& param) override {
    const QString signs[] = {"+", "-"};
    const bool child = param.event == ResourceData::RE_CHILD_ADDED || param.event == ResourceData::RE_CHILD_REMOVED;
    lines.append((child ? signs[param.event - ResourceData::RE_CHILD_ADDED] : QString("whole tree")) +
                 QString::fromStdString(param.second));
  }

  QStringList lines;

 private:
  const CClient client_;
};

QString Code(const std::string& code) {
  return QString::fromStdString(code);
}

}  // namespace

/// Deletions that are taken back, and what other clients see of them.
class StoreUndoTest : public CStoreTest {
  Q_OBJECT
 private Q_SLOTS:
  void init();
  void GroupIsNowhereAndThenWhereItWas();
  void GroupThatWentAndCameBetweenTwoLooks();
  void PlanComesBackAsItWas();
  void DefaultViewComesBackUnlessAnotherWasChosen();
  void MoreThanOnceDoesNoHarm();
  void OutlivesTheClientThatDeleted();
  void IsRefused_data();
  void IsRefused();
  void NamesakesOfBeforeAreNoObstacle();
  void CountsNamesakesOnce();
  void KeptRowsAreForgotten();
  void ManyKeptRowsAreForgottenByAndBy();
  void WrongClockForgetsNothing();
  void ClockThatIsPutRightForgetsNothing();
  void WhatTheLogShowsToBeOldIsForgotten_data();
  void WhatTheLogShowsToBeOldIsForgotten();
  void SharedGroupsBecomeOne();
  void RowsThatAreLostAreNotPutBack();
  void GoneStaysGoneWhenTheReasonIsUnreadable();
  void CareKnowsKeptRows();

 private:
  std::string Gates() const { return ann_.Group("-1", "Gates"); }
  QString Kept() const {
    return fixture_->ReadPastTheStore(
        "SELECT (SELECT count(*) FROM deletion) || ' ' || (SELECT count(*) FROM kept_plan_group) || ' ' ||"
        " (SELECT count(*) FROM kept_plan) || ' ' || (SELECT count(*) FROM kept_default_view)");
  }
  /// All that a client sees of the public tree.
  static QStringList Seen(const CClient& client) {
    QStringList seen = client.Groups("-1") + client.Plans("-1") + client.Search("gate", 0);
    const std::string gates = client.Group("-1", "Gates");
    return seen + client.Groups(gates) + client.Plans(gates) + client.Plans(client.Group(gates, "North"));
  }

  static void Write(const CClient& client, int times = 1) {
    for (int time = 0; time < times; ++time) {
      QCOMPARE(client.SetDefaultView("-3", kPlanType), QString());
    }
  }

  // Seconds that have gone by for all clients, and that their clocks are wrong.
  std::shared_ptr<std::atomic<int>> passed_, wrong_;
};

void StoreUndoTest::init() {
  CStoreTest::init();
  passed_ = std::make_shared<std::atomic<int>>(0);
  wrong_ = std::make_shared<std::atomic<int>>(0);
  fixture_->options.now = [passed = passed_, wrong = wrong_] {
    return QDateTime::currentDateTime().addSecs(*passed + *wrong);
  };
  fixture_->options.steady_now = [passed = passed_] {
    return std::chrono::steady_clock::now() + std::chrono::seconds(*passed);
  };
}

void StoreUndoTest::GroupIsNowhereAndThenWhereItWas() {
  const QStringList before = Seen(ann_);
  const std::string gates = Gates(), gate_b = ann_.Plan("Gate B");
  CTopWatch own(ann_), other(bob_);
  view::DeletePlanGroupResponse deleted;
  QVERIFY(ann_->DeletePlanGroup({gates, {}, 0}, deleted));
  QCOMPARE(deleted.restorable_seconds, 10);
  for (const CClient& client : {ann_, bob_}) {
    QTRY_COMPARE(client.Groups("-1"), QStringList());
    QCOMPARE(client.Plan("Gate B"), std::string());
    QCOMPARE(client.Search("gate", 0), QStringList());
    QCOMPARE(client.Detail(gate_b).index_code, std::string());
  }
  QTRY_COMPARE(other.lines, QStringList{"-" + Code(gates)});
  QVERIFY(own.lines.isEmpty());

  QCOMPARE(ann_.RestoreGroup(gates), QString());
  QCOMPARE(Seen(ann_), before);
  QTRY_COMPARE(own.lines, QStringList{"+" + Code(gates)});
  QTRY_COMPARE(other.lines.last(), "+" + Code(gates));
  QCOMPARE(other.lines.size(), 2);
  QCOMPARE(Seen(bob_), before);
  QCOMPARE(Seen(CClient(fixture_.get(), "fred")), before);
  QCOMPARE(Kept(), QString("0 0 0 0"));
}

void StoreUndoTest::GroupThatWentAndCameBetweenTwoLooks() {
  const std::string gates = Gates();
  const QStringList before = Seen(bob_);
  const QStringList both = {"-" + Code(gates), "+" + Code(gates)};
  CTopWatch other(bob_);
  QCOMPARE(ann_.DeleteGroup(gates), QString());
  Write(bob_);  // sees all that was changed before
  QCOMPARE(ann_.RestoreGroup(gates), QString());
  Write(bob_);
  QTRY_COMPARE(other.lines, both);
  QCOMPARE(Seen(bob_), before);

  std::string later;
  QCOMPARE(ann_.AddGroup("-1", "Later", &later), QString());
  QTRY_COMPARE(other.lines.last(), "+" + Code(later));
  other.lines.clear();
  QCOMPARE(ann_.DeleteGroup(gates), QString());
  QCOMPARE(ann_.RestoreGroup(gates), QString());
  Write(bob_);
  QCOMPARE(ann_.DeleteGroup(later), QString());
  QTRY_COMPARE(other.lines.value(other.lines.size() - 1), "-" + Code(later));
  other.lines.removeLast();
  QVERIFY2(other.lines.isEmpty() || other.lines == both, qPrintable(other.lines.join(' ')));  // by when the beat was
  QCOMPARE(Seen(bob_), before);
}

void StoreUndoTest::PlanComesBackAsItWas() {
  const std::string gate = ann_.Plan("Gate A");
  view::UpdatePlanRequest change = ann_.Unchanged(gate);
  change.auto_play = true;
  change.begin_time = "08:00:00";
  change.end_time = "09:00:00";
  QCOMPARE(ann_.Update(change), QString());
  const view::GetPlanDetailResponse before = ann_.Detail(gate);
  QCOMPARE(ann_.DeletePlan(gate), QString());
  view::GetPlanDetailRequest asked;
  view::GetPlanDetailResponse gone;
  asked.plan_index_code = gate;
  // On a busy server the read may be answered from memory until the news are there.
  QTRY_VERIFY(!bob_->GetPlanDetail(asked, gone) && gone.error_kind == view::Gone);
  const QString why = QString::fromStdString(gone.error_info);
  QVERIFY2(why.startsWith("The plan was deleted by ann at "), qPrintable(why));
  std::string later;
  QCOMPARE(bob_.AddPlan("-1", "Another", &later), QString());
  QVERIFY(std::stoi(later) > std::stoi(gate));

  QCOMPARE(ann_.RestorePlan(gate), QString());
  for (const CClient& client : {ann_, bob_}) {
    QTRY_COMPARE(client.Plan("Gate A"), gate);
    const view::GetPlanDetailResponse now = client.Detail(gate);
    QCOMPARE(now.revision, before.revision);
    QCOMPARE(now.group_index_code, before.group_index_code);
    QCOMPARE(now.pages.size(), before.pages.size());
    QCOMPARE(now.start_time, before.start_time);
    QCOMPARE(now.creation_time, before.creation_time);
    QCOMPARE(client.Detail("", 1).index_code, gate);  // the automatic plan
  }
  QCOMPARE(ann_.Update(ann_.Unchanged(gate)), QString());
}

void StoreUndoTest::DefaultViewComesBackUnlessAnotherWasChosen() {
  const std::string gate_b = ann_.Plan("Gate B"), top = ann_.Plan("Top"), gates = Gates();
  const CClient cid(fixture_.get(), "cid");
  for (const CClient& client : {ann_, bob_, cid}) {
    QCOMPARE(client.SetDefaultView(gate_b, kPlanType), QString());
  }
  QCOMPARE(ann_.DeleteGroup(gates), QString());
  QCOMPARE(ann_.DefaultView(), std::string("-3"));
  QCOMPARE(bob_.SetDefaultView(top, kPlanType), QString());
  QCOMPARE(cid.SetDefaultView("-3", kPlanType), QString());
  QCOMPARE(ann_.RestoreGroup(gates), QString());
  QCOMPARE(ann_.DefaultView(), gate_b);
  QTRY_COMPARE(bob_.Plan("Gate B"), gate_b);
  QCOMPARE(bob_.DefaultView(), top);
  QCOMPARE(cid.DefaultView(), std::string("-3"));
}

void StoreUndoTest::MoreThanOnceDoesNoHarm() {
  const std::string top = ann_.Plan("Top");
  for (int round = 0; round < 2; ++round) {
    QCOMPARE(ann_.DeletePlan(top), QString());
    QCOMPARE(ann_.RestorePlan(top), QString());
    QCOMPARE(ann_.RestorePlan(top), QString());
    QCOMPARE(ann_.Plans("-1").size(), 1);
  }
  QCOMPARE(ann_.DeletePlan(top), QString());
  QVERIFY(!ann_.RestoreGroup(top).isEmpty());  // no group has this code
  QCOMPARE(ann_.RestorePlan(top), QString());
}

void StoreUndoTest::OutlivesTheClientThatDeleted() {
  const std::string gates = Gates();
  QCOMPARE(ann_.DeleteGroup(gates), QString());
  ann_.Leave();
  QCOMPARE(bob_.AddPlan("-1", "Another"), QString());
  QCOMPARE(ann_.RestoreGroup(gates), QString());
  QTRY_COMPARE(bob_.Group("-1", "Gates"), gates);
}

void StoreUndoTest::IsRefused_data() {
  QTest::addColumn<int>("kind");
  QTest::addColumn<QString>("text");
  QTest::newRow("too late") << int(view::Gone) << "It is too late to undo the deletion.";
  QTest::newRow("never deleted") << int(view::Gone) << "It is too late to undo the deletion.";
  QTest::newRow("group gone") << int(view::Gone)
                              << "\"Gate B\" cannot come back: its group was deleted in the meantime.";
  QTest::newRow("name taken") << int(view::Refused)
                              << "\"Gate B\" cannot come back: its name was given to another in the meantime.";
  QTest::newRow("another user") << int(view::NotPermitted)
                                << "\"Gate B\" was deleted by another user. Only that user can undo it.";
  QTest::newRow("right withdrawn") << int(view::NotPermitted) << "You have no right to delete public plans and groups.";
}

void StoreUndoTest::IsRefused() {
  const QString what = QTest::currentDataTag();
  const CClient dora(fixture_.get(), "dora");
  const std::string gate = ann_.Plan("Gate B"), north = ann_.Group(Gates(), "North");
  CClient asks = ann_;
  if (what != "never deleted") {
    QCOMPARE(ann_.DeletePlan(gate), QString());
  }
  std::string asked = gate;
  if (what == "too late") {
    *passed_ = 61;
  } else if (what == "never deleted") {
    asked = "999999";
  } else if (what == "group gone") {
    QCOMPARE(dora.DeleteGroup(north), QString());
  } else if (what == "name taken") {
    QCOMPARE(bob_.AddPlan(north, "Gate B"), QString());
  } else if (what == "another user") {
    asks = dora;
  } else if (what == "right withdrawn") {
    ann_.Leave();
    fixture_->RunPastTheStore("DELETE FROM user_right WHERE code = 7");
  }
  QFETCH(int, kind);
  int32_t answered = -1;
  QTEST(asks.RestorePlan(asked, &answered), "text");
  QCOMPARE(answered, kind);
}

void StoreUndoTest::NamesakesOfBeforeAreNoObstacle() {
  std::string second;
  QCOMPARE(ann_.AddPlan("-1", "Top", &second), QString());
  *passed_ = 59;  // of each deletion: the last click
  QCOMPARE(ann_.DeletePlan(second), QString());
  *passed_ = 118;
  QCOMPARE(ann_.RestorePlan(second), QString());
  QCOMPARE(ann_.Plans("-1").size(), 2);
  const std::string both[] = {ann_.Plan("Top"), second};
  for (const std::string& plan : both) {
    QCOMPARE(ann_.DeletePlan(plan), QString());
  }
  for (const std::string& plan : both) {
    QCOMPARE(ann_.RestorePlan(plan), QString());
  }
  // But one that never stood beside it is: kept rows do not stand there.
  QCOMPARE(ann_.DeletePlan(both[0]), QString());
  QCOMPARE(ann_.DeletePlan(both[1]), QString());
  *passed_ = 400;  // of neither any more
  std::string third;
  QCOMPARE(ann_.AddPlan("-1", "Top", &third), QString());
  QCOMPARE(ann_.DeletePlan(third), QString());
  QCOMPARE(ann_.AddPlan("-1", "Top"), QString());
  QVERIFY(ann_.RestorePlan(third).contains("given to another"));
}

// What comes back stands beside those that are deleted later, not once more beside those of before.
void StoreUndoTest::CountsNamesakesOnce() {
  const std::string first = ann_.Plan("Top");
  std::string second, third, fresh;
  QCOMPARE(ann_.AddPlan("-1", "Top", &second), QString());
  QCOMPARE(ann_.AddPlan("-1", "Top", &third), QString());
  for (const std::string& plan : {first, second, third}) {
    QCOMPARE(ann_.DeletePlan(plan), QString());
  }
  QCOMPARE(ann_.RestorePlan(second), QString());
  QCOMPARE(ann_.AddPlan("-1", "Top"), QString());
  QVERIFY(ann_.RestorePlan(third).contains("given to another"));
  QCOMPARE(ann_.AddPlan("-1", "Top", &fresh), QString());
  QVERIFY(ann_.RestorePlan(first).contains("given to another"));
  QCOMPARE(ann_.DeletePlan(fresh), QString());
  QCOMPARE(ann_.RestorePlan(first), QString());
}

void StoreUndoTest::KeptRowsAreForgotten() {
  QCOMPARE(ann_.SetDefaultView(ann_.Plan("Gate B"), kPlanType), QString());
  QCOMPARE(ann_.DeletePlan(ann_.Plan("Top")), QString());
  QCOMPARE(ann_.DeleteGroup(Gates()), QString());
  QCOMPARE(Kept(), QString("2 2 3 1"));
  fixture_->AgeDeletions();
  ann_.Leave();
  Write(bob_);  // where the kept rows are found
  *passed_ = kLater;
  Write(bob_, 2);  // a deletion each time
  QCOMPARE(Kept(), QString("0 0 0 0"));
}

void StoreUndoTest::ManyKeptRowsAreForgottenByAndBy() {
  const std::string gates = Gates();
  QCOMPARE(ann_.DeleteGroup(gates), QString());
  fixture_->RunPastTheStore(
      "INSERT INTO kept_plan SELECT deletion, code + 1000 * number, parent_code, family, owner_id, name, split_type,"
      " page_count, auto_run, begin_time, end_time, cameras, creator, creation_time, revision, changed_by, changed_at,"
      " checksum FROM kept_plan, (WITH RECURSIVE numbers(number) AS (SELECT 1 UNION ALL"
      " SELECT number + 1 FROM numbers WHERE number < 400) SELECT number FROM numbers) AS many WHERE name = 'Gate B'");
  QCOMPARE(Kept(), QString("1 2 402 0"));
  Write(ann_);
  *passed_ = kLater;
  Write(ann_);
  QCOMPARE(Kept(), QString("1 2 102 0"));
  *passed_ = 0;  // what is half forgotten does not come back, whatever the clock shows
  QCOMPARE(ann_.RestoreGroup(gates), QString("It is too late to undo the deletion."));
  QCOMPARE(Kept(), QString("1 2 102 0"));
  Write(ann_);
  QCOMPARE(Kept(), QString("0 0 0 0"));
}

void StoreUndoTest::WrongClockForgetsNothing() {
  const std::string top = ann_.Plan("Top");
  for (const int days : {-9000, -1, 1, 9000}) {
    fixture_->options.now = [days] { return QDateTime::currentDateTime().addDays(days); };
    const CClient wrong(fixture_.get(), "bob");
    Write(wrong);
    QCOMPARE(ann_.DeletePlan(top), QString());
    Write(wrong, 2);
    QCOMPARE(ann_.RestorePlan(top), QString());
  }
}

void StoreUndoTest::ClockThatIsPutRightForgetsNothing() {
  const std::string top = ann_.Plan("Top");
  Write(bob_);
  for (const int seconds : {kLater, 0}) {
    QCOMPARE(ann_.DeletePlan(top), QString());
    Write(bob_);
    *wrong_ = seconds;
    Write(bob_, 2);
    QCOMPARE(ann_.RestorePlan(top), QString());
  }
}

// Without any client running for long.
void StoreUndoTest::WhatTheLogShowsToBeOldIsForgotten_data() {
  QTest::addColumn<int>("deletions");
  QTest::newRow("before all that is logged") << 2;
  QTest::newRow("more than are kept") << 1001;
}

void StoreUndoTest::WhatTheLogShowsToBeOldIsForgotten() {
  QFETCH(int, deletions);
  const std::string old = ann_.Plan("Gate B"), top = ann_.Plan("Top");
  QCOMPARE(ann_.DeletePlan(old), QString());
  ann_.Leave();
  if (deletions == 2) {
    fixture_->RunPastTheStore("DELETE FROM change_log");
  } else {
    fixture_->RunPastTheStore(
        QString(
            "WITH RECURSIVE numbers(number) AS (SELECT 1 UNION ALL SELECT number + 1 FROM numbers WHERE number < %1)"
            " INSERT INTO deletion SELECT 500000 + number, 0, -1, 0, 0, '', 0, 1, deleted_at FROM numbers, deletion")
            .arg(deletions - 2));
    fixture_->RunPastTheStore("INSERT INTO change_log SELECT code, '', 4, code FROM deletion WHERE code > 500000");
    fixture_->RunPastTheStore("UPDATE counter SET value = 600000 WHERE name = 'seq'");
  }
  fixture_->AgeDeletions();
  QCOMPARE(ann_.DeletePlan(top), QString());
  Write(bob_);
  QCOMPARE(Kept().section(' ', 0, 0).toInt(), deletions - 1);
  QCOMPARE(ann_.RestorePlan(old), QString("It is too late to undo the deletion."));
  QCOMPARE(ann_.RestorePlan(top), QString());
}

void StoreUndoTest::SharedGroupsBecomeOne() {
  const std::string gate = ann_.Plan("Gate A");
  QCOMPARE(ann_.Share(gate, "2"), QString());
  QTRY_VERIFY(!bob_.Group("-2", "Shared").empty());
  const std::string shared = bob_.Group("-2", "Shared");
  QCOMPARE(bob_.AddGroup(shared, "Mine"), QString());
  QCOMPARE(bob_.AddPlan(bob_.Group(shared, "Mine"), "In mine"), QString());
  QCOMPARE(bob_.SetDefaultView(shared, kGroupType), QString());
  QCOMPARE(bob_.DeleteGroup(shared), QString());
  QCOMPARE(ann_.Share(ann_.Plan("Top"), "2"), QString());
  QTRY_VERIFY(!bob_.Group("-2", "Shared").empty());
  view::RestoreDeletedResponse restored;
  QVERIFY(bob_->RestoreDeleted({shared, true}, restored));
  const std::string now = bob_.Group("-2", "Shared");
  QCOMPARE(restored.index_code, now);
  QCOMPARE(bob_.DefaultView(), now);
  for (const CClient& client : {bob_, CClient(fixture_.get(), "bob")}) {
    QCOMPARE(client.Groups("-2").filter("Shared").size(), 1);
    QCOMPARE(client.Plans(now).size(), 2);
    QCOMPARE(client.Plans(client.Group(now, "Mine")).size(), 1);
  }
  QStringList findings;
  QString summary, error;
  QVERIFY2(TarnHost::StoreCare::Check(fixture_->Url(), &findings, &summary, &error), qPrintable(error));
  QCOMPARE(findings, QStringList());
}

void StoreUndoTest::RowsThatAreLostAreNotPutBack() {
  const std::string top = ann_.Plan("Top"), gates = Gates();
  QCOMPARE(ann_.DeletePlan(top), QString());
  QCOMPARE(ann_.DeleteGroup(gates), QString());
  fixture_->RunPastTheStore("DELETE FROM kept_plan");
  fixture_->RunPastTheStore("DELETE FROM kept_plan_group");
  int32_t kind = -1;
  QCOMPARE(ann_.RestorePlan(top, &kind), QString("It is too late to undo the deletion."));
  QCOMPARE(kind, int(view::Gone));
  QCOMPARE(ann_.RestoreGroup(gates), QString("It is too late to undo the deletion."));
  QCOMPARE(Kept().section(' ', 0, 0), QString("2"));  // and nothing is done by half
}

void StoreUndoTest::GoneStaysGoneWhenTheReasonIsUnreadable() {
  view::GetPlanDetailRequest asked;
  view::GetPlanDetailResponse gone;
  asked.plan_index_code = ann_.Plan("Top");
  QCOMPARE(ann_.DeletePlan(asked.plan_index_code), QString());
  fixture_->RunPastTheStore("DROP TABLE deletion");
  QVERIFY(!ann_->GetPlanDetail(asked, gone));
  QCOMPARE(gone.error_kind, int32_t(view::Gone));
  QCOMPARE(QString::fromStdString(gone.error_info), QString("The plan does not exist or was deleted in the meantime."));
}

void StoreUndoTest::CareKnowsKeptRows() {
  const std::string gates = Gates();
  QCOMPARE(ann_.DeleteGroup(gates), QString());
  QStringList findings;
  QString summary, error, place = fixture_->Url();
  if (!CStoreFixture::OnPostgres()) {
    place = "sqlite:" + fixture_->File() + ".copy";
    QVERIFY2(TarnHost::StoreCare::BackUp(fixture_->Url(), place.mid(7), &error), qPrintable(error));
  }
  QVERIFY2(TarnHost::StoreCare::Check(place, &findings, &summary, &error), qPrintable(error));
  QCOMPARE(findings, QStringList());
  QVERIFY2(summary.contains("deletions kept to be undone: 1"), qPrintable(summary));
}

QTEST_GUILESS_MAIN(StoreUndoTest)
#include "store_undo_test.moc"
