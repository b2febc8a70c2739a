#pragma once

#include <QLabel>

class QLineEdit;

namespace WidgetKit {

/// "2/17" at the end of a search field, which also gets it as its accessible description. Thread: GUI.
class HitCounter : public QLabel {
  Q_OBJECT
 public:
  explicit HitCounter(QLineEdit* field);

  void ShowNothing();
  void ShowSearching();
  /// The same in a word, for an answer that may take its time.
  void ShowAwaiting();
  /// `at`: the place of the hit stepped to, from 1; 0 for none.
  void ShowHits(int at, int count);
  /// To be called when the field has changed its size.
  void Place();

 private:
  void Show(const QString& text, const QString& spoken, bool no_hit);

  QLineEdit* const field_;
};

}  // namespace WidgetKit
