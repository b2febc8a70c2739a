#pragma once

#include <QListView>

namespace TarnPlanView {

/// The plans that a search has found. Double click and Return ask for the plan to be played, Esc for the end of the
/// search. Rows: display role name, role 661 code, role 665 the text to mark, kSearchPathRole the groups above.
/// Thread: GUI.
class CSearchPlanListView : public QListView {
  Q_OBJECT
 public:
  explicit CSearchPlanListView(QWidget* parent = nullptr);

 Q_SIGNALS:
  void SignalDoubleClicked(const QString& index_code);
  void SignalLeave();

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void RequestPlay(const QModelIndex& index);
};

/// QString: the names of the groups above a hit, from the root.
constexpr int kSearchPathRole = 0x0100 + 900;

}  // namespace TarnPlanView
