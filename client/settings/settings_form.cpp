#include "settings/settings_form.h"

#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QTranslator>
#include <QVBoxLayout>

#include "MarUIControl/spin_box.h"
#include "MarUIControl/switch_control.h"
#include "app/client_options.h"
#include "composing/snapshot.h"
#include "settings/folder_field.h"

namespace TarnClient {

namespace {

// A catalogue's translation of this is its language's own name.
constexpr char kOwnName[] = QT_TRANSLATE_NOOP("TarnClient::CSettingsForm", "English");

QString OwnNameOf(const QString& language) {
  QTranslator catalogue;
  if (!catalogue.load(QStringLiteral(":/TarnClient/translations/tarn_%1.qm").arg(language))) {
    return language;
  }
  return catalogue.translate("TarnClient::CSettingsForm", kOwnName);
}

void Select(QComboBox* box, const QVariant& value) {
  box->setCurrentIndex(qMax(0, box->findData(value)));
}

}  // namespace

CSettingsForm::CSettingsForm(QWidget* default_view, QWidget* parent) : QWidget(parent), default_view_(default_view) {
  MakeLanguages();
  MakeSkins();
  MakeStart();
  MakeSeconds();
  asks_ = new MarUIControl::CSwitchControl(this);
  asks_->setObjectName(QStringLiteral("settings_asks"));
  asks_->setAccessibleName(tr("Ask before closing while something plays"));
  snapshots_ = new CFolderField(tr("Snapshots are kept in"), DefaultSnapshotFolder(), this);
  snapshots_->setObjectName(QStringLiteral("settings_snapshots"));
  FollowFields();
  auto* looks = new QHBoxLayout;
  looks->setSpacing(16);
  looks->addLayout(Column(tr("Language"), language_), 1);
  looks->addLayout(Column(tr("Skin"), skin_), 1);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(8);
  layout->addLayout(looks);
  layout->addWidget(Note(tr("The language changes with the next start.")));
  layout->addSpacing(8);
  layout->addLayout(Column(tr("At the start, open"), start_));
  layout->addWidget(default_view_);
  layout->addWidget(Note(tr("The plans of a group play in turn. A timed plan goes first.")));
  layout->addSpacing(8);
  layout->addLayout(Column(tr("In a group cycle, each plan stays for"), seconds_));
  layout->addSpacing(8);
  layout->addLayout(Column(tr("Snapshots are kept in"), snapshots_));
  layout->addSpacing(8);
  layout->addLayout(SwitchRow());
  layout->addWidget(Note(tr("Deleting, and changes that are not saved, always ask.")));
  setFocusProxy(language_);
  QWidget::setTabOrder(language_, skin_);
  QWidget::setTabOrder(skin_, start_);
  QWidget::setTabOrder(start_, default_view_);
  QWidget::setTabOrder(default_view_, seconds_);
  QWidget::setTabOrder(seconds_, snapshots_);
  QWidget::setTabOrder(snapshots_->findChildren<QWidget*>().last(), asks_);
}

// Once they are filled.
void CSettingsForm::FollowFields() {
  for (QComboBox* box : {language_, skin_, start_}) {
    connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &CSettingsForm::OnChanged);
  }
  connect(seconds_, QOverload<int>::of(&QSpinBox::valueChanged), this, &CSettingsForm::OnChanged);
  connect(asks_, &QAbstractButton::toggled, this, &CSettingsForm::OnChanged);
  connect(snapshots_, &CFolderField::SignalChanged, this, &CSettingsForm::OnChanged);
}

QBoxLayout* CSettingsForm::Column(const QString& label, QWidget* field) {
  auto* text = new QLabel(label, this);
  text->setObjectName(QStringLiteral("settings_label"));
  text->setBuddy(field);
  auto* column = new QVBoxLayout;
  column->setSpacing(4);
  column->addWidget(text);
  column->addWidget(field);
  return column;
}

QWidget* CSettingsForm::Note(const QString& text) {
  auto* note = new QLabel(text, this);
  note->setObjectName(QStringLiteral("settings_note"));
  note->setWordWrap(true);
  return note;
}

QBoxLayout* CSettingsForm::SwitchRow() {
  auto* text = new QLabel(asks_->accessibleName(), this);
  text->setObjectName(QStringLiteral("settings_label"));
  text->setWordWrap(true);
  text->setBuddy(asks_);
  auto* row = new QHBoxLayout;
  row->addWidget(text, 1);
  row->addWidget(asks_);
  return row;
}

QComboBox* CSettingsForm::MakeBox(const char* name, const QString& label) {
  auto* box = new QComboBox(this);
  box->setObjectName(QString::fromLatin1(name));
  box->setAccessibleName(label);
  box->setFocusPolicy(Qt::StrongFocus);
  box->installEventFilter(this);
  return box;
}

void CSettingsForm::MakeLanguages() {
  language_ = MakeBox("settings_language", tr("Language"));
  language_->addItem(tr("As the system (%1)").arg(OwnNameOf(ClientOptions::SystemLanguage())), QString());
  for (const QString& language : ClientOptions::Languages()) {
    language_->addItem(OwnNameOf(language), language);
  }
}

void CSettingsForm::MakeSkins() {
  skin_ = MakeBox("settings_skin", tr("Skin"));
  skin_->addItem(tr("Dark"), QStringLiteral("redblack"));
  skin_->addItem(tr("White"), QStringLiteral("white"));
}

void CSettingsForm::MakeStart() {
  start_ = MakeBox("settings_start", tr("At the start, open"));
  start_->addItem(tr("The default view"), static_cast<int>(OpensFirst::DefaultView));
  start_->addItem(tr("What was played last"), static_cast<int>(OpensFirst::LastPlayed));
  start_->addItem(tr("Nothing"), static_cast<int>(OpensFirst::Nothing));
}

void CSettingsForm::MakeSeconds() {
  seconds_ = new MarUIControl::CSpinBox(this);
  seconds_->setObjectName(QStringLiteral("settings_seconds"));
  seconds_->setAccessibleName(tr("Seconds that each plan of a group cycle stays"));
  seconds_->setRange(ChosenSettings::kLeastSecondsPerPlan, ChosenSettings::kMostSecondsPerPlan);
  seconds_->setToolTip(tr("%1 to %2 seconds; longer when the pages of a plan take longer")
                           .arg(ChosenSettings::kLeastSecondsPerPlan)
                           .arg(ChosenSettings::kMostSecondsPerPlan));
  seconds_->setSuffix(tr(" s"));
}

void CSettingsForm::Show(const ChosenSettings& chosen) {
  shown_ = chosen;
  Select(language_, chosen.language);
  Select(skin_, chosen.skin);
  Select(start_, static_cast<int>(chosen.opens_first));
  seconds_->setValue(chosen.seconds_per_plan);
  asks_->setToggle(chosen.asks_before_closing);
  snapshots_->SetFolder(chosen.snapshot_folder);
  OnChanged();
}

ChosenSettings CSettingsForm::Entered() const {
  ChosenSettings entered = shown_;
  if (language_->currentIndex() != qMax(0, language_->findData(shown_.language))) {
    entered.language = language_->currentData().toString();
  }
  if (skin_->currentIndex() != qMax(0, skin_->findData(shown_.skin))) {
    entered.skin = skin_->currentData().toString();
  }
  entered.opens_first = static_cast<OpensFirst>(start_->currentData().toInt());
  entered.seconds_per_plan = seconds_->value();
  entered.asks_before_closing = asks_->isToggled();
  entered.snapshot_folder = snapshots_->Folder();
  return entered;
}

void CSettingsForm::OnChanged() {
  default_view_->setEnabled(Entered().opens_first == OpensFirst::DefaultView);
  Q_EMIT SignalChanged();
}

// A wheel that only passes over changes nothing.
bool CSettingsForm::eventFilter(QObject* watched, QEvent* event) {
  const auto* field = qobject_cast<QWidget*>(watched);
  if (event->type() == QEvent::Wheel && field && !field->hasFocus()) {
    event->ignore();
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace TarnClient
