#include "copies/shown_copy.h"

#include "store/text_rules.h"

namespace TarnHost::Store {
namespace {

std::unique_ptr<CSqlEngine> Opened(const QString& path, CShownCopy::Care care) {
  return care == CShownCopy::kWhole ? CopyFile::Open(path) : CopyFile::OpenAgain(path);
}

CopyFacts FactsFor(const QString& path, const QString& user, CShownCopy::Care care) {
  const CopyFacts facts = CopyFile::FactsOf(*Opened(path, care));
  if (facts.user != user) {
    throw CStoreError(
        CStoreError::kRefused,
        {QT_TRANSLATE_NOOP("TarnHost::Store", "The copy of the plans on this machine is not of user %1."), {user}});
  }
  return facts;
}

CReaderConnection::Opener OpenerOf(const QString& path) {
  return [path](auto) { return CopyFile::OpenAgain(path); };
}

}  // namespace

// A store of its own to its reader: that it answers says nothing of the one at the server.
CShownCopy::CShownCopy(const QString& folder, const QString& url, const QString& user, Care care)
    : path_(CopyFile::PathOf(folder, url, user)),
      facts_(FactsFor(path_, user, care)),
      reader_(OpenerOf(path_), std::make_shared<CAnswering>()) {}

CShownCopy::~CShownCopy() {
  reader_.BeginStop();
}

void CShownCopy::MarkWithheld(CameraAccessList* access) const {
  for (CameraAccess& camera : access->cameras) {
    camera.needs_store = facts_.withheld.count(ParseCode(camera.index_code)) != 0;
  }
}

}  // namespace TarnHost::Store
