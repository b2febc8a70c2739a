#pragma once

#include "MarUIControl/tree_view.h"

namespace TarnClient {

/// The tree of a plan pane: plays plan rows on Return and double click, and shows what does not fit as a tool tip.
/// Thread: GUI.
class CPlanTree : public MarUIControl::CTreeView {
  Q_OBJECT
 public:
  explicit CPlanTree(QWidget* parent = nullptr);

 Q_SIGNALS:
  /// The user wants the plan with this code to play.
  void SignalPlayRequested(const QString& code);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  bool viewportEvent(QEvent* event) override;

 private:
  void RequestPlay(const QModelIndex& index);
};

}  // namespace TarnClient
