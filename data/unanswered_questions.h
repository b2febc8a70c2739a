#pragma once

#include <QMap>
#include <QObject>
#include <QString>
#include <QTimer>
#include <functional>

namespace TarnPlanView {

/// What should have been asked of the host when a notice came, but got no answer: asked again after a second, and after
/// ever longer pauses while that fails. Thread: GUI.
class CUnansweredQuestions : public QObject {
  Q_OBJECT
 public:
  CUnansweredQuestions();

  /// `ask` is called once for each name, and adds itself again when it gets no answer.
  void Add(const QString& name, const std::function<void()>& ask);
  void Clear();

 private:
  void askAgain();

  QMap<QString, std::function<void()>> questions_;
  QTimer timer_;
};

}  // namespace TarnPlanView
