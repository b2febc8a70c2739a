#pragma once

#include <QObject>
#include <memory>

#include "Wren/Base/singleton.h"
#include "tarn_plan_view_export.h"

namespace view_plugin_protocol {
struct GetPlanConfigResponse;
}

namespace TarnPlanView {

/// The switches that decide what the plan panel offers.
///
/// The constructor asks the host once and keeps the defaults when that fails; afterwards only SetIsSupportPlan()
/// writes. Thread: first Instance() on the GUI thread (the host call blocks); getters from any thread.
class TARNPLANVIEW_EXPORT CViewConfigManager : public QObject, public Wren::Base::CSingleton<CViewConfigManager> {
  Q_OBJECT
 public:
  ~CViewConfigManager() override;

  /// All that the host has given, for a switch that needs no name of its own here.
  const view_plugin_protocol::GetPlanConfigResponse& Host() const;
  bool IsLoadAll() const;
  bool CreatePlanUnderRootNode() const;
  bool IsEnableSearch() const;
  bool IsEnableDrag() const;
  bool IsSupportDelPlanWithChildren() const;
  bool IsSupportTimedPlay() const;
  bool OnlyCamera() const;
  bool IsShowPlanOrView() const;
  bool MovePlanBetweenPublicAndPrivate() const;
  bool IsDarkSkin() const;
  bool SupportAddCameraFromFavorite() const;
  bool SupportSmoothStream() const;
  bool ShowCreationInfo() const;
  bool IsSupportSaveSingleCycle() const;
  bool SupportThumbnail() const;
  bool IsSupportPlan() const;
  bool IsSupportPlanGroupCycle() const;

  /// Thread: GUI.
  void SetIsSupportPlan(bool support);

  bool event(QEvent* event) override;

 private:
  friend class Wren::Base::CSingleton<CViewConfigManager>;
  CViewConfigManager();

  struct Switches;
  std::shared_ptr<Switches> switches_;
};

}  // namespace TarnPlanView
