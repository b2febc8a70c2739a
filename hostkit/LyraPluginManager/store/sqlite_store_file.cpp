#include "store/sqlite_store_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <utility>

#include <sys/stat.h>

#include "store/migrations.h"
#include "store/new_store_file.h"
#include "store/store_texts.h"

namespace TarnHost::Store {
namespace {

constexpr int kOpenPatience = 2000;  // ms

[[noreturn]] void Refuse(const char* text, const QString& file) {
  throw CStoreError(CStoreError::kFailed, QString::fromUtf8(text).arg(file));
}

void Fill(CSqliteEngine& engine, const QString& file, const NewStore& fresh) {
  engine.Open();
  engine.RunOnce(QStringLiteral("PRAGMA application_id = %1").arg(CSqliteEngine::kApplicationId));
  engine.RunOnce("PRAGMA journal_mode = WAL");
  FillNewStore(engine, fresh);
  // The file gets its name without its log beside it, so all must be in the file itself.
  if (engine.RunOnce("PRAGMA wal_checkpoint(TRUNCATE)").toInt() != 0) {
    Refuse("The plan store %1 cannot be made.", file);
  }
}

void MakeStoreFile(const QString& file, const NewStore& fresh) {
  if (!QDir().mkpath(QFileInfo(file).absolutePath())) {
    Refuse("The folder of the plan store %1 cannot be made.", file);
  }
  const CNewStoreFile part(file);
  {
    CSqliteEngine engine(part.Path(), CSqliteEngine::kMake, file);
    Fill(engine, file, fresh);
  }
  part.Publish();  // if somebody else was quicker, theirs is as good
}

// A program that keeps the file to itself is found now, not at the user's first change.
void CheckUnlocked(CSqlEngine& engine) {
  engine.BeginWrite();
  engine.Rollback();
}

// Passwords of cameras stand in it: who may not write a store may not read it, either. Older programs made it readable
// for everybody.
void CloseToReaders(const QString& file) {
  for (const char* suffix : {"", "-wal", "-shm"}) {
    const QByteArray name = QFile::encodeName(file + QLatin1String(suffix));
    struct stat state {};
    if (::stat(name.constData(), &state) != 0) {
      continue;
    }
    mode_t mode = state.st_mode & 07777;
    for (const auto& [write, read] : {std::make_pair(S_IWGRP, S_IRGRP), std::make_pair(S_IWOTH, S_IROTH)}) {
      if ((mode & static_cast<mode_t>(write)) == 0) {
        mode &= ~static_cast<mode_t>(read);
      }
    }
    if (mode != (state.st_mode & 07777)) {
      ::chmod(name.constData(), mode);  // another owner's stays as it is
    }
  }
}

// A copy is made to be relied on.
void PublishCopy(const QString& copy, const std::function<void(const QString& part)>& make) {
  const auto refuse_existing = [&copy] {
    throw CStoreError(CStoreError::kRefused, QStringLiteral("%1 exists already; nothing was written.").arg(copy));
  };
  if (QFileInfo::exists(copy) || QFileInfo(copy).isSymLink()) {
    refuse_existing();
  }
  const CNewStoreFile part(copy);
  make(part.Path());
  {
    CSqliteEngine fresh(part.Path(), CSqliteEngine::kExisting, copy);
    fresh.Open();
    fresh.RequireSound();
    if (!fresh.Integrity().isEmpty()) {  // the contents, too
      throw CStoreError(CStoreError::kDamaged, {kDamagedStore, {copy}});
    }
    fresh.RunOnce("PRAGMA journal_mode = WAL");  // which is no part of what was copied
  }
  if (!part.Publish()) {
    refuse_existing();
  }
}

}  // namespace

std::unique_ptr<CSqlEngine> MakeMemoryStore(const NewStore& fresh) {
  auto engine = std::make_unique<CSqliteEngine>(":memory:", CSqliteEngine::kMake);
  engine->Open();
  FillNewStore(*engine, fresh);
  return engine;
}

std::unique_ptr<CSqlEngine> OpenStoreFile(const QString& file, const NewStore& fresh) {
  if (!QFileInfo::exists(file)) {
    MakeStoreFile(file, fresh);
  }
  auto engine = std::make_unique<CSqliteEngine>(file, CSqliteEngine::kExisting);
  engine->RequireHeader();
  if (IsInWritableFolder(file)) {
    CNewStoreFile::RemoveLeftOvers(file);
  }
  engine->SetPatience(kOpenPatience);
  engine->Open();
  if (engine->CanWrite()) {
    CheckUnlocked(*engine);
  }
  engine->RequireSound();
  CloseToReaders(file);
  engine->BringAlong();
  engine->SetPatience(CSqliteEngine::kPatience);
  return engine;
}

std::unique_ptr<CSqlEngine> OpenStoreFileAsItIs(const QString& file) {
  auto engine = std::make_unique<CSqliteEngine>(file, CSqliteEngine::kExisting);
  engine->RequireHeader();
  engine->Open();
  return engine;
}

void BackUpStoreFile(const QString& file, const QString& copy) {
  const auto engine = OpenStoreFileAsItIs(file);
  PublishCopy(copy, [&engine](const QString& part) { engine->Execute("VACUUM INTO ?", {part}); });
}

void BackUpInto(const QString& copy, const std::function<void(CSqlEngine&)>& fill) {
  PublishCopy(copy, [&](const QString& part) {
    CSqliteEngine engine(part, CSqliteEngine::kMake, copy);
    engine.Open();
    engine.RunOnce(QStringLiteral("PRAGMA application_id = %1").arg(CSqliteEngine::kApplicationId));
    CTransaction transaction(engine, CTransaction::kWrite);
    MakeLayout(engine);
    fill(engine);
    transaction.Commit();
  });
}

}  // namespace TarnHost::Store
