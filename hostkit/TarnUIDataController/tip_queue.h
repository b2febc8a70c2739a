#pragma once

#include <QList>
#include <QPointer>
#include <QString>
#include <QWidget>

namespace tarn_ui_data_controller {

/// A tip on screen or on its way there.
struct Tip {
  QString text;
  int kind = 0;              // a TipKind
  int distance = 0;          // pixels from the top of its window
  QPointer<QWidget> window;  // null: any
  int count = 1;             // how often it was asked for

  bool SaysTheSame(const Tip& other) const {
    return text == other.text && kind == other.kind && window == other.window;
  }
};

/// The tips that wait for their turn: few, so that what is shown is never long past; refusals before successes.
/// Whatever happens 200 times in a second is one tip that counts. Thread: GUI.
class TipQueue {
 public:
  /// A tip that says what one of those waiting says is counted there. Of too many the oldest success goes first.
  void Add(const Tip& tip);
  bool IsEmpty() const { return waiting_.isEmpty(); }
  int Size() const { return waiting_.size(); }
  Tip Next() { return waiting_.takeFirst(); }
  /// What Next() gave has its turn again.
  void PutBack(const Tip& tip) { waiting_.prepend(tip); }
  void Clear() { waiting_.clear(); }

  /// How long a tip stays in all, shorter while others wait.
  static int StayMs(int kind, bool others_wait);

 private:
  QList<Tip> waiting_;
};

}  // namespace tarn_ui_data_controller
