#include "platform/speech/sphinx_engine.h"

#include "platform/speech/utterances.h"
#include "platform/texts.h"

#include <QFileInfo>
#include <pocketsphinx.h>
#include <sphinxbase/err.h>

namespace {

constexpr int kRate = 16000;
constexpr int kFramesPerSecond = 100;

QString modelFolder()
{
    for (const char *folder :
         {"/usr/share/pocketsphinx/model/en-us", "/usr/local/share/pocketsphinx/model/en-us"}) {
        if (QFileInfo::exists(QString::fromLatin1(folder) + QStringLiteral("/en-us")))
            return QString::fromLatin1(folder);
    }
    return {};
}

std::unexpected<Error> unavailable(const QString &detail)
{
    return fail(Error::Kind::Unavailable,
                PlatformTexts::tr("Speech recognition isn't available for your language right now."), detail);
}

// "hello(2)" is a way to say it; "<sil>", "[NOISE]" and "++UM++" are no words.
QString wordOf(const char *told)
{
    QString word = QString::fromUtf8(told);
    if (word.startsWith(u'<') || word.startsWith(u'[') || word.startsWith(u'+'))
        return {};
    return word.section(u'(', 0, 0);
}

struct Release {
    void operator()(ps_decoder_t *held) const { ps_free(held); }
    void operator()(cmd_ln_t *held) const { cmd_ln_free_r(held); }
};

class SphinxListener : public SpeechListener {
public:
    explicit SphinxListener(std::function<void(const QList<SpokenWord> &)> heard)
        : m_heard(std::move(heard)),
          m_utterances(kRate, [this](std::span<const qint16> samples, std::int64_t start) {
              recognize(samples, start);
          })
    {}

    Result<void> open()
    {
        const QString folder = modelFolder();
        if (folder.isEmpty())
            return unavailable(QStringLiteral("no model"));
        err_set_logfp(nullptr);
        const QByteArray model = QFile::encodeName(folder);
        // Silence is kept: without it the times of the words would drift. The second pass and wider searches
        // bring nothing: of eight readings by four voices .122 of the words are wrong with these, and .128
        // with the model's own settings in nearly twice the time.
        m_config.reset(cmd_ln_init(nullptr, ps_args(), TRUE, "-hmm", (model + "/en-us").constData(), "-lm",
                                   (model + "/en-us.lm.bin").constData(), "-dict",
                                   (model + "/cmudict-en-us.dict").constData(), "-remove_silence", "no",
                                   "-topn", "2", "-maxhmmpf", "3000", "-fwdflat", "no", "-logfn", "/dev/null",
                                   nullptr));
        if (m_config)
            m_decoder.reset(ps_init(m_config.get()));
        if (!m_decoder)
            return unavailable(QStringLiteral("the model can't be read"));
        return {};
    }

    Result<void> hear(std::span<const qint16> samples) override
    {
        m_utterances.add(samples);
        return outcome();
    }
    Result<void> end(WorkProgress &) override
    {
        m_utterances.end();
        return outcome();
    }

private:
    Result<void> outcome() const
    {
        if (m_isBroken)
            return fail(PlatformTexts::tr("The speech could not be recognised."));
        return {};
    }

    void recognize(std::span<const qint16> samples, std::int64_t start)
    {
        ps_decoder_t *decoder = m_decoder.get();
        if (ps_start_utt(decoder) < 0 ||
            ps_process_raw(decoder, samples.data(), samples.size(), FALSE, TRUE) < 0 ||
            ps_end_utt(decoder) < 0) {
            m_isBroken = true;
            return;
        }
        QList<SpokenWord> words;
        for (ps_seg_t *segment = ps_seg_iter(decoder); segment; segment = ps_seg_next(segment)) {
            int first = 0, last = 0;
            ps_seg_frames(segment, &first, &last);
            const QString word = wordOf(ps_seg_word(segment));
            if (word.isEmpty())
                continue;
            words.append({word, double(start) / kRate + double(first) / kFramesPerSecond,
                          double(last - first + 1) / kFramesPerSecond});
        }
        if (!words.isEmpty())
            m_heard(words);
    }

    std::function<void(const QList<SpokenWord> &)> m_heard;
    Utterances m_utterances;
    std::unique_ptr<cmd_ln_t, Release> m_config;
    std::unique_ptr<ps_decoder_t, Release> m_decoder;
    bool m_isBroken = false;
};

} // namespace

Result<std::unique_ptr<SpeechListener>>
SphinxEngine::listen(std::function<void(const QList<SpokenWord> &)> heard)
{
    auto listener = std::make_unique<SphinxListener>(std::move(heard));
    if (const auto opened = listener->open(); !opened)
        return std::unexpected(opened.error());
    return listener;
}

// The entry of the loadable module.
extern "C" Q_DECL_EXPORT SpeechEngine *lumenpost_speech_engine()
{
    return new SphinxEngine;
}
