#include "TarnHost/store_care.h"

#include "accounts/user_editor.h"
#include "store/audience_editor.h"
#include "store/migrations.h"
#include "store/store_checker.h"
#include "store/store_opener.h"
#include "store/user_roles.h"

namespace TarnHost {
namespace {

template <class Work>
bool Succeeds(QString* error, const Work& work) {
  try {
    work();
    return true;
  } catch (const Store::CStoreError& failure) {
    *error = failure.Text().Shown();
    return false;
  }
}

QString Said(Store::CUserRoles& roles, const QStringList& made) {
  QString said =
      QStringLiteral("The rights of users hold in the database, for members of role \"%1\".").arg(roles.DeskRole());
  const auto add = [&said](const char* text, const QStringList& names) {
    if (!names.isEmpty()) {
      said += QString::fromLatin1(text).arg(names.join(QStringLiteral(", ")));
    }
  };
  add(" These roles were made and still need a password: %1.", made);
  add(" These users have no role there; it has to be made by the database's administrator: %1.", roles.Missing());
  return said;
}

}  // namespace

bool StoreCare::Check(const QString& url, QStringList* findings, QString* summary, QString* error) {
  return Succeeds(error, [&] {
    const auto engine = Store::OpenStoreAsItIs(url);
    Store::CStoreChecker checker(*engine);
    *findings = checker.Run();
    *summary = checker.Summary();
  });
}

bool StoreCare::BackUp(const QString& url, const QString& copy, QString* error) {
  return Succeeds(error, [&] { Store::BackUpStore(url, copy); });
}

bool StoreCare::UseRoles(const QString& url, QString* said, QString* error) {
  return Succeeds(error, [&] {
    const auto engine = Store::OpenStoreAsItIs(url);
    Store::CUserRoles* const roles = engine->Roles();
    if (roles == nullptr) {
      throw Store::CStoreError(Store::CStoreError::kRefused,
                               QStringLiteral("Only a store on a server has roles for its users."));
    }
    Store::CTransaction transaction(*engine, Store::CTransaction::kWrite);
    Store::RequireNewest(*engine);
    *said = Said(*roles, roles->Use());
    transaction.Commit();
  });
}

bool StoreCare::LimitGroup(const QString& url, const QString& group, const std::optional<QStringList>& user_groups,
                           QString* said, QString* error) {
  return Succeeds(error, [&] {
    const auto engine = Store::OpenStoreAsItIs(url);
    *said = Store::CAudienceEditor(*engine).SetLimit(group, user_groups);
  });
}

bool StoreCare::FillUserGroup(const QString& url, const QString& user_group, const std::optional<QStringList>& users,
                              QString* said, QString* error) {
  return Succeeds(error, [&] {
    const auto engine = Store::OpenStoreAsItIs(url);
    *said = Store::CAudienceEditor(*engine).SetMembers(user_group, users);
  });
}

bool StoreCare::ReadUsers(const QString& url, SiteUsers* users, QString* error) {
  return Succeeds(error, [&] {
    const auto engine = Store::OpenStoreAsItIs(url);
    *users = Store::CUserEditor(*engine).Read();
  });
}

bool StoreCare::ChangeUsers(const QString& url, const SiteUserChanges& changes, QString* error) {
  return Succeeds(error, [&] {
    const auto engine = Store::OpenStoreAsItIs(url);
    Store::CUserEditor(*engine).Change(changes, Store::CUserEditor::HashesOf(changes), 0);
  });
}

}  // namespace TarnHost
