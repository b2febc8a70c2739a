#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QtTest>

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
  void LevelsAndKindsOfGroup();
  void MenuOffersWhatSuitsTheRow();
  void MenuIsAboutTheRowItWasOpenedFor();
  void KeysAndDoubleClick();
  void MouseIsFollowed();
  void FinishSlotsTakeOwnAndSourceRows();
  void FailedExpansionIsTriedAgain();
  void FastClicksEndInOneState();
  void OpenGroupsOpenAgainAfterReload();
  void PayloadAndWhatCanBeDragged();
  void MovesFollowTheRules();
  void MovesOfOtherKindsAndOfGroups();
  void DropsReportOrRefuse();
};

void PlanTreeTest::LevelsAndKindsOfGroup() {
  Open();
  CPlanViewTree tree(nullptr);
  QStandardItemModel rows;
  const QMap<int, int> levels = {{-1, 0}, {0, 0}, {1, 1}, {2, 1},  {3, 2},  {4, 2},  {5, 5},  {6, 5},
                                 {7, 4},  {8, 4}, {9, 0}, {10, 0}, {11, 0}, {12, 0}, {13, 0}, {14, 0}};
  QMap<int, QModelIndex> of_level;
  for (auto row = levels.begin(); row != levels.end(); ++row) {
    auto* item = new QStandardItem;
    item->setData(row.key(), ItemTypeRole);
    rows.appendRow(item);
    QCOMPARE(static_cast<int>(tree.GetItemLevel(item->index())), row.value());
    of_level[row.value()] = item->index();
  }
  QCOMPARE(tree.GetItemLevel(QModelIndex()), NoLevel);
  const int order[] = {0, 1, 2, 4, 5};
  const char* const same[] = {"11100", "11100", "11100", "00011", "00011"};
  for (int a = 0; a < 5; ++a) {
    for (int b = 0; b < 5; ++b) {
      QCOMPARE(tree.IsGroupPropertySame(of_level[order[a]], of_level[order[b]]), same[a][b] == '1');
    }
  }
}

void PlanTreeTest::MenuOffersWhatSuitsTheRow() {
  for (const bool all : {true, false}) {
    Open({{"load_all", 1}, {"group_cycle", all}, {"creation_info", all}});
    fixture_.Messages().Expect("This plugin does not support");
    CTreeStage stage(fixture_.Public());
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

    auto* row = new QStandardItem("<none>");
    row->setData(PlaceholderItem, ItemTypeRole);
    fixture_.Public()->appendRow(row);
    about.clear();
    stage.tree.setCurrentIndex(stage.Row("<none>"));
    QTest::keyClick(&stage.tree, Qt::Key_F10, Qt::ShiftModifier);
    stage.tree.OnRightMoreBtnClicked(QModelIndex(), QPoint());
    QVERIFY(about.isEmpty() && !menu.isVisible());
    Shut();
  }
  Open();
}

void PlanTreeTest::MenuIsAboutTheRowItWasOpenedFor() {
  Open({{"load_all", 1}});
  fixture_.Messages().Expect("This plugin does not support");  // pop-ups without a display
  CTreeStage stage(fixture_.Public());
  QTRY_VERIFY(stage.tree.isExpanded(stage.Root()));
  CPopupMenu& menu = *stage.tree.GetViewMoreMenu();
  QSignalSpy clicked(&stage.tree, &CPlanViewTree::SignalMenuClicked);
  const QString code = stage.Row("Public root plan").data(PlanIndexCodeRole).toString();

  QTest::mouseMove(stage.tree.viewport(), stage.MoreButton(stage.Row("Public root plan")));
  QTest::mouseClick(stage.tree.viewport(), Qt::LeftButton, Qt::NoModifier,
                    stage.MoreButton(stage.Row("Public root plan")));
  QVERIFY(menu.isVisible());
  stage.tree.setCurrentIndex(stage.Row("Public A"));
  menu.MenuItem(Share)->trigger();
  QCOMPARE(clicked.size(), 1);
  QCOMPARE(clicked.last().at(0).value<MsgType>(), Share);
  QCOMPARE(clicked.last().at(1), QVariant(code));
  QCOMPARE(stage.tree.currentIndex(), stage.Row("Public root plan"));
  menu.close();

  QTest::keyClick(&stage.tree, Qt::Key_Menu);
  QVERIFY(menu.isVisible());
  const QModelIndex source = stage.proxy.mapToSource(stage.Row("Public root plan"));
  fixture_.Public()->removeRow(source.row(), source.parent());
  const QPersistentModelIndex current = stage.tree.currentIndex();
  const int commands = clicked.size();
  QSignalSpy tips(&stage.tree, &CPlanViewTree::SignalMessageTipNeeded);
  menu.MenuItem(Delete)->trigger();
  QCOMPARE(clicked.size(), commands);  // not about the row that has come in its place
  QCOMPARE(tips.size(), 1);
  QCOMPARE(stage.tree.currentIndex(), QModelIndex(current));
}

void PlanTreeTest::KeysAndDoubleClick() {
  Open({{"load_all", 1}});
  fixture_.Messages().Expect("This plugin does not support");  // pop-ups without a display
  CTreeStage stage(fixture_.Public());
  QTRY_VERIFY(stage.tree.isExpanded(stage.Root()));
  QSignalSpy clicked(&stage.tree, &CPlanViewTree::SignalMenuClicked);
  QSignalSpy played(&stage.tree, &CPlanViewTree::SignalPlayRequested);
  QSignalSpy activated(&stage.tree, &QAbstractItemView::activated);
  const QModelIndex plan = stage.Row("Public root plan"), group = stage.Row("Public A");
  stage.tree.setCurrentIndex(plan);
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
    QTest::keyClick(&stage.tree, key);
  }
  QCOMPARE(played.size(), 2);
  QTest::mouseClick(stage.tree.viewport(), Qt::LeftButton, Qt::NoModifier, stage.Middle(plan));
  QTest::mouseDClick(stage.tree.viewport(), Qt::LeftButton, Qt::NoModifier, stage.Middle(plan));
  QCOMPARE(played.size(), 3);
  QCOMPARE(played.last().first().toModelIndex(), plan);
  QTest::mouseDClick(stage.tree.viewport(), Qt::RightButton, Qt::NoModifier, stage.Middle(plan));
  QTest::mouseDClick(stage.tree.viewport(), Qt::LeftButton, Qt::NoModifier, stage.MoreButton(plan));
  stage.tree.GetViewMoreMenu()->close();
  QCOMPARE(played.size(), 3);

  QTest::keyClick(&stage.tree, Qt::Key_F2);
  stage.tree.setCurrentIndex(group);
  QTest::keyClick(&stage.tree, Qt::Key_Delete);
  QCOMPARE(clicked.size(), 2);
  QCOMPARE(clicked[0].at(0).value<MsgType>(), Edit);
  QCOMPARE(clicked[0].at(1), plan.data(PlanIndexCodeRole));
  QCOMPARE(clicked[1].at(0).value<MsgType>(), Delete);
  QCOMPARE(clicked[1].at(1), group.data(GroupIndexCodeRole));
  stage.tree.SetMenuItemVisible(Delete, false);
  QTest::keyClick(&stage.tree, Qt::Key_Delete);
  QTest::keyClick(&stage.tree, Qt::Key_Delete, Qt::ControlModifier);
  QCOMPARE(clicked.size(), 2);
  QTest::keyClick(&stage.tree, Qt::Key_Return);
  QVERIFY(stage.tree.isExpanded(group));
  QCOMPARE(played.size(), 3);
  QCOMPARE(activated.size(), 1);  // of the double click, which nobody plays by
}

void PlanTreeTest::MouseIsFollowed() {
  Open({{"load_all", 1}});
  CTreeStage stage(fixture_.Public());
  QTRY_VERIFY(stage.tree.isExpanded(stage.Root()));
  QSignalSpy moved(&stage.tree, &CPlanViewTree::SignalPlanViewMouseMove);
  QSignalSpy hidden(&stage.tree, &CPlanViewTree::SignalHideThumbnail);
  const QModelIndex plan = stage.Row("Public root plan");
  const auto last = [&] { return moved.isEmpty() ? CItemDataRole() : moved.last().at(1).value<CItemDataRole>(); };
  const auto move = [&](const QPoint& to) {
    QMouseEvent event(QEvent::MouseMove, to, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(stage.tree.viewport(), &event);
  };
  move(stage.Middle(plan));
  move(stage.Middle(plan) + QPoint(1, 1));
  QCOMPARE(moved.size(), 1);
  QCOMPARE(moved.last().at(0).toModelIndex(), plan);
  QCOMPARE(last().GetPart(), CItemDataRole::TextPart);
  move(stage.MoreButton(plan));
  QCOMPARE(moved.size(), 2);
  QCOMPARE(last().GetPart(), CItemDataRole::MoreButtonPart);
  hidden.clear();
  move(QPoint(20, stage.tree.viewport()->height() - 2));
  QCOMPARE(moved.size(), 3);
  QVERIFY(!moved.last().at(0).toModelIndex().isValid());
  QCOMPARE(hidden.size(), 1);

  move(stage.Middle(plan));
  const QModelIndex source = stage.proxy.mapToSource(plan);
  fixture_.Public()->removeRow(source.row(), source.parent());
  QCOMPARE(last().GetPart(), CItemDataRole::NoPart);
  hidden.clear();
  stage.Press(stage.Row("Public A"));
  stage.Release(stage.Row("Public A"));
  QCOMPARE(hidden.size(), 1);
  QCOMPARE(stage.tree.currentIndex(), stage.Row("Public A"));
}

void PlanTreeTest::FinishSlotsTakeOwnAndSourceRows() {
  Open({{"load_all", 1}});
  CTreeStage stage(fixture_.Public());
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
  Open({{"load_all", 0}});
  CTreeStage stage(fixture_.Public());
  QTRY_VERIFY(stage.Row("Public A").isValid());
  const QPersistentModelIndex group = stage.Row("Public A");
  Services().Fail("GetPlansInGroup");
  Services().Fail("GetPlanGroups");
  stage.tree.ExpandAsync(group);
  QTRY_VERIFY(!stage.tree.IsWaiting(group));
  QVERIFY(!stage.tree.isExpanded(group) && !stage.tree.IsFetched(group) && stage.proxy.hasChildren(group));
  Services().Mend("GetPlansInGroup");
  Services().Mend("GetPlanGroups");
  stage.tree.setCurrentIndex(group);
  QTest::keyClick(&stage.tree, Qt::Key_Right);
  QTRY_VERIFY(stage.tree.isExpanded(group));
  QCOMPARE(stage.proxy.rowCount(group), 3);
}

void PlanTreeTest::FastClicksEndInOneState() {
  Open({{"load_all", 0}});
  CTreeStage stage(fixture_.Public());
  QTRY_VERIFY(stage.Row("Public A").isValid());
  const QPersistentModelIndex group = stage.Row("Public A");
  Services().Hold("GetPlansInGroup");
  Services().ForgetCalls();
  const QRect rect = stage.tree.visualRect(group);
  const QPoint expander(rect.left() - stage.tree.indentation() / 2, rect.center().y());
  for (int click = 0; click < 5; ++click) {
    QTest::mouseClick(stage.tree.viewport(), Qt::LeftButton, Qt::NoModifier, expander);
  }
  QVERIFY(Services().WaitUntilHeld("GetPlansInGroup"));
  QVERIFY(stage.tree.IsWaiting(group) && !stage.tree.isExpanded(group));
  QCOMPARE(stage.tree.currentIndex(), QModelIndex(group));
  Services().ReleaseAll();
  QTRY_VERIFY(stage.tree.isExpanded(group));
  QCOMPARE(Services().Count("GetPlansInGroup"), 1);
  for (int click = 0; click < 3; ++click) {
    QTest::mouseClick(stage.tree.viewport(), Qt::LeftButton, Qt::NoModifier, expander);
  }
  QVERIFY(!stage.tree.isExpanded(group) && !stage.tree.IsWaiting(group));
}

void PlanTreeTest::OpenGroupsOpenAgainAfterReload() {
  for (const int load_all : {0, 1}) {
    Open({{"load_all", load_all}});
    CTreeStage stage(fixture_.Public());
    for (const char* group : {"Public A", "A1", "Public B"}) {
      QTRY_VERIFY(stage.Row(group).isValid());
      stage.tree.ExpandAsync(stage.Row(group));
      QTRY_VERIFY(stage.tree.isExpanded(stage.Row(group)));
    }
    stage.tree.collapse(stage.Row("Public B"));
    const QPersistentModelIndex before = stage.Root();
    QString error;
    QVERIFY(fixture_.Store().LogIn("operator", &error));  // everything is loaded anew
    QTRY_VERIFY(!before.isValid() && stage.Root().isValid());
    QTRY_VERIFY(stage.Row("A1").isValid() && stage.tree.isExpanded(stage.Row("A1")));
    QVERIFY(stage.tree.isExpanded(stage.Row("Public A")) && !stage.tree.isExpanded(stage.Row("Public B")));
    fixture_.Drain();
    Shut();
  }
  Open();
}

void PlanTreeTest::PayloadAndWhatCanBeDragged() {
  for (const bool cycle : {true, false}) {
    Open({{"load_all", 1}, {"group_cycle", cycle}, {"enable_drag", cycle}});
    CTreeStage stage(fixture_.Public());
    QCOMPARE(stage.tree.dragEnabled(), cycle);
    const QModelIndex plan = stage.Row("Public root plan"), group = stage.Row("Public A");
    QVERIFY(CPlanDrag::CanDrag(plan) && !CPlanDrag::CanDrag(stage.Root()) && !CPlanDrag::CanDrag(QModelIndex()));
    QCOMPARE(CPlanDrag::CanDrag(group), cycle);
    for (const QModelIndex& row : {plan, group}) {
      const bool is_group = row == group;
      const QByteArray payload = CPlanDrag::Payload(row);
      QVERIFY(!payload.contains('\n') && !payload.contains(": "));
      const QJsonArray rows = QJsonDocument::fromJson(payload).array();
      const QString code = row.data(is_group ? GroupIndexCodeRole : PlanIndexCodeRole).toString();
      const QJsonObject wanted = {
          {"_source_id_", code},
          {"_station_id_", QString::fromStdString(Services().StationId())},
          {"_source_type_", is_group ? "_type_view_group_" : "_type_view_"},
          {"_normal_resource", QJsonObject{{"name", row.data().toString()}, {"item_type", is_group ? 2 : 3}}},
          {"_view_index_code_", code}};
      QCOMPARE(rows, QJsonArray{wanted});
    }
    Shut();
  }
  Open();
}

void PlanTreeTest::MovesFollowTheRules() {
  Open({{"load_all", 1}});
  CTreeStage stage(fixture_.Public());
  QTRY_VERIFY(stage.tree.isExpanded(stage.Root()));
  stage.tree.expand(stage.Row("Public B"));
  const QModelIndex plan = stage.Row("Public root plan"), group = stage.Row("Public A");
  const QModelIndex other = stage.Row("Public B plan 2");
  stage.Press(plan);
  {
    const QRect rect = stage.tree.visualRect(group);
    const CMove onto(stage, rect.center());
    QVERIFY(onto.accepted && onto.Frame()->isVisible() && !onto.Line()->isVisible());
    QCOMPARE(onto.Frame()->geometry(), QRect(rect.left() - 2, rect.top() - 2, rect.width(), rect.height() + 4));
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
  Open({{"load_all", 1}});
  CTreeStage stage(fixture_.Public());
  QTRY_VERIFY(stage.tree.isExpanded(stage.Root()));
  const auto add = [&](const char* name, int type) {
    auto* item = new QStandardItem(name);
    item->setData(type, ItemTypeRole);
    fixture_.Public()->appendRow(item);
    return QPersistentModelIndex(stage.Row(name));
  };
  const auto own_group = add("own group", OwnGroupItem), own_plan = add("own plan", OwnPlanItem);
  const auto received = add("received", ReceivedPlanItem), received2 = add("received 2", ReceivedPlanItem);
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
  Open({{"load_all", 1}});
  CTreeStage stage(fixture_.Public());
  QTRY_VERIFY(stage.tree.isExpanded(stage.Root()));
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
  const QModelIndex source = stage.proxy.mapToSource(plan);
  fixture_.Public()->removeRow(source.row(), source.parent());
  QVERIFY(!drag.Drop(end));
  QCOMPARE(moved.size(), 1);
  QCOMPARE(tips.size(), 1);
}

QTEST_MAIN(PlanTreeTest)
#include "test_plan_tree.moc"
