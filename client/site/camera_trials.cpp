#include "site/camera_trials.h"

#include <QElapsedTimer>
#include <QTimer>
#include <optional>
#include <utility>

#include "wall/window_truth.h"

namespace TarnClient {

namespace {

constexpr int kLookMs = 100;

/// One address that is being tried; goes with who wants to know.
class CTrial : public QObject {
 public:
  CTrial(std::unique_ptr<IPictureSource> source, int patience_ms, std::function<void(const CameraTrialResult&)> then,
         QObject* context)
      : QObject(context), source_(std::move(source)), patience_ms_(patience_ms), then_(std::move(then)) {
    since_.start();
    source_->Start();
    connect(&look_, &QTimer::timeout, this, &CTrial::Look);
    look_.start(kLookMs);
  }
  ~CTrial() override { source_->Stop(); }

 private:
  void Look() {
    source_->LatestPicture(QSize(64, 48));  // a source that no one looks at may be left without pictures
    const std::optional<CameraTrialResult> result = Result(source_->Status());
    if (!result) {
      return;
    }
    look_.stop();
    deleteLater();
    then_(*result);
  }

  std::optional<CameraTrialResult> Result(const PictureStatus& status) const {
    if (status.state == PictureState::Live) {
      return CameraTrialResult{true,
                               CCameraTrials::tr("Live, %1 x %2").arg(status.size.width()).arg(status.size.height())};
    }
    if (status.loss != PictureLoss::None) {
      return CameraTrialResult{false, TextOf(status.loss)};
    }
    if (since_.hasExpired(patience_ms_)) {
      return CameraTrialResult{false, TextOf(PictureLoss::NoAnswer)};
    }
    return std::nullopt;
  }

  const std::unique_ptr<IPictureSource> source_;
  const int patience_ms_;
  const std::function<void(const CameraTrialResult&)> then_;
  QElapsedTimer since_;
  QTimer look_{this};
};

}  // namespace

CCameraTrials::CCameraTrials(OpenTrial open, QObject* parent) : QObject(parent), open_(std::move(open)) {}

void CCameraTrials::Try(const CameraTrial& trial, QObject* context,
                        std::function<void(const CameraTrialResult&)> then) {
  new CTrial(open_(trial), patience_ms_, std::move(then), context);
}

}  // namespace TarnClient
