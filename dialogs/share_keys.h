#pragma once

#include <QList>
#include <QObject>

#include "MarUIControl/key_guide.h"

class QAbstractButton;
class QTreeView;

namespace WidgetKit {
class CNewLocationViewWidget;
}

namespace TarnPlanView {

/// Keys of the field in which a user to share with is looked for: the users are checked from there. Child of the
/// field. Thread: GUI.
class CShareKeys : public QObject {
  Q_OBJECT
 public:
  /// `share` is what is pressed when no one else is to be found.
  CShareKeys(WidgetKit::CNewLocationViewWidget* field, QTreeView* users, QAbstractButton* share);

  static QList<MarUIControl::KeyEntry> Keys();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void OnReturn();
  void OnLocated();
  void ToggleCurrent();

  WidgetKit::CNewLocationViewWidget* const field_;
  QTreeView* const users_;
  QAbstractButton* const share_;
  bool checks_found_ = false;  // Return came before the text had been looked for
};

}  // namespace TarnPlanView
