#pragma once

#include <memory>

#include "WidgetKit/new_search_line.h"
#include "host_export.h"

class QAbstractItemView;

namespace WidgetKit {

/// Search field that finds rows in an item view, case-insensitively by a part of their display text.
///
/// With a view: typing looks for all hits a moment after the last key, in slices that never hold the event loop longer
/// than 8 ms; the first hit becomes current with the way to it expanded. Return, Down and F3 step to the next hit,
/// Shift+Return, Up and Shift+F3 to the one before, around the ends; the field shows "2/17". Rows that come, go or
/// change while it looks are taken into account. All enabled rows that the view's model shows are searched, not the
/// expanded ones alone, but none is fetched. Without a view it is a plain search field. Thread: GUI.
class TARN_HOST_EXPORT CNewLocationViewWidget : public CNewSearchLine {
  Q_OBJECT
 public:
  explicit CNewLocationViewWidget(QWidget* parent = nullptr);
  ~CNewLocationViewWidget() override;

  /// The view to look through, not owned; null ends looking.
  void SetView(QAbstractItemView* view);
  /// The view; null without one, or when it was deleted.
  QAbstractItemView* View() const;
  /// The text of the field.
  QString FilterText() const;
  /// Empties the field, which ends looking.
  void ClearFilterText();

  /// Looks for the text at once.
  void Locate();
  /// Whether hits may still come: from a key or a change of the rows until they have been looked through.
  bool IsLocating() const;
  /// Rows for the text are still being fetched: until the last have come, "No hit" is not said, and the first hit among
  /// them becomes current when there was none before.
  void SetAwaitsRows(bool awaits);
  /// How many rows were found so far; 0 without a text.
  int HitCount() const;
  /// Says in the field that an answer is awaited; for a field without a view, whose hits others have.
  void SetSearching(bool searching);
  /// The text that `view` marks in its rows; empty for none. For delegates.
  static QString LocatedText(const QWidget* view);

 Q_SIGNALS:
  /// Looking for the text of the field begins: time to fetch rows for it that the view does not hold.
  void SignalLocating();
  /// Looking has ended with so many hits.
  void SignalLocated(int hits);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace WidgetKit
