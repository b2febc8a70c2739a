#pragma once

#include <QObject>
#include <QString>

#include "Wren/Base/singleton.h"
#include "tarn_plan_view_export.h"
#include "theme_node_type.h"

namespace TarnPlanView {

class CStandardPlanModelExport;

/// The host's door to the plan data.
///
/// At start-up, once the plan service is up and a user is logged in: InitManager(), InitViewConfigInterfacePointer(),
/// AnalysisResourceInitViewGroup(), AnalysisResourceInitView(), LoadAllViewManagerModelData(); then poll
/// IsViewResourceDownLoadFinish() and IsViewModelInitFinish() and fetch the models. At shut-down UninitManager().
/// Nothing here fails by value or exception: failed readiness queries are logged. Thread: GUI, for every member.
class TARNPLANVIEW_EXPORT CViewModelDataManagerExport : public QObject,
                                                        public Wren::Base::CSingleton<CViewModelDataManagerExport> {
  Q_OBJECT
 public:
  ~CViewModelDataManagerExport() override;

  /// Makes the data manager with its nine models, when it is not there yet, and registers the observer of the whole
  /// tree. Reads the host's switches, once. After UninitManager() it begins again, with empty models.
  void InitManager();
  /// The end: unregisters all observers, empties the models and ends the wait for a load. The models stay until
  /// ReleasePlugin(), since panels may still hold them; answers that come later change nothing.
  void UninitManager();
  /// Fetches the host's configuration; a host that is not up yet is logged as an error.
  void InitViewConfigInterfacePointer();
  /// Asks the host whether the groups are there, and logs when they are not. Nothing depends on it.
  void AnalysisResourceInitViewGroup();
  /// The same of the plans.
  void AnalysisResourceInitView();
  /// Loads the trees as soon as the host has its data: at once, or when it says so, every 200 ms it is asked off this
  /// thread. Panels leave their wait page first, then the models are emptied and filled. Asked for again it only makes
  /// the panels leave their wait page once more: a fresh load takes a whole-tree notice of the host's.
  void LoadAllViewManagerModelData();
  /// Whether the host's data is there. Asks the host.
  bool IsViewResourceDownLoadFinish();
  /// Whether the trees are filled: false until a load has come to its end, and from a whole-tree notice until the next
  /// one has.
  bool IsViewModelInitFinish();
  /// A new handle at every call, owned by this object unless the caller deletes it. There are models of themes 0 and 1
  /// for the monitors "0" to "3" and of theme 1 for "system_config"; other handles hold null.
  CStandardPlanModelExport* GetViewManagerByTheme(const QString& monitorId, ThemeNodeType type);
  /// Marks the plan as playing, or not, in the trees of one monitor. For hosts that show trees of their own; nothing
  /// for an empty code.
  void SetPlanPlayStateByIndexCode(const QString& monitorId, const QString& code, bool playing);

  bool event(QEvent* event) override;

 private:
  friend class Wren::Base::CSingleton<CViewModelDataManagerExport>;
  CViewModelDataManagerExport();
};

}  // namespace TarnPlanView
