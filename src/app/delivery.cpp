#include "app/delivery.h"

#include "app/texts.h"
#include "base/log.h"
#include "base/pending_work.h"
#include "document/effects.h"
#include "document/image_files.h"
#include "library/clipboard.h"
#include "library/library.h"
#include "platform/pasteboard.h"
#include "platform/sounds.h"
#include "services/claude_client.h"
#include "services/grab_text.h"
#include "services/text_recognizer.h"
#include "settings/app_settings.h"

#include <QFileInfo>
#include <QPointer>

namespace {

const QString kSaved = QStringLiteral("checkmark.circle.fill");
const QString kWarning = QStringLiteral("exclamationmark.triangle.fill");

// Makes the picture as it is handed on; for a worker.
std::function<QImage()> finishing(const DeliveredPicture &picture)
{
    return [image = picture.image, backdrop = picture.backdrop] {
        Effects effects;
        effects.backdrop = backdrop;
        return effects.applied(image);
    };
}

} // namespace

Delivery::Delivery(Parts parts, QObject *parent) : QObject(parent), m_parts(parts)
{
    connect(&m_parts.library, &Library::renamed, this,
            [this](const QString &oldPath, const QString &newPath) {
                for (const std::weak_ptr<QString> &followed : m_followed) {
                    if (const auto path = followed.lock(); path && *path == oldPath)
                        *path = newPath;
                }
            });
}

Delivery::Hold Delivery::hold(const QString &what)
{
    auto promise = std::make_shared<QPromise<void>>();
    promise->start();
    m_parts.pending.keep(what, promise->future());
    return promise;
}

void Delivery::deliverPicture(const QImage &image, const Order &order, std::optional<Activity::Run> run)
{
    keepPicture(image, order, run, hold(QStringLiteral("saving a capture")));
}

void Delivery::deliverText(const QImage &image)
{
    copyText(image, hold(QStringLiteral("reading the text of a capture")));
}

void Delivery::deliverFilm(const QString &path, const Order &order, const QString &lacks)
{
    credit(path, order);
    m_parts.library.postChanged(path);
    const bool isWhole = lacks.isEmpty();
    const QString symbol = isWhole ? QStringLiteral("record.circle") : kWarning;
    const QString saved = AppTexts::tr("Recording saved to Library");
    if (order.options.editor && openVideoEditor) {
        openVideoEditor(path);
        if (!isWhole)
            m_parts.notices.post(lacks, symbol);
    } else {
        // One notice: a second would lie over the first.
        m_parts.notices.post(Notice{.text = isWhole ? saved : saved + QStringLiteral(". ") + lacks,
                                    .symbol = symbol,
                                    .actions = filmOffers(path)});
    }
    Q_EMIT delivered(path);
}

Task<> Delivery::keepPicture(QImage image, Order order, std::optional<Activity::Run> run, Hold hold)
{
    if (m_parts.prefs.shutterSound())
        m_parts.sounds.shutter();
    const auto saved = co_await guarded(m_parts.library.saveInBackground(image), this);
    if (!saved && saved.error().isCancelled())
        co_return;
    if (run)
        m_parts.activity.end(*run);
    if (!saved) {
        m_parts.notices.post(
            AppTexts::tr("Couldn't save to %1").arg(QFileInfo(m_parts.prefs.saveFolder()).fileName()),
            kWarning);
        co_return;
    }
    Log::info(QStringLiteral("Captured ") + *saved);
    credit(*saved, order);
    if (ImageFiles::type(*saved) != ImageFiles::type(rawValue(m_parts.prefs.imageFormat()).prepend(u'.')))
        order.lacks.append(AppTexts::tr("Saved as PNG: %1 can’t hold a picture of %2 × %3 pixels")
                               .arg(rawValue(m_parts.prefs.imageFormat()).toUpper(),
                                    QString::number(image.width()), QString::number(image.height())));
    const DeliveredPicture picture{
        image, *saved, (order.isWindow && m_parts.prefs.backdropForWindows()) || order.options.backdrop};
    const bool opensEditor = order.options.editor && openEditor;
    if (order.options.clipboard)
        copy(picture, opensEditor ? std::nullopt : std::optional(order.lacks), hold);
    if (opensEditor) {
        openEditor(picture);
        if (!order.lacks.isEmpty())
            m_parts.notices.post(order.lacks.join(' '), kWarning);
    } else if (!order.options.clipboard) {
        tellSaved(picture, false, order.lacks);
    }
    Q_EMIT delivered(*saved);
    nameByContent(picture);
}

Task<> Delivery::copy(DeliveredPicture picture, std::optional<QStringList> tells, Hold hold)
{
    const auto copied =
        co_await guarded(Clipboard::copy(m_parts.pasteboard, finishing(picture), &m_parts.library), this);
    if (copied) {
        if (tells)
            tellSaved(picture, true, *tells);
    } else if (!copied.error().isCancelled()) {
        Log::error(QStringLiteral("A capture could not be copied"), copied.error());
        m_parts.notices.post(copied.error().message, kWarning);
    } else {
        Log::info(QStringLiteral("Something newer was copied; a capture is left out of the clipboard"));
        if (tells)
            tellSaved(picture, false, *tells);
    }
}

Task<> Delivery::copyOnRequest(DeliveredPicture picture, Hold hold)
{
    const auto copied =
        co_await guarded(Clipboard::copy(m_parts.pasteboard, finishing(picture), &m_parts.library), this);
    if (copied)
        m_parts.notices.post(AppTexts::tr("Image copied to clipboard"), kSaved);
    else if (!copied.error().isCancelled())
        m_parts.notices.post(copied.error().message, kWarning);
}

Task<> Delivery::copyText(QImage image, Hold hold)
{
    const auto turn = m_parts.pasteboard.takeTurn();
    const auto text = co_await guarded(m_parts.recognizer.text(image), this);
    if (!text && text.error().isCancelled())
        co_return;
    if (!text)
        Log::error(QStringLiteral("Text could not be recognised"), text.error());
    const GrabbedText grabbed(text.value_or(QString()));
    if (!grabbed.isEmpty() && !m_parts.pasteboard.placeText(grabbed.text, turn)) {
        Log::info(QStringLiteral("Something newer was copied; the text read is dropped"));
        co_return;
    }
    m_parts.notices.post(grabbed.notice.text, grabbed.notice.symbol);
}

Task<> Delivery::nameByContent(DeliveredPicture picture)
{
    if (!m_parts.prefs.aiAutoName())
        co_return;
    // Nobody asked for this one: a locked store stays locked.
    const auto apiKey = co_await guarded(m_parts.prefs.apiKey(SecretsAccess::Quiet), this);
    if (!apiKey || apiKey->isEmpty())
        co_return;
    const auto name = co_await guarded(m_parts.claude.run(ClaudeClient::Action::Name, picture.image), this);
    if (!name || name->isEmpty())
        co_return;
    if (const auto renamed = m_parts.library.rename(picture.path, *name); !renamed)
        Log::error(QStringLiteral("A capture could not be named"), renamed.error());
}

void Delivery::credit(const QString &path, const Order &order)
{
    if (order.source && !order.source->isEmpty())
        m_parts.library.catalog().setSource(path, *order.source);
}

// In one notice: a second would lie over the first.
void Delivery::tellSaved(const DeliveredPicture &picture, bool isCopied, const QStringList &lacks)
{
    const QString saved =
        isCopied ? AppTexts::tr("Captured & copied to clipboard") : AppTexts::tr("Saved to Library");
    m_parts.notices.post(
        Notice{.text = lacks.isEmpty() ? saved : saved + QStringLiteral(". ") + lacks.join(' '),
               .symbol = lacks.isEmpty() ? kSaved : kWarning,
               .picture = picture.image,
               .file = picture.path,
               .actions = offers(picture, isCopied)});
}

QList<NoticeAction> Delivery::offers(const DeliveredPicture &picture, bool isCopied)
{
    const auto path = follow(picture.path);
    const auto current = [picture, path] {
        DeliveredPicture now = picture;
        now.path = *path;
        return now;
    };
    const QPointer<Delivery> self(this);
    QList<NoticeAction> offers;
    if (openEditor)
        offers.append({AppTexts::tr("Edit"), QStringLiteral("pencil"), [self, current] {
                           if (self)
                               self->openEditor(current());
                       }});
    if (!isCopied)
        offers.append({AppTexts::tr("Copy"), QStringLiteral("doc.on.doc"), [self, current] {
                           if (self)
                               self->copyOnRequest(current(),
                                                   self->hold(QStringLiteral("copying a capture")));
                       }});
    if (pin)
        offers.append({AppTexts::tr("Pin"), QStringLiteral("pin"), [self, image = picture.image] {
                           if (self)
                               self->pin(image);
                       }});
    offers.append(trashing(path));
    return offers;
}

QList<NoticeAction> Delivery::filmOffers(const QString &film)
{
    const auto path = follow(film);
    QList<NoticeAction> offers;
    if (openVideoEditor)
        offers.append({AppTexts::tr("Edit"), QStringLiteral("pencil"), [self = QPointer(this), path] {
                           if (self)
                               self->openVideoEditor(*path);
                       }});
    offers.append(trashing(path));
    return offers;
}

NoticeAction Delivery::trashing(const std::shared_ptr<QString> &path)
{
    return {AppTexts::tr("Trash"), QStringLiteral("trash"), [self = QPointer(this), path] {
                if (!self)
                    return;
                const auto tell = [notices =
                                       &self->m_parts.notices](const QList<Library::Outcome> &outcomes) {
                    for (const auto &[file, trashed] : outcomes) {
                        if (trashed)
                            notices->post(AppTexts::tr("Moved to the Trash"), QStringLiteral("trash"));
                        else
                            notices->post(trashed.error().message, kWarning);
                    }
                };
                whenDone(self->m_parts.library.removeInBackground({*path}), self, tell);
            }};
}

std::shared_ptr<QString> Delivery::follow(const QString &path)
{
    m_followed.removeIf([](const std::weak_ptr<QString> &followed) { return followed.expired(); });
    auto followed = std::make_shared<QString>(path);
    m_followed.append(followed);
    return followed;
}
