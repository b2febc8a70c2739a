#include "TarnHost/store_copies.h"

#include <algorithm>

#include "copies/copy_file.h"
#include "copies/copy_log_in.h"
#include "marlog/marlog.h"
#include "store/postgres_address.h"

namespace TarnHost {
namespace {

void Complain(const Store::CStoreError& error, QString* why_not) {
  marlog::Write("LyraClientError", marlog::Error, "[%s(%d)] [0x%08x] - %s", "TarnHost::StoreCopies", __LINE__, 0U,
                qUtf8Printable(error.LogText()));
  if (why_not != nullptr) {
    *why_not = error.Text().Shown();
  }
}

QStringList PathsOf(const QString& folder, const QString& url) {
  if (folder.isEmpty() || !Store::PostgresAddress::IsMeantBy(url)) {
    return {};
  }
  try {
    return Store::CopyFile::PathsOf(folder, url);
  } catch (const Store::CStoreError&) {
    return {};  // the address is none, which is said where it is opened
  }
}

}  // namespace

bool StoreCopies::HasAny(const QString& folder, const QString& url) {
  return !PathsOf(folder, url).isEmpty();
}

std::vector<StoreCopies::Copy> StoreCopies::Of(const QString& folder, const QString& url, QString* why_not) {
  std::vector<Copy> copies;
  for (const QString& path : PathsOf(folder, url)) {
    try {
      const Store::CopyFacts facts = Store::CopyFile::FactsOf(*Store::CopyFile::Open(path));
      copies.push_back({facts.user, facts.at, !facts.hash.isEmpty()});
    } catch (const Store::CStoreError& error) {
      Complain(error, why_not);
    }
  }
  std::sort(copies.begin(), copies.end(), [](const Copy& left, const Copy& right) { return left.at > right.at; });
  return copies;
}

LogInAnswer StoreCopies::Check(const QString& folder, const QString& url, const LogInRequest& request) {
  try {
    return Store::CheckAtCopy(Store::CopyFile::PathOf(folder, url, request.user), request,
                              QDateTime::currentSecsSinceEpoch());
  } catch (const Store::CStoreError& error) {
    return {LogInOutcome::kRefused, 0, error.Text().Shown()};
  }
}

void StoreCopies::Remove(const QString& folder, const QString& url) {
  for (const QString& path : PathsOf(folder, url)) {
    Store::CopyFile::Remove(path);
  }
}

}  // namespace TarnHost
