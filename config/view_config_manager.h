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
  /// GetPlanConfigResponse::load_all.
  bool IsLoadAll() const;
  /// GetPlanConfigResponse::create_under_root.
  bool CreatePlanUnderRootNode() const;
  /// GetPlanConfigResponse::enable_search.
  bool IsEnableSearch() const;
  /// GetPlanConfigResponse::enable_drag.
  bool IsEnableDrag() const;
  /// GetPlanConfigResponse::delete_with_children.
  bool IsSupportDelPlanWithChildren() const;
  /// GetPlanConfigResponse::timed_play.
  bool IsSupportTimedPlay() const;
  /// GetPlanConfigResponse::only_camera.
  bool OnlyCamera() const;
  /// Whether the panel says "plan" (GetPlanConfigResponse::show_mode is 1) and not "view".
  bool IsShowPlanOrView() const;
  /// GetPlanConfigResponse::move_public_private.
  bool MovePlanBetweenPublicAndPrivate() const;
  /// Whether the skin was the dark one when this object was made. A later change of skin is followed by the widgets
  /// themselves.
  bool IsDarkSkin() const;
  /// GetPlanConfigResponse::add_from_favorite.
  bool SupportAddCameraFromFavorite() const;
  /// GetPlanConfigResponse::smooth_stream.
  bool SupportSmoothStream() const;
  /// GetPlanConfigResponse::creation_info.
  bool ShowCreationInfo() const;
  /// GetPlanConfigResponse::save_single_cycle.
  bool IsSupportSaveSingleCycle() const;
  /// GetPlanConfigResponse::thumbnail.
  bool SupportThumbnail() const;
  /// Whether the client has plans at all; on at first. For hosts: the panel does not look at it.
  bool IsSupportPlan() const;
  /// GetPlanConfigResponse::group_cycle.
  bool IsSupportPlanGroupCycle() const;

  /// What IsSupportPlan() says from now on. Thread: GUI.
  void SetIsSupportPlan(bool support);

  bool event(QEvent* event) override;

 private:
  friend class Wren::Base::CSingleton<CViewConfigManager>;
  CViewConfigManager();

  struct Switches;
  std::shared_ptr<Switches> switches_;
};

}  // namespace TarnPlanView
