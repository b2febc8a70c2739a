#pragma once

#include <QWidget>

class QLabel;

namespace TarnClient {

/// Stands in the place of the trees while the plan data is on its way. Thread: GUI.
class CWaitPage : public QWidget {
  Q_OBJECT
 public:
  explicit CWaitPage(QWidget* parent = nullptr);

  void ShowElapsed(int seconds);

 private:
  QLabel* elapsed_ = nullptr;
};

}  // namespace TarnClient
