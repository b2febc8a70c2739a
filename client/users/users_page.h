#pragma once

#include <QWidget>
#include <optional>

#include "MarUIControl/key_guide.h"
#include "TarnHost/site_users.h"
#include "host_calls/call_scope.h"

class QAction;
class QLabel;
class QPushButton;
class QTabBar;
class QTreeWidget;
class QVBoxLayout;

namespace TarnClient {

/// The page on which a site's users, user groups and limits of groups are kept. Every change is made at once, for all
/// desks. Thread: GUI; the service is asked off it.
class CUsersPage : public QWidget {
  Q_OBJECT
 public:
  explicit CUsersPage(QWidget* parent = nullptr);

  /// Again, also because something was changed elsewhere.
  void Read();

  /// For the list of keys.
  static QList<MarUIControl::KeyEntry> Keys();

 private:
  /// What the list shows, in the order of the tabs.
  enum Kind { kUsers, kUserGroups, kLimits };

  void BuildList();
  QVBoxLayout* BuildCommands();
  QAction* AddCommand(const char* name, const QString& text, const QKeySequence& key, void (CUsersPage::*command)(),
                      QVBoxLayout* column);
  Kind Shown() const;
  void Show();
  void ShowUsers();
  void ShowUserGroups();
  void ShowLimits();
  void SetColumns(const QStringList& labels);
  void AddRow(const QStringList& texts, int id);
  void ShowState();
  QString StateText() const;
  void RenewCommands();
  int CurrentId() const;
  template <class Record>
  std::optional<Record> Current(const std::vector<Record>& records) const;
  std::optional<TarnHost::SiteLimit> CurrentLimit() const;
  void Add();
  void Edit();
  void Open(bool is_new);
  void Remove();
  QString Question() const;
  TarnHost::SiteUserChanges Removal() const;
  void OpenForm(class CFormDialog* form);
  void Tip(const QString& text);

  QTabBar* kinds_ = nullptr;
  QTreeWidget* list_ = nullptr;
  QLabel* state_ = nullptr;
  QAction *add_ = nullptr, *edit_ = nullptr, *remove_ = nullptr;
  std::optional<TarnHost::SiteUsers> site_;  // none before it was read
  QString trouble_;                          // why it could not be read
  HostCalls::CCallScope reading_;
};

}  // namespace TarnClient
