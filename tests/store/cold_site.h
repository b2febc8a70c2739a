#pragma once

#include <QTemporaryDir>
#include <QVector>
#include <memory>

#include "TarnHost/log_in.h"
#include "faulty_line.h"
#include "store_fixture.h"

namespace StoreTest {

constexpr int kColdWaitMs = 30000;
inline const char kSecret[] = "camera's own secret", kLogin[] = "camera's own login", kHidden[] = "pass=in-the-address";

TarnHost::LogInRequest As(const char* user, const char* password = "");
QByteArray BytesOf(const QString& path);
bool Write(const QString& path, const QByteArray& bytes);

/// A site at a server that can be away, and what desks keep of it for that. "North", below "Gates", is limited to the
/// guards: bob, who may not configure. "Top" starts by itself, all day. Needs PostgreSQL.
class CColdTest : public CStoreTest {
  Q_OBJECT
 protected Q_SLOTS:
  void init();
  void cleanup();

 protected:
  /// Whether the users open the store under their own roles or all under the owner's account.
  static void Accounts();
  TarnHost::PlanStoreOptions OptionsOf(const QString& user, bool roles) const;
  QString Folder() const { return folder_->filePath("kept/copies"); }
  QString File() const;
  QString InCopy(const QString& statement) const;
  QStringList UsersWithCopies() const;
  QString CopiedPlans() const {
    return InCopy("SELECT group_concat(name, ', ') FROM (SELECT name FROM plan ORDER BY name)");
  }

  static std::shared_ptr<TarnHost::CPlanStore> OpenAs(const TarnHost::PlanStoreOptions& options,
                                                      const TarnHost::LogInRequest& user);
  CClient Online(const TarnHost::LogInRequest& user, bool roles) const {
    return CClient(OpenAs(OptionsOf(user.user, roles), user));
  }
  /// While the server is away.
  CClient Cold(const TarnHost::LogInRequest& user, bool roles);
  /// Works at the store once, until the copy has this plan.
  void Keep(const TarnHost::LogInRequest& user, bool roles, const QString& plan = "Top") const;
  /// Works at the store once, with a password, until there are so many copies.
  void KeepCopy(const TarnHost::LogInRequest& user, bool roles, size_t copies) const;
  void SetPassword(const QString& user, const char* password) const;
  /// From here on the server asks these roles for their passwords.
  void AskForPasswords(const QStringList& roles);
  TarnHost::StoreTrouble LastTrouble() const { return seen_.isEmpty() ? TarnHost::StoreTrouble::kNone : seen_.last(); }

  std::unique_ptr<QTemporaryDir> folder_;
  std::unique_ptr<CFaultyLine> line_;
  QVector<TarnHost::StoreTrouble> seen_;
  int asked_ = 0, servers_ = 1;  // in the address; all of them are the line

 private:
  QStringList asked_roles_;
};

}  // namespace StoreTest
