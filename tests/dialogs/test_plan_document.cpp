#include <tuple>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "plan_document.h"
#include "plan_records.h"
#include "plan_test.h"
#include "random_plans.h"

using namespace TarnPlanView;
using namespace TarnTest;
using namespace view_plugin_protocol;

namespace {

/// Codes in the windows of a page, "-" for an empty one.
QString Shown(const CPlanDocument& document, int page) {
  QStringList codes;
  for (int no = 1; no <= WindowsOfSplit(document.Draft().pages.at(page).split_type); ++no) {
    const PlanWindow* window = document.Draft().Window(page, no);
    codes << (window ? QString::fromStdString(window->resource_code) : QStringLiteral("-"));
  }
  return codes.join(' ');
}

/// As the editor holds it once a plan of these pages has come.
class CLoaded : public CPlanDocument {
 public:
  explicit CLoaded(const std::list<PlanPage>& pages) { Load(Detail(pages)); }
};

}  // namespace

class PlanDocumentTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void UnknownThingsGoBackAsTheyCame();
  void PlanWithoutPages();
  void PagesAreNumberedAgain();
  void WindowsOutOfSight();
  void WindowWithSeveralRecords();
  void RegionGoesOnOverPages();
  void FilledWindowsAreLimited();
  void TypingIsOneStep();
  void AGroupsNameIsNoPartOfThePlan();
  void SavingAndTakingOver();
  void OtherContentStays();
  void TimesOfDay();
  void RandomEditsUndone();
};

void PlanDocumentTest::UnknownThingsGoBackAsTheyCame() {
  GetPlanDetailResponse odd = Detail({Page(20, 2, {Window(3, "c"), Window(1, "a"), Window(1, "b", 1, 1, 4)}, "Late"),
                                      Page(10, 3, {Window(1, "map", 7), Window(99, "x"), Window(0, "", 0)}, "", -5),
                                      Page(10, 1, {Window(2, "beyond"), Window(16, "far", 9)}), Page(0, 8, {})});
  odd.start_time = "soon";
  CPlanDocument document;
  document.Load(odd);
  QCOMPARE(Shown(document, 1), QString("map"));  // pages stand as they play
  QCOMPARE(Shown(document, 2), QString("-"));
  const std::string pages = Words(odd.pages);
  QCOMPARE(Saved(document), "77 r5 Night in 12 Yard family 1 rests soon- picture 6 " + pages);

  document.SetName("Day");
  document.SetDwell(0, 30);
  document.PutCamera(3, 2, {"new", "new one"});
  auto expected = odd.pages;
  expected.back().dwell_seconds = 30;
  auto& late = expected.front().windows;
  late.insert(late.begin(), {2, 1, "new", "new one", 0, 0});
  QCOMPARE(Words(document.MakeUpdateRequest().pages), Words(expected));
}

void PlanDocumentTest::PlanWithoutPages() {
  CLoaded document({});
  document.SetName("Day");
  QVERIFY(document.Draft().pages.size() == 1 && document.MakeUpdateRequest().pages.empty());
  QVERIFY(document.PutCamera(0, 1, {"a", "A"}));
  QCOMPARE(document.MakeUpdateRequest().pages.size(), size_t(1));
}

void PlanDocumentTest::PagesAreNumberedAgain() {
  CLoaded document({Page(3, 4, {Window(1, "a")}, "Page 3", 90), Page(7, 2, {}, "Gate")});
  document.AddPage(0);
  QCOMPARE(document.CurrentPage(), 1);
  document.MovePage(0, 2);
  document.DuplicatePage(2);
  QCOMPARE(Words(document.MakeUpdateRequest().pages),
           std::string("[1  /4 90s][2 Gate /2 10s][3 Page 3 /4 90s 1:1,a,name of a,0,0]"
                       "[4 Page 4 /4 90s 1:1,a,name of a,0,0]"));
  document.SetCurrentPage(1);
  document.RemovePage(1);
  QCOMPARE(document.CurrentPage(), 1);
  document.SetCurrentPage(0);
  document.UndoStack().undo();
  QCOMPARE(document.CurrentPage(), 1);
  document.SetCurrentPage(3);
  for (const int gone : {0, 2, 0, 0, 0 /* nothing left to empty */}) {
    const int kept = qMax(0, document.CurrentPage() - 1);
    document.RemovePage(gone);
    QCOMPARE(document.CurrentPage(), kept);
  }
  QCOMPARE(Words(document.MakeUpdateRequest().pages), std::string("[1 Page 1 /4 90s]"));
  QCOMPARE(document.UndoStack().count(), 7);
}

void PlanDocumentTest::WindowsOutOfSight() {
  CLoaded document({Page(1, 4, {Window(2, "b"), Window(9, "i"), Window(16, "foreign")})});
  document.SetSplit(0, 1);
  QCOMPARE(Words(document.MakeUpdateRequest().pages), std::string("[1  /1 10s 16:1,foreign,name of foreign,0,0]"));
  QCOMPARE(document.Draft().FilledWindows(), 1);
  QVERIFY(!document.PutCamera(0, 2, {"x", "X"}));
  document.SetSplit(0, 4);
  QCOMPARE(Shown(document, 0), QString("- b - - - - - - i"));
  QVERIFY(!document.IsDirty());

  document.SetSplit(0, 2);
  document.MarkSaved(6);
  document.SetSplit(0, 4);
  QCOMPARE(Shown(document, 0), QString("- b - - - - - - -"));
  document.UndoStack().undo();
  document.UndoStack().undo();
  QCOMPARE(Shown(document, 0), QString("- b - - - - - - i"));
}

void PlanDocumentTest::WindowWithSeveralRecords() {
  CLoaded document({Page(1, 2, {Window(1, "a"), Window(1, "b"), Window(1, "map", 7), Window(1, "", 0)})});
  QCOMPARE(Shown(document, 0), QString("b - - -"));
  document.SetPreset(0, 1, 3);
  document.PutCamera(0, 1, {"b", "name of b"});  // as it is
  QCOMPARE(document.UndoStack().count(), 1);
  QCOMPARE(document.Draft().Window(0, 1)->preset_no, 3);
  document.PutCamera(0, 1, {"c", "C"});
  QCOMPARE(Words(document.MakeUpdateRequest().pages), std::string("[1  /2 10s 1:1,c,C,0,0]"));
}

void PlanDocumentTest::RegionGoesOnOverPages() {
  const auto region = [](int cameras) {
    QVector<DraftCamera> named(cameras);
    for (int i = 0; i < cameras; ++i) {
      named[i].index_code = QString::number(i + 1);
    }
    return named;
  };
  CPlanDocument document;
  QSignalSpy refused(&document, &CPlanDocument::SignalRefused);
  document.Load(Detail({Page(1, 2, {Window(1, "a"), Window(3, "map", 7)}, "Page 1", 90), Page(2, 1, {Window(1, "b")}),
                        Page(3, 3, {Window(1, "", 0), Window(9, "beyond")})}));
  document.SetOtherContentFixed(true);  // is never in the way
  document.SetCurrentPage(2);
  const std::string before = Saved(document);
  const PlanFilling filling = document.Fill(0, 2, region(8) + QVector<DraftCamera>{{"", "none"}});
  QVERIFY(filling.placed == 8 && filling.left_out == 0 && filling.pages == 4 && filling.new_pages == 2);
  QStringList shown;
  for (int page = 0; page < document.Draft().pages.size(); ++page) {
    shown << Shown(document, page);
  }
  QCOMPARE(shown, QStringList({"a 1 map 2", "b", "3", "4 5 6 7", "8 - - -"}));
  QCOMPARE(document.Draft().pages[4].dwell_seconds, 90);
  QCOMPARE(document.CurrentPage(), 0);
  QCOMPARE(document.UndoStack().count(), 1);
  document.UndoStack().undo();
  QCOMPARE(Saved(document), before);

  document.StartNew("New", "12");
  document.SetSplit(0, 8);
  QCOMPARE(document.Fill(0, 2, region(200)).left_out, 200 - kMaxFilledWindows);
  QCOMPARE(document.Draft().pages.size(), 9);
  QCOMPARE(document.Draft().FilledWindows(), kMaxFilledWindows);
  document.SetSplit(1, 2);  // a new page's windows were in sight: fewer of them take what they held along
  QCOMPARE(document.Draft().FilledWindows(), kMaxFilledWindows - 12);
  document.StartNew("New", "12");
  document.SetSplit(0, 1);
  const PlanFilling single = document.Fill(0, 1, region(kMaxPages + 1));
  QVERIFY(single.left_out == 1 && single.out_of_pages && document.Draft().pages.size() == kMaxPages);
  QCOMPARE(refused.size(), 0);
  QCOMPARE(document.Fill(0, 1, region(2)).placed, 0);
  document.AddPage(0);
  document.DuplicatePage(0);
  QCOMPARE(refused.size(), 3);
  QCOMPARE(document.Draft().pages.size(), kMaxPages);
}

void PlanDocumentTest::FilledWindowsAreLimited() {
  std::list<PlanPage> pages = FullPages(8);
  CLoaded document(pages);
  QSignalSpy refused(&document, &CPlanDocument::SignalRefused);
  document.AddPage(7);
  QVERIFY(!document.PutCamera(8, 1, {"x", "X"}));
  QCOMPARE(document.Fill(8, 1, {{"x", "X"}}).left_out, 1);
  document.DuplicatePage(0);
  QCOMPARE(refused.size(), 3);
  QVERIFY(refused[0][0].toString().contains("128"));
  document.SetSplit(0, 1);
  QVERIFY(document.PutCamera(8, 1, {"x", "X"}));
  document.SetSplit(0, 8);  // 15 come back where 14 have room
  QCOMPARE(refused.size(), 4);
  QVERIFY(document.PutCamera(8, 1, {"y", "Y"}));
  QCOMPARE(document.Draft().FilledWindows(), 114);

  pages.push_back(Page(9, 2, {Window(1, "129th"), Window(2, "130th")}));
  document.Load(Detail(pages));
  QVERIFY(document.PutCamera(0, 1, {"x", "X"}));
  document.SetDwell(0, 20);
  document.ClearWindow(8, 1);
  QVERIFY(!document.PutCamera(8, 1, {"x", "X"}));
  QCOMPARE(document.UndoStack().count(), 3);
}

void PlanDocumentTest::TypingIsOneStep() {
  CLoaded document({Page(1, 2, {}), Page(2, 2, {})});
  QSignalSpy dirty(&document, &CPlanDocument::SignalDirtyChanged);
  document.SetName("N");
  document.SetName("Ni");
  document.SetDwell(0, 0);
  document.SetDwell(0, 7);
  document.SetDwell(1, INT_MAX);
  QCOMPARE(document.UndoStack().count(), 3);
  QCOMPARE(document.Draft().pages[1].dwell_seconds, kMaxDwellSeconds);
  document.SetDwell(1, 10);  // typed back: as if never touched
  QCOMPARE(document.UndoStack().count(), 2);
  document.MarkSaved(6);
  document.SetDwell(0, 8);
  QCOMPARE(document.UndoStack().count(), 3);
  document.UndoStack().undo();
  QCOMPARE(document.Draft().pages[0].dwell_seconds, 7);
  QVERIFY(document.UndoStack().isClean());
  QCOMPARE(dirty, (QList<QList<QVariant>>{{true}, {false}, {true}, {false}}));
}

void PlanDocumentTest::AGroupsNameIsNoPartOfThePlan() {
  CLoaded document({Page(1, 1, {})});
  document.SetName("Edited");
  document.RenameGroup("12", "Yard by the river");
  document.RenameGroup("13", "Another");
  QCOMPARE(document.Draft().group_name, QString("Yard by the river"));
  document.UndoStack().undo();  // to a draft that knew the old name
  QVERIFY(!document.IsDirty());
  document.SetGroup("13", "Another");
  document.SetGroup("12", "Yard");
  QVERIFY(!document.IsDirty());
}

void PlanDocumentTest::SavingAndTakingOver() {
  CLoaded document({Page(1, 2, {})});
  document.SetName("Day");
  auto changed = Detail({Page(1, 2, {})});
  changed.revision = 9;
  document.GoOver(changed);
  QCOMPARE(document.MakeUpdateRequest().revision, int64_t(9));
  document.MarkSaved(10);
  QVERIFY(!document.IsDirty());
  const PlanDraft sent = document.Draft();
  document.SetGroup("13");
  document.MarkSaved(sent, 11, "78");  // late: the edit since is not saved
  QVERIFY(document.IsDirty());
  QCOMPARE(document.MakeUpdateRequest().plan_index_code, std::string("78"));
  QCOMPARE(document.GroupCode(), std::string("12"));
  document.MarkSaved(12);
  QCOMPARE(document.GroupCode(), std::string("13"));
  document.UndoStack().undo();
  QVERIFY(document.IsDirty());

  auto theirs = Detail(FullPages(9));  // more than can be filled here
  theirs.revision = 20;
  const PlanDraft mine = document.Draft();
  const int before = document.UndoStack().index();
  document.TakeOver(theirs);
  QVERIFY(!document.IsDirty() && document.ReplacedEdits() == before);
  QCOMPARE(document.Draft().pages.size(), 9);
  document.UndoStack().undo();
  QVERIFY(document.IsDirty() && document.Draft() == mine && !document.ReplacedEdits());
  document.UndoStack().redo();
  QVERIFY(!document.IsDirty() && document.ReplacedEdits() == before);
  document.UndoStack().undo();
  QCOMPARE(document.MakeUpdateRequest().revision, int64_t(20));
}

void PlanDocumentTest::OtherContentStays() {
  CLoaded document({Page(1, 2, {Window(1, "a"), Window(2, "map", 7), Window(3, "c")})});
  document.SetOtherContentFixed(true);
  QSignalSpy refused(&document, &CPlanDocument::SignalRefused);
  QVERIFY(!document.PutCamera(0, 2, {"x", "X"}));
  QVERIFY(!document.SwapWindows(0, 1, 2));
  document.ClearWindow(0, 2);
  QCOMPARE(refused.size(), 3);
  QVERIFY(!document.IsDirty());
  document.ClearPage(0);  // of its cameras
  document.RemovePage(0);
  QCOMPARE(refused.size(), 5);
  QCOMPARE(document.Draft().FilledWindows(), 1);
  QVERIFY(document.Draft().Window(0, 2));
  QCOMPARE(document.UndoStack().count(), 1);
  document.UndoStack().undo();
  QVERIFY(document.SwapWindows(0, 1, 3));
  QVERIFY(document.PutCamera(0, 4, {"x", "X"}));
  document.ClearWindow(0, 1);
  document.SetSplit(0, 1);
  QCOMPARE(refused.size(), 5);
}

void PlanDocumentTest::TimesOfDay() {
  CPlanDocument document;
  const auto sent = [&document] {
    const auto request = document.MakeUpdateRequest();
    return request.begin_time + " " + request.end_time;
  };
  GetPlanDetailResponse detail = Detail({});
  detail.start_time = "25:00:00";
  detail.end_time = "7:05:00";
  document.Load(detail);
  document.SetTimes(QTime(), QTime(1, 0));
  QCOMPARE(sent(), std::string("25:00:00 7:05:00"));
  document.SetAutoRun(true);  // a time that is none cannot start anything
  QCOMPARE(sent(), std::string("00:00:00 00:00:00"));
  document.SetTimes(QTime(22, 0), QTime(6, 0));
  document.SetTimes(QTime(22, 0), QTime(22, 0));
  QCOMPARE(document.UndoStack().count(), 2);
  QCOMPARE(sent(), std::string("22:00:00 22:00:00"));
  detail.start_time = "08:00";
  document.Load(detail);
  QCOMPARE(sent(), std::string("08:00:00 7:05:00"));
}

void PlanDocumentTest::RandomEditsUndone() {
  QVERIFY(rc::check("undone to the start a plan is as it came, redone as it was", [] {
    CPlanDocument document;
    document.Load(RandomDetail(TarnTest::RandomPlans::Anywhere));
    const PlanDraft first = document.Draft();
    const std::string first_saved = Saved(document);
    for (int edits = *rc::gen::inRange(1, 40); edits > 0; --edits) {
      const int before = document.Draft().FilledWindows();
      RandomEdit(&document);
      RC_ASSERT(document.IsDirty() == (Saved(document) != first_saved));
      RC_ASSERT(document.Draft().FilledWindows() <= qMax(before, kMaxFilledWindows));
      RC_ASSERT(document.CurrentPage() >= 0 && document.CurrentPage() < document.Draft().pages.size());
    }
    const PlanDraft last = document.Draft();
    const std::string last_saved = Saved(document);
    while (document.UndoStack().canUndo()) {
      document.UndoStack().undo();
    }
    RC_ASSERT(document.Draft() == first);
    RC_ASSERT(Saved(document) == first_saved && !document.IsDirty());
    while (document.UndoStack().canRedo()) {
      document.UndoStack().redo();
    }
    RC_ASSERT(document.Draft() == last);
    RC_ASSERT(Saved(document) == last_saved);
  }));
}

QTEST_MAIN(PlanDocumentTest)
#include "test_plan_document.moc"
