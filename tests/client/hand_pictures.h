#pragma once

#include <QColor>
#include <QHash>
#include <QStringList>
#include <QVector>
#include <memory>
#include <optional>

#include "pictures/picture_supply.h"

namespace TarnTest {

/// What the sources of one camera show; the same for all windows, and changed by hand.
struct HandCamera {
  TarnClient::PictureStatus status;
  QColor colour;  // invalid: no picture yet
  qint64 number = 1;
};

/// Pictures of one colour for each camera, and a record of what is done with the sources.
class CHandSupply : public TarnClient::IPictureSupply {
 public:
  using PlanWindow = view_plugin_protocol::PlanWindow;

  HandCamera& Camera(const QString& code) { return site_->cameras[code]; }
  void SetLive(const QString& code, const QColor& colour) {
    HandCamera& camera = Camera(code);
    camera.colour = colour;
    camera.status.state = TarnClient::PictureState::Live;
    camera.status.taken = QDateTime::currentDateTime();
    ++camera.number;
  }
  /// Codes of the cameras whose sources were started, in order.
  QStringList& Started() { return site_->started; }
  int Running() const { return site_->running; }
  const QStringList& Prepared() const { return prepared_; }
  /// How far apart the key frames of this camera are.
  void SetKeyFrameMs(const QString& code, qint64 ms) { key_frame_ms_[code] = ms; }

  std::unique_ptr<TarnClient::IPictureSource> Open(const PlanWindow& window) override {
    return std::make_unique<CSource>(site_, QString::fromStdString(window.resource_code));
  }
  void Prepare(const void*, const QVector<PlanWindow>& next) override {
    prepared_.clear();
    for (const PlanWindow& window : next) {
      prepared_ << QString::fromStdString(window.resource_code);
    }
  }
  std::optional<qint64> KeyFrameMs(const PlanWindow& window) const override {
    const auto found = key_frame_ms_.find(QString::fromStdString(window.resource_code));
    return found == key_frame_ms_.end() ? std::nullopt : std::optional<qint64>(*found);
  }

 private:
  struct Site {
    QHash<QString, HandCamera> cameras;
    QStringList started;
    int running = 0;
  };

  class CSource : public TarnClient::IPictureSource {
   public:
    CSource(std::shared_ptr<Site> site, const QString& code) : site_(std::move(site)), code_(code) {}
    ~CSource() override { Stop(); }
    void Start() override {
      site_->started << code_;
      site_->running += static_cast<int>(!std::exchange(runs_, true));
    }
    void Stop() override { site_->running -= static_cast<int>(std::exchange(runs_, false)); }
    TarnClient::PictureStatus Status() const override { return site_->cameras[code_].status; }
    QImage LatestPicture(const QSize&) override {
      if (!site_->cameras[code_].colour.isValid()) {
        return QImage();
      }
      QImage picture(32, 24, QImage::Format_RGB32);
      picture.fill(site_->cameras[code_].colour);
      return picture;
    }
    qint64 LatestNumber() const override { return site_->cameras[code_].number; }

   private:
    const std::shared_ptr<Site> site_;
    const QString code_;
    bool runs_ = false;
  };

  const std::shared_ptr<Site> site_ = std::make_shared<Site>();
  QStringList prepared_;
  QHash<QString, qint64> key_frame_ms_;
};

}  // namespace TarnTest
