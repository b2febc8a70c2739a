#include <QSortFilterProxyModel>
#include <QtTest>
#include <memory>

#include "MarUIControl/standard_item.h"
#include "MarUIControl/standard_item_model.h"
#include "MarUIControl/tree_view.h"

using MarUIControl::CModelKeyMapping;
using MarUIControl::CStandardItem;
using MarUIControl::CStandardItemModel;
using MarUIControl::CTreeView;

// A tree over a proxy with two groups whose children were not asked for, and a plan.
class TreeViewTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    model_ = std::make_unique<CStandardItemModel>();
    proxy_ = std::make_unique<QSortFilterProxyModel>();
    view_ = std::make_unique<CTreeView>();
    for (const char* name : {"group a", "group b"}) {
      auto* group = new CStandardItem(name);
      group->setData(true, CModelKeyMapping::GroupMarkRole);
      model_->appendRow(group);
    }
    model_->appendRow(new CStandardItem("plan"));
    proxy_->setSourceModel(model_.get());
    view_->setModel(proxy_.get());
    view_->setHeaderHidden(true);
    view_->resize(300, 300);
    view_->show();
    QVERIFY(QTest::qWaitForWindowExposed(view_.get()));
    view_->setCurrentIndex(Row(0));
    asked_ = std::make_unique<QSignalSpy>(view_.get(), &CTreeView::AsynchronousExpand);
  }

  void cleanup() {
    asked_.reset();
    view_.reset();
    proxy_.reset();
    model_.reset();
  }

  void GesturesAskOnce_data() {
    QTest::addColumn<QString>("gesture");
    for (const char* gesture : {"expander", "double click", "right", "return", "enter", "plus", "star", "program"}) {
      QTest::newRow(gesture) << gesture;
    }
  }

  void GesturesAskOnce() {
    QFETCH(QString, gesture);
    QWidget* port = view_->viewport();
    static const QHash<QString, int> kKeys = {{"right", Qt::Key_Right},
                                              {"return", Qt::Key_Return},
                                              {"enter", Qt::Key_Enter},
                                              {"plus", Qt::Key_Plus},
                                              {"star", Qt::Key_Asterisk}};
    for (int repeat = 0; repeat < 2; ++repeat) {
      if (gesture == "expander") {
        QTest::mouseClick(port, Qt::LeftButton, Qt::NoModifier, ExpanderOf(Row(0)));
      } else if (gesture == "double click") {
        const QPoint text = view_->visualRect(Row(0)).center();
        QTest::mouseClick(port, Qt::LeftButton, Qt::NoModifier, text);
        QTest::mouseDClick(port, Qt::LeftButton, Qt::NoModifier, text);
      } else if (gesture == "program") {
        view_->ExpandAsync(Row(0));
      } else {
        QTest::keyClick(view_.get(), static_cast<Qt::Key>(kKeys.value(gesture)));
      }
      QCOMPARE(asked_->size(), 1);
      QCOMPARE(asked_->first().first().toModelIndex(), Row(0));
      QVERIFY(view_->IsWaiting(Row(0)));
      QVERIFY(!view_->isExpanded(Row(0)));
    }
    QVERIFY(!view_->IsWaiting(Row(1)));
  }

  void ProgramsDoNotAsk() {
    view_->expand(Row(0));
    view_->expandAll();
    view_->setExpanded(Row(1), true);
    QTest::mouseClick(view_->viewport(), Qt::LeftButton, Qt::NoModifier, ExpanderOf(Row(2)));
    view_->setCurrentIndex(Row(2));
    QTest::keyClick(view_.get(), Qt::Key_Return);
    QTest::keyClick(view_.get(), Qt::Key_Right);
    view_->ExpandAsync(QModelIndex());
    view_->ExpandAsync(model_->index(0, 0));  // not an index of the view's own model
    QCOMPARE(asked_->size(), 0);
  }

  void AnswerExpandsAndIsRemembered() {
    view_->ExpandAsync(Row(0));
    Fill(0, 3);
    view_->FinishExpand(Row(0), true, true);
    QVERIFY(view_->isExpanded(Row(0)) && !view_->IsWaiting(Row(0)));
    QTest::keyClick(view_.get(), Qt::Key_Return);
    QVERIFY(!view_->isExpanded(Row(0)));
    QTest::mouseClick(view_->viewport(), Qt::LeftButton, Qt::NoModifier, ExpanderOf(Row(0)));
    QVERIFY(view_->isExpanded(Row(0)));
    QCOMPARE(asked_->size(), 1);

    view_->ExpandAsync(Row(1));
    Fill(1, 1);
    view_->FinishExpand(Row(1), false, true);
    QVERIFY(!view_->isExpanded(Row(1)));
    view_->FinishExpand(model_->index(1, 0), true, true);  // a foreign index is no answer
    QVERIFY(!view_->isExpanded(Row(1)));
  }

  void FailureCanBeTriedAgain() {
    view_->ExpandAsync(Row(0));
    view_->FinishExpand(Row(0), true, false);
    QVERIFY(!view_->isExpanded(Row(0)) && !view_->IsWaiting(Row(0)));
    // Rows that were added from elsewhere meanwhile are not all of them.
    model_->itemFromIndex(proxy_->mapToSource(Row(0)))->appendRow(new CStandardItem("added elsewhere"));
    QTest::keyClick(view_.get(), Qt::Key_Right);
    QCOMPARE(asked_->size(), 2);
    QVERIFY(!view_->isExpanded(Row(0)));
  }

  void EmptyGroupLosesItsExpander() {
    QTest::mouseClick(view_->viewport(), Qt::LeftButton, Qt::NoModifier, ExpanderOf(Row(0)));
    view_->setCurrentIndex(Row(2));
    Fill(0, 0);
    view_->FinishExpand(Row(0), true, true);
    QTRY_VERIFY(BranchOf(Row(0)) != BranchOf(Row(1)));
    QTRY_VERIFY(!view_->isExpanded(Row(0)));
    QTest::mouseClick(view_->viewport(), Qt::LeftButton, Qt::NoModifier, ExpanderOf(Row(0)));
    QCOMPARE(asked_->size(), 1);
  }

  void RowVanishesWhileItWaits() {
    view_->ExpandAsync(Row(0));
    view_->ExpandAsync(Row(1));
    proxy_->sort(0, Qt::DescendingOrder);  // "group a" is now the last row
    QVERIFY(view_->IsWaiting(Row(2)) && view_->IsWaiting(Row(1)) && !view_->IsWaiting(Row(0)));
    const QPersistentModelIndex gone = Row(2);
    model_->removeRow(0);
    view_->FinishExpand(gone, true, true);
    QVERIFY(view_->IsWaiting(Row(1)));
    model_->clear();
    view_->FinishExpand(gone, true, true);
    QVERIFY(!view_->IsWaiting(Row(0)));
    view_->setModel(nullptr);
    view_->setModel(proxy_.get());
  }

  void StarStaysWithinWhatIsFetched() {
    view_->ExpandAsync(Row(0));
    Fill(0, 2);
    QStandardItem* inner = model_->itemFromIndex(proxy_->mapToSource(proxy_->index(0, 0, Row(0))));
    inner->setData(true, CModelKeyMapping::GroupMarkRole);
    view_->FinishExpand(Row(0), false, true);
    QTest::keyClick(view_.get(), Qt::Key_Asterisk);
    QVERIFY(view_->isExpanded(Row(0)));
    QVERIFY(!view_->isExpanded(proxy_->index(0, 0, Row(0))));
    QCOMPARE(asked_->size(), 1);
  }

  void WaitingMarkMovesOnlyWhileWaiting() {
    const QImage at_rest = BranchOf(Row(0));
    view_->ExpandAsync(Row(0));
    const QImage first = BranchOf(Row(0));
    QVERIFY(first != at_rest);
    QTRY_VERIFY(BranchOf(Row(0)) != first);
    view_->FinishExpand(Row(0), true, false);
    QCOMPARE(BranchOf(Row(0)), at_rest);
  }

 private:
  QModelIndex Row(int row) const { return proxy_->index(row, 0); }
  void Fill(int row, int children) {
    const QModelIndex source = proxy_->mapToSource(Row(row));
    for (int i = 0; i < children; ++i) {
      model_->itemFromIndex(source)->appendRow(new CStandardItem(QString::number(i)));
    }
    model_->SetChildrenFetched(source, true);
  }

  QPoint ExpanderOf(const QModelIndex& index) const {
    const QRect rect = view_->visualRect(index);
    return QPoint(rect.left() - view_->indentation() / 2, rect.center().y());
  }

  // What is drawn before the text.
  QImage BranchOf(const QModelIndex& index) const {
    const QRect rect = view_->visualRect(index);
    return view_->viewport()->grab(QRect(0, rect.top(), rect.left(), rect.height())).toImage();
  }

  std::unique_ptr<CStandardItemModel> model_;
  std::unique_ptr<QSortFilterProxyModel> proxy_;
  std::unique_ptr<CTreeView> view_;
  std::unique_ptr<QSignalSpy> asked_;
};

QTEST_MAIN(TreeViewTest)
#include "test_tree_view.moc"
