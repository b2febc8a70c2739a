#pragma once

#include <QObject>
#include <QPointer>
#include <QVector>
#include <functional>
#include <memory>
#include <vector>

#include "commands/wall_choice.h"

namespace TarnClient {

class CExtraWall;
class CWallDesk;

/// All walls of the client: that of the main window, which is always there, and up to three more in windows of their
/// own. Their numbers are those of the host's monitors, from 0. Thread: GUI.
class CWalls : public QObject, public IWallChoice {
  Q_OBJECT
 public:
  static constexpr int kMost = 4;
  using Maker = std::function<std::unique_ptr<CExtraWall>(int number)>;

  explicit CWalls(QObject* parent);
  ~CWalls() override;

  /// First of all. `make` gives a further wall that is not shown yet; `main` outlives the walls.
  void Begin(CWallDesk* main, Maker make);
  /// Opens the wall with this number, which is not shown yet, or gives the one that is open.
  CExtraWall* Open(int number);
  /// The lowest that is free; null when none is.
  CExtraWall* OpenNew();
  /// Without a question.
  void CloseAll();
  /// Beside the main window's, by number.
  QVector<CExtraWall*> Extra() const;
  /// The main window's first.
  QVector<CWallDesk*> Desks() const;

  QVector<Wall> OpenWalls() const override;
  QString WhyNoNewWall() const override;
  void PlayOn(int number, const QString& code, bool is_group) override;
  void PlayOnNew(const QString& code, bool is_group) override;

 Q_SIGNALS:
  void SignalOpened(CExtraWall* wall);
  /// The window is about to go.
  void SignalClosing(CExtraWall* wall);
  /// After either.
  void SignalChanged();

 private:
  CExtraWall* At(int number) const;
  void OnClosed(CExtraWall* wall);

  CWallDesk* main_ = nullptr;
  Maker make_;
  std::vector<std::unique_ptr<CExtraWall>> extra_;  // by number
  QVector<QPointer<CExtraWall>> closed_;            // about to be deleted
};

}  // namespace TarnClient
