#pragma once

#include <QString>
#include <memory>

#include "tarn_plan_view_export.h"
#include "theme_node_type.h"

namespace TarnPlanView {

/// Names one plan tree model and carries its flags.
struct ViewManagerParam {
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

  bool flag0 = false;
  bool flag1 = false;
  bool flag2 = false;
  bool flag3 = false;
  bool flag4 = false;
  bool flag5 = false;
  bool flag6 = false;
  bool flag7 = false;
  bool flag8 = false;
  bool flag9 = false;  // the model shows a placeholder row on top
  ThemeNodeType type = PublicTheme;
  QString name;  // monitor id
};

/// Hands a ViewManagerParam across the library boundary; copies share one body.
class TARNPLANVIEW_EXPORT CViewManagerParam {
 public:
  CViewManagerParam();
  explicit CViewManagerParam(std::shared_ptr<ViewManagerParam> param);
  CViewManagerParam(const CViewManagerParam&);
  CViewManagerParam& operator=(const CViewManagerParam&);
  virtual ~CViewManagerParam();

  std::shared_ptr<ViewManagerParam> GetDataPtr() const;

 private:
  std::shared_ptr<ViewManagerParam> data_;
};

}  // namespace TarnPlanView
