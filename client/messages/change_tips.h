#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <memory>

class QAbstractItemModel;
class QModelIndex;

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
  /// None is owned; `rows`, those of the tree, and `controller` may be null.
  CChangeTips(TarnPlanView::CViewExternWidget* panel, QAbstractItemModel* rows,
              TarnPlanView::CStandardViewController* controller, QObject* parent);

 Q_SIGNALS:
  void SignalTip(const QString& text, int state);
  /// A strip says this, so there is no tip of it.
  void SignalSaidByStrip(const QString& text);

 private:
  /// What a strip in the panel offers; without a text when none does.
  struct Offer {
    int number = 0;
    QString text;
  };
  void OnMessage(const QString& text, int state);
  void OnMoreWords(const QString& text);
  /// `group_code`: of a new plan or group, the group around it.
  void Note(PlanChange change, const QString& name, const std::string& group_code = {});
  QString PlaceOf(const QString& group_code) const;
  void KeepName(const QModelIndex& row);
  void NoteSaved(const QString& code, const QString& name, PlanChange saved);
  Offer CurrentOffer() const;

  const QPointer<TarnPlanView::CViewExternWidget> panel_;
  QString changed_;                // of the change whose message is still to come
  std::weak_ptr<QString> latest_;  // the message that is about to be shown
  struct {
    QString code, name;
  } taken_out_;  // the last row that went
};

}  // namespace TarnClient
