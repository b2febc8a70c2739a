#pragma once

#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "MarUIControl/key_guide.h"
#include "cameras/camera_notice.h"
#include "host_calls/call_scope.h"
#include "site/camera_trial.h"
#include "site/site_model.h"
#include "site/site_table.h"

class QAction;
class QBoxLayout;
class QLabel;
class QPushButton;
class QTreeView;

namespace MarUIControl {
class CLineEdit;
}

namespace TarnClient {

/// The page on which a site's regions and cameras are kept: found, added, changed, removed, tried, imported and
/// exported. Every change is made at once, for all desks; what other desks change comes in by itself. Thread: GUI; the
/// service and files are asked off it.
class CSitePage : public QWidget {
  Q_OBJECT
 public:
  /// Answers the file to read or to write; empty for none.
  using ChooseFile = std::function<QString(QWidget* parent, bool to_write)>;

  explicit CSitePage(TryCamera try_camera, QWidget* parent = nullptr);

  /// In the place of the system's dialog.
  void SetChooseFile(ChooseFile choose) { choose_file_ = std::move(choose); }

  /// For the list of keys.
  static QList<MarUIControl::KeyEntry> Keys();

 private:
  using Command = void (CSitePage::*)();
  using RowKey = std::pair<std::string, bool>;  // code, and whether it is a region's

  QWidget* BuildFilter();
  void BuildList();
  QBoxLayout* BuildCommands();
  QAction* AddCommand(const char* name, const QString& text, const QKeySequence& key, Command command,
                      QBoxLayout* column);
  void Run(Command command);
  void Read();
  void Filter();
  RowKey KeyOf(const QModelIndex& index) const;
  std::vector<RowKey> NearestRows() const;
  void ChooseAgain(const std::set<RowKey>& chosen, const std::vector<RowKey>& nearest);
  void Show(std::shared_ptr<const SiteRows> rows);
  void ShowState();
  QString Summary() const;
  template <class Visit>
  void ForEachRegion(const Visit& visit) const;
  std::set<std::string> OpenRegions() const;
  void RenewCommands();

  const SiteRow* Current() const;
  std::string CurrentRegion() const;
  QList<const SiteRow*> Selected() const;
  void AddCamera();
  void AddRegion();
  void Edit();
  void OpenCamera(const std::string& code);
  void OpenRegion(const std::string& code);
  void Remove();
  void AskToRemove(const TarnHost::CameraChanges& changes, const QString& name, bool is_region);
  void RemoveIfConfirmed(const TarnHost::CameraChanges& changes, const QString& question);
  void FindCameras();
  void Import();
  void Export();
  void WriteTo(const QString& file, bool with_passwords);
  void ChooseAuthority();
  void Tip(const QString& text, bool failed);

  const TryCamera try_camera_;
  ChooseFile choose_file_;
  CSiteModel* const model_;
  MarUIControl::CLineEdit* filter_ = nullptr;
  QTreeView* list_ = nullptr;
  QLabel *state_ = nullptr, *summary_ = nullptr;
  QAction *edit_ = nullptr, *remove_ = nullptr;
  QList<QAction*> with_site_;  // commands that need to know the site
  CCameraNotice notice_;
  HostCalls::CCallScope reading_, filtering_, importing_, removing_;
  std::shared_ptr<const SiteTable> site_;  // null before it was read
  QString trouble_;                        // why it could not be read, last
  QTimer filter_soon_, again_;
  bool is_outdated_ = false, is_first_ = true;
};

}  // namespace TarnClient
