#pragma once

#include <QThreadPool>
#include <QtTest>
#include <functional>
#include <memory>

#include "controller_log.h"
#include "host_calls/call_pool.h"
#include "plan_test.h"
#include "standard_plan_model.h"
#include "view_model_data_manager.h"

namespace TarnTest {

/// Base of tests in which a controller's request stays at the host while something else happens. Group A is open.
class CHeldRequestTest : public CPlanTest {
  Q_OBJECT
 protected:
  TarnPlanView::CViewModelDataManager& Manager() { return TarnPlanView::CViewModelDataManager::Instance(); }
  QModelIndex Root() { return fixture_.Public()->index(0, 0); }
  /// Other requests may be held meanwhile.
  void Expand(const QPersistentModelIndex& row) {
    controller_->OnExpandViewTreeItem(row);
    QTRY_VERIFY(fixture_.Public()->AreChildrenFetched(row));
  }
  /// Sends a request that stays at the host until AnswerAll().
  void AskAndHold(const QString& call, CRecordingServices::HoldPoint point, const std::function<void()>& ask) {
    Services().Hold(call, point);
    ask();
    QVERIFY(Services().WaitUntilHeld(call));
  }
  void AnswerAll() {
    Services().ReleaseAll();
    CPlanFixture::Drain();
  }
  void Reload() {
    Manager().OnUpdateViewModelData();
    QTRY_COMPARE(Outline(fixture_.Public()), QString("Plans"));
  }

  static constexpr auto AfterCall = CRecordingServices::AfterCall;
  static constexpr char kGroupA[] = "Public A(A1,Public A plan 2,Public A plan 10)";

  std::unique_ptr<TarnPlanView::CStandardViewController> controller_;
  std::unique_ptr<CControllerLog> log_;

 private Q_SLOTS:
  void init() {
    HostCalls::CallPool().setMaxThreadCount(8);
    Open();
    controller_ = std::make_unique<TarnPlanView::CStandardViewController>(fixture_.Public());
    Expand(Root());
    Expand(GroupRow("Public A"));
    log_ = std::make_unique<CControllerLog>(controller_.get());
  }
  void cleanup() {
    AnswerAll();
    log_.reset();
    controller_.reset();
    Shut();
    HostCalls::CallPool().setMaxThreadCount(threads_);
  }

 private:
  const int threads_ = HostCalls::CallPool().maxThreadCount();
};

}  // namespace TarnTest
