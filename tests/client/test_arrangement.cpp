#include <QtTest>
#include <functional>

#include "plan_records.h"
#include "wall/arrangement.h"
#include "wall/same_pages.h"

using TarnClient::CArrangement;
using TarnClient::SamePages;
using view_plugin_protocol::GetPlanDetailResponse;
using view_plugin_protocol::PlanPage;
using view_plugin_protocol::PlanWindow;

namespace {

GetPlanDetailResponse PlanOf(const std::list<PlanPage>& pages) {
  GetPlanDetailResponse plan;
  plan.index_code = "p";
  plan.pages = pages;
  return plan;
}

/// "a-b/cd": windows of a page from the first on, "-" for an empty one, pages apart by "/"; letters are cameras.
std::list<PlanPage> Pages(const QString& words, int split = 2) {
  std::list<PlanPage> pages;
  for (const QString& page : words.split('/')) {
    std::list<PlanWindow> windows;
    for (int i = 0; i < page.size(); ++i) {
      if (page[i] != '-') {
        windows.push_back(TarnTest::Window(i + 1, QString(page[i]).toStdString()));
      }
    }
    pages.push_back(TarnTest::Page(static_cast<int>(pages.size()) + 1, split, windows));
  }
  return pages;
}

QString Words(const CArrangement& arrangement, int page = 0) {
  QString words;
  for (int window_no = 1; window_no <= 16; ++window_no) {
    const PlanWindow* window = arrangement.At(page, window_no);
    words += window ? QString::fromStdString(window->resource_code) : "-";
  }
  while (words.endsWith('-')) {
    words.chop(1);
  }
  return words;
}

}  // namespace

class ArrangementTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void ChangesWindows_data();
  void ChangesWindows();
  void ALargerSplitBringsBackWhatASmallerOneHid();
  void SavesOnlyWhatIsThere();
  void FindsEmptyWindows();
  void GrowsWithItsCamerasWithoutAPlan();
  void KeepsTheUsersWindowsWhenThePlanChanges_data();
  void KeepsTheUsersWindowsWhenThePlanChanges();
};

using Edit = std::function<bool(CArrangement*)>;
Q_DECLARE_METATYPE(Edit)

void ArrangementTest::ChangesWindows_data() {
  QTest::addColumn<Edit>("edit");
  QTest::addColumn<QString>("after");  // "ab-c" before
  QTest::addColumn<bool>("is_changed");
  const auto row = [](const char* name, const Edit& edit, const char* after, bool is_changed) {
    QTest::newRow(name) << edit << QString(after) << is_changed;
  };
  row(
      "into an empty window",
      [](auto* all) {
        return all->Put(0, 3, {"x", "X"});
      },
      "abxc", true);
  row(
      "over a camera",
      [](auto* all) {
        return all->Put(0, 1, {"x", "X"});
      },
      "xb-c", true);
  row(
      "the same camera",
      [](auto* all) {
        return all->Put(0, 1, {"a", "A"});
      },
      "ab-c", false);
  row(
      "beyond the split",
      [](auto* all) {
        return all->Put(0, 5, {"x", "X"});
      },
      "ab-c", false);
  row(
      "on no page",
      [](auto* all) {
        return all->Put(7, 1, {"x", "X"});
      },
      "ab-c", false);
  row(
      "two cameras swapped", [](auto* all) { return all->Swap(0, 1, 4); }, "cb-a", true);
  row(
      "into the gap", [](auto* all) { return all->Swap(0, 1, 3); }, "-bac", true);
  row(
      "with itself", [](auto* all) { return all->Swap(0, 2, 2); }, "ab-c", false);
  row(
      "out of the split", [](auto* all) { return all->Swap(0, 2, 9); }, "ab-c", false);
  row(
      "emptied", [](auto* all) { return all->Empty(0, 2); }, "a--c", true);
  row(
      "emptied again", [](auto* all) { return all->Empty(0, 3); }, "ab-c", false);
  row(
      "the same split", [](auto* all) { return all->Split(0, 2); }, "ab-c", false);
  row(
      "a smaller split", [](auto* all) { return all->Split(0, 1); }, "a", true);
  row(
      "the smaller stream", [](auto* all) { return all->SetStream(0, 1, 1); }, "ab-c", true);
  row(
      "a preset", [](auto* all) { return all->SetPreset(0, 1, 4); }, "ab-c", true);
  row(
      "a preset of nothing", [](auto* all) { return all->SetPreset(0, 3, 4); }, "ab-c", false);
}

void ArrangementTest::ChangesWindows() {
  QFETCH(Edit, edit);
  QFETCH(bool, is_changed);
  CArrangement arrangement(PlanOf(Pages("ab-c/d")));
  QVERIFY(!arrangement.IsChanged());
  QCOMPARE(edit(&arrangement), is_changed);
  QTEST(Words(arrangement), "after");
  QCOMPARE(arrangement.IsChanged(), is_changed);
  QCOMPARE(Words(arrangement, 1), QString("d"));
}

void ArrangementTest::ALargerSplitBringsBackWhatASmallerOneHid() {
  CArrangement arrangement(PlanOf(Pages("abcd")));
  QVERIFY(arrangement.Split(0, 1) && arrangement.Put(0, 1, {"x", "X"}));
  QCOMPARE(arrangement.PagesToSave().front().windows.size(), size_t(1));
  QVERIFY(arrangement.Split(0, 2));
  QCOMPARE(Words(arrangement), QString("xbcd"));
  QVERIFY(arrangement.Put(0, 1, {"a", "name of a"}) && !arrangement.IsChanged());
}

// What no one has seen or touched stays as the plan has it.
void ArrangementTest::SavesOnlyWhatIsThere() {
  std::list<PlanPage> pages = Pages("ab/c");
  pages.front().windows.push_back(TarnTest::Window(9, "never in sight"));
  pages.reverse();  // the service lists them in any order
  CArrangement arrangement(PlanOf(pages));
  QCOMPARE(Words(arrangement), QString("ab"));
  QVERIFY(SamePages(arrangement.PagesToSave(), pages));
  QVERIFY(arrangement.Empty(0, 1));
  const std::list<PlanPage> saved = arrangement.PagesToSave();
  QCOMPARE(saved.front().page_no, 1);
  QCOMPARE(saved.front().windows.size(), size_t(2));
  QCOMPARE(saved.front().windows.back().resource_code, std::string("never in sight"));
}

void ArrangementTest::FindsEmptyWindows() {
  CArrangement arrangement(PlanOf(Pages("a-c-")));
  QCOMPARE(arrangement.NextEmpty(0, 0), 2);
  QCOMPARE(arrangement.NextEmpty(0, 2), 4);
  QCOMPARE(arrangement.NextEmpty(0, 4), 2);
  QCOMPARE(CArrangement(PlanOf(Pages("abcd"))).NextEmpty(0, 1), 0);
  QCOMPARE(CArrangement().NextEmpty(0, 0), 0);
}

void ArrangementTest::GrowsWithItsCamerasWithoutAPlan() {
  CArrangement arrangement = CArrangement::WithoutPlan();
  QVERIFY(!arrangement.HasPlan() && !arrangement.IsNothing() && !arrangement.IsChanged());
  QVERIFY(!arrangement.MakeRoomFor(0, 4));
  QVERIFY(arrangement.MakeRoomFor(0, 5));
  QCOMPARE(arrangement.NextEmpty(0, 8), 9);
  QVERIFY(arrangement.MakeRoomFor(0, 99) && !arrangement.MakeRoomFor(0, 99));
  QVERIFY(arrangement.Put(0, 16, {"x", "X"}) && arrangement.IsChanged());
  CArrangement of_plan(PlanOf(Pages("abcd")));
  QVERIFY(!of_plan.MakeRoomFor(0, 5));
}

void ArrangementTest::KeepsTheUsersWindowsWhenThePlanChanges_data() {
  QTest::addColumn<QString>("plan_now");  // "ab" before
  QTest::addColumn<bool>("user_changes");
  QTest::addColumn<QString>("after");  // "xb" is what the user makes of it
  QTest::addColumn<bool>("is_changed");
  QTest::newRow("untouched") << "cd" << false << "cd" << false;
  QTest::newRow("changed here, the plan renamed only") << "ab" << true << "xb" << true;
  QTest::newRow("changed here, saved so") << "xb" << true << "xb" << false;
  QTest::newRow("changed here and elsewhere") << "cd" << true << "xb" << true;
}

void ArrangementTest::KeepsTheUsersWindowsWhenThePlanChanges() {
  QFETCH(QString, plan_now);
  QFETCH(bool, user_changes);
  QFETCH(bool, is_changed);
  const std::list<PlanPage> before = Pages("ab"), now = Pages(plan_now);
  CArrangement arrangement(PlanOf(before));
  QCOMPARE(user_changes && arrangement.Put(0, 1, {"x", "name of x"}), user_changes);
  GetPlanDetailResponse renewed = PlanOf(now);
  renewed.name = "Renamed";
  arrangement.Renew(renewed);
  QTEST(Words(arrangement), "after");
  QCOMPARE(arrangement.IsChanged(), is_changed);
  QCOMPARE(arrangement.PlanAsFetched().name, std::string("Renamed"));
  // A save over pages that someone else has changed has to find that out.
  QCOMPARE(SamePages(arrangement.PlanAsFetched().pages, now), !is_changed || plan_now == "ab");
}

QTEST_APPLESS_MAIN(ArrangementTest)
#include "test_arrangement.moc"
