#pragma once

#include "platform/screen_films.h"
#include "platform/screen_pictures.h"

// No screen and no window.
class NullScreens : public Screens {
public:
    QList<Screen> screens() const override { return {}; }
    QList<ListedWindow> windows() const override { return {}; }
};

// Answers every picture with `reason`, a sentence that the user can act on.
class NullScreenPictures : public ScreenPictures {
public:
    explicit NullScreenPictures(QString reason);
    Capabilities capabilities() const override;
    QFuture<Result<QImage>> display(const Screen &screen, Pointer pointer) override;
    QFuture<Result<QImage>> region(const Screen &screen, const QRectF &region, Pointer pointer) override;
    QFuture<Result<QImage>> window(quint32 id, Pointer pointer, WindowPart part) override;

private:
    QFuture<Result<QImage>> refusal() const;

    QString m_reason;
};

class NullScreenFilms : public ScreenFilms {
public:
    explicit NullScreenFilms(QString reason) : m_reason(std::move(reason)) {}
    Result<std::unique_ptr<ScreenFilm>> start(const FilmRequest &, FilmReceiver) override
    {
        return fail(Error::Kind::Unavailable, m_reason);
    }

private:
    QString m_reason;
};
