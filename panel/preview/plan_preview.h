#pragma once

#include <QCache>
#include <QFrame>
#include <QImage>
#include <QPixmap>
#include <QPointer>
#include <QTimer>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "host_calls/call_scope.h"

class QLabel;
class QModelIndex;

namespace TarnPlanView {

class CPlanViewTree;

/// Shows what a plan looks like while the mouse rests on its row: its saved picture, or else its first page as a grid
/// with the cameras' names. A child overlay of the window beside the tree, which takes neither clicks nor focus.
/// Thread: GUI.
class CPlanPreview : public QFrame {
  Q_OBJECT
 public:
  /// Belongs to `tree` until it is first shown, then to the tree's window.
  explicit CPlanPreview(CPlanViewTree* tree);

  /// Pictures seen so far are fetched again.
  void Forget();
  /// Hides the picture and drops answers under way.
  void Dismiss();

 private:
  struct Seen {
    QPixmap picture;
    QString sign;
  };

  void OnMouseMove(const QModelIndex& index);
  void Fetch();
  void OnFetched(const QString& code, const view_plugin_protocol::GetPlanDetailResponse& plan, const QImage& thumbnail);
  void Show(const Seen& seen);
  void Place();
  QSize Pixels() const;
  QPixmap Drawn(const view_plugin_protocol::GetPlanDetailResponse& plan) const;

  QPointer<CPlanViewTree> tree_;
  QLabel *picture_ = nullptr, *name_ = nullptr, *sign_ = nullptr;
  QTimer rest_;
  QString code_, title_;
  QRect row_;
  QCache<QString, Seen> seen_;
  HostCalls::CCallScope newest_;
};

}  // namespace TarnPlanView
