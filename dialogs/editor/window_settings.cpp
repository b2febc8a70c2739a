#include "window_settings.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QWheelEvent>
#include <algorithm>

#include "MarUIControl/label.h"
#include "MarUIControl/string_conversion.h"
#include "plan_document.h"
#include "plan_rules/stream_kinds.h"
#include "view_config_manager.h"
#include "why_off.h"
#include "window_text.h"

namespace TarnPlanView {

using view_plugin_protocol::PlanWindow;

namespace {

constexpr int kNoPreset = 0;
constexpr int kStreamWidth = 140;  // the longest word for a stream; the rest of the row is the name's
constexpr int kPresetWidth = 132;
constexpr int kRest = 200;  // ms

bool Has(const QVector<QPair<int, QString>>& choices, int value) {
  return std::any_of(choices.begin(), choices.end(), [value](const auto& choice) { return choice.first == value; });
}

}  // namespace

CWindowSettings::CWindowSettings(CPlanDocument* document, const CWindowText* text, QWidget* parent)
    : QWidget(parent), document_(document), text_(text), title_(new MarUIControl::CLabel(this)) {
  title_->setObjectName(QStringLiteral("window_title"));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(8);
  row->addWidget(title_, 1);
  stream_ = MakeBox("stream_box", tr("Stream"), kStreamWidth);
  preset_ = MakeBox("preset_box", tr("Preset"), kPresetWidth);
  row->addWidget(stream_);
  row->addWidget(preset_);
  connect(stream_, QOverload<int>::of(&QComboBox::activated), this, [this](int place) {
    document_->SetStream(document_->CurrentPage(), window_no_, stream_->itemData(place).toInt());
  });
  connect(preset_, QOverload<int>::of(&QComboBox::activated), this, [this](int place) {
    document_->SetPreset(document_->CurrentPage(), window_no_, preset_->itemData(place).toInt());
  });
  rest_.setSingleShot(true);
  rest_.setInterval(kRest);
  connect(&rest_, &QTimer::timeout, this, [this] { abilities_.Ask(asked_); });
  ConnectAbilities();
  connect(document_, &CPlanDocument::SignalChanged, this, &CWindowSettings::Renew);
  Renew();
}

QComboBox* CWindowSettings::MakeBox(const char* name, const QString& label, int width) {
  auto* box = new QComboBox(this);
  box->setObjectName(QString::fromLatin1(name));
  box->setAccessibleName(label);
  box->setToolTip(label);
  box->setFocusPolicy(Qt::StrongFocus);
  box->setPlaceholderText(label);
  box->setFixedWidth(width);
  box->installEventFilter(this);
  return box;
}

void CWindowSettings::ConnectAbilities() {
  connect(&abilities_, &CCameraAbilities::SignalStreamsKnown, this, &CWindowSettings::OnAbility);
  connect(&abilities_, &CCameraAbilities::SignalPresetsKnown, this, &CWindowSettings::OnAbility);
  connect(&abilities_, &CCameraAbilities::SignalStreamsFailed, this, &CWindowSettings::OnFailure);
  connect(&abilities_, &CCameraAbilities::SignalPresetsFailed, this, &CWindowSettings::OnFailure);
}

const PlanWindow* CWindowSettings::Window() const {
  return document_->Draft().Window(document_->CurrentPage(), window_no_);
}

void CWindowSettings::ShowWindow(int window_no) {
  window_no_ = window_no;
  Renew();
}

void CWindowSettings::Renew() {
  const PlanWindow* window = Window();
  QString content = text_->NameAndState(window);
  if (content.isEmpty()) {
    content = tr("empty");
  }
  title_->setText(tr("Window %1").arg(window_no_) + QStringLiteral(": ") + content);
  if (IsCamera(window)) {
    Offer(stream_, Streams(*window), window->stream_type);
    Offer(preset_, Presets(*window), window->preset_no);
  } else {
    Offer(stream_, Choices(), 0);
    Offer(preset_, Choices(), 0);
  }
  QString code;  // none of a camera that has gone: there is nothing to ask for
  if (text_->IsOnSite(window)) {
    code = MarUIControl::StringToQString(window->resource_code);
  }
  if (asked_ != code) {
    asked_ = code;
    AskSoon();
  }
}

void CWindowSettings::AskSoon() {
  failed_.clear();
  if (asked_.isEmpty()) {
    rest_.stop();
  } else if (isVisible()) {
    rest_.start();
  }
}

// Somebody may have changed the cameras since.
void CWindowSettings::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  abilities_.Doubt();
  AskSoon();
}

CWindowSettings::Choices CWindowSettings::Streams(const PlanWindow& window) const {
  Choices choices;
  const bool smooth = CViewConfigManager::Instance().SupportSmoothStream();
  if (const auto* known = abilities_.Streams(MarUIControl::StringToQString(window.resource_code))) {
    for (const int stream : *known) {
      if (stream != view_plugin_protocol::kSmoothStream || smooth) {
        choices.append({stream, CWindowText::Stream(stream)});
      }
    }
  }
  if (!Has(choices, window.stream_type)) {
    choices.append({window.stream_type, CWindowText::Stream(window.stream_type)});
  }
  return choices;
}

CWindowSettings::Choices CWindowSettings::Presets(const PlanWindow& window) const {
  Choices choices{{kNoPreset, tr("No preset")}};
  if (const auto* known = abilities_.Presets(MarUIControl::StringToQString(window.resource_code))) {
    for (const auto& preset : *known) {
      choices.append({preset.number, preset.name.isEmpty() ? tr("Preset %1").arg(preset.number) : preset.name});
    }
  }
  if (!Has(choices, window.preset_no)) {
    choices.append({window.preset_no, tr("Preset %1").arg(window.preset_no)});
  }
  return choices;
}

// Left alone while nothing changes: the list may be open.
void CWindowSettings::Offer(QComboBox* box, const Choices& choices, int current) {
  Choices shown;
  for (int place = 0; place < box->count(); ++place) {
    shown.append({box->itemData(place).toInt(), box->itemText(place)});
  }
  if (shown != choices) {
    box->clear();
    for (const auto& choice : choices) {
      box->addItem(choice.second, choice.first);
    }
  }
  box->setCurrentIndex(box->findData(current));
  QString no_choice;
  if (choices.size() <= 1) {
    no_choice = tr("The camera offers nothing else.");
  }
  SetWhyOff(box, no_choice);
}

void CWindowSettings::OnAbility(const QString& camera_code) {
  if (camera_code == asked_) {
    Renew();
  }
}

void CWindowSettings::OnFailure(const QString& camera_code, const QString& error) {
  if (camera_code == asked_ && camera_code != failed_) {  // one message for streams and presets
    failed_ = camera_code;
    Q_EMIT SignalRefused(error);
    Q_EMIT SignalCameraFailed(camera_code);
  }
}

// A wheel that only passes over must not change the plan.
bool CWindowSettings::eventFilter(QObject* watched, QEvent* event) {
  const auto* box = qobject_cast<QWidget*>(watched);
  if (event->type() == QEvent::Wheel && box && !box->hasFocus()) {
    event->ignore();
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace TarnPlanView
