#pragma once

#include <QString>
#include <memory>

#include "tarn_plan_view_export.h"
#include "theme_node_type.h"

namespace TarnPlanView {

/// Names one plan tree model and carries its flags. A plain value. Flags 0 to 8 are carried for hosts: nothing here
/// goes by them.
struct ViewManagerParam {
  /// All flags off, the public family, no monitor.
  ViewManagerParam() = default;
  /// Flags 0 to 8 on, flag 9 off.
  ViewManagerParam(ThemeNodeType theme, const QString& monitor_id)
      : flag0(true),
        flag1(true),
        flag2(true),
        flag3(true),
        flag4(true),
        flag5(true),
        flag6(true),
        flag7(true),
        flag8(true),
        type(theme),
        name(monitor_id) {}

  bool flag0 = false;                ///< Carried only.
  bool flag1 = false;                ///< Carried only.
  bool flag2 = false;                ///< Carried only.
  bool flag3 = false;                ///< Carried only.
  bool flag4 = false;                ///< Carried only.
  bool flag5 = false;                ///< Carried only.
  bool flag6 = false;                ///< Carried only.
  bool flag7 = false;                ///< Carried only.
  bool flag8 = false;                ///< Carried only.
  bool flag9 = false;                ///< The model shows a placeholder row on top, for "nothing".
  ThemeNodeType type = PublicTheme;  ///< The family that the model shows.
  QString name;                      ///< Id of the monitor it is for: "0" to "3", or a name of the host's own.
};

/// Hands a ViewManagerParam across the library boundary; copies share one body. Thread: one at a time.
class TARNPLANVIEW_EXPORT CViewManagerParam {
 public:
  /// A body of its own, with all flags off.
  CViewManagerParam();
  /// Over this body, which may be null.
  explicit CViewManagerParam(std::shared_ptr<ViewManagerParam> param);
  /// Over the same body.
  CViewManagerParam(const CViewManagerParam&);
  /// Over the same body.
  CViewManagerParam& operator=(const CViewManagerParam&);
  virtual ~CViewManagerParam();

  /// The body: what is set in it is seen by all copies.
  std::shared_ptr<ViewManagerParam> GetDataPtr() const;

 private:
  std::shared_ptr<ViewManagerParam> data_;
};

}  // namespace TarnPlanView
