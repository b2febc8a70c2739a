#pragma once

#include <QModelIndex>
#include <QObject>
#include <QTimer>

namespace TarnClient {

/// Brings the plan data up in the order the plug-in asks for, and tells each time when its trees are complete: after
/// the start, and after every later load. Thread: GUI.
class CPlanDataLoader : public QObject {
  Q_OBJECT
 public:
  explicit CPlanDataLoader(QObject* parent = nullptr);

  /// Makes the models, still empty. Once, after a user has logged in.
  void Prepare();
  /// Begins to fill them. Once, when everybody listens.
  void Load();

 Q_SIGNALS:
  void SignalReady();

 private:
  void OnRowsInserted(const QModelIndex& parent);
  void Poll();

  QTimer poll_;
};

}  // namespace TarnClient
