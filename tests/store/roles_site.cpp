#include "roles_site.h"

#include <QtTest>

namespace StoreTest {

namespace {

/// "North", below "Gates", is limited to the guards: bob. It has a timed plan. Ann may do everything, cid nothing.
TarnHost::PlanSite RolesSite() {
  auto site = SmallSite();
  site.users = {{"ann", {5, 6, 7, 8}}, {"bob", {5, 6}}, {"cid", {}}};
  site.user_groups = {{"Guards", {1}}};
  site.groups[1].audience = {0};
  site.plans[1].auto_run = true;
  site.plans[1].begin_time = "00:00:00";
  site.plans[1].end_time = "23:59:59";
  site.switches = {{"timed_play", 1}};
  return site;
}

}  // namespace

void CRolesTest::init() {
  CStoreTest::init();
  if (!CStoreFixture::OnPostgres()) {
    QSKIP("only a server keeps rights itself");
  }
  fixture_->options.first_content = RolesSite;
  fixture_->MakeRoles();
  // Something of everything, ann's, bob's and everybody's.
  for (const CClient& client : {ann_, bob_}) {
    const std::string own = client.Plan("Top");
    QCOMPARE(client.SetDefaultView(own, kPlanType), QString());
    std::string error, group, plan;
    QVERIFY(client->SetFavoriteCamera("1001", true, &error));
    view::AddPlanLogResponseParam logged;
    QVERIFY(client->AddPlanLog({"Top", false, false}, logged));
    QCOMPARE(client.AddGroup("-2", "Going", &group), QString());
    QCOMPARE(client.AddPlan(group, "Going along", &plan), QString());
    QCOMPARE(client.SetDefaultView(plan, kPlanType), QString());
    QCOMPARE(client.DeleteGroup(group), QString());
    QCOMPARE(client.SetDefaultView(own, kPlanType), QString());
  }
  const auto put_camera = [](const CClient& client, const std::string& plan, const char* name) {
    auto request = client.Unchanged(plan);
    request.pages.front().windows.front().resource_name = name;
    QCOMPARE(client.Update(request), QString());
  };
  put_camera(bob_, bob_.Plan("Bob's gate"), "of bob");
  put_camera(ann_, ann_.Plan("Gate B"), "of North");
  const std::string north = ann_.Group(ann_.Group("-1", "Gates"), "North");
  std::string group, plan;
  QCOMPARE(ann_.AddGroup(north, "In North", &group), QString());
  QCOMPARE(ann_.AddPlan(group, "In North", &plan), QString());
  QCOMPARE(ann_.DeleteGroup(group), QString());
  owner_ = std::make_unique<CDirectAccess>(fixture_->Url());
  Owner("INSERT INTO account VALUES (2, 'hash of bob', 0, 0)");
  Owner("INSERT INTO camera_access VALUES (1001, 'login', 'secret', '')");
  Owner("INSERT INTO kept_default_view SELECT code, 2, code, 301 FROM deletion WHERE owner_id = 2");
  cid_ = std::make_unique<CDirectAccess>(fixture_->UrlOf("cid"));
}

void CRolesTest::cleanup() {
  cid_.reset();
  owner_.reset();
  CStoreTest::cleanup();
}

}  // namespace StoreTest
