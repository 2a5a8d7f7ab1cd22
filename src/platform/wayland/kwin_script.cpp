#include "platform/wayland/kwin_script.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDeadlineTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QMutexLocker>
#include <QTemporaryFile>
#include <atomic>
#include <fcntl.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace {

constexpr int kPatience = 1000; // milliseconds
const QString kService = QStringLiteral("org.kde.KWin");
const QString kPath = QStringLiteral("/answers");
const QString kAnswers = QStringLiteral("com.oakfenrow.lumenpost.Answers");
const QString kScripting = QStringLiteral("/Scripting");
const QString kInterface = QStringLiteral("org.kde.kwin.Scripting");

} // namespace

class KWinScript::Answers : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.oakfenrow.lumenpost.Answers")
public:
    explicit Answers(const QString &name)
        : m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, name))
    {
        m_bus.registerObject(kPath, this, QDBusConnection::ExportScriptableSlots);
    }
    ~Answers() override
    {
        if (m_events >= 0)
            close(m_events);
    }
    const QDBusConnection &bus() const { return m_bus; }

    // The reader has a file of its own.
    int openEvents()
    {
        if (m_events < 0)
            m_events = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
        return fcntl(m_events, F_DUPFD_CLOEXEC, 0);
    }

    std::optional<QString> wait(int number)
    {
        const QMutexLocker lock(&m_mutex);
        const QDeadlineTimer deadline(kPatience);
        while (m_number != number) {
            if (!m_arrived.wait(&m_mutex, deadline))
                return std::nullopt;
        }
        return m_answer;
    }

public Q_SLOTS:
    Q_SCRIPTABLE void take(int number, const QString &answer)
    {
        const QMutexLocker lock(&m_mutex);
        m_number = number;
        m_answer = answer;
        m_arrived.wakeAll();
    }

    Q_SCRIPTABLE void activated()
    {
        if (m_events >= 0)
            eventfd_write(m_events, 1);
    }

private:
    QDBusConnection m_bus;
    std::atomic_int m_events = -1;
    QMutex m_mutex;
    QWaitCondition m_arrived;
    int m_number = 0;
    QString m_answer;
};

KWinScript::KWinScript()
{
    m_thread.setObjectName(QStringLiteral("kwin answers"));
}

KWinScript::~KWinScript()
{
    for (const auto &script : m_kept)
        unload(script->fileName());
    m_thread.quit();
    m_thread.wait();
}

void KWinScript::open()
{
    if (m_answers)
        return;
    m_answers = std::make_unique<Answers>(QStringLiteral("kwin-%1").arg(quintptr(this)));
    m_answers->moveToThread(&m_thread);
    m_thread.start();
}

std::unique_ptr<QTemporaryFile> KWinScript::load(const QString &source)
{
    const QDBusConnection &bus = m_answers->bus();
    auto file = std::make_unique<QTemporaryFile>();
    if (!file->open() || file->write(source.toUtf8()) < 0 || !file->flush())
        return nullptr;
    QDBusMessage load =
        QDBusMessage::createMethodCall(kService, kScripting, kInterface, QStringLiteral("loadScript"));
    load.setArguments({file->fileName(), file->fileName()});
    const QDBusReply<int> loaded = bus.call(load, QDBus::Block, kPatience);
    if (!loaded.isValid() || loaded.value() < 0)
        return nullptr;
    // Its place depends on the version.
    for (const QString &path : {QStringLiteral("/%1"), QStringLiteral("/Scripting/Script%1")}) {
        const QDBusMessage start = QDBusMessage::createMethodCall(
            kService, path.arg(loaded.value()), QStringLiteral("org.kde.kwin.Script"), QStringLiteral("run"));
        if (bus.call(start, QDBus::Block, kPatience).type() == QDBusMessage::ReplyMessage)
            return file;
    }
    return nullptr;
}

void KWinScript::unload(const QString &name)
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(kService, kScripting, kInterface, QStringLiteral("unloadScript"));
    message.setArguments({name});
    // Its number is given to the next one, which must not come before it is free.
    m_answers->bus().call(message, QDBus::Block, kPatience);
}

std::optional<QJsonValue> KWinScript::run(const QString &body)
{
    const QMutexLocker lock(&m_running);
    open();
    const int number = ++m_count;
    const auto file = load(QStringLiteral("callDBus('%1', '%2', '%3', 'take', %4,\n"
                                          "JSON.stringify([(function () {\n%5\n})()]));\n")
                               .arg(m_answers->bus().baseService(), kPath, kAnswers)
                               .arg(number)
                               .arg(body));
    if (!file)
        return std::nullopt;
    const auto answer = m_answers->wait(number);
    unload(file->fileName());
    if (!answer)
        return std::nullopt;
    return QJsonDocument::fromJson(answer->toUtf8()).array().at(0);
}

int KWinScript::watchActivations()
{
    const QMutexLocker lock(&m_running);
    open();
    const int file = m_answers->openEvents();
    if (!m_isWatching) {
        auto script = load(QStringLiteral("(workspace.windowActivated || workspace.clientActivated).connect("
                                          "function () { callDBus('%1', '%2', '%3', 'activated'); });")
                               .arg(m_answers->bus().baseService(), kPath, kAnswers));
        m_isWatching = script != nullptr;
        if (script)
            m_kept.push_back(std::move(script));
    }
    return file;
}

bool KWinScript::keep(const QString &source)
{
    const QMutexLocker lock(&m_running);
    open();
    auto script = load(source);
    if (!script)
        return false;
    m_kept.push_back(std::move(script));
    return true;
}

#include "kwin_script.moc"
