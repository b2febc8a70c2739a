#include <QAccessible>
#include <QLabel>
#include <QListView>
#include <QStandardItemModel>
#include <QtTest>
#include <memory>

#include "MarUIControl/tree_view.h"
#include "screen_reader.h"

namespace {

constexpr int kTop = 3, kLarge = 3000;

// Three rows, the second with thousands below it, of which the first has two.
void Fill(QStandardItemModel* model) {
  for (int row = 0; row < kTop; ++row) {
    model->appendRow(new QStandardItem(QString("top %1").arg(row)));
  }
  for (int row = 0; row < kLarge; ++row) {
    model->item(1)->appendRow(new QStandardItem(QString("inner %1").arg(row)));
  }
  model->item(1)->child(0)->appendRows({new QStandardItem("deep 0"), new QStandardItem("deep 1")});
}

QString NameOf(const QAccessibleInterface* row) {
  return row ? row->text(QAccessible::Name) : QString();
}

}  // namespace

class ViewAccessibilityTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    model_ = std::make_unique<QStandardItemModel>();
    Fill(model_.get());
    tree_ = std::make_unique<MarUIControl::CTreeView>();
    tree_->setModel(model_.get());
    tree_->setAccessibleName("Rows");
    tree_->resize(300, 200);
    tree_->show();
    tree_->expand(model_->index(1, 0));
    tree_->expand(model_->index(0, 0, model_->index(1, 0)));
    view_ = QAccessible::queryAccessibleInterface(tree_.get());
  }
  void cleanup() { tree_.reset(); }

  void NumbersRowsAsTheyStandBelowEachOther() {
    const QMap<int, QString> names{
        {1, "top 0"},         {2, "top 1"},   {3, "inner 0"},         {4, "deep 0"},
        {5, "deep 1"},        {6, "inner 1"}, {kLarge, "inner 2995"}, {kLarge + 4, "inner 2999"},
        {kLarge + 5, "top 2"}};
    const QVector<QPair<QAbstractItemView::ScrollMode, bool>> ways{{QAbstractItemView::ScrollPerItem, true},
                                                                   {QAbstractItemView::ScrollPerPixel, true},
                                                                   {QAbstractItemView::ScrollPerItem, false}};
    for (const auto& way : ways) {
      tree_->setVerticalScrollMode(way.first);
      tree_->setUniformRowHeights(way.second);
      for (const QModelIndex& in_sight : {model_->index(0, 0), model_->index(1500, 0, model_->index(1, 0))}) {
        tree_->scrollTo(in_sight);
        QCOMPARE(view_->childCount(), 1 + kTop + kLarge + 2);  // with the title of the column
        for (auto name = names.begin(); name != names.end(); ++name) {
          QAccessibleInterface* row = view_->child(name.key());
          QCOMPARE(NameOf(row), name.value());
          QCOMPARE(view_->indexOfChild(row), name.key());
        }
      }
    }
    tree_->collapse(model_->index(1, 0));
    QCOMPARE(view_->childCount(), 1 + kTop);
    QCOMPARE(view_->indexOfChild(view_->child(3)), 3);
  }

  void SaysStateLevelAndWhatIsBelow() {
    QVERIFY(view_->state().focusable && !view_->state().invisible);
    const QAccessibleInterface* group = view_->child(2);
    QVERIFY(group->state().expandable && group->state().expanded && !group->state().collapsed);
    QCOMPARE(group->text(QAccessible::Description), QString("Level 1, rows below: 3000"));
    model_->item(0)->setCheckable(true);
    QVERIFY(view_->child(1)->state().checkable && !view_->child(1)->state().expandable);
    QCOMPARE(view_->child(4)->text(QAccessible::Description), QString("Level 3"));
  }

  // All of a large tree asked for leaves few rows behind, and what has gone is not asked any more.
  void KeepsFewRowsAndNoneThatHasGone() {
    const TarnTest::CScreenReader reader;
    QAccessibleInterface* gone = view_->child(6);
    const QAccessible::Id id = QAccessible::uniqueId(gone);
    model_->item(1)->removeRow(1);
    QTRY_VERIFY(!QAccessible::accessibleInterface(id));
    for (int number = 1; number < view_->childCount(); ++number) {
      QVERIFY(view_->child(number));
    }
    const QAccessible::Id early = QAccessible::uniqueId(view_->child(100));
    for (int number = 200; number < 600; ++number) {
      QVERIFY(view_->child(number));
    }
    QVERIFY(!QAccessible::accessibleInterface(early));
  }

  void TellsWhereTheUserIsAndWhatOpened() {
    const TarnTest::CScreenReader reader;
    QVERIFY(QTest::qWaitForWindowActive(tree_.get()));
    tree_->clearFocus();
    tree_->setCurrentIndex(model_->index(1, 0));
    tree_->setFocus();
    QTRY_VERIFY(reader.Heard(QAccessible::Focus, QAccessible::TreeItem).contains("top 1"));
    tree_->collapse(model_->index(1, 0));
    QCOMPARE(reader.Heard(QAccessible::DescriptionChanged), QStringList("top 1"));
    model_->item(1)->setText("top one");
    QTRY_VERIFY(reader.Heard(QAccessible::NameChanged).contains("top one"));
  }

  void DoesWhatTheKeysDo() {
    QAccessibleInterface* row = view_->child(2);
    row->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    QCOMPARE(tree_->currentIndex(), model_->index(1, 0));
    row->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QTRY_VERIFY(!tree_->isExpanded(model_->index(1, 0)));
  }

  void ShowsWhatLiesOverTheRows() {
    QListView list;
    list.setModel(model_.get());
    list.show();
    const QAccessibleInterface* rows = QAccessible::queryAccessibleInterface(&list);
    QCOMPARE(rows->role(), QAccessible::List);
    QCOMPARE(rows->childCount(), kTop);
    auto* over = new QLabel("nothing here", list.viewport());
    over->show();
    QCOMPARE(rows->childCount(), kTop + 1);
    QAccessibleInterface* viewport = rows->child(kTop);
    QCOMPARE(NameOf(viewport->child(0)), QString("nothing here"));
    QCOMPARE(rows->indexOfChild(viewport), kTop);
  }

 private:
  std::unique_ptr<QStandardItemModel> model_;
  std::unique_ptr<MarUIControl::CTreeView> tree_;
  QAccessibleInterface* view_ = nullptr;
};

QTEST_MAIN(ViewAccessibilityTest)
#include "test_view_accessibility.moc"
