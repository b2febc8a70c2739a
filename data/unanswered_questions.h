#pragma once

#include <QMap>
#include <QObject>
#include <QString>
#include <QTimer>
#include <cstdint>
#include <functional>

namespace TarnPlanView {

/// How often a question to the host is asked again after a call that ended so: never once there is an answer, which any
/// refusal with a reason is, and a few times where no reason is given.
int RepeatsAfter(bool ok, int32_t error_kind);
/// Whether a question that was asked again `asked` times in succession is asked once more. Repeats without end are not
/// counted.
bool MayRepeat(int& asked, int repeats);

/// What should have been asked of the host when a notice came, but got no answer: asked again after a second, and after
/// ever longer pauses while that fails. Thread: GUI.
class CUnansweredQuestions : public QObject {
  Q_OBJECT
 public:
  CUnansweredQuestions();

  /// `ask` is called once for each name, at most `repeats` times in succession; it adds itself again with what
  /// RepeatsAfter() says of the call it makes.
  void Add(const QString& name, int repeats, const std::function<void()>& ask);
  void Clear();

 private:
  void askAgain();

  QMap<QString, std::function<void()>> questions_;
  QMap<QString, int> asked_;  // how often in succession
  QTimer timer_;
};

}  // namespace TarnPlanView
