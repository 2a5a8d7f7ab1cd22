#include "library/clipboard_owner.h"

#include "base/async.h"
#include "base/atomic_file.h"
#include "base/read_file.h"
#include "base/temporary_files.h"
#include "library/texts.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QFile>
#include <QProcess>
#include <QThread>
#include <cstdio>

namespace {

constexpr auto kReady = "ready\n";
constexpr int kPatience = 500;             // looks of 10 ms each
constexpr qint64 kMostBytes = 1ll << 30;   // a clipboard's content
constexpr auto kVersion = QDataStream::Qt_6_0;

Result<void> startWith(const QList<Pasteboard::Flavor> &flavors)
{
    const auto file = TemporaryFiles::newPath(QStringLiteral("clipboard"));
    if (!file)
        return std::unexpected(file.error());
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(kVersion);
    stream << flavors;
    if (const auto written = AtomicFile::write(*file, bytes, AtomicFile::Keep::Reproducible); !written)
        return written;
    QProcess process;
    process.setProgram(QCoreApplication::applicationFilePath());
    process.setArguments({QLatin1String(ClipboardOwner::kCommand), *file});
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    const QString answer = *file + QStringLiteral(".ready");
    process.setStandardOutputFile(answer);
    if (!process.startDetached())
        return fail(LibraryTexts::tr("The picture could not be copied: %1.").arg(process.errorString()));
    // Who pastes right after this program has ended must find the content.
    bool isReady = false;
    for (int i = 0; i < kPatience && !isReady; ++i) {
        QThread::msleep(10);
        isReady = QFile(answer).size() > 0;
    }
    QFile::remove(answer);
    if (!isReady) {
        QFile::remove(*file);
        return fail(LibraryTexts::tr("The picture could not be copied: there is no clipboard."));
    }
    return {};
}

} // namespace

QFuture<Result<void>> ClipboardOwner::start(const QList<Pasteboard::Flavor> &flavors)
{
    return runInBackground([flavors] { return startWith(flavors); });
}

Result<QList<Pasteboard::Flavor>> ClipboardOwner::take(const QString &file)
{
    const auto bytes = ReadFile::whole(file, kMostBytes);
    if (!bytes)
        return std::unexpected(bytes.error());
    QFile::remove(file);
    QDataStream stream(*bytes);
    stream.setVersion(kVersion);
    QList<Pasteboard::Flavor> flavors;
    stream >> flavors;
    if (stream.status() != QDataStream::Ok || flavors.isEmpty())
        return fail(Error::Kind::Invalid, LibraryTexts::tr("There is nothing to copy in %1.").arg(file));
    return flavors;
}

void ClipboardOwner::tellReady()
{
    std::fputs(kReady, stdout);
    std::fclose(stdout);
}
