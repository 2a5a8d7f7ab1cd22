#include "base/crash_report.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <csignal>
#include <cstring>
#include <execinfo.h>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int kMostReports = 20;
constexpr int kSignals[] = {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT, SIGSYS};

// All that the handler needs, made ready beforehand: while a signal is handled no memory can be asked for.
char g_path[4096];
char g_heading[256];
alignas(16) char g_stack[1 << 16]; // for the handler itself, since a stack that ran over has no room

void put(int file, const char *text)
{
    [[maybe_unused]] const ssize_t written = ::write(file, text, std::strlen(text));
}

void putNumber(int file, unsigned long number, unsigned base)
{
    char digits[32];
    char *end = digits + sizeof digits - 1;
    *end = 0;
    do {
        *--end = "0123456789abcdef"[number % base];
        number /= base;
    } while (number != 0);
    put(file, end);
}

void report(int number, siginfo_t *info, void *)
{
    const int file = ::open(g_path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (file >= 0) {
        put(file, g_heading);
        put(file, "\nSignal ");
        putNumber(file, static_cast<unsigned long>(number), 10);
        put(file, " at 0x");
        putNumber(file, reinterpret_cast<unsigned long>(info->si_addr), 16);
        put(file, "\n");
        void *frames[64];
        backtrace_symbols_fd(frames, backtrace(frames, 64), file);
        ::close(file);
    }
    // The handler was removed when it was called: once more, and the signal takes its usual course.
    ::raise(number);
}

void keepNewest(const QDir &folder)
{
    const QStringList reports =
        folder.entryList({QStringLiteral("Lumenpost *.txt")}, QDir::Files, QDir::Name | QDir::Reversed);
    for (qsizetype i = kMostReports; i < reports.size(); ++i)
        QFile::remove(folder.filePath(reports[i]));
}

} // namespace

QString CrashReport::folderIn(const QString &state)
{
    return state + QStringLiteral("/crash-reports");
}

void CrashReport::install(const QString &folder, const QString &version)
{
    QDir().mkpath(folder);
    keepNewest(QDir(folder));
    const QString stamp =
        QDateTime::currentDateTimeUtc().toString(Qt::ISODate).replace(QLatin1Char(':'), QLatin1Char('-'));
    const QByteArray path =
        // untranslated: a file for those who mend
        QFile::encodeName(QDir(folder).filePath(QStringLiteral("Lumenpost %1.txt").arg(stamp)));
    qstrncpy(g_path, path.constData(), sizeof g_path);
    qstrncpy(g_heading,
             // untranslated: a file for those who mend
             QStringLiteral("Lumenpost %1, session of %2").arg(version, stamp).toUtf8().constData(),
             sizeof g_heading);
    // The first call loads a library, which a signal handler couldn't.
    void *frame = nullptr;
    backtrace(&frame, 1);

    stack_t stack = {};
    stack.ss_sp = g_stack;
    stack.ss_size = sizeof g_stack;
    ::sigaltstack(&stack, nullptr);
    struct sigaction action = {};
    action.sa_sigaction = report;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK | int(SA_RESETHAND) | SA_NODEFER;
    for (const int number : kSignals)
        ::sigaction(number, &action, nullptr);
}
