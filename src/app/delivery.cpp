#include "app/delivery.h"

#include "app/texts.h"
#include "base/log.h"
#include "base/notice.h"
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

Delivery::Delivery(Parts parts, QObject *parent) : QObject(parent), m_parts(parts) {}

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

void Delivery::deliverFilm(const QString &path, const Order &order)
{
    credit(path, order);
    m_parts.library.postChanged(path);
    if (order.options.editor && openVideoEditor)
        openVideoEditor(path);
    else
        m_parts.notices.post(AppTexts::tr("Recording saved to Library"), QStringLiteral("record.circle"));
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
            QStringLiteral("exclamationmark.triangle.fill"));
        co_return;
    }
    Log::info(QStringLiteral("Captured ") + *saved);
    credit(*saved, order);
    if (ImageFiles::type(*saved) != ImageFiles::type(rawValue(m_parts.prefs.imageFormat()).prepend(u'.')))
        m_parts.notices.post(AppTexts::tr("Saved as PNG: %1 can’t hold a picture of %2 × %3 pixels")
                                 .arg(rawValue(m_parts.prefs.imageFormat()).toUpper(),
                                      QString::number(image.width()), QString::number(image.height())),
                             QStringLiteral("exclamationmark.triangle.fill"));
    const DeliveredPicture picture{
        image, *saved, (order.isWindow && m_parts.prefs.backdropForWindows()) || order.options.backdrop};
    const bool opensEditor = order.options.editor && openEditor;
    if (order.options.clipboard)
        copy(picture, !opensEditor, hold);
    if (opensEditor)
        openEditor(picture);
    else if (!order.options.clipboard)
        tellSaved(false);
    Q_EMIT delivered(*saved);
    nameByContent(picture);
}

Task<> Delivery::copy(DeliveredPicture picture, bool tells, Hold hold)
{
    const auto finished = [image = picture.image, backdrop = picture.backdrop] {
        Effects effects;
        effects.backdrop = backdrop;
        return effects.applied(image);
    };
    const auto copied =
        co_await guarded(Clipboard::copy(m_parts.pasteboard, finished, &m_parts.library), this);
    if (copied) {
        if (tells)
            tellSaved(true);
    } else if (!copied.error().isCancelled()) {
        Log::error(QStringLiteral("A capture could not be copied"), copied.error());
        m_parts.notices.post(copied.error().message, QStringLiteral("exclamationmark.triangle.fill"));
    } else {
        Log::info(QStringLiteral("Something newer was copied; a capture is left out of the clipboard"));
        if (tells)
            tellSaved(false);
    }
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

void Delivery::tellSaved(bool isCopied)
{
    m_parts.notices.post(isCopied ? AppTexts::tr("Captured & copied to clipboard")
                                  : AppTexts::tr("Saved to Library"),
                         QStringLiteral("checkmark.circle.fill"));
}
