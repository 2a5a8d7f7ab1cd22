#include "recording/external_speech.h"

#include "recording/texts.h"
#include "settings/defaults.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtEndian>

namespace {

constexpr int kRate = 16000;
constexpr int kHeader = 44;
constexpr qint64 kLongestAnswer = 64 << 20;
constexpr int kLook = 100; // milliseconds between two looks at the wish to end

// A WAVE file's beginning for one channel of 16 bits.
QByteArray waveHeader(qint64 samples)
{
    const auto bytes = quint32(samples * 2);
    QByteArray header(kHeader, '\0');
    const auto put = [&](int at, const char *text) { header.replace(at, 4, text, 4); };
    const auto put32 = [&](int at, quint32 value) { qToLittleEndian(value, header.data() + at); };
    const auto put16 = [&](int at, quint16 value) { qToLittleEndian(value, header.data() + at); };
    put(0, "RIFF");
    put32(4, 36 + bytes);
    put(8, "WAVE");
    put(12, "fmt ");
    put32(16, 16);
    put16(20, 1);
    put16(22, 1);
    put32(24, kRate);
    put32(28, kRate * 2);
    put16(32, 2);
    put16(34, 16);
    put(36, "data");
    put32(40, bytes);
    return header;
}

// Each segment is a word, as it was asked for; signs such as "[Music]" are none.
QList<SpokenWord> wordsOf(const QByteArray &json)
{
    QList<SpokenWord> words;
    const QJsonArray segments =
        QJsonDocument::fromJson(json).object().value(QLatin1String("transcription")).toArray();
    for (const QJsonValue &each : segments) {
        const QJsonObject segment = each.toObject();
        const QJsonObject offsets = segment.value(QLatin1String("offsets")).toObject();
        const QString text = segment.value(QLatin1String("text")).toString().trimmed();
        const double from = offsets.value(QLatin1String("from")).toDouble() / 1000;
        const double to = offsets.value(QLatin1String("to")).toDouble() / 1000;
        if (!text.isEmpty() && !text.startsWith(u'[') && !text.startsWith(u'(') && to >= from && from >= 0)
            words.append({text, from, to - from});
    }
    return words;
}

class ExternalListener : public SpeechListener {
public:
    ExternalListener(QString program, QString model, std::function<void(const QList<SpokenWord> &)> heard)
        : m_program(std::move(program)),
          m_model(std::move(model)),
          m_heard(std::move(heard)),
          m_wave(m_folder.filePath(QStringLiteral("sound.wav")))
    {}

    Result<void> open()
    {
        if (!m_folder.isValid() || !m_wave.open(QIODevice::WriteOnly) ||
            m_wave.write(waveHeader(0)) != kHeader)
            return fail(RecordingTexts::tr("The sound couldn't be written: %1.").arg(m_wave.errorString()));
        return {};
    }

    Result<void> hear(std::span<const qint16> samples) override
    {
        const auto bytes = qint64(samples.size_bytes());
        if (m_wave.write(reinterpret_cast<const char *>(samples.data()), bytes) != bytes)
            return fail(RecordingTexts::tr("The sound couldn't be written: %1.").arg(m_wave.errorString()));
        m_samples += qint64(samples.size());
        return {};
    }

    Result<void> end(WorkProgress &progress) override
    {
        if (!m_wave.seek(0) || m_wave.write(waveHeader(m_samples)) != kHeader || !m_wave.flush())
            return fail(RecordingTexts::tr("The sound couldn't be written: %1.").arg(m_wave.errorString()));
        const QString answer = m_folder.filePath(QStringLiteral("words"));
        QProcess process;
        process.setStandardOutputFile(QProcess::nullDevice());
        process.start(m_program, {"-m", m_model, "-f", m_wave.fileName(), "-l", "auto", "-ml", "1", "-sow",
                                  "-oj", "-of", answer, "-pp"});
        QByteArray said;
        while (process.state() != QProcess::NotRunning && !process.waitForFinished(kLook)) {
            if (progress.isCancelled) {
                process.kill();
                process.waitForFinished();
                return cancelled();
            }
            said = (said + process.readAllStandardError()).right(4096);
            follow(said, progress);
        }
        if (process.error() != QProcess::UnknownError || process.exitStatus() != QProcess::NormalExit ||
            process.exitCode() != 0)
            return fail(
                RecordingTexts::tr("The speech recogniser %1 failed.").arg(QFileInfo(m_program).fileName()),
                QString::fromUtf8(said + process.readAllStandardError()).right(1000));
        QFile file(answer + QStringLiteral(".json"));
        if (!file.open(QIODevice::ReadOnly))
            return fail(RecordingTexts::tr("The speech recogniser %1 gave no words.")
                            .arg(QFileInfo(m_program).fileName()));
        m_heard(wordsOf(file.read(kLongestAnswer)));
        return {};
    }

private:
    // "progress =  40%"
    static void follow(const QByteArray &said, WorkProgress &progress)
    {
        static const QRegularExpression form(QStringLiteral("progress\\s*=\\s*(\\d+)%"));
        auto matches = form.globalMatch(QString::fromUtf8(said));
        while (matches.hasNext())
            progress.done = std::min(matches.next().captured(1).toInt() / 100.0, 0.99);
    }

    QString m_program;
    QString m_model;
    std::function<void(const QList<SpokenWord> &)> m_heard;
    QTemporaryDir m_folder;
    QFile m_wave;
    qint64 m_samples = 0;
};

} // namespace

ExternalSpeech::Choice ExternalSpeech::choiceIn(const Defaults &defaults)
{
    return {defaults.string(QStringLiteral("captionsProgram")),
            defaults.string(QStringLiteral("captionsModel"))};
}

Result<std::unique_ptr<SpeechListener>>
ExternalSpeech::listen(std::function<void(const QList<SpokenWord> &)> heard)
{
    const QString program = QStandardPaths::findExecutable(m_choice.program);
    if (program.isEmpty())
        return fail(Error::Kind::Unavailable,
                    RecordingTexts::tr("There is no speech recogniser %1.").arg(m_choice.program));
    if (!QFileInfo(m_choice.model).isFile())
        return fail(Error::Kind::Unavailable,
                    RecordingTexts::tr("The speech recogniser's model %1 is missing.").arg(m_choice.model));
    auto listener = std::make_unique<ExternalListener>(program, m_choice.model, std::move(heard));
    if (const auto opened = listener->open(); !opened)
        return std::unexpected(opened.error());
    return listener;
}
