#include "base/log.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMutex>
#include <QSysInfo>
#include <QThreadPool>
#include <cxxabi.h>
#include <exception>
#include <execinfo.h>

namespace {

constexpr qint64 kRotateAt = 2000001;

struct Writer {
    QMutex mutex;
    QString directory;
    QThreadPool queue; // one thread: lines keep their order

    Writer() { queue.setMaxThreadCount(1); }
};

Writer &writer()
{
    static Writer instance;
    return instance;
}

QString filePath(const QString &name)
{
    return QDir(Log::directory()).filePath(name);
}

void append(const QString &directory, const QByteArray &line)
{
    QDir().mkpath(directory);
    const QDir folder(directory);
    const QString current = folder.filePath(QStringLiteral("lumenpost.log"));
    const QString previous = folder.filePath(QStringLiteral("lumenpost.1.log"));
    if (QFileInfo(current).size() >= kRotateAt) {
        QFile::remove(previous);
        QFile::rename(current, previous);
    }
    QFile file(current);
    if (file.open(QIODevice::WriteOnly | QIODevice::Append))
        file.write(line);
}

void write(const char *level, const QString &text)
{
    const QString directory = Log::directory();
    if (directory.isEmpty())
        return;
    const QByteArray line =
        QStringLiteral("%1 [%2] %3\n")
            .arg(QDateTime::currentDateTimeUtc().toString(Qt::ISODate), QLatin1String(level), text)
            .toUtf8();
    writer().queue.start([directory, line] { append(directory, line); });
}

QString describeCurrentException()
{
    QString name = QStringLiteral("unknown");
    QString reason;
    if (const std::type_info *type = abi::__cxa_current_exception_type()) {
        int status = 0;
        char *demangled = abi::__cxa_demangle(type->name(), nullptr, nullptr, &status);
        name = QString::fromUtf8(demangled ? demangled : type->name());
        std::free(demangled);
    }
    try {
        if (std::current_exception())
            std::rethrow_exception(std::current_exception());
    } catch (const std::exception &exception) {
        reason = QString::fromUtf8(exception.what());
    } catch (...) {
        reason = QStringLiteral("no description");
    }
    QString text = QStringLiteral("CRASH %1: %2").arg(name, reason); // untranslated: the log
    void *frames[64];
    const int count = backtrace(frames, 64);
    if (char **symbols = backtrace_symbols(frames, count)) {
        for (int i = 0; i < count; ++i)
            text += QLatin1Char('\n') + QString::fromUtf8(symbols[i]);
        std::free(static_cast<void *>(symbols));
    }
    return text;
}

[[noreturn]] void logUncaughtException()
{
    const QString text = describeCurrentException();
    Log::error(text);
    QFile file(filePath(QStringLiteral("last-exception.txt")));
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        file.write(text.toUtf8());
        file.close();
    }
    Log::flush();
    std::abort();
}

} // namespace

void Log::setDirectory(const QString &directory)
{
    QMutexLocker lock(&writer().mutex);
    writer().directory = directory;
}

QString Log::directory()
{
    QMutexLocker lock(&writer().mutex);
    return writer().directory;
}

bool Log::startSession()
{
    QDir().mkpath(directory());
    const QString marker = filePath(QStringLiteral(".running"));
    const bool crashed = QFile::exists(marker);
    QFile file(marker);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.close();
    std::set_terminate(logUncaughtException);
    const QString version = QCoreApplication::applicationVersion();
    info(QStringLiteral("Lumenpost %1 started on %2")
             .arg(version.isEmpty() ? QStringLiteral("dev") : version, QSysInfo::prettyProductName()));
    if (crashed)
        error(QStringLiteral("Previous session ended unexpectedly"));
    return crashed;
}

void Log::endSession()
{
    info(QStringLiteral("Lumenpost quit"));
    flush();
    QFile::remove(filePath(QStringLiteral(".running")));
}

void Log::info(const QString &text)
{
    write("INFO", text);
}

void Log::error(const QString &text)
{
    write("ERROR", text);
}

void Log::error(const QString &text, const Error &error)
{
    const QString detail = error.detail.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(error.detail);
    write("ERROR", text + QStringLiteral(": ") + error.message + detail);
}

void Log::flush()
{
    writer().queue.waitForDone();
}
