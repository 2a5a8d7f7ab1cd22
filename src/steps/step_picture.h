#pragma once

#include "base/result.h"

#include <QImage>
#include <QSize>
#include <QString>
#include <memory>

// One picture of a guide: a handle, whose copies share it. It stays in memory until it lies on disk, and is
// read back when it is needed, so that a long guide takes little room. All calls from any thread.
class StepPicture {
public:
    StepPicture() = default;
    explicit StepPicture(const QImage &image);
    // One that a file holds; `size` in pixels.
    StepPicture(const QString &path, QSize size);

    bool isNull() const { return !m_state; }
    QSize size() const;
    // Decodes it where it lies on disk. Null when its file has gone.
    QImage image() const;
    // Where it lies; empty while it is in memory alone.
    QString path() const;
    // Writes it and gives its memory back. When that fails it stays in memory, compressed.
    Result<void> moveTo(const QString &path) const;

    // Whether both are the same picture, not whether they look the same.
    bool operator==(const StepPicture &) const = default;

private:
    struct State;
    std::shared_ptr<State> m_state;
};
