#include "platform/recognition/language_guess.h"

#include "platform/recognition/languages.h"

#include <cld2/public/compact_lang_det.h>
#include <cld2/public/encodings.h>
#include <cstdio> // a header of the library lacks it

namespace {

// Empty where it isn't clear; a hint turns the scales between neighbours.
QString guessed(const QByteArray &text, CLD2::Language hint)
{
    const CLD2::CLDHints hints{nullptr, "", CLD2::UNKNOWN_ENCODING, hint};
    std::array<CLD2::Language, 3> languages{};
    std::array<int, 3> percents{};
    std::array<double, 3> scores{};
    CLD2::ResultChunkVector *const noChunks = nullptr;
    int bytes = 0;
    int valid = 0;
    bool isReliable = false;
    CLD2::ExtDetectLanguageSummaryCheckUTF8(text.constData(), int(text.size()), true, &hints,
                                            CLD2::kCLDFlagBestEffort, languages.data(), percents.data(),
                                            scores.data(), noChunks, &bytes, &isReliable, &valid);
    if (!isReliable || languages[0] == CLD2::UNKNOWN_LANGUAGE)
        return {};
    const QString code = QString::fromLatin1(CLD2::LanguageCode(languages[0]));
    return dataName(code == "iw" ? "he" : code);
}

} // namespace

QString likelyLanguage(const QString &words, const QStringList &among)
{
    const QByteArray text = words.toUtf8();
    const QString likeliest = guessed(text, CLD2::UNKNOWN_LANGUAGE);
    if (likeliest.isEmpty() || among.contains(likeliest))
        return likeliest;
    for (const QString &language : among) {
        const CLD2::Language hint = CLD2::GetLanguageFromName(localeCode(language).toLatin1().constData());
        if (hint != CLD2::UNKNOWN_LANGUAGE && guessed(text, hint) == language)
            return language;
    }
    return {};
}
