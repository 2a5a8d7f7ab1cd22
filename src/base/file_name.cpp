#include "base/file_name.h"

#include <QStringDecoder>

namespace {

constexpr char16_t kStrayByte = 0xdc00; // and the byte itself

bool isStrayByte(const QString &name, qsizetype i)
{
    const char16_t unit = name[i].unicode();
    return unit >= kStrayByte + 0x80 && unit <= kStrayByte + 0xff &&
           (i == 0 || !name[i - 1].isHighSurrogate());
}

// How many bytes the sequence has that this one leads; 1 for one that leads none.
qsizetype sequenceLength(uchar lead)
{
    return lead >= 0xf0 ? 4 : lead >= 0xe0 ? 3 : lead >= 0xc0 ? 2 : 1;
}

} // namespace

QString FileName::fromBytes(const QByteArray &bytes)
{
    QStringDecoder whole(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString name = whole.decode(bytes);
    if (!whole.hasError())
        return name;
    name.clear();
    for (qsizetype i = 0; i < bytes.size();) {
        const qsizetype length = sequenceLength(static_cast<uchar>(bytes[i]));
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        const QString sign =
            decoder.decode(QByteArrayView(bytes).sliced(i).first(std::min(length, bytes.size() - i)));
        if (!decoder.hasError()) {
            name += sign;
            i += length;
        } else {
            name += QChar(static_cast<char16_t>(kStrayByte + static_cast<uchar>(bytes[i])));
            ++i;
        }
    }
    return name;
}

QByteArray FileName::toBytes(const QString &name)
{
    QByteArray bytes;
    qsizetype from = 0;
    for (qsizetype i = 0; i < name.size(); ++i) {
        if (!isStrayByte(name, i))
            continue;
        bytes += QStringView(name).sliced(from, i - from).toUtf8();
        bytes += static_cast<char>(name[i].unicode() - kStrayByte);
        from = i + 1;
    }
    return bytes + QStringView(name).sliced(from).toUtf8();
}
