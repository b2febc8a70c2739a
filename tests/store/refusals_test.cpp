#include <QtTest>
#include <functional>

#include "LyraPluginManager/error_kind.h"
#include "LyraPluginManager/view_business_interface_mgr.h"
#include "store_fixture.h"

using namespace StoreTest;
using LyraPluginManager::CViewBusinessInterfaceMgr;
using TarnHost::IHostServices;
using view::ResponseHeader;

namespace {

/// Three clients of one store, and the plan "Gate A" as Ann read it.
struct Desks {
  CClient ann, elsewhere, bob;
  view::UpdatePlanRequest plan;
};

using Attempt = std::function<ResponseHeader(const Desks&)>;

/// What the call answers; blank when it went through.
template <class Request, class Response>
ResponseHeader Answer(const CClient& client, bool (IHostServices::*call)(const Request&, Response&),
                      const Request& request) {
  Response response;
  return ((*client).*call)(request, response) ? ResponseHeader() : response;
}

ResponseHeader Update(const CClient& client, const view::UpdatePlanRequest& plan) {
  return Answer(client, &IHostServices::UpdatePlan, plan);
}

ResponseHeader Detail(const CClient& client, const std::string& plan, int kind = 0) {
  return Answer(client, &IHostServices::GetPlanDetail, view::GetPlanDetailRequest{plan, kind, false});
}

ResponseHeader Share(const CClient& client, const std::string& plan, const std::string& users) {
  return Answer(client, &IHostServices::ViewShareUsers, view::ViewShareResquestInfo{users, plan});
}

// Ann's own tree hears of what is deleted elsewhere a moment later.
ResponseHeader DetailOfDeleted(const Desks& at) {
  at.elsewhere.DeleteGroup(at.ann.Group("-1", "Gates"));
  return Detail(at.ann, at.plan.plan_index_code);
}

ResponseHeader UpdateOfDeleted(const Desks& at) {
  at.elsewhere.DeletePlan(at.plan.plan_index_code);
  return Update(at.ann, at.plan);
}

ResponseHeader MoveIntoDeleted(const Desks& at) {
  view::UpdatePlanRequest moved = at.plan;
  moved.parent_index_code = at.ann.Group("-4", "Common");
  at.elsewhere.DeleteGroup(moved.parent_index_code);
  return Update(at.ann, moved);
}

ResponseHeader UpdateOfOldRevision(const Desks& at) {
  view::UpdatePlanRequest theirs = at.plan;
  theirs.plan_name = "Renamed";
  at.bob.Update(theirs);
  return Update(at.ann, at.plan);
}

ResponseHeader OddTime(const Desks& at) {
  view::UpdatePlanRequest plan = at.plan;
  plan.auto_play = true;
  plan.begin_time = "%1%2";  // what a user typed is no place for an argument
  return Update(at.ann, plan);
}

ResponseHeader OddWindow(const Desks& at) {
  view::UpdatePlanRequest plan = at.plan;
  plan.pages.front().windows.front().window_no = 77;
  return Update(at.ann, plan);
}

}  // namespace

Q_DECLARE_METATYPE(Attempt)

/// Of what kind a refusal is, and what is said of it.
class RefusalsTest : public CStoreTest {
  Q_OBJECT

 private Q_SLOTS:
  void EachSaysItsKind_data();
  void EachSaysItsKind();
  void WithoutAStoreAllIsUnavailable();
};

void RefusalsTest::EachSaysItsKind_data() {
  QTest::addColumn<int>("kind");
  QTest::addColumn<QString>("text");
  QTest::addColumn<Attempt>("attempt");
  const auto row = [](const char* name, view::ErrorKind kind, const char* text, const Attempt& attempt) {
    QTest::newRow(name) << int(kind) << text << attempt;
  };
  const char plan_gone[] = "The plan does not exist or was deleted in the meantime.";
  const char group_gone[] = "The group does not exist or was deleted in the meantime.";
  row("unknown plan", view::Gone, plan_gone, [](auto& at) { return Detail(at.ann, "99"); });
  row("another user's plan", view::Gone, plan_gone, [](auto& at) { return Detail(at.ann, at.bob.Plan("Bob's gate")); });
  row("plan deleted elsewhere", view::Gone, "The plan was deleted by ann at 07:08.", DetailOfDeleted);
  row("change of a plan deleted elsewhere", view::Gone, plan_gone, UpdateOfDeleted);
  row("move into a group deleted elsewhere", view::Gone, group_gone, MoveIntoDeleted);
  row("plans of an unknown group", view::Gone, group_gone, [](auto& at) {
    return Answer(at.ann, &IHostServices::GetPlansInGroup, view::GetPlansInGroupRequest{"99", 0});
  });
  row("groups of an unknown group", view::Gone, group_gone, [](auto& at) {
    return Answer(at.ann, &IHostServices::GetPlanGroups, view::GetPlanGroupsRequest{"99", 0});
  });
  row("unknown default view", view::Gone, group_gone, [](auto& at) {
    return Answer(at.ann, &IHostServices::SetClientViewConfig, view::ClienDefaultViewConfigRequest{"99", kGroupType});
  });
  row("copy for an unknown user", view::Gone, "There is no user with the number 77.",
      [](auto& at) { return Share(at.ann, at.plan.plan_index_code, "77"); });
  row("unknown camera", view::Gone, "The camera does not exist.",
      [](auto& at) { return Answer(at.ann, &IHostServices::GetPresets, ptz_plugin_protocol::GetPresetRequest{"99"}); });
  row("no automatic plan", view::Gone, "NoAutoRunPlan", [](auto& at) { return Detail(at.ann, "", 1); });
  row("older revision", view::Changed,
      "The plan was changed by bob on 2024-05-06 07:08:09. Open it again before you change it.", UpdateOfOldRevision);
  row("no right", view::NotPermitted, "You have no right to delete public plans and groups.", [](auto& at) {
    return Answer(at.bob, &IHostServices::DeletePlanGroup,
                  view::DeletePlanGroupRequest{at.bob.Group("-4", "Common"), "Common", 2});
  });
  row("name too long", view::Refused, "The name has more than 256 characters.", [](auto& at) {
    return Answer(at.ann, &IHostServices::AddPlanGroup,
                  view::AddPlanGroupRequest{std::string(257, 'x'), "-1", 0, false});
  });
  row("no time of day", view::Refused, "\"%1%2\" is not a time of day.", OddTime);
  row("no such window", view::Refused, "The plan \"Gate A\" cannot be saved: a page has a window number 77.",
      OddWindow);
  row("copy for oneself", view::Refused, "A plan cannot be shared with yourself.",
      [](auto& at) { return Share(at.ann, at.plan.plan_index_code, "1"); });
}

void RefusalsTest::EachSaysItsKind() {
  QFETCH(Attempt, attempt);
  QFETCH(QString, text);
  fixture_->options.now = [] { return QDateTime({2024, 5, 6}, {7, 8, 9}); };
  const CClient elsewhere(fixture_.get(), "ann");
  const ResponseHeader answer = attempt({ann_, elsewhere, bob_, ann_.Unchanged(ann_.Plan("Gate A"))});
  QTEST(int(answer.error_kind), "kind");
  QCOMPARE(QString::fromStdString(answer.error_info), text);
  for (const std::string& argument : answer.error_arguments) {
    QVERIFY2(text.contains(QString::fromStdString(argument)), argument.c_str());
  }
}

void RefusalsTest::WithoutAStoreAllIsUnavailable() {
  fixture_->options.download_delay = std::chrono::hours(1);
  QString error;
  const CClient late(TarnHost::CPlanStore::Open(fixture_->options, &error));
  QVERIFY2(late->LogIn({"ann"}).IsDone(), qPrintable(error));
  QCOMPARE(Detail(late, "99").error_kind, int(view::Unavailable));
  QVERIFY(late->Close());
  QCOMPARE(Detail(late, "99").error_kind, int(view::Unavailable));

  view::GetPlanDetailResponse stopped;
  QVERIFY(!CViewBusinessInterfaceMgr::Instance().GetPlanDetail({"99", 0, false}, stopped));
  QCOMPARE(stopped.error_kind, int(view::Unavailable));
  QVERIFY(!stopped.error_info.empty());
}

QTEST_GUILESS_MAIN(RefusalsTest)
#include "refusals_test.moc"
