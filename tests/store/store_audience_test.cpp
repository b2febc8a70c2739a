#include <QtTest>

#include "LyraPluginManager/error_kind.h"
#include "TarnHost/store_care.h"
#include "notice_recorder.h"

using namespace StoreTest;
using TarnHost::StoreCare;

namespace {

/// "North", below "Gates", is limited to the guards: bob. It has a timed plan. Ann may configure the site.
TarnHost::PlanSite LimitedSite() {
  auto site = SmallSite();
  site.users[0].rights.push_back(8);
  site.user_groups = {{"Guards", {1}}, {"Visitors", {}}};
  site.groups[1].audience = {0};
  site.plans[1].auto_run = true;
  site.plans[1].begin_time = "08:00:00";
  site.plans[1].end_time = "09:00:00";
  site.switches = {{"timed_play", 1}};
  return site;
}

QString Inside(const CClient& client, const std::string& group) {
  view::CountBelowGroupResponse response;
  if (!client->CountBelowGroup({group}, response)) {
    return QString::fromStdString("!" + response.error_info);
  }
  return QString("%1 groups, %2 plans").arg(response.groups).arg(response.plans);
}

}  // namespace

/// Who sees a public group that is limited to user groups, and what is below it, and what the others notice.
class StoreAudienceTest : public CStoreTest {
  Q_OBJECT
 private Q_SLOTS:
  void init();
  void cleanup();
  void IsSeenByItsAudience_data();
  void IsSeenByItsAudience();
  void IsNotThereForOthers();
  void GoesWithNoUnseenGroup();
  void SaysNothingOfWhatIsNotSeen();
  void MovesInAndOut();
  void FollowsChangesOfLimits();
  void KeepsItsLimitWhileItIsDeleted();
  void IsLimitedByName();

 private:
  std::string Gates() const { return ann_.Group("-1", "Gates"); }
  std::string North() const { return ann_.Group(Gates(), "North"); }
  QString Limit(const QString& group, const QStringList& user_groups) const {
    QString said, error;
    return StoreCare::LimitGroup(fixture_->Url(), group, user_groups, &said, &error) ? said : "!" + error;
  }
  QString Fill(const QString& user_group, const QStringList& users) const {
    QString said, error;
    return StoreCare::FillUserGroup(fixture_->Url(), user_group, users, &said, &error) ? said : "!" + error;
  }

  CClient cid_{nullptr};
};

void StoreAudienceTest::init() {
  CStoreTest::init();
  fixture_->options.first_content = LimitedSite;
  cid_ = CClient(fixture_.get(), "cid");
}

void StoreAudienceTest::cleanup() {
  cid_.Leave();
  CStoreTest::cleanup();
}

void StoreAudienceTest::IsSeenByItsAudience_data() {
  QTest::addColumn<bool>("sees");
  QTest::newRow("ann") << true;  // may configure the site
  QTest::newRow("bob") << true;
  QTest::newRow("cid") << false;
  QTest::newRow("dora") << false;
}

void StoreAudienceTest::IsSeenByItsAudience() {
  QFETCH(bool, sees);
  const CClient client(fixture_.get(), QTest::currentDataTag());
  const std::string gates = Gates(), north = North(), gate_b = ann_.Plan("Gate B");
  const auto seen = [sees](const QStringList& rows) { return sees ? rows : QStringList(); };
  QCOMPARE(client.Groups("-1"), QStringList{"Gates@-1"});
  QCOMPARE(client.Groups(gates), seen({"North@" + QString::fromStdString(gates)}));
  QCOMPARE(client.Groups(north).filter("!").isEmpty(), sees);
  QCOMPARE(client.Plans(north), sees ? ann_.Plans(north) : QStringList{"!" + client.DeleteGroup(north)});
  QCOMPARE(client.Search("gate b", 0), seen({"Gate B@North"}));
  QCOMPARE(client.Found("lane", 0).filter("North").size(), seen({"Gate B"}).size());
  QCOMPARE(client.Plan("Gate B"), sees ? gate_b : std::string());
  QCOMPARE(client.Detail(gate_b).name, std::string(sees ? "Gate B" : ""));
  const auto timed = client.Detail("", 1);
  QCOMPARE(QString::fromStdString(timed.name + timed.error_info), QString(sees ? "Gate B" : "NoAutoRunPlan"));
  QCOMPARE(Inside(client, gates), QString(sees ? "1 groups, 2 plans" : "0 groups, 1 plans"));
  QCOMPARE(Inside(client, north).startsWith('!'), !sees);
  QCOMPARE(client.SetDefaultView(gate_b, kPlanType).isEmpty(), sees);
  QCOMPARE(client.Groups("-4").size() + client.Plans("-1").size(), 2);
}

// As if it had been deleted: not even that it is there is said.
void StoreAudienceTest::IsNotThereForOthers() {
  const std::string north = North(), plan = ann_.Plan("Gate B");
  QCOMPARE(Limit("Gates/North", {"Visitors"}), QString("Group \"North\" (100002) is limited to: Visitors."));
  QTRY_COMPARE(bob_.Plan("Gate B"), std::string());
  QStringList answers = AnswersToAStranger(bob_, ann_, north, plan, bob_.Plan("Gate A"));
  answers << Inside(bob_, north);
  for (const QString& answer : qAsConst(answers)) {
    QVERIFY2(answer.contains("does not exist"), qPrintable(answer));
  }
  QCOMPARE(ann_.Plans(north).size(), 1);
}

void StoreAudienceTest::GoesWithNoUnseenGroup() {
  const CClient dora(fixture_.get(), "dora");
  QVERIFY(dora.DeleteGroup(Gates()).contains("more in it than you may see"));
  fixture_->options.switch_overrides = {{"delete_with_children", 0}};
  QVERIFY(CClient(fixture_.get(), "dora").DeleteGroup(Gates()).contains("more in it than you may see"));
  QCOMPARE(ann_.Plans(North()).size(), 1);
  view::DeletePlanGroupResponse deleted;
  QVERIFY(ann_->DeletePlanGroup({Gates(), "Gates", 0}, deleted));
  QVERIFY(deleted.deleted_groups == 1 && deleted.deleted_plans == 2 && deleted.restorable_seconds > 0);
}

void StoreAudienceTest::SaysNothingOfWhatIsNotSeen() {
  fixture_->options.switch_overrides = {{"load_all", 1}};
  const std::string gates = Gates(), north = North(), plan = ann_.Plan("Gate B");
  CRecorder in(bob_, {"root", north}, {plan}), out(cid_, {"root", gates, north}, {plan});
  QTRY_COMPARE(out.lines,
               QStringList{Line(gates, kAdded, cid_.Plan("Gate A"), kPlanType)});  // of both kinds, but for it
  std::string inner;
  QCOMPARE(ann_.AddGroup(north, "Inner", &inner), QString());
  QCOMPARE(ann_.Update(TarnTest::ChangedPlan(plan, "Renamed", inner)), QString());
  QTRY_VERIFY(in.lines.contains(Line(north, kAdded, inner, kGroupType)));
  QTRY_VERIFY(in.lines.contains(Line(plan, kChanged, "Renamed", kPlanType)));
  QCOMPARE(ann_.DeleteGroup(north), QString());
  QCOMPARE(ann_.RenameGroup(gates, "Last"), QString());
  QTRY_COMPARE(out.lines.size(), 2);
  QCOMPARE(out.lines.last(), Line(gates, kChanged, "Last", kGroupType));
}

void StoreAudienceTest::MovesInAndOut() {
  const std::string gates = Gates(), north = North(), plan = ann_.Plan("Gate A");
  CRecorder in(bob_, {gates, north}), out(cid_, {gates, north}, {plan});
  QCOMPARE(ann_.Update(TarnTest::ChangedPlan(plan, "Gate A", north)), QString());
  QTRY_COMPARE(in.lines, QStringList({Line(gates, kRemoved, plan, kPlanType), Line(north, kAdded, plan, kPlanType)}));
  QTRY_COMPARE(out.lines, QStringList{Line(gates, kRemoved, plan, kPlanType)});
  QVERIFY(!cid_.Detail(plan).error_info.empty() && cid_.Plans(gates).isEmpty());
  QCOMPARE(ann_.Update(TarnTest::ChangedPlan(plan, "Gate A", gates)), QString());
  QTRY_COMPARE(out.lines.mid(1), QStringList{Line(gates, kAdded, plan, kPlanType)});
  QCOMPARE(cid_.Detail(plan).name, std::string("Gate A"));
}

void StoreAudienceTest::FollowsChangesOfLimits() {
  const std::string gates = Gates(), north = North();
  CRecorder bobs(bob_, {"root", gates}), cids(cid_, {"root", gates}), anns(ann_, {"root", gates});
  const auto concerns = [&](CRecorder& who, CRecorder& other) {
    const bool heard = QTest::qWaitFor([&] { return who.lines == QStringList{kWholeTree}; });
    who.lines.clear();
    return heard && other.lines.isEmpty() && anns.lines.isEmpty();
  };
  QCOMPARE(Limit(QString::fromStdString(north), {}), QString("Group \"North\" (100002) is open to all users."));
  QVERIFY(concerns(cids, bobs));
  QCOMPARE(cid_.Plans(north), ann_.Plans(north));
  QCOMPARE(Limit("Gates/North", {"Guards", "Visitors"}),
           QString("Group \"North\" (100002) is limited to: Guards, Visitors."));
  QVERIFY(concerns(cids, bobs));
  QVERIFY(cid_.Plans(north).value(0).startsWith('!'));
  QCOMPARE(Fill("Visitors", {"cid", "eve"}), QString("User group \"Visitors\" has: cid, eve."));
  QVERIFY(concerns(cids, bobs));
  QCOMPARE(cid_.Plans(north).size(), 1);
  QCOMPARE(Fill("Guards", {}), QString("User group \"Guards\" has no members."));
  QVERIFY(concerns(bobs, cids));
  QCOMPARE(bob_.Groups(gates), QStringList());
  // What is above counts, too, however open the group itself is.
  QCOMPARE(Fill("Keepers", {"bob"}), QString("User group \"Keepers\" has: bob."));
  QCOMPARE(Limit("Gates", {"Keepers"}), QString("Group \"Gates\" (100001) is limited to: Keepers."));
  QVERIFY(concerns(cids, bobs));
  QVERIFY(cid_.Groups("-1").isEmpty() && cid_.Plans(north).value(0).startsWith('!'));
  ann_.Leave();
  cid_.Leave();  // and so it is found by who comes later
  QVERIFY(cid_.Groups("-1").isEmpty() && cid_.Search("gate", 0).isEmpty());
}

void StoreAudienceTest::KeepsItsLimitWhileItIsDeleted() {
  const std::string gates = Gates(), north = North(), plan = ann_.Plan("Gate B");
  for (const std::string& deleted : {north, gates}) {
    QCOMPARE(ann_.DeleteGroup(deleted), QString());
    QTRY_VERIFY(cid_.Groups(gates).isEmpty() || cid_.Groups("-1").isEmpty());
    QVERIFY(bob_.Detail(plan).error_info.find("deleted by ann") != std::string::npos);
    QVERIFY(cid_.Detail(plan).error_info.find("does not exist") != std::string::npos);
    int32_t kind = 0;
    QVERIFY(!cid_.RestoreGroup(north, &kind).isEmpty());
    QCOMPARE(kind, int32_t(view::Gone));
    QCOMPARE(ann_.RestoreGroup(deleted), QString());
    QTRY_COMPARE(bob_.Plans(north).size(), 1);
    QTRY_COMPARE(cid_.Groups("-1").size(), 1);
    QVERIFY(cid_.Groups(gates).isEmpty() && cid_.Plans(north).value(0).startsWith('!'));
  }
}

void StoreAudienceTest::IsLimitedByName() {
  const std::string gates = Gates();
  QCOMPARE(ann_.AddGroup("-1", "Twin"), QString());
  QCOMPARE(ann_.AddGroup("-1", "Twin"), QString());
  const auto refusal = [this](const QString& group, const QStringList& user_groups) {
    return Limit(group, user_groups).section(';', 0, 0);
  };
  QCOMPARE(refusal("North", {}), QString("!There is no public group \"North\"."));  // that is not its path
  QCOMPARE(refusal("Ann's", {}), QString("!There is no public group \"Ann's\"."));
  QCOMPARE(refusal("Twin", {"Guards"}), QString("!There are several groups \"Twin\""));
  QCOMPARE(refusal("Gates", {"Guards", "Nurses"}), QString("!There is no user group \"Nurses\"."));
  QCOMPARE(Fill("Guards", {"bob", "zoe"}), QString("!There is no user \"zoe\"."));
  for (const char* name : {"a/b", "a,b", "a=b"}) {
    QVERIFY(Fill(name, {}).startsWith("!The name "));
  }
  QString said, error;
  QVERIFY(StoreCare::LimitGroup(fixture_->Url(), "Gates", std::nullopt, &said, &error));
  QCOMPARE(said, QString("Group \"Gates\" (100001) is open to all users."));
  QVERIFY(StoreCare::FillUserGroup(fixture_->Url(), "Guards", std::nullopt, &said, &error));
  QCOMPARE(said, QString("User group \"Guards\" has: bob."));
  const auto seq = [this] { return fixture_->ReadPastTheStore("SELECT value FROM counter WHERE name = 'seq'"); };
  const QString before = seq();
  Fill("Guards", {"bob"});
  Limit("Gates/North", {"Guards"});
  QCOMPARE(seq(), before);  // what is set already is no change
  QVERIFY(!StoreCare::FillUserGroup(fixture_->Url(), "Nurses", std::nullopt, &said, &error));
  QCOMPARE(ann_.Groups("-1").size(), 3);
}

QTEST_GUILESS_MAIN(StoreAudienceTest)
#include "store_audience_test.moc"
