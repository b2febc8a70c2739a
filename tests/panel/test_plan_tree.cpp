#include <QHelpEvent>
#include <QStandardItemModel>
#include <QToolTip>

#include "item_type.h"
#include "plan_drag.h"
#include "plan_item_role.h"
#include "tree_stage.h"

using namespace TarnPlanView;
using namespace tarn_ui_data_controller;
using MarUIControl::CItemDataRole;
using TarnTest::CTreeStage;

namespace {

const QList<MsgType> kCommands = {PlayVideo, Edit, Delete, Share, GroupCycle, CreationInfo};

// One letter for each visible entry, in the order of the menu.
QString Entries(const CPopupMenu& menu) {
  QString letters;
  for (const QAction* action : menu.actions()) {
    for (int i = 0; i < kCommands.size(); ++i) {
      if (action == menu.MenuItem(kCommands[i]) && action->isVisible()) {
        letters += QStringLiteral("pedsgc").at(i);
      }
    }
  }
  return letters;
}

// A drag that has come to `at`; with `own` it carries the mark of the host's views.
class CMove {
 public:
  CMove(CTreeStage& stage, const QPoint& at, bool own = true) : stage_(stage) {
    mime_.setProperty("_tree_drop_", own);
    Enter(at);
    accepted = Send(QDragMoveEvent(at, Qt::MoveAction, &mime_, Qt::LeftButton, Qt::NoModifier));
  }
  // Whether the drop is taken, though the mark may have gone since the drag entered.
  bool Drop(const QPoint& at, bool own = true) {
    Enter(at);
    mime_.setProperty("_tree_drop_", own);
    return Send(QDropEvent(at, Qt::MoveAction, &mime_, Qt::LeftButton, Qt::NoModifier));
  }
  QWidget* Line() const { return stage_.tree.viewport()->findChild<QWidget*>("Line"); }
  QWidget* Frame() const { return stage_.tree.viewport()->findChild<QWidget*>("item_rect"); }
  // Refused without a trace.
  bool Refused() const { return !accepted && !Line()->isVisible() && !Frame()->isVisible(); }

  bool accepted = false;

 private:
  // Without it no later event of the drag is delivered.
  void Enter(const QPoint& at) { Send(QDragEnterEvent(at, Qt::MoveAction, &mime_, Qt::LeftButton, Qt::NoModifier)); }
  template <class Event>
  bool Send(Event event) {
    event.ignore();
    QApplication::sendEvent(stage_.tree.viewport(), &event);
    return event.isAccepted();
  }

  CTreeStage& stage_;
  QMimeData mime_;
};

}  // namespace

// The tree of the panel under an operator's hands.
class PlanTreeTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void SignsStayWhereNamesElide();
  void AGroupThatCyclesCarriesASign();
  void LevelsAndKindsOfGroup();
  void MenuOffersWhatSuitsTheRow();
  void MenuIsAboutTheRowItWasOpenedFor();
  void KeysAndDoubleClick();
  void MouseIsFollowed();
  void FinishSlotsTakeOwnAndSourceRows();
  void FailedExpansionIsTriedAgain();
  void OpenGroupsAreHandedOn();
  void PayloadAndWhatCanBeDragged();
  void MovesFollowTheRules();
  void MovesOfOtherKindsAndOfGroups();
  void DropsReportOrRefuse();
};

void PlanTreeTest::AGroupThatCyclesCarriesASign() {
  CTreeStage stage(Opened({{"load_all", 1}}));
  const auto picture = [&](const char* name) {
    return stage.tree.viewport()->grab(stage.tree.visualRect(stage.Row(name))).toImage();
  };
  const QImage before = picture("Public A"), other = picture("Public B");
  stage.tree.SetCyclingGroup(fixture_.Code("Public A"));
  QVERIFY(picture("Public A") != before && picture("Public B") == other);
  const auto description = [&] { return stage.Row("Public A").data(Qt::AccessibleDescriptionRole).toString(); };
  QCOMPARE(description(), QString("The plans of this group play in turn"));
  stage.tree.SetCyclingGroup(QString());
  QCOMPARE(picture("Public A"), before);
  QCOMPARE(description(), QString());
}

void PlanTreeTest::LevelsAndKindsOfGroup() {
  Open();
  CPlanViewTree tree(nullptr);
  QStandardItemModel rows;
  // By item type, from -1 on; each with a row of its own.
  const int levels[] = {0, 0, 1, 1, 2, 2, 5, 5, 4, 4, 0, 0, 0, 0, 0, 0};
  QMap<int, QModelIndex> of_level = {{0, QModelIndex()}};
  for (int i = 0; i < 16; ++i) {
    auto* item = new QStandardItem;
    item->setData(i - 1, ItemTypeRole);
    rows.appendRow(item);
    QCOMPARE(static_cast<int>(tree.GetItemLevel(item->index())), levels[i]);
    of_level[levels[i]] = item->index();
  }
  QCOMPARE(tree.GetItemLevel(QModelIndex()), NoLevel);
  const char* const same[] = {"11100", "11100", "11100", "00011", "00011"};  // levels 0, 1, 2, 4, 5
  for (int a = 0; a < 5; ++a) {
    for (int b = 0; b < 5; ++b) {
      QCOMPARE(tree.IsGroupPropertySame(of_level.values()[a], of_level.values()[b]), same[a][b] == '1');
    }
  }
}

void PlanTreeTest::MenuOffersWhatSuitsTheRow() {
  for (const bool all : {true, false}) {
    CTreeStage stage(Opened({{"load_all", 1}, {"group_cycle", all}, {"creation_info", all}}));
    CPopupMenu& menu = *stage.tree.GetViewMoreMenu();
    QSignalSpy about(&stage.tree, &CPlanViewTree::SignalMenuAboutToShow);
    const auto offered = [&](const QString& name) {
      stage.tree.OnRightMoreBtnClicked(stage.Row(name), QPoint(50, 50));
      menu.close();
      return Entries(menu);
    };
    QCOMPARE(offered("Public root plan"), QString(all ? "pedsc" : "peds"));
    QCOMPARE(offered("Public A"), QString(all ? "edg" : "ed"));
    QCOMPARE(offered(stage.Root().data().toString()), QString("ed"));
    QCOMPARE(about.size(), 3);
    QCOMPARE(stage.tree.currentIndex(), stage.Root());
    stage.tree.SetMenuItemVisible(Share, false);
    QCOMPARE(offered("Public root plan"), QString(all ? "pedc" : "ped"));
    stage.tree.SetMenuItemVisible(Share, true);
    QCOMPARE(offered("Public root plan"), QString(all ? "pedsc" : "peds"));

    stage.tree.setCurrentIndex(stage.Add("<none>", PlaceholderItem));
    about.clear();
    QTest::keyClick(&stage.tree, Qt::Key_F10, Qt::ShiftModifier);
    stage.tree.OnRightMoreBtnClicked(QModelIndex(), QPoint());
    QVERIFY(about.isEmpty() && !menu.isVisible());
    Shut();
  }
}

void PlanTreeTest::MenuIsAboutTheRowItWasOpenedFor() {
  CTreeStage stage(Opened({{"load_all", 1}}));
  CPopupMenu& menu = *stage.tree.GetViewMoreMenu();
  QSignalSpy clicked(&stage.tree, &CPlanViewTree::SignalMenuClicked);
  const QPersistentModelIndex plan = stage.Row("Public root plan");
  const QVariant code = plan.data(PlanIndexCodeRole);

  QTest::mouseMove(stage.tree.viewport(), stage.MoreButton(plan));
  QTest::mouseClick(stage.tree.viewport(), Qt::LeftButton, Qt::NoModifier, stage.MoreButton(plan));
  QVERIFY(menu.isVisible());
  stage.tree.setCurrentIndex(stage.Row("Public A"));
  menu.MenuItem(Share)->trigger();
  QCOMPARE(clicked.size(), 1);
  QCOMPARE(clicked[0].at(0).value<MsgType>(), Share);
  QCOMPARE(clicked[0].at(1), code);
  QCOMPARE(stage.tree.currentIndex(), QModelIndex(plan));
  menu.close();

  QTest::keyClick(&stage.tree, Qt::Key_Menu);
  QVERIFY(menu.isVisible());
  stage.Remove(plan);
  const QPersistentModelIndex current = stage.tree.currentIndex();
  QSignalSpy tips(&stage.tree, &CPlanViewTree::SignalMessageTipNeeded);
  menu.MenuItem(Delete)->trigger();
  QCOMPARE(clicked.size(), 1);  // not about the row that has come in its place
  QCOMPARE(tips.size(), 1);
  QCOMPARE(stage.tree.currentIndex(), QModelIndex(current));
}

void PlanTreeTest::KeysAndDoubleClick() {
  CTreeStage stage(Opened({{"load_all", 1}}));
  QSignalSpy clicked(&stage.tree, &CPlanViewTree::SignalMenuClicked);
  QSignalSpy played(&stage.tree, &CPlanViewTree::SignalPlayRequested);
  const QModelIndex plan = stage.Row("Public root plan"), group = stage.Row("Public A");
  const auto double_click = [&](Qt::MouseButton button, const QPoint& at) {
    QTest::mouseDClick(stage.tree.viewport(), button, Qt::NoModifier, at);
  };
  stage.tree.setCurrentIndex(plan);
  QTest::keyClick(&stage.tree, Qt::Key_Return);
  QTest::keyClick(&stage.tree, Qt::Key_Enter);
  QCOMPARE(played.size(), 2);
  QTest::mouseClick(stage.tree.viewport(), Qt::LeftButton, Qt::NoModifier, stage.Middle(plan));
  double_click(Qt::LeftButton, stage.Middle(plan));
  QCOMPARE(played.size(), 3);
  QCOMPARE(played.last().first().toModelIndex(), plan);
  double_click(Qt::RightButton, stage.Middle(plan));
  double_click(Qt::LeftButton, stage.MoreButton(plan));
  stage.tree.GetViewMoreMenu()->close();

  QTest::keyClick(&stage.tree, Qt::Key_F2);
  stage.tree.setCurrentIndex(group);
  QTest::keyClick(&stage.tree, Qt::Key_Delete);
  stage.tree.SetMenuItemVisible(Delete, false);
  QTest::keyClick(&stage.tree, Qt::Key_Delete);
  QTest::keyClick(&stage.tree, Qt::Key_Delete, Qt::ControlModifier);
  QCOMPARE(clicked.size(), 2);
  QCOMPARE(clicked[0], (QVariantList{QVariant::fromValue(Edit), plan.data(PlanIndexCodeRole)}));
  QCOMPARE(clicked[1], (QVariantList{QVariant::fromValue(Delete), group.data(GroupIndexCodeRole)}));
  QTest::keyClick(&stage.tree, Qt::Key_Return);
  QVERIFY(stage.tree.isExpanded(group));
  QCOMPARE(played.size(), 3);
}

void PlanTreeTest::MouseIsFollowed() {
  CTreeStage stage(Opened({{"load_all", 1}}));
  QSignalSpy moved(&stage.tree, &CPlanViewTree::SignalPlanViewMouseMove);
  QSignalSpy hidden(&stage.tree, &CPlanViewTree::SignalHideThumbnail);
  const QPersistentModelIndex plan = stage.Row("Public root plan");
  const auto expect = [&moved](int moves, const QModelIndex& row, CItemDataRole::Part part) {
    QCOMPARE(moved.size(), moves);
    QCOMPARE(moved.last().at(0).toModelIndex(), row);
    QCOMPARE(moved.last().at(1).value<CItemDataRole>().GetPart(), part);
  };
  const auto move = [&](const QPoint& to) {
    QMouseEvent event(QEvent::MouseMove, to, stage.tree.viewport()->mapToGlobal(to), Qt::NoButton, Qt::NoButton,
                      Qt::NoModifier);
    QApplication::sendEvent(stage.tree.viewport(), &event);
  };
  move(stage.Middle(plan));
  move(stage.Middle(plan) + QPoint(1, 1));
  expect(1, plan, CItemDataRole::TextPart);
  move(stage.MoreButton(plan));
  expect(2, plan, CItemDataRole::MoreButtonPart);
  hidden.clear();
  move(QPoint(20, stage.tree.viewport()->height() - 2));
  expect(3, QModelIndex(), CItemDataRole::NoPart);
  QCOMPARE(hidden.size(), 1);

  move(stage.Middle(plan));
  stage.Remove(plan);
  expect(5, QModelIndex(), CItemDataRole::NoPart);
  hidden.clear();
  stage.Press(stage.Row("Public A"));
  stage.Release(stage.Row("Public A"));
  QCOMPARE(hidden.size(), 1);
  QCOMPARE(stage.tree.currentIndex(), stage.Row("Public A"));
}

void PlanTreeTest::FinishSlotsTakeOwnAndSourceRows() {
  CTreeStage stage(Opened({{"load_all", 1}}));
  const QModelIndex a = stage.Row("Public A"), b = stage.Row("Public B");
  const QModelIndex root = stage.Root();
  stage.tree.collapse(root);
  stage.tree.OnFinishAnsyFilterExpandedTree(a, true);
  QVERIFY(stage.tree.isExpanded(a));
  stage.tree.OnFinishAnsySourceExpandedTree(stage.proxy.mapToSource(b), true);
  QVERIFY(stage.tree.isExpanded(b));
  stage.tree.OnFinishAnsySourceExpandedTree(fixture_.Own()->index(0, 0), true);
  stage.tree.OnFinishAnsyFilterExpandedTree(fixture_.Own()->index(0, 0), true);
  stage.tree.OnFinishAnsyFilterExpandedTree(QModelIndex(), true);
  stage.tree.OnFinishAnsyFilterExpandedTree(root, false);
  QVERIFY(!stage.tree.isExpanded(root));
}

void PlanTreeTest::FailedExpansionIsTriedAgain() {
  CTreeStage stage(Opened({{"load_all", 0}}));
  QTRY_VERIFY(stage.Row("Public A").isValid());
  const QPersistentModelIndex group = stage.Row("Public A");
  Services().Fail("GetPlansInGroup");
  Services().Fail("GetPlanGroups");
  stage.tree.ExpandAsync(group);
  QTRY_VERIFY(!stage.tree.IsWaiting(group));
  QVERIFY(!stage.tree.isExpanded(group) && stage.proxy.hasChildren(group));
  Services().Mend("GetPlansInGroup");
  Services().Mend("GetPlanGroups");
  stage.tree.setCurrentIndex(group);
  QTest::keyClick(&stage.tree, Qt::Key_Right);
  QTRY_VERIFY(stage.tree.isExpanded(group));
  QCOMPARE(stage.proxy.rowCount(group), 3);
}

// To another tree, as at the next start. Groups that are gone are not handed on any further.
void PlanTreeTest::OpenGroupsAreHandedOn() {
  using TarnPlanView::OpenGroup;
  for (const int load_all : {0, 1}) {
    TarnPlanView::OpenGroups groups;
    {
      CTreeStage stage(Opened({{"load_all", load_all}}));
      for (const char* group : {"Public A", "A1", "Public B"}) {
        QTRY_VERIFY(stage.Row(group).isValid());
        stage.tree.ExpandAsync(stage.Row(group));
        QTRY_VERIFY(stage.tree.isExpanded(stage.Row(group)));
      }
      stage.tree.collapse(stage.Row("Public B"));
      groups = stage.tree.GetOpenGroups();
      const QString a = fixture_.Code("Public A");
      QCOMPARE(groups, (TarnPlanView::OpenGroups{{a, "-1"}, {fixture_.Code("A1"), a}}));
      Shut();
    }
    CTreeStage stage(Opened({{"load_all", load_all}}));
    const OpenGroup gone_from_root{"987", "-1"}, gone_with_its_group{"988", "987"};
    stage.tree.SetOpenGroups(groups + TarnPlanView::OpenGroups{gone_from_root, gone_with_its_group, {"", ""}});
    QTRY_VERIFY(stage.Row("A1").isValid() && stage.tree.isExpanded(stage.Row("A1")));
    QVERIFY(stage.tree.isExpanded(stage.Row("Public A")) && !stage.tree.isExpanded(stage.Row("Public B")));
    QTRY_COMPARE(stage.tree.GetOpenGroups(), groups);

    // Another user's, while everything is loaded again.
    stage.tree.SetOpenGroups({{fixture_.Code("Public B"), "-1"}});
    const QPersistentModelIndex before = stage.Root();
    QVERIFY(fixture_.Store().LogIn({"operator"}).IsDone());
    QTRY_VERIFY(!before.isValid() && stage.Row("Public B").isValid());
    QTRY_VERIFY(stage.tree.isExpanded(stage.Row("Public B")) && stage.tree.isExpanded(stage.Root()));
    QVERIFY(!stage.tree.isExpanded(stage.Row("Public A")));
    fixture_.Drain();
    Shut();
  }
}

void PlanTreeTest::PayloadAndWhatCanBeDragged() {
  for (const bool cycle : {true, false}) {
    CTreeStage stage(Opened({{"load_all", 1}, {"group_cycle", cycle}, {"enable_drag", cycle}}));
    QCOMPARE(stage.tree.dragEnabled(), cycle);
    const QModelIndex plan = stage.Row("Public root plan"), group = stage.Row("Public A");
    QVERIFY(CPlanDrag::CanDrag(plan) && !CPlanDrag::CanDrag(stage.Root()) && !CPlanDrag::CanDrag(QModelIndex()));
    QCOMPARE(CPlanDrag::CanDrag(group), cycle);
    Shut();
  }
  CTreeStage stage(Opened({{"load_all", 1}}));
  const auto payload = [&](const char* name, const char* kind, int type) {
    QString text = R"([{"_normal_resource":{"item_type":%1,"name":"%2"},"_source_id_":"%3","_source_type_":"%4",)"
                   R"("_station_id_":"%5","_view_index_code_":"%3"}])";
    return text.arg(type).arg(name, fixture_.Code(name), kind, QString::fromStdString(Services().StationId())).toUtf8();
  };
  QCOMPARE(CPlanDrag::Payload(stage.Row("Public root plan")), payload("Public root plan", "_type_view_", 3));
  QCOMPARE(CPlanDrag::Payload(stage.Row("Public A")), payload("Public A", "_type_view_group_", 2));
}

void PlanTreeTest::MovesFollowTheRules() {
  CTreeStage stage(Opened({{"load_all", 1}}));
  stage.tree.expand(stage.Row("Public B"));
  const QModelIndex plan = stage.Row("Public root plan"), group = stage.Row("Public A");
  const QModelIndex other = stage.Row("Public B plan 2");
  stage.Press(plan);
  {
    const QRect rect = stage.tree.visualRect(group);
    const CMove onto(stage, rect.center());
    QVERIFY(onto.accepted && onto.Frame()->isVisible() && !onto.Line()->isVisible());
    const QRect around(rect.left() - 2, rect.top() - 2, rect.width(), rect.height() + 4);
    QCOMPARE(onto.Frame()->geometry(), around);
    QTRY_VERIFY(stage.tree.isExpanded(group));  // the drag rests on it
    QVERIFY(onto.Frame()->isVisible() && onto.Frame()->geometry() == around);
  }
  const QRect rect = stage.tree.visualRect(other);
  const int middle = (rect.top() + rect.bottom()) / 2;
  for (const int y : {rect.top(), middle, middle + 1, rect.bottom()}) {
    const CMove beside(stage, QPoint(rect.center().x(), y));
    QVERIFY(beside.accepted && beside.Line()->isVisible() && !beside.Frame()->isVisible());
    QVERIFY(!beside.Line()->isEnabled());
    QCOMPARE(beside.Line()->width(), rect.width());
    const QPoint corner = y <= middle ? rect.topLeft() : rect.bottomLeft();
    QCOMPARE(beside.Line()->mapToGlobal(QPoint()), stage.tree.viewport()->mapToGlobal(corner));
  }
  QVERIFY(CMove(stage, QPoint(20, stage.tree.viewport()->height() - 40)).Refused());
  QVERIFY(CMove(stage, rect.center(), false).Refused());
  stage.tree.setSelectionMode(QAbstractItemView::MultiSelection);
  for (const QModelIndex& row : {plan, group}) {
    stage.tree.selectionModel()->select(row, QItemSelectionModel::Select);
  }
  for (const QModelIndex& row : {other, group}) {
    QVERIFY(CMove(stage, stage.Middle(row)).Refused());
  }
}

void PlanTreeTest::MovesOfOtherKindsAndOfGroups() {
  CTreeStage stage(Opened({{"load_all", 1}}));
  const auto own_group = stage.Add("own group", OwnGroupItem), own_plan = stage.Add("own plan", OwnPlanItem);
  const auto received = stage.Add("r1", ReceivedPlanItem), received2 = stage.Add("r2", ReceivedPlanItem);
  const QPersistentModelIndex plan = stage.Row("Public root plan"), group = stage.Row("Public A");
  const auto refused = [&](const QModelIndex& from, const QModelIndex& to) {
    stage.Press(from);
    const bool result = CMove(stage, stage.Middle(to)).Refused();
    stage.Release(from);
    return result;
  };
  QVERIFY(refused(plan, own_group) && refused(plan, own_plan) && refused(own_plan, group) && refused(own_plan, plan));
  QVERIFY(refused(received, group) && refused(received, received2) && refused(plan, received));
  QVERIFY(!refused(own_plan, own_group));
  for (const QModelIndex& target : {QModelIndex(plan), QModelIndex(own_plan), stage.Root()}) {
    stage.Press(group);
    const CMove move(stage, stage.Middle(target));
    QVERIFY(move.accepted && !move.Line()->isVisible() && !move.Frame()->isVisible());
    stage.Release(group);
  }
}

void PlanTreeTest::DropsReportOrRefuse() {
  CTreeStage stage(Opened({{"load_all", 1}}));
  QSignalSpy moved(&stage.tree, &CPlanViewTree::SignalMoveRow);
  QSignalSpy tips(&stage.tree, &CPlanViewTree::SignalMessageTipNeeded);
  const QPersistentModelIndex plan = stage.Row("Public root plan"), group = stage.Row("Public A");
  const QPoint start = stage.Middle(plan), end = stage.Middle(group);
  stage.Press(plan);
  CMove drag(stage, end);
  QVERIFY(drag.Drop(end));
  QCOMPARE(tips.size(), 1);
  QCOMPARE(tips.last(), (QVariantList{CPlanViewTree::tr("TheUserHasNoPermission"), 0}));
  QVERIFY(!drag.Frame()->isVisible() && moved.isEmpty());
  stage.tree.SetMovePermission(true);
  QVERIFY(drag.Drop(end));
  QCOMPARE(moved.last(), (QVariantList{start, end, stage.tree.visualRect(group)}));

  QVERIFY(!drag.Drop(end, false));
  QVERIFY(!CMove(stage, end, false).Drop(end, false));
  stage.Remove(plan);
  QVERIFY(!drag.Drop(end));
  QCOMPARE(moved.size(), 1);
  QCOMPARE(tips.size(), 1);
}

void PlanTreeTest::SignsStayWhereNamesElide() {
  CTreeStage stage(Opened({{"timed_play", 1}}));
  const QString name = "A name that is by far too long for a narrow tree";
  const QPersistentModelIndex row = stage.Add(name, PublicPlanItem);
  const auto picture = [&] { return stage.tree.viewport()->grab(stage.tree.visualRect(row)).toImage(); };
  // What the tips say along the row, from its end.
  const auto tips = [&] {
    QStringList said;
    const QRect place = stage.tree.visualRect(row);
    for (int x = place.right(); x > place.left(); x -= 4) {
      const QPoint at(x, place.center().y());
      QHelpEvent help(QEvent::ToolTip, at, stage.tree.viewport()->mapToGlobal(at));
      QApplication::sendEvent(stage.tree.viewport(), &help);
      said << QToolTip::text();
    }
    said.removeDuplicates();
    said.removeAll(QString());
    return said;
  };
  view_plugin_protocol::PlanBasicInfo plan;
  plan.auto_run = true;
  plan.page_count = 3;
  for (const bool selected : {false, true}) {
    stage.tree.setCurrentIndex(selected ? QModelIndex(row) : stage.Root());
    for (const int width : {520, 150}) {
      stage.tree.resize(width, 500);
      stage.tree.model()->setData(row, QVariant(), CurrentRecordRole);
      const QImage without = picture();
      QVERIFY(!tips().contains("automatic, tour, 3 page(s)"));
      stage.tree.model()->setData(row, QVariant::fromValue(plan), CurrentRecordRole);
      QVERIFY(picture() != without);
      QVERIFY2(tips().contains("automatic, tour, 3 page(s)"), qPrintable(tips().join('|')));
      QCOMPARE(tips().contains(name), width == 150);
    }
  }
}

QTEST_MAIN(PlanTreeTest)
#include "test_plan_tree.moc"
