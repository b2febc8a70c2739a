#pragma once

#include <QObject>
#include <QStringList>
#include <QTimer>
#include <deque>
#include <functional>
#include <vector>

class QModelIndex;

namespace TarnClient {

class CMainWindow;
enum class RowCommand;

/// Opens one part of the client for a picture, by the same calls as a user's clicks and keys; meant for the demo site.
/// Thread: GUI.
class CScene : public QObject {
  Q_OBJECT
 public:
  static QStringList Names();

  /// Begins at once and goes on as the plans come in. `window` outlives the scene. `store_url`: for other workstations.
  CScene(const QString& name, CMainWindow* window, const QString& store_url);

 private:
  /// Tried again and again until it gives true.
  using Step = std::function<bool()>;
  using Script = void (CScene::*)();
  struct Entry {
    const char* name;
    Script script;
  };
  static const std::vector<Entry>& Entries();

  void Add(Step step) { steps_.push_back(std::move(step)); }
  void Next();

  void Browse();
  void Search();
  void SearchWithoutHit();
  void SearchCamera();
  void SearchMenu();
  void SearchRunning();
  void LastSearches();
  void NameEditor();
  void RowMenu();
  void GroupMenu();
  void DeleteQuestion();
  void DeleteQuestionOfGroup();
  void UndoDeletion();
  void UndoMove();
  void Share();
  void CreationInfo();
  void SaveMenu();
  void SaveAs();
  void Refusal();
  void History();
  void HistoryEmpty();
  void HistoryGone();
  void Users();
  void Cycle();
  void Settings();
  void SiteCameras();
  void CameraForm();
  void CameraRemoval();
  void CameraImport();
  void CameraExport();
  void RegionForm();
  void DeviceForm();
  void AuthorityForm();
  void DefaultView();
  void DefaultViewSearch();
  void Drop();
  void PlanEditor();
  void PlanEditorNew();
  void PlanEditorCameras();
  void PlanEditorConflict();
  void PlanEditorChangedElsewhere();
  void PlanEditorDeletedElsewhere();
  void PlanEditorTheirs();
  void PlanEditorTimes();
  void PlanEditorLongNames();
  void PlanEditorQuestion();
  void Stopped();
  void Automatic();
  void AutomaticEnded();
  void Failed();
  void LongTitle();
  void Narrow();
  void ClosingQuestion();
  void LongHistory();
  void Preview();
  void AddActiveWindow();
  void FocusOnTabs();
  void FocusOnTree();
  void LongTip();
  void LongQuestion();
  void Help();
  void About();
  void Menu();
  void Messages();
  void TipSuccess();
  void TipError();
  void TipWarning();
  void TipHint();
  void RowMenuGuard();
  void HitMenu();
  void RenamePlan();
  void MoveTo();
  void Signs();
  void TourPreview();
  void FirstStart();
  void Wait();
  void SecondWall();
  void PlayOnMenu();
  void ClosingAllQuestion();
  void Cameras();
  void CamerasWithoutHit();
  void Arranged();
  void ArrangedWithoutPlan();
  void BackToArrangement();
  void Enlarged();
  void Zoomed();
  void WindowMenu();
  void WindowStates();
  void WindowStatesSmall();
  void LogInDemo();
  void LogInWrong();
  void LogInAtCopy();
  void DeskLocked();
  void DeskUnlock();
  void DeskOfOldPassword();
  void DeskLockedWithEditor();
  void SiteUsersPage();
  void UserForm();
  void UserGroupForm();
  void LimitForm();

  static void Press(QWidget* widget, int key);
  QModelIndex Row(const QString& name) const;
  void AddExpansion(const QString& group);
  void AddCurrent(const QString& name);
  void AddCall(const std::function<void()>& call);
  void AddClick(const QString& button);
  void AddSettingsClick(const char* button);
  /// On the page of users.
  void AddUsersKind(int kind);
  /// Says yes to every question from here on.
  void AddYes();
  void AddWall();
  void AddPlayOnWall(const QString& group, const QString& plan);
  void AddUndoOffered();
  void AddMenu();
  void AddMenuCommand(int command);
  void AddRowCommand(RowCommand command);
  void AddHover(const QString& plan);
  void AddSearch(const QString& text);
  void AddPlay(const QString& name);
  /// A wall whose cameras are in all the states that there are.
  void AddStatedWall(int split);
  /// Opens the plan "Whole site" in the editor and waits until it and the cameras are there.
  void AddEditor();
  void AddEditedName(const QString& name);
  /// Another workstation's user saves the plan that is open here, or deletes it.
  void AddChangeElsewhere();
  void AddDeletionElsewhere();
  /// Waits until the editor says so.
  void AddConflictShown();
  template <class Widget>
  Widget* InSettings(const char* name) const;
  template <class Widget>
  Widget* InEditor(const char* name) const;

  CMainWindow* const window_;
  const QString store_url_;
  std::deque<Step> steps_;
  QTimer timer_;
};

}  // namespace TarnClient
