#include "steps/guide_previews.h"

#include "base/async.h"
#include "document/image_files.h"
#include "steps/steps_export.h"

namespace {

// Pixels. One that is larger takes more than a hundred megabytes until its preview is there.
constexpr qint64 kLargePicture = 6'000'000;

QString flag(bool on)
{
    return on ? QStringLiteral("true") : QStringLiteral("false");
}

} // namespace

GuidePreviews::GuidePreviews(QObject *parent) : QObject(parent)
{
    // Each holds a whole picture; more than this would be felt by other programs.
    m_renderers.setMaxThreadCount(std::clamp(QThread::idealThreadCount(), 1, 4));
    m_renderers.setThreadPriority(QThread::LowPriority);
}

GuidePreviews::~GuidePreviews()
{
    m_renderers.clear();
    m_renderers.waitForDone();
}

QString GuidePreviews::key(const GuideStep &step, int number, const Guide &guide)
{
    const QString click = step.click ? QString::number(step.click->x(), 'g', 17) + ',' +
                                           QString::number(step.click->y(), 'g', 17)
                                     : QStringLiteral("-");
    return QStringList{QString::number(number),
                       flag(guide.markClicks),
                       flag(guide.redact),
                       click,
                       QString::number(step.redactions.size()),
                       QString::number(step.editVersion)}
        .join('|');
}

QImage GuidePreviews::thumbnail(const QImage &image, int maxEdge)
{
    const double s = double(maxEdge) / std::max({image.width(), image.height(), 1});
    if (s >= 1)
        return image;
    const QSize size(std::max(int(image.width() * s), 1), std::max(int(image.height() * s), 1));
    const QImage small = image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return small.isNull() ? image : small;
}

void GuidePreviews::refresh(const Guide &guide)
{
    QHash<QUuid, Preview> previews;
    m_waiting.clear();
    m_order.clear();
    int number = 0;
    for (const GuideStep &step : guide.steps) {
        const QString wanted = key(step, ++number, guide);
        const Preview old = m_previews.value(step.id);
        previews.insert(step.id, old);
        m_order.append(step.id);
        if (old.key != wanted && m_underWay.value(step.id) != wanted)
            m_waiting.insert(step.id, {step, number, guide.markClicks, guide.redact, wanted});
    }
    m_previews = previews;
    startNext();
}

void GuidePreviews::wantFirst(const QList<QUuid> &steps)
{
    m_first = steps;
    ++m_now;
    for (const QUuid &step : steps) {
        if (const auto wanted = m_previews.find(step); wanted != m_previews.end())
            wanted->lastWanted = m_now;
        unpack(step);
    }
    packOthers();
}

qint64 GuidePreviews::unpackedBytes() const
{
    qint64 bytes = 0;
    for (const Preview &each : m_previews)
        bytes += each.image.sizeInBytes();
    return bytes;
}

void GuidePreviews::unpack(const QUuid &step)
{
    const auto place = m_previews.find(step);
    if (place == m_previews.end() || !place->image.isNull() || place->packed.isEmpty() || place->isUnpacking)
        return;
    place->isUnpacking = true;
    whenDone(
        runInBackground([packed = place->packed] { return ImageFiles::decode(packed).value_or(QImage()); }),
        this, [this, step, key = place->key](const QImage &image) {
            const auto kept = m_previews.find(step);
            if (kept == m_previews.end())
                return;
            kept->isUnpacking = false;
            if (kept->key != key || !kept->image.isNull())
                return;
            kept->image = image;
            packOthers();
            Q_EMIT changed(step);
        });
}

// Those that were looked at longest ago first.
void GuidePreviews::packOthers()
{
    qint64 bytes = unpackedBytes();
    while (bytes > kMostBytes) {
        auto oldest = m_previews.end();
        for (auto each = m_previews.begin(); each != m_previews.end(); ++each) {
            if (each->image.isNull() || each->packed.isEmpty() || m_first.contains(each.key()))
                continue;
            if (oldest == m_previews.end() || each->lastWanted < oldest->lastWanted)
                oldest = each;
        }
        if (oldest == m_previews.end())
            return;
        bytes -= oldest->image.sizeInBytes();
        oldest->image = QImage();
    }
}

int GuidePreviews::mostAtOnce() const
{
    const bool hasLarge = std::ranges::any_of(m_waiting, [](const Order &order) {
        const QSize size = order.step.image.size();
        return qint64(size.width()) * size.height() > kLargePicture;
    });
    return hasLarge ? 1 : m_renderers.maxThreadCount();
}

void GuidePreviews::startNext()
{
    while (!m_waiting.isEmpty() && m_underWay.size() < mostAtOnce()) {
        const auto waits = [this](const QUuid &id) {
            return m_waiting.contains(id) && !m_underWay.contains(id);
        };
        auto next = std::find_if(m_first.cbegin(), m_first.cend(), waits);
        if (next == m_first.cend()) {
            next = std::find_if(m_order.cbegin(), m_order.cend(), waits);
            if (next == m_order.cend())
                return;
        }
        const Order order = m_waiting.take(*next);
        m_underWay.insert(order.step.id, order.key);
        using Made = std::pair<QImage, QByteArray>;
        whenDone(QtConcurrent::run(&m_renderers,
                                   [order] {
                                       const QImage image =
                                           thumbnail(StepsExport::annotated(order.step, order.number,
                                                                            order.markClicks, order.redact),
                                                     kLongestEdge);
                                       return Made(image, image.isNull() ? QByteArray()
                                                                         : ImageFiles::encode(
                                                                               image, ImageFiles::Type::Png));
                                   }),
                 this, [this, id = order.step.id, key = order.key](const Made &result) {
                     made(id, key, result.first, result.second);
                 });
    }
}

void GuidePreviews::made(const QUuid &step, const QString &key, const QImage &image, const QByteArray &packed)
{
    m_underWay.remove(step);
    if (const auto kept = m_previews.find(step); kept != m_previews.end()) {
        kept->key = key;
        kept->image = image;
        kept->packed = packed;
        packOthers();
        Q_EMIT changed(step);
    }
    startNext();
    if (isIdle())
        Q_EMIT idle();
}
