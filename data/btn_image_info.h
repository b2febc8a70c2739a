#pragma once

#include <QIcon>
#include <memory>

#include "tarn_plan_view_export.h"

namespace TarnPlanView {

/// Images of one button by state, for both skins. A plain value. Thread: GUI, since icons are.
struct BtnImageInfo {
  QIcon normal_icon;          ///< Light skin, at rest.
  QIcon hover_icon;           ///< Light skin, the mouse over it.
  QIcon selected_icon;        ///< Light skin, pressed or checked.
  QIcon normal_black_icon;    ///< Dark skin, at rest.
  QIcon hover_black_icon;     ///< Dark skin, the mouse over it.
  QIcon selected_black_icon;  ///< Dark skin, pressed or checked.
};

/// Handle on a BtnImageInfo. Copies share one body: what is set through one handle is seen through all of them.
/// Thread: GUI.
class TARNPLANVIEW_EXPORT CBtnImageInfo {
 public:
  /// A body of its own, as a new BtnImageInfo is.
  CBtnImageInfo();
  /// A body of its own with these values.
  explicit CBtnImageInfo(const BtnImageInfo& record);
  /// Over this body, which must not be null.
  explicit CBtnImageInfo(std::shared_ptr<BtnImageInfo> body);
  /// Over the same body.
  CBtnImageInfo(const CBtnImageInfo& other);
  /// Over the same body.
  CBtnImageInfo& operator=(const CBtnImageInfo& other);
  virtual ~CBtnImageInfo();

  /// The body.
  std::shared_ptr<BtnImageInfo> GetDataPtr() const;

  /// Reads or sets the field of the body that is named behind the underscore.
  ///@{
  QIcon GetVal_normal_icon();
  void SetVal_normal_icon(const QIcon& value);
  QIcon GetVal_hover_icon();
  void SetVal_hover_icon(const QIcon& value);
  QIcon GetVal_selected_icon();
  void SetVal_selected_icon(const QIcon& value);
  QIcon GetVal_normal_black_icon();
  void SetVal_normal_black_icon(const QIcon& value);
  QIcon GetVal_hover_black_icon();
  void SetVal_hover_black_icon(const QIcon& value);
  QIcon GetVal_selected_black_icon();
  void SetVal_selected_black_icon(const QIcon& value);
  ///@}

 private:
  std::shared_ptr<BtnImageInfo> data_;
};

}  // namespace TarnPlanView
