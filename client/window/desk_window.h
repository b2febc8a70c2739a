#pragma once

#include <QMainWindow>
#include <memory>

#include "window/wall_desk.h"

class QLabel;
class QToolButton;

namespace TarnHost {
enum class StoreTrouble;
}

namespace TarnClient {

class CLockBar;
class CMainMenu;
class CMessageDesk;
class CStoreState;
class CWindowActions;
enum class WindowCommand;

/// A window with a wall: the desk of that wall, a status line and a menu of all commands, which Alt opens, too. F11
/// gives the wall the whole screen. Esc takes that back, else it stops what plays. Thread: GUI.
class CDeskWindow : public QMainWindow {
  Q_OBJECT
 public:
  ~CDeskWindow() override;

  CWallDesk& Desk() const { return *desk_; }
  CLiveWall& Wall() const { return desk_->Wall(); }
  CPlanPlayer& Player() const { return desk_->Player(); }
  CPlanFamily& Family(size_t number) const { return desk_->Family(number); }
  size_t FamilyCount() const { return static_cast<size_t>(desk_->Families().size()); }
  CPlanFamily& CurrentFamily() const { return desk_->CurrentFamily(); }
  void ShowFamily(size_t number) { desk_->ShowFamily(number); }
  CRowMenu& RowMenu(size_t family) const { return desk_->RowMenu(family); }
  CWindowActions& Actions() const { return *actions_; }
  /// All commands, with their keys.
  void OpenMenu();
  void OpenAbout();
  /// Where there is only one wall, it needs no name.
  void ShowWallName(bool show);
  /// The sign that the desk is locked, with this text; an empty one takes it away.
  void ShowLock(const QString& text);
  /// Over the whole screen, without panels and status line; or as before.
  void ShowWallAlone(bool alone);
  /// What is wrong with the store, in the status line and on the panels' wait pages until kNone comes. The status line
  /// shows over the whole screen, too, as long as it says so.
  void ShowStoreTrouble(TarnHost::StoreTrouble trouble, const QDateTime& since, const QString& line);

 protected:
  explicit CDeskWindow(QWidget* parent);

  /// First of all: nothing works before.
  void TakeDesk(CWallDesk::Setup setup);
  // Parts of the status line, from left to right.
  void AddWallName();
  void AddStoreState(const QString& store_url);
  void AddMessages(CMessageDesk* messages);
  void AddButton(const char* name, WindowCommand command);
  /// The menu ends with these commands, in parts.
  void AddMenu(const QVector<QVector<WindowCommand>>& last);
  void OrderTabs();
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  QToolButton* NewButton(const char* name, WindowCommand command);

  CWindowActions* const actions_;
  std::unique_ptr<CWallDesk> desk_;
  CLockBar* lock_bar_ = nullptr;
  CMainMenu* menu_ = nullptr;
  QToolButton* menu_button_ = nullptr;
  QLabel* wall_name_ = nullptr;
  CStoreState* store_state_ = nullptr;
  QString store_url_;
};

}  // namespace TarnClient
