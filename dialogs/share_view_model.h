#pragma once

#include <QStandardItemModel>
#include <string>

namespace TarnPlanView {

/// The other users of the system, to be checked, under a row that checks them all. Thread: GUI; loading blocks.
class CShareViewModel : public QStandardItemModel {
  Q_OBJECT
 public:
  explicit CShareViewModel(QObject* parent = nullptr);
  ~CShareViewModel() override;

  /// Appends every user but the current one. A query that fails is logged; what its answer holds is listed.
  void GetUserInfoInsert();
  /// Empties the model to the row "All".
  void ResetUsers();
  /// Ids of the checked users in the order of the rows, joined by commas.
  std::string GetCheckedUserIds() const;

  /// Unchecks the row "All" and with it every user.
  void ClearCheck();
  bool HasUsers() const;
};

}  // namespace TarnPlanView
