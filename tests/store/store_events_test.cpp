#include <QtTest>

#include "notice_recorder.h"

using namespace StoreTest;

namespace {

/// Waits without letting events in, so that notices wait, too.
bool WaitDeaf(const std::function<bool()>& done) {
  QElapsedTimer clock;
  clock.start();
  while (!done() && !clock.hasExpired(10000)) {
    QThread::yieldCurrentThread();
  }
  return done();
}

}  // namespace

/// What a client learns of changes that were made elsewhere, and of its own.
class StoreEventsTest : public CStoreTest {
  Q_OBJECT
 private Q_SLOTS:
  void ReportsToOthersAndNotToItself();
  void HasTheLastWordOnItsOwnChange();
  void ReportsItsOwnChangeThatItAbandoned();
  void ClosesWhileAChangeWaits();
  void ReportsOnceManyChangesOfAPlan();
  void ReportsSharesToTheirRecipients();
  void ReadsAllAgainAfterAGap();
  void ReportsWhatARefreshBringsIn();
  void ReadsAgainWhatItCouldNotRead();
  void ForgetsWhatWasNotCommitted_data();
  void ForgetsWhatWasNotCommitted();
  void ComesBackAfterALostConnection();
  void RaisesTheTreeEventAtLogIn();
  void ToleratesRemovalWhileItReports();
  void AnnouncesChildrenUnderLoadAll();

 private:
  std::string Gates() const { return ann_.Group("-1", "Gates"); }
  std::string North() const { return ann_.Group(Gates(), "North"); }
};

void StoreEventsTest::ReportsToOthersAndNotToItself() {
  const std::string gates = Gates(), north = North(), gate_a = ann_.Plan("Gate A");
  CRecorder own(ann_, {"root", gates, north}, {gate_a}), other(bob_, {"root", gates, north}, {gate_a});
  const auto reported = [&other](const QStringList& wanted) {
    const bool same = QTest::qWaitFor([&] { return other.lines == wanted; });
    const bool result = same || QTest::qCompare(other.lines, wanted, "reported", "wanted", __FILE__, __LINE__);
    other.lines.clear();
    return result;
  };
  std::string inner, fresh;
  QCOMPARE(ann_.AddPlan("-2", "Of no one else"), QString());
  QCOMPARE(ann_.AddGroup(gates, "Inner", &inner), QString());
  QVERIFY(reported({Line(gates, kAdded, inner, kGroupType)}));
  QCOMPARE(ann_.RenameGroup(gates, "Doors"), QString());
  QVERIFY(reported({Line(gates, kChanged, "Doors", kGroupType)}));
  QCOMPARE(ann_.AddPlan("-1", "Fresh", &fresh), QString());
  QVERIFY(reported({Line("root", kAdded, fresh, kPlanType)}));
  QCOMPARE(ann_.Update(TarnTest::ChangedPlan(gate_a, "Moved", north)), QString());
  QVERIFY(reported({Line(gates, kRemoved, gate_a, kPlanType), Line(north, kAdded, gate_a, kPlanType),
                    Line(gate_a, kChanged, "Moved", kPlanType)}));
  QCOMPARE(ann_.DeletePlan(fresh), QString());
  QVERIFY(reported({Line("root", kRemoved, fresh, kPlanType)}));
  QCOMPARE(ann_.DeleteGroup(north), QString());
  QVERIFY(reported({Line(gates, kRemoved, north, kGroupType)}));

  QCOMPARE(bob_.Groups(gates), ann_.Groups(gates));
  QCOMPARE(bob_.Plans(gates), ann_.Plans(gates));
  QCOMPARE(bob_.Search("a", 0), ann_.Search("a", 0));
  QCOMPARE(bob_.RenameGroup(gates, "Bob was here"), QString());
  QTRY_COMPARE(own.lines, QStringList{Line(gates, kChanged, "Bob was here", kGroupType)});
  QCOMPARE(other.lines, QStringList());
}

// Somebody else's change comes in with an own one to the same row, and is reported after that was answered: what stands
// in the store must be reported last, or a moved plan stays gone from the tree and a group keeps an old name.
void StoreEventsTest::HasTheLastWordOnItsOwnChange() {
  const std::string gates = Gates(), north = North(), plan = ann_.Plan("Gate A");
  CRecorder own(ann_, {"root", gates, north}, {plan});
  QCOMPARE(bob_.Update(TarnTest::ChangedPlan(plan, "Gate A", "-1")), QString());
  QCOMPARE(bob_.RenameGroup(gates, "Bob's"), QString());
  QCOMPARE(ann_.Update(TarnTest::ChangedPlan(plan, "Gate A", gates)), QString());
  QCOMPARE(ann_.RenameGroup(gates, "Ann's"), QString());
  const auto after = [&own](const QString& late) { return own.lines.mid(own.lines.indexOf(late) + 1); };
  QTRY_VERIFY(own.lines.contains(Line(gates, kChanged, "Bob's", kGroupType)));
  QTRY_VERIFY(after(Line(gates, kRemoved, plan, kPlanType)).contains(Line(gates, kAdded, plan, kPlanType)));
  QTRY_VERIFY(after(Line(gates, kChanged, "Bob's", kGroupType)).contains(Line(gates, kChanged, "Ann's", kGroupType)));

  own.lines.clear();
  QCOMPARE(ann_.RenameGroup(gates, "Ann's own"), QString());  // alone: no notice
  QCOMPARE(bob_.RenameGroup(north, "Later"), QString());
  QTRY_COMPARE(own.lines, QStringList{Line(north, kChanged, "Later", kGroupType)});
}

// Where the answer was that the service does not answer, no one knows of a change that came through later.
void StoreEventsTest::ReportsItsOwnChangeThatItAbandoned() {
  const std::string north = North(), plan = ann_.Plan("Gate A"), going = ann_.Plan("Gate B");
  CRecorder own(ann_, {"root", north}, {plan});
  const auto update = TarnTest::ChangedPlan(plan, "Gate A renamed");
  const auto abandoned = [this](const std::function<QString()>& write) {
    const CWritersHold hold(*fixture_);
    return write() == kNoAnswer;
  };
  QVERIFY(abandoned([this] { return ann_.AddGroup("-1", "Late"); }));
  QTRY_VERIFY(!ann_.Group("-1", "Late").empty());
  QVERIFY(abandoned([&] { return ann_.Update(update); }));
  QTRY_COMPARE(ann_.Plan("Gate A renamed"), plan);
  QVERIFY(abandoned([&] { return ann_.DeletePlan(going); }));
  QTRY_COMPARE(ann_.Plan("Gate B"), std::string());
  QTRY_COMPARE(own.lines, (QStringList{Line("root", kAdded, ann_.Group("-1", "Late"), kGroupType),
                                       Line(plan, kChanged, "Gate A renamed", kPlanType),
                                       Line(north, kRemoved, going, kPlanType)}));
  QTRY_COMPARE(bob_.Groups("-1"), ann_.Groups("-1"));
}

// A server's client is cut off. What waits for a file is left behind, and does no harm when it ends after the store.
void StoreEventsTest::ClosesWhileAChangeWaits() {
  const bool cut_off = CStoreFixture::OnPostgres();
  QCOMPARE(bob_.Groups("-1").size(), 1);
  {
    QCOMPARE(ann_.Groups("-1").size(), 1);
    const CWritersHold hold(*fixture_);
    QCOMPARE(ann_.AddGroup("-1", "Late"), kNoAnswer);
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(ann_->Close(), cut_off);
    ann_.Leave();
    QVERIFY2(clock.elapsed() < 4000, qPrintable(QString::number(clock.elapsed())));
  }
  QCOMPARE(bob_.AddGroup("-1", "Next"), QString());
  QTRY_COMPARE(bob_.Group("-1", "Late").empty(), cut_off);
}

void StoreEventsTest::ReportsOnceManyChangesOfAPlan() {
  const std::string gates = Gates(), north = North();
  const std::string busy = ann_.Plan("Gate A"), other = ann_.Plan("Gate B");
  CRecorder recorder(ann_, {gates, north}, {busy, other});
  const auto change = [&](const std::string& plan, const char* name, const std::string& group) {
    QCOMPARE(bob_.Update(TarnTest::ChangedPlan(plan, name, group)), QString());
    QVERIFY(WaitDeaf([&] { return !ann_.Plan(name).empty(); }));  // each by itself, or the store reports the last only
  };
  change(busy, "One", gates);
  change(other, "Other", north);
  change(busy, "Two", gates);
  change(busy, "Moved", north);
  change(busy, "Last", north);
  QCOMPARE(recorder.lines, QStringList());
  QTRY_COMPARE(recorder.lines,
               (QStringList{Line(other, kChanged, "Other", kPlanType), Line(gates, kRemoved, busy, kPlanType),
                            Line(north, kAdded, busy, kPlanType), Line(busy, kChanged, "Last", kPlanType)}));
  change(busy, "Later", north);
  QTRY_COMPARE(recorder.lines.size(), 5);
}

void StoreEventsTest::ReportsSharesToTheirRecipients() {
  CRecorder recorder(bob_, {"root"});
  QCOMPARE(ann_.Share(ann_.Plan("Gate A"), "2"), QString());
  QTRY_COMPARE(recorder.lines.size(), 1);
  const std::string shared = bob_.Group("-2", "Shared");
  QCOMPARE(recorder.lines, QStringList{Line("root", kAdded, shared, kGroupType)});
  recorder.Watch(kGroupType, shared);
  QCOMPARE(ann_.Share(ann_.Plan("Gate B"), "2,3"), QString());
  QTRY_COMPARE(recorder.lines.size(), 2);
  QVERIFY(recorder.lines.last().startsWith(QString::fromStdString(shared) + ":3:"));
}

void StoreEventsTest::ReadsAllAgainAfterAGap() {
  CRecorder recorder(bob_, {"root"});
  fixture_->RunPastTheStore("UPDATE plan_group SET name = 'Renamed unseen' WHERE name = 'Gates'");
  fixture_->RunPastTheStore("UPDATE counter SET value = value + 3 WHERE name = 'seq'");
  QTRY_COMPARE(recorder.lines, QStringList{kWholeTree});
  QCOMPARE(bob_.Groups("-1"), QStringList{"Renamed unseen@-1"});
  QCOMPARE(ann_.RenameGroup(ann_.Group("-1", "Renamed unseen"), "Seen"), QString());
  QTRY_COMPARE(bob_.Groups("-1"), QStringList{"Seen@-1"});
  QCOMPARE(recorder.lines.size(), 1);  // and goes on change by change
}

// For a second the log can be read, and what it names cannot; nothing is written any more that would have it looked at.
// Who refreshes a tree reads it again; who watches one plan, as an editor does, has only the notice.
void StoreEventsTest::ReportsWhatARefreshBringsIn() {
  const std::string plan = ann_.Plan("Gate A");
  CRecorder other(bob_, {}, {plan});
  for (int round = 0; round < 5; ++round) {
    const std::string name = "Gate " + std::to_string(round);
    other.lines.clear();
    QCOMPARE(ann_.Update(TarnTest::ChangedPlan(plan, QString::fromStdString(name))), QString());
    bob_->ClearViewData();
    QTRY_COMPARE(other.lines, QStringList{Line(plan, kChanged, name, kPlanType)});
  }
}

void StoreEventsTest::ReadsAgainWhatItCouldNotRead() {
  if (CStoreFixture::OnPostgres()) {
    QSKIP("Reaches into the store's file.");
  }
  QCOMPARE(bob_.Groups("-1"), QStringList{"Gates@-1"});
  const QDateTime readable = QDateTime::currentDateTimeUtc().addSecs(1);
  for (const QString& statement :
       {QString("ALTER TABLE plan_group RENAME TO kept"),
        QString("CREATE VIEW plan_group AS SELECT * FROM kept WHERE julianday('now') > julianday('%1')"
                " OR abs(code - code - 9223372036854775807 - 1) = 0")
            .arg(readable.toString("yyyy-MM-dd HH:mm:ss.zzz")),
        QString("UPDATE kept SET name = 'Doors' WHERE name = 'Gates'"),
        QString("INSERT INTO change_log SELECT value + 1, 'elsewhere', 1, (SELECT code FROM kept WHERE name = 'Doors')"
                " FROM counter WHERE name = 'seq'"),
        QString("UPDATE counter SET value = value + 1 WHERE name = 'seq'")}) {
    fixture_->RunPastTheStore(statement);
  }
  QTRY_COMPARE(bob_.Groups("-1"), QStringList{"Doors@-1"});
}

void StoreEventsTest::ForgetsWhatWasNotCommitted_data() {
  QTest::addColumn<QString>("table");
  QTest::newRow("half way") << "plan";
  QTest::newRow("at its end") << "change_log";
}

void StoreEventsTest::ForgetsWhatWasNotCommitted() {
  QFETCH(QString, table);
  const std::string gates = Gates();
  const bool postgres = CStoreFixture::OnPostgres(), at_end = table == "change_log";
  const QString when = at_end ? "CONSTRAINT TRIGGER refuse AFTER INSERT ON %1 DEFERRABLE INITIALLY DEFERRED"
                              : "TRIGGER refuse BEFORE INSERT ON %1";
  const QString refuse = postgres
                             ? "CREATE FUNCTION refuse() RETURNS trigger LANGUAGE plpgsql AS"
                               " $$ BEGIN RAISE EXCEPTION 'no room'; END $$; CREATE " +
                                   when + " FOR EACH ROW EXECUTE FUNCTION refuse()"
                             : "CREATE TRIGGER refuse BEFORE INSERT ON %1 BEGIN SELECT RAISE(ABORT, 'no room'); END";
  fixture_->RunPastTheStore(refuse.arg(table));
  const QString error = at_end ? ann_.RenameGroup(gates, "Doors") : ann_.Share(ann_.Plan("Gate A"), "2");
  QVERIFY2(error.contains("no room"), qPrintable(error));
  fixture_->RunPastTheStore((postgres ? "DROP TRIGGER refuse ON " : "DROP TRIGGER refuse -- ") + table);
  QCOMPARE(ann_.RenameGroup(ann_.Group("-2", "Ann's"), "Later"), QString());
  QCOMPARE(ann_.Groups("-1") + ann_.Groups("-2"), QStringList({"Gates@-1", "Later@-2"}));
  QVERIFY(ann_->LogIn({"bob"}).IsDone());
  QCOMPARE(ann_.Groups("-2"), QStringList{"Bob's@-2"});
}

void StoreEventsTest::ComesBackAfterALostConnection() {
  if (!CStoreFixture::OnPostgres()) {
    QSKIP("A file has no connection to lose.");
  }
  CRecorder recorder(ann_, {"root"});
  // Before the connection goes, and not in the change log: afterwards the store may have read all again already.
  fixture_->RunPastTheStore("UPDATE plan_group SET name = 'Changed meanwhile' WHERE parent_code = -1");
  QCOMPARE(ann_.Groups("-1"), QStringList{"Gates@-1"});
  fixture_->RunPastTheStore(
      "SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE pid <> pg_backend_pid()"
      " AND datname = current_database()");
  QTRY_COMPARE(recorder.lines, QStringList{kWholeTree});
  QCOMPARE(ann_.Groups("-1"), QStringList{"Changed meanwhile@-1"});
  QCOMPARE(ann_.AddPlan("-1", "Works again"), QString());
}

void StoreEventsTest::RaisesTheTreeEventAtLogIn() {
  CRecorder recorder(ann_, {"root"});
  QVERIFY(!ann_->LogIn({"stranger"}).IsDone());
  QVERIFY(ann_->LogIn({"bob"}).IsDone());
  ann_->ClearViewData();
  QCOMPARE(recorder.lines, QStringList());  // never from within the call
  QTRY_COMPARE(recorder.lines, QStringList{kWholeTree});
  QTRY_VERIFY(ann_->IsViewResourceDownFinish());
  QCOMPARE(ann_.Groups("-2"), QStringList{"Bob's@-2"});
  // What a client does for the new user comes before that user's tree, from whichever thread the log-in is made.
  QStringList before;
  const auto log_in = [&] {
    const auto note = [&] { before = recorder.lines + QStringList(QThread::currentThread()->objectName()); };
    ann_->LogIn({"ann"}, {[] { return true; }, note});
  };
  QThread::currentThread()->setObjectName("the GUI's");
  const std::unique_ptr<QThread> other(QThread::create(log_in));
  other->start();
  QVERIFY(other->wait());
  QCOMPARE(before, QStringList());
  QTRY_COMPARE(recorder.lines, QStringList({kWholeTree, kWholeTree}));
  QCOMPARE(before, QStringList({kWholeTree, "the GUI's"}));
}

void StoreEventsTest::ToleratesRemovalWhileItReports() {
  const std::string gates = Gates();
  auto first = std::make_unique<CRecorder>(bob_, std::vector<std::string>{gates, gates});  // twice is once
  auto second = std::make_unique<CRecorder>(bob_, std::vector<std::string>{gates});
  first->then = [&] { second.reset(); };  // called as the second of the two, it would be gone
  QCOMPARE(ann_.RenameGroup(gates, "One"), QString());
  QTRY_COMPARE(first->lines.size(), 1);
  first->then = [&] { first->Unwatch(kGroupType, gates); };
  QCOMPARE(ann_.RenameGroup(gates, "Two"), QString());
  QCOMPARE(ann_.AddPlan(gates, "Three"), QString());
  QTRY_COMPARE(first->lines.size(), 2);
  QTRY_COMPARE(bob_.Plans(gates).size(), 2);
  QCoreApplication::processEvents();
  QCOMPARE(first->lines.size(), 2);
}

void StoreEventsTest::AnnouncesChildrenUnderLoadAll() {
  fixture_->options.switch_overrides = {{"load_all", 1}};
  const std::string gates = Gates(), north = North();
  CRecorder recorder(ann_, {"root", gates, north});
  QCOMPARE(recorder.lines, QStringList());
  QTRY_COMPARE(recorder.lines,
               (QStringList{Line(gates, kAdded, north, kGroupType), Line(gates, kAdded, ann_.Plan("Gate A"), kPlanType),
                            Line(north, kAdded, ann_.Plan("Gate B"), kPlanType)}));

  // Thousands of announcements leave the event loop room.
  int turns = 0;
  QTimer ticker;
  ticker.start(0);
  connect(&ticker, &QTimer::timeout, this, [&turns] { ++turns; });
  recorder.then = [] {
    QElapsedTimer work;
    work.start();
    while (work.nsecsElapsed() < 100000) {
    }
  };
  recorder.lines.clear();
  for (int round = 0; round < 1000; ++round) {
    recorder.Watch(kGroupType, gates);
  }
  QTRY_COMPARE(recorder.lines.size(), 2000);
  QVERIFY2(turns >= 20, qPrintable(QString::number(turns)));
}

QTEST_GUILESS_MAIN(StoreEventsTest)
#include "store_events_test.moc"
