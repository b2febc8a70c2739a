// Readers and one writer on the catalog and the feed, for the thread sanitizer: nothing here is built with Qt.
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <thread>
#include <vector>

#include "store/change_feed.h"
#include "store/plan_catalog.h"

using namespace TarnHost::Store;

namespace {

#define REQUIRE(condition)                                                 \
  do {                                                                     \
    if (!(condition)) {                                                    \
      std::fprintf(stderr, "%s:%d: %s\n", __FILE__, __LINE__, #condition); \
      std::exit(1);                                                        \
    }                                                                      \
  } while (false)

std::string Fold(const std::string& name) {
  return name;
}

GroupRow Group(int32_t code, int32_t parent, int32_t family = PublicFamily, int32_t owner = 0) {
  return {code, parent, family, owner, "group " + std::to_string(code)};
}

PlanRow Plan(int32_t code, int32_t parent, int32_t family = PublicFamily, int32_t owner = 0) {
  PlanRow row;
  row.code = code;
  row.parent = parent;
  row.family = family;
  row.owner = owner;
  row.name = row.folded_name = "plan " + std::to_string(code);
  row.auto_run = code % 2 == 0;
  row.begin_second = 100;
  row.end_second = 200;
  return row;
}

void TestRemovedRowsLeaveNothing() {
  CPlanCatalog catalog(&Fold);
  catalog.Replace({Group(1, PublicRoot), Group(2, 1), Group(3, OwnRoot, OwnFamily, 7)},
                  {Plan(10, 2), Plan(12, 3, OwnFamily, 7), Plan(13, 99)});
  REQUIRE(!catalog.FindPlan(13, 7));
  REQUIRE(catalog.AutomaticPlan(150, 7) == 10 && catalog.AutomaticPlan(150, 8) == 10);
  REQUIRE(catalog.RemoveGroup(1)->code == 1);
  REQUIRE(!catalog.FindGroup(2, 0) && !catalog.FindPlan(10, 0) && !catalog.RemovePlan(10) && !catalog.RemoveGroup(1));
  REQUIRE(catalog.AutomaticPlan(150, 7) == 12 && catalog.AutomaticPlan(150, 8) == 0);
}

// Rows that were changed past the program, one after the other on one catalog.
void TestGroupsThatMoved() {
  CPlanCatalog catalog(&Fold);
  // The parent has the higher code; two are each other's parent, one is its own.
  catalog.Replace({Group(1, 5), Group(2, 1), Group(5, PublicRoot), Group(6, 7), Group(7, 6), Group(8, 8)},
                  {Plan(10, 2), Plan(11, 6), Plan(12, 8)});
  REQUIRE(catalog.FindGroup(2, 0) && catalog.FindPlan(10, 0));
  REQUIRE(!catalog.FindGroup(6, 0) && !catalog.FindGroup(7, 0) && !catalog.FindGroup(8, 0) && !catalog.FindPlan(12, 0));
  const auto children = [&catalog](int32_t parent) {
    std::vector<int32_t> codes;
    catalog.VisitGroups(parent, 7, [&codes](const std::vector<GroupRow>& rows) {
      for (const GroupRow& row : rows) {
        codes.push_back(row.code);
      }
    });
    return codes;
  };
  REQUIRE(catalog.Put(Group(1, PublicRoot))->parent == 5);
  REQUIRE(children(5).empty() && children(PublicRoot) == std::vector<int32_t>({1, 5}) && catalog.FindPlan(10, 0));
  REQUIRE(catalog.Put(Group(5, 1))->parent == PublicRoot);
  REQUIRE(children(1) == std::vector<int32_t>({2, 5}));
  REQUIRE(catalog.Put(Group(5, OwnRoot, OwnFamily, 7))->parent == 1 && children(OwnRoot) == std::vector<int32_t>({5}));
  REQUIRE(!catalog.FindGroup(5, 8));
  REQUIRE(catalog.Put(Group(5, 77))->parent == OwnRoot && !catalog.FindGroup(5, 7));
  // Into what hangs below it: with all of that it stands nowhere any more.
  REQUIRE(catalog.Put(Group(1, 2))->parent == PublicRoot);
  REQUIRE(!catalog.FindGroup(1, 0) && !catalog.FindGroup(2, 0) && !catalog.FindPlan(10, 0));
  REQUIRE(children(PublicRoot).empty());
}

void TestLevelsAreBounded() {
  constexpr int32_t kChain = 200000;
  std::vector<GroupRow> chain;
  for (int32_t code = 1; code <= kChain; ++code) {
    chain.push_back(Group(code, code == 1 ? int32_t{PublicRoot} : code - 1));
  }
  CPlanCatalog catalog(&Fold);
  catalog.Replace(chain, {Plan(kChain + 1, kChain), Plan(kChain + 2, 1)});
  REQUIRE(catalog.FindGroup(CPlanCatalog::kMostLevels, 0) && !catalog.FindGroup(CPlanCatalog::kMostLevels + 1, 0));
  REQUIRE(!catalog.FindPlan(kChain + 1, 0) && catalog.FindPlan(kChain + 2, 0));
  // One more level above pushes the lowest out of bounds, and it goes with all below.
  catalog.Put(Group(kChain + 9, PublicRoot));
  catalog.Put(Group(1, kChain + 9));
  REQUIRE(!catalog.FindGroup(1, 0) && !catalog.FindPlan(kChain + 2, 0));
}

void TestFeed() {
  const auto entry = [](int64_t seq, const char* origin) {
    return ChangeEntry{seq, origin, ChangeEntry::kPlanSaved, int32_t(seq)};
  };
  CChangeFeed feed("me");
  feed.Restart(5);
  REQUIRE(feed.Take({}, 5));
  REQUIRE(feed.Take({entry(6, "me"), entry(7, "you")}, 7) && feed.Last() == 7);
  REQUIRE(!feed.Take({entry(9, "you")}, 9));                     // cut in the front
  REQUIRE(!feed.Take({entry(8, "you"), entry(10, "you")}, 10));  // a hole
  REQUIRE(!feed.Take({entry(8, "you")}, 9));                     // cut at the end
  REQUIRE(!feed.Take({}, 6));                                    // a store that was put back in time
  REQUIRE(feed.Last() == 7);
}

void TestReadersAndAWriter() {
  CPlanCatalog catalog(&Fold);
  CChangeFeed feed("me");
  std::atomic<bool> stop{false};
  const auto read = [&] {
    int64_t last = 0;
    while (!stop) {
      catalog.VisitPlans(1, 7, [](const std::vector<PlanRow>& rows) {
        int32_t before = 0;
        for (const PlanRow& row : rows) {
          REQUIRE(row.code > before && row.name == "plan " + std::to_string(row.code));
          before = row.code;
        }
      });
      for (const CPlanCatalog::Hit& hit : catalog.Search("plan", PublicFamily, 7)) {
        REQUIRE(hit.groups_above.back() == "group " + std::to_string(hit.plan.parent));
        REQUIRE(hit.shown_camera.empty());
      }
      for (const CPlanCatalog::Hit& hit : catalog.Search("door", PublicFamily, 7)) {
        REQUIRE(hit.shown_camera == "door " + std::to_string(hit.plan.code));
      }
      catalog.AutomaticPlan(150, 7);
      catalog.CountBelow(1, 7);
      catalog.FindByName("plan 15", 7);
      REQUIRE(feed.Last() >= last);
      last = feed.Last();
    }
  };
  std::vector<std::thread> readers;
  for (int reader = 0; reader < 3; ++reader) {
    readers.emplace_back(read);
  }
  int64_t seq = 0;
  for (int round = 0; round < 100; ++round) {
    catalog.Replace({Group(1, PublicRoot), Group(2, 1)}, {Plan(10, 1), Plan(11, 2)});
    for (int32_t code = 12; code < 40; ++code) {
      PlanRow row = Plan(code, 1 + code % 2);
      row.cameras = {static_cast<uint32_t>(code)};
      catalog.Cameras().Add({{row.cameras.front(), {"3", "door " + std::to_string(code)}}});
      catalog.Put(row);
      feed.Take({{++seq, "you", ChangeEntry::kPlanSaved, code}}, seq);
    }
    catalog.SetAudiences({{{2, {9}}}, {}}, 7);
    for (int32_t code = 12; code < 40; ++code) {
      catalog.Put(Plan(code, 2 - code % 2));
    }
    catalog.SetAudiences({}, 7);
    catalog.RemovePlan(20);
    catalog.RemoveGroup(2);
  }
  stop = true;
  for (std::thread& reader : readers) {
    reader.join();
  }
  REQUIRE(feed.Last() == seq);
}

}  // namespace

int main() {
  TestRemovedRowsLeaveNothing();
  TestGroupsThatMoved();
  TestLevelsAreBounded();
  TestFeed();
  TestReadersAndAWriter();
  return 0;
}
