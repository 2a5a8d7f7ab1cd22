#pragma once

#include <QImage>
#include <QtGlobal>
#include <optional>
#include <vector>

// What a pixel row of a picture looks like, in a form that two pictures can be compared by.
struct RowSignatures {
    std::vector<quint64> hashes; // one a row, top row first; equal rows have equal hashes
    std::vector<quint8> uniform; // 1 where the whole row has one colour

    // How many pixels of a row of `width` pixels take part: the rightmost 48 are left out, because a scroll
    // bar lives there that fades and moves with every scroll. A picture of 52 columns or fewer is read in its
    // first 4.
    static int comparedColumns(int width);

    // Colours count as sRGB with 8 bits for each component; alpha doesn't count. Nothing when the picture
    // can't be brought into that form.
    static std::optional<RowSignatures> of(const QImage &image);
    // The picture in that form: RGB32 without transparency, ARGB32_Premultiplied with. Shared when it has it
    // already.
    static QImage comparable(const QImage &image);
};
