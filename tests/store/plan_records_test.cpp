#include <QBuffer>
#include <QImage>
#include <QRandomGenerator>
#include <QtTest>

#include "store_fixture.h"

using namespace StoreTest;
using TarnTest::NewPlan;

namespace {

QDateTime At(const QString& time) {
  return {QDate(2026, 3, 5), QTime::fromString(time, "HH:mm:ss")};
}

// Noise, which no format makes small.
std::string Picture(int width, int height) {
  QImage picture(width, height, QImage::Format_RGB32);
  QRandomGenerator random(1);
  for (int y = 0; y < height; ++y) {
    random.fillRange(reinterpret_cast<quint32*>(picture.scanLine(y)), width);
  }
  QBuffer bytes;
  bytes.open(QIODevice::WriteOnly);
  picture.save(&bytes, "PNG");
  return bytes.data().toStdString();
}

view::AddPlanRequest TimedPlan(const char* parent, const char* name, const char* begin, const char* end) {
  view::AddPlanRequest request = NewPlan(name, parent);
  request.auto_play = true;
  request.begin_time = begin;
  request.end_time = end;
  return request;
}

}  // namespace

/// Plans as they are stored, changed, moved and found again.
class PlanRecordsTest : public CStoreTest {
  Q_OBJECT
 private Q_SLOTS:
  void ListsWhatTheUserSees();
  void ShrinksLargeThumbnails();
  void KeepsAllOfAPlan();
  void UpdatesByRevision();
  void MovesPlans();
  void Searches();
  void FindsPlansByTheirCameras();
  void FollowsTheNamesOfCameras();
  void FindsTheAutomaticPlan_data();
  void FindsTheAutomaticPlan();
  void KeepsADefaultViewPerUser();
};

void PlanRecordsTest::ListsWhatTheUserSees() {
  const QString gates = QString::fromStdString(ann_.Group("-1", "Gates"));
  QCOMPARE(ann_.Groups("root"), QStringList{"All plans@"});
  QCOMPARE(ann_.Groups("-1") + ann_.Groups("-2") + ann_.Groups("-4"),
           QStringList({"Gates@-1", "Ann's@-2", "Common@-4"}));
  QCOMPARE(ann_.Plans("-1"), QStringList{"Top@-1"});
  QCOMPARE(ann_.Groups(gates) + ann_.Plans(gates), QStringList({"North@" + gates, "Gate A@" + gates}));

  view::GetPlansInGroupResponse plans;
  QVERIFY(ann_->GetPlansInGroup({gates.toStdString(), 1}, plans));  // the node type of a request decides nothing
  QVERIFY(plans.plans.first().split_type == 2 && plans.plans.first().page_count == 2);
  for (const char* no_code :
       {"", "-3", "0", "-7", "99", "00100001", "+100001", " 100001", "100001x", "4295067297", "root "}) {
    QVERIFY2(ann_.Groups(no_code).value(0).startsWith("!") && ann_.Plans(no_code).value(0).startsWith("!"), no_code);
    QVERIFY2(!ann_.Detail(no_code).error_info.empty(), no_code);
  }
}

void PlanRecordsTest::ShrinksLargeThumbnails() {
  auto request = ann_.Unchanged(ann_.Plan("Gate A"));
  const auto kept = [&](const std::string& thumbnail) {
    request.thumbnail = thumbnail;
    request.revision = 0;
    const QString error = ann_.Update(request);
    return error.isEmpty() ? ann_.Detail(request.plan_index_code).thumbnail : error.toStdString();
  };
  const std::string small = Picture(200, 100);
  QVERIFY(kept(small) == small);
  for (const QSize size : {QSize(2000, 30), QSize(1000, 500)}) {  // too wide, too many bytes
    const std::string shrunk = kept(Picture(size.width(), size.height()));
    const QImage picture = QImage::fromData(QByteArray::fromStdString(shrunk), "PNG");
    QVERIFY(shrunk.size() <= 256 * 1024 && !picture.isNull() && picture.width() <= 1024);
    QVERIFY(qAbs(picture.width() * size.height() - picture.height() * size.width()) <= size.width());  // same shape
  }
  const std::string before = kept(small);
  QVERIFY(kept(std::string(300 * 1024, 'x')) == before);  // no picture at all
}

void PlanRecordsTest::KeepsAllOfAPlan() {
  fixture_->options.now = [] { return At("12:34:56"); };
  view::AddPlanRequest request = TimedPlan("", "Whole", "22:00:00", "02:00:00");
  request.parent_index_code = ann_.Group("-2", "Ann's");
  request.index_type = 0;  // the place decides: an own plan
  request.thumbnail = std::string("\x89PNG\0\xff", 6);
  request.pages = {TarnTest::Page(1, 8, {TarnTest::Window(1, "1001"), TarnTest::Window(2, "1002", 1, 1, 2)},
                                  "\xF0\x9F\x9A\xA8 'page'", 90),
                   CameraPage(2, 4, {})};
  QCOMPARE(ann_.AddPlan(request), QString());
  request.begin_time = "24:00:00";
  QVERIFY(!ann_.AddPlan(request).isEmpty());
  ann_.Leave();
  const auto detail = ann_.Detail(ann_.Plan("Whole"));
  QVERIFY(detail.type == 1 && detail.group_name == "Ann's" && detail.auto_run);
  QCOMPARE(detail.start_time + '-' + detail.end_time, std::string("22:00:00-02:00:00"));
  QVERIFY(detail.thumbnail == request.thumbnail);
  QCOMPARE(detail.creator + ' ' + detail.creation_time, std::string("ann 2026-03-05 12:34:56"));
  QCOMPARE(TarnTest::Words(detail.pages), TarnTest::Words(request.pages));
}

void PlanRecordsTest::UpdatesByRevision() {
  fixture_->options.now = [] { return At("08:00:00"); };
  const std::string plan = ann_.Plan("Gate A");
  const auto opened = ann_.Unchanged(plan);
  auto update = bob_.Unchanged(plan);
  update.plan_name = "Gate A2";
  update.pages.pop_back();
  QCOMPARE(bob_.Update(update), QString());
  const QString late = ann_.Update(opened);
  QVERIFY2(late.contains("bob") && late.contains("2026-03-05 08:00:00"), qPrintable(late));
  QCOMPARE(ann_.Detail(plan).name, std::string("Gate A2"));
  const auto changed = ann_.Detail(plan);
  QCOMPARE(changed.creator, std::string("ann"));  // of the site's making, not of the change
  QCOMPARE(changed.changed_by + ' ' + changed.changed_at, std::string("bob 2026-03-05 08:00:00"));
  update.revision = 0;  // an editor that does not check
  QCOMPARE(ann_.Update(update), QString());
  QCOMPARE(ann_.Detail(plan).revision, opened.revision + 2);
  QCOMPARE(ann_.DeletePlan(plan), QString());
  QVERIFY(bob_.Update(update).contains("deleted in the meantime"));
}

void PlanRecordsTest::MovesPlans() {
  const std::string gates = ann_.Group("-1", "Gates"), north = ann_.Group(gates, "North"), plan = ann_.Plan("Gate A");
  const auto move = [](const CClient& client, const std::string& code, const std::string& group) {
    auto update = client.Unchanged(code);
    update.parent_index_code = group;
    return client.Update(update);
  };
  QCOMPARE(move(ann_, plan, north), QString());
  QVERIFY(ann_.Plans(north).size() == 2 && ann_.Plans(gates).isEmpty());
  QCOMPARE(move(ann_, plan, ""), QString());  // stays
  QCOMPARE(ann_.Detail(plan).group_index_code, north);
  QVERIFY(move(ann_, plan, "12345").contains("group does not exist"));
  QVERIFY(move(ann_, plan, "-2").contains("between public and own"));
  QCOMPARE(ann_.Plans(north).size(), 2);

  fixture_->options.switch_overrides = {{"move_public_private", 1}};
  QVERIFY(move(bob_, plan, "-2").contains("no right to delete"));  // he may add and edit
  QCOMPARE(move(bob_, bob_.Plan("Bob's gate"), north), QString());
  QTRY_COMPARE(ann_.Plans(north).size(), 3);
}

void PlanRecordsTest::Searches() {
  QCOMPARE(ann_.AddPlan("-1", QString::fromUtf8("\u00DCBERGANG Stra\u00DFe")), QString());
  const struct {
    const char* text;
    int scope;
    QStringList hits;
  } rows[] = {{"GATE", 0, {"Gate A@Gates", "Gate B@North"}},
              {"gate", 1, {"Ann's gate@Ann's"}},
              {"e a", 0, {"Gate A@Gates"}},
              {u8"\u00FCberg", 0, {QString::fromUtf8("\u00DCBERGANG Stra\u00DFe@All plans")}},
              {u8"u\u0308BERG", 0, {QString::fromUtf8("\u00DCBERGANG Stra\u00DFe@All plans")}},
              {"strasse", 0, {QString::fromUtf8("\u00DCBERGANG Stra\u00DFe@All plans")}},
              {"", 0, {}},
              {"%", 0, {}},
              {"_", 0, {}},
              {"'", 0, {}},
              {"no such", 0, {}}};
  for (const auto& row : rows) {
    QCOMPARE(ann_.Search(row.text, row.scope), row.hits);
  }
  QCOMPARE(ann_.Update(TarnTest::ChangedPlan(ann_.Plan("Gate A"), "Door")), QString());
  QCOMPARE(ann_.Search("gate", 0), QStringList{"Gate B@North"});
}

// By name first, then by camera; every plan once, with the first of its cameras that fits.
void PlanRecordsTest::FindsPlansByTheirCameras() {
  const view::PlanWindow dock = {1, 1, "7", "Gate 4 dock", 0, 0}, of_older_host = {2, 0, "7", "Gate 4 dock", 0, 0};
  const view::PlanWindow web_page = {3, 9, "7", "Gate page", 0, 0};
  const auto add = [&](const char* group, const char* name, std::list<view::PlanWindow> windows) {
    const std::string parent = ann_.Group("-1", group);
    QCOMPARE(ann_.AddPlan(NewPlan(name, parent.empty() ? "-2" : parent, {TarnTest::Page(1, 4, windows)})), QString());
  };
  add("Gates", "Docks", {of_older_host, {4, 1, "8", "Gate 5", 0, 0}});
  add("Gates", "Gate with its camera", {dock, dock});
  add("Gates", "No camera", {web_page});
  add("", "My docks", {dock});
  QCOMPARE(ann_.Found("gAtE", 0), QStringList({"Gates/Gate A", "Gates/North/Gate B", "Gates/Gate with its camera",
                                               "Gates/Docks (Gate 4 dock)"}));
  QCOMPARE(ann_.Found("gate", 1), QStringList({"Ann's/Ann's gate", "My docks (Gate 4 dock)"}));
  QCOMPARE(bob_.Found("dock", 1), QStringList());  // others' own plans neither by name nor by camera
  QCOMPARE(ann_.Found("gate 5", 0), QStringList("Gates/Docks (Gate 5)"));

  // As it is stored from then on, also for the other client, and gone with the plan.
  auto request = ann_.Unchanged(ann_.Plan("Docks"));
  request.pages = {TarnTest::Page(1, 1, {{1, 1, "9", "Quay", 0, 0}})};
  QCOMPARE(ann_.Update(request), QString());
  QCOMPARE(ann_.Found("gate 5", 0) + ann_.Found("quay", 0), QStringList("Gates/Docks (Quay)"));
  QTRY_COMPARE(bob_.Found("quay", 0), QStringList("Gates/Docks (Quay)"));
  QCOMPARE(bob_.Found("gate 5", 0), QStringList());
  // However the windows are written: with marks in the name, and with fields of a newer program between ours.
  request = ann_.Unchanged(ann_.Plan("Docks"));
  request.pages.front().windows = {{1, 1, "9", "Quay \"7\"", 0, 0}, {2, 1, "10", "Pier", 0, 0}};
  request.pages.front().windows.back().extra = R"({"crop":{"code":"x"},"label":"Pier 2"})";
  QCOMPARE(ann_.Update(request), QString());
  QTRY_COMPARE(bob_.Found("quay \"7", 0), QStringList("Gates/Docks (Quay \"7\")"));
  QCOMPARE(bob_.Found("pier", 0), QStringList("Gates/Docks (Pier)"));
  const std::string docks = ann_.Plan("Docks");
  QCOMPARE(ann_.DeletePlan(docks), QString());
  QCOMPARE(ann_.Found("quay", 0), QStringList());
  QCOMPARE(ann_.RestorePlan(docks), QString());
  QCOMPARE(ann_.Found("quay", 0).size(), 1);  // with its cameras
}

// Windows keep the name of the day they were saved; the site may have another one by now.
void PlanRecordsTest::FollowsTheNamesOfCameras() {
  const std::string plan = ann_.Plan("Top");
  auto request = ann_.Unchanged(plan);
  const std::string camera = request.pages.front().windows.front().resource_code;
  request.pages = {TarnTest::Page(1, 1, {{1, 1, camera, "Old barrier", 0, 0}})};
  QCOMPARE(ann_.Update(request), QString());
  QCOMPARE(ann_.Found("barrier", 0), QStringList("Top (Old barrier)"));
  QVERIFY(ann_.Found("LANE", 0).contains("Top (Lane camera)"));
  fixture_->RunPastTheStore("UPDATE camera SET name = 'New barrier' WHERE id = " + QString::fromStdString(camera));
  ann_->ClearViewData();
  QTRY_VERIFY(ann_.Found("new b", 0).contains("Top (New barrier)"));
  QVERIFY(!ann_.Found("lane", 0).contains("Top (Lane camera)"));
  QVERIFY(ann_.Found("barrier", 0).contains("Top (Old barrier)"));  // what its window says comes first
}

void PlanRecordsTest::FindsTheAutomaticPlan_data() {
  QTest::addColumn<QString>("now");
  QTest::addColumn<QString>("plan");
  const auto add = [](const char* name, const char* now, const char* plan) { QTest::newRow(name) << now << plan; };
  add("the one that is due", "09:30:00", "Morning");
  add("due from its first second", "09:00:00", "Morning");
  add("no longer due at its end", "10:00:00", "Evening");
  add("of two the lower code", "18:00:00", "Evening");
  add("of tomorrow", "23:00:00", "Morning");
}

void PlanRecordsTest::FindsTheAutomaticPlan() {
  QFETCH(QString, now);
  QFETCH(QString, plan);
  fixture_->options.now = [now] { return At(now); };
  auto off = TimedPlan("-1", "Switched off", "00:00:00", "23:59:59");
  off.auto_play = false;
  for (const auto& never : {TimedPlan("-1", "Over midnight", "22:00:00", "11:00:00"), off,
                            TimedPlan("-1", "Empty span", "09:10:00", "09:10:00")}) {
    QCOMPARE(ann_.AddPlan(never), QString());
  }
  QCOMPARE(ann_.Detail("123", 1).error_info, std::string("NoAutoRunPlan"));
  for (const auto& timed :
       {TimedPlan("-2", "Morning", "09:00:00", "10:00:00"), TimedPlan("-1", "Evening", "17:00:00", "19:00:00"),
        TimedPlan("-1", "Evening too", "17:00:00", "19:00:00")}) {
    QCOMPARE(ann_.AddPlan(timed), QString());
  }
  QCOMPARE(ann_.Detail("123", 1).name, plan.toStdString());
  QVERIFY(ann_->LogIn({"cid"}).IsDone());  // somebody else's own plan starts on no other screen
  QCOMPARE(ann_.Detail("123", 1).name, std::string("Evening"));
}

void PlanRecordsTest::KeepsADefaultViewPerUser() {
  const std::string none = "-3", gates = ann_.Group("-1", "Gates"), gate_b = ann_.Plan("Gate B");
  QCOMPARE(ann_.DefaultView(), none);
  QCOMPARE(ann_.SetDefaultView(gate_b, kPlanType), QString());
  QVERIFY(!ann_.SetDefaultView(gate_b, kGroupType).isEmpty());
  ann_.Leave();
  QCOMPARE(ann_.DefaultView(), gate_b);
  QCOMPARE(bob_.DefaultView(), none);
  QCOMPARE(bob_.SetDefaultView(bob_.Group(gates, "North"), kGroupType), QString());
  QCOMPARE(ann_.DeleteGroup(gates), QString());  // with both
  QCOMPARE(ann_.DefaultView(), none);
  QTRY_COMPARE(bob_.DefaultView(), none);
  QCOMPARE(ann_.SetDefaultView(ann_.Plan("Top"), kPlanType), QString());
  QCOMPARE(ann_.SetDefaultView(none, 0), QString());
  QCOMPARE(ann_.DefaultView(), none);

  // Taken back to her own plans it is there, but not for him.
  QCOMPARE(bob_.SetDefaultView(bob_.Plan("Top"), kPlanType), QString());
  ann_.Leave();
  fixture_->options.switch_overrides = {{"move_public_private", 1}};
  QCOMPARE(ann_.Update(TarnTest::ChangedPlan(ann_.Plan("Top"), "Top", "-2")), QString());
  QTRY_COMPARE(bob_.DefaultView(), none);
}

QTEST_GUILESS_MAIN(PlanRecordsTest)
#include "plan_records_test.moc"
