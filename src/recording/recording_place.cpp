#include "recording/recording_place.h"

#include "base/free_name.h"
#include "recording/texts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUuid>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

constexpr qint64 kLongestNote = 1 << 16;

int openNote(const QString &path, int flags)
{
    return ::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC | O_NOFOLLOW, 0600);
}

bool writeAll(int file, const QByteArray &bytes)
{
    return ::write(file, bytes.constData(), std::size_t(bytes.size())) == bytes.size() && fsync(file) == 0;
}

} // namespace

QString RecordingPlace::notesIn(const QString &state)
{
    return state + QStringLiteral("/recordings");
}

Result<std::unique_ptr<RecordingPlace>> RecordingPlace::reserve(const QString &target, Existing existing,
                                                                const QString &notes)
{
    std::unique_ptr<RecordingPlace> place(new RecordingPlace);
    const QFileInfo info(target);
    const QString name = QUuid::createUuid().toString(QUuid::WithoutBraces).left(8);
    place->m_target = info.absoluteFilePath();
    place->m_existing = existing;
    place->m_growing = info.absoluteDir().filePath(
        QStringLiteral(".%1.%2.recording").arg(info.completeBaseName().left(100), name));
    if (!info.absoluteDir().exists())
        return fail(Error::Kind::NotFound,
                    RecordingTexts::tr("There is no folder %1.").arg(info.absolutePath()));
    QDir().mkpath(notes);
    place->m_note = QDir(notes).filePath(name + QStringLiteral(".json"));
    place->m_lock = openNote(place->m_note, O_RDWR | O_CREAT | O_EXCL);
    const QJsonObject note{{QStringLiteral("growing"), place->m_growing},
                           {QStringLiteral("target"), place->m_target},
                           {QStringLiteral("replaces"), existing == Existing::Replaced}};
    if (place->m_lock < 0 || flock(place->m_lock, LOCK_EX | LOCK_NB) != 0 ||
        !writeAll(place->m_lock, QJsonDocument(note).toJson()))
        return fail(RecordingTexts::tr("The recording couldn't be prepared: %1.").arg(qt_error_string()),
                    place->m_note);
    return place;
}

QList<std::shared_ptr<RecordingPlace>> RecordingPlace::abandoned(const QString &notes)
{
    QList<std::shared_ptr<RecordingPlace>> places;
    const QDir folder(notes);
    for (const QString &name : folder.entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Time)) {
        std::shared_ptr<RecordingPlace> place(new RecordingPlace);
        place->m_note = folder.filePath(name);
        place->m_lock = openNote(place->m_note, O_RDWR);
        if (place->m_lock < 0 || flock(place->m_lock, LOCK_EX | LOCK_NB) != 0)
            continue;
        QFile file(place->m_note);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QJsonObject note = QJsonDocument::fromJson(file.read(kLongestNote)).object();
        place->m_growing = note.value(QLatin1String("growing")).toString();
        place->m_target = note.value(QLatin1String("target")).toString();
        if (note.value(QLatin1String("replaces")).toBool())
            place->m_existing = Existing::Replaced;
        const bool isSound = QFileInfo(place->m_growing).isAbsolute() &&
                             QFileInfo(place->m_growing).suffix() == QLatin1String("recording") &&
                             QFileInfo(place->m_target).isAbsolute();
        if (!isSound || !QFile::exists(place->m_growing)) {
            place->forget(); // it broke off before or after there was a film
            continue;
        }
        places.append(place);
    }
    return places;
}

RecordingPlace::~RecordingPlace()
{
    if (m_lock >= 0)
        ::close(m_lock);
}

Result<QString> RecordingPlace::finish(Movies &movies, std::optional<std::chrono::microseconds> end)
{
    QString path = m_target;
    if (m_existing == Existing::Replaced) {
        const QString finished = m_growing + QStringLiteral(".mov");
        if (const auto made = movies.finish(m_growing, finished, end); !made)
            return std::unexpected(made.error());
        if (std::rename(QFile::encodeName(finished).constData(), QFile::encodeName(path).constData()) != 0)
            return fail(RecordingTexts::tr("The recording couldn't take its name: %1. It is in %2.")
                            .arg(qt_error_string(), finished));
    } else {
        while (true) {
            const QFileInfo info(m_target);
            path = freeFilePath(info.absolutePath(), info.completeBaseName(), info.suffix());
            const auto made = movies.finish(m_growing, path, end);
            if (made)
                break;
            if (!QFile::exists(path) || !QFile::exists(m_growing)) // else another took the name just now
                return std::unexpected(made.error());
        }
    }
    forget();
    return path;
}

void RecordingPlace::drop()
{
    QFile::remove(m_growing);
    forget();
}

void RecordingPlace::forget()
{
    QFile::remove(m_note);
}
