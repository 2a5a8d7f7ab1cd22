#include "steps/step_picture.h"

#include "base/atomic_file.h"
#include "document/image_files.h"
#include "steps/texts.h"

#include <QMutex>
#include <QMutexLocker>

struct StepPicture::State {
    QMutex mutex;
    QSize size;
    // The first that is there holds the picture.
    QImage image;
    QByteArray png;
    QString path;
};

StepPicture::StepPicture(const QImage &image) : m_state(image.isNull() ? nullptr : std::make_shared<State>())
{
    if (!m_state)
        return;
    m_state->size = image.size();
    m_state->image = image;
}

StepPicture::StepPicture(const QString &path, QSize size) : m_state(std::make_shared<State>())
{
    m_state->size = size;
    m_state->path = path;
}

QSize StepPicture::size() const
{
    return m_state ? m_state->size : QSize();
}

QImage StepPicture::image() const
{
    if (!m_state)
        return {};
    QByteArray png;
    QString path;
    {
        const QMutexLocker lock(&m_state->mutex);
        if (!m_state->image.isNull())
            return m_state->image;
        png = m_state->png;
        path = m_state->path;
    }
    const Result<QImage> read = png.isEmpty() ? ImageFiles::read(path) : ImageFiles::decode(png);
    return read ? *read : QImage();
}

QString StepPicture::path() const
{
    if (!m_state)
        return {};
    const QMutexLocker lock(&m_state->mutex);
    return m_state->path;
}

Result<void> StepPicture::moveTo(const QString &path) const
{
    if (!m_state)
        return {};
    QImage image;
    QByteArray png;
    {
        const QMutexLocker lock(&m_state->mutex);
        image = m_state->image;
        png = m_state->png;
        if (!m_state->path.isEmpty())
            return {};
    }
    if (png.isEmpty()) {
        png = ImageFiles::encode(image, ImageFiles::Type::Png);
        if (png.isEmpty())
            return fail(StepsTexts::tr("There is no memory for the picture of a step."));
        image = QImage();
        const QMutexLocker lock(&m_state->mutex);
        m_state->png = png;
        m_state->image = QImage();
    }
    // A kill leaves it whole; a power failure may take the guide that is just being recorded.
    if (auto written = AtomicFile::write(path, png, AtomicFile::Keep::Reproducible); !written)
        return written;
    const QMutexLocker lock(&m_state->mutex);
    m_state->path = path;
    m_state->png.clear();
    return {};
}
