#include "watched_pictures.h"

#include <QDateTime>

#include "block_code.h"

namespace {

using TarnClient::IPictureSource;

class WatchedSource : public IPictureSource {
 public:
  WatchedSource(std::unique_ptr<IPictureSource> target, std::shared_ptr<WatchedPictures::Notes> notes)
      : target_(std::move(target)), notes_(std::move(notes)) {}

  void Start() override { target_->Start(); }
  void Stop() override { target_->Stop(); }
  TarnClient::PictureStatus Status() const override { return target_->Status(); }
  qint64 LatestNumber() const override { return target_->LatestNumber(); }
  void SetWeight(TarnClient::PictureWeight weight) override { target_->SetWeight(weight); }

  QImage LatestPicture(const QSize& wanted) override {
    const QImage picture = target_->LatestPicture(wanted);
    if (notes_->reads_blocks) {
      Note(picture);
    }
    return picture;
  }

 private:
  void Note(const QImage& picture) {
    if (picture.isNull()) {
      ++notes_->without_picture;
      return;
    }
    if (target_->LatestNumber() == painted_) {
      return;
    }
    painted_ = target_->LatestNumber();
    if (const auto block = TarnDemo::ReadBlock(picture)) {
      notes_->ages_ms.append(TarnDemo::AgeMs(*block, static_cast<double>(QDateTime::currentMSecsSinceEpoch())));
    }
  }

  const std::unique_ptr<IPictureSource> target_;
  const std::shared_ptr<WatchedPictures::Notes> notes_;
  qint64 painted_ = -1;
};

}  // namespace

std::unique_ptr<IPictureSource> WatchedPictures::Open(const view_plugin_protocol::PlanWindow& window) {
  return std::make_unique<WatchedSource>(target_->Open(window), notes_);
}
