#pragma once

#include <QIcon>
#include <memory>

#include "tarn_plan_view_export.h"

namespace TarnPlanView {

/// Images of one button by state, for both skins.
struct BtnImageInfo {
  QIcon normal_icon, hover_icon, selected_icon;                    // light skin
  QIcon normal_black_icon, hover_black_icon, selected_black_icon;  // dark skin
};

/// Handle on a BtnImageInfo.
/// Copies share one body: what is set through one handle is seen through all of them.
class TARNPLANVIEW_EXPORT CBtnImageInfo {
 public:
  CBtnImageInfo();
  explicit CBtnImageInfo(const BtnImageInfo& record);
  explicit CBtnImageInfo(std::shared_ptr<BtnImageInfo> body);
  CBtnImageInfo(const CBtnImageInfo& other);
  CBtnImageInfo& operator=(const CBtnImageInfo& other);
  virtual ~CBtnImageInfo();

  std::shared_ptr<BtnImageInfo> GetDataPtr() const;

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

 private:
  std::shared_ptr<BtnImageInfo> data_;
};

}  // namespace TarnPlanView
