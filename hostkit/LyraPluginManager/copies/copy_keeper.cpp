#include "copies/copy_keeper.h"

#include <QFileInfo>
#include <QRandomGenerator>
#include <algorithm>
#include <utility>

#include "marlog/marlog.h"
#include "store/text_rules.h"

namespace TarnHost::Store {
namespace {

constexpr std::chrono::milliseconds kBeat{500}, kCalm{5000};

// All desks hear of a change in the same moment.
std::chrono::milliseconds CalmOf(std::chrono::milliseconds pause) {
  const int spread = static_cast<int>(pause.count() / 4) + 1;
  return std::min(kCalm, pause) + std::chrono::milliseconds(QRandomGenerator::global()->bounded(spread));
}

bool IsSame(const CopyOwner& left, const CopyOwner& right) {
  return left.user == right.user && left.user_id == right.user_id && left.is_bound == right.is_bound &&
         left.password == right.password;
}

// What cannot be looked into for another reason than damage may be good.
bool IsOfAny(const std::vector<std::string>& users, const QString& path) {
  try {
    return std::find(users.begin(), users.end(), CopyFile::UserOf(path).toStdString()) != users.end();
  } catch (const CStoreError& error) {
    return error.GetKind() != CStoreError::kDamaged;
  }
}

}  // namespace

CCopyKeeper::CCopyKeeper(Setup setup) : setup_(std::move(setup)), thread_(std::make_shared<CAnswering>()) {
  pace_.pause = setup_.pause;
}

void CCopyKeeper::Start(RunOnStore run) {
  run_ = std::move(run);
  thread_.SetBeat(kBeat, [weak = weak_from_this()](bool) {
    const auto self = weak.lock();
    return self && self->Beat();
  });
}

void CCopyKeeper::SetOwner(const CopyOwner& owner) {
  const std::lock_guard<std::mutex> lock(mutex_);
  owner_ = owner;
}

void CCopyKeeper::SetNewest(std::optional<int64_t> change, const QDateTime& at, int connection) {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (std::exchange(connection_, connection) != connection) {
    Touch();
  }
  newest_ = change;
  newest_at_ = at;
}

void CCopyKeeper::BeginStop() {
  thread_.BeginStop([self = shared_from_this()] { self->WriteOwed(); });
}

bool CCopyKeeper::IsBehind() {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (owner_.user_id == 0 || !newest_ || stopped_) {
    return false;
  }
  if (!IsSame(owner_, copied_for_)) {
    copied_ = -1;
    pace_.written.reset();
    equal_at_ = written_at_ = QDateTime();
  }
  copied_for_ = owner_;
  if (copied_ != *newest_ || is_touched_) {
    return true;
  }
  equal_at_ = newest_at_;
  return false;
}

bool CCopyKeeper::Beat() {
  const auto now = CopyPace::Clock::now();
  if (!IsBehind()) {
    pace_.changed.reset();
    if (IsMomentOwed() && pace_.IsMomentDue(now)) {
      WriteMoment();
      pace_.confirmed = now;
    }
    return true;
  }
  if (!pace_.changed) {
    pace_.changed = now;
    pace_.calm = CalmOf(setup_.pause);
  }
  if (pace_.IsDue(now)) {
    Update();
    pace_.changed.reset();
    pace_.written = CopyPace::Clock::now();
  }
  return true;
}

void CCopyKeeper::Update(bool is_last) {
  const QString path = Path();
  is_touched_ = false;
  try {
    const auto begin = CopyPace::Clock::now();
    const QDateTime now = setup_.now();
    const CCopyUpdate::Result result = Write(now, is_last);
    copied_ = result.change;
    equal_at_ = written_at_ = now;
    failure_.clear();
    const auto took = std::chrono::duration_cast<std::chrono::milliseconds>(CopyPace::Clock::now() - begin);
    marlog::Write("LyraClientInfo", marlog::Info,
                  "The copy of the plans is up to date: change %lld, %lld bytes, %lld ms",
                  static_cast<long long>(copied_), static_cast<long long>(QFileInfo(path).size()),
                  static_cast<long long>(took.count()));
    RemoveForGoneUsers(result.users);
  } catch (const CStoreError& error) {
    is_touched_ = true;  // again after the pause
    OnFailure(error.LogText());
  } catch (const std::exception& error) {
    OnFailure(QString::fromLocal8Bit(error.what()));
  }
}

// What takes long is done once for an owner, and not at the end.
CCopyUpdate::Result CCopyKeeper::Write(const QDateTime& now, bool is_last) {
  CCopyUpdate update(run_, copied_for_, now, stopped_);
  if (is_last) {
    return update.RunAtOnce(Path());
  }
  return copied_ < 0 ? update.Run(Path()) : update.RunAgain(Path());
}

// Another desk may have written another state, or removed the file: that is looked into as if it had changed.
void CCopyKeeper::WriteMoment() {
  try {
    if (CopyFile::SetMoment(Path(), copied_for_.user_id, copied_, equal_at_)) {
      written_at_ = equal_at_;
    } else {
      copied_ = -1;
    }
  } catch (const CStoreError& error) {
    OnFailure(error.LogText());
  }
}

// No more than that: a hash or a whole copy takes longer than the end may.
void CCopyKeeper::WriteOwed() {
  if (IsBehind()) {
    if (copied_ >= 0) {
      Update(true);
    }
  } else if (IsMomentOwed()) {
    WriteMoment();
  }
}

// Once each: a disk that is full stays so for long.
void CCopyKeeper::OnFailure(const QString& text) {
  if (!stopped_ && text != std::exchange(failure_, text)) {
    marlog::Write("LyraClientError", marlog::Error, "The copy of the plans cannot be written: %s",
                  qUtf8Printable(text));
  }
}

// Who is no user any more is not let in by a copy either. Once: each desk does it at its start.
void CCopyKeeper::RemoveForGoneUsers(const std::vector<std::string>& users) {
  if (std::exchange(has_looked_, true)) {
    return;
  }
  for (const QString& path : CopyFile::PathsOf(setup_.folder, setup_.url)) {
    if (!IsOfAny(users, path)) {
      CopyFile::Remove(path);
    }
  }
}

}  // namespace TarnHost::Store
