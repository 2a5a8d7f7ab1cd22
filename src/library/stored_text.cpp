#include "library/stored_text.h"

#include "base/file_handle.h"
#include "library/shared_names.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <cstring>
#include <fcntl.h>
#include <limits>

class StoredText::File {
public:
    explicit File(int number) : m_handle(fcntl(number, F_DUPFD_CLOEXEC, 3)) {}
    bool isOpen() const { return m_handle.isOpen(); }
    std::optional<QByteArray> bytes(qint64 offset, quint32 size) const
    {
        QByteArray bytes(size, Qt::Uninitialized);
        const ssize_t read = pread(m_handle.number(), bytes.data(), size, offset);
        return read == static_cast<ssize_t>(size) ? std::optional(bytes) : std::nullopt;
    }

private:
    FileHandle m_handle;
};

namespace {

QString decoded(const QByteArray &raw)
{
    if (!raw.contains('\\'))
        return QString::fromUtf8(raw);
    return QJsonDocument::fromJson("[\"" + raw + "\"]").array().at(0).toString();
}

quint32 hashOf(QByteArrayView bytes)
{
    return static_cast<quint32>(qHashBits(bytes.data(), static_cast<size_t>(bytes.size())));
}

} // namespace

// Goes through JSON from one string to the next.
struct StoredText::Scan {
    const char *at;
    const char *end;

    char next()
    {
        while (at < end && (*at == ' ' || *at == '\n' || *at == '\r' || *at == '\t'))
            ++at;
        return at < end ? *at++ : '\0';
    }
    // What stands between quotes, of which the first was read.
    std::optional<QByteArrayView> string()
    {
        const char *from = at;
        for (; at < end && *at != '"'; ++at) {
            if (static_cast<uchar>(*at) < 0x20)
                return std::nullopt;
            if (*at == '\\' && ++at < end && !strchr("\"\\/bfnrtu", *at))
                return std::nullopt;
        }
        if (at >= end)
            return std::nullopt;
        const QByteArrayView found(from, at++);
        return found.isValidUtf8() && found.size() < std::numeric_limits<quint32>::max()
                   ? std::optional(found)
                   : std::nullopt;
    }
};

StoredText::StoredText(const QString &text)
{
    if (text.isEmpty())
        return;
    const QByteArray json = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    m_text = json.mid(2, json.size() - 4);
    m_size = static_cast<quint32>(m_text.size());
    m_hash = hashOf(m_text);
}

std::optional<QHash<QString, StoredText>> StoredText::all(const QByteArray &json, int number)
{
    QHash<QString, StoredText> texts;
    const auto file = std::make_shared<const File>(number);
    Scan scan{json.constData(), json.constData() + json.size()};
    if (!file->isOpen() || scan.next() != '{')
        return std::nullopt;
    for (char mark = scan.next(); mark != '}'; mark = scan.next()) {
        if (mark == ',' && !texts.isEmpty())
            mark = scan.next();
        else if (!texts.isEmpty())
            return std::nullopt;
        const auto name = mark == '"' ? scan.string() : std::nullopt;
        if (!name || scan.next() != ':' || scan.next() != '"')
            return std::nullopt;
        const auto value = scan.string();
        if (!value)
            return std::nullopt;
        StoredText text;
        text.m_file = file;
        text.m_offset = value->data() - json.constData();
        text.m_size = static_cast<quint32>(value->size());
        text.m_hash = hashOf(*value);
        texts.insert(sharedName(decoded(name->toByteArray())), text);
    }
    return scan.next() == '\0' && scan.at == scan.end ? std::optional(texts) : std::nullopt;
}

std::optional<QByteArray> StoredText::raw() const
{
    return m_file ? m_file->bytes(m_offset, m_size) : std::optional(m_text);
}

std::optional<QByteArray> StoredText::toJson(const QHash<QString, StoredText> &texts)
{
    QStringList names = texts.keys();
    names.sort();
    QByteArray json = "{";
    for (const QString &name : std::as_const(names)) {
        const auto text = texts[name].raw();
        if (!text)
            return std::nullopt;
        if (json.size() > 1)
            json += ',';
        json += '"' + StoredText(name).m_text + "\":\"" + *text + '"';
    }
    return json + '}';
}

QString StoredText::toString() const
{
    return isEmpty() ? QString() : decoded(raw().value_or(QByteArray()));
}

bool StoredText::operator==(const StoredText &other) const
{
    // The same text can be written in two ways.
    return (m_size == other.m_size && m_hash == other.m_hash) || toString() == other.toString();
}
