#include "plan_preview.h"

#include <QBuffer>
#include <QImageReader>
#include <QLabel>
#include <QModelIndex>
#include <QVBoxLayout>
#include <cmath>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"
#include "host_calls/ask.h"
#include "page_picture.h"
#include "plan_rows.h"
#include "plan_rules/plan_sign.h"
#include "plan_rules/thumbnail_limits.h"
#include "plan_view_tree.h"
#include "view_config_manager.h"

namespace TarnPlanView {

using namespace view_plugin_protocol;

namespace {

constexpr int kRestMs = 500;
constexpr int kPicturesKept = 64;
constexpr int kDistance = 8;
constexpr QSize kPictureSize(240, 135);

struct FetchedPlan {
  bool ok = false;
  GetPlanDetailResponse plan;
  QImage thumbnail;  // in the preview's size; null when there is none that can be shown
};

// Larger ones than a plan may have are not decoded: who knows at what price.
QImage ScaledThumbnail(const std::string& png, const QSize& room) {
  if (!IsPng(png) || png.size() > static_cast<size_t>(kMostThumbnailBytes)) {
    return QImage();
  }
  QByteArray bytes = QByteArray::fromRawData(png.data(), static_cast<int>(png.size()));
  QBuffer buffer(&bytes);
  QImageReader reader(&buffer, "png");
  QImage picture;
  if (!IsThumbnailSize(reader.size()) || !reader.read(&picture)) {
    return QImage();
  }
  return picture.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

}  // namespace

CPlanPreview::CPlanPreview(CPlanViewTree* tree)
    : QFrame(tree),
      tree_(tree),
      picture_(new QLabel(this)),
      name_(new QLabel(this)),
      sign_(new QLabel(this)),
      seen_(kPicturesKept) {
  setObjectName(QStringLiteral("plan_preview"));
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFocusPolicy(Qt::NoFocus);
  name_->setObjectName(QStringLiteral("plan_preview_name"));
  name_->setTextFormat(Qt::PlainText);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(6, 6, 6, 6);
  layout->setSpacing(4);
  layout->addWidget(picture_);
  layout->addWidget(name_);
  sign_->setObjectName(QStringLiteral("plan_preview_sign"));
  layout->addWidget(sign_);
  rest_.setSingleShot(true);
  rest_.setInterval(kRestMs);
  connect(&rest_, &QTimer::timeout, this, &CPlanPreview::Fetch);
  connect(tree, &CPlanViewTree::SignalPlanViewMouseMove, this, &CPlanPreview::OnMouseMove);
  connect(tree, &CPlanViewTree::SignalHideThumbnail, this, &CPlanPreview::Dismiss);
  hide();
}

void CPlanPreview::Forget() {
  seen_.clear();
}

void CPlanPreview::Dismiss() {
  newest_.Drop();
  rest_.stop();
  code_.clear();
  hide();
}

void CPlanPreview::OnMouseMove(const QModelIndex& index) {
  const QString code = IsPlanRow(index) ? CodeOfRow(index) : QString();
  if (!code.isEmpty() && code == code_) {
    return;
  }
  Dismiss();
  if (code.isEmpty()) {
    return;
  }
  code_ = code;
  title_ = index.data().toString();
  row_ = tree_->visualRect(index);
  rest_.start();
}

void CPlanPreview::Fetch() {
  if (const Seen* known = seen_.object(code_)) {
    Show(*known);
    return;
  }
  GetPlanDetailRequest request;
  request.plan_index_code = MarUIControl::QStringToString(code_);
  const auto fetch = [request, pixels = Pixels()] {
    FetchedPlan fetched;
    fetched.ok = LyraPluginManager::CViewBusinessInterfaceMgr::Instance().GetPlanDetail(request, fetched.plan);
    fetched.thumbnail = ScaledThumbnail(fetched.plan.thumbnail, pixels);
    return fetched;
  };
  // A failure is not worth a message: it was the mouse that asked for the picture.
  HostCalls::Ask(fetch).Replacing(newest_).Then(this, [this, code = code_](const FetchedPlan& fetched) {
    if (fetched.ok) {
      OnFetched(code, fetched.plan, fetched.thumbnail);
    }
  });
}

void CPlanPreview::OnFetched(const QString& code, const GetPlanDetailResponse& plan, const QImage& thumbnail) {
  QPixmap picture = QPixmap::fromImage(thumbnail);
  if (picture.isNull()) {
    picture = Drawn(plan);
  }
  picture.setDevicePixelRatio(devicePixelRatioF());
  if (picture.isNull()) {
    return;
  }
  const bool timed_play = CViewConfigManager::Instance().IsSupportTimedPlay();
  const Seen seen{picture, TextOf(SignOf(plan, timed_play))};
  seen_.insert(code, new Seen(seen));
  Show(seen);
}

QSize CPlanPreview::Pixels() const {
  const qreal ratio = devicePixelRatioF();
  return QSize(static_cast<int>(std::ceil(kPictureSize.width() * ratio)),
               static_cast<int>(std::ceil(kPictureSize.height() * ratio)));
}

QPixmap CPlanPreview::Drawn(const GetPlanDetailResponse& plan) const {
  if (plan.pages.empty()) {
    return QPixmap();
  }
  return QPixmap::fromImage(PagePicture(plan.pages.front(), kPictureSize, devicePixelRatioF()));
}

void CPlanPreview::Show(const Seen& seen) {
  QWidget* window = tree_ ? tree_->window() : nullptr;
  if (!window || !tree_->isVisible()) {
    return;
  }
  if (parentWidget() != window) {
    setParent(window);
  }
  picture_->setPixmap(seen.picture);
  picture_->setAlignment(Qt::AlignCenter);
  picture_->setFixedSize(kPictureSize);
  name_->setText(name_->fontMetrics().elidedText(title_, Qt::ElideRight, kPictureSize.width()));
  sign_->setText(sign_->fontMetrics().elidedText(seen.sign, Qt::ElideRight, kPictureSize.width()));
  sign_->setVisible(!seen.sign.isEmpty());
  ensurePolished();
  adjustSize();
  Place();
  raise();
  show();
}

// Beside the tree where there is room, else over its far end; never beyond the window.
void CPlanPreview::Place() {
  const QWidget* window = parentWidget();
  const QPoint row = tree_->viewport()->mapTo(window, row_.topLeft());
  const int beside = tree_->mapTo(window, QPoint(tree_->width(), 0)).x() + kDistance;
  const int left = qMax(0, qMin(beside, window->width() - width() - kDistance));
  const int top = qMax(0, qMin(row.y(), window->height() - height() - kDistance));
  move(left, top);
}

}  // namespace TarnPlanView
