#pragma once

#include <QDialog>

#include "help/about_text.h"

namespace TarnClient {

/// Versions, to read out to a help line or to copy. Thread: GUI.
class CAboutDialog : public QDialog {
  Q_OBJECT
 public:
  CAboutDialog(const StoreFacts& store, QWidget* parent);

 private:
  QWidget* BuildLines();
  QWidget* BuildButtons();
  void Copy() const;

  const QList<QPair<QString, QString>> lines_;
};

}  // namespace TarnClient
