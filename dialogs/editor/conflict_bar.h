#pragma once

#include <QFrame>
#include <QVector>

class QLabel;

namespace MarUIControl {
class CPushButton;
}

namespace TarnPlanView {

/// Says what stands between the editor and the host's plan, and offers what can be done. Thread: GUI.
class CConflictBar : public QFrame {
  Q_OBJECT
 public:
  explicit CConflictBar(QWidget* parent);

  /// A save was refused, because the plan was changed elsewhere; `text` says by whom and when. `with_back`: while edits
  /// are out of sight, because theirs was shown.
  void ShowRefused(const QString& text, bool with_back);
  /// It was changed elsewhere while it is being edited.
  void ShowChanged(const QString& text);
  /// Theirs is in the editor now, and what was there can come back.
  void ShowTheirs(const QString& text);
  /// Theirs is in the editor, and was changed elsewhere since.
  void ShowNewer(const QString& text);
  /// The plan is no longer there; `with_back` as above.
  void ShowDeleted(const QString& text, bool with_back);
  /// Whether a new plan may be made of it, from the next text on: `reason` says why not, empty when it may.
  void SetNewRefused(const QString& reason);
  /// The plan could not be fetched.
  void ShowNotLoaded(const QString& text);
  /// Whether it is in sight, and can bring the user's own version back.
  bool OffersWayBack() const;
  void FocusRetry();
  void FocusBack();

 Q_SIGNALS:
  void SignalLoadTheirs();
  void SignalKeepMine();
  void SignalBackToMine();
  void SignalOverwrite();
  void SignalSaveAsNew();
  void SignalRetry();

 private:
  MarUIControl::CPushButton* MakeButton(const char* name, const QString& text, void (CConflictBar::*clicked)());
  QString WithRefusal(const QString& text) const;
  void Say(const QString& text, QVector<MarUIControl::CPushButton*> ways, bool with_back = false);

  QLabel* text_ = nullptr;
  QString new_refused_;
  MarUIControl::CPushButton *theirs_, *keep_, *overwrite_, *as_new_, *back_, *retry_;
};

}  // namespace TarnPlanView
