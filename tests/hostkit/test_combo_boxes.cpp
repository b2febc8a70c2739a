#include <QAccessible>
#include <QGuiApplication>
#include <QLineEdit>
#include <QScreen>
#include <QVBoxLayout>
#include <QtTest>
#include <memory>

#include "MarUIControl/multilevel_combo_box.h"
#include "MarUIControl/standard_item.h"
#include "MarUIControl/standard_item_model.h"
#include "MarUIControl/tree_view.h"
#include "TarnUIDataController/skin_loader.h"
#include "WidgetKit/new_location_combo_box.h"
#include "WidgetKit/new_location_view_widget.h"

using namespace MarUIControl;  // NOLINT: the test is about this library alone

namespace {

/// Counts how often its window lost or got the activation.
class ActivationCount : public QObject {
 public:
  explicit ActivationCount(QWidget* window) { window->installEventFilter(this); }
  bool eventFilter(QObject* watched, QEvent* event) override {
    changes += event->type() == QEvent::ActivationChange ? 1 : 0;
    return QObject::eventFilter(watched, event);
  }
  int changes = 0;
};

}  // namespace

class ComboBoxesTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { tarn_ui_data_controller::CSkinLoader::Instance().LoadSkin("redblack"); }
  void init() {
    window_ = std::make_unique<QWidget>();
    window_->setGeometry(100, 100, 320, 360);
    new QVBoxLayout(window_.get());
  }

  void cleanup() {
    window_.reset();
    model_.clear();
  }

  void ComboByMouseWithRowsThatComeLate() {
    MakeCombo();
    QSignalSpy asked(tree_, &CTreeView::AsynchronousExpand);
    QSignalSpy chosen(combo_, &CMultilevelComboBox::SignalIndexActivated);
    const ActivationCount activation(window_.get());
    QTest::mouseClick(combo_, Qt::LeftButton);
    QVERIFY(combo_->IsPopupVisible());
    QCOMPARE(QApplication::activePopupWidget(), tree_->window());

    const QRect root = tree_->visualRect(Row("Plans"));
    QTest::mouseClick(tree_->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(root.left() - 8, root.center().y()));
    QCOMPARE(asked.size(), 1);
    QVERIFY(combo_->IsPopupVisible() && tree_->IsWaiting(Row("Plans")));
    model_.item(0)->appendRow(new CStandardItem("Gates"));
    tree_->FinishExpand(Row("Plans"), true, true);
    QVERIFY(tree_->isExpanded(Row("Plans")));

    ClickRow(Row("Closed"));
    QVERIFY(combo_->IsPopupVisible());
    ClickRow(Row("Gates"));
    QVERIFY(!combo_->IsPopupVisible());
    QCOMPARE(chosen.size(), 1);
    QCOMPARE(combo_->GetCurrentIndex(), Row("Gates"));
    QCOMPARE(combo_->CurrentText(), QString("Gates"));
    QCOMPARE(combo_->toolTip(), QString("Plans / Gates"));

    QTest::mouseClick(combo_, Qt::LeftButton);
    QTest::mouseClick(tree_->window(), Qt::LeftButton, Qt::NoModifier, QPoint(-60, 10));
    QVERIFY(!combo_->IsPopupVisible());
    QTest::mouseClick(combo_, Qt::LeftButton);
    window_->hide();
    QVERIFY(!tree_->window()->isVisible());
    QVERIFY(chosen.size() == 1 && activation.changes <= 1);  // the last for the window's own hiding
  }

  void ComboByKeys() {
    MakeCombo();
    for (int row = 0; row < 3; ++row) {
      model_.item(0)->appendRow(new CStandardItem(QString("Gate %1").arg(row)));
    }
    model_.SetChildrenFetched(Row("Plans"), true);
    QSignalSpy changed(combo_, &CMultilevelComboBox::SignalCurrentIndexChanged);
    combo_->SetCurrentIndex(Row("Gate 1"));
    combo_->SetCurrentIndex(Row("Gate 1"));
    QVERIFY(changed.size() == 1 && tree_->isExpanded(Row("Plans")));
    const ActivationCount activation(window_.get());

    const QVector<QPair<Qt::Key, Qt::KeyboardModifiers>> openers = {
        {Qt::Key_Down, Qt::AltModifier}, {Qt::Key_F4, Qt::NoModifier}, {Qt::Key_Space, Qt::NoModifier}};
    for (const auto& opener : openers) {
      QTest::keyClick(combo_, opener.first, opener.second);
      QVERIFY(combo_->IsPopupVisible());
      QTest::keyClick(tree_, Qt::Key_Down);
      QTest::keyClick(tree_, Qt::Key_Escape);
      QVERIFY(!combo_->IsPopupVisible() && window_->isVisible());
      QCOMPARE(combo_->GetCurrentIndex(), Row("Gate 1"));
    }
    QTest::keyClick(combo_, Qt::Key_F4);
    QCOMPARE(tree_->currentIndex(), Row("Gate 1"));  // moving about without choosing leaves no trace
    QTest::keyClick(tree_, Qt::Key_Down);
    QTest::keyClick(tree_, Qt::Key_Return);
    QVERIFY(!combo_->IsPopupVisible());
    QCOMPARE(combo_->CurrentText(), QString("Gate 2"));
    QVERIFY(combo_->hasFocus());
    QCOMPARE(activation.changes, 0);

    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(combo_);
    QCOMPARE(spoken->role(), QAccessible::ComboBox);
    QCOMPARE(spoken->text(QAccessible::Value), QString("Gate 2"));
  }

  void ComboFindsByTyping() {
    MakeCombo();
    model_.item(0)->appendRows({new CStandardItem("North gate"), new CStandardItem("South gate")});
    model_.SetChildrenFetched(Row("Plans"), true);
    combo_->SetEditLabelVisible(true);
    QTest::keyClick(combo_, Qt::Key_Space);
    auto* search = tree_->window()->findChild<QLineEdit*>();
    QVERIFY(search && search->isVisible() && search->hasFocus());
    QTest::keyClicks(search, "south");
    QTest::keyClick(search, Qt::Key_Return);  // before anything was looked for: chooses nothing
    QVERIFY(combo_->IsPopupVisible());
    QTRY_COMPARE(tree_->currentIndex(), Row("South gate"));
    QTest::keyClick(search, Qt::Key_Return);
    QVERIFY(!combo_->IsPopupVisible());
    QCOMPARE(combo_->CurrentText(), QString("South gate"));
    QTest::keyClick(combo_, Qt::Key_Space);
    QTest::keyClick(search, Qt::Key_Escape);
    QTest::keyClick(search, Qt::Key_Escape);
    QVERIFY(!combo_->IsPopupVisible() && window_->isVisible());
  }

  void ComboFollowsItsRow() {
    MakeCombo();
    auto* gates = new CStandardItem("Gates");
    model_.item(0)->appendRow(gates);
    combo_->SetCurrentIndex(Row("Gates"));
    QSignalSpy changed(combo_, &CMultilevelComboBox::SignalCurrentIndexChanged);
    gates->setText("Doors");
    QCOMPARE(combo_->CurrentText(), QString("Doors"));
    combo_->ShowPopup();
    model_.removeRow(0);
    QVERIFY(combo_->CurrentText().isEmpty() && !combo_->GetCurrentIndex().isValid());
    QCOMPARE(changed.size(), 1);
    combo_->SetCurrentIndex(Row("Closed"));
    model_.clear();
    QVERIFY(combo_->CurrentText().isEmpty());
    delete tree_;
    QVERIFY(!combo_->LocationView() && !combo_->LocationModel());
    combo_->HidePopup();
    combo_->ShowPopup();
    QVERIFY(!combo_->IsPopupVisible());
  }

  void ComboBringsItsTree() {
    MakeCombo();
    QPointer<QWidget> replaced;
    {
      WidgetKit::CNewLocationComboBox box;
      window_->layout()->addWidget(&box);
      replaced = box.LocationTree();
      QVERIFY(replaced && !box.SearchLine()->isHidden());
      box.LocationTree()->setModel(&model_);
      box.SetCurrentIndex(Row("Closed"));
      QCOMPARE(box.CurrentText(), QString("Closed"));
      box.SetLocationView(tree_);
      QCOMPARE(box.LocationTree(), tree_);
    }
    QVERIFY(!replaced);
  }

  void DropDownStaysOnItsScreen() {
    MakeCombo();
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const QVector<QPoint> places = {screen.topLeft(), screen.bottomRight() - QPoint(300, 40),
                                    QPoint(screen.left() - 60, screen.bottom() - 330)};
    for (const QPoint& place : places) {
      window_->move(place);
      combo_->ShowPopup();
      const QRect drop_down = tree_->window()->geometry();
      const QRect box(combo_->mapToGlobal(QPoint(0, 0)), combo_->size());
      QVERIFY(screen.contains(drop_down) && drop_down.height() > 100);
      QVERIFY(!drop_down.intersects(box));
      combo_->HidePopup();
    }
  }

 private:
  // A root whose children come only when they are asked for, and one group that may not be chosen.
  void MakeCombo() {
    auto* root = new CStandardItem("Plans");
    root->setData(true, CModelKeyMapping::GroupMarkRole);
    model_.appendRow(root);
    auto* closed = new CStandardItem("Closed");
    closed->setSelectable(false);
    model_.appendRow(closed);
    combo_ = new CMultilevelComboBox(window_.get());
    tree_ = new CTreeView;
    tree_->setHeaderHidden(true);
    tree_->setModel(&model_);
    combo_->SetLocationView(tree_);
    window_->layout()->addWidget(combo_);
    window_->show();
    window_->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    combo_->setFocus();
  }

  void ClickRow(const QModelIndex& index) {
    tree_->scrollTo(index);
    QTest::mouseClick(tree_->viewport(), Qt::LeftButton, Qt::NoModifier, tree_->visualRect(index).center());
  }

  QModelIndex Row(const QString& name) const {
    return model_.match(model_.index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchExactly | Qt::MatchRecursive).value(0);
  }

  std::unique_ptr<QWidget> window_;
  CStandardItemModel model_;
  CTreeView* tree_ = nullptr;
  CMultilevelComboBox* combo_ = nullptr;
};

QTEST_MAIN(ComboBoxesTest)
#include "test_combo_boxes.moc"
