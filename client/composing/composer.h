#pragma once

#include <QObject>
#include <QPoint>
#include <QVector>
#include <functional>

#include "composing/wall_commands.h"
#include "wall/arrangement.h"

class QMenu;

namespace TarnClient {

class CLiveWall;

/// Arranges the windows of a wall as the user wants it: by the commands of its windows and page, by cameras that are
/// chosen or dropped. Thread: GUI; the service and the disk are asked on the thread pool.
class CComposer : public QObject {
  Q_OBJECT
 public:
  struct Setup {
    std::function<bool()> is_editing;          // whether the plan editor is open over the wall
    std::function<QString()> snapshot_folder;  // of the user's choice; empty for none
  };

  /// The wall is not owned and outlives this.
  CComposer(CLiveWall* wall, Setup setup, QObject* parent);

  CWallCommands& Commands() { return *commands_; }
  /// Puts the camera into the current window, whatever is there, or into the next empty one; the next empty one is
  /// current then. A window that was filled last and not chosen since keeps its camera.
  void Put(const WallCamera& camera);
  /// Puts the cameras, in order, into empty windows.
  void Fill(const QVector<WallCamera>& cameras);
  void Run(WallCommand command);
  /// Looks again at what is on.
  void Renew();
  /// Nothing can be done while the desk is locked.
  void SetLocked(bool locked);

 Q_SIGNALS:
  void SignalMessage(const QString& text, int state);
  /// The user wants to choose a camera for the current window.
  void SignalCameraWanted();
  /// The camera is to look there.
  void SignalPresetWanted(const QString& camera_code, int preset_no);

 private:
  WallSituation Situation() const;
  const CArrangement::Window* Current() const;
  int Page() const;
  int RoomFor(int cameras);
  bool PutAt(int window_no, const WallCamera& camera);
  void GoOnAfter(int window_no);
  void OnDropped(int window_no, const QVector<WallCamera>& cameras);
  void Swap(int window_no, int other_window_no);
  void Split(int split_type);
  void ToggleStream();
  void OpenPresets();
  void SetPreset(int window_no, int preset_no);
  void KeepSnapshot();
  void OpenMenu(const QPoint& place);
  void StayWhileOpen(QMenu* menu);
  void SayFull(int left_out);

  CLiveWall* const wall_;
  const Setup setup_;
  CWallCommands* const commands_;
  bool is_locked_ = false;
  int just_filled_ = 0;  // the window that got the last camera, until the user chooses one
};

}  // namespace TarnClient
