#include "frontends/qt/pictures.h"

#include <QApplication>
#include <QBuffer>
#include <QFile>
#include <QHash>
#include <QIconEngine>
#include <QImageReader>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <algorithm>
#include <utility>
#include <vector>

#include "frontends/common/icon_images.h"
#include "frontends/qt/text.h"

namespace tarvo::qt {
namespace {

constexpr int kOwnSizes[] = {16, 24, 32, 48, 64, 128, 256, 512};

QString OwnFile(const QString& name, int size) {
  return QString(":/icons/%1-%2.png").arg(name).arg(size);
}

QImage ReadOwn(const QString& name, int side) {
  QString best;
  for (const int size : kOwnSizes) {
    const QString file = OwnFile(name, size);
    if (!QFile::exists(file)) continue;
    best = file;
    if (size >= side) break;
  }
  return QImage(best);
}

QImage ReadFile(const std::string& bytes, int side) {
  QByteArray raw = QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
  QBuffer buffer(&raw);
  buffer.open(QIODevice::ReadOnly);
  if (raw.startsWith("BM")) return QImageReader(&buffer, "bmp").read();
  QImageReader reader(&buffer, "ico");
  for (const IconImage& entry : ImagesBySuitability(bytes, side)) {
    if (!reader.jumpToImage(entry.number)) continue;
    const QImage image = reader.read();
    if (!image.isNull()) return image;
  }
  return {};
}

class PictureEngine : public QIconEngine {
 public:
  explicit PictureEngine(PicturePointer picture) : picture_(std::move(picture)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    const qreal scale = painter->device()->devicePixelRatioF();
    painter->drawPixmap(rect, Drawn(rect.size() * scale, scale, mode));
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
    return Drawn(size, 1, mode);
  }
  QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal scale) override {
    return Drawn(size, scale, mode);
  }
  QSize actualSize(const QSize& size, QIcon::Mode, QIcon::State) override { return size; }
  bool isNull() override { return false; }
  QString key() const override { return "picture"; }
  QIconEngine* clone() const override { return new PictureEngine(picture_); }

 private:
  struct Cached {
    QSize size;
    qreal scale;
    QIcon::Mode mode;
    QPixmap pixmap;
  };

  QPixmap Drawn(const QSize& size, qreal scale, QIcon::Mode mode);
  QPixmap Decode(const QSize& size, qreal scale) const;

  PicturePointer picture_;
  std::vector<Cached> cache_;  // few: one for each size on a screen
};

QPixmap PictureEngine::Drawn(const QSize& size, qreal scale, QIcon::Mode mode) {
  if (mode != QIcon::Disabled) mode = QIcon::Normal;
  for (const Cached& cached : cache_) {
    if (cached.size == size && cached.scale == scale && cached.mode == mode) return cached.pixmap;
  }
  QPixmap pixmap;
  if (mode == QIcon::Disabled) {
    QStyleOption option;
    option.palette = QApplication::palette();
    pixmap = QApplication::style()->generatedIconPixmap(mode, Drawn(size, scale, QIcon::Normal),
                                                        &option);
  } else {
    pixmap = Decode(size, scale);
  }
  cache_.push_back({size, scale, mode, pixmap});
  return pixmap;
}

// In a pixmap of that size, in the middle.
QPixmap PictureEngine::Decode(const QSize& size, qreal scale) const {
  QPixmap pixmap(size);
  pixmap.fill(Qt::transparent);
  if (!picture_ || size.isEmpty()) return pixmap;
  const int side = std::max(size.width(), size.height());
  const QImage image = picture_->icon.empty() ? ReadFile(picture_->bytes, side)
                                              : ReadOwn(ToText(picture_->icon), side);
  if (image.isNull()) return pixmap;
  const qreal fit = std::min(static_cast<qreal>(size.width()) / image.width(),
                             static_cast<qreal>(size.height()) / image.height());
  const QSize drawn = (QSizeF(image.size()) * std::min(fit, scale)).toSize().expandedTo({1, 1});
  const QImage scaled = drawn == image.size()
                            ? image
                            : image.scaled(drawn, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  QPainter(&pixmap).drawImage((size.width() - drawn.width()) / 2,
                              (size.height() - drawn.height()) / 2, scaled);
  return pixmap;
}

}  // namespace

QIcon IconOf(PicturePointer picture) { return QIcon(new PictureEngine(std::move(picture))); }

QIcon OwnQIcon(std::string_view name) { return IconOf(OwnIcon(name)); }

QIcon WindowIcon() {
  QIcon icon;
  for (const int size : {16, 32, 48, 64}) icon.addFile(OwnFile("tarvo", size), QSize(size, size));
  return icon;
}

}  // namespace tarvo::qt
