#pragma once

#include <QSignalSpy>
#include <QtTest>
#include <memory>
#include <optional>

#include "MarUIControl/tree_view.h"
#include "WidgetKit/new_location_combo_box.h"
#include "WidgetKit/new_location_view_widget.h"
#include "default_load_view_display.h"
#include "item_type.h"
#include "plan_item_role.h"
#include "plan_test.h"
#include "standard_plan_model.h"
#include "standard_view_controller.h"
#include "view_model_data_manager.h"

constexpr int kPlan = 16000, kGroup = 16001;

/// Base of tests of the default-view chooser over the real store.
class CDefaultViewStage : public TarnTest::CPlanTest {
  Q_OBJECT
 protected:
  /// Brings up everything and a chooser that shows the first level of both families.
  void Begin(const QMap<QString, int>& switches = {}) {
    Open(switches);
    fixture_.Messages().Expect("propagateSizeHints");
    QTRY_VERIFY(Manager().IsViewModelInitFinish());
    TarnTest::CPlanFixture::Drain();
    controller_ = std::make_unique<TarnPlanView::CStandardViewController>(fixture_.Public());
    tips_.emplace(controller_.get(), &TarnPlanView::CStandardViewController::signalShowMessage);
    MakeChooser();
  }
  void MakeChooser() {
    chooser_ = std::make_unique<TarnPlanView::CDefaultLoadViewDisplay>();
    changes_.emplace(chooser_.get(), &TarnPlanView::CDefaultLoadViewDisplay::SignalChoiceChanged);
    TarnTest::CPlanFixture::Watch(Tree()->model());
    chooser_->SetViewController(controller_.get());
    chooser_->show();
    QTRY_COMPARE(Tree()->model()->rowCount(), 3);
    QTRY_VERIFY(Row("Public A").isValid() && Row("Own C").isValid());
  }

  TarnPlanView::CViewModelDataManager& Manager() { return TarnPlanView::CViewModelDataManager::Instance(); }
  MarUIControl::CTreeView* Tree() { return chooser_->GetLocationComboBox()->LocationTree(); }
  WidgetKit::CNewLocationViewWidget* Line() { return chooser_->GetLocationComboBox()->SearchLine(); }
  QString Chosen() { return chooser_->GetLocationComboBox()->CurrentText(); }
  QModelIndex Row(const QString& name) {
    const QAbstractItemModel* rows = Tree()->model();
    return rows->match(rows->index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchExactly | Qt::MatchRecursive).value(0);
  }
  /// As a click on it does.
  void Choose(const QString& name) {
    QTRY_VERIFY2(Row(name).isValid(), qPrintable(name));
    chooser_->GetLocationComboBox()->ShowPopup();
    Tree()->setCurrentIndex(Row(name));
    Q_EMIT Tree()->clicked(Row(name));
  }

  std::string Code(const QString& name) { return fixture_.Code(name).toStdString(); }
  /// Makes it the stored default view, of which the chooser knows then.
  void StoreAndRead(int type, const std::string& code) {
    QCOMPARE(fixture_.InStore().SetDefaultView(code, type), QString());
    QVERIFY(chooser_->ReadDefaultView());
  }
  /// Shows what was read last.
  void SelectStored() { chooser_->SelectView(chooser_->GetResourceType(), chooser_->GetIndexCode()); }
  std::string Stored() { return fixture_.InStore().DefaultView(); }

  std::unique_ptr<TarnPlanView::CStandardViewController> controller_;
  std::unique_ptr<TarnPlanView::CDefaultLoadViewDisplay> chooser_;
  std::optional<QSignalSpy> tips_, changes_;

 private Q_SLOTS:
  void cleanup() {
    changes_.reset();
    tips_.reset();
    chooser_.reset();
    controller_.reset();
    Shut();
  }
};
