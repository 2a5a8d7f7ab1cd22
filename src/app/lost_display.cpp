#include "app/lost_display.h"

#include "base/log.h"
#include "base/pending_work.h"
#include "platform/session/session_kind.h"

#include <QCoreApplication>
#include <QThread>
#include <QThreadPool>
#include <csignal>
#include <cstdlib>
#include <unistd.h>
#include <utility>

namespace {

QtMessageHandler g_before = nullptr; // a message handler can reach nothing but statics
bool g_isEnding = false;

void endWithTheDisplay()
{
    Log::info(QStringLiteral("The display has gone away"));
    QThreadPool::globalInstance()->waitForDone(int(PendingWork::kLimit.count()));
    Log::endSession();
    _exit(EXIT_SUCCESS);
}

// The toolkit's warning is the last thing before its exit(), and all objects are whole then.
void hear(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    g_before(type, context, message);
    const auto *application = QCoreApplication::instance();
    const bool isMain = application && QThread::currentThread() == application->thread();
    if (isMain && isDisplayLost() && !std::exchange(g_isEnding, true))
        endWithTheDisplay();
}

} // namespace

LostDisplay::LostDisplay()
{
    std::signal(SIGPIPE, SIG_IGN); // writing to a server that has gone is an error, not the end
    g_before = qInstallMessageHandler(&hear);
}

LostDisplay::~LostDisplay()
{
    qInstallMessageHandler(g_before);
}
