#pragma once

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QString>
#include <QtEndian>

// What another program says of a film.
class FilmFacts {
public:
    explicit FilmFacts(const QString &path) : m_path(path)
    {
        m_facts = QJsonDocument::fromJson(
                      run("ffprobe", {"-v", "error", "-show_format", "-show_streams", "-of", "json", path}))
                      .object();
    }
    QString format(const QString &key) const { return m_facts["format"].toObject()[key].toString(); }
    qsizetype streams() const { return m_facts["streams"].toArray().size(); }
    QString of(int stream, const QString &key) const
    {
        return m_facts["streams"].toArray().at(stream).toObject()[key].toVariant().toString();
    }
    int countedFrames() const
    {
        return run("ffprobe", {"-v", "error", "-count_frames", "-select_streams", "v:0", "-show_entries",
                               "stream=nb_read_frames", "-of", "csv=p=0", m_path})
            .trimmed()
            .toInt();
    }
    // A sum of each decoded picture, in order.
    QStringList pictureSums() const
    {
        QStringList sums;
        for (const QByteArray &line : run("ffmpeg", {"-v", "error", "-i", m_path, "-an", "-vsync",
                                                     "passthrough", "-f", "framemd5", "-"})
                                          .split('\n')) {
            if (!line.isEmpty() && !line.startsWith('#'))
                sums.append(QString::fromLatin1(line.mid(line.lastIndexOf(',') + 1).trimmed()));
        }
        return sums;
    }
    bool decodesWithoutErrors() const
    {
        QProcess process;
        process.start("ffmpeg", {"-v", "error", "-xerror", "-i", m_path, "-map", "0", "-f", "null", "-"});
        process.waitForFinished(60000);
        return process.exitCode() == 0 && process.readAllStandardError().isEmpty();
    }
    // The loudest moment of a track of sound, in decibels below full scale.
    double loudness(int stream) const
    {
        QProcess process;
        process.start("ffmpeg", {"-hide_banner", "-i", m_path, "-map", QStringLiteral("0:%1").arg(stream),
                                 "-af", "volumedetect", "-f", "null", "-"});
        process.waitForFinished(60000);
        const QByteArray text = process.readAllStandardError();
        const qsizetype at = text.indexOf("max_volume: ");
        return at < 0 ? -1000 : text.mid(at + 12, 6).trimmed().split(' ').first().toDouble();
    }
    // The table of contents comes before the pictures, and only once.
    bool startsQuickly() const
    {
        const QStringList boxes = outerBoxes();
        return boxes.count("moov") == 1 && boxes.indexOf("moov") < boxes.indexOf("mdat");
    }
    bool isFragmented() const { return outerBoxes().contains("moof"); }

private:
    static QByteArray run(const QString &program, const QStringList &words)
    {
        QProcess process;
        process.start(program, words);
        process.waitForFinished(60000);
        return process.readAllStandardOutput();
    }
    QStringList outerBoxes() const
    {
        QFile file(m_path);
        QStringList boxes;
        if (!file.open(QIODevice::ReadOnly))
            return boxes;
        while (file.pos() < file.size()) {
            const qint64 start = file.pos();
            const QByteArray head = file.read(16);
            if (head.size() < 8)
                break;
            qint64 size = qFromBigEndian<quint32>(head.constData());
            if (size == 1)
                size = qFromBigEndian<qint64>(head.constData() + 8);
            boxes.append(QString::fromLatin1(head.mid(4, 4)));
            if (size < 8 || !file.seek(start + size))
                break;
        }
        return boxes;
    }

    QString m_path;
    QJsonObject m_facts;
};
