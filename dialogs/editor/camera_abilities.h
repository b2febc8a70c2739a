#pragma once

#include <QHash>
#include <QObject>
#include <QSet>
#include <QVector>
#include <optional>

#include "host_calls/call_scope.h"

namespace TarnPlanView {

/// What cameras can do: their streams and presets, fetched once each, and again after Doubt().
///
/// Several questions for one camera lead to one call each; a failure is signalled and not remembered, so that the next
/// question asks again. Thread: GUI; fetches on the threads for questions.
class CCameraAbilities : public QObject {
  Q_OBJECT
 public:
  struct Preset {
    int number = 0;
    QString name;
  };

  explicit CCameraAbilities(QObject* parent = nullptr);
  ~CCameraAbilities() override;

  /// Fetches what is not known yet; a signal each follows. What is known is signalled within this call.
  void Ask(const QString& camera_code);
  /// From now on what is known may have changed: it stays until a question for it brings an answer. Questions under
  /// way have been asked too early and are not answered.
  void Doubt();
  /// 0 main, 1 sub; null: not known.
  const QVector<int>* Streams(const QString& camera_code) const;
  const QVector<Preset>* Presets(const QString& camera_code) const;

 Q_SIGNALS:
  void SignalStreamsKnown(const QString& camera_code);
  void SignalPresetsKnown(const QString& camera_code);
  /// With the host's text for the user.
  void SignalStreamsFailed(const QString& camera_code, const QString& error);
  void SignalPresetsFailed(const QString& camera_code, const QString& error);

 private:
  struct Signals {
    void (CCameraAbilities::*known)(const QString&);
    void (CCameraAbilities::*failed)(const QString&, const QString&);
  };

  /// One kind of answer, by the camera's code.
  template <class Value>
  struct Shelf {
    QHash<QString, Value> known;
    QSet<QString> fresh, asked;
  };

  template <class Value, class Question, class Read>
  void AskFor(Shelf<Value>* shelf, const QString& camera_code, Question question, Read read, Signals signal);

  HostCalls::CCallScope calls_;
  Shelf<QVector<int>> streams_;
  Shelf<QVector<Preset>> presets_;
};

}  // namespace TarnPlanView
