#pragma once

#include <memory>

#include "MarUIControl/line_edit.h"
#include "host_export.h"

namespace WidgetKit {

/// Search field: a magnifier that searches and a cross that clears. Return and the magnifier emit SignalSearch(); Esc
/// empties a field that holds text; in an empty one it is left to the parent unless SignalLeave() has a receiver.
/// SignalSearch() also comes by itself where that is wanted. Thread: GUI.
class TARN_HOST_EXPORT CNewSearchLine : public MarUIControl::CLineEdit {
  Q_OBJECT
 public:
  explicit CNewSearchLine(QWidget* parent = nullptr);
  ~CNewSearchLine() override;

  /// With true SignalSearch() comes 300 ms after the last key, too, for two characters or more; of a script with a sign
  /// for a word or syllable, one is enough. Esc leaves at once, Down goes to the hits. False at first.
  void SetSearchesAsTyped(bool as_typed);
  /// Whether the SignalSearch() that is being emitted has come by itself.
  bool IsTypedSearch() const;
  /// What was typed so far no longer searches by itself.
  void DropWait();
  /// What was searched last is not on show: typing it once more searches for it again.
  void ForgetSearched();

 Q_SIGNALS:
  /// Return, or a click on the magnifier, or a pause in typing.
  void SignalSearch();
  /// Esc in an empty field; where it searches as one types, after it was emptied by Esc as well.
  void SignalLeave();
  /// Down, where it searches as one types and no pause is awaited; then Down is a Return. Of a field that looks through
  /// a view: Down while it is empty.
  void SignalToHits();

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Request();
  void OnPause();

  class Private;
  std::unique_ptr<Private> search_;
};

}  // namespace WidgetKit
