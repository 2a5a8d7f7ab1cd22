#pragma once

#include "base/result.h"
#include "document/image_files.h"
#include "library/batch/progress.h"

#include <QImage>
#include <QList>
#include <QSize>
#include <QString>
#include <QStringList>

// A picture that is made of several files, of which one at a time is in memory.
struct Composition {
    // A file as its header tells of it.
    struct Part {
        qsizetype index; // in the list of files
        QSize size;
    };

    QImage image;
    int leftOut = 0; // of the files, those that could not be read

    // `begin` gives, for a list of parts, what draws: with `draw(i, picture)` and `image()`.
    template <typename Begin>
    static Result<Composition> of(const QStringList &paths, const Progress &progress, Begin begin);

private:
    enum class Drawn { Whole, Otherwise, Stopped };
    template <typename Canvas>
    static Drawn draw(Canvas &canvas, const QStringList &paths, QList<Part> &parts, const Progress &progress);
};

template <typename Begin>
Result<Composition> Composition::of(const QStringList &paths, const Progress &progress, Begin begin)
{
    QList<Part> parts;
    for (qsizetype i = 0; i < paths.size(); ++i) {
        if (const auto size = ImageFiles::pixelSize(paths[i]))
            parts.append({i, *size});
    }
    for (;;) {
        auto canvas = begin(parts);
        if (!canvas)
            return std::unexpected(canvas.error());
        switch (draw(*canvas, paths, parts, progress)) {
        case Drawn::Whole:
            return Composition{canvas->image(), static_cast<int>(paths.size() - parts.size())};
        case Drawn::Stopped:
            return cancelled();
        case Drawn::Otherwise:
            break; // once more, with what is known now
        }
    }
}

template <typename Canvas>
Composition::Drawn Composition::draw(Canvas &canvas, const QStringList &paths, QList<Part> &parts,
                                     const Progress &progress)
{
    const auto count = static_cast<int>(parts.size());
    for (int i = 0; i < count; ++i) {
        const auto image = ImageFiles::read(paths[parts[i].index]);
        if (!image) {
            parts.removeAt(i);
            return Drawn::Otherwise;
        }
        // A header may promise too much.
        if (std::exchange(parts[i].size, image->size()) != image->size())
            return Drawn::Otherwise;
        canvas.draw(i, *image);
        if (!goesOn(progress, i + 1, count))
            return Drawn::Stopped;
    }
    return Drawn::Whole;
}
