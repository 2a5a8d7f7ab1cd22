#pragma once

#include "platform/text_engine.h"

#include <QThreadPool>
#include <mutex>

class TesseractReader;

// Tesseract behind line finding of our own. Pictures are read on worker threads, one a thread; readers, one
// a language, are kept for the next picture.
class TesseractEngine : public TextEngine {
public:
    TesseractEngine();
    ~TesseractEngine() override;
    QFuture<Result<QList<RecognizedLine>>> recognize(const QImage &image,
                                                     const TextLanguages &languages) override;

private:
    struct IdleReader {
        QString language;
        std::unique_ptr<TesseractReader> reader;
    };
    class Borrowed;
    Result<QList<RecognizedLine>> work(const QImage &image, const TextLanguages &languages);
    Result<std::unique_ptr<TesseractReader>> takeReader(const QString &folder, const QString &language);

    QThreadPool m_threads;
    std::mutex m_mutex;
    std::vector<IdleReader> m_idle;
};
