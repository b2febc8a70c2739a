#include "TarnHost/store_care.h"

#include "store/audience_editor.h"
#include "store/store_checker.h"
#include "store/store_opener.h"

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

}  // namespace TarnHost
