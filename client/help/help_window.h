#pragma once

#include <QDialog>
#include <QList>

#include "MarUIControl/key_guide.h"

class QLabel;
class QTreeView;

namespace MarUIControl {
class CLineEdit;
}

namespace TarnClient {

class CKeyFilter;

/// The list of keys, by group, to be filtered by what they do or by the keys' names. Keys that scroll the list do so
/// from the field as well. Esc closes it and nothing else. Thread: GUI.
class CHelpWindow : public QDialog {
  Q_OBJECT
 public:
  CHelpWindow(const QList<MarUIControl::KeyEntry>& keys, QWidget* parent);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Filter(const QString& words);

  CKeyFilter* filter_ = nullptr;
  MarUIControl::CLineEdit* words_ = nullptr;
  QTreeView* list_ = nullptr;
  QLabel* empty_ = nullptr;
};

}  // namespace TarnClient
