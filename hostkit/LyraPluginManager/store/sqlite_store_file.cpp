#include "store/sqlite_store_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>
#include <QtEndian>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "store/migrations.h"

namespace TarnHost::Store {
namespace {

constexpr int kOpenPatience = 2000;  // ms
constexpr int kHeaderSize = 100;
constexpr int kApplicationIdAt = 68;
const char kMagic[] = "SQLite format 3";

[[noreturn]] void Refuse(const char* text, const QString& file) {
  throw CStoreError(QString::fromUtf8(text).arg(file));
}

QString SystemError() {
  return QString::fromLocal8Bit(std::strerror(errno));
}

// The file as the engine writes it before it goes under its name.
class CNewFile {
 public:
  explicit CNewFile(const QString& target)
      : target_(target), path_(target + ".new-" + QUuid::createUuid().toString(QUuid::Id128)) {}
  ~CNewFile() {
    for (const char* suffix : {"", "-wal", "-shm"}) {
      QFile::remove(path_ + suffix);
    }
  }
  CNewFile(const CNewFile&) = delete;
  CNewFile& operator=(const CNewFile&) = delete;

  const QString& Path() const { return path_; }

  // Under its name, unless somebody else was quicker: then theirs is as good.
  void Publish() const {
    const QByteArray from = QFile::encodeName(path_);
    const QByteArray to = QFile::encodeName(target_);
    if (!Move(from, to) && errno != EEXIST) {
      throw CStoreError(QStringLiteral("The plan store %1 cannot be made: %2").arg(target_, SystemError()));
    }
    SyncFolder();
  }

 private:
  // Not every file system knows links, nor every one the other way.
  static bool Move(const QByteArray& from, const QByteArray& to) {
    return ::link(from.constData(), to.constData()) == 0 ||
           (errno != EEXIST &&
            ::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0);
  }

  void SyncFolder() const {
    const QByteArray folder = QFile::encodeName(QFileInfo(target_).absolutePath());
    const int descriptor = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
      ::fsync(descriptor);
      ::close(descriptor);
    }
  }

  const QString target_, path_;
};

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
  const CNewFile part(file);
  {
    CSqliteEngine engine(part.Path(), file);
    Fill(engine, file, fresh);
  }
  part.Publish();
}

// Mode bits count even for a user whom they do not bind: a file that was made read-only is meant to stay as it is.
bool IsWritable(const QString& path) {
  struct stat status {};
  const QByteArray name = QFile::encodeName(path);
  return ::stat(name.constData(), &status) == 0 && (status.st_mode & 0222) != 0 &&
         ::access(name.constData(), W_OK) == 0;
}

// Looks at the file itself, so that a foreign file is never opened as a database.
void CheckHeader(const QString& name) {
  QFile file(name);
  if (!QFileInfo(name).isFile() || !file.open(QIODevice::ReadOnly)) {
    Refuse("The plan store %1 cannot be read.", name);
  }
  const QByteArray header = file.read(kHeaderSize);
  if (header.isEmpty()) {
    Refuse("The plan store %1 is empty: its content was lost.", name);
  }
  if (!header.startsWith(kMagic)) {
    Refuse("%1 is not a plan store.", name);
  }
  if (header.size() < kHeaderSize) {
    Refuse("The plan store %1 is damaged: it is cut off.", name);
  }
  if (qFromBigEndian<qint32>(header.constData() + kApplicationIdAt) != CSqliteEngine::kApplicationId) {
    Refuse("%1 is not a plan store.", name);
  }
}

void CheckWritable(const QString& file) {
  if (!IsWritable(file)) {
    Refuse("The plan store %1 is read-only.", file);
  }
  if (!IsWritable(QFileInfo(file).absolutePath())) {
    Refuse("The plan store %1 is in a read-only folder.", file);
  }
}

void CheckContent(CSqlEngine& engine, const QString& file) {
  const int newest = AllMigrations().back().to;
  if (StoredVersion(engine) <= newest && engine.RunOnce("PRAGMA quick_check(1)").toString() != "ok") {
    Refuse("The plan store %1 is damaged.", file);
  }
}

// A program that keeps the file to itself is found now, not at the user's first change.
void CheckUnlocked(CSqlEngine& engine) {
  engine.BeginWrite();
  engine.Rollback();
}

}  // namespace

std::unique_ptr<CSqlEngine> MakeMemoryStore(const NewStore& fresh) {
  auto engine = std::make_unique<CSqliteEngine>(":memory:");
  engine->Open();
  FillNewStore(*engine, fresh);
  return engine;
}

std::unique_ptr<CSqlEngine> OpenStoreFile(const QString& file, const NewStore& fresh) {
  if (!QFileInfo::exists(file)) {
    MakeStoreFile(file, fresh);
  }
  CheckHeader(file);
  CheckWritable(file);
  auto engine = std::make_unique<CSqliteEngine>(file);
  engine->SetPatience(kOpenPatience);
  engine->Open();
  CheckUnlocked(*engine);
  CheckContent(*engine, file);
  Migrate(*engine, file);
  engine->SetPatience(CSqliteEngine::kPatience);
  return engine;
}

}  // namespace TarnHost::Store
