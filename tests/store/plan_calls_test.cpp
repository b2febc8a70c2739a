#include <QBuffer>
#include <QImage>
#include <QRandomGenerator>
#include <QtTest>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "TarnConfiguration/view_config_interface.h"
#include "store_fixture.h"

using namespace StoreTest;

namespace {

constexpr int kPlanType = ResourceData::RT_VIEW, kGroupType = ResourceData::RT_VIEW_GROUP;

QDateTime At(const char* time) {
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

}  // namespace

class PlanCallsTest : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void ListsWhatTheUserSees();
  void KeepsNamesAsTheyAre_data();
  void KeepsNamesAsTheyAre();
  void RefusesNames_data();
  void RefusesNames();
  void EnforcesRights_data();
  void EnforcesRights();
  void KeepsOwnPlansFromOthers();
  void LimitsNesting();
  void BearsRowsChangedPastTheProgram();
  void DeletesSubtreesOrRefuses();
  void ShrinksLargeThumbnails();
  void KeepsAllOfAPlan();
  void UpdatesByRevision();
  void MovesPlans();
  void Searches();
  void FindsTheAutomaticPlan_data();
  void FindsTheAutomaticPlan();
  void KeepsADefaultViewPerUser();
  void SharesCopies();
  void AppliesSwitches();
  void WaitsForTheDownload();
  void ServesTheSingletons();
  void MakesTheDemoSite();
  void MakesAnEmptySite();
};

void PlanCallsTest::ListsWhatTheUserSees() {
  CStoreFixture fixture;
  const CClient ann(fixture.Open());
  view::GetPlanGroupsResponse root;
  QVERIFY(ann->GetPlanGroups({"root", 0}, root));
  QCOMPARE(root.groups.size(), 1);
  QCOMPARE(root.groups.first().name, std::string("All plans"));
  QCOMPARE(root.groups.first().parent_index_code, std::string());

  QCOMPARE(ann.Groups("-1"), QStringList{"Gates@-1"});
  QCOMPARE(ann.Groups("-2"), QStringList{"Ann's@-2"});
  QCOMPARE(ann.Groups("-4"), QStringList{"Common@-4"});
  QCOMPARE(ann.Plans("-1"), QStringList{"Top@-1"});
  const std::string gates = ann.Group("-1", "Gates");
  QCOMPARE(ann.Groups(gates), QStringList{"North@" + QString::fromStdString(gates)});
  QCOMPARE(ann.Plans(gates), QStringList{"Gate A@" + QString::fromStdString(gates)});

  view::GetPlansInGroupResponse plans;
  QVERIFY(ann->GetPlansInGroup({gates, 1}, plans));  // the node type of a request decides nothing
  QCOMPARE(plans.plans.first().split_type, 2);
  QCOMPARE(plans.plans.first().page_count, 2);
  for (const char* nobody : {"", "-3", "0", "-7", "99", "00100001", "100001x", "4294967297", "root "}) {
    QVERIFY2(ann.Groups(nobody).value(0).startsWith("!"), nobody);
    QVERIFY2(ann.Plans(nobody).value(0).startsWith("!"), nobody);
    QVERIFY2(!ann.Detail(nobody).error_info.empty(), nobody);
  }
}

void PlanCallsTest::KeepsNamesAsTheyAre_data() {
  QTest::addColumn<QString>("name");
  QTest::newRow("emoji") << QString::fromUtf8("Tor \U0001F6A8\U0001F468\u200D\U0001F692");
  QTest::newRow("right to left") << QString::fromUtf8("\u05E9\u05E2\u05E8 \u0627\u0644\u0628\u0648\u0627\u0628\u0629");
  QTest::newRow("quotes and SQL") << "O'Brien'; DROP TABLE plan; --";
  QTest::newRow("wildcards") << "100% _ sure";
  QTest::newRow("spaces around") << "  padded  ";
  QTest::newRow("placeholder") << "$1 @p {0}";
  QTest::newRow("longest") << QString(256, 'x');
  QTest::newRow("longest of two-unit characters") << QString::fromUtf8("\U0001F6A8").repeated(128);
}

void PlanCallsTest::KeepsNamesAsTheyAre() {
  QFETCH(QString, name);
  CStoreFixture fixture;
  {
    const CClient ann(fixture.Open());
    QCOMPARE(ann.AddGroup("-1", name.toStdString()), QString());
    QCOMPARE(ann.AddPlan("-2", name.toStdString()), QString());
    QVERIFY(ann.Groups("-1").contains(name + "@-1"));
  }
  const CClient again(fixture.Open());
  QVERIFY(again.Groups("-1").contains(name + "@-1"));
  QCOMPARE(again.Plans("-2"), QStringList{name + "@-2"});
  QCOMPARE(again.Detail(again->FindPlanByName(name)).name, name.toStdString());
}

void PlanCallsTest::RefusesNames_data() {
  QTest::addColumn<QByteArray>("name");
  QTest::newRow("empty") << QByteArray();
  QTest::newRow("blank") << QByteArray(" \t ");
  QTest::newRow("too long") << QByteArray(257, 'x');
  QTest::newRow("too long by half a character") << QString::fromUtf8("\U0001F6A8").repeated(128).append('x').toUtf8();
  for (const char c : QByteArray("\\/:*?\"<>|\n\t\x01\x7f")) {
    QTest::newRow(qPrintable(QString("character %1").arg(int(c)))) << QByteArray("a") + c + "b";
  }
  QTest::newRow("zero") << QByteArray("a\0b", 3);
  QTest::newRow("broken UTF-8") << QByteArray("a\xff\xc3");
}

void PlanCallsTest::RefusesNames() {
  QFETCH(QByteArray, name);
  CStoreFixture fixture;
  const CClient ann(fixture.Open());
  const QStringList groups = ann.Groups("-1");
  const std::string gates = ann.Group("-1", "Gates");
  auto update = ann.Unchanged(ann.Plan("Gate A"));
  update.plan_name = name.toStdString();
  const QStringList answers = {ann.AddGroup("-1", name.toStdString()), ann.AddPlan(gates, name.toStdString()),
                               ann.RenameGroup(gates, name.toStdString()), ann.Update(update)};
  for (const QString& answer : answers) {
    QVERIFY2(answer.startsWith("The name "), qPrintable(answer));
    QCOMPARE(answer, answers.first());
  }
  QCOMPARE(ann.Groups("-1"), groups);
  QVERIFY(ann.Plan("Gate A") == update.plan_index_code);
}

void PlanCallsTest::EnforcesRights_data() {
  QTest::addColumn<QString>("user");
  QTest::addColumn<bool>("add");
  QTest::addColumn<bool>("edit");
  QTest::addColumn<bool>("remove");
  QTest::newRow("ann") << "ann" << true << true << true;
  QTest::newRow("bob") << "bob" << true << true << false;
  QTest::newRow("cid") << "cid" << false << false << false;
  QTest::newRow("dora") << "dora" << false << false << true;
  QTest::newRow("eve") << "eve" << true << false << false;
  QTest::newRow("fred") << "fred" << false << true << false;
}

void PlanCallsTest::EnforcesRights() {
  QFETCH(QString, user);
  QFETCH(bool, add);
  QFETCH(bool, edit);
  QFETCH(bool, remove);
  CStoreFixture fixture;
  const CClient client(fixture.Open(user));
  QCOMPARE(client->CheckControlPermission(5), add);
  QCOMPARE(client->CheckControlPermission(6), edit);
  QCOMPARE(client->CheckControlPermission(7), remove);
  for (const char* root : {"-1", "-4"}) {
    QCOMPARE(client.AddGroup(root, "New").isEmpty(), add);
    QCOMPARE(client.AddPlan(root, "New").isEmpty(), add);
  }
  const std::string gates = client.Group("-1", "Gates");
  QCOMPARE(client.RenameGroup(gates, "Doors").isEmpty(), edit);
  QCOMPARE(client.Update(client.Unchanged(client.Plan("Gate A"))).isEmpty(), edit);
  QCOMPARE(client.DeletePlan(client.Plan("Gate A")).isEmpty(), remove);
  QCOMPARE(client.DeleteGroup(gates).isEmpty(), remove);
  // Of the own plans everybody is the master, whatever family the request claims.
  std::string own, plan;
  QCOMPARE(client.AddGroup("-2", "New", &own), QString());
  QCOMPARE(client.AddPlan(own, "My plan", &plan), QString());
  QCOMPARE(client.RenameGroup(own, "Newer"), QString());
  QCOMPARE(client.Update(client.Unchanged(plan)), QString());
  // A copy for somebody else is added in a tree that is not the user's own.
  for (const std::string& shared : {plan, client.Plan("Top")}) {
    const QString answer = client.Share(shared, user == "bob" ? "1" : "2");
    QVERIFY2(answer.isEmpty() == add && (add || answer == "You have no right to share plans."), qPrintable(answer));
  }
  QCOMPARE(client.DeleteGroup(own), QString());
}

void PlanCallsTest::KeepsOwnPlansFromOthers() {
  CStoreFixture fixture;
  const CClient ann(fixture.Open());
  const CClient bob(fixture.Open("bob"));
  const std::string group = bob.Group("-2", "Bob's");
  const std::string plan = bob.Plan("Bob's gate");
  const auto update = bob.Unchanged(plan);
  QCOMPARE(ann.Plan("Bob's gate"), std::string());
  QVERIFY(ann.Groups(group).value(0).startsWith("!"));
  QVERIFY(ann.Plans(group).value(0).startsWith("!"));
  const QStringList answers = {QString::fromStdString(ann.Detail(plan).error_info),
                               ann.AddGroup(group, "x"),
                               ann.AddPlan(group, "x"),
                               ann.RenameGroup(group, "x"),
                               ann.DeleteGroup(group),
                               ann.Update(update),
                               ann.DeletePlan(plan),
                               ann.Share(plan, "3"),
                               ann.SetDefaultView(plan, kPlanType)};
  for (const QString& answer : answers) {
    QVERIFY2(answer.contains("does not exist"), qPrintable(answer));  // not even that it is there is said
  }
  auto theft = ann.Unchanged(ann.Plan("Ann's gate"));
  theft.parent_index_code = group;
  QVERIFY(!ann.Update(theft).isEmpty());
  QCOMPARE(bob.Plans(group).size(), 1);
  QCOMPARE(ann.Search("gate", 1), QStringList{"Ann's gate@Ann's"});
}

void PlanCallsTest::LimitsNesting() {
  CStoreFixture fixture;
  const CClient ann(fixture.Open());
  std::string parent = "-2";
  for (int level = 2; level <= 6; ++level) {
    QCOMPARE(ann.AddGroup(parent, "Deeper", &parent), QString());
  }
  QVERIFY(ann.AddGroup(parent, "Too deep").contains("6 levels"));
  QCOMPARE(ann.AddPlan(parent, "Deep enough"), QString());
  QCOMPARE(ann.Groups(parent), QStringList());
}

void PlanCallsTest::BearsRowsChangedPastTheProgram() {
  CStoreFixture fixture;
  const CClient ann(fixture.Open()), bob(fixture.Open("bob"));
  const std::string gates = ann.Group("-1", "Gates"), north = ann.Group(gates, "North");
  const auto put_below = [&fixture](const std::string& group, const std::string& parent) {
    fixture.RunPastTheStore(
        QString::fromStdString("UPDATE plan_group SET parent_code = " + parent + " WHERE code = " + group));
  };
  // No one gets a notice of the change itself, but the next one of the program brings the row.
  put_below(north, "-1");
  QCOMPARE(ann.RenameGroup(north, "Moved"), QString());
  for (const CClient& client : {ann, bob}) {
    QTRY_COMPARE(client.Groups("-1"), QStringList({"Gates@-1", "Moved@-1"}));
    QCOMPARE(client.Groups(gates), QStringList());
    QCOMPARE(client.Plans(north).size(), 1);
  }
  // Below each other, then below itself: no writer hangs, no client falls.
  put_below(north, gates);
  put_below(gates, north);
  QVERIFY(ann.AddGroup(north, "x").contains("6 levels"));
  QCOMPARE(bob.RenameGroup(gates, "Round"), QString());
  QCOMPARE(bob.RenameGroup(north, "About"), QString());
  for (const CClient& client : {ann, bob}) {
    QTRY_COMPARE(client.Groups("-1"), QStringList());
    QVERIFY(client.Plans(gates).value(0).startsWith('!') && client.Plans(north).value(0).startsWith('!'));
  }
  // Put right, they come back with all below them.
  put_below(gates, "-1");
  QCOMPARE(ann.RenameGroup(gates, "Gates"), QString());
  for (const CClient& client : {ann, bob}) {
    QTRY_COMPARE(client.Groups("-1"), QStringList{"Gates@-1"});
    QTRY_COMPARE(client.Groups(gates), QStringList{"About@" + QString::fromStdString(gates)});
    QCOMPARE(client.Plans(gates).filter("Gate A@").size(), 1);
    QCOMPARE(client.Plans(north).filter("Gate B@").size(), 1);
  }
  put_below(gates, gates);
  QVERIFY(ann.AddGroup(gates, "x").contains("6 levels"));
  QCOMPARE(CClient(fixture.Open()).Groups("-1"), QStringList());
  QCOMPARE(ann.DeleteGroup(gates), QString());
  QVERIFY(ann.DeleteGroup(north).contains("deleted in the meantime"));  // it hung below the other
  QCOMPARE(ann.AddGroup("-1", "Works"), QString());
}

void PlanCallsTest::DeletesSubtreesOrRefuses() {
  CStoreFixture fixture;
  {
    const CClient ann(fixture.Open());
    const std::string gates = ann.Group("-1", "Gates");
    const std::string plan = ann.Plan("Gate B");
    QCOMPARE(ann.DeleteGroup(gates), QString());
    QCOMPARE(ann.Groups("-1"), QStringList());
    QVERIFY(!ann.Detail(plan).error_info.empty());
    QCOMPARE(ann.Search("gate", 0), QStringList());
    for (const QString& late : {ann.DeleteGroup(gates), ann.RenameGroup(gates, "x"), ann.AddPlan(gates, "x")}) {
      QVERIFY(late.contains("deleted in the meantime"));
    }
    // Codes of what is gone are not given again.
    std::string code;
    QCOMPARE(ann.AddGroup("-1", "New", &code), QString());
    QVERIFY(std::stoi(code) > std::stoi(plan));
  }
  fixture.options.switch_overrides = {{"delete_with_children", 0}};
  const CClient careful(fixture.Open());
  QVERIFY(careful.DeleteGroup(careful.Group("-2", "Ann's")).contains("not empty"));
  QCOMPARE(careful.DeleteGroup(careful.Group("-1", "New")), QString());
}

void PlanCallsTest::ShrinksLargeThumbnails() {
  CStoreFixture fixture;
  const CClient ann(fixture.Open());
  auto request = ann.Unchanged(ann.Plan("Gate A"));
  const auto kept = [&](const std::string& thumbnail) {
    request.thumbnail = thumbnail;
    request.revision = 0;
    const QString error = ann.Update(request);
    return error.isEmpty() ? ann.Detail(request.plan_index_code).thumbnail : error.toStdString();
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

void PlanCallsTest::KeepsAllOfAPlan() {
  CStoreFixture fixture;
  fixture.options.now = [] { return At("12:34:56"); };
  view::AddPlanRequest request;
  request.plan_name = "Whole";
  request.index_type = 0;  // the place decides: an own plan
  request.auto_play = true;
  request.begin_time = "22:00:00";
  request.end_time = "02:00:00";
  request.thumbnail = std::string("\x89PNG\0\xff", 6);
  request.pages = {CameraPage(1, 8, {"1001", "1002"}), CameraPage(2, 4, {})};
  request.pages.front().name = "\xF0\x9F\x9A\xA8 'page'";
  request.pages.front().dwell_seconds = 90;
  request.pages.front().windows.back().preset_no = 2;
  request.pages.front().windows.back().stream_type = 1;
  request.pages.front().windows.back().resource_name = "Yard";
  view::AddPlanResponse added;
  {
    const CClient ann(fixture.Open());
    request.parent_index_code = ann.Group("-2", "Ann's");
    QVERIFY(ann->AddPlan(request, added));
    request.begin_time = "24:00:00";
    QVERIFY(!ann->AddPlan(request, added));
  }
  const CClient again(fixture.Open());
  const auto detail = again.Detail(again.Plan("Whole"));
  QCOMPARE(detail.type, 1);
  QCOMPARE(detail.group_name, std::string("Ann's"));
  QVERIFY(detail.auto_run && detail.start_time == "22:00:00" && detail.end_time == "02:00:00");
  QVERIFY(detail.thumbnail == request.thumbnail);
  QCOMPARE(detail.creator, std::string("ann"));
  QCOMPARE(detail.creation_time, std::string("2026-03-05 12:34:56"));
  QCOMPARE(detail.pages.size(), size_t(2));
  const view::PlanPage& page = detail.pages.front();
  QVERIFY(page.name == request.pages.front().name && page.dwell_seconds == 90 && page.split_type == 8);
  const view::PlanWindow& window = page.windows.back();
  QVERIFY(window.window_no == 2 && window.content_kind == 1 && window.resource_code == "1002" &&
          window.resource_name == "Yard" && window.stream_type == 1 && window.preset_no == 2);
}

void PlanCallsTest::UpdatesByRevision() {
  CStoreFixture fixture;
  fixture.options.now = [] { return At("08:00:00"); };
  const CClient ann(fixture.Open());
  const CClient bob(fixture.Open("bob"));
  const std::string plan = ann.Plan("Gate A");
  const auto opened = ann.Unchanged(plan);
  auto update = bob.Unchanged(plan);
  update.plan_name = "Gate A2";
  update.pages.pop_back();
  QCOMPARE(bob.Update(update), QString());
  const QString late = ann.Update(opened);
  QVERIFY2(late.contains("bob") && late.contains("2026-03-05 08:00:00"), qPrintable(late));
  QCOMPARE(ann.Detail(plan).name, std::string("Gate A2"));
  QCOMPARE(ann.Detail(plan).creator, std::string("ann"));  // of the site's making, not of the change
  update = ann.Unchanged(plan);
  update.revision = 0;  // an editor that does not check
  QCOMPARE(ann.Update(update), QString());
  QCOMPARE(ann.Detail(plan).revision, opened.revision + 2);
  QCOMPARE(ann.DeletePlan(plan), QString());
  QVERIFY(bob.Update(update).contains("deleted in the meantime"));
}

void PlanCallsTest::MovesPlans() {
  CStoreFixture fixture;
  const CClient ann(fixture.Open());
  const std::string north = ann.Group(ann.Group("-1", "Gates"), "North");
  auto update = ann.Unchanged(ann.Plan("Gate A"));
  update.parent_index_code = north;
  QCOMPARE(ann.Update(update), QString());
  QCOMPARE(ann.Plans(north).size(), 2);
  QCOMPARE(ann.Plans(ann.Group("-1", "Gates")), QStringList());
  update.revision = 0;
  update.parent_index_code.clear();
  QCOMPARE(ann.Update(update), QString());
  QCOMPARE(ann.Detail(update.plan_index_code).group_index_code, north);
  update.parent_index_code = "12345";
  QVERIFY(ann.Update(update).contains("group does not exist"));
  update.parent_index_code = "-2";
  update.index_type = 0;
  QVERIFY(ann.Update(update).contains("between public and own"));
  QCOMPARE(ann.Plans(north).size(), 2);

  fixture.options.switch_overrides = {{"move_public_private", 1}};
  const CClient bob(fixture.Open("bob"));  // may add and edit, not delete
  QVERIFY(bob.Update(update).contains("no right to delete"));
  auto publish = bob.Unchanged(bob.Plan("Bob's gate"));
  publish.parent_index_code = north;
  QCOMPARE(bob.Update(publish), QString());
  QTRY_COMPARE(ann.Plans(north).size(), 3);
}

void PlanCallsTest::Searches() {
  CStoreFixture fixture;
  const CClient ann(fixture.Open());
  QCOMPARE(ann.AddPlan("-1",
                       "\xC3\x9C"
                       "BERGANG Stra\xC3\x9F"
                       "e"),
           QString());  // UEbergang Strasse, as German writes it
  QCOMPARE(ann.Search("GATE", 0), (QStringList{"Gate A@Gates", "Gate B@North"}));
  QCOMPARE(ann.Search("gate", 1), QStringList{"Ann's gate@Ann's"});
  QCOMPARE(ann.Search("e a", 0), QStringList{"Gate A@Gates"});
  for (const char* text : {"\xC3\xBC"
                           "berg",
                           "u\xCC\x88"
                           "BERG",
                           "strasse"}) {
    QCOMPARE(ann.Search(text, 0).size(), 1);
  }
  for (const char* nothing : {"", "%", "_", "'", "no such"}) {
    QCOMPARE(ann.Search(nothing, 0), QStringList());
  }
  auto update = ann.Unchanged(ann.Plan("Gate A"));
  update.plan_name = "Door";
  QCOMPARE(ann.Update(update), QString());
  QCOMPARE(ann.Search("gate", 0), QStringList{"Gate B@North"});
}

void PlanCallsTest::FindsTheAutomaticPlan_data() {
  QTest::addColumn<QString>("now");
  QTest::addColumn<QString>("plan");
  QTest::newRow("the one that is due") << "09:30:00"
                                       << "Morning";
  QTest::newRow("due from its first second") << "09:00:00"
                                             << "Morning";
  QTest::newRow("no longer due at its end") << "10:00:00"
                                            << "Evening";
  QTest::newRow("of two the lower code") << "18:00:00"
                                         << "Evening";
  QTest::newRow("of tomorrow") << "23:00:00"
                               << "Morning";
}

void PlanCallsTest::FindsTheAutomaticPlan() {
  QFETCH(QString, now);
  QFETCH(QString, plan);
  CStoreFixture fixture;
  fixture.options.now = [now] { return At(qPrintable(now)); };
  const CClient ann(fixture.Open());
  QCOMPARE(ann.Detail("123", 1).error_info, std::string("NoAutoRunPlan"));
  const auto add = [&ann](const char* parent, const char* name, const char* begin, const char* end, bool on = true) {
    view::AddPlanRequest request;
    request.parent_index_code = parent;
    request.plan_name = name;
    request.auto_play = on;
    request.begin_time = begin;
    request.end_time = end;
    view::AddPlanResponse response;
    QVERIFY(ann->AddPlan(request, response));
  };
  add("-1", "Over midnight", "22:00:00", "11:00:00");
  add("-1", "Switched off", "00:00:00", "23:59:59", false);
  add("-1", "Empty span", "09:10:00", "09:10:00");
  QCOMPARE(ann.Detail("123", 1).error_info, std::string("NoAutoRunPlan"));
  add("-2", "Morning", "09:00:00", "10:00:00");
  add("-1", "Evening", "17:00:00", "19:00:00");
  add("-1", "Evening too", "17:00:00", "19:00:00");
  QCOMPARE(ann.Detail("123", 1).name, plan.toStdString());
  QString error;
  QVERIFY(ann->LogIn("cid", &error));  // another's own plan starts on nobody else's screen
  QCOMPARE(ann.Detail("123", 1).name, std::string("Evening"));
}

void PlanCallsTest::KeepsADefaultViewPerUser() {
  CStoreFixture fixture;
  {
    const CClient ann(fixture.Open());
    QCOMPARE(ann.DefaultView(), std::string("-3"));
    QCOMPARE(ann.SetDefaultView(ann.Plan("Gate B"), kPlanType), QString());
    QVERIFY(!ann.SetDefaultView(ann.Plan("Gate B"), kGroupType).isEmpty());
  }
  const CClient ann(fixture.Open());
  const CClient bob(fixture.Open("bob"));
  QCOMPARE(ann.DefaultView(), ann.Plan("Gate B"));
  QCOMPARE(bob.DefaultView(), std::string("-3"));
  const std::string north = ann.Group(ann.Group("-1", "Gates"), "North");
  QCOMPARE(bob.SetDefaultView(north, kGroupType), QString());
  QCOMPARE(ann.DeleteGroup(ann.Group("-1", "Gates")), QString());
  QCOMPARE(ann.DefaultView(), std::string("-3"));
  QTRY_COMPARE(bob.DefaultView(), std::string("-3"));
  QCOMPARE(ann.SetDefaultView(ann.Plan("Top"), kPlanType), QString());
  QCOMPARE(ann.SetDefaultView("-3", 0), QString());
  QCOMPARE(ann.DefaultView(), std::string("-3"));

  // Taken back to her own plans it is there, but not for him.
  fixture.options.switch_overrides = {{"move_public_private", 1}};
  const CClient owner(fixture.Open());
  QCOMPARE(bob.SetDefaultView(bob.Plan("Top"), kPlanType), QString());
  auto taken = owner.Unchanged(owner.Plan("Top"));
  taken.parent_index_code = "-2";
  QCOMPARE(owner.Update(taken), QString());
  QTRY_COMPARE(bob.DefaultView(), std::string("-3"));
}

void PlanCallsTest::SharesCopies() {
  CStoreFixture fixture;
  const CClient ann(fixture.Open());
  const CClient bob(fixture.Open("bob"));
  const std::string plan = ann.Plan("Ann's gate");
  for (const char* bad : {"", ",", "2,99", "x", "1", "2,1"}) {
    view::ShareViewResponseInfo response;
    QVERIFY2(!ann->ViewShareUsers({bad, plan}, response), bad);
    QVERIFY(!response.error_info.empty() && response.error_code != 0);
  }
  QCOMPARE(bob.Group("-2", "Shared"), std::string());  // nothing is left of a share that failed half way
  auto timed = ann.Unchanged(plan);
  timed.auto_play = true;
  timed.begin_time = "08:00:00";
  timed.end_time = "09:00:00";
  QCOMPARE(ann.Update(timed), QString());
  QCOMPARE(ann.Share(plan, "2,3,2"), QString());
  QCOMPARE(ann.Share(plan, "2"), QString());
  QTRY_COMPARE(bob.Plans(bob.Group("-2", "Shared")).size(), 2);
  QCOMPARE(bob.Groups("-2").filter("Shared").size(), 1);
  const auto copy = bob.Detail(bob.Plan("Ann's gate"));
  QCOMPARE(copy.creator, std::string("ann"));
  QCOMPARE(copy.pages.size(), size_t(2));
  QVERIFY(!copy.auto_run && copy.start_time == "08:00:00");  // it starts when its new owner wants it to
  QCOMPARE(bob.Detail("123", 1).error_info, std::string("NoAutoRunPlan"));
  QCOMPARE(ann.DeletePlan(plan), QString());
  QCOMPARE(bob.DeletePlan(copy.index_code), QString());  // the copy is the recipient's
  QVERIFY(ann.Share(plan, "2").contains("plan does not exist"));
}

void PlanCallsTest::AppliesSwitches() {
  CStoreFixture fixture;
  fixture.options.first_content = [] {
    auto site = SmallSite();
    site.switches = {{"timed_play", 1}, {"show_mode", 1}, {"thumbnail", 0}};
    return site;
  };
  fixture.options.switch_overrides = {{"timed_play", 0}, {"load_all", 1}};
  view::GetPlanConfigResponse config;
  QVERIFY(fixture.Open()->GetPlanConfig({}, config));
  QVERIFY(!config.timed_play && config.load_all && config.show_mode == 1 && !config.thumbnail && config.smooth_stream);
  fixture.options.switch_overrides.clear();
  QVERIFY(fixture.Open()->GetPlanConfig({}, config));
  QVERIFY(config.timed_play && !config.load_all);  // an override is for one start
  QCOMPARE(TarnHost::CPlanStore::SwitchNames().size(), 15);
  fixture.options.switch_overrides = {{"no_such", 1}};
  QString error;
  QVERIFY(!TarnHost::CPlanStore::Open(fixture.options, &error) && error.contains("no_such"));
}

void PlanCallsTest::WaitsForTheDownload() {
  CStoreFixture fixture;
  constexpr int kDelayMs = 2000;  // what follows is asked before it is over, on a busy machine, too
  fixture.options.download_delay = std::chrono::milliseconds(kDelayMs);
  QString error;
  QElapsedTimer clock;
  clock.start();
  const CClient client(TarnHost::CPlanStore::Open(fixture.options, &error));
  QVERIFY(client.Groups("-1").value(0).contains("logged in"));
  QVERIFY(!client->LogIn("nobody", &error) && error.contains("nobody"));
  QVERIFY(client->LogIn("ann", &error));
  view::ClienInitViewDataResponse response;
  for (int round = 0; round < 2; ++round) {
    if (round != 0) {
      clock.restart();
      client->ClearViewData();
    }
    QVERIFY(!client->IsViewResourceDownFinish() && !client->IsInitViewFinish({}, response));
    QVERIFY(!response.error_info.empty());
    QVERIFY(client.Groups("-1").value(0).contains("downloaded"));
    QCOMPARE(client.AddPlan("-2", "Made meanwhile"), QString());
    QTRY_VERIFY(client->IsViewResourceDownFinish());
    QVERIFY(clock.elapsed() >= kDelayMs);
    QVERIFY(client->IsInitViewGroupFinish({}, response));
    QCOMPARE(client.Plans("-2").size(), round + 1);
  }
  client->Close();
  QVERIFY(client.Groups("-1").value(0).contains("closed"));
  QVERIFY(client.AddPlan("-2", "x").contains("closed"));
  QVERIFY(!client->CheckControlPermission(5) && !client->IsViewResourceDownFinish());
}

void PlanCallsTest::ServesTheSingletons() {
  auto& manager = LyraPluginManager::CViewBusinessInterfaceMgr::Instance();
  view::GetPlanGroupsResponse response;
  QVERIFY(!manager.GetPlanGroups({"root", 0}, response) && !response.error_info.empty());
  QVERIFY(!TarnConfiguration::CreateViewConfigInterface());
  CStoreFixture fixture;
  std::weak_ptr<TarnHost::CPlanStore> watch;
  {
    auto store = fixture.Open();
    watch = store;
    TarnHost::InstallHostServices(store);
    QVERIFY(manager.GetPlanGroups({"root", 0}, response));
    QCOMPARE(TarnConfiguration::CreateViewConfigInterface()->GetStationId(), store->StationId());
    QVERIFY(!store->StationId().empty());
  }
  QVERIFY(!watch.expired());
  TarnHost::InstallHostServices(nullptr);
  QVERIFY(watch.expired());
  QVERIFY(!manager.IsViewResourceDownFinish());
}

void PlanCallsTest::MakesTheDemoSite() {
  CStoreFixture fixture;
  fixture.options.first_content = TarnHost::MakeDemoSite;
  const CClient client(fixture.Open("operator"));
  QCOMPARE(client->DefaultUser(), QString("operator"));
  const auto overview = client.Detail(client.Plan("Gate overview"));
  QCOMPARE(overview.pages.size(), size_t(1));
  QCOMPARE(overview.pages.front().windows.size(), size_t(4));
  QCOMPARE(overview.type, 0);
  for (const auto& window : overview.pages.front().windows) {
    ptz_plugin_protocol::GetPresetResponse presets;
    play_plugin_protocol::GetStreamAbiResponse streams;
    QVERIFY(client->GetPresets({window.resource_code}, presets) && presets.presets.size() == 2);
    QVERIFY(client->GetStreamAbility({window.resource_code}, streams) && streams.stream_types.size() == 2);
    QVERIFY(!window.resource_name.empty());
  }
  ptz_plugin_protocol::GetPresetResponse none;
  QVERIFY(!client->GetPresets({"1"}, none) && !none.error_info.empty());
  const auto patrol = client.Detail("123", 1);
  QVERIFY(patrol.name == "Night patrol" && patrol.start_time == "02:00:00" && patrol.end_time == "04:00:00");
  const auto site = TarnHost::MakeDemoSite();
  QCOMPARE(site.cameras.size(), size_t(40));
  QCOMPARE(site.groups.size(), size_t(30));
  QCOMPARE(site.plans.size(), size_t(120));
}

void PlanCallsTest::MakesAnEmptySite() {
  CStoreFixture fixture;
  fixture.options.first_content = nullptr;  // as an embedder leaves it who knows of no demo
  const CClient client(fixture.Open("operator"));
  view::UserResponseInfo users;
  QVERIFY(client->GetAllUserInfo({}, users));
  QCOMPARE(users.users.size(), size_t(1));
  QCOMPARE(client->DefaultUser(), QString("operator"));
  QCOMPARE(client.Groups("-1") + client.Plans("-1") + client.Groups("-2"), QStringList());
  QCOMPARE(client.AddPlan("-1", "First"), QString());
}

QTEST_GUILESS_MAIN(PlanCallsTest)
#include "plan_calls_test.moc"
