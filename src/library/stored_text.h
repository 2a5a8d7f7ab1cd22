#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <memory>
#include <optional>

// A recognised text, which mostly stays in the file that it was read from: the texts of a hundred thousand
// captures are 200 MB, and one at a time is looked at. Converts from and to QString. Any thread may read it.
class StoredText {
public:
    StoredText() = default;
    StoredText(const QString &text);

    // An object of texts alone, as the JSON of a file that was read through this descriptor, which is
    // duplicated. The file may be replaced afterwards, but not be written into. Nothing for other JSON.
    static std::optional<QHash<QString, StoredText>> all(const QByteArray &json, int file);

    // All of them as such an object, in the order of their names. Nothing when one can't be read any more.
    static std::optional<QByteArray> toJson(const QHash<QString, StoredText> &texts);

    operator QString() const { return toString(); }
    // An empty one when the file can't be read any more.
    QString toString() const;
    bool isEmpty() const { return m_size == 0; }
    bool operator==(const StoredText &other) const;

private:
    class File;
    struct Scan;

    std::optional<QByteArray> raw() const;

    std::shared_ptr<const File> m_file; // none: in m_text
    QByteArray m_text;                  // as in JSON, without the quotes
    qint64 m_offset = 0;
    quint32 m_size = 0;
    quint32 m_hash = 0; // of what stands there
};
