#pragma once

#include <QMetaType>
#include <QVector>
#include <functional>
#include <list>
#include <string>

#include "LyraPluginManager/view_plugin_protocol.h"

namespace TarnClient {

/// A camera that is to be put into a window.
struct WallCamera {
  std::string code, name;
};

/// What is on the wall: the pages of a plan as they play, with what the user has done to their windows since; or a page
/// of cameras without a plan. A plain value; knows no widget. Pages count from 0, windows from 1.
class CArrangement {
 public:
  using Plan = view_plugin_protocol::GetPlanDetailResponse;
  using Page = view_plugin_protocol::PlanPage;
  using Window = view_plugin_protocol::PlanWindow;

  /// Nothing.
  CArrangement() = default;
  explicit CArrangement(const Plan& plan);
  /// One empty page without a plan.
  static CArrangement WithoutPlan();

  bool IsNothing() const { return kind_ == Kind::Nothing; }
  bool HasPlan() const { return kind_ == Kind::OfPlan; }
  /// The plan as it was fetched; a blank record without one.
  const Plan& PlanAsFetched() const { return plan_; }
  /// In the order in which they play. Windows that a smaller split has put out of sight are still there.
  const QVector<Page>& Pages() const { return pages_; }
  /// As a save writes them: without what is out of sight. The plan's own pages where nothing was changed.
  std::list<Page> PagesToSave() const;
  /// Whether the windows are others than the plan's; without a plan, whether there is a camera.
  bool IsChanged() const;

  /// The plan has other pages, name or times now. Where the user has changed the windows, these stay, and so do the
  /// plan's old pages, so that a save finds out that they are not the plan's any more.
  void Renew(const Plan& plan);
  /// Whether this is the state of its plan that the changes were made to.
  bool RestsOn(const Plan& plan) const;
  /// The service has taken these pages of the arrangement: they are the plan's now. What the user has changed since
  /// stays.
  void Saved(const std::list<Page>& pages);

  /// These say whether anything is different now.
  /// `name_of`: what a camera with this code is called now; empty where that is not known.
  using NameOf = std::function<std::string(const std::string& code)>;
  bool Rename(const NameOf& name_of);
  bool Put(int page, int window_no, const WallCamera& camera);
  bool Swap(int page, int window_no, int other_window_no);
  bool Empty(int page, int window_no);
  bool Split(int page, int split_type);
  bool SetStream(int page, int window_no, int stream_type);
  bool SetPreset(int page, int window_no, int preset_no);
  /// Without a plan there is as much room as there are cameras: the page gets the split that has this many windows.
  bool MakeRoomFor(int page, int cameras);

  /// What a window in sight holds; null for an empty one.
  const Window* At(int page, int window_no) const;
  /// The first empty window after this one, around the end; 0 when all are filled.
  int NextEmpty(int page, int after_window_no) const;

 private:
  enum class Kind { Nothing, OfPlan, WithoutPlan };

  void TakePages();
  bool IsInSight(int page, int window_no) const;

  Kind kind_ = Kind::Nothing;
  Plan plan_;
  QVector<Page> pages_;
  QVector<int> seen_windows_;  // of each page: numbered up to here have been in sight
};

}  // namespace TarnClient

Q_DECLARE_METATYPE(TarnClient::CArrangement)
