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

  void InitManager();
  void UninitManager();
  void InitViewConfigInterfacePointer();
  void AnalysisResourceInitViewGroup();
  void AnalysisResourceInitView();
  void LoadAllViewManagerModelData();
  bool IsViewResourceDownLoadFinish();
  /// False until a load has come to its end.
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
