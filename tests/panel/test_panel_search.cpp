#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

#include "TarnUIDataController/popup_menu.h"
#include "empty_state.h"
#include "panel_stage.h"
#include "resource_wait_widget.h"
#include "tarn_add_plan_widget.h"
#include "view_model_data_manager.h"

using namespace TarnPlanView;
using TarnTest::CPanelStage;

namespace {

QStringList Hits(CPanelStage& stage) {
  QStringList names;
  const auto* rows = stage.Panel().findChild<QListView*>(QStringLiteral("search_list_view"))->model();
  for (int row = 0; row < rows->rowCount(); ++row) {
    names.append(rows->index(row, 0).data().toString());
  }
  return names;
}

QLineEdit* Field(CPanelStage& stage) {
  return qobject_cast<QLineEdit*>(stage.Panel().GetLocateViewWidget());
}

}  // namespace

// Searching, the pages in place of the tree, and a host that fails.
class PanelSearchTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void ShowsBothScopesInOrder();
  void OlderSearchCountsForNothing();
  void FailedScopeIsSaidOnce();
  void LeavesTheSearchPage();
  void CommandsMeanTheMarkedHit();
  void SearchWhileWaitingEndsInTheWait();
  void LocatesInTheLoadedTree();
  void SearchSwitchedOff();
  void EmptyAndBrokenTrees();
  void WaitPageCountsAndOffersRetry();
  void EveryCallMayFail();

 private:
  void searchFor(CPanelStage& stage, const char* text) {
    Field(stage)->setText(QString::fromLatin1(text));
    QTest::keyClick(Field(stage), Qt::Key_Return);
  }
};

void PanelSearchTest::ShowsBothScopesInOrder() {
  Open();
  CPanelStage stage(fixture_);
  stage.Choose(QStringLiteral("Public A"));
  searchFor(stage, "  PLAN 10 ");
  QTRY_COMPARE(stage.PageName(), QStringLiteral("search_list_view"));
  QCOMPARE(Hits(stage),
           QStringList({"Public A plan 10", "A1 plan 10", "Public B plan 10", "Own C plan 10", "C1 plan 10"}));
  auto* list = stage.Panel().findChild<QListView*>(QStringLiteral("search_list_view"));
  QCOMPARE(list->model()->index(0, 0).data(SearchTextRole).toString(), QStringLiteral("PLAN 10"));
  // Every hit can be told from its namesakes by the groups above it.
  QVERIFY(list->model()->index(1, 0).data(Qt::AccessibleTextRole).toString().contains(QLatin1String("A1")));
  QVERIFY(list->model()->index(4, 0).data(Qt::AccessibleTextRole).toString().contains(QLatin1String("C1")));
  // A result that was not asked for here marks what the field says.
  Field(stage)->setText(QStringLiteral("  gate "));
  Q_EMIT stage.Panel().signalGetSearchedResult({{"4711", "Gate", "1", "Yard", 0}});
  QCOMPARE(list->model()->index(0, 0).data(SearchTextRole).toString(), QStringLiteral("gate"));
  // While a search is under way it takes nothing from that one.
  Services().Hold(QStringLiteral("SearchPlan"));
  searchFor(stage, "plan 10");
  Field(stage)->setText(QStringLiteral("gate"));
  Q_EMIT stage.Panel().signalGetSearchedResult({{"4711", "Gate", "1", "Yard", 0}});
  Services().ReleaseAll();
  QTRY_COMPARE(Hits(stage).size(), 5);
  QCOMPARE(list->model()->index(0, 0).data(SearchTextRole).toString(), QStringLiteral("plan 10"));

  QSignalSpy played(&stage.Controller(), &CStandardViewController::SignalPlayPlanView);
  list->setCurrentIndex(list->model()->index(3, 0));
  QTest::keyClick(list, Qt::Key_Return);
  QTRY_COMPARE(played.size(), 1);
  const QImage before = list->model()->index(3, 0).data(Qt::DecorationRole).value<QIcon>().pixmap(20).toImage();
  stage.Panel().SetCurPlayItemByIndexCode(fixture_.Code(QStringLiteral("Own C plan 10")));
  QVERIFY(list->model()->index(3, 0).data(Qt::DecorationRole).value<QIcon>().pixmap(20).toImage() != before);
}

void PanelSearchTest::OlderSearchCountsForNothing() {
  Open();
  CPanelStage stage(fixture_);
  Services().Hold(QStringLiteral("SearchPlan"), TarnTest::CRecordingServices::AfterCall);
  searchFor(stage, "A1");
  QVERIFY(Services().WaitUntilHeld(QStringLiteral("SearchPlan")));
  searchFor(stage, "C1");
  QVERIFY(Services().WaitUntilHeld(QStringLiteral("SearchPlan"), 2));
  Services().ReleaseAll();
  QTRY_COMPARE(Hits(stage), QStringList({"C1 plan 2", "C1 plan 10"}));
  fixture_.Drain();
  QCOMPARE(Hits(stage), QStringList({"C1 plan 2", "C1 plan 10"}));

  // Emptied before the answer: the answer must not bring the page back.
  Services().Hold(QStringLiteral("SearchPlan"));
  searchFor(stage, "A1");
  QVERIFY(Services().WaitUntilHeld(QStringLiteral("SearchPlan")));
  Field(stage)->clear();
  Services().ReleaseAll();
  fixture_.Drain();
  QCOMPARE(stage.PageName(), QStringLiteral("tree"));
  Services().ForgetCalls();
  searchFor(stage, "   ");
  fixture_.Drain();
  QCOMPARE(Services().Count(QStringLiteral("SearchPlan")), 0);
}

void PanelSearchTest::FailedScopeIsSaidOnce() {
  Open();
  CPanelStage stage(fixture_);
  Services().Fail(QStringLiteral("SearchPlan"), "no answer");
  searchFor(stage, "plan");
  QTRY_COMPARE(stage.PageName(), QStringLiteral("search_list_view"));
  QCOMPARE(stage.TakeTips(), QStringList("1:no answer"));
  QCOMPARE(Hits(stage), QStringList());
  QVERIFY(
      stage.Panel().findChild<QListView*>(QStringLiteral("search_list_view"))->findChild<CEmptyState*>()->isVisible());
}

void PanelSearchTest::LeavesTheSearchPage() {
  Open();
  CPanelStage stage(fixture_);
  stage.Choose(QStringLiteral("Public A plan 2"));
  QCOMPARE(stage.Enabled(), QStringLiteral("gped"));
  const auto enter = [&] {
    searchFor(stage, "plan");
    QTRY_COMPARE(stage.PageName(), QStringLiteral("search_list_view"));
    QCOMPARE(stage.Enabled(), QStringLiteral("-pe-"));
  };
  const auto left = [&] {
    QCOMPARE(stage.PageName(), QStringLiteral("tree"));
    QCOMPARE(stage.Enabled(), QStringLiteral("gped"));
  };
  enter();
  searchFor(stage, "plan 2");  // a second search must not take the disabled buttons for the real state
  QTRY_COMPARE(Hits(stage).size(), 5);
  // A row that becomes current behind the hits must not enable them either.
  stage.Choose(QStringLiteral("Public A plan 10"));
  QCOMPARE(stage.Enabled(), QStringLiteral("-pe-"));
  QTest::keyClick(stage.Panel().findChild<QListView*>(QStringLiteral("search_list_view")), Qt::Key_Escape);
  left();
  enter();
  Field(stage)->clear();
  left();
  enter();
  QTest::mouseClick(stage.Button("search_btn"), Qt::LeftButton);
  QVERIFY(!Field(stage)->isVisible());
  left();
  QTest::mouseClick(stage.Button("search_btn"), Qt::LeftButton);
  QVERIFY(Field(stage)->isVisible());
  enter();
  Q_EMIT CViewModelDataManager::Instance().SignalDataDownloadFinished();
  left();
}

void PanelSearchTest::CommandsMeanTheMarkedHit() {
  Open({{QStringLiteral("creation_info"), 1}});
  CPanelStage stage(fixture_);
  stage.Row(QStringLiteral("A1"));
  stage.Choose(QStringLiteral("Public B"));  // which Edit would rename
  searchFor(stage, "plan 10");
  QTRY_COMPARE(Hits(stage).size(), 5);
  auto* list = stage.Panel().findChild<QListView*>(QStringLiteral("search_list_view"));
  auto* menu = list->findChild<tarn_ui_data_controller::CPopupMenu*>();
  const auto mark = [&](int row) { list->setCurrentIndex(list->model()->index(row, 0)); };
  const auto editor = [&] { return stage.Panel().window()->findChild<CTarnAddPlanWidget*>(); };
  const auto edited = [&] {
    const auto* name = editor() && editor()->isVisible() ? editor()->findChild<QLineEdit*>("plan_name_edit") : nullptr;
    return name ? name->text() : QString();
  };
  const auto close = [&] {
    QVERIFY(!editor()->IsDirty());
    editor()->Cancel();
    QTRY_COMPARE(edited(), QString());
    QVERIFY(stage.Panel().focusWidget() == list);
  };
  mark(1);
  QTest::mouseClick(stage.Button("edit_btn"), Qt::LeftButton);
  QTRY_COMPARE(edited(), QStringLiteral("A1 plan 10"));
  QTest::keyClick(list, Qt::Key_F2);  // one at a time
  close();
  QTest::keyClick(list, Qt::Key_Down);
  QTest::keyClick(list, Qt::Key_F2);
  QTRY_COMPARE(edited(), QStringLiteral("Public B plan 10"));
  close();

  mark(0);
  const QPoint on_hit = list->visualRect(list->model()->index(3, 0)).center();
  QTest::mousePress(list->viewport(), Qt::RightButton, {}, on_hit);
  QContextMenuEvent right_button(QContextMenuEvent::Mouse, on_hit, list->viewport()->mapToGlobal(on_hit));
  QCoreApplication::sendEvent(list->viewport(), &right_button);
  QVERIFY(menu->isVisible());
  QVERIFY(!menu->MenuItem(tarn_ui_data_controller::Delete)->isEnabled());
  menu->MenuItem(tarn_ui_data_controller::Edit)->trigger();
  menu->hide();
  QTRY_COMPARE(edited(), QStringLiteral("Own C plan 10"));
  close();
  QTest::keyClick(list, Qt::Key_Menu);
  QVERIFY(menu->isVisible());
  QSignalSpy played(&stage.Controller(), &CStandardViewController::SignalPlayPlanView);
  menu->MenuItem(tarn_ui_data_controller::PlayVideo)->trigger();
  QTRY_COMPARE(played.size(), 1);
  const auto plan = played[0][0].value<view_plugin_protocol::GetPlanDetailResponse>();
  QCOMPARE(plan.name, std::string("Own C plan 10"));
  menu->MenuItem(tarn_ui_data_controller::CreationInfo)->trigger();
  menu->hide();
  QTRY_VERIFY(stage.Panel().findChild<QWidget*>(QStringLiteral("CreationInfoDlgUi")));

  stage.TakeTips();
  QTest::keyClick(list, Qt::Key_Delete);
  QCOMPARE(stage.TakeTips(), QStringList("1:Leave the search first."));
  QCOMPARE(stage.TakeQuestions(), QStringList());
  Services().SetRight(6, false);
  mark(1);
  QTest::keyClick(list, Qt::Key_F2);
  QCOMPARE(stage.TakeTips(), QStringList("1:You lack the right to edit plans."));
  QCOMPARE(edited(), QString());
  // A new plan goes beside the hit.
  QTest::mouseClick(stage.Button("add_view_btn"), Qt::LeftButton);
  QVERIFY(editor()->isVisible());
  QCOMPARE(editor()->findChild<QWidget*>(QStringLiteral("target_group_box"))->isVisible(), true);
  editor()->findChild<QLineEdit*>("plan_name_edit")->setText(QStringLiteral("Beside it"));
  editor()->Save();
  QTRY_VERIFY(!fixture_.Code(QStringLiteral("Beside it")).isEmpty());
  fixture_.Drain();
  QTRY_COMPARE(edited(), QString());
  QTest::keyClick(list, Qt::Key_Escape);
  QCOMPARE(stage.Row(QStringLiteral("Beside it")).parent().data().toString(), QStringLiteral("A1"));

  // Nothing marked: nothing to act on, least of all the row behind the page.
  searchFor(stage, "nowhere");
  QTRY_COMPARE(Hits(stage), QStringList());
  stage.TakeTips();
  QTest::mouseClick(stage.Button("edit_btn"), Qt::LeftButton);
  QTest::keyClick(list, Qt::Key_F2);
  QVERIFY(stage.TakeTips().size() <= 1);
  QCOMPARE(edited(), QString());
  QVERIFY(!stage.Panel().findChild<QWidget*>(QStringLiteral("CViewNameEdit")));
}

void PanelSearchTest::SearchWhileWaitingEndsInTheWait() {
  Open();
  CPanelStage stage(fixture_);
  stage.Choose(QStringLiteral("Public A plan 2"));
  stage.Panel().SwitchUserUpdate();
  QCOMPARE(stage.Enabled(), QStringLiteral("--ed"));
  // The rows are still the last user's; that one of them becomes current, as when a plan starts by itself, is not his.
  stage.Panel().SetCurPlayItemByIndexCode(fixture_.Code(QStringLiteral("Public A plan 10")));
  QCOMPARE(stage.Enabled(), QStringLiteral("--ed"));
  searchFor(stage, "plan");
  QTRY_COMPARE(stage.PageName(), QStringLiteral("search_list_view"));
  QCOMPARE(stage.Enabled(), QStringLiteral("--e-"));
  QTest::keyClick(stage.Panel().findChild<QListView*>(QStringLiteral("search_list_view")), Qt::Key_Escape);
  QCOMPARE(stage.PageName(), QStringLiteral("wait_widget"));
  QCOMPARE(stage.Enabled(), QStringLiteral("--ed"));
  searchFor(stage, "plan");
  QTRY_COMPARE(stage.PageName(), QStringLiteral("search_list_view"));
  CViewModelDataManager::Instance().OnUpdateViewModelData();
  QTRY_COMPARE(stage.PageName(), QStringLiteral("tree"));
  QTRY_COMPARE(stage.Tree().currentIndex().data().toString(), QStringLiteral("Plans"));
  QCOMPARE(stage.Enabled(), QStringLiteral("g---"));

  // The user who is asked about his changes may have been switched by the time the question is answered.
  stage.Choose(QStringLiteral("Public A"));
  stage.Button("add_view_btn")->click();
  auto* editor = stage.Panel().window()->findChild<CTarnAddPlanWidget*>();
  editor->findChild<QLineEdit*>("plan_name_edit")->setText(QStringLiteral("Never"));
  stage.while_asking = [&] { stage.Panel().SwitchUserUpdate(); };
  stage.Button("add_view_btn")->click();
  QCOMPARE(stage.TakeQuestions().size(), 1);
  QCOMPARE(stage.Enabled().left(2), QStringLiteral("--"));
}

void PanelSearchTest::LocatesInTheLoadedTree() {
  Open({{QStringLiteral("load_all"), 1}});
  CPanelStage stage(fixture_);
  Services().ForgetCalls();
  searchFor(stage, "a1 plan 10");
  QTRY_COMPARE(stage.Tree().currentIndex().data().toString(), QStringLiteral("A1 plan 10"));
  QCOMPARE(stage.PageName(), QStringLiteral("tree"));
  QCOMPARE(Services().Count(QStringLiteral("SearchPlan")), 0);
}

void PanelSearchTest::SearchSwitchedOff() {
  Open({{QStringLiteral("enable_search"), 0}});
  CPanelStage stage(fixture_);
  QVERIFY(!Field(stage)->isVisible());
}

void PanelSearchTest::EmptyAndBrokenTrees() {
  TarnTest::PlanFixtureOptions options;
  options.site = [] {
    TarnHost::PlanSite site;
    site.users = {{"operator", {5, 6, 7}}};
    return site;
  };
  QString error;
  QVERIFY2(fixture_.Open(options, &error), qPrintable(error));
  Services().Fail(QStringLiteral("GetPlanGroups"), "no connection");
  fixture_.Start();
  CPanelStage stage(fixture_);
  Q_EMIT CViewModelDataManager::Instance().SignalDataDownloadFinished();
  auto* state = stage.Tree().findChild<CEmptyState*>();
  QTRY_VERIFY(state->isVisible());
  const QString broken = state->Text();
  // Mended: the button loads again, and then the tree says that it is empty, which is something else.
  Services().Mend(QStringLiteral("GetPlanGroups"));
  auto* retry = state->findChild<QPushButton*>();
  QVERIFY(retry->isVisible());
  QTest::mouseClick(retry, Qt::LeftButton);
  QTRY_COMPARE(stage.Tree().model()->rowCount(), 1);
  QTRY_VERIFY(state->isVisible() && state->Text() != broken);
  QVERIFY(!retry->isVisible());
  stage.Controller().AddPlanGroupByIndexName(stage.Tree().model()->index(0, 0), QStringLiteral("First"));
  QTRY_VERIFY(!state->isVisible());
}

void PanelSearchTest::WaitPageCountsAndOffersRetry() {
  Open();
  CPanelStage stage(fixture_);
  auto* page = stage.Panel().findChild<CResourceWaitWidget*>();
  stage.Panel().SwitchUserUpdate();
  auto* elapsed = page->findChild<QLabel*>(QStringLiteral("wait_elapsed"));
  auto* retry = page->findChild<QPushButton*>(QStringLiteral("wait_retry"));
  QVERIFY(page->IsWaiting());
  page->ShowElapsed(4);
  QCOMPARE(elapsed->text(), QString());
  page->ShowElapsed(5);
  QVERIFY(elapsed->text().contains('5'));
  QVERIFY(!retry->isVisible());
  auto* trouble = page->findChild<QLabel*>(QStringLiteral("wait_trouble"));
  QVERIFY(!trouble->isVisible());
  stage.Panel().ShowServiceTrouble(QStringLiteral("No service"));
  QVERIFY(trouble->isVisible() && trouble->text() == "No service" && page->accessibleDescription() == "No service");
  stage.Panel().ShowServiceTrouble(QString());
  QVERIFY(!trouble->isVisible() && page->accessibleDescription().isEmpty());
  page->ShowElapsed(15);
  QVERIFY(retry->isVisible());
  QTest::mouseClick(retry, Qt::LeftButton);
  QTRY_COMPARE(stage.PageName(), QStringLiteral("tree"));
  QVERIFY(!page->IsWaiting());
}

// A whole round with each call of the host failing in turn: one message an act, no dead end, nothing lost.
void PanelSearchTest::EveryCallMayFail() {
  Open();
  CPanelStage stage(fixture_);
  const QStringList calls = {"GetPlanGroups", "GetPlansInGroup", "AddPlanGroup",  "UpdatePlanGroup", "DeletePlanGroup",
                             "UpdatePlan",    "DeletePlan",      "GetPlanDetail", "SearchPlan"};
  stage.Row(QStringLiteral("nothing"));
  const QString outline = TarnTest::Outline(fixture_.Public());
  for (const QString& call : calls) {
    Services().Fail(call, "refused");
    stage.TakeTips();
    QList<std::function<void()>> acts = {
        [&] { stage.Controller().OnExpandViewTreeItem(stage.Row(QStringLiteral("Public B"))); },
        [&] { stage.Controller().AddPlanGroupByIndexName(stage.Row(QStringLiteral("A1")), QStringLiteral("New")); },
        [&] { stage.Panel().PlayPlanByIndex(stage.Row(QStringLiteral("A1 plan 2"))); },
        [&] { searchFor(stage, "plan"); },
        [&] { Field(stage)->clear(); },
    };
    for (const auto& act : acts) {
      act();
      fixture_.Drain();
      const QStringList tips = stage.TakeTips().filter(QStringLiteral("1:"));
      QVERIFY2(tips.isEmpty() || tips == QStringList("1:refused"), qPrintable(call + tips.join('|')));
    }
    Services().Mend(call);
    const QModelIndex added = stage.Row(QStringLiteral("New"));
    if (added.isValid()) {
      stage.Controller().DeletePlanGroupByIndex(added);
      QTRY_VERIFY(!stage.Row(QStringLiteral("New")).isValid());
    }
    QCOMPARE(TarnTest::Outline(fixture_.Public()), outline);
  }
}

QTEST_MAIN(PanelSearchTest)
#include "test_panel_search.moc"
