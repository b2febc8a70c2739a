#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QtTest>
#include <random>

#include "MarUIControl/tree_view.h"
#include "TarnUIDataController/download_slide_widget_pos_rule.h"
#include "TarnUIDataController/popup_menu.h"
#include "TarnUIDataController/qss_widget_box.h"
#include "WidgetKit/dock_widget.h"
#include "WidgetKit/drag.h"
#include "WidgetKit/new_location_view_widget.h"

using namespace tarn_ui_data_controller;
using WidgetKit::CNewLocationViewWidget;

namespace {

/// Groups of plans behind a sorting proxy that hides every group named "hidden".
struct Tree {
  Tree() {
    proxy.setFilterRegularExpression("^(?!hidden)");
    proxy.setSourceModel(&rows);
    proxy.sort(0);
    view.setModel(&proxy);
    view.resize(300, 300);
    view.show();
    field.SetView(&view);
  }
  QStandardItem* AddGroup(const QString& name, const QStringList& plans) {
    auto* group = new QStandardItem(name);
    for (const QString& plan : plans) {
      group->appendRow(new QStandardItem(plan));
    }
    rows.appendRow(group);
    return group;
  }
  /// Types the text and waits for the hits.
  int Find(const QString& text) {
    field.setText(text);
    field.Locate();
    return Settle();
  }
  int Settle() {
    const bool settled = QTest::qWaitFor([this] { return !field.IsLocating(); }, 10000);
    return settled ? field.HitCount() : -1;
  }
  QString Current() const { return view.currentIndex().data().toString(); }
  /// What match() finds, in the order of the view.
  QStringList Expected(const QString& text) const {
    QStringList names;
    const QModelIndexList hits =
        proxy.match(proxy.index(0, 0), Qt::DisplayRole, text, -1, Qt::MatchContains | Qt::MatchRecursive);
    for (const QModelIndex& hit : hits) {
      names.append(hit.data().toString());
    }
    return names;
  }
  QStringList Stepped() {
    QStringList names;
    for (int hit = 0; hit < field.HitCount(); ++hit) {
      names.append(Current());
      QTest::keyClick(&field, Qt::Key_Down);
    }
    return names;
  }

  QStandardItemModel rows;
  QSortFilterProxyModel proxy;
  MarUIControl::CTreeView view;
  CNewLocationViewWidget field;
};

/// A window with a panel at the left and a wall beside it.
struct Desk {
  Desk() {
    window.resize(900, 500);
    auto* row = new QHBoxLayout(&window);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(panel);
    row->addWidget(wall, 1);
    panel->setFixedWidth(200);
    editor = new QWidget(panel);
    field = new QLineEdit(editor);
    editor->hide();
    window.show();
    window.activateWindow();
    panel->setFocus();
  }
  WidgetKit::CSlideOutData Data(int width = 400, bool beside_wall = true) const {
    WidgetKit::CSlideOutData data;
    data.SetVal_slide_width(width);
    data.SetVal_ptr_dock_widget(editor);
    if (beside_wall) {
      auto rule = std::make_shared<CDownloadSlideWidgetPosRule>();
      rule->SetPosAttachTo(wall);
      data.SetVal_ptr_dock_pos_rule(rule);
    }
    return data;
  }
  QRect Place() const { return QRect(editor->mapTo(&window, QPoint()), editor->size()); }

  QWidget window;
  QLineEdit* panel = new QLineEdit;
  QWidget* wall = new QWidget;
  QPointer<QWidget> editor;
  QLineEdit* field = nullptr;
};

}  // namespace

class SearchAndPopupsTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void LocatesAndSteps() {
    Tree tree;
    tree.AddGroup("b group", {"Gate 2", "yard"});
    tree.AddGroup("a group", {"gate 1", "yard"});
    tree.AddGroup("hidden group", {"gate 0"});
    QSignalSpy located(&tree.field, &CNewLocationViewWidget::SignalLocated);
    QTest::keyClicks(&tree.field, "GATE");  // by typing alone
    QVERIFY(located.wait());
    QCOMPARE(located.last().at(0).toInt(), 2);
    QCOMPARE(tree.Current(), QString("gate 1"));
    QVERIFY(tree.view.isExpanded(tree.view.currentIndex().parent()));
    QCOMPARE(CNewLocationViewWidget::LocatedText(&tree.view), QString("GATE"));
    auto* counter = tree.field.findChild<QLabel*>("locate_counter");
    QCOMPARE(counter->text(), QString("1/2"));
    const struct {
      Qt::Key key;
      Qt::KeyboardModifiers modifiers;
      const char* there;
    } keys[] = {{Qt::Key_Return, Qt::NoModifier, "Gate 2"}, {Qt::Key_Down, Qt::NoModifier, "gate 1"},
                {Qt::Key_F3, Qt::NoModifier, "Gate 2"},     {Qt::Key_Return, Qt::ShiftModifier, "gate 1"},
                {Qt::Key_Up, Qt::NoModifier, "Gate 2"},     {Qt::Key_F3, Qt::ShiftModifier, "gate 1"}};
    for (const auto& step : keys) {
      QTest::keyClick(&tree.field, step.key, step.modifiers);
      QCOMPARE(tree.Current(), QString(step.there));
    }
    QCOMPARE(tree.Find("no such row"), 0);
    QCOMPARE(tree.Current(), QString("gate 1"));
    QCOMPARE(tree.field.accessibleDescription(), counter->text());
    QVERIFY(!counter->text().isEmpty());
  }

  void LeavesNoTrace() {
    Tree tree;
    tree.AddGroup("a", {"gate"});
    QCOMPARE(tree.Find("gate"), 1);
    QTest::keyClick(&tree.field, Qt::Key_Escape);
    QCOMPARE(tree.field.text(), QString());
    QCOMPARE(CNewLocationViewWidget::LocatedText(&tree.view), QString());
    QCOMPARE(tree.field.HitCount(), 0);
    QCOMPARE(tree.Find("gate"), 1);
    tree.field.SetView(nullptr);
    QCOMPARE(CNewLocationViewWidget::LocatedText(&tree.view), QString());
    {
      MarUIControl::CTreeView gone;
      gone.setModel(&tree.proxy);
      tree.field.SetView(&gone);
      tree.field.Locate();
      QVERIFY(tree.field.IsLocating());
    }
    QVERIFY(tree.Settle() >= 0);
    QTest::keyClick(&tree.field, Qt::Key_Down);
  }

  void FollowsEditsOfTheRows() {
    Tree tree;
    QStandardItem* group = tree.AddGroup("a", {"gate 1", "gate 3"});
    QCOMPARE(tree.Find("gate"), 2);
    QTest::keyClick(&tree.field, Qt::Key_Down);
    QCOMPARE(tree.Current(), QString("gate 3"));
    group->appendRow(new QStandardItem("gate 2"));
    QCOMPARE(tree.Settle(), 3);
    QCOMPARE(tree.Current(), QString("gate 3"));  // new rows do not move the user
    group->child(0)->setText("yard");
    QCOMPARE(tree.Settle(), 2);
    group->removeRow(1);
    QTest::keyClick(&tree.field, Qt::Key_Down);  // before it has looked again
    QVERIFY(tree.view.currentIndex().isValid());
    QCOMPARE(tree.Settle(), 1);
    tree.rows.clear();
    QCOMPARE(tree.Settle(), 0);
  }

  // Edits of every kind between the slices: no crash, and in the end the truth.
  void SurvivesEditsInTheMiddle() {
    Tree tree;
    for (int group = 0; group < 1500; ++group) {
      tree.AddGroup(QString("group %1").arg(group), {"gate", "yard", "door", "gate", "hall"});
    }
    const QList<std::function<void()>> edits = {
        [&] { tree.rows.removeRow(0); },
        [&] { tree.rows.insertRow(0, new QStandardItem("gate new")); },
        [&] { tree.rows.item(5)->removeRows(0, tree.rows.item(5)->rowCount()); },
        [&] { tree.rows.item(7)->setText("hidden now"); },
        [&] { tree.rows.item(9)->setText("gate group"); },
        [&] { tree.rows.sort(0, Qt::DescendingOrder); },
        [&] { tree.proxy.setSourceModel(nullptr), tree.proxy.setSourceModel(&tree.rows); },
        [&] { tree.rows.appendRow(tree.rows.takeRow(3)); }};
    for (const auto& edit : edits) {
      tree.field.setText("gate");
      tree.field.Locate();
      QCoreApplication::processEvents();
      QVERIFY(tree.field.IsLocating());
      edit();
      QCOMPARE(tree.Settle(), tree.Expected("gate").size());
    }
    tree.field.setText("gate");
    tree.field.Locate();
    QCoreApplication::processEvents();
    tree.field.setText("hall");  // the look for the older text brings nothing any more
    QCOMPARE(tree.Settle(), tree.Expected("hall").size());
    QCOMPARE(tree.Current(), QString("hall"));
    QStandardItemModel other;
    other.appendRow(new QStandardItem("hall"));
    tree.field.Locate();
    tree.view.setModel(&other);
    QCOMPARE(tree.Settle(), 1);
    tree.view.setModel(nullptr);
    QTest::keyClick(&tree.field, Qt::Key_Down);
    QCOMPARE(tree.Settle(), 0);
  }

  void FindsWhatMatchFinds() {
    std::mt19937 random(7);
    const auto below = [&random](int bound) { return static_cast<int>(random() % unsigned(bound)); };
    for (int round = 0; round < 30; ++round) {
      Tree tree;
      QVector<QStandardItem*> all = {tree.rows.invisibleRootItem()};
      for (int row = 0; row < 60; ++row) {
        const QString name = QString(below(12) == 0 ? "hidden %1" : "r%1").arg(random() % 1000, 3, 8);
        auto* item = new QStandardItem(name);
        all.at(below(all.size()))->appendRow(item);
        all.append(item);
      }
      const QString text = QString::number(below(80), 8);
      const QStringList expected = tree.Expected(text);
      QCOMPARE(tree.Find(text), expected.size());
      QCOMPARE(tree.Stepped(), expected);
    }
  }

  void MoreHitsThanAreKept() {
    Tree tree;
    for (int group = 0; group < 300; ++group) {
      tree.AddGroup(QString("g%1").arg(299 - group, 3, 10, QChar('0')), {"gate 1", "gate 2", "gate 3", "gate 4"});
    }
    QCOMPARE(tree.Find("gate"), 1200);
    QCOMPARE(tree.view.currentIndex().parent().data().toString(), QString("g000"));  // the first that the user sees
    tree.rows.removeRow(0);
    QCOMPARE(tree.Settle(), 1196);
  }

  void MenuKeepsOrderAndStaysOnScreen() {
    CPopupMenu menu;
    for (const MsgType type : {Share, Edit, Delete}) {
      menu.AddMenuItem(type, QString::number(type));
    }
    menu.SetMenuItemVisible(Edit, false);
    menu.SetMenuItemEnabled(Delete, false, "You may not");
    menu.SetMenuData("plan 7");
    QSignalSpy clicked(&menu, &CPopupMenu::signalPopupMenuClicked);
    menu.PopupAt(QPoint(50, 50));
    QVERIFY(menu.isVisible());
    const QRect first = menu.actionGeometry(menu.MenuItem(Share));
    QCOMPARE(menu.actionGeometry(menu.MenuItem(Delete)).top(), first.bottom() + 1);
    QCOMPARE(menu.MenuItem(Delete)->toolTip(), QString("You may not"));
    QTest::mouseClick(&menu, Qt::LeftButton, Qt::NoModifier, menu.actionGeometry(menu.MenuItem(Delete)).center());
    QCOMPARE(clicked.size(), 0);
    QTest::mouseClick(&menu, Qt::LeftButton, Qt::NoModifier, first.center());
    QCOMPARE(clicked.size(), 1);
    QCOMPARE(clicked.at(0).at(0).value<MsgType>(), Share);
    QCOMPARE(clicked.at(0).at(1), QVariant("plan 7"));
    QVERIFY(!menu.isVisible());
    QVERIFY(!menu.MenuItem(PlayVideo));
    menu.SetMenuItemVisible(PlayVideo, true);  // an entry that is not there
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    for (const QPoint& point : {screen.bottomRight(), screen.topLeft(), QPoint(-5000, 90000)}) {
      menu.PopupAt(point);
      QVERIFY(screen.contains(menu.geometry()));
      menu.hide();
    }
  }

  void MenuSurvivesForeignActions() {
    CPopupMenu menu;
    menu.AddMenuItem(Edit, "Edit");
    auto* mine = new QAction("mine");
    QAction kept("kept"), later("later");
    menu.SetMoreActions({mine, nullptr, &kept});
    menu.AddMenuItem(Delete, "Delete");  // own entries stay above the line
    QCOMPARE(menu.actions().indexOf(mine), 3);
    QVERIFY(menu.actions().at(2)->isSeparator());
    delete mine;
    menu.SetMoreActions({&later});
    QVERIFY(!menu.actions().contains(&kept));
    QCOMPARE(menu.actions().last(), &later);
    menu.SetMoreActions({});
    CPopupMenu empty;
    empty.PopupAt(QPoint(5, 5));
    QVERIFY(!empty.isVisible());
  }

  void DockSlidesOutAndPutsBack() {
    Desk desk;
    QVERIFY(QTest::qWaitForWindowActive(&desk.window));
    WidgetKit::ShowDockWidget(desk.Data());
    WidgetKit::ShowDockWidget(desk.Data());
    QVERIFY(WidgetKit::IsDockWidgetShown(desk.editor));
    QTRY_COMPARE(desk.Place(), QRect(200, 0, 400, 500));
    QVERIFY(!desk.editor->isWindow());
    QTRY_VERIFY(desk.field->hasFocus());
    QTest::keyClick(desk.field, Qt::Key_Escape);
    QVERIFY(WidgetKit::IsDockWidgetShown(desk.editor));
    WidgetKit::HideDockWidget(desk.editor);
    QVERIFY(!WidgetKit::IsDockWidgetShown(desk.editor));
    WidgetKit::ShowDockWidget(desk.Data());  // while it slides back
    QTRY_COMPARE(desk.Place().left(), 200);
    WidgetKit::HideDockWidget(desk.editor);
    WidgetKit::HideDockWidget(desk.editor);
    QTRY_COMPARE(desk.editor->parentWidget(), desk.panel);
    QVERIFY(desk.editor->isHidden());
    QTRY_VERIFY(desk.panel->hasFocus());
    WidgetKit::ShowDockWidget(desk.Data(400, false));  // without a rule: the right edge
    QTRY_COMPARE(desk.Place(), QRect(500, 0, 400, 500));
    desk.editor->hide();  // closes itself
    QVERIFY(!WidgetKit::IsDockWidgetShown(desk.editor));
    QCOMPARE(desk.editor->parentWidget(), desk.panel);
    WidgetKit::ShowDockWidget(WidgetKit::CSlideOutData());
    WidgetKit::HideDockWidget(nullptr);
  }

  void DockIsPassedOverByTab() {
    Desk desk;
    QVERIFY(QTest::qWaitForWindowActive(&desk.window));
    auto* below = new QPushButton("below", desk.wall);
    below->setGeometry(20, 20, 60, 30);
    below->show();
    WidgetKit::ShowDockWidget(desk.Data());
    QTRY_COMPARE(desk.Place(), QRect(200, 0, 400, 500));
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Backtab}) {
      for (int presses = 0; presses < 6; ++presses) {
        QTest::keyClick(desk.window.focusWidget(), key);
        QVERIFY(desk.window.focusWidget() != below);
      }
    }
    WidgetKit::HideDockWidget(desk.editor);
    below->setFocus();
    QVERIFY(below->hasFocus());
  }

  void DockFollowsItsWindow() {
    Desk desk;
    WidgetKit::ShowDockWidget(desk.Data(770));
    QTRY_COMPARE(desk.Place(), QRect(200, 0, 700, 500));  // no wider than the window
    desk.window.resize(1400, 640);
    QTRY_COMPARE(desk.Place(), QRect(200, 0, 770, 640));
    desk.panel->setFixedWidth(300);
    QTRY_COMPARE(desk.Place().left(), 300);
    desk.wall->hide();  // nothing to stand beside: the right edge
    QTRY_COMPARE(desk.Place().right(), 1399);
  }

  void DockGoesWithWhatItBelongsTo_data() {
    QTest::addColumn<QString>("goes");
    QTest::addColumn<bool>("floating");  // the panel stands in a window of its own, the content in another
    for (const bool floating : {false, true}) {
      for (const char* goes : {"content", "content while it slides back", "owner", "owner's window"}) {
        QTest::newRow(qPrintable(QString(goes) + (floating ? ", floating" : ""))) << goes << floating;
      }
    }
    QTest::newRow("wall's window, floating") << "wall's window" << true;
  }

  void DockGoesWithWhatItBelongsTo() {
    QFETCH(QString, goes);
    QFETCH(bool, floating);
    auto desk = std::make_unique<Desk>();
    auto window = std::make_unique<QWidget>();
    if (floating) {
      (new QHBoxLayout(window.get()))->addWidget(desk->panel);
      window->show();
    }
    const QPointer<QWidget> editor = desk->editor;
    WidgetKit::ShowDockWidget(desk->Data());
    QTRY_VERIFY(editor->isVisible());
    QCOMPARE(editor->window(), &desk->window);
    if (goes == "content") {
      delete editor;
    } else if (goes == "content while it slides back") {
      WidgetKit::HideDockWidget(editor);
      editor->deleteLater();
    } else if (goes == "owner") {
      delete desk->panel;
    } else if (goes == "owner's window" && floating) {
      window.reset();
    } else {
      desk.reset();
    }
    if (goes == "wall's window") {
      QVERIFY(editor && editor->isHidden());  // back with its owner
      return;
    }
    QTRY_VERIFY(!editor);
    QTRY_VERIFY(!desk || !desk->window.findChild<QWidget*>("dock_frame"));
  }

  void DragMarksItsOwnRows() {
    QTreeView view;
    QWidget other;
    for (QObject* source : std::vector<QObject*>{&view, view.viewport(), &other}) {
      auto* drag = new WidgetKit::CDrag(source);
      auto* data = new QMimeData;
      drag->setMimeData(data);
      drag->SetCursorPicture(":/Images/TarnUIDataController/FavImg/monitoring_window_add_resource.svg", Qt::MoveAction);
      const QPixmap picture = drag->dragCursor(Qt::MoveAction);
      QCOMPARE(picture.size(), QSize(20, 20) * picture.devicePixelRatio());
      QCOMPARE(drag->mimeData(), data);
      QCOMPARE(data->property("_tree_drop_").toBool(), source != &other);
      drag->SetCursorPicture(QString(), Qt::MoveAction);
      delete drag;
    }
  }

  void BoxSaysWhenItComesAndGoes() {
    CQssWidgetBox box;
    QSignalSpy changed(&box, &CQssWidgetBox::signalVisiblityChanged);
    box.show();
    box.show();
    QTest::keyClick(&box, Qt::Key_Escape);
    box.CloseBox();
    QCOMPARE(changed, (QList<QList<QVariant>>{{true}, {false}}));
    QVERIFY(box.windowFlags() & Qt::FramelessWindowHint);
  }
};

QTEST_MAIN(SearchAndPopupsTest)
#include "test_search_and_popups.moc"
