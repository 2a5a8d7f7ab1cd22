#include "artwork/symbols.h"

#include <QCache>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QIconEngine>
#include <QMutex>
#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>
#include <cmath>
#include <deque>
#include <vector>

// The resource lies in a static library, where nothing else refers to it.
static void registerIcons()
{
    Q_INIT_RESOURCE(symbols);
}

namespace Symbols {

namespace {

// The packages leave different margins: one draws to the edge of its box, the other keeps about a fourteenth
// free. Both are brought to this share of the square.
constexpr double kOpticalSize = 48.0 / 56.0;
// Nothing on a screen needs a larger one, and it bounds what a cache entry can hold.
constexpr int kLargestSide = 4096;

QString folder()
{
    [[maybe_unused]] static const bool registered = (registerIcons(), true);
    return ":/symbols";
}

QString resource(const QString &name)
{
    return folder() + '/' + name + ".svg";
}

QByteArray source(const QString &name)
{
    QFile file(resource(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Where the whole viewBox lies when the symbol is drawn into a square of `side`.
QRectF boxIn(double side, const QRectF &viewBox)
{
    const double scale = viewBox.width() < 50 ? kOpticalSize : 1; // boxes of 16 are filled to their edges
    const double box = side * scale;
    return {(side - box) / 2, (side - box) / 2, box, box};
}

// The symbol's shape, black on nothing; `target` may reach beyond the picture.
QImage shape(const QString &name, const QSize &pixels, const QRectF &square)
{
    QSvgRenderer renderer(source(name));
    if (!renderer.isValid())
        return {};
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF box = boxIn(1, renderer.viewBoxF());
    renderer.render(&painter,
                    QRectF(square.x() + box.x() * square.width(), square.y() + box.y() * square.height(),
                           box.width() * square.width(), box.height() * square.height()));
    return image;
}

void tint(QImage &image, const QColor &color)
{
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
}

// What the shape encloses but doesn't cover, in full strength: reached from no edge through any pixel that is
// not wholly covered.
QImage enclosed(const QImage &shape)
{
    const int width = shape.width();
    const int height = shape.height();
    QImage result(shape.size(), QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    const auto open = [&](int x, int y) {
        return qAlpha(reinterpret_cast<const QRgb *>(shape.constScanLine(y))[x]) < 255;
    };
    std::vector<char> outside(static_cast<size_t>(width) * height, 0);
    std::deque<std::pair<int, int>> queue;
    const auto visit = [&](int x, int y) {
        if (x < 0 || y < 0 || x >= width || y >= height || outside[static_cast<size_t>(y) * width + x] ||
            !open(x, y))
            return;
        outside[static_cast<size_t>(y) * width + x] = 1;
        queue.emplace_back(x, y);
    };
    for (int x = 0; x < width; ++x) {
        visit(x, 0);
        visit(x, height - 1);
    }
    for (int y = 0; y < height; ++y) {
        visit(0, y);
        visit(width - 1, y);
    }
    while (!queue.empty()) {
        const auto [x, y] = queue.front();
        queue.pop_front();
        visit(x - 1, y);
        visit(x + 1, y);
        visit(x, y - 1);
        visit(x, y + 1);
    }
    for (int y = 0; y < height; ++y) {
        auto *line = reinterpret_cast<QRgb *>(result.scanLine(y));
        for (int x = 0; x < width; ++x) {
            if (open(x, y) && !outside[static_cast<size_t>(y) * width + x])
                line[x] = qRgba(0, 0, 0, 255);
        }
    }
    return result;
}

// A badge is a filled ground with its figure cut out. In other filled symbols a gap is just a gap: the
// shackle of a lock stays open.
bool isBadge(const QString &name)
{
    for (const char *ground :
         {"circle.fill", "triangle.fill", "square.fill", "seal.fill", "rectangle.fill"}) {
        if (name.endsWith(QLatin1String(ground)))
            return true;
    }
    return false;
}

class Cache {
public:
    template <typename Make>
    QImage image(const QString &key, Make make)
    {
        {
            const QMutexLocker lock(&m_mutex);
            if (const QImage *known = m_images.object(key))
                return *known;
        }
        const QImage made = make();
        const QMutexLocker lock(&m_mutex);
        m_images.insert(key, new QImage(made),
                        static_cast<qsizetype>(std::max<qsizetype>(1, made.sizeInBytes() / 1024)));
        return made;
    }
    template <typename Make>
    QRectF ink(const QString &name, Make make)
    {
        {
            const QMutexLocker lock(&m_mutex);
            if (const auto known = m_ink.constFind(name); known != m_ink.constEnd())
                return *known;
        }
        const QRectF made = make();
        const QMutexLocker lock(&m_mutex);
        m_ink.insert(name, made);
        return made;
    }

private:
    QMutex m_mutex;
    QCache<QString, QImage> m_images{16 * 1024}; // KiB
    QHash<QString, QRectF> m_ink;
};

Cache &cache()
{
    static Cache cache;
    return cache;
}

QString colorKey(const QColor &color)
{
    return color.isValid() ? color.name(QColor::HexArgb) : QString();
}

class Engine : public QIconEngine {
public:
    Engine(QString name, QColor color) : m_name(std::move(name)), m_color(std::move(color)) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        Symbols::paint(*painter, rect, m_name, color(mode));
    }
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State) override { return make(size, 1, mode); }
    QPixmap scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State, qreal scale) override
    {
        return make(size, scale, mode);
    }
    QIconEngine *clone() const override { return new Engine(m_name, m_color); }
    QString key() const override { return "LumenpostSymbol"; }
    QString iconName() override { return m_name; }

private:
    QColor color(QIcon::Mode mode) const
    {
        QColor color = m_color;
        if (mode == QIcon::Disabled)
            color.setAlphaF(color.alphaF() * 0.35f);
        return color;
    }
    // `size` is in device pixels already.
    QPixmap make(const QSize &size, qreal scale, QIcon::Mode mode) const
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        Symbols::paint(painter, QRectF(QPointF(), QSizeF(size)), m_name, color(mode));
        painter.end();
        pixmap.setDevicePixelRatio(scale);
        return pixmap;
    }

    QString m_name;
    QColor m_color;
};

} // namespace

bool exists(const QString &name)
{
    return !name.isEmpty() && !name.contains('/') && QFile::exists(resource(name));
}

QStringList names()
{
    QStringList names;
    const QStringList files = QDir(folder()).entryList(QDir::Files);
    for (const QString &file : files)
        names << file.chopped(4);
    return names;
}

QImage image(const QString &name, int side, const QColor &color)
{
    if (side < 1 || !exists(name))
        return {};
    side = std::min(side, kLargestSide);
    return cache().image(QString("%1/%2/%3").arg(name).arg(side).arg(colorKey(color)), [&] {
        QImage image = shape(name, {side, side}, QRectF(0, 0, side, side));
        if (!image.isNull())
            tint(image, color);
        return image;
    });
}

void paint(QPainter &painter, const QRectF &square, const QString &name, const QColor &color)
{
    const double side = std::min(square.width(), square.height());
    if (!(side > 0))
        return;
    const QTransform device = painter.deviceTransform();
    const double scale = std::sqrt(std::abs(device.determinant()));
    const int pixels =
        static_cast<int>(std::ceil(std::clamp(side * scale, 1.0, double(kLargestSide)) - 0.01));
    const QImage picture = image(name, pixels, color);
    if (picture.isNull())
        return;
    QRectF target(0, 0, side, side);
    target.moveCenter(square.center());
    if (device.type() <= QTransform::TxScale) {
        // On whole device pixels the picture is copied, not resampled.
        const QPointF corner = device.map(target.topLeft());
        const QPointF snapped(std::round(corner.x()), std::round(corner.y()));
        const QTransform back = device.inverted();
        target = QRectF(back.map(snapped), back.map(snapped + QPointF(pixels, pixels)));
    }
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(target, picture);
    painter.restore();
}

QIcon icon(const QString &name, const QColor &color)
{
    return exists(name) ? QIcon(new Engine(name, color)) : QIcon();
}

QRectF ink(const QString &name)
{
    if (!exists(name))
        return {};
    return cache().ink(name, [&]() -> QRectF {
        constexpr int kSide = 224; // four pixels a unit of the larger boxes
        const QImage image = shape(name, {kSide, kSide}, QRectF(0, 0, kSide, kSide));
        int left = kSide, top = kSide, right = -1, bottom = -1;
        for (int y = 0; y < image.height(); ++y) {
            const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
            for (int x = 0; x < kSide; ++x) {
                if (qAlpha(line[x]) < 16)
                    continue;
                left = std::min(left, x);
                right = std::max(right, x);
                top = std::min(top, y);
                bottom = std::max(bottom, y);
            }
        }
        if (right < left)
            return {};
        return QRectF(double(left) / kSide, double(top) / kSide, double(right - left + 1) / kSide,
                      double(bottom - top + 1) / kSide);
    });
}

QImage inkImage(const QString &name, const QSize &pixels, const Palette &palette)
{
    const QRectF covered = ink(name);
    if (covered.isEmpty() || pixels.isEmpty())
        return {};
    const QSize size = pixels.boundedTo({kLargestSide, kLargestSide});
    const QString key = QString("%1/%2x%3/%4/%5")
                            .arg(name)
                            .arg(size.width())
                            .arg(size.height())
                            .arg(colorKey(palette.ground), colorKey(palette.figure));
    return cache().image(key, [&] {
        const double sx = size.width() / covered.width();
        const double sy = size.height() / covered.height();
        QImage image = shape(name, size, QRectF(-covered.x() * sx, -covered.y() * sy, sx, sy));
        if (image.isNull())
            return image;
        QImage figure;
        if (palette.figure.isValid() && isBadge(name)) {
            figure = enclosed(image);
            tint(figure, palette.figure);
        }
        tint(image, palette.ground);
        if (!figure.isNull()) {
            QPainter painter(&image);
            painter.setCompositionMode(QPainter::CompositionMode_DestinationOver);
            painter.drawImage(0, 0, figure);
        }
        return image;
    });
}

} // namespace Symbols
