#pragma once

#include "app/activity.h"
#include "base/async.h"
#include "base/notice.h"
#include "settings/capture_options.h"

#include <QImage>
#include <QObject>
#include <QString>
#include <functional>
#include <memory>
#include <optional>

class AppSettings;
class ClaudeClient;
class Library;
class Pasteboard;
class PendingWork;
class Sounds;
class TextRecognizer;

// A capture that has landed in the Library.
struct DeliveredPicture {
    QImage image;
    QString path;
    bool backdrop = false; // to be opened with a backdrop behind it
};

// What follows a finished picture, film or text, the same for whoever made it: the file in the Library, its
// source, the clipboard, the editor or a notice, a name. What is under way when the program quits is waited
// for.
class Delivery : public QObject {
    Q_OBJECT
public:
    struct Parts {
        Activity &activity;
        Library &library;
        Pasteboard &pasteboard;
        Sounds &sounds;
        TextRecognizer &recognizer;
        ClaudeClient &claude;
        AppSettings &prefs;
        NoticeBoard &notices;
        PendingWork &pending;
    };
    // How it was asked for; frozen at the request, since the next one may start while this is delivered.
    struct Order {
        CaptureOptions options;
        std::optional<QString> source; // the application it shows
        bool isWindow = false;
        QStringList lacks = {}; // sentences on what the picture may not show
    };

    explicit Delivery(Parts parts, QObject *parent = nullptr);

    // Opens what was captured for editing. Without them a notice tells of it instead.
    std::function<void(const DeliveredPicture &)> openEditor;
    std::function<void(const QString &path)> openVideoEditor;
    // Lets a capture float above all windows. Offered only with it.
    std::function<void(const QImage &)> pin;

    // `run` ends when the picture is safe, or is known to be lost.
    void deliverPicture(const QImage &image, const Order &order, std::optional<Activity::Run> run = {});
    // The text in the picture goes to the clipboard; nothing is saved.
    void deliverText(const QImage &image);
    // A film that lies in the Library already; `lacks` is a sentence about what is missing in it.
    void deliverFilm(const QString &path, const Order &order, const QString &lacks = {});

Q_SIGNALS:
    void delivered(const QString &path);

private:
    // Held by a piece of work until it is over: that is what PendingWork waits for.
    using Hold = std::shared_ptr<QPromise<void>>;
    Hold hold(const QString &what);

    Task<> keepPicture(QImage image, Order order, std::optional<Activity::Run> run, Hold hold);
    Task<> copy(DeliveredPicture picture, std::optional<QStringList> tells, Hold hold);
    Task<> copyText(QImage image, Hold hold);
    Task<> nameByContent(DeliveredPicture picture);
    void credit(const QString &path, const Order &order);
    Task<> copyOnRequest(DeliveredPicture picture, Hold hold);
    void tellSaved(const DeliveredPicture &picture, bool isCopied, const QStringList &lacks);
    QList<NoticeAction> offers(const DeliveredPicture &picture, bool isCopied);
    QList<NoticeAction> filmOffers(const QString &film);
    NoticeAction trashing(const std::shared_ptr<QString> &path);
    // Where a file that a notice tells of is by now: it may get another name while the notice is shown.
    std::shared_ptr<QString> follow(const QString &path);

    Parts m_parts;
    QList<std::weak_ptr<QString>> m_followed;
};
