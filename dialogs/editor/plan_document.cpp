#include "plan_document.h"

#include <QLocale>
#include <QUndoCommand>
#include <algorithm>
#include <optional>
#include <tuple>
#include <utility>

#include "MarUIControl/string_conversion.h"

namespace TarnPlanView {

using MarUIControl::QStringToString;
using MarUIControl::StringToQString;
using view_plugin_protocol::PlanPage;
using view_plugin_protocol::PlanWindow;

namespace {

enum MergeId { kNoMerge = -1, kMergeName = 1, kMergeTimes = 2, kMergeDwell = 100 };  // dwell: plus the page

const char kTimeFormat[] = "HH:mm:ss";
const char kShortTimeFormat[] = "HH:mm";  // as other programs write it

std::string TextOf(const QTime& time) {
  return QStringToString(QLocale::c().toString(time, kTimeFormat));  // the store reads no other digits
}

std::optional<QTime> Parsed(const std::string& text) {
  for (const char* format : {kTimeFormat, kShortTimeFormat}) {
    const QTime time = QTime::fromString(StringToQString(text), format);
    if (time.isValid()) {
      return time;
    }
  }
  return std::nullopt;
}

QTime TimeFrom(const std::string& text) {
  return Parsed(text).value_or(QTime(0, 0));
}

QVector<DraftPage> PagesFrom(const std::list<PlanPage>& records) {
  QVector<DraftPage> pages;
  for (const PlanPage& record : records) {
    pages.append(DraftPage(record));
    pages.last().place = pages.size() - 1;
  }
  std::stable_sort(pages.begin(), pages.end(),
                   [](const DraftPage& one, const DraftPage& other) { return one.page_no < other.page_no; });
  return pages;
}

PlanDraft DraftFrom(const view_plugin_protocol::GetPlanDetailResponse& detail) {
  PlanDraft draft;
  draft.name = StringToQString(detail.name);
  draft.group_code = StringToQString(detail.group_index_code);
  draft.group_name = StringToQString(detail.group_name);
  draft.family = detail.type;
  draft.auto_run = detail.auto_run;
  draft.begin = TimeFrom(detail.start_time);
  draft.end = TimeFrom(detail.end_time);
  draft.pages = PagesFrom(detail.pages);
  return draft;
}

// The only page that differs; -1 when there are several or none, or pages came or went.
int OnlyDifference(const QVector<DraftPage>& one, const QVector<DraftPage>& other) {
  if (one.size() != other.size()) {
    return -1;
  }
  int page = -1;
  for (int i = 0; i < one.size(); ++i) {
    if (one[i] != other[i]) {
      if (page >= 0) {
        return -1;
      }
      page = i;
    }
  }
  return page;
}

bool IsOtherContent(const PlanWindow& window) {
  return IsFilled(window) && !IsCamera(window);
}

QVector<std::tuple<int, int, std::string>> OtherContentOf(const DraftPage& page) {
  QVector<std::tuple<int, int, std::string>> content;
  for (const PlanWindow& window : page.windows) {
    if (IsOtherContent(window) && !page.IsHidden(window.window_no)) {
      content.append(std::make_tuple(window.window_no, window.content_kind, window.resource_code));
    }
  }
  return content;
}

bool SameHead(PlanDraft one, const PlanDraft& other) {
  one.pages = other.pages;
  return one == other;
}

}  // namespace

class CPlanDocument::Step : public QUndoCommand {
 public:
  struct State {
    PlanDraft draft;
    int current_page;  // -1: as it is
  };

  Step(const QString& text, CPlanDocument* document, State before, State after, int merge_id,
       bool replaces_edits = false)
      : QUndoCommand(text),
        document_(document),
        before_(std::move(before)),
        after_(std::move(after)),
        merge_id_(merge_id),
        replaces_edits_(replaces_edits) {}

  bool ReplacesEdits() const { return replaces_edits_; }

  int id() const override { return merge_id_; }
  void undo() override { document_->Take(before_.draft, before_.current_page); }
  void redo() override { document_->Take(after_.draft, after_.current_page); }

  bool mergeWith(const QUndoCommand* other) override {
    after_ = static_cast<const Step*>(other)->after_;
    setObsolete(before_.draft == after_.draft);
    return true;
  }

 private:
  CPlanDocument* document_;
  State before_, after_;
  int merge_id_;
  bool replaces_edits_;
};

CPlanDocument::CPlanDocument(QObject* parent) : QObject(parent) {
  StartNew(QString(), QString());
}

CPlanDocument::~CPlanDocument() = default;

void CPlanDocument::StartNew(const QString& name, const QString& group_code, const QString& group_name, int family) {
  PlanDraft draft;
  draft.name = name;
  draft.group_code = group_code;
  draft.group_name = group_name;
  draft.family = family;
  draft.pages.append(EmptyPage());
  had_no_pages_ = false;
  view_plugin_protocol::GetPlanDetailResponse origin;
  origin.start_time = TextOf(draft.begin);
  origin.end_time = TextOf(draft.end);
  Begin(std::move(draft), std::move(origin));
}

void CPlanDocument::Load(const view_plugin_protocol::GetPlanDetailResponse& detail) {
  Begin(DraftToEdit(detail), detail);
}

PlanDraft CPlanDocument::DraftToEdit(const view_plugin_protocol::GetPlanDetailResponse& detail) {
  had_no_pages_ = detail.pages.empty();
  return DraftOf(detail);
}

void CPlanDocument::TakeOver(const view_plugin_protocol::GetPlanDetailResponse& detail) {
  const bool had_edits = IsDirty();
  saved_ = DraftToEdit(detail);
  origin_ = detail;
  origin_.pages.clear();
  if (draft_ != saved_) {
    stack_.push(new Step(tr("Load theirs"), this, {draft_, current_page_}, {saved_, 0}, kNoMerge, had_edits));
  }
  stack_.setClean();
  RenewDirty();
}

PlanDraft CPlanDocument::DraftOf(const view_plugin_protocol::GetPlanDetailResponse& detail) {
  PlanDraft draft = DraftFrom(detail);
  if (draft.pages.isEmpty()) {
    draft.pages.append(EmptyPage());  // to have something to edit
  }
  return draft;
}

void CPlanDocument::RenameGroup(const std::string& group_code, const std::string& name) {
  const QString code = StringToQString(group_code), text = StringToQString(name);
  bool changed = false;
  for (PlanDraft* draft : {&draft_, &saved_}) {
    if (draft->group_code == code && draft->group_name != text) {
      draft->group_name = text;
      changed = true;
    }
  }
  if (changed) {
    Q_EMIT SignalChanged(HeadChanged, -1);
  }
}

void CPlanDocument::Begin(PlanDraft draft, view_plugin_protocol::GetPlanDetailResponse origin) {
  stack_.clear();
  origin_ = std::move(origin);
  origin_.pages.clear();
  draft_ = saved_ = std::move(draft);
  current_page_ = 0;
  Q_EMIT SignalChanged(HeadChanged | PagesChanged | CurrentChanged, -1);
  RenewDirty();
}

void CPlanDocument::MarkSaved(int64_t revision, const std::string& plan_code) {
  MarkSaved(PlanDraft(draft_), revision, plan_code);
}

void CPlanDocument::MarkSaved(const PlanDraft& saved, int64_t revision, const std::string& plan_code) {
  if (!plan_code.empty()) {
    origin_.index_code = plan_code;
  }
  origin_.revision = revision;
  origin_.group_index_code = QStringToString(saved.group_code);
  saved_ = saved.WithoutHiddenWindows();
  if (!IsDirty()) {
    draft_ = saved_;
    stack_.setClean();
  }
  RenewDirty();
}

void CPlanDocument::GoOver(const view_plugin_protocol::GetPlanDetailResponse& detail) {
  saved_ = DraftOf(detail);
  origin_.revision = detail.revision;
  RenewDirty();
}

std::optional<int> CPlanDocument::ReplacedEdits() const {
  for (int place = 0; place < stack_.index(); ++place) {
    if (static_cast<const Step*>(stack_.command(place))->ReplacesEdits()) {
      return place;
    }
  }
  return std::nullopt;
}

bool CPlanDocument::IsDirty() const {
  return draft_.WithoutHiddenWindows() != saved_;
}

void CPlanDocument::SetCurrentPage(int page) {
  page = qBound(0, page, draft_.pages.size() - 1);
  if (page != current_page_) {
    Q_EMIT SignalLeavingPage();
    current_page_ = page;
    Q_EMIT SignalChanged(CurrentChanged, -1);
  }
}

void CPlanDocument::SetName(const QString& name) {
  PlanDraft after = draft_;
  after.name = name;
  Push(tr("Change of name"), std::move(after), {}, kMergeName);
}

void CPlanDocument::SetGroup(const QString& group_code, const QString& group_name, int family) {
  PlanDraft after = draft_;
  after.group_code = group_code;
  after.group_name = group_name;
  if (family >= 0) {
    after.family = family;
  }
  Push(tr("Change of group"), std::move(after));
}

void CPlanDocument::SetAutoRun(bool on) {
  PlanDraft after = draft_;
  after.auto_run = on;
  Push(on ? tr("Automatic run on") : tr("Automatic run off"), std::move(after));
}

void CPlanDocument::SetTimes(const QTime& begin, const QTime& end) {
  if (!begin.isValid() || !end.isValid()) {
    return;
  }
  PlanDraft after = draft_;
  after.begin = begin;
  after.end = end;
  Push(tr("Change of times"), std::move(after), {}, kMergeTimes);
}

void CPlanDocument::AddPage(int page) {
  Q_EMIT SignalLeavingPage();
  if (!HasRoomForPage()) {
    return;
  }
  page = qBound(-1, page, draft_.pages.size() - 1);
  PlanDraft after = draft_;
  after.pages.insert(page + 1, page < 0 ? EmptyPage() : NeighbourOf(draft_.pages[page]));
  PushPages(tr("New page"), std::move(after), page + 1);
}

void CPlanDocument::DuplicatePage(int page) {
  Q_EMIT SignalLeavingPage();
  if (!HasPage(page) || !HasRoomForPage()) {
    return;
  }
  PlanDraft after = draft_;
  after.pages.insert(page + 1, draft_.pages[page]);
  PushPages(tr("Duplicate page"), std::move(after), page + 1);
}

void CPlanDocument::RemovePage(int page) {
  Q_EMIT SignalLeavingPage();
  if (!HasPage(page)) {
    return;
  }
  if (draft_.pages.size() == 1) {
    ClearPage(page);
    return;
  }
  PlanDraft after = draft_;
  after.pages.removeAt(page);
  int current = qMin(current_page_, after.pages.size() - 1);
  if (page < current_page_) {
    current = current_page_ - 1;
  }
  PushPages(tr("Delete page"), std::move(after), current);
}

void CPlanDocument::MovePage(int from, int to) {
  Q_EMIT SignalLeavingPage();
  if (!HasPage(from) || !HasPage(to) || from == to) {
    return;
  }
  PlanDraft after = draft_;
  after.pages.move(from, to);
  PushPages(tr("Move page"), std::move(after), to);
  SetCurrentPage(to);  // also where the pages look alike and nothing has moved
}

void CPlanDocument::SetSplit(int page, int split_type) {
  if (IsKnownSplit(split_type)) {
    PushPage(tr("Change of split"), page, [split_type](DraftPage& changed) {
      changed.split_type = split_type;
      changed.seen_windows = qMax(changed.seen_windows, WindowsOfSplit(split_type));
    });
  }
}

void CPlanDocument::SetDwell(int page, int seconds) {
  seconds = qBound(kMinDwellSeconds, seconds, kMaxDwellSeconds);
  PushPage(
      tr("Change of dwell time"), page, [seconds](DraftPage& changed) { changed.dwell_seconds = seconds; },
      kMergeDwell + page);
}

bool CPlanDocument::PutCamera(int page, int window_no, const DraftCamera& camera) {
  if (!HasWindow(page, window_no) || camera.index_code.isEmpty()) {
    return false;
  }
  return PushPage(tr("Put camera into window"), page,
                  [window_no, &camera](DraftPage& changed) { PutIn(&changed, window_no, camera); });
}

PlanFilling CPlanDocument::Fill(int page, int first_window, const QVector<DraftCamera>& cameras) {
  if (!HasWindow(page, first_window)) {
    return {};
  }
  Q_EMIT SignalLeavingPage();  // new pages take its dwell time
  QVector<DraftCamera> known = cameras;
  known.erase(
      std::remove_if(known.begin(), known.end(), [](const auto& camera) { return camera.index_code.isEmpty(); }),
      known.end());
  PlanDraft after = draft_;
  const PlanFilling filling = FillPlan(&after, page, first_window, known);
  if (filling.placed > 0) {
    Push(tr("Fill windows"), std::move(after), {page, page});
  } else if (filling.left_out > 0) {
    Q_EMIT SignalRefused(filling.out_of_pages ? NoMorePagesText() : FullText());
  }
  return filling;
}

bool CPlanDocument::SwapWindows(int page, int window_no, int other_window_no) {
  if (!HasWindow(page, window_no) || !HasWindow(page, other_window_no)) {
    return false;
  }
  return PushPage(tr("Swap windows"), page,
                  [window_no, other_window_no](DraftPage& changed) { SwapIn(&changed, window_no, other_window_no); });
}

void CPlanDocument::ClearWindow(int page, int window_no) {
  if (draft_.Window(page, window_no)) {
    PushPage(tr("Clear window"), page, [window_no](DraftPage& changed) { ClearIn(&changed, window_no); });
  }
}

void CPlanDocument::ClearPage(int page) {
  if (!HasPage(page)) {
    return;
  }
  const bool some_stay = other_content_fixed_ && !OtherContentOf(draft_.pages[page]).isEmpty();
  PushPage(tr("Clear page"), page, [this](DraftPage& changed) {
    const auto stays = [this, &changed](const PlanWindow& window) {
      return other_content_fixed_ && IsOtherContent(window) && !changed.IsHidden(window.window_no);
    };
    const bool filled = std::any_of(changed.windows.begin(), changed.windows.end(),
                                    [&stays](const PlanWindow& window) { return IsFilled(window) && !stays(window); });
    if (filled) {
      changed.windows.remove_if([&stays](const PlanWindow& window) { return !stays(window); });
    }
  });
  if (some_stay) {
    Q_EMIT SignalRefused(OnlyCamerasText());
  }
}

QString CPlanDocument::OnlyCamerasText() {
  return tr("Only cameras can be changed here; other content stays where it is.");
}

QString CPlanDocument::FullText() {
  return tr("A plan holds at most %1 filled windows. Clear some first.").arg(kMaxFilledWindows);
}

QString CPlanDocument::NoMorePagesText() {
  return tr("A plan has at most %1 pages.").arg(kMaxPages);
}

void CPlanDocument::SetStream(int page, int window_no, int stream_type) {
  EditShown(tr("Change of stream"), page, window_no,
            [stream_type](PlanWindow& window) { window.stream_type = stream_type; });
}

void CPlanDocument::SetPreset(int page, int window_no, int preset_no) {
  EditShown(tr("Change of preset"), page, window_no, [preset_no](PlanWindow& window) { window.preset_no = preset_no; });
}

view_plugin_protocol::UpdatePlanRequest CPlanDocument::MakeUpdateRequest() const {
  view_plugin_protocol::UpdatePlanRequest request;
  request.plan_index_code = origin_.index_code;
  request.revision = origin_.revision;
  request.plan_name = QStringToString(draft_.name);
  request.index_type = draft_.family;
  request.parent_index_code = QStringToString(draft_.group_code);
  request.parent_name = QStringToString(draft_.group_name);
  request.auto_play = draft_.auto_run;
  request.begin_time = TimeText(draft_.begin, origin_.start_time);
  request.end_time = TimeText(draft_.end, origin_.end_time);
  request.pages = PagesToSave();
  request.thumbnail = origin_.thumbnail;
  return request;
}

// What was loaded and not touched goes back as it came, but a plan that is to run by itself needs a real time. The
// store takes times with seconds only.
std::string CPlanDocument::TimeText(const QTime& time, const std::string& loaded) const {
  if (!draft_.auto_run && !Parsed(loaded) && time == TimeFrom(loaded)) {
    return loaded;
  }
  return TextOf(time);
}

std::list<PlanPage> CPlanDocument::PagesToSave() const {
  if (had_no_pages_ && draft_.pages == QVector<DraftPage>{EmptyPage()}) {
    return {};
  }
  QVector<DraftPage> pages = draft_.WithoutHiddenWindows().pages;
  std::stable_sort(pages.begin(), pages.end(),
                   [](const DraftPage& one, const DraftPage& other) { return one.place < other.place; });
  return {pages.cbegin(), pages.cend()};
}

bool CPlanDocument::Push(const QString& text, PlanDraft after, PagesToShow pages, int merge_id) {
  const int filled = after.FilledWindows();
  if (filled > kMaxFilledWindows && filled > draft_.FilledWindows()) {
    Q_EMIT SignalRefused(FullText());
    return false;
  }
  if (after != draft_) {
    stack_.push(new Step(text, this, {draft_, pages.before}, {std::move(after), pages.after}, merge_id));
  }
  return true;
}

void CPlanDocument::PushPages(const QString& text, PlanDraft after, int current_page) {
  NumberPages(&after.pages);
  Push(text, std::move(after), {current_page_, current_page});
}

bool CPlanDocument::PushPage(const QString& text, int page, const std::function<void(DraftPage&)>& edit, int merge_id) {
  if (!HasPage(page)) {
    return false;
  }
  PlanDraft after = draft_;
  edit(after.pages[page]);
  const bool same_split = after.pages[page].split_type == draft_.pages[page].split_type;
  if (other_content_fixed_ && same_split && OtherContentOf(after.pages[page]) != OtherContentOf(draft_.pages[page])) {
    Q_EMIT SignalRefused(OnlyCamerasText());
    return false;
  }
  return Push(text, std::move(after), {page, page}, merge_id);
}

void CPlanDocument::EditShown(const QString& text, int page, int window_no,
                              const std::function<void(PlanWindow&)>& edit) {
  if (draft_.Window(page, window_no)) {
    PushPage(text, page, [window_no, &edit](DraftPage& changed) { edit(*ShownIn(&changed, window_no)); });
  }
}

void CPlanDocument::Take(const PlanDraft& draft, int current_page) {
  const PlanDraft before = std::exchange(draft_, draft);
  const int page_before = current_page_;
  if (current_page >= 0) {
    current_page_ = current_page;
  }
  current_page_ = qBound(0, current_page_, draft_.pages.size() - 1);
  const int page = OnlyDifference(before.pages, draft_.pages);
  int change = SameHead(before, draft_) ? NoChange : HeadChanged;
  if (page >= 0) {
    change |= PageChanged;
  } else if (before.pages != draft_.pages) {
    change |= PagesChanged;
  }
  if (current_page_ != page_before) {
    change |= CurrentChanged;
  }
  Q_EMIT SignalChanged(change, page);
  RenewDirty();
}

bool CPlanDocument::HasWindow(int page, int window_no) const {
  return HasPage(page) && window_no >= 1 && window_no <= WindowsOfSplit(draft_.pages[page].split_type);
}

bool CPlanDocument::HasRoomForPage() {
  if (draft_.pages.size() < kMaxPages) {
    return true;
  }
  Q_EMIT SignalRefused(NoMorePagesText());
  return false;
}

void CPlanDocument::RenewDirty() {
  const bool dirty = IsDirty();
  if (std::exchange(was_dirty_, dirty) != dirty) {
    Q_EMIT SignalDirtyChanged(dirty);
  }
}

}  // namespace TarnPlanView
