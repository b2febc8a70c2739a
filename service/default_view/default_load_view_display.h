#pragma once

#include <QModelIndex>
#include <QWidget>
#include <memory>
#include <string>

#include "tarn_plan_view_export.h"

namespace WidgetKit {
class CNewLocationComboBox;
}

namespace TarnPlanView {

class CStandardViewController;

/// Lets the user choose what the client opens when it starts: a plan, a group whose plans take turns, or nothing.
///
/// Offers public and own plans, and groups where those may be cycled, in one drop-down tree over two models of its own,
/// which follow all changes as long as the widget lives. Made once the plan data's manager stands, destroyed before it
/// goes. Reading and saving block until the host has answered; failures are shown by the controller. Thread: GUI.
class TARNPLANVIEW_EXPORT CDefaultLoadViewDisplay : public QWidget {
  Q_OBJECT
 public:
  explicit CDefaultLoadViewDisplay(QWidget* parent = nullptr);
  ~CDefaultLoadViewDisplay() override;

  /// Not owned; without it nothing is read, saved or expanded.
  void SetViewController(CStandardViewController* controller);

  /// Fetches the user's default view. False without a controller and when the host fails; then GetResponseText() tells
  /// why and the record stays as it was.
  bool ReadDefaultView();
  /// Chooses the row of this plan (resource type 16000) or group (16001), or the one for no default view (any other
  /// type). A row that is not loaded yet is loaded, which takes a while; a code that nothing has leaves the choice as
  /// it is. So does a failure, of which the controller tells; the row is then shown should it come later. When a chosen
  /// row vanishes that was not saved, what is stored is chosen again.
  void SelectView(int32_t type, const std::string& code);
  /// Stores the chosen row. False without a controller or a chosen row, when the host fails, and while the chosen row
  /// is still being looked for.
  bool SaveChosenView();

  /// The default view as it was last read or saved: "-3" for none.
  std::string GetIndexCode() const;
  /// 16000 for a plan, 16001 for a group, as it was last read or saved.
  int32_t GetResourceType() const;
  /// The host's text after a failed read or save.
  std::string GetResponseText() const;
  /// Whether saving would change the stored default view, or might: before it was read, any chosen row counts.
  bool IsChanged() const;
  /// The drop-down; owned by the widget. For layouts and tests: choices go through SelectView().
  WidgetKit::CNewLocationComboBox* GetLocationComboBox() const;

 Q_SIGNALS:
  /// Another row is chosen: by the user, because a row was found that was being looked for, or because it vanished. Or
  /// saving is possible again, because a row is no longer being looked for.
  void SignalChoiceChanged();

 private:
  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace TarnPlanView
