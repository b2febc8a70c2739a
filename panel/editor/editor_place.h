#pragma once

#include <QObject>
#include <QPointer>
#include <QVector>
#include <functional>
#include <optional>

#include "ResourceTreeKit/logic_node_param.h"
#include "WidgetKit/slide_out_data.h"
#include "standard_plan_model.h"
#include "standard_view_controller.h"
#include "tarn_add_plan_widget.h"

class QWidget;

namespace TarnPlanView {

/// The place over a wall where a panel's plan editor slides out. Panels that open over the same window share it: one
/// editor at most is open there, its question comes before another panel's plan takes the place, and that plan waits
/// while the first one is saved. Each panel has one object of this class; they know of each other. Thread: GUI.
class CEditorPlace : public QObject {
  Q_OBJECT
 public:
  enum class State {
    Closed,
    Open,
    Asking,  // whether the editor may go: something wants its place, or the host wants to leave
    Saving,
    Queued,  // saving, and what waits for that has its turn once the plan is safe
  };
  /// Says what the editor shows.
  using Opening = std::function<void(CTarnAddPlanWidget*)>;

  explicit CEditorPlace(QWidget* panel);
  ~CEditorPlace() override;

  /// Not owned; what is open goes on with them. Without both nothing opens.
  void SetModel(CStandardPlanModel* model);
  void SetController(CStandardViewController* controller);
  /// Which cameras are offered.
  void SetLogicNodeParam(const ResourceTreeKit::LogicNodeParam& param);
  /// The widget that the editor slides out over, for none the panel's window. Not owned.
  void SetMonitor(QWidget* monitor);

  State CurrentState() const;
  bool IsOpen() const { return CurrentState() != State::Closed; }
  /// Whether any panel has the plan in its editor.
  static bool IsEditedAnywhere(const QString& plan_code);
  /// Whether any panel's editor is open in this window.
  static bool IsOpenIn(const QWidget* window);

  /// False when the user keeps what is open in the place, or has it saved first: then this opens once that is safe.
  bool Open(const Opening& opening);
  void Save();
  /// Whether the host may leave. When the user wants the changes saved first, false comes, and SignalMayLeave() later.
  bool MayLeave();
  /// Nothing that was asked so far counts any more, and nothing waits.
  void Drop();
  /// Without a question and without a signal.
  void Close();

 Q_SIGNALS:
  /// Opened or closed.
  void SignalChanged();
  /// Closed, and the focus was nowhere else.
  void SignalFocusFree();
  /// The host has the plan that was edited, and no other one waits for the place.
  void SignalStored(const QString& plan_code, const QString& group_code);
  /// What MayLeave() found unsaved is safe.
  void SignalMayLeave();
  void SignalMessageTipNeeded(const QString& text, int state);

 private:
  /// What has its turn when the editor has gone. Without an opening the host leaves.
  struct Next {
    QPointer<CEditorPlace> place;
    int session = 0;  // of that place
    Opening opening;
  };

  static QVector<CEditorPlace*>& Places();
  CEditorPlace* Holder();
  QWidget* Window() const;
  CTarnAddPlanWidget* Editor();
  bool MayClose(const Next& next);
  void Show(const Opening& opening);
  void ShowNext(const Next& next);
  void OnClosed();
  void Hide();
  WidgetKit::CSlideOutData InitSlidingRuleWidget();

  QWidget* const panel_;
  QPointer<CStandardPlanModel> model_;
  QPointer<CStandardViewController> controller_;
  QPointer<CTarnAddPlanWidget> editor_;
  QPointer<QWidget> monitor_;
  ResourceTreeKit::LogicNodeParam logic_node_;
  std::optional<Next> next_;
  int session_ = 0;
};

}  // namespace TarnPlanView
