#pragma once

#include <QDialog>

#include "MarUIControl/key_guide.h"

class QComboBox;
class QLabel;
class QTreeView;

namespace MarUIControl {
class CLineEdit;
}

namespace TarnClient {

class CMessageFilter;
class CMessageLog;

/// The page of messages: the last ones with time and kind, to filter, copy and clear. Ctrl+C copies what is marked,
/// Ctrl+F goes to the filter, Esc closes. What comes while it is in sight counts as read. Thread: GUI.
class CMessagesWindow : public QDialog {
  Q_OBJECT
 public:
  /// `log` is not owned and outlives the window.
  CMessagesWindow(CMessageLog* log, QWidget* parent);

  /// For the list of keys.
  static QList<MarUIControl::KeyEntry> Keys();

 protected:
  void changeEvent(QEvent* event) override;

 private:
  QWidget* BuildFilter();
  void BuildList();
  QWidget* BuildButtons();
  bool IsInSight() const;
  void MarkReadInSight();
  void Copy();
  void Renew();

  CMessageLog* const log_;
  CMessageFilter* filter_ = nullptr;
  MarUIControl::CLineEdit* words_ = nullptr;
  QComboBox* kind_ = nullptr;
  QTreeView* list_ = nullptr;
  QLabel* empty_ = nullptr;
};

}  // namespace TarnClient
