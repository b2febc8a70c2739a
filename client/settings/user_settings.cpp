#include "settings/user_settings.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QStandardPaths>
#include <atomic>
#include <utility>

#include "host_calls/ask.h"
#include "marlog/marlog.h"

namespace TarnClient {

namespace {

constexpr int kLaterMs = 2000;
constexpr int kAgainMs = 30000;  // after a write that failed
constexpr char kChosen[] = "chosen";
constexpr char kRemembered[] = "remembered";

QJsonObject PartOf(const QJsonObject& values, const char* part, bool* sound) {
  const QJsonValue value = values.value(QLatin1String(part));
  if (!value.isUndefined() && !value.isObject()) {
    *sound = false;
  }
  return value.toObject();
}

QJsonObject ChangedValues(const QJsonObject& now, const QJsonObject& before) {
  QJsonObject changed;
  for (auto value = now.begin(); value != now.end(); ++value) {
    if (before.value(value.key()) != *value) {
      changed.insert(value.key(), *value);
    }
  }
  return changed;
}

}  // namespace

// The disk's thread begins it, or the GUI thread withdraws it, whichever is first.
struct CUserSettings::Choice {
  enum State { Waits, IsWritten, IsWithdrawn };

  bool LeaveWaiting(State next) {
    State waits = Waits;
    return state.compare_exchange_strong(waits, next);
  }

  ChosenSettings shown, chosen;
  std::atomic<State> state{Waits};
  CSettingsFile::Answer answer;
};

CUserSettings::CUserSettings(QString path, QObject* parent)
    : QObject(parent), path_(std::move(path)), disk_(std::make_unique<QThreadPool>()) {
  disk_->setMaxThreadCount(1);
  later_.setSingleShot(true);
  connect(&later_, &QTimer::timeout, this, &CUserSettings::WriteRemembered);
}

CUserSettings::~CUserSettings() {
  if (!Flush()) {
    disk_.release();  // its end would wait for the disk
  }
}

QString CUserSettings::UsualPath() {
  return QDir(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation))
      .filePath(QStringLiteral("settings.json"));
}

void CUserSettings::Load(const QString& store, const QString& user) {
  QElapsedTimer waited;
  waited.start();
  Flush();
  late_.reset();
  reading_.reset();
  calls_.Drop();
  file_ = CSettingsFile(path_, store, user);
  const auto read = std::make_shared<CSettingsFile::Answer>();
  HostCalls::Ask([file = file_, read] {
    *read = file.Read();
    return *read;
  })
      .On(*disk_)
      .Within(calls_)
      .Then(this, [this](const CSettingsFile::Answer&) { OnReadLate(); });
  keeps_desk_ = disk_->waitForDone(qMax(0, patience_ms_ - static_cast<int>(waited.elapsed())));
  if (keeps_desk_) {
    TakeRead(*read);
  } else {
    reading_ = read;
    TakeRead({SettingsTrouble::Unanswered, {}, {}});
  }
}

void CUserSettings::TakeRead(const CSettingsFile::Answer& answer) {
  trouble_ = answer.trouble;
  detail_ = answer.detail;
  is_choice_sound_ = is_desk_sound_ = true;
  chosen_ = ChosenSettings::FromJson(PartOf(answer.values, kChosen, &is_choice_sound_), &is_choice_sound_);
  remembered_ = RememberedDesk::FromJson(PartOf(answer.values, kRemembered, &is_desk_sound_), &is_desk_sound_);
  if (!TroubleText().isEmpty()) {
    marlog::Write("LyraClientError", marlog::Error, "%s", qUtf8Printable(TroubleText()));
  }
}

// The desk stands by now, and stays as it is.
void CUserSettings::OnReadLate() {
  const auto read = std::exchange(reading_, nullptr);
  if (!read) {
    return;
  }
  const RememberedDesk desk = remembered_;
  TakeRead(*read);
  remembered_ = desk;
  Q_EMIT SignalChosen();
  if (!TroubleText().isEmpty()) {
    Q_EMIT SignalTrouble(TroubleText());
  }
}

bool CUserSettings::Choose(const ChosenSettings& shown, const ChosenSettings& chosen, QString* error) {
  late_.reset();
  const auto choice = std::make_shared<Choice>();
  choice->shown = shown;
  choice->chosen = chosen;
  WriteChoice(choice);
  if (!disk_->waitForDone(patience_ms_)) {
    if (!choice->LeaveWaiting(Choice::IsWithdrawn)) {
      late_ = choice;
    }
    *error = tr("The disk does not answer");
    return false;
  }
  OnReadLate();  // what was asked for first has come first
  if (choice->answer.trouble != SettingsTrouble::None) {
    *error = TextOf(choice->answer.trouble, choice->answer.detail);
    return false;
  }
  TakeOver(*choice);
  return true;
}

// Another client of the same user may have changed the other values. Those that could not be read are written, too.
void CUserSettings::WriteChoice(const std::shared_ptr<Choice>& choice) {
  QJsonObject values = ChangedValues(choice->chosen.ToJson(), choice->shown.ToJson());
  if (!is_choice_sound_) {
    values = chosen_.WithChange(choice->shown, choice->chosen).ToJson();
  }
  HostCalls::Ask([file = file_, values, choice] {
    if (choice->LeaveWaiting(Choice::IsWritten)) {
      choice->answer = file.Write({{QLatin1String(kChosen), values}});
    }
    return choice->answer;
  })
      .On(*disk_)
      .Then(this, [this, choice](const CSettingsFile::Answer& answer) {
        if (late_ == choice && answer.trouble == SettingsTrouble::None) {
          TakeOver(*choice);
        }
      });
}

void CUserSettings::TakeOver(const Choice& choice) {
  chosen_ = chosen_.WithChange(choice.shown, choice.chosen);
  is_choice_sound_ = true;
  if (choice.chosen.skin != choice.shown.skin) {
    Q_EMIT SignalSkinChosen();
  }
  Q_EMIT SignalChosen();
}

void CUserSettings::Remember(const RememberedDesk& desk) {
  if (desk == remembered_) {
    return;
  }
  remembered_ = desk;
  if (keeps_desk_ && (!later_.isActive() || later_.interval() > kLaterMs)) {
    later_.start(kLaterMs);
  }
}

void CUserSettings::WriteRemembered() {
  HostCalls::Ask([file = file_, part = remembered_.ToJson()] {
    return file.Write({{QLatin1String(kRemembered), part}});
  })
      .On(*disk_)
      .Within(calls_)
      .Then(this, [this](const CSettingsFile::Answer& answer) { OnWritten(answer); });
}

bool CUserSettings::Flush() {
  if (later_.isActive()) {
    later_.stop();
    WriteRemembered();
  }
  return disk_->waitForDone(patience_ms_ / 2);
}

void CUserSettings::OnWritten(const CSettingsFile::Answer& answer) {
  if (answer.trouble == SettingsTrouble::None) {
    is_desk_sound_ = true;
  } else if (!later_.isActive()) {
    later_.start(kAgainMs);  // until then, Flush() writes it as well
  }
  if (answer.trouble == trouble_) {
    return;
  }
  const bool was_silent = trouble_ == SettingsTrouble::None;
  trouble_ = answer.trouble;
  detail_ = answer.detail;
  if (was_silent) {
    marlog::Write("LyraClientError", marlog::Error, "%s", qUtf8Printable(TroubleText()));
    Q_EMIT SignalTrouble(TroubleText());
  }
}

QString CUserSettings::TroubleText() const {
  if (trouble_ == SettingsTrouble::None && !(is_choice_sound_ && is_desk_sound_)) {
    return tr("Some of your settings could not be read. They are as at a first start.");
  }
  return TextOf(trouble_, detail_);
}

QString CUserSettings::TextOf(SettingsTrouble trouble, const QString& detail) const {
  switch (trouble) {
    case SettingsTrouble::Damaged:
      return tr("Your settings are damaged and cannot be read. They are as at a first start; the damaged file is kept "
                "as %1.")
          .arg(QDir::toNativeSeparators(file_.KeptAs()));
    case SettingsTrouble::Newer:
      return tr("Your settings were saved by a newer version of the client. They are left as they are and not used.");
    case SettingsTrouble::NotAFile:
      return tr("Your settings cannot be read: %1 is not a file.").arg(detail);
    case SettingsTrouble::Unreadable:
      return tr("Your settings cannot be read: %1").arg(detail);
    case SettingsTrouble::Unanswered:
      return tr("Your settings cannot be read: the disk does not answer. How you arrange the client now is not kept.");
    case SettingsTrouble::ReadOnly:
      return tr("Your settings cannot be saved: %1 is read-only.").arg(detail);
    case SettingsTrouble::Locked:
      return tr("Your settings cannot be saved: %1 is locked by another program.").arg(detail);
    case SettingsTrouble::NotWritten:
      return tr("Your settings cannot be saved: %1").arg(detail);
    case SettingsTrouble::None:
      break;
  }
  return QString();
}

}  // namespace TarnClient
