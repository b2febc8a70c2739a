#include "copies/copy_file.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>

#include <sys/stat.h>

#include "accounts/account_repository.h"
#include "store/migrations.h"
#include "store/postgres_address.h"

namespace TarnHost::Store::CopyFile {
namespace {

constexpr int kNameLength = 16, kPatience = 2000;
const char kSuffix[] = ".copy";
// The first is what makes a store a copy.
const char kUser[] = "copy_user", kUserId[] = "copy_user_id", kBound[] = "copy_bound", kChange[] = "copy_change",
           kMark[] = "copy_mark", kAt[] = "copy_at", kWithheld[] = "copy_withheld";

QString NameOf(const QString& text) {
  const QByteArray bytes = text.normalized(QString::NormalizationForm_C).toUtf8();
  const QByteArray hash = QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
  return QString::fromLatin1(hash.left(kNameLength));
}

// The account is no part of it: it may be another for the same site.
QString NameOfStore(const QString& url) {
  const PostgresAddress address = PostgresAddress::FromText(url);
  return NameOf(address.Hosts() + '/' + address.Ports() + '/' + address.database);
}

QString TextOf(const std::set<int32_t>& numbers) {
  QStringList texts;
  for (const int32_t number : numbers) {
    texts.append(QString::number(number));
  }
  return texts.join(',');
}

std::set<int32_t> NumbersIn(const QString& text) {
  std::set<int32_t> numbers;
  for (const QString& number : text.split(',')) {
    if (!number.isEmpty()) {
      numbers.insert(number.toInt());
    }
  }
  return numbers;
}

QMap<QString, QString> InfoOf(CSqlEngine& copy) {
  QMap<QString, QString> info;
  copy.ForEach("SELECT name, value FROM store_info", {},
               [&info](const QSqlQuery& query) { info[query.value(0).toString()] = query.value(1).toString(); });
  return info;
}

std::unique_ptr<CSqliteEngine> OpenedOfAnyLayout(const QString& path) {
  auto engine = std::make_unique<CSqliteEngine>(path, CSqliteEngine::kExisting);
  engine->RequireHeader();
  engine->SetPatience(kPatience);
  engine->Open();
  engine->RunOnce("PRAGMA secure_delete = ON");  // what the user sees no more is not to be found in the file
  engine->RunOnce("PRAGMA cache_spill = OFF");   // pages written before the end would lock out who reads it meanwhile
  return engine;
}

std::unique_ptr<CSqliteEngine> Opened(const QString& path) {
  auto engine = OpenedOfAnyLayout(path);
  RequireNewest(*engine);
  return engine;
}

std::unique_ptr<CSqlEngine> OpenSound(const QString& path) {
  auto engine = Opened(path);
  engine->RequireSound();
  return engine;
}

}  // namespace

QString PathOf(const QString& folder, const QString& url, const QString& user) {
  return QDir(folder).filePath(NameOfStore(url) + '-' + NameOf(user) + kSuffix);
}

QStringList PathsOf(const QString& folder, const QString& url) {
  QStringList paths;
  const QString pattern = NameOfStore(url) + "-*" + kSuffix;
  for (const QFileInfo& file : QDir(folder).entryInfoList({pattern}, QDir::Files | QDir::Hidden)) {
    paths.append(file.absoluteFilePath());
  }
  return paths;
}

std::unique_ptr<CSqlEngine> Open(const QString& path) {
  try {
    return OpenSound(path);
  } catch (const CStoreError& error) {
    const char* const text =
        QT_TRANSLATE_NOOP("TarnHost::Store", "The copy of the plans on this machine cannot be used. %1");
    throw CStoreError(error.GetKind(), {text, {error.Text()}}, error.Words());
  }
}

std::unique_ptr<CSqlEngine> OpenAgain(const QString& path) {
  return Opened(path);
}

QString UserOf(const QString& path) {
  return InfoOf(*OpenedOfAnyLayout(path)).value(kUser);
}

CopyFacts FactsOf(CSqlEngine& copy) {
  const QMap<QString, QString> info = InfoOf(copy);
  CopyFacts facts;
  facts.station = info.value("station_id");
  facts.user = info.value(kUser);
  facts.user_id = info.value(kUserId).toInt();
  facts.is_bound = info.value(kBound) == QLatin1String("1");
  facts.change = info.value(kChange).toLongLong();
  facts.mark = info.value(kMark);
  facts.at = QDateTime::fromSecsSinceEpoch(info.value(kAt).toLongLong());
  facts.withheld = NumbersIn(info.value(kWithheld));
  if (facts.user_id == 0) {
    throw CStoreError(CStoreError::kRefused,
                      {QT_TRANSLATE_NOOP("TarnHost::Store", "%1 is no copy of a user's plans."), {copy.Place()}});
  }
  if (const auto account = CAccountRepository(copy).Find(facts.user_id)) {
    facts.hash = account->hash;
  }
  return facts;
}

void SetFacts(CSqlEngine& copy, const CopyFacts& facts) {
  const QMap<QString, QString> info = {{kUser, facts.user},
                                       {kUserId, QString::number(facts.user_id)},
                                       {kBound, QString::number(int(facts.is_bound))},
                                       {kChange, QString::number(facts.change)},
                                       {kMark, facts.mark},
                                       {kAt, QString::number(facts.at.toSecsSinceEpoch())},
                                       {kWithheld, TextOf(facts.withheld)}};
  for (auto it = info.begin(); it != info.end(); ++it) {
    copy.Execute("INSERT OR REPLACE INTO store_info (name, value) VALUES (?, ?)", {it.key(), it.value()});
  }
  CAccountRepository accounts(copy);
  const auto before = accounts.Find(facts.user_id);
  if (facts.hash.isEmpty()) {
    accounts.Remove(facts.user_id);
  } else if (!before || before->hash != facts.hash) {
    accounts.SetHash(facts.user_id, facts.hash);
  }
}

bool SetMoment(const QString& path, int32_t user_id, int64_t change, const QDateTime& at) {
  if (!QFileInfo::exists(path)) {
    return false;
  }
  const auto copy = OpenAgain(path);
  CTransaction transaction(*copy, CTransaction::kWrite);
  const CopyFacts facts = FactsOf(*copy);
  if (facts.user_id != user_id || facts.change != change) {
    return false;
  }
  copy->Execute("UPDATE store_info SET value = ? WHERE name = ?",
                {QString::number(at.toSecsSinceEpoch()), QLatin1String(kAt)});
  transaction.Commit();
  return true;
}

// One that was there before is its owner's to open or close.
void MakeFolder(const QString& folder) {
  QDir().mkpath(QFileInfo(folder).absolutePath());
  ::mkdir(QFile::encodeName(folder).constData(), S_IRWXU);
}

// The file goes first: without its journal it may be half of two states.
void Remove(const QString& path) {
  for (const char* beside : {"", "-journal", "-wal", "-shm"}) {
    QFile::remove(path + QLatin1String(beside));
  }
}

}  // namespace TarnHost::Store::CopyFile
