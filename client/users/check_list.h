#pragma once

#include <QListWidget>

namespace TarnClient {

/// Names of which any number are checked. Thread: GUI.
class CCheckList : public QListWidget {
  Q_OBJECT
 public:
  /// `label`: for assistive technology.
  CCheckList(const char* name, const QString& label, const QStringList& items, const QStringList& checked,
             QWidget* parent);

  QStringList Checked() const;
};

}  // namespace TarnClient
