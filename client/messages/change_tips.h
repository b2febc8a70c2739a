#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

namespace TarnPlanView {
class CStandardViewController;
class CViewExternWidget;
}  // namespace TarnPlanView

namespace TarnClient {

enum class PlanChange;

/// Makes the tips of a panel say what was changed, and none at all where a strip in the panel already says it and
/// offers to take it back. Thread: GUI.
class CChangeTips : public QObject {
  Q_OBJECT
 public:
  /// Neither is owned; `controller` may be null.
  CChangeTips(TarnPlanView::CViewExternWidget* panel, TarnPlanView::CStandardViewController* controller,
              QObject* parent);

 Q_SIGNALS:
  void SignalTip(const QString& text, int state);
  /// A strip says this, so there is no tip of it.
  void SignalSaidByStrip(const QString& text);

 private:
  void OnMessage(const QString& text, int state);
  void Note(PlanChange change, const QString& name);
  QString StripText() const;

  const QPointer<TarnPlanView::CViewExternWidget> panel_;
  QString changed_;  // of the change whose message is still to come
};

}  // namespace TarnClient
